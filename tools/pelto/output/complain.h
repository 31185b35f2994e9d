// SPDX-License-Identifier: Apache-2.0
// What is wrong with a file, told as every subcommand tells it.
#ifndef PELTO_TOOL_OUTPUT_COMPLAIN_H
#define PELTO_TOOL_OUTPUT_COMPLAIN_H

#include <string>

/// Writes the line "pelto: PATH: WHAT" to standard error.
void complain(const std::string& path, const std::string& what);

#endif
