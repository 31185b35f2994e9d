// SPDX-License-Identifier: Apache-2.0
// How the pixel data of a file is cut into faces and levels.
#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>

#include "support/allocation.h"
#include "support/dds_check.h"
#include "support/dds_private.h"
#include "support/taken.h"
#include "vDDSImage.h"

namespace {

using namespace support;

std::size_t face_count(const vDDSImage& image) { return (image.*dds_private::textures()).size(); }

/// The numbers first, first + 1, ... as bytes.
Bytes counting(std::size_t count, std::uint8_t first) {
    Bytes bytes(count);
    std::iota(bytes.begin(), bytes.end(), first);
    return bytes;
}

std::vector<std::size_t> level_sizes(const vDDSTexture& texture) {
    std::vector<std::size_t> sizes = {texture.get_size()};
    for (int i = 0; i < texture.get_num_mipmaps(); ++i) sizes.push_back(texture.get_mipmap(i).get_size());
    return sizes;
}

FileHeader luminance() { return plain_header(0x20000, 8); }

TEST(DdsLevels, CountOfZeroOrOneIsTheBaseLevelAlone) {
    for (std::uint32_t count : {0u, 1u}) {
        const vDDSImage image = loaded(complete_file(luminance().sized(4, 4).with_mips(count)));
        EXPECT_EQ(image.get_num_mipmaps(), 0);
        EXPECT_EQ(image.get_size(), 16u);
    }
}

TEST(DdsLevels, LieOneBehindTheOther) {
    const Bytes file = dds_file(luminance().sized(4, 2).with_mips(3), counting(11, 1));
    const vDDSImage image = loaded(file);
    ASSERT_EQ(image.get_num_mipmaps(), 2);
    EXPECT_EQ(pixels_of(image[0]), counting(8, 1));
    EXPECT_EQ(pixels_of(image.get_mipmap(0)), counting(2, 9));
    EXPECT_EQ(pixels_of(image.get_mipmap(1)), counting(1, 11));
}

TEST(DdsLevels, HalveEveryExtentDownToOne) {
    const vDDSImage image = loaded(complete_file(luminance().sized(20, 3).with_depth(5).with_mips(6)));
    const int expected[5][3] = {{10, 1, 2}, {5, 1, 1}, {2, 1, 1}, {1, 1, 1}, {1, 1, 1}};
    ASSERT_EQ(image.get_num_mipmaps(), 5);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(image.get_mipmap(i).get_width(), expected[i][0]) << i;
        EXPECT_EQ(image.get_mipmap(i).get_height(), expected[i][1]) << i;
        EXPECT_EQ(image.get_mipmap(i).get_depth(), expected[i][2]) << i;
    }
    EXPECT_EQ(level_sizes(image[0]), (std::vector<std::size_t>{300, 20, 5, 2, 1, 1}));
}

TEST(DdsLevels, BeyondTheNaturalChainRepeatOnePixel) {
    const vDDSImage image = loaded(dds_file(luminance().sized(2, 2).with_mips(6), counting(9, 1)));
    EXPECT_EQ(level_sizes(image[0]), (std::vector<std::size_t>{4, 1, 1, 1, 1, 1}));
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(pixels_of(image.get_mipmap(i)), counting(1, static_cast<std::uint8_t>(5 + i)));
}

TEST(DdsLevels, EveryLevelOfASmallBlockImageIsAWholeBlock) {
    const FileHeader dxt1 = fourcc_header(four_cc("DXT1")).sized(4, 4).with_mips(3);
    const vDDSImage small = loaded(complete_file(dxt1));
    EXPECT_EQ(level_sizes(small[0]), (std::vector<std::size_t>{8, 8, 8}));
    const FileHeader dxt5 = fourcc_header(four_cc("DXT5")).sized(4, 4).with_mips(3);
    const vDDSImage large = loaded(complete_file(dxt5));
    EXPECT_EQ(level_sizes(large[0]), (std::vector<std::size_t>{16, 16, 16}));
}

TEST(DdsLevels, Bc6hIsSizedByItsOwnRule) {
    const vDDSImage image = loaded(complete_file(dxgi_header(95).sized(5, 5).with_mips(2)));
    EXPECT_EQ(level_sizes(image[0]), (std::vector<std::size_t>{64, 16}));
}

TEST(DdsLevels, DxgiBgraIsReadAtThreeBytesAPixel) {
    const vDDSImage image = loaded(dds_file(dxgi_header(87).sized(2, 2).with_mips(2), counting(15, 1)));
    EXPECT_EQ(pixels_of(image[0]), counting(12, 1));
    EXPECT_EQ(pixels_of(image.get_mipmap(0)), counting(3, 13));
}

TEST(DdsLevels, PixelsFollowTheDx10HeaderWhateverTheFlagsSay) {
    FileHeader header = dxgi_header(0x01010101).sized(3, 1);
    header.pixel_format.flags = 0x20000;
    header.pixel_format.bit_count = 8;
    const Bytes file = dds_file(header, {7, 8, 9});
    ASSERT_EQ(file.size(), 151u);
    const vDDSImage image = loaded(file);
    EXPECT_EQ(pixels_of(image[0]), (Bytes{7, 8, 9}));
}

