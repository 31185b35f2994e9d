// SPDX-License-Identifier: Apache-2.0
// Which pixel format a header stands for.
#include <gtest/gtest.h>

#include "support/dds_check.h"
#include "support/dds_private.h"
#include "support/log_capture.h"
#include "vDDSImage.h"

namespace {

using namespace support;
using namespace TOZ::SUPPORTED_FORMAT;

struct Case {
    FileHeader header;
    Type format;
    int components;
    int bits;
    bool compressed;
    std::size_t size_8x8;
};

void expect_format(const Case& expected) {
    SCOPED_TRACE(describe(expected.header));
    const LogCapture log;
    const vDDSImage image = loaded(complete_file(expected.header.sized(8, 8)));
    EXPECT_EQ(image.get_format(), expected.format);
    EXPECT_EQ(image.get_components(), expected.components);
    EXPECT_EQ(image.*dds_private::bits_per_component(), expected.bits);
    EXPECT_EQ(image.is_compressed(), expected.compressed);
    EXPECT_EQ(image.get_size(), expected.size_8x8);
    EXPECT_TRUE(image.is_valid());
    EXPECT_TRUE(log.records().empty());
}

TEST(DdsFormat, DxgiUncompressed) {
    expect_format({dxgi_header(6), RGB32F, 3, 32, false, 768});
    expect_format({dxgi_header(10), RGBA16F, 4, 16, false, 512});
    expect_format({dxgi_header(41), R32F, 1, 32, false, 256});
}

TEST(DdsFormat, DxgiBgraIsCountedWithThreeComponents) {
    expect_format({dxgi_header(87), BGRA8, 3, 8, false, 192});
}

TEST(DdsFormat, DxgiBlocks) {
    expect_format({dxgi_header(71), DXT1, 3, 8, true, 32});
    expect_format({dxgi_header(74), DXT3, 4, 8, true, 64});
    expect_format({dxgi_header(77), DXT5, 4, 8, true, 64});
    expect_format({dxgi_header(80), BC4U, 1, 8, true, 32});
    expect_format({dxgi_header(81), BC4S, 1, 8, true, 32});
    expect_format({dxgi_header(83), BC5U, 2, 8, true, 64});
    expect_format({dxgi_header(84), BC5S, 2, 8, true, 64});
    expect_format({dxgi_header(95), BC6H_UF16, 3, 8, true, 64});
    expect_format({dxgi_header(96), BC6H_SF16, 3, 8, true, 64});
}

TEST(DdsFormat, FourCCBlocks) {
    expect_format({fourcc_header(0x31545844), DXT1, 3, 8, true, 32});
    expect_format({fourcc_header(0x33545844), DXT3, 4, 8, true, 64});
    expect_format({fourcc_header(0x35545844), DXT5, 4, 8, true, 64});
    expect_format({fourcc_header(0x31495441), BC4U, 1, 8, true, 32});
    expect_format({fourcc_header(0x55344342), BC4U, 1, 8, true, 32});
    expect_format({fourcc_header(0x53344342), BC4S, 1, 8, true, 32});
    expect_format({fourcc_header(0x32495441), BC5U, 2, 8, true, 64});
    expect_format({fourcc_header(0x55354342), BC5U, 2, 8, true, 64});
}

TEST(DdsFormat, FourCCNumbers) {
    EXPECT_EQ(four_cc("DXT1"), 0x31545844u);
    EXPECT_EQ(four_cc("DX10"), 0x30315844u);
    EXPECT_EQ(four_cc("BC5S"), 0x53354342u);
}

TEST(DdsFormat, SignedBc5IsUnsignedByFourCCAndSignedByDxgi) {
    expect_format({fourcc_header(0x53354342), BC5U, 2, 8, true, 64});
    expect_format({dxgi_header(84), BC5S, 2, 8, true, 64});
}

TEST(DdsFormat, FourCCFloats) {
    expect_format({fourcc_header(113), RGBA16F, 4, 16, false, 512});
    expect_format({fourcc_header(114), R32F, 1, 32, false, 256});
    expect_format({fourcc_header(116), RGBA32F, 4, 32, false, 1024});
}

TEST(DdsFormat, RgbWithAlphaFlag) {
    expect_format({plain_header(0x41, 32), RGBA8, 4, 8, false, 256});
    expect_format({plain_header(0x41, 8), LUMINANCE8, 1, 8, false, 64});
}

TEST(DdsFormat, RgbFlag) {
    expect_format({plain_header(0x40, 32), RGBA8, 4, 8, false, 256});
    expect_format({plain_header(0x40, 24), RGB8, 3, 8, false, 192});
    expect_format({plain_header(0x40, 8), LUMINANCE8, 1, 8, false, 64});
}

TEST(DdsFormat, EightBitsWithAnyOtherFlagsAreOneChannel) {
    for (std::uint32_t flags :
         {0u, 0x1u, 0x2u, 0x20u, 0x42u, 0x43u, 0x48u, 0x200u, 0x20000u, 0x20001u, 0xFFFFFFFBu})
        expect_format({plain_header(flags, 8), LUMINANCE8, 1, 8, false, 64});
}

TEST(DdsFormat, EightBitPixelsAreNotReordered) {
    for (std::uint32_t flags : {0x2u, 0x20000u, 0x40u, 0x41u}) {
        SCOPED_TRACE(flags);
        const FileHeader header = plain_header(flags, 8).sized(3, 1).with_masks(0xF0, 0x0F, 0x3C, 0xFF);
        const vDDSImage image = loaded(dds_file(header, {0x12, 0x34, 0x56}));
        EXPECT_EQ(pixels_of(image[0]), (Bytes{0x12, 0x34, 0x56}));
    }
}

TEST(DdsFormat, FourCCFlagDecidesWhateverOtherFlagsSay) {
    for (std::uint32_t flags : {0x5u, 0x44u, 0x45u, 0xFFFFFFFFu}) {
        FileHeader header = fourcc_header(four_cc("DXT5"));
        header.pixel_format.flags = flags;
        header.pixel_format.bit_count = 32;
        expect_format({header, DXT5, 4, 8, true, 64});
    }
}

TEST(DdsFormat, FourCCWithoutItsFlagIsIgnored) {
    FileHeader header = plain_header(kRgb, 24);
    header.pixel_format.fourcc = four_cc("DXT1");
    expect_format({header, RGB8, 3, 8, false, 192});
}

TEST(DdsFormat, Dx10WithoutTheFourCCFlagIsDecidedByFlagsAndBits) {
    FileHeader header = dxgi_header(71);
    header.pixel_format.flags = kRgb;
    header.pixel_format.bit_count = 24;
    expect_format({header, RGB8, 3, 8, false, 192});
}

TEST(DdsFormat, BitCountIsIgnoredWithAFourCC) {
    for (FileHeader header : {fourcc_header(four_cc("DXT1")), dxgi_header(71)}) {
        header.pixel_format.bit_count = 16;
        expect_format({header, DXT1, 3, 8, true, 32});
    }
}

TEST(DdsFormat, DxgiNumbersAreNotFourCCs) {
    const LogCapture log;
    vDDSImage image;
    EXPECT_FALSE(load(image, complete_file(fourcc_header(71))));
    EXPECT_FALSE(load(image, complete_file(dxgi_header(113))));
}

TEST(DdsFormat, LoadingAnotherFormatForgetsTheOneBefore) {
    vDDSImage image;
    ASSERT_TRUE(load(image, complete_file(dxgi_header(10).sized(4, 4))));
    ASSERT_TRUE(load(image, complete_file(dxgi_header(71).sized(4, 4))));
    EXPECT_EQ(image.*dds_private::bits_per_component(), 8) << "not the 16 bits of the float format";
    ASSERT_TRUE(load(image, complete_file(plain_header(kRgb, 24).sized(4, 4))));
    EXPECT_FALSE(image.is_compressed());
    EXPECT_EQ(image.get_size(), 48u);
}

TEST(DdsFormat, HeaderFieldsThatDecideNothingAreIgnored) {
    FileHeader header = dxgi_header(77).sized(8, 8).with_mips(2);
    const Bytes plain_file = complete_file(header);
    header.header_size = 0xDEADBEEF;
    header.flags = 0;
    header.pitch = 0xFFFFFFFF;
    header.reserved = 0xA5A5A5A5;
    header.pixel_format.size = 7;
    header.caps = 0xFFFFFFFF;
    header.caps3 = kCubeMap;
    header.caps4 = kVolume;
    header.last_reserved = 0xFFFFFFFF;
    header.resource_dimension = 4;
    header.misc_flag = 4;
    header.array_size = 12;
    header.misc_flags2 = 3;
    const vDDSImage image = loaded(complete_file(header));
    EXPECT_TRUE(same(image, plain::load(plain_file, false, false)));
}

TEST(DdsFormat, EveryBitOfCaps2ButTwoIsIgnored) {
    const FileHeader header = fourcc_header(four_cc("DXT1")).sized(4, 4).with_depth(2);
    const vDDSImage image = loaded(complete_file(header.with_caps2(~(kCubeMap | kVolume))));
    EXPECT_FALSE(image.is_cubemap());
    EXPECT_FALSE(image.is_volume());
}

}  // namespace
