// SPDX-License-Identifier: Apache-2.0

#include "support/plain_blocks.h"

#include <cmath>
#include <gtest/gtest.h>

// All expectations are worked out by hand from the formats' definitions.
namespace {

using namespace TOZ::SUPPORTED_FORMAT;
using plain::decode_block;
using plain::Texel;
using plain::Texels;

void expect_texel(const Texel& texel, const Texel& expected) {
    EXPECT_DOUBLE_EQ(texel.red, expected.red);
    EXPECT_DOUBLE_EQ(texel.green, expected.green);
    EXPECT_DOUBLE_EQ(texel.blue, expected.blue);
    EXPECT_DOUBLE_EQ(texel.alpha, expected.alpha);
}

TEST(PlainBlocks, BC1MixesFourColours) {
    const std::uint8_t block[] = {0x00, 0xF8, 0x1F, 0x00, 0xE4, 0xE4, 0xE4, 0x1B};
    const Texels texels = decode_block(DXT1, block);
    expect_texel(texels[0], {1, 0, 0, 1});
    expect_texel(texels[1], {0, 0, 1, 1});
    expect_texel(texels[2], {2.0 / 3, 0, 1.0 / 3, 1});
    expect_texel(texels[3], {1 - 2.0 / 3, 0, 2.0 / 3, 1});
    expect_texel(texels[12], {1 - 2.0 / 3, 0, 2.0 / 3, 1});
    expect_texel(texels[15], {1, 0, 0, 1});
}

TEST(PlainBlocks, BC1HasThreeColoursAndATransparentOneWhereTheFirstIsNotGreater) {
    const std::uint8_t block[] = {0x1F, 0x00, 0x00, 0xF8, 0xE4, 0, 0, 0};
    const Texels texels = decode_block(DXT1, block);
    expect_texel(texels[2], {0.5, 0, 0.5, 1});
    expect_texel(texels[3], {0, 0, 0, 0});
}

TEST(PlainBlocks, BC2HasFourBitsOfAlphaAndAlwaysFourColours) {
    const std::uint8_t block[] = {0x10, 0x32, 0, 0, 0, 0, 0, 0xF0, 0x1F, 0x00, 0x00, 0xF8, 0xE4, 0, 0, 0};
    const Texels texels = decode_block(DXT3, block);
    expect_texel(texels[0], {0, 0, 1, 0});
    expect_texel(texels[1], {1, 0, 0, 1.0 / 15});
    expect_texel(texels[2], {1.0 / 3, 0, 1 - 1.0 / 3, 2.0 / 15});
    expect_texel(texels[15], {0, 0, 1, 1});
}

TEST(PlainBlocks, BC3MixesEightAlphasOrSix) {
    std::uint8_t block[] = {255, 0, 0x88, 0xC6, 0xFA, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    const double eight[] = {1, 0, 6.0 / 7, 5.0 / 7, 4.0 / 7, 3.0 / 7, 2.0 / 7, 1.0 / 7};
    for (std::size_t i = 0; i < 8; ++i) EXPECT_NEAR(decode_block(DXT5, block)[i].alpha, eight[i], 1e-12);
    block[0] = 0;
    block[1] = 255;
    const double six[] = {0, 1, 0.2, 0.4, 0.6, 0.8, 0, 1};
    for (std::size_t i = 0; i < 8; ++i) EXPECT_NEAR(decode_block(DXT5, block)[i].alpha, six[i], 1e-12);
}

TEST(PlainBlocks, BC4IsSignedOrNot) {
    const std::uint8_t block[] = {0x7F, 0x81, 0x88, 0xC6, 0xFA, 0, 0, 0};
    const double mixed[] = {1, -1, 5.0 / 7, 3.0 / 7, 1.0 / 7, -1.0 / 7, -3.0 / 7, -5.0 / 7};
    for (std::size_t i = 0; i < 8; ++i) EXPECT_NEAR(decode_block(BC4S, block)[i].red, mixed[i], 1e-12);
    EXPECT_DOUBLE_EQ(decode_block(BC4U, block)[0].red, 127.0 / 255);
    EXPECT_DOUBLE_EQ(decode_block(BC4U, block)[6].red, 0);
    EXPECT_DOUBLE_EQ(decode_block(BC4U, block)[7].red, 1);
}

TEST(PlainBlocks, BC4TakesTheLeastSignedNumberForTheOneAboveIt) {
    const std::uint8_t block[] = {0x80, 0x00, 0xB0, 0, 0, 0, 0, 0};
    const Texels texels = decode_block(BC4S, block);
    EXPECT_DOUBLE_EQ(texels[0].red, -1);
    EXPECT_DOUBLE_EQ(texels[1].red, -1);
}

TEST(PlainBlocks, BC5IsRedAndGreen) {
    const std::uint8_t block[] = {255, 0, 0x08, 0, 0, 0, 0, 0, 0, 51, 0x08, 0, 0, 0, 0, 0};
    expect_texel(decode_block(BC5U, block)[0], {1, 0, 0, 1});
    expect_texel(decode_block(BC5U, block)[1], {0, 0.2, 0, 1});
    expect_texel(decode_block(BC5S, block)[0], {-1.0 / 127, 0, 0, 1});
}

TEST(PlainBlocks, BC6HMixesBetweenTwoEndpoints) {
    const std::uint8_t block[] = {0xE3, 0xFF, 0xFF, 0xFF, 0x07, 0, 0, 0, 0xF0, 0x08, 0, 0, 0, 0, 0, 0};
    const Texels texels = decode_block(BC6H_UF16, block);
    expect_texel(texels[0], {65504, 65504, 65504, 1});
    expect_texel(texels[1], {0, 0, 0, 1});
    expect_texel(texels[2], {0.765625, 0.765625, 0.765625, 1});
}

TEST(PlainBlocks, BC6HAddsDifferencesToTheFirstEndpointOfTwoRegions) {
    const std::uint8_t block[] = {0x80, 0x0C, 0, 0, 0xF8, 0, 0, 0, 0x04, 0xA0, 0x71, 0, 0, 0, 0, 0};
    const Texels texels = decode_block(BC6H_UF16, block);
    expect_texel(texels[0], {std::ldexp(1067, -22), 0, 0, 1});
    expect_texel(texels[1], {std::ldexp(1036, -22), 0, 0, 1});
    expect_texel(texels[8], {std::ldexp(1129, -22), 0, 0, 1});
}

TEST(PlainBlocks, BC6HHasNegativeNumbers) {
    const std::uint8_t block[] = {0x03, 0x40, 0, 0, 0x08, 0, 0, 0, 0xF0, 0, 0, 0, 0, 0, 0, 0};
    const Texels texels = decode_block(BC6H_SF16, block);
    expect_texel(texels[0], {-65504, 0, 0, 1});
    expect_texel(texels[1], {std::ldexp(93, -24), 0, 0, 1});
}

TEST(PlainBlocks, BC6HStoresTheHighBitsOfLongEndpointsInReverse) {
    const std::uint8_t sixteen_bits[16] = {0x0F, 0, 0, 0, 0x80};
    EXPECT_DOUBLE_EQ(decode_block(BC6H_UF16, sixteen_bits)[0].red, 1.5);
    const std::uint8_t twelve_bits[16] = {0x0B, 0, 0, 0, 0, 0x08};
    EXPECT_DOUBLE_EQ(decode_block(BC6H_UF16, twelve_bits)[0].red, 1.5 + 3.0 / 1024);
}

TEST(PlainBlocks, BC6HIsBlackInReservedModes) {
    const std::uint8_t block[16] = {0xF3, 0xFF, 0xFF};
    expect_texel(decode_block(BC6H_UF16, block)[0], {0, 0, 0, 1});
}

}  // namespace
