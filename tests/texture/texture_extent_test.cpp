// SPDX-License-Identifier: Apache-2.0
// Extents and pixel counts of levels, and the number of levels.
#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>

#include "texture/texture_model.h"
#include "vTextureUtils.h"

namespace {

using namespace texture_model;
using Extent = TOZ::vTVec3<unsigned int, 0>;

TEST(TextureExtent, HalvesEveryComponentPerLevel) {
    EXPECT_EQ(vTextureUtils::ComputeImageSize(640, 480, 1, 3), Extent(80, 60, 1));
    EXPECT_EQ(vTextureUtils::ComputeImageSize(64, 32, 16, 2), Extent(16, 8, 4));
}

TEST(TextureExtent, KeepsTheOrderOfTheComponents) {
    EXPECT_EQ(vTextureUtils::ComputeImageSize(7, 11, 13, 0), Extent(7, 11, 13));
    EXPECT_EQ(vTextureUtils::ComputeImageSize(Extent(7, 11, 13), 0), Extent(7, 11, 13));
}

TEST(TextureExtent, RoundsDown) {
    EXPECT_EQ(vTextureUtils::ComputeImageSize(7, 11, 13, 1), Extent(3, 5, 6));
    EXPECT_EQ(vTextureUtils::ComputeImageSize(7, 11, 13, 2), Extent(1, 2, 3));
}

TEST(TextureExtent, IsAtLeastOne) {
    EXPECT_EQ(vTextureUtils::ComputeImageSize(640, 480, 1, 10), Extent(1, 1, 1));
    EXPECT_EQ(vTextureUtils::ComputeImageSize(0, 0, 0, 0), Extent(1, 1, 1));
    EXPECT_EQ(vTextureUtils::ComputeImageSize(0, 5, 0, 1), Extent(1, 2, 1));
}

TEST(TextureExtent, ServesTheLargestComponents) {
    EXPECT_EQ(vTextureUtils::ComputeImageSize(UINT32_MAX, 0x80000000u, 0x7FFFFFFFu, 0),
              Extent(UINT32_MAX, 0x80000000u, 0x7FFFFFFFu));
    EXPECT_EQ(vTextureUtils::ComputeImageSize(UINT32_MAX, 0x80000000u, 0x7FFFFFFFu, 30), Extent(3, 2, 1));
    EXPECT_EQ(vTextureUtils::ComputeImageSize(UINT32_MAX, 0x80000000u, 0x7FFFFFFFu, 31), Extent(1, 1, 1));
}

TEST(TextureExtent, TakesTheLevelModulo32) {
    EXPECT_EQ(vTextureUtils::ComputeImageSize(640, 480, 16, 32), Extent(640, 480, 16));
    EXPECT_EQ(vTextureUtils::ComputeImageSize(640, 480, 16, 33), Extent(320, 240, 8));
    EXPECT_EQ(vTextureUtils::ComputeImageSize(640, 480, 16, 64), Extent(640, 480, 16));
    EXPECT_EQ(vTextureUtils::ComputeImageSize(640, 480, 16, 0x80000001u), Extent(320, 240, 8));
    EXPECT_EQ(vTextureUtils::ComputeImageSize(UINT32_MAX, UINT32_MAX - 1, 5, UINT32_MAX), Extent(1, 1, 1));
}

TEST(TextureExtent, EveryLevelIsHalvedOneByOne) {
    for (std::uint32_t extent : critical_extents()) {
        for (std::uint32_t level = 0; level <= 33; ++level) {
            const std::uint32_t one = level_extent(extent, level);
            const std::uint32_t other = level_extent(1000, level);
            ASSERT_EQ(vTextureUtils::ComputeImageSize(extent, 1000, 1, level), Extent(one, other, 1))
                << extent << " at level " << level;
            ASSERT_EQ(vTextureUtils::ComputeImageSize(1, extent, 1000, level), Extent(1, one, other))
                << extent << " at level " << level;
            ASSERT_EQ(vTextureUtils::ComputeImageSize(1000, 1, extent, level), Extent(other, 1, one))
                << extent << " at level " << level;
            ASSERT_EQ(vTextureUtils::ComputeImageSize(Extent(extent, 1000, 1), level), Extent(one, other, 1))
                << extent << " at level " << level;
        }
    }
}

TEST(TexturePixels, CountsTheWholeLevel) {
    EXPECT_EQ(vTextureUtils::ComputeImageNumPixels(640, 480, 1, 0), 307200u);
    EXPECT_EQ(vTextureUtils::ComputeImageNumPixels(640, 480, 1, 3), 4800u);
    EXPECT_EQ(vTextureUtils::ComputeImageNumPixels(7, 11, 13, 0), 1001u);
    EXPECT_EQ(vTextureUtils::ComputeImageNumPixels(7, 11, 13, 1), 90u);
    EXPECT_EQ(vTextureUtils::ComputeImageNumPixels(640, 480, 16, 10), 1u);
    EXPECT_EQ(vTextureUtils::ComputeImageNumPixels(0, 0, 0, 0), 1u);
    EXPECT_EQ(vTextureUtils::ComputeImageNumPixels(640, 480, 2, 32), 614400u);
}

TEST(TexturePixels, WrapsIn32Bits) {
    EXPECT_EQ(vTextureUtils::ComputeImageNumPixels(65536, 65536, 1, 0), 0u) << "2^32";
    EXPECT_EQ(vTextureUtils::ComputeImageNumPixels(65537, 65536, 1, 0), 65536u) << "2^32 + 2^16";
    EXPECT_EQ(vTextureUtils::ComputeImageNumPixels(65536, 1, 65537, 0), 65536u);
    EXPECT_EQ(vTextureUtils::ComputeImageNumPixels(65536, 65536, 1, 1), 0x40000000u) << "2^15 x 2^15";
    EXPECT_EQ(vTextureUtils::ComputeImageNumPixels(UINT32_MAX, UINT32_MAX, 1, 0), 1u) << "(-1) squared";
    EXPECT_EQ(vTextureUtils::ComputeImageNumPixels(UINT32_MAX, UINT32_MAX, UINT32_MAX, 0), UINT32_MAX);
}

TEST(TexturePixels, IsTheProductOfTheExtentAtEveryLevel) {
    for (std::uint32_t extent : critical_extents()) {
        for (std::uint32_t level = 0; level <= 33; ++level) {
            const std::uint32_t expected =
                product(level_extent(extent, level), level_extent(77777, level), level_extent(99, level), 1);
            ASSERT_EQ(vTextureUtils::ComputeImageNumPixels(extent, 77777, 99, level), expected)
                << extent << " at level " << level;
            ASSERT_EQ(vTextureUtils::ComputeImageNumPixels(99, extent, 77777, level), expected)
                << extent << " at level " << level;
            ASSERT_EQ(vTextureUtils::ComputeImageNumPixels(77777, 99, extent, level), expected)
                << extent << " at level " << level;
            ASSERT_EQ(vTextureUtils::ComputeImageNumPixels(Extent(extent, 77777, 99), level), expected)
                << extent << " at level " << level;
        }
    }
}

unsigned int significant_bits(std::uint32_t number) {
    unsigned int bits = 0;
    for (; number != 0; number /= 2) ++bits;
    return bits;
}

TEST(TextureMipmapNumber, CountsDownToOnePixel) {
    EXPECT_EQ(vTextureUtils::ComputeMipmapNumber(1, 1), 1u);
    EXPECT_EQ(vTextureUtils::ComputeMipmapNumber(2, 2), 2u);
    EXPECT_EQ(vTextureUtils::ComputeMipmapNumber(3, 3), 2u);
    EXPECT_EQ(vTextureUtils::ComputeMipmapNumber(256, 256), 9u);
    EXPECT_EQ(vTextureUtils::ComputeMipmapNumber(257, 257), 9u);
    EXPECT_EQ(vTextureUtils::ComputeMipmapNumber(1024, 768), 11u);
}

TEST(TextureMipmapNumber, FollowsTheLargerExtent) {
    EXPECT_EQ(vTextureUtils::ComputeMipmapNumber(1, 4096), 13u);
    EXPECT_EQ(vTextureUtils::ComputeMipmapNumber(4096, 1), 13u);
    EXPECT_EQ(vTextureUtils::ComputeMipmapNumber(0, 4096), 13u);
    EXPECT_EQ(vTextureUtils::ComputeMipmapNumber(4096, 0), 13u);
}

TEST(TextureMipmapNumber, NothingHasNoLevels) { EXPECT_EQ(vTextureUtils::ComputeMipmapNumber(0, 0), 0u); }

TEST(TextureMipmapNumber, ServesTheLargestExtents) {
    EXPECT_EQ(vTextureUtils::ComputeMipmapNumber(0x7FFFFFFFu, 0), 31u);
    EXPECT_EQ(vTextureUtils::ComputeMipmapNumber(0x80000000u, 1), 32u);
    EXPECT_EQ(vTextureUtils::ComputeMipmapNumber(1, UINT32_MAX), 32u);
    EXPECT_EQ(vTextureUtils::ComputeMipmapNumber(UINT32_MAX, UINT32_MAX), 32u);
    EXPECT_EQ(vTextureUtils::ComputeMipmapNumber(0x00FFFFFFu, 1), 24u) << "not rounded as a float";
}

TEST(TextureMipmapNumber, IsTheBitCountOfTheLargerExtentForSmallOnes) {
    for (std::uint32_t width = 0; width <= 300; ++width)
        for (std::uint32_t height = 0; height <= 300; ++height)
            ASSERT_EQ(vTextureUtils::ComputeMipmapNumber(width, height),
                      significant_bits(std::max(width, height)))
                << width << " x " << height;
}

TEST(TextureMipmapNumber, IsTheBitCountOfTheLargerExtentAroundPowersOfTwo) {
    for (std::uint32_t width : critical_extents())
        for (std::uint32_t height : critical_extents())
            ASSERT_EQ(vTextureUtils::ComputeMipmapNumber(width, height),
                      significant_bits(std::max(width, height)))
                << width << " x " << height;
}

}  // namespace
