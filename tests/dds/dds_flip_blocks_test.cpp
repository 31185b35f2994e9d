// SPDX-License-Identifier: Apache-2.0
// Compressed surfaces are flipped by exchanging rows of blocks and turning each block over.
#include <algorithm>
#include <gtest/gtest.h>
#include <new>
#include <utility>

#include "support/allocation.h"
#include "support/dds_check.h"
#include "support/taken.h"
#include "vDDSImage.h"

namespace {

using namespace TOZ::SUPPORTED_FORMAT;
using support::AllocationRecorder;
using support::Bytes;
using support::chars;
using support::random_bytes;
using support::taken_by;

using Sizes = std::vector<std::size_t>;

constexpr Type kFlippable[] = {DXT1, DXT3, DXT5, BC4U, BC4S, BC5U, BC5S};

std::size_t block_size(Type format) { return format == DXT1 || format == BC4U || format == BC4S ? 8 : 16; }

void flip_blocks(Bytes& bytes, int width, int height, Type format, int depth = 1) {
    vDDSImage::flip(chars(bytes), width, height, depth, bytes.size(), format, true);
}

/// Four blocks; the last four bytes of each are its pixel rows.
Bytes four_bc1_blocks() {
    return {1, 1, 1, 1, 10, 11, 12, 13, 2, 2, 2, 2, 20, 21, 22, 23,
            3, 3, 3, 3, 30, 31, 32, 33, 4, 4, 4, 4, 40, 41, 42, 43};
}

TEST(DdsFlipBlocks, Bc1ExchangesRowsAndTurnsEveryBlockOver) {
    Bytes bytes = four_bc1_blocks();
    flip_blocks(bytes, 8, 8, DXT1);
    EXPECT_EQ(bytes, (Bytes{3, 3, 3, 3, 33, 32, 31, 30, 4, 4, 4, 4, 43, 42, 41, 40,
                            1, 1, 1, 1, 13, 12, 11, 10, 2, 2, 2, 2, 23, 22, 21, 20}));
}

TEST(DdsFlipBlocks, MiddleBlockRowOfAnOddCountStaysAsItIs) {
    for (Type format : kFlippable) {
        const std::size_t row = 2 * block_size(format);
        const Bytes before = random_bytes(3 * row, 1);
        Bytes bytes = before;
        flip_blocks(bytes, 8, 12, format);
        EXPECT_TRUE(std::equal(bytes.begin() + static_cast<std::ptrdiff_t>(row),
                               bytes.begin() + static_cast<std::ptrdiff_t>(2 * row),
                               before.begin() + static_cast<std::ptrdiff_t>(row)));
        Bytes outer_rows = before;
        outer_rows.erase(outer_rows.begin() + static_cast<std::ptrdiff_t>(row),
                         outer_rows.begin() + static_cast<std::ptrdiff_t>(2 * row));
        flip_blocks(outer_rows, 8, 8, format);
        bytes.erase(bytes.begin() + static_cast<std::ptrdiff_t>(row),
                    bytes.begin() + static_cast<std::ptrdiff_t>(2 * row));
        EXPECT_EQ(bytes, outer_rows);
    }
}

TEST(DdsFlipBlocks, OneBlockRowStaysAsItIs) {
    for (Type format : kFlippable)
        for (int height : {4, 5, 6, 7}) {
            const Bytes before = random_bytes(4 * block_size(format), 2);
            Bytes bytes = before;
            const AllocationRecorder recorder;
            flip_blocks(bytes, 8, height, format);
            EXPECT_EQ(recorder.allocations(), 0u);
            EXPECT_EQ(bytes, before) << format << ", " << height;
        }
}

TEST(DdsFlipBlocks, HeightBelowFourStaysAsItIs) {
    for (Type format : kFlippable)
        for (int height : {1, 2, 3, -1, -3}) {
            const Bytes before = random_bytes(2 * block_size(format), 3);
            Bytes bytes = before;
            flip_blocks(bytes, 8, height, format);
            EXPECT_EQ(bytes, before) << format << ", " << height;
        }
}

TEST(DdsFlipBlocks, WidthBelowFourStaysAsItIs) {
    for (Type format : kFlippable)
        for (int width : {1, 2, 3, 0, -3}) {
            const Bytes before = random_bytes(4 * block_size(format), 4);
            Bytes bytes = before;
            const AllocationRecorder recorder;
            flip_blocks(bytes, width, 16, format);
            EXPECT_EQ(recorder.allocations(), 0u);
            EXPECT_EQ(bytes, before) << format << ", " << width;
        }
}

// At width 6 a stored row has two blocks, but rows are counted with one: of the four stored blocks the
// first two are taken for two rows, and the last two stay.
TEST(DdsFlipBlocks, PartialBlockColumnIsNotCounted) {
    Bytes bytes = four_bc1_blocks();
    flip_blocks(bytes, 6, 8, DXT1);
    EXPECT_EQ(bytes, (Bytes{2, 2, 2, 2, 23, 22, 21, 20, 1, 1, 1, 1, 13, 12, 11, 10,
                            3, 3, 3, 3, 30, 31, 32, 33, 4, 4, 4, 4, 40, 41, 42, 43}));
}

TEST(DdsFlipBlocks, PartialBlockRowIsNotCounted) {
    Bytes bytes = random_bytes(3 * 16, 5);
    Bytes two_rows(bytes.begin(), bytes.begin() + 32);
    const Bytes last_row(bytes.begin() + 32, bytes.end());
    flip_blocks(bytes, 8, 11, DXT1);
    flip_blocks(two_rows, 8, 8, DXT1);
    EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 32), two_rows);
    EXPECT_EQ(Bytes(bytes.begin() + 32, bytes.end()), last_row);
}

