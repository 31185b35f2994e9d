// SPDX-License-Identifier: Apache-2.0
// Loading from files on disk: the same as from memory, and safe whatever the file is.
#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <new>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <vector>

#include "support/allocation.h"
#include "support/dds_check.h"
#include "support/dds_file.h"
#include "support/log_capture.h"
#include "support/plain_model.h"
#include "support/temporary_folder.h"
#include "vDDSImage.h"

namespace {

using namespace support;

std::string_view text(const Bytes& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

FileHeader bgra_header() {
    return plain_header(kRgbWithAlpha, 32).with_masks(0xFF0000, 0xFF00, 0xFF, 0xFF000000);
}

// One small file of each way to read the pixels.
std::vector<FileHeader> kinds_of_files() {
    return {
        bgra_header().sized(5, 3).with_mips(3),
        plain_header(kRgb, 24).with_masks(0xFF0000, 0xFF00, 0xFF, 0).sized(3, 4),
        plain_header(0x20000, 8).sized(7, 5).with_mips(2),
        fourcc_header(four_cc("DXT1")).sized(8, 8).with_mips(4),
        fourcc_header(four_cc("DXT5")).sized(9, 16).with_mips(2),
        fourcc_header(four_cc("ATI2")).sized(4, 8).with_caps2(kCubeMap),
        fourcc_header(116).sized(2, 2).with_masks(0xFF0000, 0xFF00, 0xFF, 0),
        dxgi_header(95).sized(5, 5).with_mips(2),
        dxgi_header(87).sized(3, 3).with_depth(3).with_caps2(kVolume).with_mips(2),
    };
}

vDDSImage image_with_content() { return loaded(complete_file(bgra_header().sized(2, 2))); }

TEST(DdsLoadFile, GivesWhatTheFilesBytesGiveInMemory) {
    const TemporaryFolder folder;
    for (const FileHeader& header : kinds_of_files()) {
        const Bytes file = complete_file(header);
        const std::string path = folder.write("image.dds", text(file));
        for (const bool flip : {false, true}) {
            for (const bool header_only : {false, true}) {
                SCOPED_TRACE(describe(header));
                vDDSImage image;
                ASSERT_TRUE(image.load(path, flip, header_only));
                EXPECT_TRUE(same(image, plain::load(file, flip, header_only)));
            }
        }
    }
}

TEST(DdsLoadFile, BytesThatATruncatedFileLacksReadAsZero) {
    const TemporaryFolder folder;
    for (const FileHeader& header : kinds_of_files()) {
        const Bytes whole = complete_file(header);
        for (std::size_t length = 0; length <= whole.size(); ++length) {
            SCOPED_TRACE(describe(header) + " cut to " + std::to_string(length));
            const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
            const std::string path = folder.write("cut.dds", text(cut));
            const LogCapture log;
            for (const bool header_only : {false, true}) {
                const plain::Image expected = plain::load(cut, true, header_only);
                vDDSImage image;
                ASSERT_EQ(image.load(path, true, header_only), expected.loaded);
                ASSERT_TRUE(same(image, expected));
            }
        }
    }
}

TEST(DdsLoadFile, BytesBehindTheLastLevelAreIgnored) {
    const TemporaryFolder folder;
    Bytes file = complete_file(bgra_header().sized(4, 4));
    const plain::Image expected = plain::load(file, false, false);
    file.resize(file.size() + 1000, 0xAB);
    vDDSImage image;
    ASSERT_TRUE(image.load(folder.write("long.dds", text(file)), false, false));
    EXPECT_TRUE(same(image, expected));
}

TEST(DdsLoadFile, AFileThatCannotBeOpenedLeavesTheImageAsItWasAndLogsNothing) {
    const TemporaryFolder folder;
    const LogCapture log;
    vDDSImage image = image_with_content();
    const Bytes before = pixels_of(image[0]);
    EXPECT_FALSE(image.load(folder.path("absent.dds"), false, false));
    EXPECT_TRUE(image.is_valid());
    EXPECT_EQ(pixels_of(image[0]), before);
    EXPECT_TRUE(log.records().empty());
}

TEST(DdsLoadFile, AnEmptyFileFailsAndClearsTheImage) {
    const TemporaryFolder folder;
    const LogCapture log;
    vDDSImage image = image_with_content();
    EXPECT_FALSE(image.load(folder.write("empty.dds", ""), false, false));
    EXPECT_TRUE(cleared(image));
    EXPECT_TRUE(log.records().empty());
}

TEST(DdsLoadFile, ADirectoryFails) {
    const TemporaryFolder folder;
    vDDSImage image;
    EXPECT_FALSE(image.load(folder.path("."), false, false));
    EXPECT_FALSE(image.is_valid());
}

#if !defined(_WIN32)
TEST(DdsLoadFile, APipeFailsWithoutWaitingForAWriterAndLeavesTheImageAsItWas) {
    const TemporaryFolder folder;
    const std::string path = folder.path("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    vDDSImage image = image_with_content();
    EXPECT_FALSE(image.load(path, false, false));
    EXPECT_TRUE(image.is_valid());
}
#endif

TEST(DdsLoadFile, AFileOver2GiBIsReadToItsEnd) {
    const TemporaryFolder folder;
    constexpr std::uint32_t kWidth = 1U << 16;
    constexpr std::uint32_t kHeight = (1U << 15) + 1;
    constexpr std::size_t kPixels = std::size_t{kWidth} * kHeight;
    const std::string path =
        folder.write("large.dds", text(header_bytes(plain_header(0x20000, 8).sized(kWidth, kHeight))));
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(static_cast<std::streamoff>(128 + kPixels - 4));
    file << "last";
    file.close();

    vDDSImage image;
    ASSERT_TRUE(image.load(path, false, false));
    ASSERT_EQ(image.get_size(), kPixels);
    const char* const pixels = image;
    EXPECT_EQ(std::string(pixels + kPixels - 4, 4), "last");
    EXPECT_EQ(pixels[0], 0);
}

TEST(DdsLoadFile, AFailingAllocationLeaksNothingAndTheImageCanLoadAgain) {
    const TemporaryFolder folder;
    const Bytes file = complete_file(bgra_header().sized(4, 4).with_mips(3));
    const std::string path = folder.write("image.dds", text(file));
    const plain::Image expected = plain::load(file, true, false);
    bool fired = true;
    for (std::size_t index = 0; fired; ++index) {
        SCOPED_TRACE(index);
        const auto before = live_blocks();
        {
            vDDSImage image;
            {
                const FailAllocation failure(index);
                try {
                    image.load(path, true, false);
                } catch (const std::bad_alloc&) {
                    EXPECT_FALSE(image.is_valid());
                }
                fired = failure.fired();
            }
            ASSERT_TRUE(image.load(path, true, false));
            ASSERT_TRUE(same(image, expected));
        }
        ASSERT_EQ(live_blocks(), before);
    }
}

TEST(DdsLoadFile, LevelsThatNoMemoryHoldsEndInTheAllocationException) {
    const TemporaryFolder folder;
    const Bytes file = header_bytes(fourcc_header(116).sized(1U << 24, 1U << 24));
    const std::string path = folder.write("absurd.dds", text(file));
    vDDSImage image = image_with_content();
    EXPECT_THROW(image.load(path, false, false), std::bad_alloc);
    EXPECT_FALSE(image.is_valid());
    const Bytes good = complete_file(bgra_header().sized(2, 2));
    ASSERT_TRUE(image.load(folder.write("good.dds", text(good)), false, false));
    EXPECT_TRUE(same(image, plain::load(good, false, false)));
}

TEST(DdsLoadFile, AMipCountOfBillionsEndsInTheAllocationExceptionAtOnce) {
    const TemporaryFolder folder;
    const Bytes file = header_bytes(bgra_header().sized(1, 1).with_mips(0x80000000U));
    const std::string path = folder.write("mips.dds", text(file));
    vDDSImage image;
    EXPECT_THROW(image.load(path, false, false), std::bad_alloc);
    EXPECT_THROW(image.load(path, false, true), std::bad_alloc);
    EXPECT_FALSE(image.is_valid());
}

// Extents whose level size wraps around to next to nothing: there are no pixels to walk.
TEST(DdsLoadFile, ExtentsWhoseSizeWrapsAroundAreNeitherReorderedNorFlippedOutOfBounds) {
    const TemporaryFolder folder;
    const struct {
        FileHeader header;
        std::size_t size;
    } cases[] = {
        {bgra_header().sized(1U << 30, 1U << 29), 0},
        {bgra_header().sized(0x80000000U, 0x80000000U), 0},
        {fourcc_header(four_cc("DXT5")).sized(1U << 16, 1U << 18), 0},
        {fourcc_header(four_cc("DXT1")).sized(0x80000000U, 64), 0},
        {fourcc_header(four_cc("ATI2")).sized(8, 0x80000000U), 0},
        {dxgi_header(95).sized(1U << 16, 1U << 18), 0},
        {plain_header(0x20000, 8).sized(769546, 494770).with_depth(48448661), 4},  // 2^64 + 4 bytes
        {plain_header(0x20000, 8).sized(0, 0x7FFFFFFFU).with_depth(0x7FFFFFFFU), 0},
        {bgra_header().sized(0, 5), 0},
        {bgra_header().sized(5, 0), 0},
        {fourcc_header(four_cc("DXT1")).sized(0, 64), 0},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(describe(test.header));
        const std::string path = folder.write("wraps.dds", text(header_bytes(test.header)));
        vDDSImage image;
        ASSERT_TRUE(image.load(path, true, false));
        EXPECT_EQ(image.get_size(), test.size);
    }
}

}  // namespace
