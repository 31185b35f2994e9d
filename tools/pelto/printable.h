// Text of unknown origin, such as a file's name, for a terminal.
#ifndef PELTO_TOOL_PRINTABLE_H
#define PELTO_TOOL_PRINTABLE_H

#include <string>
#include <string_view>

/// The text with its control characters written as \xNN, so that it stays on one line and gives the
/// terminal no orders. Other bytes are kept: names need not be UTF-8.
std::string printable(std::string_view text);

#endif
