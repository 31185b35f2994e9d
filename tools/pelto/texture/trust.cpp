// SPDX-License-Identifier: Apache-2.0
#include "texture/trust.h"

#include <CLI/CLI.hpp>

void add_trust(CLI::App& command, Trust& trust) {
    command.add_flag_callback(
        "--trust", [&trust] { trust = Trust::kYes; },
        "Load files that fail the check too, such as truncated ones; they may take any amount of memory");
}
