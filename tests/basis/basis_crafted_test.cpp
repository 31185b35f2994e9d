// SPDX-License-Identifier: Apache-2.0
// Files that would lead the transcoder out of its memory are refused; those that only look odd are not.
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <utility>

#include "basis/basis_check.h"
#include "basis/basis_private.h"
#include "basis/fixture_files.h"
#include "support/basis_file.h"
#include "vBasisImage.h"

namespace {

using namespace basis_check;
using basis_fixtures::made;
namespace basis = support::basis;
namespace direct = support::direct;

Got image_of(const Bytes& file, unsigned int level, unsigned int slice, int usage) {
    vBasisImage image;
    hold(image, file);
    return get_image(image, level, slice, usage);
}

// One of the tables has a single symbol, with a code of more than ten bits; the bits of a slice lead to the
// side of its tree that is not there.
TEST(BasisCrafted, HuffmanTreeThatLacksASideIsNotDecodedWith) {
    const Bytes file = basis_fixtures::seed("etc1s_huffman_tree_lacks_a_side");
    for (unsigned int slice = 0; slice < 4; ++slice) {
        for (unsigned int level = 0; level < 9; ++level) {
            for (const int usage : kUsages) EXPECT_TRUE(refused(image_of(file, level, slice, usage)));
        }
    }
}

// The alpha of a level is the next entry of the table, which the transcoder reads before it counts the
// entries. This file ends with the entry of the colour.
Bytes without_alpha_entry(std::size_t trailing) {
    const Bytes file = basis::with(made("etc1s_alpha_30x10"), basis::header::kTotalSlices, 1);
    return basis::with_table_at_the_end(file, trailing);
}

TEST(BasisCrafted, AlphaEntryBehindTheEndOfTheFileIsRefused) {
    for (std::size_t trailing = 0; trailing <= 20; ++trailing) {
        SCOPED_TRACE(trailing);
        const Bytes file = without_alpha_entry(trailing);
        EXPECT_EQ(direct::image(file, 0, 0, 1).end, direct::End::kReadsOutside);
        for (const int usage : kUsages) EXPECT_TRUE(refused(image_of(file, 0, 0, usage)));
        expect_like_direct_calls(file);
    }
}

// What is read of that entry ends two bytes before the entry does.
TEST(BasisCrafted, AlphaEntryInTheBytesBehindTheTableIsNotRefused) {
    for (std::size_t trailing = 21; trailing <= 60; ++trailing) {
        SCOPED_TRACE(trailing);
        const Bytes file = without_alpha_entry(trailing);
        EXPECT_TRUE(not_transcoded(image_of(file, 0, 0, 1), 192));
        expect_like_direct_calls(file);
    }
}

TEST(BasisCrafted, AlphaEntryMissingForTheLastOfSeveralImages) {
    Bytes file = made("etc1s_alpha_array_mips");
    const std::uint32_t count = basis::total_slices(file);
    file = basis::with_table_at_the_end(basis::with(file, basis::header::kTotalSlices, count - 1), 0);
    EXPECT_TRUE(refused(image_of(file, 4, 2, 1)));
    EXPECT_TRUE(image_of(file, 3, 2, 1).result);
    EXPECT_TRUE(image_of(file, 4, 1, 1).result);
    expect_like_direct_calls(file);
}

TEST(BasisCrafted, AlphaEntryThatIsAskedForAsAnImageOfItsOwn) {
    Bytes file = basis::with_slice(made("etc1s_alpha_30x10"), 1, basis::slice::kImage, 1);
    file = basis::with_table_at_the_end(basis::with(file, basis::header::kTotalImages, 2), 0);
    EXPECT_TRUE(image_of(file, 0, 0, 2).result);
    EXPECT_TRUE(refused(image_of(file, 0, 1, 2)));
    expect_like_direct_calls(file);
}

// The header says how many images there are; an entry of a further one is not looked at.
TEST(BasisCrafted, AlphaEntryMissingForAnImageBeyondTheLast) {
    Bytes file = basis::with_slice(made("etc1s_alpha_30x10"), 1, basis::slice::kImage, 1);
    file = basis::with_table_at_the_end(file, 0);
    EXPECT_TRUE(refused(image_of(file, 0, 1, 2)));
    expect_like_direct_calls(file);
}

TEST(BasisCrafted, NoAlphaEntryIsNeededWithoutAlphaOrInUastc) {
    for (const char* const name : {"etc1s_30x10", "uastc_alpha_30x10"}) {
        const Bytes file = basis::with_table_at_the_end(made(name), 0);
        EXPECT_TRUE(image_of(file, 0, 0, 1).result) << name;
        expect_like_direct_calls(file);
    }
}

/// A file whose only level, 65535 pixels square, has so many blocks.
Bytes with_blocks(Bytes file, std::uint32_t across, std::uint32_t down) {
    for (std::size_t i = 0; i < basis::total_slices(file); ++i) {
        basis::put(file, basis::of_slice(file, i, basis::slice::kWidth), 0xFFFF);
        basis::put(file, basis::of_slice(file, i, basis::slice::kHeight), 0xFFFF);
        basis::put(file, basis::of_slice(file, i, basis::slice::kBlocksAcross), across);
        basis::put(file, basis::of_slice(file, i, basis::slice::kBlocksDown), down);
    }
    return file;
}

constexpr const char* kOneOfEachCodec[] = {"etc1s_4x4", "etc1s_alpha_5x3", "uastc_4x4"};

TEST(BasisCrafted, ByteCountThatWrapsAroundIsRefused) {
    const struct {
        std::uint32_t across;
        std::uint32_t down;
        int usage;
    } cases[] = {
        {16384, 16384, 2},                     // 2^28 blocks of 16 bytes: 0
        {16384, 16384, 4}, {16384, 32768, 1},  // 2^29 blocks of 8 bytes: 0
        {16384, 32768, 5}, {16384, 32768, 2},  // 2^33
        {32768, 32768, 1}, {16385, 32768, 1},  // 2^32 + 2^18
        {16385, 16384, 2},
    };
    for (const char* const name : kOneOfEachCodec) {
        for (const auto& test : cases) {
            const Bytes file = with_blocks(made(name), test.across, test.down);
            EXPECT_EQ(direct::image(file, 0, 0, test.usage).end, direct::End::kWrappedSize);
            EXPECT_TRUE(refused(image_of(file, 0, 0, test.usage)))
                << name << ", " << test.across << " x " << test.down << ", usage " << test.usage;
        }
    }
}

// No buffer has a size that is negative as a signed 32-bit number.
TEST(BasisCrafted, NegativeByteCountEndsInTheAllocationException) {
    const struct {
        std::uint32_t across;
        std::uint32_t down;
        int usage;
    } cases[] = {
        {16384, 16384, 1},                      // 2^31
        {16384, 16384, 5},   {16384, 8192, 2},  // 2^31
        {16384, 24576, 2},                      // 2^32 + 2^31
        {0xFFFF, 0xFFFF, 1}, {0xFFFF, 0xFFFF, 2},
    };
    for (const char* const name : kOneOfEachCodec) {
        for (const auto& test : cases) {
            const Bytes file = with_blocks(made(name), test.across, test.down);
            EXPECT_EQ(direct::image(file, 0, 0, test.usage).end, direct::End::kNegativeSize);
            EXPECT_TRUE(image_of(file, 0, 0, test.usage).thrown)
                << name << ", " << test.across << " x " << test.down << ", usage " << test.usage;
        }
    }
}

TEST(BasisCrafted, HugeExtentsLoadAllTheSame) {
    vBasisImage image;
    hold(image, with_blocks(made("uastc_4x4"), 0xFFFF, 0xFFFF));
    EXPECT_TRUE(fields_are(image, {true, 262140, 262140, 1, 1}));
    EXPECT_TRUE(image.isValidHeader());
}

TEST(BasisCrafted, LevelsWithoutBlocks) {
    for (const char* const name : kOneOfEachCodec) {
        expect_like_direct_calls(with_blocks(made(name), 0, 1));
        expect_like_direct_calls(with_blocks(made(name), 1, 0));
        expect_like_direct_calls(with_blocks(made(name), 0, 0));
    }
}

// Blocks of one colour, of any extents.
Bytes astc_blocks(std::size_t count) {
    constexpr std::uint8_t kBlock[16] = {0xFC, 0xFD, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
                                         0,    0x40, 0,    0x80, 0,    0xC0, 0xFF, 0xFF};
    Bytes blocks(count * sizeof kBlock);
    for (std::size_t i = 0; i < blocks.size(); ++i) blocks[i] = kBlock[i % sizeof kBlock];
    return blocks;
}

TEST(BasisCrafted, PlainAstcBlocksAreTranscoded) {
    const Bytes files[] = {
        basis::file_of({basis::kFormatAstc4x4, 8, 12, 2, 3, astc_blocks(6)}),
        basis::file_of({basis::kFormatAstc4x4, 5, 9, 2, 3, astc_blocks(6)}),
        basis::file_of({basis::kFormatAstc6x6, 16, 16, 4, 4, astc_blocks(16)}),
        basis::file_of({basis::kFormatAstc12x12, 16, 16, 4, 4, astc_blocks(16)}),
    };
    for (const Bytes& file : files) {
        EXPECT_EQ(direct::image(file, 0, 0, 1).end, direct::End::kTranscoded);
        EXPECT_TRUE(image_of(file, 0, 0, 1).result);
        expect_like_direct_calls(file);
    }
}

// The transcoder takes as many of these blocks as the table says, wherever the file ends.
TEST(BasisCrafted, PlainAstcBlocksBehindTheEndOfTheFileAreNotRead) {
    const Bytes files[] = {
        basis::file_of({basis::kFormatAstc4x4, 256, 256, 64, 64, astc_blocks(4)}),
        basis::file_of({basis::kFormatAstc4x4, 8, 8, 2, 2, astc_blocks(3)}),
        basis::file_of({basis::kFormatAstc6x6, 16, 16, 4, 4, astc_blocks(15)}),
        basis::file_of({basis::kFormatAstc12x12, 16, 16, 4, 4, astc_blocks(1)}),
        basis::file_of({basis::kFormatAstc4x4, 8, 8, 2, 2, {}}),
    };
    for (const Bytes& file : files) {
        EXPECT_EQ(direct::image(file, 0, 0, 1).end, direct::End::kReadsOutside);
        for (const int usage : kUsages) {
            const Got got = image_of(file, 0, 0, usage);
            EXPECT_FALSE(got.result);
            EXPECT_FALSE(got.has_image);
        }
    }
}

// The blocks behind the end are there, in memory that is not the file's.
TEST(BasisCrafted, PlainAstcBlocksAreTranscodedOnlyWhereTheLastIsWhole) {
    constexpr std::uint32_t kHeaderSize = basis::header::kSize;
    constexpr std::size_t kBlocks = 16;
    const Bytes whole = basis::file_of({basis::kFormatAstc4x4, 16, 16, 4, 4, astc_blocks(kBlocks)});
    for (std::size_t missing = 0; missing <= kBlocks * 16; ++missing) {
        SCOPED_TRACE(missing);
        const auto announced = static_cast<std::uint32_t>(whole.size() - missing);
        const Bytes file = basis::with(whole, basis::header::kDataSize, announced - kHeaderSize);
        vBasisImage image;
        image.setBasisFileRawData(new_copy(file), announced);
        const Got got = get_image(image, 0, 0, 1);
        EXPECT_EQ(got.result, missing == 0);
        EXPECT_EQ(got.size_written, missing == 0);
    }
}

// The transcoder puts a row of these blocks where the width in pixels says, and as many rows as there are.
TEST(BasisCrafted, PlainAstcRowsBehindTheEndOfTheOutputAreNotWritten) {
    const Bytes files[] = {
        basis::file_of({basis::kFormatAstc4x4, 64, 4, 1, 16, astc_blocks(16)}),
        basis::file_of({basis::kFormatAstc4x4, 16, 1, 1, 4, astc_blocks(4)}),
        basis::file_of({basis::kFormatAstc4x4, 12, 8, 2, 3, astc_blocks(6)}),
    };
    for (const Bytes& file : files) {
        EXPECT_EQ(direct::image(file, 0, 0, 1).end, direct::End::kWritesOutside);
        for (const int usage : kUsages) {
            const Got got = image_of(file, 0, 0, usage);
            EXPECT_FALSE(got.result);
            EXPECT_FALSE(got.has_image);
        }
    }
}

// A file whose width in pixels has `across` blocks, and whose data have just one block across.
Bytes column_of_blocks(const Bytes& file, std::uint32_t across) {
    Bytes column = basis::with_slice(file, 0, basis::slice::kWidth, 4 * across);
    column = basis::with_slice(column, 0, basis::slice::kHeight, 4);
    column = basis::with_slice(column, 0, basis::slice::kBlocksAcross, 1);
    return basis::with_slice(column, 0, basis::slice::kBlocksDown, 4);
}

TEST(BasisCrafted, RowsOfXuastcAreRefusedWhereTheyWouldBeWrittenApart) {
    const Bytes file = basis_fixtures::seed("xuastc_ldr_4x4");
    for (const std::uint32_t across : {2U, 3U, 4U}) {
        const Bytes column = column_of_blocks(file, across);
        EXPECT_EQ(direct::image(column, 0, 0, 1).end, direct::End::kWritesOutside);
        for (const int usage : kUsages) EXPECT_TRUE(refused(image_of(column, 0, 0, usage)));
    }
    EXPECT_TRUE(image_of(column_of_blocks(file, 1), 0, 0, 1).size_written);
    const Bytes other =
        basis::with(column_of_blocks(file, 2), basis::header::kFormat, basis::kFormatXuastc5x4);
    EXPECT_TRUE(image_of(other, 0, 0, 1).size_written) << "other extents are refused by the transcoder";
}

TEST(BasisCrafted, EveryCodecNumberOverTheDataOfAnother) {
    for (const char* const name :
         {"etc1s_alpha_30x10", "etc1s_mips", "uastc_alpha_30x10", "uastc_array_mips"}) {
        for (std::uint32_t format = 0; format < 256; ++format) {
            SCOPED_TRACE(std::string(name) + ", format " + std::to_string(format));
            expect_like_direct_calls(basis::with(made(name), basis::header::kFormat, format));
        }
    }
}

// What is wrong with these the transcoder does not mind, or notices by itself.
TEST(BasisCrafted, OddFilesThatAreSafeToReadAreTreatedAsByDirectCalls) {
    const Bytes etc1s = made("etc1s_alpha_30x10");
    const Bytes uastc = made("uastc_array_mips");
    const Bytes files[] = {
        basis::with(etc1s, basis::header::kHeaderCrc, 0),
        basis::with(etc1s, basis::header::kDataCrc, 0),
        basis::with_slice(etc1s, 0, basis::slice::kDataCrc, 0),
        basis::with(uastc, basis::header::kHeaderCrc, 0),
        basis::with(uastc, basis::header::kDataCrc, 0),
        basis::with(etc1s, basis::header::kTotalImages, 200),
        basis::with(uastc, basis::header::kTotalImages, 200),
        basis::with(made("etc1s_mips"), basis::header::kFlags, 0),
        basis::with(uastc, basis::header::kFlags, basis::kFlagEtc1s),
        basis::with(made("etc1s_alpha_array_mips"), basis::header::kTotalSlices, 5),
        basis::with_slice(etc1s, 1, basis::slice::kFlags, 0),
        basis::with_slice(etc1s, 0, basis::slice::kFlags, basis::kSliceFlagAlpha),
        basis::with_slice(etc1s, 1, basis::slice::kImage, 1),
        basis::with_slice(uastc, 3, basis::slice::kImage, 0xFFFFFF),
        basis::with_slice(uastc, 3, basis::slice::kLevel, 255),
        basis::with_slice(uastc, 3, basis::slice::kLevel, 16),
    };
    for (const Bytes& file : files) expect_like_direct_calls(file);
}

TEST(BasisCrafted, OddFilesWhoseImagesAreThere) {
    const std::pair<Bytes, int> cases[] = {
        {basis::with(made("etc1s_alpha_30x10"), basis::header::kHeaderCrc, 0), 0},
        {basis::with(made("etc1s_alpha_30x10"), basis::header::kTotalImages, 200), 0},
        {basis::with(made("etc1s_alpha_array_mips"), basis::header::kTotalSlices, 5), 1},
        {basis::with(made("etc1s_mips"), basis::header::kFlags, 0), 5},
        {basis::with_slice(made("uastc_mips"), 3, basis::slice::kImage, 0xFFFFFF), 2},
        {basis::with_slice(made("uastc_mips"), 3, basis::slice::kLevel, 255), 255},
    };
    for (const auto& [file, level] : cases)
        EXPECT_TRUE(image_of(file, static_cast<unsigned int>(level), 0, 2).result) << "level " << level;
}

TEST(BasisCrafted, NumbersInTheHeaderThatLeadNowhere) {
    for (const char* const name : {"etc1s_alpha_30x10", "uastc_array_mips"}) {
        const Bytes good = made(name);
        const auto size = static_cast<std::uint32_t>(good.size());
        const Bytes files[] = {
            basis::with(good, basis::header::kTotalImages, 0),
            basis::with(good, basis::header::kTotalSlices, 0),
            basis::with(good, basis::header::kTotalSlices, 0xFFFFFF),
            basis::with(good, basis::header::kTableOffset, size),
            basis::with(good, basis::header::kTableOffset, size - 1),
            basis::with(good, basis::header::kTableOffset, 0xFFFFFFFF),
            basis::with(good, basis::header::kDataSize, size - 76),
            basis::with(good, basis::header::kDataSize, 0x7FFFFFFF),
            basis::with(good, basis::header::kSignature, 0x7342),
            basis::with(good, basis::header::kVersion, 0x10),
            basis::with(good, basis::header::kHeaderSize, 76),
        };
        for (const Bytes& file : files) {
            vBasisImage image;
            hold(image, file);
            EXPECT_FALSE(image.isValidHeader());
            EXPECT_FALSE((image.*basis_private::analysis())());
            EXPECT_TRUE(refused(get_image(image, 0, 0, 1)));
            expect_like_direct_calls(file);
        }
    }
}

// The size of header and data, as a 32-bit number, is small again.
TEST(BasisCrafted, DataSizeThatWrapsAroundIsNotMinded) {
    for (const char* const name : {"etc1s_alpha_30x10", "uastc_array_mips"}) {
        const Bytes file = basis::with(made(name), basis::header::kDataSize, 0xFFFFFFFF);
        EXPECT_TRUE(image_of(file, 0, 0, 1).result);
        expect_like_direct_calls(file);
    }
}

TEST(BasisCrafted, BytesBehindTheDataAreNotMinded) {
    for (const char* const name : {"etc1s_alpha_30x10", "uastc_array_mips"}) {
        Bytes file = made(name);
        file.resize(file.size() + 1000, 0xEE);
        EXPECT_TRUE(image_of(file, 0, 0, 1).result);
        expect_like_direct_calls(file);
    }
}

TEST(BasisCrafted, SliceDataOutsideTheFileIsNotRead) {
    for (const char* const name : {"etc1s_30x10", "etc1s_alpha_30x10", "uastc_30x10"}) {
        const Bytes good = made(name);
        for (std::size_t slice = 0; slice < basis::total_slices(good); ++slice) {
            for (const std::uint32_t value :
                 {static_cast<std::uint32_t>(good.size()), 0x7FFFFFFFu, 0xFFFFFFFFu}) {
                expect_like_direct_calls(basis::with_slice(good, slice, basis::slice::kDataOffset, value));
                expect_like_direct_calls(basis::with_slice(good, slice, basis::slice::kDataSize, value));
                Bytes both = basis::with_slice(good, slice, basis::slice::kDataOffset, value);
                expect_like_direct_calls(basis::with_slice(both, slice, basis::slice::kDataSize, 0));
            }
        }
    }
}

}  // namespace
