// SPDX-License-Identifier: Apache-2.0

#include "pixels/block_flip.h"

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <vector>

#include "support/every_target.h"

namespace {

using Flip = void (*)(unsigned char*, std::size_t);
using Bytes = std::vector<unsigned char>;

struct Kernel {
    const char* name;
    std::size_t block_size;
    Flip fast;
    Flip reference;
};

namespace px = pelto::pixels;

const Kernel kKernels[] = {
    {"BC1", 8, px::flip_bc1_blocks, px::reference::flip_bc1_blocks},
    {"BC3", 16, px::flip_bc3_blocks, px::reference::flip_bc3_blocks},
    {"BC4", 8, px::flip_bc4_blocks, px::reference::flip_bc4_blocks},
};

Bytes random_bytes(std::size_t size) {
    std::mt19937 random(static_cast<unsigned>(size) + 1);
    Bytes bytes(size);
    for (auto& byte : bytes) byte = static_cast<unsigned char>(random());
    return bytes;
}

// The sixteen 3-bit indices of a BC4 block, read bit by bit.
std::vector<unsigned> indices(const unsigned char* block) {
    std::vector<unsigned> values(16, 0);
    for (std::size_t bit = 0; bit < 48; ++bit) {
        const unsigned set = unsigned{block[2 + bit / 8]} >> (bit % 8) & 1U;
        values[bit / 3] |= set << (bit % 3);
    }
    return values;
}

Bytes flipped(Flip flip, Bytes bytes, std::size_t count) {
    flip(bytes.data(), count);
    return bytes;
}

TEST(BlockFlipReference, ReversesTheRowBytesOfABC1Block) {
    EXPECT_EQ(flipped(px::reference::flip_bc1_blocks, {1, 2, 3, 4, 5, 6, 7, 8}, 1),
              (Bytes{1, 2, 3, 4, 8, 7, 6, 5}));
}

TEST(BlockFlipReference, ReversesTheRowsOf3BitIndicesOfABC4Block) {
    for (std::size_t seed = 8; seed < 8 * 200; seed += 8) {
        const Bytes before = random_bytes(seed);
        const Bytes after = flipped(px::reference::flip_bc4_blocks, before, 1);
        EXPECT_EQ(after[0], before[0]);
        EXPECT_EQ(after[1], before[1]);
        const auto old_indices = indices(before.data());
        const auto new_indices = indices(after.data());
        for (std::size_t row = 0; row < 4; ++row) {
            for (std::size_t column = 0; column < 4; ++column) {
                EXPECT_EQ(new_indices[4 * row + column], old_indices[4 * (3 - row) + column]);
            }
        }
    }
}

TEST(BlockFlipReference, ABC3BlockIsABC4BlockAndABC1Block) {
    const Bytes before = random_bytes(16);
    Bytes expected = before;
    px::reference::flip_bc4_blocks(expected.data(), 1);
    px::reference::flip_bc1_blocks(expected.data() + 8, 1);
    EXPECT_EQ(flipped(px::reference::flip_bc3_blocks, before, 1), expected);
    EXPECT_NE(before, expected);
}

TEST(BlockFlip, EveryTargetEqualsTheReferenceForAllBlockCounts) {
    support::on_every_target([] {
        for (const Kernel& kernel : kKernels) {
            SCOPED_TRACE(kernel.name);
            for (std::size_t count = 0; count <= 70; ++count) {
                const Bytes before = random_bytes(count * kernel.block_size);
                ASSERT_EQ(flipped(kernel.fast, before, count), flipped(kernel.reference, before, count))
                    << count;
            }
        }
    });
}

TEST(BlockFlip, EveryTargetTakesAnyAddressAndTouchesOnlyTheBlocks) {
    constexpr std::size_t kMargin = 64;
    constexpr std::size_t kCount = 21;
    support::on_every_target([] {
        for (const Kernel& kernel : kKernels) {
            SCOPED_TRACE(kernel.name);
            const std::size_t size = kCount * kernel.block_size;
            for (std::size_t offset = 0; offset < kMargin; ++offset) {
                Bytes memory = random_bytes(kMargin + size + kMargin);
                Bytes expected = memory;
                kernel.fast(memory.data() + offset, kCount);
                for (std::size_t i = 0; i < kCount; ++i) {
                    kernel.reference(expected.data() + offset + i * kernel.block_size, 1);
                }
                ASSERT_EQ(memory, expected) << offset;
            }
        }
    });
}

TEST(BlockFlip, FlippingTwiceGivesTheBlocksBack) {
    for (const Kernel& kernel : kKernels) {
        const Bytes before = random_bytes(1000 * kernel.block_size);
        const Bytes once = flipped(kernel.fast, before, 1000);
        EXPECT_NE(once, before) << kernel.name;
        EXPECT_EQ(flipped(kernel.fast, once, 1000), before) << kernel.name;
    }
}

}  // namespace