TEST(DdsFlipBlocks, OnlyTheFirstSliceOfAVolumeIsFlipped) {
    for (Type format : kFlippable) {
        const std::size_t slice = 4 * block_size(format);
        const Bytes before = random_bytes(3 * slice, 6);
        Bytes bytes = before;
        Bytes first(before.begin(), before.begin() + static_cast<std::ptrdiff_t>(slice));
        flip_blocks(bytes, 8, 8, format, 3);
        flip_blocks(first, 8, 8, format);
        EXPECT_TRUE(std::equal(first.begin(), first.end(), bytes.begin()));
        EXPECT_TRUE(std::equal(bytes.begin() + static_cast<std::ptrdiff_t>(slice), bytes.end(),
                               before.begin() + static_cast<std::ptrdiff_t>(slice)));
    }
}

TEST(DdsFlipBlocks, DepthAndSizeAreNotLookedAt) {
    Bytes bytes = four_bc1_blocks();
    Bytes expected = bytes;
    flip_blocks(expected, 8, 8, DXT1);
    vDDSImage::flip(chars(bytes), 8, 8, -5, 0, DXT1, true);
    EXPECT_EQ(bytes, expected);
}

TEST(DdsFlipBlocks, OtherFormatsAreLeftAlone) {
    for (int format : {0, 1, 2, 3, 4, 5, 6, 7, 15, 16, 17, -1}) {
        const Bytes before = random_bytes(64, 7);
        Bytes bytes = before;
        const AllocationRecorder recorder;
        flip_blocks(bytes, 8, 8, static_cast<Type>(format));
        EXPECT_EQ(recorder.allocations(), 0u);
        EXPECT_EQ(bytes, before) << format;
    }
}

TEST(DdsFlipBlocks, TakesOneTemporaryOfARowForEachExchange) {
    for (Type format : {DXT1, DXT5, BC4U, BC4S, BC5U, BC5S}) {
        const std::size_t row = 3 * block_size(format);
        Bytes bytes = random_bytes(5 * row, 8);
        const auto taken = taken_by([&] { flip_blocks(bytes, 12, 20, format); });
        EXPECT_EQ(taken.sizes, (Sizes{row, row})) << format;
        EXPECT_EQ(taken.releases, 2u);
    }
}

