// SPDX-License-Identifier: Apache-2.0

#include "output/table.h"

#include <algorithm>
#include <cstddef>

namespace {

std::size_t width_of(const std::string& text) {
    const auto starts_code_point = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), starts_code_point));
}

void print_row(std::ostream& out, const std::vector<Column>& columns, const std::vector<std::size_t>& widths,
               const std::vector<std::string>& cells) {
    std::string line;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::string padding(widths[i] - width_of(cells[i]), ' ');
        if (i > 0) line += "  ";
        line += columns[i].align == Align::kLeft ? cells[i] + padding : padding + cells[i];
    }
    line.erase(line.find_last_not_of(' ') + 1);
    out << line << '\n';
}

}  // namespace

void print_table(std::ostream& out, const std::vector<Column>& columns,
                 const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::string> headings;
    std::vector<std::size_t> widths;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        headings.push_back(columns[i].heading);
        widths.push_back(width_of(columns[i].heading));
        for (const auto& row : rows) widths[i] = std::max(widths[i], width_of(row[i]));
    }
    print_row(out, columns, widths, headings);
    for (const auto& row : rows) print_row(out, columns, widths, row);
}
