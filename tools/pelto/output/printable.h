// SPDX-License-Identifier: Apache-2.0
// Text of unknown origin, such as a file's name, for a terminal.
#ifndef PELTO_TOOL_OUTPUT_PRINTABLE_H
#define PELTO_TOOL_OUTPUT_PRINTABLE_H

#include <string>
#include <string_view>

/// The text with what a terminal could take for an order written byte by byte as \xNN: control characters
/// (C0, DEL, C1) and those that change the direction of text. It stays on one line. Other bytes are kept,
/// also those that are not UTF-8, as names may hold them.
std::string printable(std::string_view text);

#endif
