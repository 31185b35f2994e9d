// SPDX-License-Identifier: Apache-2.0
// vDDSLevels: the levels of a DDS file where they lie.
#include <cstdint>
#include <gtest/gtest.h>
#include <utility>
#include <vDDSLevels.h>
#include <vector>

#include "info/every_format.h"
#include "support/dds_check.h"

namespace {

using namespace support;
using Check = vTextureCheck;

Bytes bytes_of(const vDDSLevel& level) { return Bytes(level.data, level.data + level.bytes); }

const vDDSSurface& surface(const vDDSImage& image, int face, int level) {
    return level == 0 ? static_cast<const vDDSSurface&>(image[face]) : image[face].get_mipmap(level - 1);
}

FileHeader cube_map(FileHeader header) {
    header.misc_flag = 4;
    return header.with_caps2(kCubeMap);
}

FileHeader volume(FileHeader header, std::uint32_t depth) {
    header.resource_dimension = 4;
    return header.with_depth(depth).with_caps2(kVolume);
}

// Every format that the loader takes as it is meant, with masks that move no channel.
std::vector<FileHeader> every_faithful_format() {
    std::vector<FileHeader> headers;
    for (FileHeader& header : every_format()) {
        constexpr std::uint32_t kReadAtThreeBytesAPixel = 87;
        if (header.dxgi_format == kReadAtThreeBytesAPixel) continue;
        const FilePixelFormat& format = header.pixel_format;
        if (format.bit_count >= 24) {
            header = header.with_masks(0xFF, 0xFF00, 0xFF0000, format.bit_count == 32 ? 0xFF000000 : 0);
        } else if (format.bit_count == 8) {
            header = header.with_masks(0xFF, 0, 0, 0);
        }
        headers.push_back(header);
    }
    return headers;
}

TEST(DdsLevels, AreThoseOfTheLoaderForEveryFormatThatItTakesAsMeant) {
    for (const FileHeader& plain : every_faithful_format()) {
        for (const FileHeader& header : {plain, cube_map(plain), volume(plain, 4)}) {
            SCOPED_TRACE(describe(header));
            const Bytes file = complete_file(header);
            const vDDSImage image = loaded(file);
            vDDSLevels levels;
            ASSERT_TRUE(levels.Read(file.data(), file.size()).ok());
            ASSERT_EQ(levels.GetNumFaces(), image.is_cubemap() ? 6 : 1);
            ASSERT_EQ(levels.GetNumLevels(), 3);
            EXPECT_EQ(levels.GetFormat(), image.get_format());
            for (int face = 0; face < levels.GetNumFaces(); ++face) {
                for (int i = 0; i < levels.GetNumLevels(); ++i) {
                    const vDDSLevel level = levels.GetLevel(face, i);
                    const vDDSSurface& expected = surface(image, face, i);
                    EXPECT_EQ(level.width, static_cast<std::uint32_t>(expected.get_width()));
                    EXPECT_EQ(level.height, static_cast<std::uint32_t>(expected.get_height()));
                    EXPECT_EQ(level.depth, static_cast<std::uint32_t>(expected.get_depth()));
                    ASSERT_EQ(level.data, file.data() + level.offset);
                    EXPECT_TRUE(same_bytes(bytes_of(level), pixels_of(expected)));
                }
            }
        }
    }
}

TEST(DdsLevels, LieOneAfterTheOtherFaceByFace) {
    const Bytes file = complete_file(plain_header(0x20000, 8).sized(4, 2).with_mips(3).with_caps2(kCubeMap));
    vDDSLevels levels;
    ASSERT_TRUE(levels.Read(file.data(), file.size()).ok());
    EXPECT_EQ(levels.GetLevel(0, 0).offset, 128U);
    EXPECT_EQ(levels.GetLevel(0, 1).offset, 136U);
    EXPECT_EQ(levels.GetLevel(0, 2).offset, 138U);
    EXPECT_EQ(levels.GetLevel(1, 0).offset, 139U);
    EXPECT_EQ(levels.GetLevel(5, 2).offset, 128U + 5 * 11 + 10);
    EXPECT_EQ(levels.GetLevel(5, 2).bytes, 1U);
}

TEST(DdsLevels, OfferEveryWholeLevelOfAPartialFile) {
    const Bytes file = complete_file(plain_header(0x20000, 8).sized(4, 2).with_mips(3).with_caps2(kCubeMap));
    for (std::size_t length = 128; length <= file.size(); ++length) {
        const Bytes part(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length));
        vDDSLevels levels;
        const Check::Result& result = levels.Read(part.data(), part.size());
        ASSERT_EQ(levels.GetNumFaces(), 6);
        ASSERT_EQ(levels.GetNumLevels(), 3);
        bool lost = false;
        for (int number = 0; number < 18; ++number) {
            const vDDSLevel level = levels.GetLevel(number / 3, number % 3);
            const bool whole = level.offset + level.bytes <= length;
            ASSERT_EQ(level.data != nullptr, whole) << length << ' ' << number;
            if (whole) {
                ASSERT_EQ(level.data, part.data() + level.offset);
            } else if (!lost) {
                ASSERT_EQ(result.face, number / 3);
                ASSERT_EQ(result.level, number % 3);
                lost = true;
            }
        }
        ASSERT_EQ(result.ok(), !lost);
    }
}

TEST(DdsLevels, AreNoneOfAFileThatIsRefused) {
    const Bytes other = {'P', 'N', 'G', '\n'};
    vDDSLevels levels;
    EXPECT_EQ(levels.Read(other.data(), other.size()).status, Check::eNotThisKind);
    EXPECT_EQ(levels.GetNumFaces(), 0);
    EXPECT_EQ(levels.GetNumLevels(), 0);
    const Bytes file = complete_file(plain_header(0x20000, 8).sized(4, 4));
    EXPECT_EQ(levels.Read(file.data(), file.size(), {15, 100}).status, Check::eAbsurdSize);
    EXPECT_EQ(levels.GetNumLevels(), 0);
}

TEST(DdsLevels, GiveAnEmptyLevelWhereThereIsNone) {
    const Bytes file = complete_file(plain_header(0x20000, 8).sized(4, 4));
    vDDSLevels levels;
    EXPECT_EQ(levels.GetLevel(0, 0).data, nullptr);
    levels.Read(file.data(), file.size());
    EXPECT_NE(levels.GetLevel(0, 0).data, nullptr);
    for (const auto& [face, level] : {std::pair{-1, 0}, {1, 0}, {0, -1}, {0, 1}}) {
        EXPECT_EQ(levels.GetLevel(face, level).data, nullptr);
        EXPECT_EQ(levels.GetLevel(face, level).bytes, 0U);
    }
}

TEST(DdsLevels, MoveWithTheirData) {
    const Bytes file = complete_file(plain_header(0x20000, 8).sized(4, 4));
    vDDSLevels first;
    first.Read(file.data(), file.size());
    vDDSLevels second(std::move(first));
    EXPECT_EQ(second.GetLevel(0, 0).data, file.data() + 128);
    EXPECT_EQ(first.GetNumLevels(), 0);
    first = std::move(second);
    EXPECT_EQ(first.GetLevel(0, 0).data, file.data() + 128);
    EXPECT_EQ(second.GetNumFaces(), 0);
}

}  // namespace
