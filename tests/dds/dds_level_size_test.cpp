// SPDX-License-Identifier: Apache-2.0
// Bytes of one level, and the small arithmetic around it.
#include <climits>
#include <gtest/gtest.h>

#include "support/dds_check.h"
#include "support/dds_private.h"
#include "vDDSImage.h"

namespace {

using namespace support;

/// An image of the header's format, without pixels.
vDDSImage image_of(const FileHeader& header) {
    return loaded(header_bytes(header), Flip::no, Read::header_only);
}

std::size_t size_rgb(const vDDSImage& image, int width, int height) {
    return (image.*dds_private::size_rgb())(width, height);
}

std::size_t size_dxtc(const vDDSImage& image, int width, int height) {
    return (image.*dds_private::size_dxtc())(width, height);
}

std::size_t size_bc6h(int width, int height) {
    const vDDSImage image;
    return (image.*dds_private::size_bc6h())(width, height);
}

int clamp_size(int size) {
    const vDDSImage image;
    return (image.*dds_private::clamp_size())(size);
}

int line_width(int width, int bits_per_pixel) {
    const vDDSImage image;
    return (image.*dds_private::get_line_width())(width, bits_per_pixel);
}

TEST(DdsLevelSize, UncompressedFormats) {
    EXPECT_EQ(size_rgb(image_of(plain_header(0, 8)), 7, 5), 35u);
    EXPECT_EQ(size_rgb(image_of(plain_header(kRgb, 24)), 7, 5), 105u);
    EXPECT_EQ(size_rgb(image_of(plain_header(kRgb, 32)), 7, 5), 140u);
    EXPECT_EQ(size_rgb(image_of(dxgi_header(87)), 7, 5), 105u) << "three bytes a pixel";
    EXPECT_EQ(size_rgb(image_of(dxgi_header(10)), 7, 5), 280u);
    EXPECT_EQ(size_rgb(image_of(dxgi_header(41)), 7, 5), 140u);
    EXPECT_EQ(size_rgb(image_of(dxgi_header(6)), 7, 5), 420u);
    EXPECT_EQ(size_rgb(image_of(fourcc_header(116)), 7, 5), 560u);
}

TEST(DdsLevelSize, ClearedImageHasNoBytesAPixel) {
    EXPECT_EQ(size_rgb(vDDSImage(), 100, 100), 0u) << "no components";
}

TEST(DdsLevelSize, UncompressedSizesExceed32Bits) {
    EXPECT_EQ(size_rgb(image_of(fourcc_header(116)), 65536, 65536), std::size_t{1} << 36);
    EXPECT_EQ(size_rgb(image_of(plain_header(0, 8)), INT_MAX, 65536), 65536 * std::size_t{INT_MAX});
}

TEST(DdsLevelSize, UncompressedShiftIsLogical) {
    // 32 bits x -1 pixels = -32, that is 2^64 - 32.
    EXPECT_EQ(size_rgb(image_of(plain_header(kRgb, 32)), -1, 1), 0x1FFFFFFFFFFFFFFCu);
    EXPECT_EQ(size_rgb(image_of(plain_header(0, 8)), 1, -3), 0x1FFFFFFFFFFFFFFDu);
    EXPECT_EQ(size_rgb(image_of(plain_header(0, 8)), -3, -5), 15u);
}

TEST(DdsLevelSize, UncompressedWithoutPixelsIsEmpty) {
    const vDDSImage image = image_of(plain_header(kRgb, 32));
    EXPECT_EQ(size_rgb(image, 0, 7), 0u);
    EXPECT_EQ(size_rgb(image, 7, 0), 0u);
}

TEST(DdsLevelSize, BlocksRoundUpToWholeBlocks) {
    const vDDSImage image = image_of(fourcc_header(four_cc("DXT1")));
    EXPECT_EQ(size_dxtc(image, 1, 1), 8u);
    EXPECT_EQ(size_dxtc(image, 4, 4), 8u);
    EXPECT_EQ(size_dxtc(image, 5, 4), 16u);
    EXPECT_EQ(size_dxtc(image, 4, 5), 16u);
    EXPECT_EQ(size_dxtc(image, 8, 12), 48u);
    EXPECT_EQ(size_dxtc(image, 17, 9), 120u);
    EXPECT_EQ(size_dxtc(image, 0, 4), 0u);
}

TEST(DdsLevelSize, BlockBytesFollowTheFormat) {
    const auto one_block = [](std::uint32_t dxgi) { return size_dxtc(image_of(dxgi_header(dxgi)), 4, 4); };
    EXPECT_EQ(one_block(71), 8u) << "DXT1";
    EXPECT_EQ(one_block(80), 8u) << "BC4U";
    EXPECT_EQ(one_block(81), 8u) << "BC4S";
    for (std::uint32_t dxgi : {74u, 77u, 83u, 84u, 95u, 96u, 6u, 10u, 41u, 87u})
        EXPECT_EQ(one_block(dxgi), 16u) << "DXGI format " << dxgi;
    EXPECT_EQ(size_dxtc(vDDSImage(), 4, 4), 16u) << "a cleared image too";
}

TEST(DdsLevelSize, BlockArithmeticWrapsIn32Bits) {
    const vDDSImage dxt1 = image_of(fourcc_header(four_cc("DXT1")));
    const vDDSImage dxt5 = image_of(fourcc_header(four_cc("DXT5")));
    // 2^29 block columns: times 8 bytes is 2^32.
    EXPECT_EQ(size_dxtc(dxt1, INT_MAX, 4), 0u);
    // One column less, 2^29 - 1: 2^32 - 8 bytes fit, and 2^33 - 16 wrap to 2^32 - 16.
    EXPECT_EQ(size_dxtc(dxt1, INT_MAX - 3, 4), 0xFFFFFFF8u);
    EXPECT_EQ(size_dxtc(dxt5, INT_MAX - 3, 4), 0xFFFFFFF0u);
    // 2^15 x 2^15 blocks of 16 bytes: 2^34.
    EXPECT_EQ(size_dxtc(dxt5, 131072, 131072), 0u);
    // (2^15 + 1) x 2^15 blocks of 8 bytes: 2^33 + 2^18.
    EXPECT_EQ(size_dxtc(dxt1, 131076, 131072), 262144u);
}

TEST(DdsLevelSize, NegativeBlockExtentsAreLargeUnsignedNumbers) {
    const vDDSImage dxt1 = image_of(fourcc_header(four_cc("DXT1")));
    EXPECT_EQ(size_dxtc(dxt1, -1, 4), 0u) << "2^32 - 1 + 3 wraps to 2";
    EXPECT_EQ(size_dxtc(dxt1, -4, 4), 0xFFFFFFF8u) << "2^30 - 1 columns of 8 bytes";
}

TEST(DdsLevelSize, Bc6hRoundsUpToWholeBlocks) {
    EXPECT_EQ(size_bc6h(5, 5), 64u);
    EXPECT_EQ(size_bc6h(4, 4), 16u);
    EXPECT_EQ(size_bc6h(1, 1), 16u);
    EXPECT_EQ(size_bc6h(9, 4), 48u);
    EXPECT_EQ(size_bc6h(4, 9), 48u);
    EXPECT_EQ(size_bc6h(0, 4), 0u);
    EXPECT_EQ(size_bc6h(640, 480), 307200u);
}

TEST(DdsLevelSize, Bc6hBlockCountIsKeptTo32Bits) {
    EXPECT_EQ(size_bc6h(262144, 262144), 0u) << "2^32 blocks";
    EXPECT_EQ(size_bc6h(262148, 262144), 1048576u) << "2^32 + 2^16 blocks";
    EXPECT_EQ(size_bc6h(INT_MAX, 4), 0u) << "2^29 blocks of 16 bytes are 2^33";
    EXPECT_EQ(size_bc6h(INT_MAX - 3, 4), 0xFFFFFFF0u) << "2^29 - 1 blocks";
}

TEST(DdsLevelSize, Bc6hNegativeExtentsAreLargeUnsignedNumbers) {
    EXPECT_EQ(size_bc6h(-4, 4), 0xFFFFFFF0u) << "2^30 - 1 blocks of 16 bytes, modulo 2^32";
    EXPECT_EQ(size_bc6h(-1, 4), 0u) << "2^30 blocks: the quarter is rounded up, not wrapped";
}

// (2^30 - 1) x (2^30 - 3) = 2^60 - 2^32 + 3 needs 60 bits: in double precision it is 2^60 - 2^32.
TEST(DdsLevelSize, Bc6hBlockCountIsADoublePrecisionProduct) { EXPECT_EQ(size_bc6h(-4, -12), 0u); }

TEST(DdsLevelSize, Bc6hSizeIsIndependentOfTheFormat) {
    const vDDSImage image = image_of(plain_header(kRgb, 24));
    EXPECT_EQ((image.*dds_private::size_bc6h())(5, 5), 64u);
}

TEST(DdsClampSize, RaisesToOne) {
    EXPECT_EQ(clamp_size(0), 1);
    EXPECT_EQ(clamp_size(-1), 1);
    EXPECT_EQ(clamp_size(INT_MIN), 1);
    EXPECT_EQ(clamp_size(1), 1);
    EXPECT_EQ(clamp_size(2), 2);
    EXPECT_EQ(clamp_size(INT_MAX), INT_MAX);
}

TEST(DdsLineWidth, PadsToFourBytes) {
    EXPECT_EQ(line_width(0, 24), 0);
    EXPECT_EQ(line_width(1, 8), 4);
    EXPECT_EQ(line_width(4, 8), 4);
    EXPECT_EQ(line_width(5, 8), 8);
    EXPECT_EQ(line_width(1, 24), 4);
    EXPECT_EQ(line_width(3, 24), 12);
    EXPECT_EQ(line_width(4, 24), 12);
    EXPECT_EQ(line_width(3, 32), 12);
    EXPECT_EQ(line_width(1, 1), 4);
    EXPECT_EQ(line_width(33, 1), 8);
    EXPECT_EQ(line_width(3, 16), 8);
}

// (-8 + 31) >> 3 = 2, (-40 + 31) >> 3 = -2, (-64 + 31) >> 3 = -5, each with the low two bits cleared.
TEST(DdsLineWidth, ShiftsNegativeWidthsArithmetically) {
    EXPECT_EQ(line_width(-1, 8), 0);
    EXPECT_EQ(line_width(-5, 8), -4);
    EXPECT_EQ(line_width(-8, 8), -8);
}

TEST(DdsLineWidth, ServesLargeLines) { EXPECT_EQ(line_width(67108863, 24), 201326592); }

TEST(DdsSwapEndian, LeavesTheValue) {
    const vDDSImage image;
    std::uint32_t value = 0x11223344;
    (image.*dds_private::swap_endian())(&value);
    EXPECT_EQ(value, 0x11223344u);
    (image.*dds_private::swap_endian())(nullptr);
}

}  // namespace
