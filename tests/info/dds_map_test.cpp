// SPDX-License-Identifier: Apache-2.0
// vDDSLevels: every format, layers, partial cube maps, and what it keeps mapped.
#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <utility>
#include <vDDSLevels.h>

#include "info/dds_model.h"
#include "info/info_check.h"
#include "support/dds_check.h"
#include "support/temporary_folder.h"

namespace {

using namespace support;
using namespace info_check;
using Check = vTextureCheck;
using dds_model::Pixels;

Bytes filled_file(const FileHeader& header, const std::string& format) {
    Bytes file = header_bytes(header);
    const Bytes pixels = random_bytes(dds_model::describe(header, format, 0).end - file.size(), 3);
    file.insert(file.end(), pixels.begin(), pixels.end());
    file.shrink_to_fit();
    return file;
}

std::string text_of(const Bytes& bytes) { return {bytes.begin(), bytes.end()}; }

vDDSLevel get(const vDDSLevels& levels, const dds_model::Level& level) {
    return levels.GetLevel(static_cast<int>(level.face), static_cast<int>(level.level),
                           static_cast<int>(level.layer));
}

void expect_levels(const vDDSLevels& levels, const dds_model::File& expected, const Bytes& file) {
    ASSERT_EQ(levels.GetNumLayers(), static_cast<int>(expected.layers));
    ASSERT_EQ(levels.GetNumFaces(), static_cast<int>(expected.faces));
    ASSERT_EQ(levels.GetNumLevels(), static_cast<int>(expected.levels));
    for (const dds_model::Level& entry : expected.table) {
        const vDDSLevel level = get(levels, entry);
        ASSERT_EQ(level.offset, entry.offset);
        ASSERT_EQ(level.bytes, entry.bytes);
        ASSERT_EQ(level.width, entry.width);
        ASSERT_EQ(level.height, entry.height);
        ASSERT_EQ(level.depth, entry.depth);
        ASSERT_EQ(level.data != nullptr, entry.whole);
        if (!entry.whole) continue;
        ASSERT_TRUE(std::equal(level.data, level.data + level.bytes,
                               file.begin() + static_cast<std::ptrdiff_t>(level.offset)));
    }
    for (int face = 0; face < 6; ++face) {
        if (expected.face_mask >> face & 1) continue;
        ASSERT_EQ(levels.GetLevel(face, 0).bytes, 0U);
        ASSERT_EQ(levels.GetLevel(face, 0).data, nullptr);
    }
    ASSERT_EQ(levels.GetLevel(0, 0, static_cast<int>(expected.layers)).bytes, 0U);
    ASSERT_EQ(levels.GetLevel(0, 0, -1).bytes, 0U);
}

TEST(DdsLevelTable, IsThatOfEveryFormatAndForm) {
    const std::uint32_t seed = std::random_device()();
    std::mt19937 random(seed);
    for (const Pixels& pixels : dds_model::all_pixels()) {
        for (int i = 0; i < 20; ++i) {
            const FileHeader header = dds_model::random_header(pixels, random);
            SCOPED_TRACE("seed " + std::to_string(seed) + ' ' + pixels.name + ' ' + describe(header));
            Bytes file = filled_file(header, pixels.name);
            const std::size_t headers = header_bytes(header).size();
            if (i % 3 == 0) file.resize(headers + random() % (file.size() - headers + 1));
            file.shrink_to_fit();
            vDDSLevels levels;
            const Check::Result& result = levels.Read(file.data(), file.size());
            const dds_model::File expected = dds_model::describe(header, pixels.name, file.size());
            ASSERT_EQ(result.status, expected.end > file.size() ? Check::eTruncated : Check::eOk)
                << result.sentence;
            ASSERT_EQ(levels.GetPixelFormat().name, pixels.name);
            ASSERT_EQ(levels.GetInfo().format, pixels.name);
            const int loader = levels.GetInfo().loaderFormat;
            ASSERT_EQ(levels.GetFormat(), loader < 0 ? TOZ::SUPPORTED_FORMAT::RGBA8
                                                     : static_cast<TOZ::SUPPORTED_FORMAT::Type>(loader));
            expect_levels(levels, expected, file);
            if (HasFatalFailure()) return;
        }
    }
}

// Lines of the process's own list of mappings that name the file.
int mappings_of(const std::string& path) {
    std::ifstream maps("/proc/self/maps");
    int count = 0;
    for (std::string line; std::getline(maps, line);) count += line.find(path) != std::string::npos ? 1 : 0;
    return count;
}

class DdsMapping : public testing::Test {
protected:
    const TemporaryFolder folder_;
    const FileHeader header_ = dxgi_header(98).sized(64, 64).with_mips(2);
    const Bytes file_ = filled_file(header_, "BC7_UNORM");
    const Bytes other_ = filled_file(dxgi_header(28).sized(32, 32), "R8G8B8A8_UNORM");
    const std::string path_ = folder_.write("a.dds", text_of(file_));
    const std::string other_path_ = folder_.write("b.dds", text_of(other_));

