// SPDX-License-Identifier: Apache-2.0
// JSON output, as every subcommand writes it.
#ifndef PELTO_TOOL_OUTPUT_PRINT_JSON_H
#define PELTO_TOOL_OUTPUT_PRINT_JSON_H

#include <nlohmann/json.hpp>

/// Writes it to standard output, indented. What is no UTF-8, as file names need not be, is replaced.
void print_json(const nlohmann::ordered_json& json);

#endif
