// SPDX-License-Identifier: Apache-2.0
// vTextureCheck on .basis files.
#include "basis/basis_check.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <string>
#include <vBasisImage.h>
#include <vTextureCheck.h>
#include <vector>

#include "basis/fixture_files.h"
#include "basis/fixtures.h"
#include "support/basis_file.h"

namespace {

using namespace basis_fixtures;
using namespace support;
using namespace support::basis;
using Check = vTextureCheck;

// One small file of each kind of data.
constexpr const char* kKindsOfData[] = {
    "astc_hdr_6x6",           "astc_ldr_4x4",     "astc_ldr_6x6",
    "etc1s_alpha_array_mips", "etc1s_array",      "etc1s_mips",
    "uastc_alpha_array",      "uastc_hdr_4x4",    "uastc_hdr_6x6i",
    "uastc_array_mips",       "xuastc_12x12",     "xuastc_4x4",
    "xuastc_4x4_zstd",        "xuastc_6x6_alpha", "xuastc_alpha_array_mips",
    "xuastc_alpha_dct"};

Check::Result check(const Bytes& file, const vTextureLimits& limits = vTextureLimits()) {
    Bytes exact(file);
    exact.shrink_to_fit();
    return Check::CheckBasisBuffer(exact.data(), exact.size(), limits);
}

// The bytes of all levels transcoded to BC3; nothing where one is refused.
std::optional<std::uint64_t> transcoded_bytes(const TOZ::vBasisImage& image, const Bytes& file) {
    const bool etc1s = get(file, header::kFormat) == kFormatEtc1s;
    std::uint64_t bytes = 0;
    for (std::uint32_t i = 0; i < total_slices(file); ++i) {
        const auto number = [&](Field field) { return get(file, of_slice(file, i, field)); };
        if (etc1s && (number(slice::kFlags) & kSliceFlagAlpha) != 0) continue;
        const basis_check::Got got =
            basis_check::get_image(image, number(slice::kLevel), number(slice::kImage), TOZ::eUsageFormatBC3);
        EXPECT_FALSE(got.thrown);
        if (!got.size_written) return std::nullopt;
        bytes += got.size;
    }
    return bytes;
}

// What passes is taken by the loader, and its levels are transcoded to the bytes foretold, or refused.
void expect_kept_promise(const Bytes& file) {
    const Check::Result result = check(file);
    if (!result.ok()) {
        EXPECT_FALSE(result.sentence.empty());
        return;
    }
    TOZ::vBasisImage image;
    basis_check::hold(image, file);
    ASSERT_GT(image.getNumMipLevels(), 0);
    ASSERT_TRUE(image.isValidHeader());
    ASSERT_EQ(transcoded_bytes(image, file).value_or(result.totalBytes), result.totalBytes);
}

class BasisCheck : public testing::TestWithParam<Fixture> {};

TEST_P(BasisCheck, PassesWhatTheLoaderTakesWithTheBytesForetold) {
    const Bytes file = made(GetParam().name);
    const Check::Result result = check(file);
    const std::uint32_t type = get(file, header::kTextureType);
    if (type != kType2D && type != kType2DArray) {
        EXPECT_EQ(result.status, Check::eUnsupportedFormat);
        EXPECT_EQ(result.offset, 23U);
        EXPECT_NE(result.sentence.find("only 2D textures"), std::string::npos) << result.sentence;
        return;
    }
    EXPECT_TRUE(result.ok()) << result.sentence;
    TOZ::vBasisImage image;
    basis_check::hold(image, file);
    EXPECT_EQ(transcoded_bytes(image, file), result.totalBytes);
}

INSTANTIATE_TEST_SUITE_P(Fixtures, BasisCheck, testing::ValuesIn(kFixtures),
                         [](const auto& fixture) { return test_name(fixture.param.name); });

TEST(BasisCheckFile, PassesTheTranscodersSamples) {
    if (!have_samples()) GTEST_SKIP() << "the transcoder's source came without its samples";
    for (const char* const path : kSamples) {
        const Bytes file = sample(path);
        const Check::Result result = check(file);
        const bool flat = get(file, header::kTextureType) <= kType2DArray;
        EXPECT_EQ(result.status, flat ? Check::eOk : Check::eUnsupportedFormat)
            << path << ": " << result.sentence;
    }
}

TEST(BasisCheckFile, NamesWhatEveryTruncationLacks) {
    for (const char* const name : kKindsOfData) {
        const Bytes file = made(name);
        ASSERT_TRUE(check(file).ok()) << name << ": " << check(file).sentence;
        const std::size_t table_end =
            get(file, header::kTableOffset) + std::size_t{total_slices(file)} * slice::kSize;
        for (std::size_t length = 1; length < file.size(); ++length) {
            const Check::Result result =
                check(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length)));
            ASSERT_EQ(result.status, Check::eTruncated) << name << ' ' << length << ' ' << result.sentence;
            ASSERT_EQ(result.offset, length);
            if (length < header::kSize) continue;
            ASSERT_EQ(result.missingBytes, file.size() - length);
            if (length < table_end) continue;
            ASSERT_GE(result.level, 0) << name << ' ' << length << ' ' << result.sentence;
            ASSERT_GE(result.face, 0);
            ASSERT_EQ(result.totalBytes, check(file).totalBytes);
        }
    }
}

