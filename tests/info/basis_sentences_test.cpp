// SPDX-License-Identifier: Apache-2.0
// What vTextureCheck says of a .basis file, word for word, with the place that it names.
#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vTextureCheck.h>

#include "basis/fixture_files.h"
#include "support/basis_file.h"
#include "support/temporary_folder.h"

namespace {

using namespace basis_fixtures;
using namespace support;
using namespace support::basis;
using Check = vTextureCheck;

// In a block of its own size, where a memory checker sees every read outside.
Check::Result check(Bytes file, const vTextureLimits& limits = vTextureLimits()) {
    file.shrink_to_fit();
    return Check::CheckBasisBuffer(file.data(), file.size(), limits);
}

void expect_said(const Check::Result& result, Check::EStatus status, std::uint64_t offset,
                 const std::string& sentence) {
    EXPECT_EQ(result.status, status) << sentence;
    EXPECT_EQ(result.offset, offset) << sentence;
    EXPECT_EQ(result.sentence, sentence);
}

Bytes cut(const Bytes& file, std::size_t length) {
    return Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length));
}

std::string starts_with(const std::string& quoted) {
    return "is not a .basis file: it starts with " + quoted + " instead of \"sB\"";
}

TEST(BasisSentences, OfAnEmptyFile) { expect_said(check({}), Check::eNotThisKind, 0, "is empty"); }

// Nothing that moves a terminal's cursor goes to it, DEL included.
TEST(BasisSentences, QuoteTheFirstTwoBytes) {
    const struct {
        Bytes start;
        const char* quoted;
    } cases[] = {
        {{'s', 0x7F}, "\"s\\x7f\""},   {{0x7E, 0x20}, "\"~ \""},
        {{0x1F, 'B'}, "\"\\x1fB\""},   {{0x80, 0xFF}, "\"\\x80\\xff\""},
        {{0, 0x1B}, "\"\\x00\\x1b\""}, {{'b', 'S'}, "\"bS\""},
        {{'s', 'b'}, "\"sb\""},        {{'B'}, "\"B\""},
    };
    for (const auto& test : cases) {
        expect_said(check(test.start), Check::eNotThisKind, 0, starts_with(test.quoted));
        Bytes longer = test.start;
        if (longer.size() == 2) longer.resize(100);
        expect_said(check(longer), Check::eNotThisKind, 0, starts_with(test.quoted));
    }
}

TEST(BasisSentences, OfAHeaderThatIsCutShort) {
    const Bytes file = made("uastc_4x4");
    for (const std::size_t length : {1U, 2U, 76U}) {
        const Check::Result result = check(cut(file, length));
        expect_said(result, Check::eTruncated, length,
                    "is cut short: its header ends at byte 77, the file at byte " + std::to_string(length));
        EXPECT_EQ(result.missingBytes, 77 - length);
    }
}

struct Change {
    Field field;
    std::uint32_t value;
    Check::EStatus status;
    std::string sentence;
};

