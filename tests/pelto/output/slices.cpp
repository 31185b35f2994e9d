// SPDX-License-Identifier: Apache-2.0

#include "pelto/output/slices.h"

#include <gtest/gtest.h>

#include "pelto/output/started_command.h"

std::vector<std::string> Slices::contents_after() {
    const Slices slices(false);
    const Ending ending = run(slices.arguments());
    EXPECT_EQ(ending.status, 0) << ending.err;
    EXPECT_EQ(names_in(slices.folder()), names());
    return slices.contents();
}
