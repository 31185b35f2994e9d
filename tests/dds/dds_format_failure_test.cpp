// SPDX-License-Identifier: Apache-2.0
// Files that are refused: what is logged, and what is left in the image.
#include <algorithm>
#include <gtest/gtest.h>

#include "support/dds_check.h"
#include "support/log_capture.h"
#include "support/plain_formats.h"
#include "vDDSImage.h"

namespace {

using namespace support;

std::vector<LogRecord> warning(const std::string& text) { return {{"Default", 4, text}}; }

/// Loads a refused file into an image that holds something, and returns what was logged.
std::vector<LogRecord> refuse(const Bytes& file, Flip flip = Flip::no, Read read = Read::all) {
    vDDSImage image = loaded(complete_file(dxgi_header(10).sized(4, 4).with_caps2(kCubeMap | kVolume)));
    const LogCapture log;
    EXPECT_FALSE(load(image, file, flip, read));
    EXPECT_TRUE(cleared(image));
    return log.records();
}

TEST(DdsFormatFailure, WrongMagicIsSilentAndClears) {
    for (std::uint32_t magic : {four_cc("DDSX"), four_cc("dds "), four_cc(" SDD"), four_cc("DD S"), 0u}) {
        FileHeader header = fourcc_header(four_cc("DXT1")).with_caps2(kCubeMap | kVolume).with_depth(1);
        header.magic = magic;
        EXPECT_TRUE(refuse(header_bytes(header)).empty()) << std::hex << magic;
    }
}

TEST(DdsFormatFailure, NothingBehindAWrongMagicIsRead) {
    EXPECT_TRUE(refuse({'D', 'D', 'S', '_'}).empty());
    EXPECT_TRUE(refuse({'B', 'M', 0, 0}, Flip::yes, Read::header_only).empty());
}

TEST(DdsFormatFailure, MagicIsComparedToTheLastCharacter) {
    FileHeader header = plain_header(0, 8);
    header.magic = four_cc("DDS ") ^ 0x01000000;
    EXPECT_TRUE(refuse(complete_file(header)).empty());
}

TEST(DdsFormatFailure, UnknownFourCCIsSilent) {
    for (std::uint32_t fourcc : {four_cc("DXT2"), four_cc("DXT4"), four_cc("dxt1"), four_cc("BC6H"),
                                 four_cc("RGBG"), 0u, 1u, 36u, 111u, 112u, 115u, 117u, 0xFFFFFFFFu})
        EXPECT_TRUE(refuse(header_bytes(fourcc_header(fourcc))).empty()) << std::hex << fourcc;
}

TEST(DdsFormatFailure, DxgiFourChannelFloatIsRefusedByName) {
    EXPECT_EQ(refuse(header_bytes(dxgi_header(2))),
              warning("The DXGI type 2 for the DDS file : is not supported."));
}

TEST(DdsFormatFailure, EveryOtherDxgiNumberIsRefused) {
    const auto accepted = [](std::uint32_t number) {
        const auto& rows = plain::dxgi_rows();
        return std::any_of(rows.begin(), rows.end(), [=](const auto& row) { return row.number == number; });
    };
    int refused = 0;
    for (std::uint32_t number = 0; number <= 140; ++number) {
        if (accepted(number)) continue;
        ++refused;
        EXPECT_EQ(
            refuse(header_bytes(dxgi_header(number))),
            warning("The DXGI type " + std::to_string(number) + " for the DDS file : is not supported."));
    }
    EXPECT_EQ(refused, 141 - 13);
}

TEST(DdsFormatFailure, LargeDxgiNumbersAreLoggedAsSignedNumbers) {
    EXPECT_EQ(refuse(header_bytes(dxgi_header(0x7FFFFFFF))),
              warning("The DXGI type 2147483647 for the DDS file : is not supported."));
    EXPECT_EQ(refuse(header_bytes(dxgi_header(0xFFFFFFFF))),
              warning("The DXGI type -1 for the DDS file : is not supported."));
}

TEST(DdsFormatFailure, DxgiNumberIsComparedInFull) {
    EXPECT_EQ(refuse(header_bytes(dxgi_header(71 + 256))),
              warning("The DXGI type 327 for the DDS file : is not supported."));
    EXPECT_EQ(refuse(header_bytes(dxgi_header(71 + 65536))),
              warning("The DXGI type 65607 for the DDS file : is not supported."));
}

TEST(DdsFormatFailure, SixteenBitsAreRefusedWithAnyFlags) {
    for (std::uint32_t flags : {0u, 0x2u, 0x40u, 0x41u, 0x20000u, 0x20001u})
        EXPECT_EQ(refuse(header_bytes(plain_header(flags, 16))), warning("DDS Format not supported."))
            << flags;
}

TEST(DdsFormatFailure, TwentyFourBitsWithAlphaAreRefused) {
    EXPECT_EQ(refuse(header_bytes(plain_header(kRgbWithAlpha, 24))), warning("DDS Format not supported."));
}

TEST(DdsFormatFailure, OtherBitCountsAreRefused) {
    for (std::uint32_t bits : {0u, 1u, 4u, 7u, 9u, 12u, 15u, 31u, 33u, 48u, 64u, 128u, 264u, 0xFFFFFFFFu})
        for (std::uint32_t flags : {0u, 0x40u, 0x41u})
            EXPECT_EQ(refuse(header_bytes(plain_header(flags, bits))), warning("DDS Format not supported."))
                << bits << " bits, flags " << flags;
}

TEST(DdsFormatFailure, RgbFlagsMustMatchExactly) {
    for (std::uint32_t flags : {0u, 0x1u, 0x2u, 0x42u, 0x43u, 0x60u, 0x240u, 0x20040u, 0x80000040u})
        for (std::uint32_t bits : {24u, 32u})
            EXPECT_EQ(refuse(header_bytes(plain_header(flags, bits))), warning("DDS Format not supported."))
                << bits << " bits, flags " << flags;
}

TEST(DdsFormatFailure, Dx10WithoutTheFourCCFlagIsRefusedByFlagsAndBits) {
    FileHeader header = dxgi_header(2);
    header.pixel_format.flags = kRgbWithAlpha;
    header.pixel_format.bit_count = 24;
    EXPECT_EQ(refuse(header_bytes(header)), warning("DDS Format not supported."));
}

TEST(DdsFormatFailure, HeaderOnlyRefusesTheSameFiles) {
    EXPECT_EQ(refuse(header_bytes(dxgi_header(2)), Flip::no, Read::header_only),
              warning("The DXGI type 2 for the DDS file : is not supported."));
    EXPECT_EQ(refuse(header_bytes(plain_header(kRgb, 16)), Flip::yes, Read::header_only),
              warning("DDS Format not supported."));
    EXPECT_TRUE(refuse(header_bytes(fourcc_header(0)), Flip::no, Read::header_only).empty());
}

// The flags of caps2 are taken before the format is looked at, and stay.
TEST(DdsFormatFailure, CubeAndVolumeFlagsStayAsTheHeaderSaid) {
    const LogCapture log;
    for (const FileHeader& header : {dxgi_header(2), fourcc_header(1), plain_header(kRgb, 16)}) {
        SCOPED_TRACE(describe(header));
        vDDSImage image;
        EXPECT_FALSE(load(image, header_bytes(header.with_caps2(kCubeMap))));
        EXPECT_TRUE(cleared(image, true, false));
        EXPECT_FALSE(load(image, header_bytes(header.with_caps2(kVolume).with_depth(1))));
        EXPECT_TRUE(cleared(image, false, true));
        EXPECT_FALSE(load(image, header_bytes(header.with_caps2(kVolume | kCubeMap).with_depth(4))));
        EXPECT_TRUE(cleared(image, true, true));
        EXPECT_FALSE(load(image, header_bytes(header.with_caps2(kVolume))));
        EXPECT_TRUE(cleared(image));
    }
}

TEST(DdsFormatFailure, ImageLoadsAgainAfterwards) {
    const LogCapture log;
    vDDSImage image;
    EXPECT_FALSE(load(image, header_bytes(dxgi_header(2).with_caps2(kCubeMap))));
    const Bytes file = complete_file(fourcc_header(four_cc("DXT1")).sized(8, 8));
    ASSERT_TRUE(load(image, file));
    EXPECT_TRUE(same(image, plain::load(file, false, false)));
}

}  // namespace