TEST(BasisSentences, OfTheHeader) {
    const Bytes file = made("etc1s_alpha_mips");
    constexpr auto kMalformed = Check::eMalformedTable;
    constexpr auto kUnsupported = Check::eUnsupportedFormat;
    const Change changes[] = {
        {header::kVersion, 0x12, kUnsupported, "the version 18 at byte 2 is not supported"},
        {header::kVersion, 0x14, kUnsupported, "the version 20 at byte 2 is not supported"},
        {header::kHeaderSize, 76, kMalformed, "its header has 76 bytes instead of 77, says byte 4"},
        {header::kHeaderSize, 78, kMalformed, "its header has 78 bytes instead of 77, says byte 4"},
        {header::kFormat, 33, kUnsupported, "the codec 33 at byte 20 is not supported"},
        {header::kFormat, 255, kUnsupported, "the codec 255 at byte 20 is not supported"},
        {header::kFlags, kFlagAlphaSlices, kMalformed, "its flags contradict its codec, says byte 21"},
        {header::kFlags, kFlagEtc1s | kFlagAlphaSlices | 8, kUnsupported,
         "shares its codebooks with another file, which is not supported"},
        {header::kTextureType, 5, kMalformed, "it has no known texture type, says byte 23"},
        {header::kTextureType, 255, kMalformed, "it has no known texture type, says byte 23"},
        {header::kTextureType, 2, kUnsupported,
         "is a cube map: only 2D textures and arrays of them are transcoded"},
        {header::kTextureType, 3, kUnsupported,
         "is a video: only 2D textures and arrays of them are transcoded"},
        {header::kTextureType, 4, kUnsupported,
         "is a volume: only 2D textures and arrays of them are transcoded"},
        {header::kTotalSlices, 0, kMalformed, "it has no slices, says byte 14"},
        {header::kTotalSlices, 3, kMalformed, "one of its slices lacks its alpha, says byte 14"},
        {header::kTotalImages, 0, kMalformed, "it has no images, says byte 17"},
        {header::kTotalImages, total_slices(file) + 1, kMalformed,
         "it has more images than slices, says byte 17"},
        {header::kTotalImages, 2, kMalformed,
         "its table of slices has another number of images, says byte 17"},
        {header::kEndpointsSize, 0, kMalformed, "its section of endpoints is empty, says byte 45"},
        {header::kSelectorsSize, 0, kMalformed, "its section of selectors is empty, says byte 54"},
        {header::kTablesSize, 0, kMalformed, "its section of Huffman tables is empty, says byte 61"},
        {header::kEndpointsOffset, 0xFFFFFFF0, kMalformed,
         "its section of endpoints lies outside the file, says byte 41"},
        {header::kSelectorsOffset, 0xFFFFFFF0, kMalformed,
         "its section of selectors lies outside the file, says byte 50"},
        {header::kTablesOffset, 0xFFFFFFF0, kMalformed,
         "its section of Huffman tables lies outside the file, says byte 57"},
        {header::kTableOffset, 0xFFFFFFF0, kMalformed,
         "its table of slices lies outside the file, says byte 65"},
        {header::kTableOffset, 76, kMalformed, "its table of slices lies outside the file, says byte 65"},
    };
    for (const Change& change : changes) {
        expect_said(check(with(file, change.field, change.value)), change.status, change.field.offset,
                    change.sentence);
    }
    for (const std::uint32_t codec : {1U, 32U}) {
        expect_said(check(with(file, header::kFormat, codec)), kMalformed, 21,
                    "its flags contradict its codec, says byte 21");
        const Check::Result result = check(with(with(file, header::kFormat, codec), header::kFlags, 0));
        EXPECT_NE(result.status, Check::eUnsupportedFormat) << result.sentence;
        EXPECT_NE(result.offset, header::kFlags.offset) << result.sentence;
    }
}

TEST(BasisSentences, OfAnEntryInTheTableOfSlices) {
    const Bytes file = made("uastc_mips");
    const std::uint64_t entry = of_slice(file, 1, {0, 1}).offset;
    const auto says = [&](const char* what, Field field) {
        return std::string(what) + ", says byte " + std::to_string(entry + field.offset);
    };
    const auto extent = [&](const char* what, Field field, const char* is) {
        return std::string("its ") + what + " at byte " + std::to_string(entry + field.offset) + " is " + is;
    };
    const std::uint32_t bytes = get(file, of_slice(file, 1, slice::kDataSize));
    const Change changes[] = {
        {slice::kImage, 2, Check::eMalformedTable, says("its slices are not in order", slice::kImage)},
        {slice::kWidth, 0, Check::eAbsurdSize, extent("width", slice::kWidth, "0 pixels")},
        {slice::kHeight, 0, Check::eAbsurdSize, extent("height", slice::kHeight, "0 pixels")},
        {slice::kBlocksAcross, 999, Check::eMalformedTable,
         says("the blocks of a slice do not fit its extent", slice::kBlocksAcross)},
        {slice::kDataOffset, 0xFFFFFF00, Check::eMalformedTable,
         says("the data of a slice lie outside the file", slice::kDataOffset)},
        {slice::kDataSize, bytes - 1, Check::eMalformedTable,
         says("a slice has fewer bytes than its blocks", slice::kDataSize)},
    };
    for (const Change& change : changes) {
        expect_said(check(with_slice(file, 1, change.field, change.value)), change.status,
                    entry + change.field.offset, change.sentence);
    }
    // Not the next level of its image, which it must not skip or repeat.
    for (const std::uint32_t level : {0U, 2U}) {
        expect_said(check(with_slice(file, 1, slice::kLevel, level)), Check::eMalformedTable, entry,
                    says("its slices are not in order", slice::kImage));
    }
}

