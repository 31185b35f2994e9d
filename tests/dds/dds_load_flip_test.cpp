// SPDX-License-Identifier: Apache-2.0
// Flipping while loading: every level of every face, and the exchange of two cube faces.
#include <algorithm>
#include <gtest/gtest.h>

#include "support/dds_check.h"
#include "support/taken.h"
#include "vDDSImage.h"

namespace {

using namespace support;

FileHeader luminance() { return plain_header(0x20000, 8); }

TEST(DdsLoadFlip, EveryLevelIsFlipped) {
    const FileHeader header = luminance().sized(2, 4).with_mips(3);
    const vDDSImage image = loaded(dds_file(header, {1, 2, 3, 4, 5, 6, 7, 8, 11, 12, 13}), Flip::yes);
    EXPECT_EQ(pixels_of(image[0]), (Bytes{7, 8, 5, 6, 3, 4, 1, 2}));
    EXPECT_EQ(pixels_of(image.get_mipmap(0)), (Bytes{12, 11}));
    EXPECT_EQ(pixels_of(image.get_mipmap(1)), (Bytes{13}));
}

TEST(DdsLoadFlip, VolumeSlicesKeepTheirOrder) {
    const FileHeader header = luminance().sized(1, 2).with_depth(3).with_caps2(kVolume);
    const vDDSImage image = loaded(dds_file(header, {1, 2, 3, 4, 5, 6}), Flip::yes);
    EXPECT_EQ(pixels_of(image[0]), (Bytes{2, 1, 4, 3, 6, 5}));
}

TEST(DdsLoadFlip, BlockVolumeIsFlippedInItsFirstSliceAlone) {
    const FileHeader header = fourcc_header(four_cc("DXT1")).sized(4, 8).with_depth(2);
    const vDDSImage image = loaded(dds_file(header, {1, 1, 1, 1, 10, 11, 12, 13, 2, 2, 2, 2, 20, 21, 22, 23,
                                                     3, 3, 3, 3, 30, 31, 32, 33, 4, 4, 4, 4, 40, 41, 42, 43}),
                                   Flip::yes);
    EXPECT_EQ(pixels_of(image[0]), (Bytes{2, 2, 2, 2, 23, 22, 21, 20, 1, 1, 1, 1, 13, 12, 11, 10,
                                          3, 3, 3, 3, 30, 31, 32, 33, 4, 4, 4, 4, 40, 41, 42, 43}));
}

TEST(DdsLoadFlip, BlockLevelsOfOneRowStayAsTheyAre) {
    const Bytes file = complete_file(fourcc_header(four_cc("DXT5")).sized(7, 7).with_mips(3));
    EXPECT_TRUE(same(loaded(file, Flip::yes), plain::load(file, false, false)));
}

TEST(DdsLoadFlip, CubeMapExchangesItsThirdAndFourthFace) {
    const FileHeader header = luminance().with_mips(2).with_caps2(kCubeMap);
    const vDDSImage image =
        loaded(dds_file(header, {1, 2, 11, 12, 21, 22, 31, 32, 41, 42, 51, 52}), Flip::yes);
    const std::uint8_t first[] = {1, 11, 31, 21, 41, 51};
    for (int face = 0; face < 6; ++face) {
        EXPECT_EQ(pixels_of(image[face]), Bytes{first[face]}) << face;
        ASSERT_EQ(image[face].get_num_mipmaps(), 1);
        EXPECT_EQ(pixels_of(image[face].get_mipmap(0)), Bytes{static_cast<std::uint8_t>(first[face] + 1)})
            << face;
    }
}

TEST(DdsLoadFlip, CubeMapFacesAreFlippedToo) {
    const FileHeader header = luminance().sized(1, 2).with_caps2(kCubeMap);
    const vDDSImage image = loaded(dds_file(header, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}), Flip::yes);
    EXPECT_EQ(pixels_of(image[2]), (Bytes{8, 7}));
    EXPECT_EQ(pixels_of(image[3]), (Bytes{6, 5}));
    EXPECT_EQ(pixels_of(image[5]), (Bytes{12, 11}));
}

TEST(DdsLoadFlip, UnflippedCubeMapKeepsItsFaces) {
    const vDDSImage image = loaded(dds_file(luminance().with_caps2(kCubeMap), {1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(pixels_of(image[2]), Bytes{3});
    EXPECT_EQ(pixels_of(image[3]), Bytes{4});
}

TEST(DdsLoadFlip, BlockCubeMapExchangesItsFaces) {
    const Bytes file = complete_file(fourcc_header(four_cc("DXT1")).sized(4, 4).with_caps2(kCubeMap));
    const vDDSImage image = loaded(file, Flip::yes);
    const auto face = [&](std::ptrdiff_t i) {
        return Bytes(file.begin() + 128 + 8 * i, file.begin() + 136 + 8 * i);
    };
    EXPECT_EQ(pixels_of(image[2]), face(3));
    EXPECT_EQ(pixels_of(image[3]), face(2));
    EXPECT_EQ(pixels_of(image[1]), face(1));
}

TEST(DdsLoadFlip, Bc6hIsNeitherFlippedNorAreItsFacesExchanged) {
    for (std::uint32_t dxgi : {95u, 96u}) {
        const Bytes file = complete_file(dxgi_header(dxgi).sized(16, 16).with_mips(3).with_caps2(kCubeMap));
        EXPECT_TRUE(same(loaded(file, Flip::yes), plain::load(file, false, false))) << dxgi;
    }
}

TEST(DdsLoadFlip, DxgiBgraIsFlippedInLinesOfThreeBytesAPixel) {
    const vDDSImage image =
        loaded(dds_file(dxgi_header(87).sized(1, 3), {1, 2, 3, 4, 5, 6, 7, 8, 9}), Flip::yes);
    EXPECT_EQ(pixels_of(image[0]), (Bytes{7, 8, 9, 4, 5, 6, 1, 2, 3}));
}

TEST(DdsLoadFlip, WidthOfZeroLoads) {
    const vDDSImage image = loaded(dds_file(luminance().sized(0, 4).with_mips(2), {5, 6}), Flip::yes);
    EXPECT_EQ(image.get_size(), 0u);
    EXPECT_EQ(pixels_of(image.get_mipmap(0)), (Bytes{6, 5}));
}

TEST(DdsLoadFlip, NegativeHeightIsNotFlipped) {
    const FileHeader header = luminance().sized(0xFFFFFFFF, 0xFFFFFFFC);
    const vDDSImage image = loaded(dds_file(header, {1, 2, 3, 4}), Flip::yes);
    EXPECT_EQ(pixels_of(image[0]), (Bytes{1, 2, 3, 4}));
}

// Levels are flipped where they lie: beside them, only one line at a time is taken.
TEST(DdsLoadFlip, TakesNoSecondCopyOfALevel) {
    const Bytes file = complete_file(luminance().sized(77, 53).with_mips(2));
    vDDSImage image;
    const auto taken = taken_by(
        [&] { EXPECT_TRUE(image.loadFromBuffer(file.data(), static_cast<int>(file.size()), true, false)); });
    const auto blocks = [&](std::size_t size) {
        return std::count(taken.sizes.begin(), taken.sizes.end(), size);
    };
    EXPECT_EQ(blocks(77 * 53), 1);
    EXPECT_EQ(blocks(38 * 26), 1);
    EXPECT_EQ(blocks(77), 26);
    EXPECT_EQ(blocks(38), 13);
}

}  // namespace
