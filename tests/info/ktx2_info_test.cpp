// SPDX-License-Identifier: Apache-2.0
// vTextureInfo on KTX2 files.
#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vTextureCheck.h>
#include <vTextureInfo.h>

#include "info/info_check.h"
#include "info/ktx2_file.h"

namespace {

using namespace ktx2;
using namespace info_check;
using support::Bytes;
using Check = vTextureCheck;

File plain_rgba() {
    File file;
    file.width = 5;
    file.height = 3;
    file.level_count = 3;
    file.levels = {{60, 60}, {8, 8}, {4, 4}};
    return file;
}

File bc7_cube_array() {
    File file;
    file.vk_format = 146;
    file.model = kModelBC7;
    file.transfer = kTransferSrgb;
    file.width = file.height = 8;
    file.layers = 2;
    file.faces = 6;
    file.level_count = 2;
    file.alignment = 16;
    file.channels = {0};
    file.levels = {{64 * 12, 64 * 12}, {16 * 12, 16 * 12}};
    return file;
}

File packed_bc1() {
    File file;
    file.vk_format = 133;
    file.model = kModelBC1;
    file.width = file.height = 16;
    file.scheme = kZstandard;
    file.channels = {1};
    file.level_count = 2;
    file.levels = {{71, 128}, {33, 32}};
    return file;
}

File uastc() {
    File file;
    file.vk_format = 0;
    file.model = kModelUastc;
    file.width = file.height = 9;
    file.channels = {3};
    file.alignment = 16;
    file.levels = {{144, 144}};
    return file;
}

File etc1s() {
    File file;
    file.vk_format = 0;
    file.model = kModelEtc1s;
    file.scheme = kBasisLZ;
    file.channels = {0, 15};
    file.width = file.height = 8;
    file.level_count = 2;
    file.global_data = 20 + 2 * 20 + 30;
    file.levels = {{13, 0}, {5, 0}};
    return file;
}

std::vector<File> every_kind() { return {plain_rgba(), bc7_cube_array(), packed_bc1(), uastc(), etc1s()}; }

TEST(Ktx2Info, DescribesPlainPixels) {
    const Built built = build(plain_rgba());
    const vTextureInfo info = read(built.bytes);
    ASSERT_TRUE(info.Described()) << info.problem.sentence;
    EXPECT_EQ(info.container, vTextureInfo::eKTX2);
    EXPECT_EQ(info.format, "R8G8B8A8_UNORM");
    EXPECT_EQ(info.dxgi, 28U);
    EXPECT_EQ(info.dimension, 2);
    EXPECT_EQ(info.width, 5U);
    EXPECT_EQ(info.height, 3U);
    EXPECT_EQ(info.depth, 1U);
    EXPECT_EQ(info.layers, 1U);
    EXPECT_EQ(info.faces, 1U);
    EXPECT_EQ(info.levels, 3U);
    EXPECT_EQ(info.bytes, 72U);
    EXPECT_EQ(info.fileBytes, built.bytes.size());
    EXPECT_EQ(info.missingBytes, 0U);
    EXPECT_FALSE(info.srgb);
    EXPECT_TRUE(info.hasAlpha);
    EXPECT_FALSE(info.loads);
    EXPECT_FALSE(info.faithful);
    EXPECT_EQ(info.loaderFormat, -1);
    EXPECT_TRUE(info.notes.empty());
    expect_consistent(info);
    // The smallest level lies first.
    ASSERT_EQ(info.GetNumImages(), 3U);
    for (std::uint32_t i = 0; i < 3; ++i) {
        const vTextureLevel entry = info.GetImage(i);
        EXPECT_EQ(entry.level, 2 - i);
        EXPECT_EQ(entry.offset, built.offsets[2 - i]);
        EXPECT_TRUE(entry.whole);
    }
    const vTextureLevel second = info.GetLevel(0, 0, 1);
    EXPECT_EQ(second.width, 2U);
    EXPECT_EQ(second.height, 1U);
    EXPECT_EQ(second.bytes, 8U);
    EXPECT_EQ(second.rowBytes, 8U);
}

TEST(Ktx2Info, DescribesArraysOfCubeMaps) {
    const Built built = build(bc7_cube_array());
    const vTextureInfo info = read(built.bytes);
    ASSERT_TRUE(info.Described()) << info.problem.sentence;
    EXPECT_EQ(info.format, "BC7_UNORM_SRGB");
    EXPECT_EQ(info.dxgi, 99U);
    EXPECT_TRUE(info.srgb);
    EXPECT_EQ(info.layers, 2U);
    EXPECT_EQ(info.faces, 6U);
    EXPECT_EQ(info.levels, 2U);
    EXPECT_EQ(info.bytes, 80U * 12);
    expect_consistent(info);
    for (std::uint32_t level = 0; level < 2; ++level) {
        for (std::uint32_t layer = 0; layer < 2; ++layer) {
            for (std::uint32_t face = 0; face < 6; ++face) {
                const vTextureLevel entry = info.GetLevel(layer, face, level);
                const std::uint64_t bytes = level == 0 ? 64 : 16;
                EXPECT_EQ(entry.bytes, bytes);
                EXPECT_EQ(entry.offset, built.offsets[level] + (layer * 6 + face) * bytes);
                EXPECT_EQ(entry.rowBytes, level == 0 ? 32U : 16U);
            }
        }
    }
    EXPECT_TRUE(std::is_sorted(built.offsets.rbegin(), built.offsets.rend()));
    for (std::uint64_t i = 1; i < info.GetNumImages(); ++i) {
        EXPECT_GT(info.GetImage(i).offset, info.GetImage(i - 1).offset);
    }
}

TEST(Ktx2Info, CountsTheUncompressedBytesOfPackedLevels) {
    const Built built = build(packed_bc1());
    const vTextureInfo info = read(built.bytes);
    ASSERT_TRUE(info.Described()) << info.problem.sentence;
    EXPECT_EQ(info.format, "BC1_UNORM");
    EXPECT_EQ(info.bytes, 160U);
    EXPECT_EQ(info.GetLevel(0, 0, 0).bytes, 128U);
    EXPECT_EQ(info.GetLevel(0, 0, 0).offset, built.offsets[0]);
    EXPECT_EQ(info.GetLevel(0, 0, 0).rowBytes, 32U);
    EXPECT_TRUE(info.GetLevel(0, 0, 0).whole);
    EXPECT_EQ(info.missingBytes, 0U);
}

TEST(Ktx2Info, NamesTheCodec) {
    const vTextureInfo blocks = read(build(uastc()).bytes);
    ASSERT_TRUE(blocks.Described()) << blocks.problem.sentence;
    EXPECT_EQ(blocks.format, "UASTC LDR 4x4");
    EXPECT_EQ(blocks.dxgi, 0U);
    EXPECT_EQ(blocks.pixels.blockBytes, 0);
    EXPECT_EQ(blocks.bytes, 144U);
    EXPECT_TRUE(blocks.hasAlpha);
    EXPECT_TRUE(blocks.notes.empty());
    expect_consistent(blocks);
    const vTextureInfo slices = read(build(etc1s()).bytes);
    ASSERT_TRUE(slices.Described()) << slices.problem.sentence;
    EXPECT_EQ(slices.format, "ETC1S");
    EXPECT_TRUE(slices.hasAlpha);
    EXPECT_EQ(slices.levels, 2U);
    expect_consistent(slices);
    File opaque = etc1s();
    opaque.channels = {0};
    EXPECT_FALSE(read(build(opaque).bytes).hasAlpha);
    opaque = uastc();
    opaque.channels = {0};
    EXPECT_FALSE(read(build(opaque).bytes).hasAlpha);
}

TEST(Ktx2Info, NotesThatAnHdrCodecHasNoTargetForm) {
    File file = uastc();
    file.model = kModelUastcHdr;
    file.channels = {0};
    const vTextureInfo info = read(build(file).bytes);
    ASSERT_TRUE(info.Described()) << info.problem.sentence;
    EXPECT_TRUE(info.HasNote(vTextureNote::eNoTargetForm));
}

TEST(Ktx2Info, ReadsDimensionsAndCounts) {
    File line = plain_rgba();
    line.height = 0;
    line.level_count = 1;
    line.levels = {{20, 20}};
    const vTextureInfo one = read(build(line).bytes);
    ASSERT_TRUE(one.Described()) << one.problem.sentence;
    EXPECT_EQ(one.dimension, 1);
    EXPECT_EQ(one.height, 1U);
    File volume = plain_rgba();
    volume.depth = 4;
    volume.levels = {{240, 240}, {16, 16}, {4, 4}};
    const vTextureInfo three = read(build(volume).bytes);
    ASSERT_TRUE(three.Described()) << three.problem.sentence;
    EXPECT_EQ(three.dimension, 3);
    EXPECT_EQ(three.depth, 4U);
    EXPECT_EQ(three.GetLevel(0, 0, 1).depth, 2U);
    EXPECT_EQ(three.bytes, 260U);
    File generated = plain_rgba();
    generated.level_count = 0;
    generated.levels = {{60, 60}};
    const vTextureInfo base = read(build(generated).bytes);
    ASSERT_TRUE(base.Described()) << base.problem.sentence;
    EXPECT_EQ(base.levels, 1U);
    EXPECT_EQ(base.bytes, 60U);
}

TEST(Ktx2Info, ReadsAlphaModeAndOrientation) {
    File file = plain_rgba();
    EXPECT_FALSE(read(build(file).bytes).yFlipped);
    file.values = {{"KTXwriter", "a test"}, {"KTXorientation", "ru"}};
    file.descriptor_flags = 1;
    const vTextureInfo info = read(build(file).bytes);
    ASSERT_TRUE(info.Described()) << info.problem.sentence;
    EXPECT_TRUE(info.yFlipped);
    EXPECT_EQ(info.alphaMode, vTextureInfo::eAlphaPremultiplied);
    file.values = {{"KTXorientation", "rd"}};
    file.descriptor_flags = 0;
    EXPECT_FALSE(read(build(file).bytes).yFlipped);
    EXPECT_EQ(read(build(file).bytes).alphaMode, vTextureInfo::eAlphaStraight);
}

TEST(Ktx2Info, LooksForTheOrientationNoFurtherThanTheData) {
    File file = plain_rgba();
    file.values = {{"KTXorientation", "ru"}};
    const Built built = build(file);
    const std::size_t values = kHeaderSize + 3 * kIndexEntrySize + 4 + 24 + 4 * 16;
    for (const unsigned length : {0U, 1U, 14U, 15U, 16U, 17U, 18U, 20U, 21U, 255U}) {
        Bytes damaged = built.bytes;
        damaged[values] = static_cast<std::uint8_t>(length);
        // "KTXorientation", its zero, and at least two characters of the value.
        EXPECT_EQ(read(damaged).yFlipped, length >= 17 && length <= 20) << length;
    }
}

// An offset that would wrap around past the end of the numbers.
TEST(Ktx2Info, HasNoWholeLevelAtAnOffsetBeyondAllNumbers) {
    const Built built = build(bc7_cube_array());
    Bytes file = built.bytes;
    std::fill_n(file.begin() + kHeaderSize, 8, std::uint8_t{0xFF});
    const vTextureInfo info = read(file);
    ASSERT_TRUE(info.Described());
    for (std::uint32_t layer = 0; layer < 2; ++layer) {
        for (std::uint32_t face = 0; face < 6; ++face) EXPECT_FALSE(info.GetLevel(layer, face, 0).whole);
    }
    EXPECT_EQ(info.WhatIsMissing().level, 0);
    expect_consistent(info);
}

TEST(Ktx2Info, NamesTheEndOfAPackedLevelInTheFile) {
    const Built built = build(packed_bc1());
    const Bytes part(built.bytes.begin(), built.bytes.end() - 1);
    const vTextureInfo info = read(part);
    EXPECT_EQ(info.missingBytes, 1U);
    EXPECT_EQ(info.WhatIsMissing().sentence, "is cut short: level 0 ends at byte " +
                                                 std::to_string(built.bytes.size()) + ", the file at byte " +
                                                 std::to_string(part.size()));
}

// What is written for PNG files without alpha: no DXGI number, but a name in the same manner.
TEST(Ktx2Info, DescribesPixelsOfThreeBytes) {
    File file = plain_rgba();
    file.vk_format = 23;
    file.channels = {0, 1, 2};
    file.level_count = 1;
    file.levels = {{45, 45}};
    const vTextureInfo info = read(build(file).bytes);
    ASSERT_TRUE(info.Described()) << info.problem.sentence;
    EXPECT_EQ(info.format, "R8G8B8_UNORM");
    EXPECT_EQ(info.dxgi, 0U);
    EXPECT_FALSE(info.hasAlpha);
    file.vk_format = 29;
    file.transfer = kTransferSrgb;
    const vTextureInfo srgb = read(build(file).bytes);
    ASSERT_TRUE(srgb.Described()) << srgb.problem.sentence;
    EXPECT_EQ(srgb.format, "R8G8B8_UNORM_SRGB");
}

// VkFormat has BC1 with and without alpha; the bytes are the same.
TEST(Ktx2Info, DescribesBC1WithoutAlpha) {
    File file = packed_bc1();
    file.channels = {0};
    for (const auto& [number, name] : {std::pair{131U, "BC1_UNORM"}, {132U, "BC1_UNORM_SRGB"}}) {
        file.vk_format = number;
        const vTextureInfo info = read(build(file).bytes);
        ASSERT_TRUE(info.Described()) << info.problem.sentence;
        EXPECT_EQ(info.format, name);
    }
}

TEST(Ktx2Info, NamesTheVkFormatThatIsNotKnown) {
    File file = plain_rgba();
    file.vk_format = 147;  // ETC2
    const vTextureInfo info = read(build(file).bytes);
    EXPECT_EQ(info.problem.status, Check::eUnsupportedFormat);
    EXPECT_EQ(info.problem.offset, 12U);
    EXPECT_NE(info.problem.sentence.find("147"), std::string::npos) << info.problem.sentence;
    EXPECT_EQ(info.container, vTextureInfo::eKTX2);
}

TEST(Ktx2Info, TellsWhatEveryTruncationLacks) {
    for (const File& kind : every_kind()) {
        const Built built = build(kind);
        const std::uint64_t index_end = kHeaderSize + kIndexEntrySize * kind.levels.size();
        for (std::size_t size = 0; size <= built.bytes.size(); ++size) {
            SCOPED_TRACE(std::to_string(kind.vk_format) + ' ' + std::to_string(size));
            const vTextureInfo info =
                read(Bytes(built.bytes.begin(), built.bytes.begin() + static_cast<std::ptrdiff_t>(size)));
            expect_consistent(info);
            ASSERT_EQ(info.fileBytes, size);
            if (size < index_end) {
                ASSERT_FALSE(info.Described());
                ASSERT_EQ(info.problem.status, size == 0 ? Check::eNotThisKind : Check::eTruncated)
                    << info.problem.sentence;
                continue;
            }
            if (!info.Described()) {
                ASSERT_EQ(info.problem.status, Check::eTruncated) << info.problem.sentence;
                continue;
            }
            ASSERT_EQ(info.missingBytes, built.bytes.size() - size);
            for (std::uint32_t level = 0; level < kind.levels.size(); ++level) {
                const std::uint64_t end = built.offsets[level] + kind.levels[level].stored;
                const vTextureLevel last = info.GetLevel(info.layers - 1, info.faces - 1, level);
                ASSERT_EQ(last.whole, end <= size) << level;
            }
        }
    }
}

TEST(Ktx2Info, IsConsistentForEveryDamagedByteOfTheHeaders) {
    for (const File& kind : every_kind()) {
        const Built built = build(kind);
        const std::uint64_t headers = *std::min_element(built.offsets.begin(), built.offsets.end());
        for (std::uint64_t at = 0; at < headers; ++at) {
            Bytes file = built.bytes;
            for (const int value : {0, 1, 2, 3, 6, 7, 0x7F, 0x80, 0xFF, built.bytes[at] + 1,
                                    built.bytes[at] - 1, built.bytes[at] ^ 0x10, built.bytes[at] ^ 0x40}) {
                file[at] = static_cast<std::uint8_t>(value);
                SCOPED_TRACE("byte " + std::to_string(at) + " is " + std::to_string(value));
                expect_consistent(read(file));
                if (HasFatalFailure()) return;
            }
        }
    }
}

}  // namespace
