// SPDX-License-Identifier: Apache-2.0
// A Huffman table of a single symbol with a long code has a tree that lacks a side: bits that lead there lead
// the transcoder out of its memory. Each of the nine tables of an ETC1S file is looked at before it is used.
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vTextureCheck.h>

#include "basis/basis_check.h"
#include "basis/basis_private.h"
#include "support/basis_file.h"
#include "support/guarded_memory.h"
#include "vBasisImage.h"

namespace {

using namespace basis_check;
using namespace support::basis;

// The first ten bits of a code are looked up; for each further bit there is a pair of nodes in the tree. The
// transcoder makes room for as many pairs as there are symbols, and for no more than it writes to: of the
// last pair only the side of the code's last bit.
bool lacks_a_side(const HuffmanTable& table) {
    return table.length > 10 && table.symbols < table.length - 10;
}

Bytes with_table(int index, const HuffmanTable& table) {
    Etc1sFile file;
    file.tables[index] = table;
    return file_of(file);
}

bool is_codebook_table(int index) { return index <= kSelectorCodebookTable; }

// A read behind the last byte ends the process.
void expect_refused_without_a_read_outside(const Bytes& file) {
    support::GuardedMemory memory(file.size(), support::GuardedMemory::Side::kEnd);
    memory.fill(file);
    vBasisImage image;
    image.setBasisFileRawData(memory.data(), static_cast<unsigned int>(file.size()));
    EXPECT_FALSE(image.isValidHeader());
    EXPECT_TRUE(refused(get_image(image, 0, 0, 1)));
    image = vBasisImage();  // which holds nothing: the memory is not the object's to release
}

class BasisHuffman : public testing::TestWithParam<int> {};

TEST_P(BasisHuffman, TableIsRefusedJustWhereItsTreeLacksASide) {
    for (std::uint32_t symbols = 1; symbols <= 7; ++symbols) {
        for (std::uint32_t length = 1; length <= 16; ++length) {
            SCOPED_TRACE(std::to_string(symbols) + " symbols, code of " + std::to_string(length) + " bits");
            const HuffmanTable table{symbols, length};
            const bool refused_whole = lacks_a_side(table) && is_codebook_table(GetParam());
            vBasisImage image;
            hold(image, with_table(GetParam(), table));
            EXPECT_EQ(image.isValidHeader(), !refused_whole);
            EXPECT_EQ((image.*basis_private::analysis())(), !refused_whole);
            for (const int usage : kUsages) {
                const Got got = get_image(image, 0, 0, usage);
                if (lacks_a_side(table)) {
                    EXPECT_TRUE(refused(got));
                } else {
                    EXPECT_TRUE(got.size_written);
                }
            }
        }
    }
}

TEST_P(BasisHuffman, CheckRefusesCodebooksThatCannotBeDecodedSafely) {
    const Bytes file = with_table(GetParam(), {1, 12});
    const vTextureCheck::Result result = vTextureCheck::CheckBasisBuffer(file.data(), file.size());
    EXPECT_EQ(result.ok(), !is_codebook_table(GetParam())) << result.sentence;
    if (result.ok()) return;
    EXPECT_EQ(result.status, vTextureCheck::eMalformedTable);
    EXPECT_EQ(result.sentence, "is damaged: its codebooks cannot be decoded");
}

INSTANTIATE_TEST_SUITE_P(Tables, BasisHuffman, testing::Range(0, static_cast<int>(kEtc1sTables)));

TEST(BasisHuffmanFile, WithWholeTreesIsTranscodedAsByDirectCalls) {
    const Bytes file = file_of(Etc1sFile());
    vBasisImage image;
    hold(image, file);
    EXPECT_TRUE(get_image(image, 0, 0, 1).result);
    expect_like_direct_calls(file);
}

// What looks like a table there is not read as one.
TEST(BasisHuffmanFile, RawSelectorsHaveNoTable) {
    Etc1sFile raw;
    raw.raw_selectors = true;
    raw.tables[kSelectorCodebookTable] = {1, 16};
    const Bytes file = file_of(raw);
    vBasisImage image;
    hold(image, file);
    EXPECT_TRUE(image.isValidHeader());
    EXPECT_TRUE(get_image(image, 0, 0, 1).result);
    expect_like_direct_calls(file);
}

TEST(BasisHuffmanFile, OtherCodecsHaveNoCodebooks) {
    Bytes file = with_table(kColour0Table, {1, 16});
    put(file, header::kFormat, kFormatUastc);
    put(file, header::kFlags, 0);
    vBasisImage image;
    hold(image, file);
    EXPECT_TRUE(image.isValidHeader());
    expect_like_direct_calls(file);
}

// A section that begins or ends outside the file is the transcoder's to refuse: its tables are not looked at.
TEST(BasisHuffmanFile, SectionsOutsideTheFileAreNotRead) {
    const Bytes good = file_of(Etc1sFile());
    const auto length = static_cast<std::uint32_t>(good.size());
    const struct {
        Field offset;
        Field size;
    } sections[] = {{header::kEndpointsOffset, header::kEndpointsSize},
                    {header::kSelectorsOffset, header::kSelectorsSize},
                    {header::kTablesOffset, header::kTablesSize}};
    for (const auto& section : sections) {
        for (const std::uint32_t offset : {0U, length - 1, length, length + 1, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
            for (const std::uint32_t size : {0U, 1U, 2U, length, length + 1, 0xFFFFFFU}) {
                Bytes file = with(with(good, section.offset, offset), section.size, size);
                const bool inside = std::uint64_t{offset} + size <= length && size != 0;
                if (!inside) expect_refused_without_a_read_outside(file);
            }
        }
    }
}

}  // namespace
