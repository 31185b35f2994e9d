// SPDX-License-Identifier: Apache-2.0

#include "output/table.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

std::string printed(const std::vector<Column>& columns, const std::vector<std::vector<std::string>>& rows) {
    std::ostringstream out;
    print_table(out, columns, rows);
    return out.str();
}

TEST(Table, AlignsColumnsToTheirWidestCell) {
    EXPECT_EQ(printed({{"name"}, {"n", Align::kRight}}, {{"a", "1"}, {"longer", "100"}}),
              "name      n\n"
              "a         1\n"
              "longer  100\n");
}

TEST(Table, LeavesNoSpacesAtTheEndOfALine) {
    EXPECT_EQ(printed({{"a"}, {"flags"}}, {{"1", "x"}}), "a  flags\n1  x\n");
}

TEST(Table, CountsLettersAndNotBytes) {
    EXPECT_EQ(printed({{"p"}, {"q"}}, {{"\xC3\xA4\xC3\xB6", "1"}, {"abc", "2"}}),
              "p    q\n\xC3\xA4\xC3\xB6   1\nabc  2\n");
}

}  // namespace
