// SPDX-License-Identifier: Apache-2.0
// Bytes of a level in block-compressed formats.
#include <cstdint>
#include <gtest/gtest.h>

#include "support/check_failure_capture.h"
#include "texture/texture_model.h"
#include "texture/texture_private.h"
#include "vTextureUtils.h"

namespace {

using namespace texture_model;
using support::CheckFailureCapture;

unsigned int compressed_size(std::uint32_t width, std::uint32_t height, int value) {
    return texture_private::compressed_size()(width, height, format(value));
}

unsigned int image_size(std::uint32_t width, std::uint32_t height, std::uint32_t depth, std::uint32_t level,
                        int value) {
    return vTextureUtils::ComputeImageSizeInBytes(width, height, depth, level, format(value));
}

TEST(TextureCompressedSize, RoundsUpToWholeBlocks) {
    EXPECT_EQ(image_size(5, 5, 1, 0, 51), 32u);
    EXPECT_EQ(image_size(5, 5, 1, 0, 53), 64u);
    EXPECT_EQ(image_size(5, 5, 1, 0, 61), 64u);
    EXPECT_EQ(image_size(4, 5, 1, 0, 61), 32u);
    EXPECT_EQ(image_size(5, 4, 1, 0, 61), 32u);
    EXPECT_EQ(image_size(640, 480, 1, 0, 51), 153600u);
    EXPECT_EQ(image_size(640, 480, 1, 0, 64), 307200u);
}

TEST(TextureCompressedSize, OneBlockHasTheBytesOfItsFormat) {
    for (int value : {51, 52, 57, 58}) EXPECT_EQ(compressed_size(4, 4, value), 8u) << value;
    for (int value : {53, 54, 55, 56, 59, 60, 61, 62, 63, 64})
        EXPECT_EQ(compressed_size(4, 4, value), 16u) << value;
}

TEST(TextureCompressedSize, OnePixelTakesABlock) {
    for (int value = 51; value <= 64; ++value) {
        EXPECT_EQ(compressed_size(1, 1, value), compressed_size(4, 4, value)) << value;
        EXPECT_EQ(compressed_size(5, 1, value), 2 * compressed_size(4, 4, value)) << value;
        EXPECT_EQ(compressed_size(1, 9, value), 3 * compressed_size(4, 4, value)) << value;
    }
}

TEST(TextureCompressedSize, NoPixelsTakeNoBlock) {
    CheckFailureCapture capture;
    for (int value = 51; value <= 64; ++value) {
        EXPECT_EQ(compressed_size(0, 0, value), 0u) << value;
        EXPECT_EQ(compressed_size(0, 4, value), 0u) << value;
        EXPECT_EQ(compressed_size(4, 0, value), 0u) << value;
    }
    EXPECT_TRUE(capture.take().empty());
}

TEST(TextureCompressedSize, ALevelHasAtLeastOneBlock) {
    for (int value = 51; value <= 64; ++value) {
        EXPECT_EQ(image_size(0, 0, 0, 0, value), compressed_size(4, 4, value)) << value;
        EXPECT_EQ(image_size(640, 480, 1, 10, value), compressed_size(4, 4, value)) << value;
        EXPECT_EQ(image_size(640, 480, 1, 31, value), compressed_size(4, 4, value)) << value;
    }
}

TEST(TextureCompressedSize, BlocksAreCountedOnTheLevelNotOnTheImage) {
    EXPECT_EQ(image_size(20, 12, 1, 1, 53), 96u) << "10 x 6: three by two blocks";
    EXPECT_EQ(image_size(20, 12, 1, 1, 62), 96u);
    EXPECT_EQ(image_size(20, 12, 1, 33, 53), 96u) << "levels count modulo 32";
}

TEST(TextureCompressedSize, DepthIsIgnored) {
    EXPECT_EQ(image_size(4, 4, 8, 0, 53), 16u);
    for (int value = 51; value <= 64; ++value)
        for (std::uint32_t depth : {0u, 2u, 8u, 1000u, 0x80000000u, UINT32_MAX})
            for (std::uint32_t level : {0u, 1u, 7u, 31u, 32u})
                EXPECT_EQ(image_size(100, 60, depth, level, value), image_size(100, 60, 1, level, value))
                    << "depth " << depth << ", level " << level << ", format " << value;
}

TEST(TextureCompressedSize, SmallSizesAreThePlainBlockCount) {
    CheckFailureCapture capture;
    for (std::uint32_t width = 0; width <= 70; ++width) {
        for (std::uint32_t height = 0; height <= 70; ++height) {
            std::uint32_t blocks = 0;
            for (std::uint32_t y = 0; y < height; y += 4)
                for (std::uint32_t x = 0; x < width; x += 4) ++blocks;
            for (int value = 51; value <= 64; ++value) {
                const bool is_small = value == 51 || value == 52 || value == 57 || value == 58;
                ASSERT_EQ(compressed_size(width, height, value), blocks * (is_small ? 8 : 16))
                    << width << " x " << height << ", format " << value;
            }
        }
    }
    EXPECT_TRUE(capture.take().empty());
}

TEST(TextureCompressedSize, TheIntegerRuleWrapsIn32Bits) {
    EXPECT_EQ(compressed_size(UINT32_MAX, 4, 51), 0u) << "2^32 - 1 + 3 wraps to 2";
    EXPECT_EQ(compressed_size(UINT32_MAX - 2, 4, 51), 0u) << "2^32 - 3 + 3 wraps to 0";
    EXPECT_EQ(compressed_size(UINT32_MAX - 3, 4, 51), 0xFFFFFFF8u) << "2^30 - 1 blocks of 8 bytes";
    EXPECT_EQ(compressed_size(UINT32_MAX - 3, 4, 53), 0xFFFFFFF0u);
    EXPECT_EQ(compressed_size(0x80000000u, 4, 51), 0u) << "2^29 blocks of 8 bytes";
    EXPECT_EQ(compressed_size(0x80000004u, 4, 51), 8u);
    EXPECT_EQ(compressed_size(131072, 131072, 53), 0u) << "2^30 blocks of 16 bytes";
    EXPECT_EQ(compressed_size(131076, 131072, 53), 0x80000u) << "2^30 + 2^15 blocks of 16 bytes";
    // (2^30 - 1) squared is 1 modulo 2^31.
    EXPECT_EQ(compressed_size(UINT32_MAX - 3, UINT32_MAX - 3, 51), 8u);
    EXPECT_EQ(compressed_size(UINT32_MAX - 3, UINT32_MAX - 3, 53), 16u);
}

TEST(TextureCompressedSize, TheFloatingPointRuleServesLargeExtents) {
    for (int value = 61; value <= 64; ++value) {
        EXPECT_EQ(compressed_size(0x80000001u, 1, value), 16u) << "2^29 + 1 blocks of 16 bytes";
        EXPECT_EQ(compressed_size(1, 0x7FFFFFFDu, value), 0u) << "2^29 blocks of 16 bytes";
        EXPECT_EQ(compressed_size(UINT32_MAX - 3, 4, value), 0xFFFFFFF0u) << "2^30 - 1 blocks";
        EXPECT_EQ(compressed_size(UINT32_MAX, 4, value), 0u) << "2^30 blocks";
        EXPECT_EQ(compressed_size(UINT32_MAX, UINT32_MAX, value), 0u) << "2^60 blocks";
        EXPECT_EQ(compressed_size(262148, 262144, value), 0x100000u) << "2^32 + 2^16 blocks";
    }
}

// (2^30 - 1)^2 = 2^60 - 2^31 + 1 needs 60 bits; the nearest double is 2^60 - 2^31.
TEST(TextureCompressedSize, TheFloatingPointRuleLosesTheLowBitsOfHugeProducts) {
    for (int value = 61; value <= 64; ++value)
        EXPECT_EQ(compressed_size(UINT32_MAX - 3, UINT32_MAX - 3, value), 0u) << "format " << value;
    EXPECT_EQ(compressed_size(UINT32_MAX - 3, UINT32_MAX - 3, 60), 16u) << "not so in the integer rule";
}

// Just above 2^53 doubles are the even numbers; an odd product lies half-way between two of them.
TEST(TextureCompressedSize, TheFloatingPointRuleRoundsHalvesToEven) {
    constexpr std::uint32_t kWidth = 4 * ((1u << 27) + 1);
    for (int value = 61; value <= 64; ++value) {
        // (2^27 + 1) (2^26 + 1) = 2^53 + 2^27 + 2^26 + 1 goes down by one.
        EXPECT_EQ(compressed_size(kWidth, 4 * ((1u << 26) + 1), value), 0xC0000000u) << "format " << value;
        // (2^27 + 1) (2^26 + 3) = 2^53 + 3 * 2^27 + 2^26 + 3 goes up by one.
        EXPECT_EQ(compressed_size(kWidth, 4 * ((1u << 26) + 3), value), 0xC0000040u) << "format " << value;
    }
    EXPECT_EQ(compressed_size(kWidth, 4 * ((1u << 26) + 1), 53), 0xC0000010u) << "the integer rule";
    EXPECT_EQ(compressed_size(kWidth, 4 * ((1u << 26) + 3), 53), 0xC0000030u) << "the integer rule";
}

TEST(TextureCompressedSize, BothRulesAgreeWhileTheSizeFits) {
    for (std::uint32_t width : {1u, 3u, 4u, 1023u, 16383u, 16385u, 32768u})
        for (std::uint32_t height : {1u, 5u, 640u, 16384u, 65533u, 65536u, 100001u})
            for (int value = 61; value <= 64; ++value)
                EXPECT_EQ(compressed_size(width, height, value), compressed_size(width, height, 53))
                    << width << " x " << height << ", format " << value;
}

TEST(TextureCompressedSize, CriticalSizesFollowTheRuleOfTheFormat) {
    CheckFailureCapture capture;
    for (std::uint32_t width : critical_extents())
        for (std::uint32_t height : critical_extents())
            for (int value : {51, 52, 53, 54, 55, 56, 57, 58, 59, 60, 61, 62, 63, 64})
                ASSERT_EQ(compressed_size(width, height, value), compressed_bytes(width, height, value))
                    << width << " x " << height << ", format " << value;
    EXPECT_TRUE(capture.take().empty());
}

TEST(TextureCompressedSize, LevelsOfLargeImagesFollowTheRuleOfTheFormat) {
    for (int value = 51; value <= 64; ++value) {
        EXPECT_EQ(image_size(UINT32_MAX, 1, 1, 0, value), 0u) << "format " << value;
        EXPECT_EQ(image_size(UINT32_MAX - 3, UINT32_MAX - 3, 1, 0, value),
                  compressed_bytes(UINT32_MAX - 3, UINT32_MAX - 3, value))
            << "format " << value;
        EXPECT_EQ(image_size(UINT32_MAX, UINT32_MAX, 1, 16, value),
                  (compressed_size(4, 4, value) == 8 ? 0x80000000u : 0u))
            << "2^14 x 2^14 blocks, format " << value;
    }
}

TEST(TextureCompressedSize, OtherFormatsHaveNoCompressedSize) {
    CheckFailureCapture capture;
    EXPECT_EQ(compressed_size(64, 64, 5), 0u);
    for (int value = 1; value <= 50; ++value) EXPECT_EQ(compressed_size(64, 64, value), 0u) << value;
    for (int value : no_member()) EXPECT_EQ(compressed_size(64, 64, value), 0u) << value;
}

}  // namespace