TEST(BasisSentences, OfTheBlocksOfASlice) {
    const Bytes file = made("uastc_5x3");  // 2 x 1 blocks
    const std::string place = std::to_string(of_slice(file, 0, slice::kBlocksAcross).offset);
    for (const auto& [field, value] : {std::pair(slice::kWidth, 4U), std::pair(slice::kWidth, 9U),
                                       std::pair(slice::kHeight, 5U), std::pair(slice::kBlocksDown, 2U)}) {
        expect_said(check(with_slice(file, 0, field, value)), Check::eMalformedTable, std::stoull(place),
                    "the blocks of a slice do not fit its extent, says byte " + place);
    }
    for (const std::uint32_t width : {5U, 8U}) {
        EXPECT_TRUE(check(with_slice(file, 0, slice::kWidth, width)).ok()) << width;
    }
}

TEST(BasisSentences, OfAlphaAwayFromItsColour) {
    const Bytes file = made("etc1s_alpha_mips");
    const std::uint32_t last = total_slices(file) - 1;
    for (const std::uint32_t index : {1U, last}) {
        const std::uint64_t entry = of_slice(file, index, {0, 1}).offset;
        const std::uint32_t level = get(file, of_slice(file, index, slice::kLevel));
        const std::string sentence =
            "the alpha of a slice is not that of its colour, says byte " + std::to_string(entry);
        for (const std::uint32_t other : {level + 1, level == 0 ? 255 : level - 1}) {
            expect_said(check(with_slice(file, index, slice::kLevel, other)), Check::eMalformedTable, entry,
                        sentence);
        }
        expect_said(check(with_slice(file, index, slice::kImage, 1)), Check::eMalformedTable, entry,
                    sentence);
    }
    for (const std::uint32_t index : {0U, 1U, last}) {
        const std::uint32_t flags = index % 2 == 0 ? kSliceFlagAlpha : 0;
        const std::uint64_t place = of_slice(file, index, slice::kFlags).offset;
        expect_said(
            check(with_slice(file, index, slice::kFlags, flags)), Check::eMalformedTable, place,
            "a slice is not what its place says: colour or alpha, says byte " + std::to_string(place));
    }
}

TEST(BasisSentences, OfASectionThatIsCutShort) {
    const Bytes file = with_table_at_the_end(made("etc1s_mips"), 0);
    const std::uint64_t end = file.size();
    const Check::Result table = check(cut(file, end - 1));
    expect_said(table, Check::eTruncated, end - 1,
                "is cut short: its table of slices ends at byte " + std::to_string(end) +
                    ", the file at byte " + std::to_string(end - 1));
    EXPECT_EQ(table.missingBytes, 1U);
    EXPECT_EQ(table.face, -1);
    EXPECT_EQ(table.level, -1);

    for (const std::uint32_t beyond : {1U, 5U}) {
        const auto promised = static_cast<std::uint32_t>(end - header::kSize + beyond);
        const Check::Result rest = check(with(file, header::kDataSize, promised));
        expect_said(rest, Check::eTruncated, end,
                    "is cut short: its last section ends at byte " + std::to_string(end + beyond) +
                        ", the file at byte " + std::to_string(end));
        EXPECT_EQ(rest.missingBytes, beyond);
        EXPECT_EQ(rest.totalBytes, check(file).totalBytes);
    }
}