TEST(DdsLevels, LevelCountIsASignedNumber) {
    for (std::uint32_t count : {0x80000001u, 0x80000002u, 0xFFFFFFFFu}) {
        const vDDSImage image = loaded(complete_file(luminance().sized(4, 4).with_mips(count)));
        EXPECT_EQ(image.get_num_mipmaps(), 0) << count;
        EXPECT_TRUE(image.is_valid());
    }
}

TEST(DdsLevels, WidthOfZeroLoadsEmptyLevelsThenOnePixelColumns) {
    const vDDSImage image = loaded(dds_file(luminance().sized(0, 4).with_mips(3), {5, 6, 7}));
    EXPECT_EQ(image.get_width(), 0);
    EXPECT_EQ(level_sizes(image[0]), (std::vector<std::size_t>{0, 2, 1}));
    EXPECT_NE(static_cast<char*>(image), nullptr);
    EXPECT_EQ(pixels_of(image.get_mipmap(0)), (Bytes{5, 6}));
    EXPECT_EQ(image.get_mipmap(0).get_width(), 1);
}

TEST(DdsLevels, EmptyExtentLoadsNoBytes) {
    for (const FileHeader& header : {luminance(), fourcc_header(four_cc("DXT5")), dxgi_header(95)}) {
        const vDDSImage image = loaded(header_bytes(header.sized(0, 0)));
        EXPECT_TRUE(image.is_valid());
        EXPECT_EQ(image.get_size(), 0u);
    }
}

// Extents are signed: -1 x -1 is one pixel, -2 >> 1 is -1, and both are raised to 1 for the next level.
TEST(DdsLevels, ExtentsAreSignedNumbers) {
    const FileHeader header = luminance().sized(0xFFFFFFFF, 0xFFFFFFFE).with_mips(2);
    const vDDSImage image = loaded(dds_file(header, {1, 2, 3}));
    EXPECT_EQ(image.get_width(), -1);
    EXPECT_EQ(image.get_height(), -2);
    EXPECT_EQ(pixels_of(image[0]), (Bytes{1, 2}));
    EXPECT_EQ(image.get_mipmap(0).get_width(), 1);
    EXPECT_EQ(image.get_mipmap(0).get_height(), 1);
    EXPECT_EQ(pixels_of(image.get_mipmap(0)), (Bytes{3}));
}

TEST(DdsDepth, CountsWithoutTheVolumeFlag) {
    const vDDSImage image =
        loaded(dds_file(luminance().sized(2, 2).with_depth(4).with_mips(2), counting(18, 1)));
    EXPECT_FALSE(image.is_volume());
    EXPECT_EQ(image.get_depth(), 4);
    EXPECT_EQ(pixels_of(image[0]), counting(16, 1));
    EXPECT_EQ(image.get_mipmap(0).get_depth(), 2);
    EXPECT_EQ(pixels_of(image.get_mipmap(0)), counting(2, 17));
}

TEST(DdsDepth, MultipliesBlockLevels) {
    const FileHeader header = fourcc_header(four_cc("DXT5")).sized(5, 5).with_depth(3).with_mips(2);
    const vDDSImage image = loaded(complete_file(header.with_caps2(kVolume)));
    EXPECT_TRUE(image.is_volume());
    EXPECT_EQ(level_sizes(image[0]), (std::vector<std::size_t>{192, 16}));
}

TEST(DdsDepth, BelowOneIsOne) {
    for (std::uint32_t depth : {0u, 0xFFFFFFFFu, 0x80000000u}) {
        const vDDSImage image = loaded(complete_file(luminance().sized(4, 4).with_depth(depth)));
        EXPECT_EQ(image.get_depth(), 1);
        EXPECT_EQ(image.get_size(), 16u);
    }
}

TEST(DdsDepth, VolumeNeedsItsFlagAndANonzeroDepth) {
    const auto is_volume = [](std::uint32_t caps2, std::uint32_t depth) {
        return loaded(complete_file(luminance().with_caps2(caps2).with_depth(depth))).is_volume();
    };
    EXPECT_TRUE(is_volume(kVolume, 2));
    EXPECT_TRUE(is_volume(kVolume, 1));
    EXPECT_TRUE(is_volume(kVolume, 0x80000000)) << "nonzero, though taken as 1";
    EXPECT_FALSE(is_volume(kVolume, 0));
    EXPECT_FALSE(is_volume(0, 2));
}

TEST(DdsFaces, CubeMapHasSixInTheOrderOfTheFile) {
    const FileHeader header = luminance().sized(2, 2).with_mips(2).with_caps2(kCubeMap);
    const vDDSImage image = loaded(dds_file(header, counting(30, 1)));
    ASSERT_EQ(face_count(image), 6u);
    for (int face = 0; face < 6; ++face) {
        EXPECT_EQ(pixels_of(image[face]), counting(4, static_cast<std::uint8_t>(1 + 5 * face)));
        ASSERT_EQ(image[face].get_num_mipmaps(), 1);
        EXPECT_EQ(pixels_of(image[face].get_mipmap(0)), counting(1, static_cast<std::uint8_t>(5 + 5 * face)));
    }
}

