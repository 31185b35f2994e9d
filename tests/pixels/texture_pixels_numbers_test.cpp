// SPDX-License-Identifier: Apache-2.0
// Pixels and what they decode to, worked out by hand.
#include <array>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <initializer_list>
#include <limits>
#include <vTexturePixels.h>
#include <vector>

#include "support/bytes.h"

namespace {

using support::Bytes;

template <class Element>
using Pixels = std::vector<Element>;

template <class Element>
Pixels<Element> decoded(const vPixelFormat& format, const Bytes& row, vTexturePixels::EElement element,
                        std::uint32_t width) {
    Pixels<Element> pixels(width * 4u);
    EXPECT_TRUE(vTexturePixels::Decode(format, row.data(), row.size(), width, 1, element, pixels.data()));
    return pixels;
}

Pixels<std::uint8_t> rgba8(const char* name, const Bytes& row, std::uint32_t width = 1) {
    return decoded<std::uint8_t>(*vTextureFormats::FindName(name), row, vTexturePixels::eRGBA8, width);
}

Pixels<std::uint16_t> rgba16(const char* name, const Bytes& row) {
    return decoded<std::uint16_t>(*vTextureFormats::FindName(name), row, vTexturePixels::eRGBA16, 1);
}

Pixels<float> rgba32f(const char* name, const Bytes& row) {
    return decoded<float>(*vTextureFormats::FindName(name), row, vTexturePixels::eRGBA32F, 1);
}

using Eight = Pixels<std::uint8_t>;
using Sixteen = Pixels<std::uint16_t>;
using Floats = Pixels<float>;

constexpr float kInfinity = std::numeric_limits<float>::infinity();

TEST(TexturePixelsNumbers, WholeBytesAreCopied) {
    EXPECT_EQ(rgba8("R8G8B8A8_UNORM", {1, 2, 3, 4}), (Eight{1, 2, 3, 4}));
    EXPECT_EQ(rgba8("R8G8B8A8_UNORM_SRGB", {1, 2, 3, 4}), (Eight{1, 2, 3, 4}));
    EXPECT_EQ(rgba8("B8G8R8A8_UNORM", {1, 2, 3, 4}), (Eight{3, 2, 1, 4}));
    EXPECT_EQ(rgba8("B8G8R8_UNORM", {1, 2, 3}), (Eight{3, 2, 1, 255}));
    EXPECT_EQ(rgba8("R8G8_UNORM", {1, 2}), (Eight{1, 2, 0, 255}));
}

TEST(TexturePixelsNumbers, UnusedBitsAreOpaque) {
    EXPECT_EQ(rgba8("B8G8R8X8_UNORM", {1, 2, 3, 4}), (Eight{3, 2, 1, 255}));
    EXPECT_EQ(rgba8("B5G5R5X1_UNORM", {0x00, 0x00}), (Eight{0, 0, 0, 255}));
}

TEST(TexturePixelsNumbers, FewBitsSpreadOverTheByte) {
    // B 1, G 2, R 3 of 31, 63, 31: 8.23, 8.10, 24.68
    EXPECT_EQ(rgba8("B5G6R5_UNORM", {0x41, 0x18}), (Eight{25, 8, 8, 255}));
    EXPECT_EQ(rgba8("B5G6R5_UNORM", {0x00, 0xF8}), (Eight{255, 0, 0, 255}));
    EXPECT_EQ(rgba8("B5G5R5A1_UNORM", {0x1F, 0x80}), (Eight{0, 0, 255, 255}));
    EXPECT_EQ(rgba8("B5G5R5A1_UNORM", {0xE0, 0x03}), (Eight{0, 255, 0, 0}));
    EXPECT_EQ(rgba8("A1B5G5R5_UNORM", {0x01, 0xF8}), (Eight{255, 0, 0, 255}));
    EXPECT_EQ(rgba8("B4G4R4A4_UNORM", {0x21, 0x43}), (Eight{51, 34, 17, 68}));
    EXPECT_EQ(rgba8("A4B4G4R4_UNORM", {0x21, 0x43}), (Eight{68, 51, 34, 17}));
    // R 5 of 7: 182.14; G 2: 72.86; B 1 of 3
    EXPECT_EQ(rgba8("B2G3R3_UNORM", {0xA9}), (Eight{182, 73, 85, 255}));
    EXPECT_EQ(rgba8("B2G3R3A8_UNORM", {0xA9, 0x7B}), (Eight{182, 73, 85, 0x7B}));
}

TEST(TexturePixelsNumbers, LuminanceIsGreyAndAlphaAloneIsBlack) {
    EXPECT_EQ(rgba8("L8_UNORM", {7}), (Eight{7, 7, 7, 255}));
    EXPECT_EQ(rgba8("L8A8_UNORM", {7, 9}), (Eight{7, 7, 7, 9}));
    EXPECT_EQ(rgba8("L4A4_UNORM", {0xC3}), (Eight{51, 51, 51, 204}));
    EXPECT_EQ(rgba16("L16_UNORM", {0x34, 0x12}), (Sixteen{0x1234, 0x1234, 0x1234, 65535}));
    EXPECT_EQ(rgba8("A8_UNORM", {9}), (Eight{0, 0, 0, 9}));
    EXPECT_EQ(rgba8("R8_UNORM", {9}), (Eight{9, 0, 0, 255}));
}

TEST(TexturePixelsNumbers, TenBitsNeedSixteen) {
    // R 1, G 512, B 1023, A 2: 64.06 and 32799.53 of 65535; 127.6 of 255
    const Bytes pixel = {0x01, 0x00, 0xF8, 0xBF};
    EXPECT_EQ(rgba16("R10G10B10A2_UNORM", pixel), (Sixteen{64, 32800, 65535, 43690}));
    EXPECT_EQ(rgba8("R10G10B10A2_UNORM", pixel), (Eight{0, 128, 255, 170}));
    EXPECT_EQ(rgba16("B10G10R10A2_UNORM", pixel), (Sixteen{65535, 32800, 64, 43690}));
    EXPECT_EQ(rgba16("R10G10B10A2_UINT", pixel), (Sixteen{1, 512, 1023, 2}));
    EXPECT_EQ(rgba8("R10G10B10A2_UINT", pixel), (Eight{1, 255, 255, 2}));
}

TEST(TexturePixelsNumbers, SixteenBitsAreRoundedToEight) {
    // 128 / 257 is below a half, 129 / 257 above it
    EXPECT_EQ(rgba8("R16G16_UNORM", {128, 0, 129, 0}), (Eight{0, 1, 0, 255}));
    EXPECT_EQ(rgba8("R16G16_UNORM", {0x7F, 0xFF, 0x7E, 0xFF}), (Eight{255, 254, 0, 255}));
    EXPECT_EQ(rgba16("R16G16B16A16_UNORM", {1, 2, 3, 4, 5, 6, 7, 8}), (Sixteen{0x201, 0x403, 0x605, 0x807}));
}

TEST(TexturePixelsNumbers, SignedNumbersHaveTheirZeroInTheMiddle) {
    EXPECT_EQ(rgba8("R8G8B8A8_SNORM", {0x00, 0x7F, 0x80, 0x81}), (Eight{128, 255, 0, 0}));
    EXPECT_EQ(rgba16("R8G8B8A8_SNORM", {0x00, 0x7F, 0x80, 0x81}), (Sixteen{32768, 65535, 0, 0}));
    EXPECT_EQ(rgba32f("R8G8B8A8_SNORM", {0x00, 0x7F, 0x80, 0x81}), (Floats{0, 1, -1, -1}));
    EXPECT_EQ(rgba32f("R16G16_SNORM", {0xFF, 0x7F, 0x00, 0x80}), (Floats{1, -1, 0, 1}));
    EXPECT_EQ(rgba32f("R10G10B10_SNORM_A2_UNORM", {0x00, 0x00, 0x00, 0xE0}), (Floats{0, 0, -1, 1}));
}

TEST(TexturePixelsNumbers, BumpLuminanceIsBlue) {
    // R -16, G 15, L 63; R -15, G 0, L 32: 129.5 of 255
    EXPECT_EQ(rgba8("R5G5_SNORM_L6_UNORM", {0xF0, 0xFD}), (Eight{0, 255, 255, 255}));
    EXPECT_EQ(rgba8("R5G5_SNORM_L6_UNORM", {0x11, 0x80}), (Eight{0, 128, 130, 255}));
    EXPECT_EQ(rgba32f("R5G5_SNORM_L6_UNORM", {0xF0, 0xFD}), (Floats{-1, 1, 1, 1}));
    EXPECT_EQ(rgba8("R8G8_SNORM_L8X8_UNORM", {0x7F, 0x80, 0x33, 0x00}), (Eight{255, 0, 0x33, 255}));
}

TEST(TexturePixelsNumbers, IntegersAreCut) {
    EXPECT_EQ(rgba8("R16G16_UINT", {0xFF, 0x00, 0x00, 0x01}), (Eight{255, 255, 0, 255}));
    EXPECT_EQ(rgba8("R8G8_SINT", {0x7F, 0xFF}), (Eight{127, 0, 0, 255}));
    EXPECT_EQ(rgba16("R32G32_SINT", {0xFE, 0xFF, 0, 0, 0, 0, 1, 0}), (Sixteen{65534, 65535, 0, 65535}));
    EXPECT_EQ(rgba32f("R8G8_SINT", {0x7F, 0x80}), (Floats{127, -128, 0, 1}));
    EXPECT_EQ(rgba32f("R32G32B32_SINT", {0, 0, 0, 0x80, 0xFF, 0xFF, 0xFF, 0xFF, 1, 0, 0, 1}),
              (Floats{-2147483648.0F, -1, 16777216, 1}));  // of 2^24 + 1
    EXPECT_EQ(rgba32f("R32G32_UINT", {0xFF, 0xFF, 0xFF, 0xFF, 3, 0, 0, 1}),
              (Floats{4294967296.0F, 16777220, 0, 1}));
}

TEST(TexturePixelsNumbers, HalvesKeepTheirSpecialNumbers) {
    const auto halves = [](std::initializer_list<unsigned> numbers) {
        Bytes bytes;
        for (const unsigned number : numbers) {
            bytes.push_back(static_cast<std::uint8_t>(number & 0xFF));
            bytes.push_back(static_cast<std::uint8_t>(number >> 8));
        }
        return bytes;
    };
    EXPECT_EQ(rgba32f("R16G16B16A16_FLOAT", halves({0x3C00, 0xC000, 0x3555, 0x7BFF})),
              (Floats{1, -2, 0.333251953125F, 65504}));
    EXPECT_EQ(rgba32f("R16G16B16A16_FLOAT", halves({0x0001, 0x83FF, 0x0400, 0xFC00})),
              (Floats{0x1p-24F, -0x3FFp-24F, 0x1p-14F, -kInfinity}));
    const Floats zeros = rgba32f("R16G16_FLOAT", halves({0x8000, 0x7C01}));
    EXPECT_TRUE(zeros[0] == 0 && std::signbit(zeros[0]));
    std::uint32_t nan = 0;
    std::memcpy(&nan, &zeros[1], 4);
    EXPECT_EQ(nan, 0x7F802000u);
    EXPECT_EQ(rgba8("R16G16B16A16_FLOAT", halves({0x3800, 0x4000, 0xBC00, 0x7E00})), (Eight{128, 255, 0, 0}));
    EXPECT_EQ(rgba16("R16G16_FLOAT", halves({0x7C00, 0xFC00})), (Sixteen{65535, 0, 0, 65535}));
}

TEST(TexturePixelsNumbers, FloatsKeepTheirBits) {
    const Bytes signalling = {0x01, 0x00, 0x80, 0x7F, 0x01, 0x00, 0x00, 0x80};
    const Floats pixel = rgba32f("R32G32_FLOAT", signalling);
    EXPECT_EQ(std::memcmp(pixel.data(), signalling.data(), 8), 0);
    EXPECT_EQ(pixel[2], 0);
    EXPECT_EQ(pixel[3], 1);
    // 0.5 is 127.5 of 255; the float below it is less
    EXPECT_EQ(rgba8("R32G32_FLOAT", {0, 0, 0, 0x3F, 0xFF, 0xFF, 0xFF, 0x3E}), (Eight{128, 127, 0, 255}));
}

TEST(TexturePixelsNumbers, FloatsWithoutSign) {
    // 1.0 in each: exponent 15, mantissa 0; 15 << 6, 15 << 17, 15 << 27
    EXPECT_EQ(rgba32f("R11G11B10_FLOAT", {0xC0, 0x03, 0x1E, 0x78}), (Floats{1, 1, 1, 1}));
    // Infinity, the greatest (1 + 63/64) * 2^15, and the least 1/32 * 2^-14
    EXPECT_EQ(rgba32f("R11G11B10_FLOAT", {0xC0, 0xFF, 0x7D, 0x00}), (Floats{kInfinity, 65024, 0x1p-19F, 1}));
}

TEST(TexturePixelsNumbers, SharedExponents) {
    // Mantissas 256, 511, 1 with exponent 16: 2^(16 - 24) each
    EXPECT_EQ(rgba32f("R9G9B9E5_SHAREDEXP", {0x00, 0xFF, 0x07, 0x80}),
              (Floats{1, 1.99609375F, 0.00390625F, 1}));
    EXPECT_EQ(rgba32f("R9G9B9E5_SHAREDEXP", {0xFF, 0x03, 0x00, 0xF8}), (Floats{65408, 128, 0, 1}));
    EXPECT_EQ(rgba32f("R9G9B9E5_SHAREDEXP", {0x01, 0x00, 0x00, 0x00}), (Floats{0x1p-24F, 0, 0, 1}));
}

TEST(TexturePixelsNumbers, PairsShareRedAndBlue) {
    EXPECT_EQ(rgba8("R8G8_B8G8_UNORM", {1, 2, 3, 4}, 2), (Eight{1, 2, 3, 255, 1, 4, 3, 255}));
    EXPECT_EQ(rgba8("G8R8_G8B8_UNORM", {1, 2, 3, 4}, 2), (Eight{2, 1, 4, 255, 2, 3, 4, 255}));
    EXPECT_EQ(rgba8("G8R8_G8B8_UNORM", {1, 2, 3, 4, 5, 6, 7, 8}, 3),
              (Eight{2, 1, 4, 255, 2, 3, 4, 255, 6, 5, 8, 255}));
}

TEST(TexturePixelsNumbers, SingleBitsStartAtTheHighest) {
    EXPECT_EQ(rgba8("R1_UNORM", {0x90, 0x80}, 9),
              (Eight{255, 0,   0, 255, 0, 0,   0, 255, 0, 0,   0, 255, 255, 0,   0,   255, 0, 0,
                     0,   255, 0, 0,   0, 255, 0, 0,   0, 255, 0, 0,   0,   255, 255, 0,   0, 255}));
}

vPixelFormat of_masks(std::uint32_t flags, std::uint32_t bits, std::array<std::uint32_t, 4> masks) {
    vPixelFormat format{};
    EXPECT_TRUE(
        vTextureFormats::FromMasks({32, flags, 0, bits, masks[0], masks[1], masks[2], masks[3]}, format));
    return format;
}

TEST(TexturePixelsNumbers, MasksOfAnyOrder) {
    // G 1, X 4, R 63, B 2 of 31
    const vPixelFormat format = of_masks(0x40, 16, {0x07E0 << 0, 0x0001, 0xF800, 0});
    EXPECT_EQ(decoded<std::uint8_t>(format, {0xE1, 0x17}, vTexturePixels::eRGBA8, 1),
              (Eight{255, 255, 16, 255}));
}

TEST(TexturePixelsNumbers, MasksOfManyBits) {
    // 2^31 - 1 and 1 of 2^31 - 1
    const vPixelFormat format = of_masks(0x41, 32, {0x7FFFFFFF, 0, 0, 0x80000000});
    const Bytes greatest = {0xFF, 0xFF, 0xFF, 0x7F};
    EXPECT_EQ(decoded<float>(format, greatest, vTexturePixels::eRGBA32F, 1), (Floats{1, 0, 0, 0}));
    EXPECT_EQ(decoded<float>(format, {1, 0, 0, 0x80}, vTexturePixels::eRGBA32F, 1),
              (Floats{0x1p-31F, 0, 0, 1}));
    EXPECT_EQ(decoded<std::uint16_t>(format, {0, 0, 0, 0x40}, vTexturePixels::eRGBA16, 1),
              (Sixteen{32768, 0, 0, 0}));
    EXPECT_EQ(decoded<std::uint8_t>(format, greatest, vTexturePixels::eRGBA8, 1), (Eight{255, 0, 0, 0}));
}

TEST(TexturePixelsNumbers, SignedNumbersOfOneBit) {
    const vPixelFormat format = of_masks(0x80000, 8, {0x01, 0x02, 0, 0});
    EXPECT_EQ(decoded<std::uint8_t>(format, {0x01}, vTexturePixels::eRGBA8, 1), (Eight{0, 128, 0, 255}));
    EXPECT_EQ(decoded<float>(format, {0x01}, vTexturePixels::eRGBA32F, 1), (Floats{-1, 0, 0, 1}));
}

}  // namespace
