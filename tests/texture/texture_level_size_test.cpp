// SPDX-License-Identifier: Apache-2.0
// Bytes of a level in uncompressed formats and client types, and that every form of the call agrees.
#include <cstdint>
#include <gtest/gtest.h>

#include "support/check_failure_capture.h"
#include "texture/texture_model.h"
#include "vTextureUtils.h"

namespace {

using namespace texture_model;
using support::CheckFailureCapture;
using Extent = TOZ::vTVec3<unsigned int, 0>;

struct LevelCase {
    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t depth;
};

const LevelCase kExtents[] = {
    {0, 0, 0},           {1, 1, 1},
    {5, 7, 3},           {640, 480, 1},
    {4, 4, 8},           {1024, 1, 1024},
    {65535, 65537, 9},   {65536, 65536, 65536},
    {0x7FFFFFFFu, 3, 2}, {0x80000001u, 0x80000003u, 5},
    {UINT32_MAX, 1, 1},  {1, UINT32_MAX, 1},
    {7, 9, UINT32_MAX},  {UINT32_MAX, UINT32_MAX - 5, 0xFFFFFFF1u},
};

TEST(TextureLevelSize, CountsEveryPixelOfAVolume) {
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(4, 4, 8, 0, vTextureFormat::FORMAT_5), 512u);
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(4, 4, 8, 0, CLIENT_TYPE_5), 512u);
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(4, 4, 8, 1, vTextureFormat::FORMAT_5), 64u);
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(4, 4, 8, 1, CLIENT_TYPE_5), 64u);
}

TEST(TextureLevelSize, MultipliesByTheBytesAPixel) {
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(5, 7, 1, 0, vTextureFormat::FORMAT_1), 35u);
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(5, 7, 1, 0, vTextureFormat::FORMAT_4), 105u);
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(5, 7, 1, 0, vTextureFormat::FORMAT_40), 420u);
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(5, 7, 1, 0, CLIENT_TYPE_1), 35u);
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(5, 7, 1, 0, CLIENT_TYPE_9), 210u);
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(5, 7, 1, 0, CLIENT_TYPE_24), 560u);
}

TEST(TextureLevelSize, EveryComponentIsAtLeastOne) {
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(0, 0, 0, 0, vTextureFormat::FORMAT_33), 16u);
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(640, 480, 1, 10, vTextureFormat::FORMAT_33), 16u);
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(0, 0, 0, 0, CLIENT_TYPE_9), 6u);
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(640, 480, 1, 31, CLIENT_TYPE_9), 6u);
}

TEST(TextureLevelSize, TakesTheLevelModulo32) {
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(8, 8, 8, 32, vTextureFormat::FORMAT_5), 2048u);
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(8, 8, 8, 33, vTextureFormat::FORMAT_5), 256u);
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(8, 8, 8, 32, CLIENT_TYPE_5), 2048u);
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(8, 8, 8, 33, CLIENT_TYPE_5), 256u);
}

TEST(TextureLevelSize, WrapsIn32Bits) {
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(1u << 28, 1, 1, 0, vTextureFormat::FORMAT_33), 0u);
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes((1u << 28) + 1, 1, 1, 0, CLIENT_TYPE_17), 16u);
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(UINT32_MAX, 1, 1, 0, vTextureFormat::FORMAT_4),
              0xFFFFFFFDu)
        << "three times -1";
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(UINT32_MAX, UINT32_MAX, UINT32_MAX, 0, CLIENT_TYPE_9),
              0xFFFFFFFAu)
        << "six times -1";
}

TEST(TextureLevelSize, EveryFormatAndLevelEqualsThePlainSize) {
    CheckFailureCapture capture;
    for (const auto& [width, height, depth] : kExtents)
        for (int value = 1; value <= 64; ++value)
            for (std::uint32_t level = 0; level <= 33; ++level)
                ASSERT_EQ(vTextureUtils::ComputeImageSizeInBytes(width, height, depth, level, format(value)),
                          level_bytes(width, height, depth, level, value))
                    << width << " x " << height << " x " << depth << ", level " << level << ", format "
                    << value;
    EXPECT_TRUE(capture.take().empty());
}

TEST(TextureLevelSize, EveryClientTypeAndLevelEqualsThePlainSize) {
    CheckFailureCapture capture;
    for (const auto& [width, height, depth] : kExtents)
        for (int value = 0; value <= 40; ++value)
            for (std::uint32_t level = 0; level <= 33; ++level)
                ASSERT_EQ(
                    vTextureUtils::ComputeImageSizeInBytes(width, height, depth, level, client_type(value)),
                    product(level_extent(width, level), level_extent(height, level),
                            level_extent(depth, level), bytes_of(client_sizes(), value)))
                    << width << " x " << height << " x " << depth << ", level " << level << ", type "
                    << value;
    EXPECT_TRUE(capture.take().empty());
}

TEST(TextureLevelSize, WhatIsNoClientTypeHasNoBytesAndNoReport) {
    CheckFailureCapture capture;
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(4, 4, 1, 0, client_type(0)), 0u);
    for (int value : no_member()) {
        EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(4, 4, 1, 0, client_type(value)), 0u) << value;
        EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(Extent(4, 4, 1), 0, client_type(value)), 0u)
            << value;
    }
    EXPECT_TRUE(capture.take().empty());
}

TEST(TextureLevelSize, AnExtentStandsForItsComponents) {
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(Extent(5, 6, 7), 1, vTextureFormat::FORMAT_5), 72u);
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(Extent(5, 6, 7), 1, CLIENT_TYPE_9), 108u);
    for (const auto& [width, height, depth] : kExtents) {
        const Extent extent(width, height, depth);
        for (std::uint32_t level = 0; level <= 33; ++level) {
            for (int value = 1; value <= 64; ++value)
                ASSERT_EQ(vTextureUtils::ComputeImageSizeInBytes(extent, level, format(value)),
                          vTextureUtils::ComputeImageSizeInBytes(width, height, depth, level, format(value)))
                    << width << " x " << height << " x " << depth << ", level " << level << ", format "
                    << value;
            for (int value = 0; value <= 40; ++value)
                ASSERT_EQ(
                    vTextureUtils::ComputeImageSizeInBytes(extent, level, client_type(value)),
                    vTextureUtils::ComputeImageSizeInBytes(width, height, depth, level, client_type(value)))
                    << width << " x " << height << " x " << depth << ", level " << level << ", type "
                    << value;
        }
    }
}

TEST(TextureLevelSize, AMipIsAnImage) {
    EXPECT_EQ(vTextureUtils::ComputeMipSizeInBytes(5, 6, 7, 1, vTextureFormat::FORMAT_5), 72u);
    EXPECT_EQ(vTextureUtils::ComputeMipSizeInBytes(5, 5, 1, 0, vTextureFormat::FORMAT_51), 32u);
    for (const auto& [width, height, depth] : kExtents)
        for (int value = 1; value <= 64; ++value)
            for (std::uint32_t level = 0; level <= 33; ++level)
                ASSERT_EQ(vTextureUtils::ComputeMipSizeInBytes(width, height, depth, level, format(value)),
                          vTextureUtils::ComputeImageSizeInBytes(width, height, depth, level, format(value)))
                    << width << " x " << height << " x " << depth << ", level " << level << ", format "
                    << value;
}

}  // namespace