TEST(DdsFaces, AreSixWhicheverFaceFlagsAreSet) {
    for (std::uint32_t faces : {0x0u, 0x400u, 0xFC00u, 0x8400u}) {
        const vDDSImage image = loaded(complete_file(luminance().sized(2, 2).with_caps2(kCubeMap | faces)));
        EXPECT_EQ(face_count(image), 6u) << faces;
    }
}

TEST(DdsFaces, FaceFlagsAloneMakeNoCubeMap) {
    const vDDSImage image = loaded(complete_file(luminance().sized(2, 2).with_caps2(0xFC00)));
    EXPECT_EQ(face_count(image), 1u);
    EXPECT_FALSE(image.is_cubemap());
}

TEST(DdsFaces, CubeMapOfVolumesIsReadAsSuch) {
    const FileHeader header =
        luminance().sized(2, 2).with_depth(3).with_mips(2).with_caps2(kCubeMap | kVolume);
    const vDDSImage image = loaded(complete_file(header));
    EXPECT_TRUE(image.is_cubemap());
    EXPECT_TRUE(image.is_volume());
    ASSERT_EQ(face_count(image), 6u);
    EXPECT_EQ(level_sizes(image[5]), (std::vector<std::size_t>{12, 1}));
}

TEST(DdsFaces, Dx10CubeAndArrayWordsAreNotRead) {
    FileHeader header = dxgi_header(71).sized(4, 4);
    header.misc_flag = 4;
    header.array_size = 6;
    const vDDSImage image = loaded(complete_file(header));
    EXPECT_EQ(face_count(image), 1u);
    EXPECT_FALSE(image.is_cubemap());
}

TEST(DdsReload, PlainFileAfterACubeMapLeavesOneTexture) {
    vDDSImage image = loaded(complete_file(luminance().sized(4, 4).with_mips(3).with_caps2(kCubeMap)));
    const Bytes file = complete_file(luminance().sized(2, 2), 9);
    ASSERT_TRUE(load(image, file));
    EXPECT_EQ(face_count(image), 1u);
    EXPECT_TRUE(same(image, plain::load(file, false, false)));
}

TEST(DdsReload, ReleasesTheTexturesBefore) {
    const auto before = live_blocks();
    {
        vDDSImage image;
        const Bytes file = complete_file(luminance().sized(4, 4).with_mips(3).with_caps2(kCubeMap));
        ASSERT_TRUE(load(image, file));
        const auto once = live_blocks();
        ASSERT_TRUE(load(image, file));
        EXPECT_EQ(live_blocks(), once);
    }
    EXPECT_EQ(live_blocks(), before);
}

TEST(DdsLoad, ReadsTheBufferWhateverItsStatedSize) {
    const Bytes file = complete_file(luminance().sized(4, 4));
    for (int size : {0, 1, 128, -1, 1 << 30}) {
        vDDSImage image;
        EXPECT_TRUE(image.loadFromBuffer(file.data(), size, false, false));
        EXPECT_TRUE(same(image, plain::load(file, false, false)));
    }
}

TEST(DdsLoad, ReadsFromAnyAddress) {
    const Bytes file = complete_file(dxgi_header(77).sized(8, 8).with_mips(4));
    for (std::size_t shift = 1; shift < 8; ++shift) {
        Bytes shifted(shift);
        shifted.insert(shifted.end(), file.begin(), file.end());
        vDDSImage image;
        EXPECT_TRUE(image.loadFromBuffer(shifted.data() + shift, static_cast<int>(file.size()), true, false));
        EXPECT_TRUE(same(image, plain::load(file, true, false)));
    }
}

TEST(DdsLoad, LeavesTheBufferUnchanged) {
    const FileHeader header = plain_header(kRgb, 32).sized(5, 6).with_masks(0xFF0000, 0xFF00, 0xFF, 0);
    const Bytes file = complete_file(header);
    Bytes used = file;
    vDDSImage image;
    ASSERT_TRUE(image.loadFromBuffer(used.data(), static_cast<int>(used.size()), true, false));
    EXPECT_EQ(used, file);
}

TEST(DdsLoad, BytesBehindThePixelsAreIgnored) {
    const Bytes file = complete_file(luminance().sized(4, 4));
    Bytes longer = file;
    longer.resize(longer.size() + 100, 0xEE);
    EXPECT_TRUE(same(loaded(longer), plain::load(file, false, false)));
}

TEST(DdsLoad, TakesOneBufferALevelAndCopiesNone) {
    const FileHeader header = luminance().sized(77, 52).with_mips(3).with_caps2(kCubeMap);
    const Bytes file = complete_file(header);
    vDDSImage image;
    const auto taken = taken_by(
        [&] { EXPECT_TRUE(image.loadFromBuffer(file.data(), static_cast<int>(file.size()), false, false)); });
    const std::vector<std::size_t> sizes = taken.sizes;
    for (std::size_t size : {77u * 52, 38u * 26, 19u * 13})
        EXPECT_EQ(std::count(sizes.begin(), sizes.end(), size), 6) << size;
}

}  // namespace
