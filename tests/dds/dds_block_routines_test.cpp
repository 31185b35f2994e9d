// SPDX-License-Identifier: Apache-2.0
// The routines that turn single blocks over, and the driver of rows of blocks.
#include <algorithm>
#include <gtest/gtest.h>
#include <new>
#include <string>
#include <utility>

#include "support/allocation.h"
#include "support/dds_check.h"
#include "support/dds_private.h"
#include "support/taken.h"
#include "vDDSImage.h"

namespace {

using namespace dds_private;
using support::AllocationRecorder;
using support::Bytes;
using support::random_bytes;
using support::taken_by;

using Sizes = std::vector<std::size_t>;

template <class Block>
Block* as(Bytes& bytes) {
    return reinterpret_cast<Block*>(bytes.data());
}

void bc1(Bytes& bytes, int count) { flip_blocks_dxtc1()(as<TOZ::DXTColBlock>(bytes), count); }
void bc2(Bytes& bytes, int count) { flip_blocks_dxtc3()(as<TOZ::DXTColBlock>(bytes), count); }
void bc3(Bytes& bytes, int count) { flip_blocks_dxtc5()(as<TOZ::DXTColBlock>(bytes), count); }
void bc4(Bytes& bytes, int count) { flip_blocks_bc4()(as<TOZ::BC4ColBlock>(bytes), count); }
void bc5(Bytes& bytes, int count) { flip_blocks_bc5()(as<TOZ::BC5ColBlock>(bytes), count); }

struct Routine {
    const char* name;
    void (*flip)(Bytes& bytes, int count);
    std::size_t block_size;
    int format;
    std::size_t allocations_per_block;
};

constexpr Routine kRoutines[] = {
    {"bc1", bc1, 8, 8, 0},  {"bc2", bc2, 16, 9, 2},  {"bc3", bc3, 16, 10, 0},
    {"bc4", bc4, 8, 11, 0}, {"bc5", bc5, 16, 13, 0},
};

TEST(DdsBlockRoutines, Bc1ReversesTheRowBytes) {
    Bytes bytes = {1, 2, 3, 4, 10, 11, 12, 13, 5, 6, 7, 8, 20, 21, 22, 23};
    bc1(bytes, 2);
    EXPECT_EQ(bytes, (Bytes{1, 2, 3, 4, 13, 12, 11, 10, 5, 6, 7, 8, 23, 22, 21, 20}));
}

TEST(DdsBlockRoutines, Bc2ReversesAlphaWordsAndColourBytes) {
    Bytes bytes = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    bc2(bytes, 1);
    EXPECT_EQ(bytes, (Bytes{6, 7, 4, 5, 2, 3, 0, 1, 8, 9, 10, 11, 15, 14, 13, 12}));
}

// Index rows 0xABC, 0x123, 0x456, 0x789 from the lowest bits up.
TEST(DdsBlockRoutines, Bc3ReversesIndexRowsAndColourBytes) {
    Bytes bytes = {7, 9, 0xBC, 0x3A, 0x12, 0x56, 0x94, 0x78, 1, 2, 3, 4, 10, 11, 12, 13};
    bc3(bytes, 1);
    EXPECT_EQ(bytes, (Bytes{7, 9, 0x89, 0x67, 0x45, 0x23, 0xC1, 0xAB, 1, 2, 3, 4, 13, 12, 11, 10}));
}

TEST(DdsBlockRoutines, Bc4ReversesIndexRows) {
    Bytes bytes = {7, 9, 0xBC, 0x3A, 0x12, 0x56, 0x94, 0x78};
    bc4(bytes, 1);
    EXPECT_EQ(bytes, (Bytes{7, 9, 0x89, 0x67, 0x45, 0x23, 0xC1, 0xAB}));
}

TEST(DdsBlockRoutines, Bc5ReversesBothHalves) {
    Bytes bytes = {7, 9, 0xBC, 0x3A, 0x12, 0x56, 0x94, 0x78, 5, 3, 0x89, 0x67, 0x45, 0x23, 0xC1, 0xAB};
    bc5(bytes, 1);
    EXPECT_EQ(bytes,
              (Bytes{7, 9, 0x89, 0x67, 0x45, 0x23, 0xC1, 0xAB, 5, 3, 0xBC, 0x3A, 0x12, 0x56, 0x94, 0x78}));
}

// Each nibble of the index field alone, to where its twelve-bit row goes.
TEST(DdsBlockRoutines, EveryNibbleOfTheIndexFieldMovesWithItsRow) {
    for (unsigned nibble = 0; nibble < 12; ++nibble) {
        const unsigned target = (3 - nibble / 3) * 3 + nibble % 3;
        Bytes bytes(8);
        Bytes expected(8);
        bytes[2 + nibble / 2] = static_cast<std::uint8_t>(0xF << nibble % 2 * 4);
        expected[2 + target / 2] = static_cast<std::uint8_t>(0xF << target % 2 * 4);
        bc4(bytes, 1);
        EXPECT_EQ(bytes, expected) << nibble;
    }
}

TEST(DdsBlockRoutines, AlphaAndBc4SingleBlocksFollowTheSameTable) {
    for (std::uint32_t seed = 0; seed < 50; ++seed) {
        Bytes expected = random_bytes(8, seed);
        Bytes alpha = expected;
        Bytes red = expected;
        plain::reverse_index_rows(expected, 16, 3);
        flip_dxt5_alpha()(as<TOZ::DXT5AlphaBlock>(alpha));
        flip_block_bc4()(*as<TOZ::BC4ColBlock>(red));
        EXPECT_EQ(alpha, expected);
        EXPECT_EQ(red, expected);
    }
}

TEST(DdsBlockRoutines, AlphaFlipOfNoBlockDoesNothing) {
    const AllocationRecorder recorder;
    flip_dxt5_alpha()(nullptr);
    EXPECT_EQ(recorder.allocations(), 0u);
}

TEST(DdsBlockRoutines, TurnExactlyCountBlocksOver) {
    for (const Routine& routine : kRoutines)
        for (int count = 1; count <= 70; ++count) {
            const std::size_t flipped = routine.block_size * static_cast<std::size_t>(count);
            const Bytes before =
                random_bytes(flipped + routine.block_size, static_cast<std::uint32_t>(count));
            Bytes bytes = before;
            routine.flip(bytes, count);
            Bytes expected = before;
            for (std::size_t at = 0; at < flipped; at += routine.block_size) {
                const auto first = expected.begin() + static_cast<std::ptrdiff_t>(at);
                Bytes block(first, first + static_cast<std::ptrdiff_t>(routine.block_size));
                plain::flip_block(block, routine.format);
                std::copy(block.begin(), block.end(), first);
            }
            ASSERT_TRUE(support::same_bytes(bytes, expected)) << routine.name << ", " << count << " blocks";
        }
}

TEST(DdsBlockRoutines, TwiceGivesTheBytesBack) {
    for (const Routine& routine : kRoutines) {
        const Bytes before = random_bytes(routine.block_size * 5, 3);
        Bytes bytes = before;
        routine.flip(bytes, 5);
        EXPECT_NE(bytes, before) << routine.name;
        routine.flip(bytes, 5);
        EXPECT_EQ(bytes, before) << routine.name;
    }
}

TEST(DdsBlockRoutines, CountBelowOneDoesNothing) {
    for (const Routine& routine : kRoutines)
        for (int count : {0, -1, -1000}) {
            const Bytes before = random_bytes(routine.block_size, 4);
            Bytes bytes = before;
            routine.flip(bytes, count);
            EXPECT_EQ(bytes, before) << routine.name;
        }
}

TEST(DdsBlockRoutines, NullBlocksDoNothing) {
    const AllocationRecorder recorder;
    flip_blocks_dxtc1()(nullptr, 3);
    flip_blocks_dxtc3()(nullptr, 3);
    flip_blocks_dxtc5()(nullptr, 3);
    flip_blocks_bc4()(nullptr, 3);
    flip_blocks_bc5()(nullptr, 3);
    EXPECT_EQ(recorder.allocations(), 0u);
}

TEST(DdsBlockRoutines, OnlyBc2TakesMemory) {
    for (const Routine& routine : kRoutines) {
        Bytes bytes = random_bytes(routine.block_size * 3, 5);
        const auto taken = taken_by([&] { routine.flip(bytes, 3); });
        EXPECT_EQ(taken.sizes, Sizes(3 * routine.allocations_per_block, 2)) << routine.name;
        EXPECT_EQ(taken.releases, taken.sizes.size());
    }
}

// The exchange of the second block's alpha rows 1 and 2 fails: its rows 0 and 3 are exchanged already, its
// colour half is not reached.
TEST(DdsBlockRoutines, Bc2WithoutMemoryKeepsTheExchangesMadeSoFar) {
    Bytes bytes = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15,
                   0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    const support::FailAllocation failure(3);
    EXPECT_THROW(bc2(bytes, 2), std::bad_alloc);
    EXPECT_EQ(bytes, (Bytes{6, 7, 4, 5, 2, 3, 0, 1, 8, 9, 10, 11, 15, 14, 13, 12,
                            6, 7, 2, 3, 4, 5, 0, 1, 8, 9, 10, 11, 12, 13, 14, 15}));
}

TEST(DdsBlockRoutines, AtAnyAddress) {
    for (const Routine& routine : kRoutines)
        for (std::size_t shift = 0; shift < 8; ++shift) {
            Bytes memory = random_bytes(shift + 3 * routine.block_size, 6);
            Bytes expected(memory.begin() + static_cast<std::ptrdiff_t>(shift), memory.end());
            routine.flip(expected, 3);
            auto* at = reinterpret_cast<char*>(memory.data()) + shift;
            const std::string name = routine.name;
            if (name == "bc1") flip_blocks_dxtc1()(reinterpret_cast<TOZ::DXTColBlock*>(at), 3);
            if (name == "bc2") flip_blocks_dxtc3()(reinterpret_cast<TOZ::DXTColBlock*>(at), 3);
            if (name == "bc3") flip_blocks_dxtc5()(reinterpret_cast<TOZ::DXTColBlock*>(at), 3);
            if (name == "bc4") flip_blocks_bc4()(reinterpret_cast<TOZ::BC4ColBlock*>(at), 3);
            if (name == "bc5") flip_blocks_bc5()(reinterpret_cast<TOZ::BC5ColBlock*>(at), 3);
            EXPECT_EQ(Bytes(memory.begin() + static_cast<std::ptrdiff_t>(shift), memory.end()), expected)
                << name;
        }
}

/// Calls of the routine below, as (offset of the first block, count).
struct RowCalls {
    const char* data;
    std::vector<std::pair<std::ptrdiff_t, int>> calls;
};

RowCalls* observed = nullptr;

void note_row(TOZ::DXTColBlock* blocks, int count) {
    observed->calls.emplace_back(reinterpret_cast<const char*>(blocks) - observed->data, count);
}

TEST(DdsBlockRowDriver, TakesTheTopRowThenTheBottomRowThenTheNextPair) {
    Bytes bytes = random_bytes(5 * 3 * 16, 7);
    RowCalls rows{support::chars(bytes), {}};
    observed = &rows;
    flip_block_rows()(support::chars(bytes), 3, 5, 16, note_row);
    observed = nullptr;
    const std::vector<std::pair<std::ptrdiff_t, int>> expected = {{0, 3}, {192, 3}, {48, 3}, {144, 3}};
    EXPECT_EQ(rows.calls, expected);
}

TEST(DdsBlockRowDriver, ExchangesRowsBehindTheRoutine) {
    Bytes bytes = {1, 1, 1, 1, 10, 11, 12, 13, 2, 2, 2, 2, 20, 21, 22, 23, 3, 3, 3, 3, 30, 31, 32, 33};
    const auto taken =
        taken_by([&] { flip_block_rows()(support::chars(bytes), 1, 3, 8, flip_blocks_dxtc1()); });
    EXPECT_EQ(taken.sizes, Sizes{8});
    EXPECT_EQ(bytes,
              (Bytes{3, 3, 3, 3, 33, 32, 31, 30, 2, 2, 2, 2, 20, 21, 22, 23, 1, 1, 1, 1, 13, 12, 11, 10}));
}

TEST(DdsBlockRowDriver, NoneOrOneRowIsNotTouched) {
    for (unsigned yblocks : {0u, 1u}) {
        const Bytes before = random_bytes(32, 8);
        Bytes bytes = before;
        RowCalls rows{support::chars(bytes), {}};
        observed = &rows;
        flip_block_rows()(support::chars(bytes), 2, yblocks, 16, note_row);
        observed = nullptr;
        EXPECT_TRUE(rows.calls.empty());
        EXPECT_EQ(bytes, before);
    }
}

}  // namespace
