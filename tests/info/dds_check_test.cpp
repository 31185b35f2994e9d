// SPDX-License-Identifier: Apache-2.0
// vTextureCheck on DDS files.
#include "support/dds_check.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vTextureCheck.h>

#include "info/every_format.h"
#include "support/allocation.h"

namespace {

using namespace support;
using Check = vTextureCheck;

// A heap block of exactly the file's size, so that a sanitizer sees a read beyond it.
Check::Result check(const Bytes& file, const vTextureLimits& limits = vTextureLimits()) {
    Bytes exact(file);
    exact.shrink_to_fit();
    return Check::CheckDDSBuffer(exact.data(), exact.size(), limits);
}

std::uint64_t loaded_bytes(const vDDSImage& image) {
    std::uint64_t bytes = 0;
    for (int face = 0; face < (image.is_cubemap() ? 6 : 1); ++face) {
        bytes += image[face].get_size();
        for (int i = 0; i < image[face].get_num_mipmaps(); ++i) bytes += image[face].get_mipmap(i).get_size();
    }
    return bytes;
}

// What passes is loaded, with the bytes foretold, in both directions.
void expect_kept_promise(const Bytes& file) {
    const Check::Result result = check(file);
    if (!result.ok()) {
        EXPECT_FALSE(result.sentence.empty());
        return;
    }
    for (const Flip flip : {Flip::no, Flip::yes}) {
        vDDSImage image;
        ASSERT_TRUE(load(image, file, flip));
        ASSERT_EQ(loaded_bytes(image), result.totalBytes);
    }
}

void put32(Bytes& file, std::size_t offset, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i) file[offset + i] = static_cast<std::uint8_t>(value >> 8 * i);
}

TEST(DdsCheck, PassesAWholeFileOfEveryFormat) {
    for (const FileHeader& header : every_format()) {
        SCOPED_TRACE(describe(header));
        const Bytes file = complete_file(header);
        const Check::Result result = check(file);
        EXPECT_EQ(result.status, Check::eOk) << result.sentence;
        EXPECT_EQ(result.sentence, "");
        EXPECT_EQ(result.totalBytes, file.size() - headers_size(header));
        EXPECT_EQ(result.missingBytes, 0U);
        EXPECT_EQ(result.face, -1);
        EXPECT_EQ(result.level, -1);
        expect_kept_promise(file);
    }
}

TEST(DdsCheck, PassesCubeMapsAndVolumes) {
    for (const FileHeader& header : every_format()) {
        SCOPED_TRACE(describe(header));
        expect_kept_promise(complete_file(header.sized(8, 8).with_caps2(kCubeMap | 0xFC00)));
        expect_kept_promise(complete_file(header.with_depth(5).with_caps2(kVolume)));
        EXPECT_TRUE(check(complete_file(header.with_caps2(kCubeMap))).ok());
        EXPECT_TRUE(check(complete_file(header.with_depth(5).with_caps2(kVolume))).ok());
    }
}

TEST(DdsCheck, NamesWhatEveryTruncationLacks) {
    for (const FileHeader& header : every_format()) {
        SCOPED_TRACE(describe(header));
        const Bytes file = complete_file(header);
        for (std::size_t length = 1; length < file.size(); ++length) {
            const Check::Result result =
                check(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length)));
            ASSERT_EQ(result.status, Check::eTruncated) << length;
            ASSERT_EQ(result.offset, length);
            const bool before_pixels = length < headers_size(header);
            ASSERT_EQ(result.level, before_pixels ? -1 : result.level);
            if (!before_pixels) {
                ASSERT_EQ(result.missingBytes, file.size() - length);
                ASSERT_EQ(result.totalBytes, file.size() - headers_size(header));
                ASSERT_GE(result.level, 0);
            }
        }
    }
}

