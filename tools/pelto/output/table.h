// SPDX-License-Identifier: Apache-2.0
// A table for people: left- and right-aligned columns under a heading.
#ifndef PELTO_TOOL_OUTPUT_TABLE_H
#define PELTO_TOOL_OUTPUT_TABLE_H

#include <ostream>
#include <string>
#include <vector>

enum class Align { kLeft, kRight };

struct Column {
    std::string heading;
    Align align = Align::kLeft;
};

/// "WIDTH x HEIGHT x DEPTH".
template <class Number>
std::string extent_text(Number width, Number height, Number depth) {
    return std::to_string(width) + " x " + std::to_string(height) + " x " + std::to_string(depth);
}

/// Writes the heading and the rows, each with one cell per column, two spaces between columns and none at
/// the end of a line. Widths count code points of UTF-8 text.
void print_table(std::ostream& out, const std::vector<Column>& columns,
                 const std::vector<std::vector<std::string>>& rows);

#endif
