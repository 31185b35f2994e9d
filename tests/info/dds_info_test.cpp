// SPDX-License-Identifier: Apache-2.0
// vTextureInfo on DDS files, compared with a plain model of what their headers say.
#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <string>
#include <vDDSLevels.h>
#include <vTextureCheck.h>
#include <vTextureInfo.h>

#include "info/dds_model.h"
#include "info/info_check.h"
#include "support/dds_check.h"
#include "support/plain_model.h"
#include "support/temporary_folder.h"

namespace {

using namespace support;
using namespace info_check;
using Check = vTextureCheck;
using dds_model::Pixels;

Bytes file_of(const FileHeader& header, std::uint64_t size) {
    Bytes file = header_bytes(header);
    file.resize(size);
    return file;
}

void expect_table(const vTextureInfo& info, const dds_model::File& expected) {
    ASSERT_EQ(info.GetNumImages(), expected.table.size());
    for (std::size_t i = 0; i < expected.table.size(); ++i) {
        SCOPED_TRACE("entry " + std::to_string(i));
        const dds_model::Level& entry = expected.table[i];
        for (const vTextureLevel& level :
             {info.GetImage(i), info.GetLevel(entry.layer, entry.face, entry.level)}) {
            ASSERT_EQ(level.layer, entry.layer);
            ASSERT_EQ(level.face, entry.face);
            ASSERT_EQ(level.level, entry.level);
            ASSERT_EQ(level.width, entry.width);
            ASSERT_EQ(level.height, entry.height);
            ASSERT_EQ(level.depth, entry.depth);
            ASSERT_EQ(level.offset, entry.offset);
            ASSERT_EQ(level.bytes, entry.bytes);
            ASSERT_EQ(level.rowBytes, entry.row_bytes);
            ASSERT_EQ(level.whole, entry.whole);
        }
    }
}

void expect_first_missing(const vTextureInfo& info, const dds_model::File& expected) {
    const Check::Result missing = info.WhatIsMissing();
    const auto lost = std::find_if(expected.table.begin(), expected.table.end(),
                                   [](const dds_model::Level& level) { return !level.whole; });
    ASSERT_EQ(missing.ok(), lost == expected.table.end());
    ASSERT_EQ(info.HasNote(vTextureNote::eTruncated), !missing.ok());
    if (missing.ok()) return;
    ASSERT_EQ(missing.status, Check::eTruncated);
    ASSERT_EQ(missing.missingBytes, info.missingBytes);
    ASSERT_EQ(missing.level, static_cast<int>(lost->level));
    if (info.layers == 1) {
        ASSERT_EQ(missing.face, static_cast<int>(lost->face));
    }
    ASSERT_FALSE(missing.sentence.empty());
}

void expect_as_modelled(const Pixels& pixels, const FileHeader& header, const Bytes& file) {
    const dds_model::File expected = dds_model::describe(header, pixels.name, file.size());
    const vTextureInfo info = read(file);
    ASSERT_TRUE(info.Described()) << info.problem.sentence;
    ASSERT_EQ(info.container, vTextureInfo::eDDS);
    ASSERT_EQ(info.format, pixels.name);
    ASSERT_EQ(info.pixels.name, pixels.name);
    ASSERT_EQ(info.dxgi, expected.dxgi);
    ASSERT_EQ(info.dimension, expected.dimension);
    ASSERT_EQ(info.width, expected.width);
    ASSERT_EQ(info.height, expected.height);
    ASSERT_EQ(info.depth, expected.depth);
    ASSERT_EQ(info.layers, expected.layers);
    ASSERT_EQ(info.faces, expected.faces);
    ASSERT_EQ(info.faceMask, expected.face_mask);
    ASSERT_EQ(info.levels, expected.levels);
    ASSERT_EQ(static_cast<int>(info.alphaMode), expected.alpha_mode);
    ASSERT_EQ(info.bytes, expected.bytes);
    ASSERT_EQ(info.fileBytes, file.size());
    ASSERT_EQ(info.missingBytes, std::max<std::uint64_t>(expected.end, file.size()) - file.size());
    ASSERT_EQ(info.HasNote(vTextureNote::eLeftoverBytes), file.size() > expected.end);
    expect_table(info, expected);
    expect_first_missing(info, expected);
    const plain::Image loaded = plain::load(header_bytes(header), false, true);
    ASSERT_EQ(info.loaderFormat, loaded.loaded ? loaded.format : -1);
    ASSERT_EQ(info.loads, loaded.loaded && file.size() >= plain::file_size(header_bytes(header)));
    ASSERT_EQ(info.loads, Check::CheckDDSBuffer(file.data(), file.size()).ok());
    ASSERT_TRUE(info.loads || !info.faithful);
    expect_consistent(info);
}

TEST(DdsInfo, IsWhatRandomHeadersSay) {
    const std::uint32_t seed = std::random_device()();
    std::mt19937 random(seed);
    int seen[4] = {};
    for (int i = 0; i < 20000; ++i) {
        const Pixels& pixels = dds_model::all_pixels()[random() % dds_model::all_pixels().size()];
        const FileHeader header = dds_model::random_header(pixels, random);
        const std::uint64_t headers = header_bytes(header).size();
        const std::uint64_t end = dds_model::describe(header, pixels.name, 0).end;
        std::uint64_t size = end;
        if (random() % 3 == 0) size = headers + random() % (end - headers + 1);
        if (random() % 5 == 0) size = end + 1 + random() % 100;
        // A file of masks can be told from one of padded rows by its length alone.
        const bool masks = (header.pixel_format.flags & kHasFourCC) == 0;
        if (masks && header.mip_count <= 1 && size > end) size = end;
        SCOPED_TRACE("seed " + std::to_string(seed) + ", file " + std::to_string(i) + ": " + pixels.name +
                     ' ' + describe(header) + ", " + std::to_string(size) + " bytes");
        expect_as_modelled(pixels, header, file_of(header, size));
        if (HasFatalFailure()) return;
        const vTextureInfo info = read(file_of(header, size));
        seen[0] += info.loads ? 1 : 0;
        seen[1] += info.faithful ? 1 : 0;
        seen[2] += info.missingBytes > 0 ? 1 : 0;
        seen[3] += info.layers > 1 && info.faces > 1 ? 1 : 0;
    }
    for (const int count : seen) EXPECT_GT(count, 100);
}

TEST(DdsInfo, IsToldOfEveryLengthOfAFile) {
    FileHeader array = dxgi_header(98).sized(9, 5).with_mips(3);
    array.array_size = 2;
    const Pixels kinds[] = {
        {"BC7_UNORM", array},
        {"NV12", dxgi_header(103).sized(5, 3).with_mips(2)},
        {"P8", fourcc_header(41).sized(3, 3)},
        {"B8G8R8_UNORM", plain_header(0x40, 24).with_masks(0xFF0000, 0xFF00, 0xFF, 0).sized(4, 4)},
        {"BC1_UNORM", fourcc_header(four_cc("DXT1")).sized(8, 8).with_caps2(kCubeMap | 0xA400)},
        {"R32_FLOAT", fourcc_header(114).sized(2, 2).with_depth(3).with_caps2(kVolume)},
    };
    for (const Pixels& kind : kinds) {
        const Bytes whole = file_of(kind.header, dds_model::describe(kind.header, kind.name, 0).end);
        const std::uint64_t headers = header_bytes(kind.header).size();
        for (std::uint64_t size = 0; size <= whole.size(); ++size) {
            SCOPED_TRACE(kind.name + ' ' + std::to_string(size));
            const Bytes part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
            if (size >= headers) {
                expect_as_modelled(kind, kind.header, part);
            } else {
                const vTextureInfo info = read(part);
                ASSERT_FALSE(info.Described());
                ASSERT_EQ(info.problem.status, size == 0 ? Check::eNotThisKind : Check::eTruncated);
                ASSERT_FALSE(info.loads || info.faithful);
                ASSERT_EQ(info.GetNumImages(), 0U);
                ASSERT_EQ(info.fileBytes, size);
            }
            if (HasFatalFailure()) return;
        }
    }
}

TEST(DdsInfo, OfAFileIsThatOfItsBytes) {
    const TemporaryFolder folder;
    std::mt19937 random(5);
    for (int i = 0; i < 200; ++i) {
        const Pixels& pixels = dds_model::all_pixels()[random() % dds_model::all_pixels().size()];
        const FileHeader header = dds_model::random_header(pixels, random);
        const std::uint64_t end = dds_model::describe(header, pixels.name, 0).end;
        const Bytes bytes = file_of(header, random() % (end + 40));
        const std::string path = folder.write("a.dds", std::string(bytes.begin(), bytes.end()));
        expect_same(vTextureInfo::ReadFile(path), read(bytes));
    }
}

TEST(DdsInfo, KeepsLevelsPastOnePixel) {
    const vTextureInfo info = read(file_of(plain_header(0x20000, 8).sized(2, 2).with_mips(5), 136));
    EXPECT_EQ(info.levels, 5U);
    EXPECT_EQ(info.bytes, 4U + 1 + 1 + 1 + 1);
    EXPECT_EQ(info.GetImage(4).offset, 135U);
    EXPECT_TRUE(info.GetImage(4).whole);
}

TEST(DdsInfo, HasNoLevelWhereTheFileHasNone) {
    const vTextureInfo info =
        read(file_of(fourcc_header(four_cc("DXT1")).sized(4, 4).with_caps2(kCubeMap | 0x2400), 144));
    EXPECT_EQ(info.faceMask, 0b001001U);
    EXPECT_EQ(info.GetLevel(0, 3, 0).bytes, 8U);
    for (const auto& [layer, face, level] : {std::tuple{0U, 1U, 0U},
                                             {0U, 6U, 0U},
                                             {1U, 0U, 0U},
                                             {0U, 0U, 1U},
                                             {0U, 0xFFFFFFFFU, 0U},
                                             {0U, 35U, 0U}}) {
        EXPECT_EQ(info.GetLevel(layer, face, level).bytes, 0U);
        EXPECT_FALSE(info.GetLevel(layer, face, level).whole);
    }
}

TEST(DdsInfo, CountsEveryElementOfALargeArrayWithoutMemoryForIt) {
    FileHeader header = dxgi_header(98).sized(1U << 31, 1).with_mips(32);
    header.array_size = 65536;
    header.width = 0x7FFFFFFF;
    header.misc_flag = 4;
    const vTextureInfo info = read(header_bytes(header));
    ASSERT_TRUE(info.Described()) << info.problem.sentence;
    EXPECT_EQ(info.GetNumImages(), 65536U * 6 * 32);
    EXPECT_EQ(info.GetImage(info.GetNumImages() - 1).level, 31U);
    EXPECT_EQ(info.GetImage(info.GetNumImages() - 1).face, 5U);
    EXPECT_EQ(info.GetImage(info.GetNumImages() - 1).layer, 65535U);
}

}  // namespace
