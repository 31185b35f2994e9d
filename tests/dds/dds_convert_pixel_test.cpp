// SPDX-License-Identifier: Apache-2.0
// The static converter of uncompressed pixels to red, green, blue(, alpha).
#include <gtest/gtest.h>
#include <utility>

#include "support/allocation.h"
#include "support/dds_check.h"
#include "vDDSImage.h"

namespace {

using support::Bytes;
using support::chars;
using support::random_bytes;

TOZ::DDS_PIXELFORMAT masks(std::uint32_t r, std::uint32_t g, std::uint32_t b, std::uint32_t a) {
    return {32, 0x41, 0, 32, r, g, b, a};
}

TOZ::DDS_PIXELFORMAT blue_first() { return masks(0xFF0000, 0xFF00, 0xFF, 0xFF000000); }

Bytes converted(Bytes bytes, int width, int height, int depth, TOZ::DDS_PIXELFORMAT format, int components) {
    vDDSImage::convertTexturePixel(chars(bytes), width, height, depth, bytes.size(), format, components);
    return bytes;
}

TEST(DdsConvertPixel, FourComponentsStoredBlueFirst) {
    EXPECT_EQ(converted({0x11, 0x22, 0x33, 0x44}, 1, 1, 1, blue_first(), 4), (Bytes{0x33, 0x22, 0x11, 0x44}));
}

TEST(DdsConvertPixel, ThreeComponentsStoredBlueFirst) {
    EXPECT_EQ(converted({1, 2, 3, 4, 5, 6}, 2, 1, 1, blue_first(), 3), (Bytes{3, 2, 1, 6, 5, 4}));
}

TEST(DdsConvertPixel, OtherComponentCountsAreLeftAlone) {
    for (int components : {1, 2, 0, 5, 8}) {
        const Bytes before = {0x11, 0x22, 0x33, 0x44, 5, 6, 7, 8};
        EXPECT_EQ(converted(before, 1, 1, 1, blue_first(), components), before) << components;
    }
}

TEST(DdsConvertPixel, ZeroMaskMakesItsChannelZero) {
    EXPECT_EQ(converted({1, 2, 3}, 1, 1, 1, masks(0xFF0000, 0xFF00, 0, 0), 3), (Bytes{3, 2, 0}));
    EXPECT_EQ(converted({1, 2, 3, 4}, 1, 1, 1, masks(0, 0xFF00, 0xFF, 0), 4), (Bytes{0, 2, 1, 0}));
    EXPECT_EQ(converted({1, 2, 3, 4}, 1, 1, 1, masks(0, 0, 0, 0), 4), (Bytes{0, 0, 0, 0}));
}

TEST(DdsConvertPixel, WideMasksKeepTheirLowEightBits) {
    EXPECT_EQ(converted({0xCD, 0xAB, 3, 4}, 1, 1, 1, masks(0xFFFF, 0xFFF0, 0xFFFFFFFF, 0xFFFF0000), 4),
              (Bytes{0xCD, 0xBC, 0xCD, 3}));
}

TEST(DdsConvertPixel, TopBitMasks) {
    EXPECT_EQ(converted({0, 0, 0, 0x90}, 1, 1, 1, masks(0x80000000, 0x40000000, 0x30000000, 0xF0000000), 4),
              (Bytes{1, 0, 1, 9}));
}

TEST(DdsConvertPixel, ThreeBytePixelsHaveNoBitsAbove24) {
    EXPECT_EQ(converted({1, 2, 3}, 1, 1, 1, masks(0xFFFF0000, 0xFF000000, 0xFF, 0), 3), (Bytes{3, 0, 1}));
}

TEST(DdsConvertPixel, PixelsArePackedFromTheStartOfEachSlice) {
    // Two slices of nine bytes: two packed pixels and three bytes that belong to none.
    const Bytes before = {1, 2, 3, 4, 5, 6, 77, 78, 79, 7, 8, 9, 10, 11, 12, 87, 88, 89};
    EXPECT_EQ(converted(before, 1, 2, 2, blue_first(), 3),
              (Bytes{3, 2, 1, 6, 5, 4, 77, 78, 79, 9, 8, 7, 12, 11, 10, 87, 88, 89}));
}

TEST(DdsConvertPixel, NegativeDepthStops) {
    const Bytes before = {1, 2, 3, 4};
    EXPECT_EQ(converted(before, 1, 1, -1, blue_first(), 4), before);
}

TEST(DdsConvertPixel, NoPixelsNothingToDo) {
    const Bytes before = {1, 2, 3, 4};
    EXPECT_EQ(converted(before, 0, 1, 1, blue_first(), 4), before);
    EXPECT_EQ(converted(before, -1, 1, 1, blue_first(), 4), before);
}

TEST(DdsConvertPixel, OnlyTheMasksOfTheFormatMatter) {
    TOZ::DDS_PIXELFORMAT format = blue_first();
    format.dwSize = 0;
    format.dwFlags = 4;
    format.dwFourCC = 0x31545844;
    format.dwRGBBitCount = 8;
    EXPECT_EQ(converted({1, 2, 3, 4}, 1, 1, 1, format, 4), (Bytes{3, 2, 1, 4}));
}

TEST(DdsConvertPixel, LeavesTheFormatUnchanged) {
    TOZ::DDS_PIXELFORMAT format = blue_first();
    Bytes bytes = {1, 2, 3, 4};
    vDDSImage::convertTexturePixel(chars(bytes), 1, 1, 1, 4, format, 4);
    EXPECT_EQ(format.dwRBitMask, 0xFF0000u);
    EXPECT_EQ(format.dwFlags, 0x41u);
}

TEST(DdsConvertPixel, TakesNoMemory) {
    Bytes bytes = random_bytes(4 * 100, 1);
    TOZ::DDS_PIXELFORMAT format = blue_first();
    const support::AllocationRecorder recorder;
    vDDSImage::convertTexturePixel(chars(bytes), 10, 10, 1, bytes.size(), format, 4);
    EXPECT_EQ(recorder.allocations(), 0u);
}

/// Masks as files have them and as only a damaged file has them.
std::vector<plain::Masks> mask_layouts() {
    return {
        {0xFF, 0xFF00, 0xFF0000, 0xFF000000},
        {0xFF0000, 0xFF00, 0xFF, 0xFF000000},
        {0xFF000000, 0xFF0000, 0xFF00, 0xFF},
        {0xFF00, 0xFF0000, 0xFF000000, 0xFF},
        {0xFF0000, 0xFF00, 0xFF, 0},
        {0xF800, 0x7E0, 0x1F, 0},
        {0x7C00, 0x3E0, 0x1F, 0x8000},
        {0x3FF, 0xFFC00, 0x3FF00000, 0xC0000000},
        {0x80000000, 0x1, 0x80000001, 0x40000000},
        {0xFFFFFFFF, 0xFFFFFFFF, 0xFF, 0xFFFF0000},
        {0, 0, 0, 0},
        {0x12345678, 0x9ABCDEF0, 0x0F0F0F0F, 0xF0F0F0F0},
        {0x800000, 0x01FF8000, 0x007FFFFE, 0x00800000},
    };
}

TEST(DdsConvertPixel, AgreesWithTheModelAtEveryLineLength) {
    for (const plain::Masks& layout : mask_layouts())
        for (int components : {3, 4})
            for (int width = 1; width <= 70; ++width) {
                const auto size = static_cast<std::size_t>(width * components * 2);
                const Bytes before = random_bytes(size, static_cast<std::uint32_t>(width));
                Bytes expected = before;
                plain::reorder(expected, width, 1, 2, components, layout);
                const auto format = masks(layout.red, layout.green, layout.blue, layout.alpha);
                ASSERT_TRUE(support::same_bytes(converted(before, width, 1, 2, format, components), expected))
                    << std::hex << layout.red << ", " << components << " components, width " << std::dec
                    << width;
            }
}

TEST(DdsConvertPixel, AtAnyAddress) {
    for (std::size_t shift = 0; shift < 16; ++shift) {
        Bytes memory = random_bytes(shift + 4 * 37, 2);
        Bytes expected = memory;
        for (std::size_t at = shift; at < memory.size(); at += 4) std::swap(expected[at], expected[at + 2]);
        TOZ::DDS_PIXELFORMAT format = blue_first();
        vDDSImage::convertTexturePixel(chars(memory) + shift, 37, 1, 1, 4 * 37, format, 4);
        EXPECT_EQ(memory, expected) << shift;
    }
}

}  // namespace
