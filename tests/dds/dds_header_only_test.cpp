// SPDX-License-Identifier: Apache-2.0
// Loading the header alone: extents, format and level count without pixels.
#include <gtest/gtest.h>

#include "support/dds_check.h"
#include "support/dds_private.h"
#include "vDDSImage.h"

namespace {

using namespace support;

vDDSImage described(const FileHeader& header) {
    return loaded(header_bytes(header), Flip::no, Read::header_only);
}

char* pixels(const vDDSSurface& surface) { return surface; }

void expect_placeholder(const vDDSSurface& surface, int width, int height, int depth) {
    EXPECT_EQ(surface.get_width(), width);
    EXPECT_EQ(surface.get_height(), height);
    EXPECT_EQ(surface.get_depth(), depth);
    EXPECT_EQ(surface.get_size(), 1u);
    ASSERT_NE(pixels(surface), nullptr);
    *pixels(surface) = 'x';  // one byte that is really there
}

TEST(DdsHeaderOnly, ReportsExtentAndLevelCountAndIsNotValid) {
    const vDDSImage image = described(fourcc_header(four_cc("DXT1")).sized(256, 128).with_mips(9));
    EXPECT_EQ(image.get_width(), 256);
    EXPECT_EQ(image.get_height(), 128);
    EXPECT_EQ(image.get_num_mipmaps(), 8);
    EXPECT_EQ(image.get_size(), 1u);
    EXPECT_FALSE(image.is_valid());
}

TEST(DdsHeaderOnly, EverySurfaceHoldsOneByte) {
    const vDDSImage image =
        described(dxgi_header(10).sized(16, 8).with_depth(4).with_mips(3).with_caps2(kVolume));
    expect_placeholder(image[0], 16, 8, 4);
    ASSERT_EQ(image.get_num_mipmaps(), 2);
    for (int i = 0; i < 2; ++i) expect_placeholder(image.get_mipmap(i), 1, 1, 4);
}

TEST(DdsHeaderOnly, DepthBelowOneIsOne) {
    for (std::uint32_t depth : {0u, 0xFFFFFFFFu}) {
        const vDDSImage image = described(plain_header(kRgb, 24).with_depth(depth).with_mips(2));
        EXPECT_EQ(image.get_depth(), 1);
        EXPECT_EQ(image.get_mipmap(0).get_depth(), 1);
    }
}

TEST(DdsHeaderOnly, LevelCountOfZeroOrOneHasNoMipmaps) {
    for (std::uint32_t count : {0u, 1u})
        EXPECT_EQ(described(plain_header(kRgb, 24).with_mips(count)).get_num_mipmaps(), 0);
}

TEST(DdsHeaderOnly, LevelCountIsASignedNumber) {
    for (std::uint32_t count : {0x80000001u, 0xFFFFFFFFu})
        EXPECT_EQ(described(plain_header(kRgb, 24).with_mips(count)).get_num_mipmaps(), 0);
}

TEST(DdsHeaderOnly, CubeMapHasOneTexture) {
    const vDDSImage image = described(fourcc_header(four_cc("DXT5")).sized(8, 8).with_caps2(kCubeMap));
    EXPECT_TRUE(image.is_cubemap());
    EXPECT_EQ((image.*dds_private::textures()).size(), 1u);
    EXPECT_EQ(image[0].get_width(), 8);
}

TEST(DdsHeaderOnly, FlipChangesNothing) {
    const Bytes file =
        header_bytes(fourcc_header(four_cc("DXT5")).sized(8, 8).with_mips(4).with_caps2(kCubeMap));
    EXPECT_TRUE(same(loaded(file, Flip::yes, Read::header_only), plain::load(file, false, true)));
}

TEST(DdsHeaderOnly, FormatAndFlagsAreThoseOfAFullLoad) {
    const FileHeader headers[] = {dxgi_header(10),      dxgi_header(96), fourcc_header(116),
                                  plain_header(0x2, 8), dxgi_header(87), plain_header(kRgb, 24),
                                  dxgi_header(71),      dxgi_header(84)};
    for (const FileHeader& format : headers) {
        SCOPED_TRACE(describe(format));
        const FileHeader header = format.sized(4, 4).with_depth(1).with_caps2(kCubeMap | kVolume);
        const vDDSImage full = loaded(complete_file(header));
        const vDDSImage description = described(header);
        EXPECT_EQ(description.get_format(), full.get_format());
        EXPECT_EQ(description.get_components(), full.get_components());
        EXPECT_EQ(description.*dds_private::bits_per_component(), full.*dds_private::bits_per_component());
        EXPECT_EQ(description.is_compressed(), full.is_compressed());
        EXPECT_TRUE(description.is_cubemap());
        EXPECT_TRUE(description.is_volume());
        EXPECT_TRUE(full.is_valid());
        EXPECT_FALSE(description.is_valid());
    }
}

TEST(DdsHeaderOnly, HugeExtentsCostNothing) {
    const vDDSImage image =
        described(fourcc_header(116).sized(0x7FFFFFFF, 0x80000000).with_depth(0x7FFFFFFF));
    EXPECT_EQ(image.get_width(), 0x7FFFFFFF);
    EXPECT_EQ(image.get_height(), -0x7FFFFFFF - 1);
    EXPECT_EQ(image.get_depth(), 0x7FFFFFFF);
    EXPECT_EQ(image.get_size(), 1u);
}

TEST(DdsHeaderOnly, ReplacesAFullLoadAndIsReplacedByOne) {
    const Bytes file =
        complete_file(fourcc_header(four_cc("DXT5")).sized(8, 8).with_mips(4).with_caps2(kCubeMap));
    vDDSImage image = loaded(file);
    ASSERT_TRUE(load(image, file, Flip::no, Read::header_only));
    EXPECT_TRUE(same(image, plain::load(file, false, true)));
    ASSERT_TRUE(load(image, file));
    EXPECT_TRUE(same(image, plain::load(file, false, false)));
}

TEST(DdsHeaderOnly, CopiesAsAnyOtherImage) {
    const Bytes file = header_bytes(dxgi_header(71).sized(64, 32).with_mips(5));
    const vDDSImage image = loaded(file, Flip::no, Read::header_only);
    const vDDSImage copy(image);
    EXPECT_TRUE(same(copy, plain::load(file, false, true)));
    EXPECT_NE(pixels(copy[0]), pixels(image[0]));
}

}  // namespace