TEST(BasisCheckFile, NamesTheFirstSliceAndLevelThatIsNotWhole) {
    const Bytes file = made("uastc_mips");
    const std::uint32_t end =
        get(file, of_slice(file, 1, slice::kDataOffset)) + get(file, of_slice(file, 1, slice::kDataSize));
    const Bytes part(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(end - 1));
    const Check::Result result = check(part);
    EXPECT_EQ(result.status, Check::eTruncated);
    EXPECT_EQ(result.face, 0);
    EXPECT_EQ(result.level, 1);
    EXPECT_EQ(result.sentence, "is cut short: level 1 of slice 0 ends at byte " + std::to_string(end) +
                                   ", the file at byte " + std::to_string(end - 1));
    EXPECT_GT(result.totalBytes, 0U);
}

// Without its codebooks no level can be decoded.
TEST(BasisCheckFile, NamesTheFirstLevelOfAFileWithoutAllOfItsCodebooks) {
    const Bytes file = made("etc1s_mips");
    const std::size_t end = get(file, header::kTablesOffset) + get(file, header::kTablesSize);
    const Check::Result result =
        check(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(end - 1)));
    EXPECT_EQ(result.status, Check::eTruncated);
    EXPECT_EQ(result.face, 0);
    EXPECT_EQ(result.level, 0);
    EXPECT_EQ(result.totalBytes, check(file).totalBytes);
    EXPECT_NE(result.sentence.find("its section of Huffman tables ends at byte " + std::to_string(end)),
              std::string::npos)
        << result.sentence;
}

TEST(BasisCheckFile, TellsWhatIsNoBasisFile) {
    const Check::Result result = check({'D', 'D', 'S', ' '});
    EXPECT_EQ(result.status, Check::eNotThisKind);
    EXPECT_EQ(result.sentence, "is a DDS file, not a .basis file");
}

struct Damage {
    const char* name;
    Field field;
    std::uint32_t value;
    Check::EStatus status;
};

