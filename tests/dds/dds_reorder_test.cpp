// SPDX-License-Identifier: Apache-2.0
// Uncompressed pixels are rewritten to red, green, blue(, alpha) by the header's masks.
#include <gtest/gtest.h>

#include "support/dds_check.h"
#include "vDDSImage.h"

namespace {

using namespace support;

Bytes base_of(const FileHeader& header, const Bytes& pixels) {
    const vDDSImage image = loaded(dds_file(header, pixels));
    return pixels_of(image[0]);
}

FileHeader one_pixel_32() { return plain_header(kRgbWithAlpha, 32); }

TEST(DdsReorder, TwentyFourBitsStoredBlueFirst) {
    const FileHeader header = plain_header(kRgb, 24).sized(2, 1).with_masks(0xFF0000, 0xFF00, 0xFF, 0);
    EXPECT_EQ(base_of(header, {1, 2, 3, 4, 5, 6}), (Bytes{3, 2, 1, 6, 5, 4}));
}

TEST(DdsReorder, ThirtyTwoBitsStoredBlueFirst) {
    const FileHeader header = one_pixel_32().sized(2, 1).with_masks(0xFF0000, 0xFF00, 0xFF, 0xFF000000);
    EXPECT_EQ(base_of(header, {1, 2, 3, 4, 5, 6, 7, 8}), (Bytes{3, 2, 1, 4, 7, 6, 5, 8}));
}

TEST(DdsReorder, ThirtyTwoBitsStoredAlphaFirst) {
    const FileHeader argb = one_pixel_32().with_masks(0xFF00, 0xFF0000, 0xFF000000, 0xFF);
    EXPECT_EQ(base_of(argb, {0xA, 1, 2, 3}), (Bytes{1, 2, 3, 0xA}));
    const FileHeader abgr = one_pixel_32().with_masks(0xFF000000, 0xFF0000, 0xFF00, 0xFF);
    EXPECT_EQ(base_of(abgr, {0xA, 3, 2, 1}), (Bytes{1, 2, 3, 0xA}));
}

TEST(DdsReorder, RedFirstStaysAsItIs) {
    const FileHeader header = one_pixel_32().with_masks(0xFF, 0xFF00, 0xFF0000, 0xFF000000);
    EXPECT_EQ(base_of(header, {1, 2, 3, 4}), (Bytes{1, 2, 3, 4}));
}

TEST(DdsReorder, AlphaMaskOfZeroMakesEveryAlphaZero) {
    const FileHeader header = plain_header(kRgb, 32).sized(1, 2).with_masks(0xFF0000, 0xFF00, 0xFF, 0);
    EXPECT_EQ(base_of(header, {1, 2, 3, 99, 4, 5, 6, 99}), (Bytes{3, 2, 1, 0, 6, 5, 4, 0}));
}

TEST(DdsReorder, NoMasksNoReordering) {
    EXPECT_EQ(base_of(one_pixel_32(), {1, 2, 3, 4}), (Bytes{1, 2, 3, 4}));
}

TEST(DdsReorder, OneColourMaskOfZeroSwitchesItOff) {
    for (int zero = 0; zero < 3; ++zero) {
        std::uint32_t masks[3] = {0xFF0000, 0xFF00, 0xFF};
        masks[zero] = 0;
        const FileHeader header = one_pixel_32().with_masks(masks[0], masks[1], masks[2], 0xFF000000);
        EXPECT_EQ(base_of(header, {1, 2, 3, 4}), (Bytes{1, 2, 3, 4})) << zero;
    }
}

// 0x8D6B: red 10001, green 101011, blue 01011.
TEST(DdsReorder, NarrowMasksAreNotWidened) {
    const FileHeader header = one_pixel_32().with_masks(0xF800, 0x07E0, 0x001F, 0xFF0000);
    EXPECT_EQ(base_of(header, {0x6B, 0x8D, 0x77, 0x88}), (Bytes{0x11, 0x2B, 0x0B, 0x77}));
}

// Red takes the low ten bits, of which eight stay.
TEST(DdsReorder, WideMasksKeepTheirLowEightBits) {
    const FileHeader header = one_pixel_32().with_masks(0x3FF, 0xFFC00, 0x3FF00000, 0xC0000000);
    // 0xD6789ABC: red 0x2BC, green 0x226, blue 0x167, alpha 3.
    EXPECT_EQ(base_of(header, {0xBC, 0x9A, 0x78, 0xD6}), (Bytes{0xBC, 0x26, 0x67, 3}));
}

TEST(DdsReorder, WholeWordMaskTakesTheLowestByte) {
    const FileHeader header = one_pixel_32().with_masks(0xFFFFFFFF, 0xFFFFFF00, 0xFFFF0000, 0xFFFFFFFF);
    EXPECT_EQ(base_of(header, {1, 2, 3, 4}), (Bytes{1, 2, 3, 1}));
}

TEST(DdsReorder, OverlappingMasksReadTheOldPixel) {
    const FileHeader header = one_pixel_32().with_masks(0xFF000000, 0xFF000000, 0xFF, 0xFF);
    EXPECT_EQ(base_of(header, {1, 2, 3, 4}), (Bytes{4, 4, 1, 1}));
}

TEST(DdsReorder, TopBitMasksMoveAllTheWayDown) {
    const FileHeader header = one_pixel_32().with_masks(0x80000000, 0x40000000, 0x20000000, 0x10000000);
    EXPECT_EQ(base_of(header, {0xFF, 0xFF, 0xFF, 0xA0}), (Bytes{1, 0, 1, 0}));
}

TEST(DdsReorder, GapsInAMaskStay) {
    const FileHeader header = one_pixel_32().with_masks(0x50, 0xFF00, 0xFF0000, 0xFF000000);
    EXPECT_EQ(base_of(header, {0xFF, 2, 3, 4}), (Bytes{0x05, 2, 3, 4}));
}

TEST(DdsReorder, MasksAbove24BitsFindNothingInThreeBytes) {
    const FileHeader header = plain_header(kRgb, 24).with_masks(0xFF000000, 0xFF000000, 0xFF, 0);
    EXPECT_EQ(base_of(header, {1, 2, 3}), (Bytes{0, 0, 1}));
}

TEST(DdsReorder, ThreeBytePixelsIgnoreTheAlphaMask) {
    const FileHeader header = plain_header(kRgb, 24).with_masks(0xFF0000, 0xFF00, 0xFF, 0xFF0000);
    EXPECT_EQ(base_of(header, {1, 2, 3}), (Bytes{3, 2, 1}));
}

TEST(DdsReorder, EveryLevelSliceAndFaceIsRewritten) {
    const FileHeader header =
        plain_header(kRgb, 24).sized(2, 2).with_depth(3).with_mips(3).with_caps2(kCubeMap).with_masks(
            0xFF0000, 0xFF00, 0xFF, 0);
    const Bytes file = complete_file(header);
    const vDDSImage image = loaded(file);
    std::size_t at = 128;
    for (int face = 0; face < 6; ++face)
        for (int level = -1; level < 2; ++level) {
            const Bytes bytes = pixels_of(level < 0 ? image[face] : image[face].get_mipmap(level));
            for (std::size_t i = 0; i < bytes.size(); ++i)
                ASSERT_EQ(bytes[i], file[at + i / 3 * 3 + 2 - i % 3]) << face << ", " << level << ", " << i;
            at += bytes.size();
        }
    EXPECT_EQ(at, file.size());
}

// The rule looks at masks and component count alone: of eight bytes a pixel, the level's first
// width x height groups of four are rewritten.
TEST(DdsReorder, FloatFormatsWithMasksAreRewrittenToo) {
    for (const FileHeader& format : {dxgi_header(10), fourcc_header(113)}) {
        const FileHeader header = format.sized(2, 1).with_masks(0xFF0000, 0xFF00, 0xFF, 0xFF000000);
        EXPECT_EQ(base_of(header, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}),
                  (Bytes{3, 2, 1, 4, 7, 6, 5, 8, 9, 10, 11, 12, 13, 14, 15, 16}));
    }
}

