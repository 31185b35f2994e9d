// SPDX-License-Identifier: Apache-2.0

#include "vTVec3.h"

#include <gtest/gtest.h>
#include <type_traits>

namespace {

using Extent = TOZ::vTVec3<unsigned int, 0>;

TEST(TVec3, IsZeroByDefault) {
    const Extent* extent = new Extent;
    EXPECT_EQ((*extent)[0], 0U);
    EXPECT_EQ((*extent)[1], 0U);
    EXPECT_EQ((*extent)[2], 0U);
    delete extent;
}

TEST(TVec3, KeepsItsComponentsInOrder) {
    const Extent extent(640, 480, 2);
    EXPECT_EQ(extent[0], 640U);
    EXPECT_EQ(extent[1], 480U);
    EXPECT_EQ(extent[2], 2U);
}

TEST(TVec3, ComponentsCanBeWritten) {
    Extent extent(1, 2, 3);
    extent[1] = 7;
    EXPECT_EQ(extent, Extent(1, 7, 3));
}

TEST(TVec3, IsEqualWhenEveryComponentIs) {
    const Extent extent(1, 2, 3);
    EXPECT_TRUE(extent == Extent(1, 2, 3));
    EXPECT_FALSE(extent != Extent(1, 2, 3));
    for (const Extent& other : {Extent(9, 2, 3), Extent(1, 9, 3), Extent(1, 2, 9)}) {
        EXPECT_FALSE(extent == other);
        EXPECT_TRUE(extent != other);
    }
}

TEST(TVec3, CanBeAConstant) {
    constexpr TOZ::vTVec3<double, 4> axis(0.0, 0.5, 1.0);
    static_assert(axis[1] == 0.5);
    static_assert(axis != TOZ::vTVec3<double, 4>());
    EXPECT_EQ(axis[2], 1.0);
}

TEST(TVec3, IsThreePackedComponentsThatCopyAsBytes) {
    static_assert(sizeof(Extent) == 3 * sizeof(unsigned int));
    EXPECT_TRUE(std::is_trivially_copyable_v<Extent>);
}

TEST(TVec3, VectorsWithDifferentTagsAreUnrelated) {
    EXPECT_FALSE((std::is_convertible_v<Extent, TOZ::vTVec3<unsigned int, 1>>));
}

#ifndef NDEBUG
TEST(TVec3DeathTest, AnIndexOutsideIsAsserted) {
    Extent extent;
    EXPECT_DEATH(extent[3] = 1, "index");
    EXPECT_DEATH(extent[-1] = 1, "index");
}
#endif

}  // namespace
