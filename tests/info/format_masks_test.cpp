// SPDX-License-Identifier: Apache-2.0
// Formats by the channel masks of a DDS header, and the Direct3D 9 numbers that stand for them.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vTextureFormats.h>

#include "info/documented_formats.h"

namespace {

using namespace documented;
using vTextureFormatTables::kLegacyFormats;

// The masks of a D3DFMT number, from the table of the "Programming Guide for DDS".
struct Masks {
    const char* name;
    std::uint32_t d3d;  // 0: none
    std::uint32_t flags;
    std::uint32_t bits;
    std::uint32_t red, green, blue, alpha;
};

constexpr std::uint32_t kAlphaPixels = 0x1;
constexpr std::uint32_t kAlphaOnly = 0x2;
constexpr std::uint32_t kPalette = 0x20;
constexpr std::uint32_t kRgb = 0x40;
constexpr std::uint32_t kRgba = 0x41;
constexpr std::uint32_t kLuminance = 0x20000;
constexpr std::uint32_t kLuminanceAlpha = 0x20001;
constexpr std::uint32_t kBumpLuminance = 0x40000;
constexpr std::uint32_t kBump = 0x80000;

// clang-format off
constexpr Masks kNamedMasks[] = {
    {"B8G8R8_UNORM", 20, kRgb, 24, 0xFF0000, 0xFF00, 0xFF, 0},
    {"R8G8B8_UNORM", 0, kRgb, 24, 0xFF, 0xFF00, 0xFF0000, 0},
    {"B8G8R8A8_UNORM", 21, kRgba, 32, 0xFF0000, 0xFF00, 0xFF, 0xFF000000},
    {"B8G8R8X8_UNORM", 22, kRgb, 32, 0xFF0000, 0xFF00, 0xFF, 0},
    {"B5G6R5_UNORM", 23, kRgb, 16, 0xF800, 0x7E0, 0x1F, 0},
    {"B5G5R5X1_UNORM", 24, kRgb, 16, 0x7C00, 0x3E0, 0x1F, 0},
    {"B5G5R5A1_UNORM", 25, kRgba, 16, 0x7C00, 0x3E0, 0x1F, 0x8000},
    {"B4G4R4A4_UNORM", 26, kRgba, 16, 0xF00, 0xF0, 0xF, 0xF000},
    {"B2G3R3_UNORM", 27, kRgb, 8, 0xE0, 0x1C, 0x3, 0},
    {"A8_UNORM", 28, kAlphaOnly, 8, 0, 0, 0, 0xFF},
    {"B2G3R3A8_UNORM", 29, kRgba, 16, 0xE0, 0x1C, 0x3, 0xFF00},
    {"B4G4R4X4_UNORM", 30, kRgb, 16, 0xF00, 0xF0, 0xF, 0},
    {"R10G10B10A2_UNORM", 31, kRgba, 32, 0x3FF, 0xFFC00, 0x3FF00000, 0xC0000000},
    {"R8G8B8A8_UNORM", 32, kRgba, 32, 0xFF, 0xFF00, 0xFF0000, 0xFF000000},
    {"R8G8B8X8_UNORM", 33, kRgb, 32, 0xFF, 0xFF00, 0xFF0000, 0},
    {"R16G16_UNORM", 34, kRgb, 32, 0xFFFF, 0xFFFF0000, 0, 0},
    {"B10G10R10A2_UNORM", 35, kRgba, 32, 0x3FF00000, 0xFFC00, 0x3FF, 0xC0000000},
    {"R16G16B16A16_UNORM", 36, 0, 0, 0, 0, 0, 0},
    {"A8P8", 40, 0, 0, 0, 0, 0, 0},
    {"P8", 41, kPalette, 8, 0, 0, 0, 0},
    {"L8_UNORM", 50, kLuminance, 8, 0xFF, 0, 0, 0},
    {"L8A8_UNORM", 51, kLuminanceAlpha, 16, 0xFF, 0, 0, 0xFF00},
    {"L4A4_UNORM", 52, kLuminanceAlpha, 8, 0xF, 0, 0, 0xF0},
    {"R8G8_SNORM", 60, kBump, 16, 0xFF, 0xFF00, 0, 0},
    {"R5G5_SNORM_L6_UNORM", 61, kBumpLuminance, 16, 0x1F, 0x3E0, 0xFC00, 0},
    {"R8G8_SNORM_L8X8_UNORM", 62, kBumpLuminance, 32, 0xFF, 0xFF00, 0xFF0000, 0},
    {"R8G8B8A8_SNORM", 63, kBump, 32, 0xFF, 0xFF00, 0xFF0000, 0xFF000000},
    {"R16G16_SNORM", 64, kBump, 32, 0xFFFF, 0xFFFF0000, 0, 0},
    {"R10G10B10_SNORM_A2_UNORM", 67, kBump | kAlphaPixels, 32, 0x3FF, 0xFFC00, 0x3FF00000, 0xC0000000},
    {"D16_UNORM", 80, 0, 0, 0, 0, 0, 0},
    {"L16_UNORM", 81, kLuminance, 16, 0xFFFF, 0, 0, 0},
    {"D32_FLOAT", 82, 0, 0, 0, 0, 0, 0},
    {"R16G16B16A16_SNORM", 110, 0, 0, 0, 0, 0, 0},
    {"R16_FLOAT", 111, 0, 0, 0, 0, 0, 0},
    {"R16G16_FLOAT", 112, 0, 0, 0, 0, 0, 0},
    {"R16G16B16A16_FLOAT", 113, 0, 0, 0, 0, 0, 0},
    {"R32_FLOAT", 114, 0, 0, 0, 0, 0, 0},
    {"R32G32_FLOAT", 115, 0, 0, 0, 0, 0, 0},
    {"R32G32B32A32_FLOAT", 116, 0, 0, 0, 0, 0, 0},
    {"R8_UNORM", 0, kRgb, 8, 0xFF, 0, 0, 0},
    {"R8G8_UNORM", 0, kRgb, 16, 0xFF, 0xFF00, 0, 0},
    {"R16_UNORM", 0, kRgb, 16, 0xFFFF, 0, 0, 0},
    {"A4B4G4R4_UNORM", 0, kRgba, 16, 0xF000, 0xF00, 0xF0, 0xF},
    {"R5G5B5A1_UNORM", 0, kRgba, 16, 0x1F, 0x3E0, 0x7C00, 0x8000},
    {"R5G6B5_UNORM", 0, kRgb, 16, 0x1F, 0x7E0, 0xF800, 0},
    {"A1B5G5R5_UNORM", 0, kRgba, 16, 0xF800, 0x7C0, 0x3E, 0x1},
    {"A8B8G8R8_UNORM", 0, kRgba, 32, 0xFF000000, 0xFF0000, 0xFF00, 0xFF},
    {"X8B8G8R8_UNORM", 0, kRgb, 32, 0xFF000000, 0xFF0000, 0xFF00, 0},
    {"G8R8_UNORM", 0, kRgb, 16, 0xFF00, 0xFF, 0, 0},
    {"A8L8_UNORM", 0, kLuminanceAlpha, 16, 0xFF00, 0, 0, 0xFF},
    {"R8X8G8_UNORM", 0, kRgb, 24, 0xFF, 0xFF0000, 0, 0},
    {"R1G1B1A1X4_UNORM", 0, kRgba, 8, 1, 2, 4, 8},
    {"X31R1_UNORM", 0, kRgb, 32, 0x80000000, 0, 0, 0},
};
// clang-format on

bool from_masks(const Masks& masks, vPixelFormat& format) {
    return vTextureFormats::FromMasks(
        {32, masks.flags, 0, masks.bits, masks.red, masks.green, masks.blue, masks.alpha}, format);
}

TEST(TextureFormats, AreNamedAsTheirMasks) {
    for (const Masks& masks : kNamedMasks) {
        if (masks.flags == 0) continue;
        SCOPED_TRACE(masks.name);
        vPixelFormat format{};
        ASSERT_TRUE(from_masks(masks, format));
        EXPECT_STREQ(format.name, masks.name);
        EXPECT_EQ(format.blockWidth, 1);
        EXPECT_EQ(format.blockHeight, 1);
        EXPECT_EQ(format.planes, 1);
        EXPECT_EQ(format.blockBytes * 8U, masks.bits);
        EXPECT_EQ(bits_of(format.channels), masks.bits);
        EXPECT_FALSE(format.srgb);
        // A palette lies in the file of a P8 by masks, which DXGI's P8 lacks.
        const vPixelFormat* const known = vTextureFormats::FindName(masks.name);
        if (!known || masks.flags == kPalette) continue;
        EXPECT_EQ(format.dxgi, known->dxgi);
        EXPECT_EQ(format.vulkan, known->vulkan);
    }
}

TEST(TextureFormats, OfDirect3D9NumbersAreThoseOfTheirMasks) {
    std::set<std::uint32_t> numbers;
    for (const Masks& masks : kNamedMasks) {
        if (masks.d3d == 0) continue;
        const vLegacyFormat* const format = vTextureFormats::FindFourCC(masks.d3d);
        ASSERT_NE(format, nullptr) << masks.d3d;
        EXPECT_STREQ(format->name, masks.name) << masks.d3d;
        EXPECT_FALSE(format->premultiplied);
        numbers.insert(masks.d3d);
    }
    for (const vLegacyFormat& format : kLegacyFormats) {
        if (format.fourCC > 0x1000) continue;
        // D16_LOCKABLE, CxV8U8 and A2B10G10R10_XR_BIAS, the formats above aside.
        const bool other = format.fourCC == 70 || format.fourCC == 117 || format.fourCC == 119;
        EXPECT_TRUE(other || numbers.count(format.fourCC) == 1) << format.fourCC;
        EXPECT_NE(vTextureFormats::FindName(format.name), nullptr) << format.name;
    }
}

// Channels of any bits in any order, with gaps, become channels of the same bits in the same order.
TEST(TextureFormats, OfAnyDisjointMasksAreTheirChannels) {
    const char letters[] = {'R', 'G', 'B', 'A'};
    int order[] = {0, 1, 2, 3};
    do {
        for (const unsigned bits : {8U, 16U, 24U, 32U}) {
            for (unsigned gap = 0; gap < 2; ++gap) {
                const unsigned width = bits / 4 - gap;
                std::uint32_t masks[4] = {};
                std::string expected;
                for (unsigned i = 0; i < 4; ++i) {
                    const std::uint32_t mask = (1U << width) - 1;
                    masks[order[i]] = mask << (bits / 4 * i);
                    expected += letters[order[i]] + std::to_string(width);
                    if (gap > 0) expected += "X1";
                }
                vPixelFormat format{};
                ASSERT_TRUE(vTextureFormats::FromMasks(
                    {32, kRgba, 0, bits, masks[0], masks[1], masks[2], masks[3]}, format));
                EXPECT_EQ(spelled(format.channels), expected);
                EXPECT_EQ(format.name, expected + "_UNORM");
            }
        }
    } while (std::next_permutation(order, order + 4));
}

TEST(TextureFormats, OfOneChannelWithoutAMaskFillThePixel) {
    const Masks lone[] = {
        {"L8_UNORM", 0, kLuminance, 8, 0, 0, 0, 0},
        {"L16_UNORM", 0, kLuminance, 16, 0, 0, 0, 0},
        {"A8_UNORM", 0, kAlphaOnly, 8, 0, 0, 0, 0},
    };
    for (const Masks& masks : lone) {
        vPixelFormat format{};
        ASSERT_TRUE(from_masks(masks, format)) << masks.name;
        EXPECT_STREQ(format.name, masks.name);
    }
}

// Direct3D 9 has one format with a single channel of 32 bits: R32F.
TEST(TextureFormats, OfOneMaskOf32BitsAreFloats) {
    vPixelFormat format{};
    ASSERT_TRUE(from_masks({"", 0, kRgb, 32, 0xFFFFFFFF, 0, 0, 0}, format));
    EXPECT_STREQ(format.name, "R32_FLOAT");
    EXPECT_EQ(format.channels.Find('R')->kind, vPixelFormat::eFloat);
}

TEST(TextureFormats, OfAPaletteHaveNoDxgiNumber) {
    vPixelFormat format{};
    ASSERT_TRUE(from_masks({"", 0, kPalette, 8, 0, 0, 0, 0}, format));
    EXPECT_EQ(format.dxgi, 0U);
    EXPECT_EQ(format.layout, vPixelFormat::ePalette);
}

// An alpha flag without a mask announces nothing.
TEST(TextureFormats, HaveTheAlphaThatTheirMaskNames) {
    vPixelFormat format{};
    ASSERT_TRUE(from_masks({"", 0, kRgba, 32, 0xFF0000, 0xFF00, 0xFF, 0}, format));
    EXPECT_STREQ(format.name, "B8G8R8X8_UNORM");
    ASSERT_TRUE(from_masks({"", 0, kRgba, 24, 0xFF0000, 0xFF00, 0xFF, 0}, format));
    EXPECT_STREQ(format.name, "B8G8R8_UNORM");
}

TEST(TextureFormats, AreNoneOfMasksThatNameNone) {
    const Masks none[] = {
        {"no masks", 0, kRgb, 32, 0, 0, 0, 0},
        {"no masks, luminance and alpha", 0, kLuminanceAlpha, 16, 0, 0, 0, 0},
        {"FourCC", 0, 0x44, 32, 0xFF0000, 0xFF00, 0xFF, 0},
        {"YUV", 0, 0x200, 32, 0xFF0000, 0xFF00, 0xFF, 0},
        {"palette of 4 bits", 0, 0x8, 8, 0, 0, 0, 0},
        {"palette of 24 bits", 0, kPalette, 24, 0, 0, 0, 0},
        {"overlap", 0, kRgb, 16, 0xF800, 0xFE0, 0x1F, 0},
        {"equal", 0, kRgb, 16, 0xFF, 0xFF, 0xFF00, 0},
        {"alpha over red", 0, kRgba, 16, 0xFF, 0xFF00, 0, 0x80},
        {"hole", 0, kRgb, 16, 0xF0F0, 0x0F0F, 0, 0},
        {"hole of a bit", 0, kRgb, 32, 0xFB, 0xFF00, 0xFF0000, 0},
        {"beyond 16 bits", 0, kRgb, 16, 0x1F800, 0x7E0, 0x1F, 0},
        {"beyond 24 bits", 0, kRgba, 24, 0xFF, 0xFF00, 0xFF0000, 0xFF000000},
        {"beyond 8 bits", 0, kRgb, 8, 0x1FF, 0, 0, 0},
        {"0 bits", 0, kRgb, 0, 0xFF, 0, 0, 0},
        {"12 bits", 0, kRgb, 12, 0xF00, 0xF0, 0xF, 0},
        {"33 bits", 0, kRgb, 33, 0xFF0000, 0xFF00, 0xFF, 0},
        {"64 bits", 0, kRgb, 64, 0xFF0000, 0xFF00, 0xFF, 0},
        {"7 bits", 0, kRgb, 7, 0x7F, 0, 0, 0},
        {"2^32 - 8 bits", 0, kRgb, 0xFFFFFFF8, 0xFF0000, 0xFF00, 0xFF, 0},
    };
    for (const Masks& masks : none) {
        vPixelFormat format{};
        std::memset(&format, 0x5A, sizeof format);
        const vPixelFormat before = format;
        EXPECT_FALSE(from_masks(masks, format)) << masks.name << ": " << format.name;
        EXPECT_EQ(std::memcmp(&format, &before, sizeof format), 0) << masks.name;
    }
}

}  // namespace