// Levels of 16, 4 and 1 pixels of one byte: faces of 21 bytes after a header of 128.
TEST(DdsCheck, NamesTheFirstFaceAndLevelThatIsNotWhole) {
    const Bytes file = complete_file(plain_header(0x20000, 8).sized(4, 4).with_mips(3).with_caps2(kCubeMap));
    ASSERT_EQ(file.size(), 128U + 6 * 21);
    const auto expect_lost = [&](std::size_t length, int face, int level) {
        const Check::Result result =
            check(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length)));
        EXPECT_EQ(result.face, face) << length;
        EXPECT_EQ(result.level, level) << length;
    };
    expect_lost(128, 0, 0);
    expect_lost(128 + 15, 0, 0);
    expect_lost(128 + 16, 0, 1);
    expect_lost(128 + 20, 0, 2);
    expect_lost(128 + 21, 1, 0);
    expect_lost(128 + 5 * 21 + 20, 5, 2);
    const Check::Result result = check(Bytes(file.begin(), file.begin() + 128 + 30));
    EXPECT_EQ(result.sentence,
              "is cut short: level 0 of face 1 ends at byte 165, the file at byte 158; 96 bytes are missing "
              "in all");
}

TEST(DdsCheck, TellsWhatIsNoDDSFile) {
    const Check::Result other = check({'P', 'N', 'G', '\n', 1, 2});
    EXPECT_EQ(other.status, Check::eNotThisKind);
    EXPECT_EQ(other.sentence, "is not a DDS file: it starts with \"PNG\\x0a\" instead of \"DDS \"");
    const Check::Result empty = check({});
    EXPECT_EQ(empty.status, Check::eNotThisKind);
    EXPECT_EQ(empty.sentence, "is empty");
    EXPECT_EQ(check({'D', 'D', 'X'}).status, Check::eNotThisKind);
}

TEST(DdsCheck, NamesTheFormatThatIsNotSupported) {
    const Check::Result dxgi = check(header_bytes(dxgi_header(98)));
    EXPECT_EQ(dxgi.status, Check::eUnsupportedFormat);
    EXPECT_EQ(dxgi.offset, 128U);
    EXPECT_EQ(dxgi.sentence, "is BC7_UNORM, which vDDSImage does not take: vDDSLevels and pelto sheet do");
    const Check::Result depth = check(header_bytes(dxgi_header(45)));
    EXPECT_EQ(depth.sentence, "is D24_UNORM_S8_UINT, which vDDSImage does not take: vDDSLevels does");
    const Check::Result unknown = check(header_bytes(dxgi_header(300)));
    EXPECT_EQ(unknown.sentence, "the DXGI format 300 at byte 128 is not supported");
    const Check::Result number = check(header_bytes(fourcc_header(59)));
    EXPECT_EQ(number.sentence, "the Direct3D 9 format 59 at byte 84 is not supported");
    const Check::Result four = check(header_bytes(fourcc_header(four_cc("BC7 "))));
    EXPECT_EQ(four.status, Check::eUnsupportedFormat);
    EXPECT_EQ(four.offset, 84U);
    EXPECT_EQ(four.sentence, "the FourCC \"BC7 \" at byte 84 is not supported");
    const Check::Result plain = check(header_bytes(plain_header(kRgb, 16)));
    EXPECT_EQ(plain.status, Check::eUnsupportedFormat);
    EXPECT_EQ(plain.offset, 80U);
    EXPECT_EQ(plain.sentence,
              "the pixel format at byte 80 (flags 64, 16 bits a pixel, masks 00000000 00000000 00000000 "
              "00000000) is not supported");
}

TEST(DdsCheck, RefusesExtentsThatAreNone) {
    const FileHeader header = fourcc_header(four_cc("DXT1"));
    const Check::Result width = check(complete_file(header.sized(0, 4)));
    EXPECT_EQ(width.status, Check::eAbsurdSize);
    EXPECT_EQ(width.offset, 16U);
    EXPECT_EQ(width.sentence, "its width at byte 16 is 0 pixels");
    const Check::Result height = check(complete_file(header.sized(4, 0)));
    EXPECT_EQ(height.status, Check::eAbsurdSize);
    EXPECT_EQ(height.offset, 12U);
}