TEST(BasisCheckFile, PlacesWhatIsWrongInTheHeader) {
    const Bytes file = made("etc1s_alpha_mips");
    for (const Damage& damage : {
             Damage{"version", header::kVersion, 0x12, Check::eUnsupportedFormat},
             Damage{"header size", header::kHeaderSize, 78, Check::eMalformedTable},
             Damage{"no slices", header::kTotalSlices, 0, Check::eMalformedTable},
             Damage{"no images", header::kTotalImages, 0, Check::eMalformedTable},
             Damage{"odd slices", header::kTotalSlices, 3, Check::eMalformedTable},
             Damage{"codec", header::kFormat, 33, Check::eUnsupportedFormat},
             Damage{"flags", header::kFlags, kFlagAlphaSlices, Check::eMalformedTable},
             Damage{"shared codebook", header::kFlags, kFlagEtc1s | kFlagAlphaSlices | 8,
                    Check::eUnsupportedFormat},
             Damage{"cube map", header::kTextureType, kTypeCubeMapArray, Check::eUnsupportedFormat},
             Damage{"unknown type", header::kTextureType, 5, Check::eMalformedTable},
             Damage{"empty endpoints", header::kEndpointsSize, 0, Check::eMalformedTable},
             Damage{"empty selectors", header::kSelectorsSize, 0, Check::eMalformedTable},
             Damage{"empty tables", header::kTablesSize, 0, Check::eMalformedTable},
             Damage{"tables outside", header::kTablesOffset, 0xFFFFFFF0, Check::eMalformedTable},
             Damage{"slice table outside", header::kTableOffset, 0xFFFFFFF0, Check::eMalformedTable},
             Damage{"slice table in the header", header::kTableOffset, 60, Check::eMalformedTable},
         }) {
        const Check::Result result = check(with(file, damage.field, damage.value));
        EXPECT_EQ(result.status, damage.status) << damage.name << ": " << result.sentence;
        EXPECT_EQ(result.offset, damage.field.offset) << damage.name;
    }
    EXPECT_EQ(check(with(file, header::kTotalImages, total_slices(file) + 1)).offset, 17U);
}

TEST(BasisCheckFile, PlacesWhatIsWrongInTheTableOfSlices) {
    const Bytes file = made("uastc_mips");
    for (const Damage& damage : {
             Damage{"another image", slice::kImage, 7, Check::eMalformedTable},
             Damage{"another level", slice::kLevel, 5, Check::eMalformedTable},
             Damage{"no width", slice::kWidth, 0, Check::eAbsurdSize},
             Damage{"no height", slice::kHeight, 0, Check::eAbsurdSize},
             Damage{"blocks across", slice::kBlocksAcross, 999, Check::eMalformedTable},
             Damage{"blocks down", slice::kBlocksDown, 0, Check::eMalformedTable},
             Damage{"data outside", slice::kDataOffset, 0xFFFFFF00, Check::eMalformedTable},
             Damage{"less data than blocks", slice::kDataSize,
                    get(file, of_slice(file, 1, slice::kDataSize)) - 1, Check::eMalformedTable},
             Damage{"too much data", slice::kDataSize, 0xFFFFFFFF, Check::eMalformedTable},
         }) {
        const Check::Result result = check(with_slice(file, 1, damage.field, damage.value));
        EXPECT_EQ(result.status, damage.status) << damage.name << ": " << result.sentence;
        const std::size_t entry = of_slice(file, 1, {0, 1}).offset;
        EXPECT_GE(result.offset, entry) << damage.name;
        EXPECT_LT(result.offset, entry + slice::kSize) << damage.name;
    }
}

// What is a cube map, and nothing else, is whole.
TEST(BasisCheckFile, TellsOfDamageBeforeTheTextureType) {
    const Bytes file = made("uastc_cube_map");
    ASSERT_EQ(check(file).status, Check::eUnsupportedFormat);
    EXPECT_EQ(check(Bytes(file.begin(), file.end() - 1)).status, Check::eTruncated);
    EXPECT_EQ(check(with(file, header::kTableOffset, 0xFFFFFFF0)).status, Check::eMalformedTable);
    EXPECT_EQ(check(with_slice(file, 1, slice::kWidth, 0)).status, Check::eAbsurdSize);
}

TEST(BasisCheckFile, RefusesAlphaWithoutItsColour) {
    const Bytes file = made("etc1s_alpha_mips");
    EXPECT_EQ(check(with_slice(file, 0, slice::kFlags, kSliceFlagAlpha)).status, Check::eMalformedTable);
    EXPECT_EQ(check(with_slice(file, 1, slice::kFlags, 0)).status, Check::eMalformedTable);
    EXPECT_EQ(check(with_slice(file, 1, slice::kLevel, 1)).status, Check::eMalformedTable);
}