// Two exchanges of two bytes for each of the four blocks, then the rows.
TEST(DdsFlipBlocks, Bc2TakesTwoBytesForEveryAlphaExchangeToo) {
    Bytes bytes = random_bytes(64, 9);
    const auto taken = taken_by([&] { flip_blocks(bytes, 8, 8, DXT3); });
    EXPECT_EQ(taken.sizes, (Sizes{2, 2, 2, 2, 2, 2, 2, 2, 32}));
    EXPECT_EQ(taken.releases, 9u);
}

TEST(DdsFlipBlocks, SignedAndUnsignedFormatsAreFlippedAlike) {
    const Bytes before = random_bytes(128, 10);
    for (auto [one, other] : {std::pair{BC4U, BC4S}, std::pair{BC5U, BC5S}}) {
        Bytes a = before;
        Bytes b = before;
        flip_blocks(a, 8, 16, one);
        flip_blocks(b, 8, 16, other);
        EXPECT_EQ(a, b);
        EXPECT_NE(a, before);
    }
}

TEST(DdsFlipBlocks, TwiceGivesTheBytesBackForAnEvenCountOfRows) {
    for (Type format : kFlippable) {
        const Bytes before = random_bytes(6 * block_size(format), 11);
        Bytes bytes = before;
        flip_blocks(bytes, 12, 8, format);
        EXPECT_NE(bytes, before);
        flip_blocks(bytes, 12, 8, format);
        EXPECT_EQ(bytes, before) << format;
    }
}

TEST(DdsFlipBlocks, AgreesWithTheModel) {
    for (Type format : kFlippable)
        for (int width = 1; width <= 37; width += 3)
            for (int height = 1; height <= 26; ++height) {
                const auto blocks = static_cast<std::size_t>((width + 3) / 4 * ((height + 3) / 4));
                Bytes bytes =
                    random_bytes(blocks * block_size(format), static_cast<std::uint32_t>(width * height));
                Bytes expected = bytes;
                flip_blocks(bytes, width, height, format);
                plain::flip(expected, width, height, 1, format, true);
                ASSERT_TRUE(support::same_bytes(bytes, expected)) << format << ", " << width << "x" << height;
            }
}

TEST(DdsFlipBlocks, AtAnyAddress) {
    for (Type format : kFlippable)
        for (std::size_t shift = 1; shift < 16; ++shift) {
            Bytes memory = random_bytes(shift + 9 * block_size(format), 12);
            Bytes expected(memory.begin() + static_cast<std::ptrdiff_t>(shift), memory.end());
            plain::flip(expected, 12, 12, 1, format, true);
            vDDSImage::flip(chars(memory) + shift, 12, 12, 1, expected.size(), format, true);
            EXPECT_EQ(Bytes(memory.begin() + static_cast<std::ptrdiff_t>(shift), memory.end()), expected);
        }
}

// The exchange of rows 1 and 2 fails: their blocks have been turned over and lie where they lay.
TEST(DdsFlipBlocks, WithoutMemoryKeepTheWorkDoneSoFar) {
    Bytes bytes = four_bc1_blocks();
    const support::FailAllocation failure(1);
    EXPECT_THROW(flip_blocks(bytes, 4, 16, DXT1), std::bad_alloc);
    EXPECT_EQ(bytes, (Bytes{4, 4, 4, 4, 43, 42, 41, 40, 2, 2, 2, 2, 23, 22, 21, 20,
                            3, 3, 3, 3, 33, 32, 31, 30, 1, 1, 1, 1, 13, 12, 11, 10}));
}

TEST(DdsFlipBlocks, FailingFirstRowExchangeLeavesTurnedBlocksInPlace) {
    for (Type format : {DXT1, DXT5, BC4U, BC4S, BC5U, BC5S}) {
        const Bytes before = random_bytes(4 * block_size(format), 13);
        Bytes swapped = before;
        flip_blocks(swapped, 8, 8, format);
        Bytes bytes = before;
        {
            const support::FailAllocation failure(0);
            EXPECT_THROW(flip_blocks(bytes, 8, 8, format), std::bad_alloc);
        }
        const auto half = static_cast<std::ptrdiff_t>(bytes.size() / 2);
        std::rotate(bytes.begin(), bytes.begin() + half, bytes.end());
        EXPECT_EQ(bytes, swapped) << format;
    }
}

}  // namespace