TEST(DdsCheck, RefusesExtentsThatAreNegativeNumbersToTheLoader) {
    for (const std::uint32_t extent : {0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(check(header_bytes(plain_header(0x20000, 8).sized(extent, 1))).status, Check::eAbsurdSize);
        EXPECT_EQ(check(header_bytes(plain_header(0x20000, 8).sized(1, extent))).status, Check::eAbsurdSize);
    }
}

TEST(DdsCheck, TakesADepthThatIsNoPositiveNumberForOneAsTheLoaderDoes) {
    for (const std::uint32_t depth : {0U, 0x80000000U, 0xFFFFFFFFU}) {
        Bytes file = complete_file(plain_header(0x20000, 8).sized(4, 4));
        put32(file, 24, depth);
        const Check::Result result = check(file);
        EXPECT_TRUE(result.ok()) << result.sentence;
        EXPECT_EQ(result.totalBytes, 16U);
        expect_kept_promise(file);
    }
}

TEST(DdsCheck, RefusesMoreLevelsThanAnyImageHas) {
    const FileHeader header = plain_header(0x20000, 8).sized(1, 1);
    EXPECT_TRUE(check(complete_file(header.with_mips(32))).ok());
    const Check::Result result = check(complete_file(header.with_mips(33)));
    EXPECT_EQ(result.status, Check::eAbsurdSize);
    EXPECT_EQ(result.offset, 28U);
    EXPECT_EQ(result.sentence, "its 33 levels at byte 28 are more than the 32 of the largest image");
    EXPECT_EQ(check(header_bytes(header.with_mips(0xFFFFFFFF))).status, Check::eAbsurdSize);
}

TEST(DdsCheck, AnswersTerabytesAtOnceWithoutMemoryForThem) {
    const Bytes file =
        header_bytes(fourcc_header(116).sized(0x7FFFFFFF, 0x100000).with_mips(20).with_caps2(kCubeMap));
    const AllocationRecorder recorder;
    const Check::Result result = Check::CheckDDSBuffer(file.data(), file.size());
    const std::vector<std::size_t> sizes = recorder.sizes();
    EXPECT_EQ(result.status, Check::eTruncated);
    EXPECT_EQ(result.face, 0);
    EXPECT_EQ(result.level, 0);
    EXPECT_GT(result.missingBytes, std::uint64_t{1} << 50);
    for (const std::size_t size : sizes) EXPECT_LT(size, 16384U);
}

// 32 Ki x 32 Ki blocks of 8 bytes are 2^33 bytes, of which 32 bits keep nothing: the loader would take none.
TEST(DdsCheck, RefusesBlocksThatTheLoaderCannotCountIn32Bits) {
    for (const FileHeader& header : {fourcc_header(four_cc("DXT1")), dxgi_header(95)}) {
        const Check::Result result = check(header_bytes(header.sized(131072, 131072)));
        EXPECT_EQ(result.status, Check::eAbsurdSize);
        EXPECT_EQ(result.sentence,
                  "its extent of 131072 x 131072 x 1 pixels takes more bytes than the loader can count");
    }
    EXPECT_EQ(check(header_bytes(fourcc_header(four_cc("DXT1")).sized(65536, 65536))).status,
              Check::eTruncated);
}

// 2^57 pixels of 128 bits are 2^64 bits, of which 64 bits keep nothing.
TEST(DdsCheck, RefusesPixelsWhoseBitsTheLoaderCannotCountIn64Bits) {
    const FileHeader header = fourcc_header(116);
    EXPECT_EQ(check(header_bytes(header.sized(1U << 29, 1U << 28))).status, Check::eAbsurdSize);
    const Check::Result largest = check(header_bytes(header.sized((1U << 29) - 1, 1U << 28)));
    EXPECT_EQ(largest.status, Check::eTruncated);
    EXPECT_EQ(largest.totalBytes, ((std::uint64_t{1} << 29) - 1) << 32);
}

TEST(DdsCheck, RefusesSizesThatOverflow64Bits) {
    const FileHeader wide = fourcc_header(116).sized(0x7FFFFFFF, 0x7FFFFFFF);
    EXPECT_EQ(check(header_bytes(wide)).status, Check::eAbsurdSize);
    EXPECT_EQ(check(header_bytes(wide)).totalBytes, UINT64_MAX);
    const FileHeader deep = plain_header(0x20000, 8).sized(0x7FFFFFFF, 0x7FFFFFFF).with_depth(0x7FFFFFFF);
    EXPECT_EQ(check(header_bytes(deep)).status, Check::eAbsurdSize);
    const FileHeader faces = plain_header(0x20000, 8).sized(0x3FFFFFFF, 0x7FFFFFFF).with_depth(2);
    const Check::Result six = check(header_bytes(faces.with_caps2(kCubeMap)));
    EXPECT_EQ(six.status, Check::eAbsurdSize);
    EXPECT_EQ(six.totalBytes, UINT64_MAX);
    EXPECT_EQ(six.sentence, "its levels take more bytes than the loader can count");
}

TEST(DdsCheck, KeepsTheCallersLimits) {
    const Bytes file = complete_file(plain_header(0x20000, 8).sized(100, 50).with_depth(3));
    EXPECT_TRUE(check(file, {15000, 100}).ok());
    const Check::Result bytes = check(file, {14999, 100});
    EXPECT_EQ(bytes.status, Check::eAbsurdSize);
    EXPECT_EQ(bytes.totalBytes, 15000U);
    EXPECT_EQ(bytes.sentence, "its levels take 15000 bytes, beyond the limit of 14999");
    const Check::Result extent = check(file, {15000, 99});
    EXPECT_EQ(extent.status, Check::eAbsurdSize);
    EXPECT_EQ(extent.sentence, "its width at byte 16 is 100 pixels, beyond the limit of 99");
    EXPECT_EQ(check(complete_file(plain_header(0x20000, 8).sized(3, 3).with_depth(9)), {1000, 8}).offset,
              24U);
}

// A load reads the whole file, also what lies behind the last level.
TEST(DdsCheck, KeepsTheLimitOfTheFilesLength) {
    Bytes file = complete_file(plain_header(0x20000, 8).sized(4, 4));
    file.resize(300);
    vTextureLimits limits;
    limits.maxFileBytes = 300;
    EXPECT_TRUE(check(file, limits).ok());
    limits.maxFileBytes = 299;
    const Check::Result result = check(file, limits);
    EXPECT_EQ(result.status, Check::eAbsurdSize);
    EXPECT_EQ(result.sentence, "is 300 bytes long, beyond the limit of 299");
}

TEST(DdsCheck, KeepsItsPromiseForEveryByteOfTheHeaders) {
    for (const FileHeader& header :
         {dxgi_header(71).sized(8, 8).with_mips(2), fourcc_header(113).sized(3, 2),
          plain_header(kRgbWithAlpha, 32).sized(4, 3).with_masks(0xFF0000, 0xFF00, 0xFF, 0xFF000000),
          fourcc_header(four_cc("DXT5")).sized(4, 4).with_caps2(kCubeMap)}) {
        SCOPED_TRACE(describe(header));
        const Bytes whole = complete_file(header);
        for (std::size_t offset = 0; offset < headers_size(header); ++offset) {
            Bytes file = whole;
            for (unsigned int value = 0; value < 256; ++value) {
                file[offset] = static_cast<std::uint8_t>(value);
                expect_kept_promise(file);
            }
        }
        if (testing::Test::HasFatalFailure()) return;
    }
}

TEST(DdsCheck, KeepsItsPromiseForRandomHeaders) {
    std::mt19937 random(20);
    const std::vector<FileHeader> headers = every_format();
    int passed = 0;
    for (int i = 0; i < 20000; ++i) {
        Bytes file = complete_file(headers[random() % headers.size()]);
        for (auto changes = random() % 4; changes > 0; --changes) {
            // The fields of extents, levels, format and faces.
            constexpr std::size_t kFields[] = {12, 16, 24, 28, 80, 84, 88, 92, 96, 100, 104, 112};
            const std::size_t field = kFields[random() % std::size(kFields)];
            put32(file, field, static_cast<std::uint32_t>(random() >> random() % 32));
        }
        file.resize(file.size() - std::min<std::size_t>(file.size(), random() % 3 == 0 ? random() % 40 : 0));
        passed += check(file).ok() ? 1 : 0;
        expect_kept_promise(file);
        if (testing::Test::HasFatalFailure()) return;
    }
    EXPECT_GT(passed, 1000);
}

}  // namespace