TEST(BasisCheckFile, RefusesCodebooksThatCannotBeDecoded) {
    Bytes file = made("etc1s_mips");
    const std::uint32_t tables = get(file, header::kTablesOffset);
    std::fill_n(file.begin() + tables, get(file, header::kTablesSize), std::uint8_t{0xFF});
    const Check::Result result = check(file);
    EXPECT_EQ(result.status, Check::eMalformedTable);
    EXPECT_EQ(result.sentence, "is damaged: its codebooks cannot be decoded");
}

TEST(BasisCheckFile, KeepsTheCallersLimits) {
    const Bytes file = made("uastc_mips");
    const std::uint64_t total = check(file).totalBytes;
    const std::uint32_t width = get(file, of_slice(file, 0, slice::kWidth));
    EXPECT_TRUE(check(file, {total, width}).ok());
    EXPECT_EQ(check(file, {total - 1, width}).status, Check::eAbsurdSize);
    EXPECT_EQ(check(file, {total, width - 1}).status, Check::eAbsurdSize);
    EXPECT_TRUE(check(file, {total, width, file.size()}).ok());
    EXPECT_EQ(check(file, {total, width, file.size() - 1}).status, Check::eAbsurdSize);
}

// A file of a few bytes must not have the loader take memory for blocks that are not there.
TEST(BasisCheckFile, RefusesBlocksWithoutTheirBytesInCodecsThatStoreThemWhole) {
    for (const std::uint32_t codec : {1U, 2U, 3U, 19U, 23U, 32U}) {
        SingleSlice slice;
        slice.format = codec;
        slice.width = slice.height = 4;
        slice.blocks_across = slice.blocks_down = 1;
        slice.data = Bytes(16);
        EXPECT_TRUE(check(file_of(slice)).ok()) << codec;
        slice.data = Bytes(15);
        EXPECT_EQ(check(file_of(slice)).status, Check::eMalformedTable) << codec;
    }
}

// 65535 x 65535 pixels are 2^28 blocks.
TEST(BasisCheckFile, RefusesALevelOf2GiB) {
    SingleSlice slice;
    slice.width = slice.height = 65535;
    slice.blocks_across = slice.blocks_down = 16384;
    slice.data = Bytes(16);
    const Check::Result result = check(file_of(slice));
    EXPECT_EQ(result.status, Check::eAbsurdSize);
    EXPECT_NE(result.sentence.find("2 GiB"), std::string::npos) << result.sentence;
}

TEST(BasisCheckFile, KeepsItsPromiseForEveryByteOfHeaderAndTable) {
    std::vector<Bytes> files = {made("etc1s_alpha_5x3"), made("uastc_4x4")};
    for (const char* const name : {"astc_hdr_6x6", "astc_ldr_4x4", "astc_ldr_6x6", "uastc_hdr_4x4",
                                   "uastc_hdr_6x6i", "xuastc_12x12", "xuastc_4x4"}) {
        files.push_back(made(name));
    }
    for (const Bytes& whole : files) {
        const std::size_t end = header::kSize + total_slices(whole) * slice::kSize;
        for (std::size_t offset = 0; offset < end; ++offset) {
            Bytes file = whole;
            for (unsigned int value = 0; value < 256; ++value) {
                file[offset] = static_cast<std::uint8_t>(value);
                expect_kept_promise(file);
            }
            if (testing::Test::HasFatalFailure()) return;
        }
    }
}

TEST(BasisCheckFile, KeepsItsPromiseForRandomDamage) {
    std::mt19937 random(21);
    const Bytes files[] = {made("etc1s_mips"), made("etc1s_alpha_mips"), made("uastc_array_mips")};
    int passed = 0;
    for (int i = 0; i < 3000; ++i) {
        Bytes file = files[random() % 3];
        for (auto changes = 1 + random() % 3; changes > 0; --changes) {
            file[random() % file.size()] = static_cast<std::uint8_t>(random());
        }
        passed += check(file).ok() ? 1 : 0;
        expect_kept_promise(file);
        if (testing::Test::HasFatalFailure()) return;
    }
    EXPECT_GT(passed, 100);
}

}  // namespace