TEST(DdsReorder, FloatVolumesAreRewrittenSliceBySlice) {
    const FileHeader header = fourcc_header(116).with_depth(2).with_masks(0xFF000000, 0xFF00, 0xFF, 0);
    Bytes pixels = random_bytes(32, 1);
    Bytes expected = pixels;
    for (std::size_t slice : {0u, 16u}) {
        expected[slice] = pixels[slice + 3];
        expected[slice + 2] = pixels[slice];
        expected[slice + 3] = 0;
    }
    EXPECT_EQ(base_of(header, pixels), expected);
}

TEST(DdsReorder, ThreeFloatPixelsAreRewrittenAsThreeBytes) {
    const FileHeader header = dxgi_header(6).with_masks(0xFF0000, 0xFF00, 0xFF, 0);
    EXPECT_EQ(base_of(header, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}),
              (Bytes{3, 2, 1, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
}

TEST(DdsReorder, DxgiBgraWithMasksIsRewrittenAsThreeBytes) {
    const FileHeader header = dxgi_header(87).sized(2, 1).with_masks(0xFF0000, 0xFF00, 0xFF, 0xFF000000);
    EXPECT_EQ(base_of(header, {1, 2, 3, 4, 5, 6}), (Bytes{3, 2, 1, 6, 5, 4}));
}

TEST(DdsReorder, DxgiBgraWithoutMasksStaysAsItIs) {
    EXPECT_EQ(base_of(dxgi_header(87).sized(2, 1), {1, 2, 3, 4, 5, 6}), (Bytes{1, 2, 3, 4, 5, 6}));
}

TEST(DdsReorder, SingleChannelsAreLeftAlone) {
    const FileHeader header = dxgi_header(41).with_masks(0xFF0000, 0xFF00, 0xFF, 0xFF000000);
    EXPECT_EQ(base_of(header, {1, 2, 3, 4}), (Bytes{1, 2, 3, 4}));
}

TEST(DdsReorder, BlocksAreLeftAlone) {
    for (std::uint32_t dxgi : {71u, 74u, 77u, 80u, 83u, 95u}) {
        const Bytes plain_file = complete_file(dxgi_header(dxgi).sized(8, 8));
        const FileHeader header =
            dxgi_header(dxgi).sized(8, 8).with_masks(0xFF0000, 0xFF00, 0xFF, 0xFF000000);
        EXPECT_TRUE(same(loaded(complete_file(header)), plain::load(plain_file, false, false))) << dxgi;
    }
}

// What the image held before has no say: bits per component are back at 8 when the masks are looked at.
TEST(DdsReorder, IsDecidedAnewForEachFile) {
    vDDSImage image;
    ASSERT_TRUE(load(image, complete_file(dxgi_header(10).sized(4, 4))));
    const FileHeader header = one_pixel_32().with_masks(0xFF0000, 0xFF00, 0xFF, 0xFF000000);
    ASSERT_TRUE(load(image, dds_file(header, {1, 2, 3, 4})));
    EXPECT_EQ(pixels_of(image[0]), (Bytes{3, 2, 1, 4}));
}

TEST(DdsReorder, ComesBeforeTheFlip) {
    const FileHeader header = fourcc_header(113).sized(1, 3).with_masks(0xFF0000, 0xFF00, 0xFF, 0xFF000000);
    const Bytes pixels = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12,
                          13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24};
    // The first three groups of four are rewritten, then the three lines of eight bytes are turned over.
    const vDDSImage image = loaded(dds_file(header, pixels), Flip::yes);
    EXPECT_EQ(pixels_of(image[0]),
              (Bytes{17, 18, 19, 20, 21, 22, 23, 24, 11, 10, 9, 12, 13, 14, 15, 16, 3, 2, 1, 4, 7, 6, 5, 8}));
}

}  // namespace