    void expect_first(const vDDSLevels& levels) const {
        EXPECT_TRUE(levels.GetResult().ok());
        expect_levels(levels, dds_model::describe(header_, "BC7_UNORM", file_.size()), file_);
    }
    static void expect_empty(const vDDSLevels& levels) {
        EXPECT_EQ(levels.GetNumLayers(), 0);
        EXPECT_EQ(levels.GetNumFaces(), 0);
        EXPECT_EQ(levels.GetNumLevels(), 0);
        EXPECT_EQ(levels.GetPixelFormat().blockBytes, 0);
        EXPECT_EQ(levels.GetFormat(), TOZ::SUPPORTED_FORMAT::RGBA8);
        EXPECT_EQ(levels.GetLevel(0, 0).data, nullptr);
        EXPECT_EQ(levels.GetLevel(0, 0).bytes, 0U);
    }
};

#if defined(__linux__)
TEST_F(DdsMapping, EndsWithTheTable) {
    {
        vDDSLevels levels;
        ASSERT_TRUE(levels.Map(path_).ok());
        EXPECT_EQ(mappings_of(path_), 1);
        expect_first(levels);
    }
    EXPECT_EQ(mappings_of(path_), 0);
}

TEST_F(DdsMapping, IsOfOneFileAtATime) {
    vDDSLevels levels;
    ASSERT_TRUE(levels.Map(path_).ok());
    ASSERT_TRUE(levels.Map(path_).ok());
    EXPECT_EQ(mappings_of(path_), 1);
    expect_first(levels);
    ASSERT_TRUE(levels.Map(other_path_).ok());
    EXPECT_EQ(mappings_of(path_), 0);
    EXPECT_EQ(mappings_of(other_path_), 1);
    ASSERT_TRUE(levels.Read(file_.data(), file_.size()).ok());
    EXPECT_EQ(mappings_of(other_path_), 0);
    expect_first(levels);
    EXPECT_EQ(levels.GetLevel(0, 0).data, file_.data() + 148);
}

TEST_F(DdsMapping, EndsWhereAnotherFileCannotBeMapped) {
    const std::string text = folder_.write("text.dds", "no texture at all");
    for (const std::string& bad : {folder_.path("none.dds"), text, folder_.path(".")}) {
        vDDSLevels levels;
        ASSERT_TRUE(levels.Map(path_).ok());
        EXPECT_FALSE(levels.Map(bad).ok());
        EXPECT_FALSE(levels.GetResult().sentence.empty());
        EXPECT_EQ(mappings_of(path_), 0);
        EXPECT_EQ(mappings_of(bad), 0);
        expect_empty(levels);
    }
}

TEST_F(DdsMapping, MovesWithItsFile) {
    vDDSLevels first;
    ASSERT_TRUE(first.Map(path_).ok());
    const unsigned char* const data = first.GetLevel(0, 0).data;
    vDDSLevels second(std::move(first));
    EXPECT_EQ(second.GetLevel(0, 0).data, data);
    expect_first(second);
    expect_empty(first);
    EXPECT_TRUE(first.GetResult().ok());
    vDDSLevels third;
    ASSERT_TRUE(third.Map(other_path_).ok());
    third = std::move(second);
    EXPECT_EQ(mappings_of(other_path_), 0);
    EXPECT_EQ(mappings_of(path_), 1);
    EXPECT_EQ(third.GetLevel(0, 0).data, data);
    expect_first(third);
    expect_empty(second);
    // The empty one can be used again.
    ASSERT_TRUE(second.Map(path_).ok());
    EXPECT_EQ(mappings_of(path_), 2);
    expect_first(second);
    vDDSLevels& same = third;
    third = std::move(same);
    expect_first(third);
}

TEST_F(DdsMapping, IsNotMadeBeyondTheLimits) {
    std::filesystem::resize_file(path_, std::uintmax_t{1} << 40);
    vTextureLimits limits;
    limits.maxFileBytes = 1 << 20;
    vDDSLevels levels;
    EXPECT_EQ(levels.Map(path_, limits).sentence, "is 1099511627776 bytes long, beyond the limit of 1048576");
    EXPECT_EQ(mappings_of(path_), 0);
    expect_empty(levels);
    limits = vTextureLimits();
    limits.maxExtent = 63;
    EXPECT_EQ(levels.Map(path_, limits).status, Check::eAbsurdSize);
    expect_empty(levels);
    limits = vTextureLimits();
    limits.maxBytes = 64 * 64 + 32 * 32 - 1;
    EXPECT_EQ(levels.Map(path_, limits).status, Check::eAbsurdSize);
    expect_empty(levels);
    ++limits.maxBytes;
    EXPECT_TRUE(levels.Map(path_, limits).ok());
}
#endif

TEST_F(DdsMapping, OutlivesTheNameOfItsFile) {
    vDDSLevels levels;
    ASSERT_TRUE(levels.Map(path_).ok());
    std::filesystem::remove(path_);
    expect_first(levels);
}

TEST_F(DdsMapping, OffersTheWholeLevelsOfATruncatedFile) {
    const std::string part = folder_.write("part.dds", text_of(file_).substr(0, 148 + 64 * 64 + 5));
    vDDSLevels levels;
    EXPECT_EQ(levels.Map(part).status, Check::eTruncated);
    EXPECT_EQ(levels.GetResult().level, 1);
    EXPECT_EQ(levels.GetResult().missingBytes, 32U * 32 - 5);
    EXPECT_NE(levels.GetLevel(0, 0).data, nullptr);
    EXPECT_EQ(levels.GetLevel(0, 1).data, nullptr);
}

TEST_F(DdsMapping, IsEmptyForOtherContainers) {
    Bytes ktx = {0xAB, 'K', 'T', 'X', ' ', '2', '0', 0xBB, '\r', '\n', 0x1A, '\n'};
    ktx.resize(200);
    vDDSLevels levels;
    for (const std::uint8_t byte : {std::uint8_t{0}, std::uint8_t{0xFF}}) {
        std::fill(ktx.begin() + 12, ktx.end(), byte);
        EXPECT_EQ(levels.Read(ktx.data(), ktx.size()).sentence, "is a KTX2 file, not a DDS file");
        EXPECT_EQ(levels.GetResult().status, Check::eNotThisKind);
        expect_empty(levels);
    }
    vTextureLimits limits;
    limits.maxFileBytes = ktx.size() - 1;
    EXPECT_EQ(levels.Read(ktx.data(), ktx.size(), limits).status, Check::eAbsurdSize);
    expect_empty(levels);
    EXPECT_EQ(levels.Read(nullptr, 0).sentence, "is empty");
    expect_empty(levels);
}

}  // namespace