TEST(BasisSentences, OfEachSectionOfCodebooksThatIsCutShort) {
    const Etc1sFile whole;
    const struct {
        const char* name;
        Field offset;
        Field size;
    } sections[] = {{"endpoints", header::kEndpointsOffset, header::kEndpointsSize},
                    {"selectors", header::kSelectorsOffset, header::kSelectorsSize},
                    {"Huffman tables", header::kTablesOffset, header::kTablesSize}};
    const Bytes file = file_of(whole);
    for (const auto& section : sections) {
        const std::uint64_t end = get(file, section.offset) + get(file, section.size);
        const Check::Result result = check(cut(file, end - 1));
        expect_said(result, Check::eTruncated, end - 1,
                    std::string("is cut short: its section of ") + section.name + " ends at byte " +
                        std::to_string(end) + ", the file at byte " + std::to_string(end - 1));
        EXPECT_EQ(result.missingBytes, file.size() - end + 1);
        EXPECT_EQ(result.face, 0);
        EXPECT_EQ(result.level, 0);
        EXPECT_EQ(result.totalBytes, 16U);
    }
}

TEST(BasisSentences, OfTheCallersLimits) {
    const Bytes file = made("uastc_mips");
    const std::uint64_t total = check(file).totalBytes;
    const std::uint32_t width = get(file, of_slice(file, 0, slice::kWidth));
    const Field across = of_slice(file, 0, slice::kWidth);
    expect_said(check(file, {total - 1}), Check::eAbsurdSize, get(file, header::kTableOffset),
                "its levels take " + std::to_string(total) + " bytes, beyond the limit of " +
                    std::to_string(total - 1));
    expect_said(check(file, {total, width - 1}), Check::eAbsurdSize, across.offset,
                "its width at byte " + std::to_string(across.offset) + " is " + std::to_string(width) +
                    " pixels, beyond the limit of " + std::to_string(width - 1));
    expect_said(check(file, {total, width, file.size() - 1}), Check::eAbsurdSize, 0,
                "is " + std::to_string(file.size()) + " bytes long, beyond the limit of " +
                    std::to_string(file.size() - 1));
    EXPECT_TRUE(check(file, {total, width, file.size()}).ok());
    EXPECT_TRUE(check(file, {total + 1, width + 1, file.size() + 1}).ok());
}

TEST(BasisSentences, OfTheHeightBeyondTheCallersLimit) {
    const Bytes file = made("uastc_1x37");
    const Field down = of_slice(file, 0, slice::kHeight);
    EXPECT_TRUE(check(file, {UINT64_MAX, 37}).ok());
    expect_said(
        check(file, {UINT64_MAX, 36}), Check::eAbsurdSize, down.offset,
        "its height at byte " + std::to_string(down.offset) + " is 37 pixels, beyond the limit of 36");
}

// A file and its bytes are checked by the same rules.
TEST(BasisSentences, OfAFileAreThoseOfItsBytes) {
    const TemporaryFolder folder;
    const Bytes good = made("etc1s_alpha_mips");
    for (const Bytes& bytes : {good, cut(good, 60), cut(good, 100), cut(good, good.size() - 1),
                               with(good, header::kFormat, 99), with(good, header::kTextureType, 2)}) {
        const std::string path = folder.write("a.basis", std::string(bytes.begin(), bytes.end()));
        const Check::Result of_file = Check::CheckBasisFile(path);
        const Check::Result of_bytes = check(bytes);
        expect_said(of_file, of_bytes.status, of_bytes.offset, of_bytes.sentence);
        EXPECT_EQ(of_file.missingBytes, of_bytes.missingBytes);
        EXPECT_EQ(of_file.totalBytes, of_bytes.totalBytes);
    }
}

}  // namespace
