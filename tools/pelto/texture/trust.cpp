// SPDX-License-Identifier: Apache-2.0
#include "texture/trust.h"

#include <CLI/CLI.hpp>

void add_trust(CLI::App& command, Trust& trust) {
    command.add_flag_callback(
        "--trust", [&trust] { trust = Trust::kYes; },
        "Load files that a check refuses too: cut short, say. They may ask for any amount of memory");
}
