// SPDX-License-Identifier: Apache-2.0

#include <cstdint>
#include <utility>

#include "pixels/block_flip.h"

namespace pelto::pixels::reference {

void flip_bc1_blocks(unsigned char* blocks, std::size_t count) {
    for (unsigned char* block = blocks; count > 0; --count, block += 8) {
        std::swap(block[4], block[7]);
        std::swap(block[5], block[6]);
    }
}

void flip_bc3_blocks(unsigned char* blocks, std::size_t count) {
    for (unsigned char* block = blocks; count > 0; --count, block += 16) {
        flip_bc4_blocks(block, 1);
        flip_bc1_blocks(block + 8, 1);
    }
}

void flip_bc4_blocks(unsigned char* blocks, std::size_t count) {
    for (unsigned char* block = blocks; count > 0; --count, block += 8) {
        std::uint64_t indices = 0;
        for (int byte = 7; byte >= 2; --byte) indices = indices << 8 | block[byte];
        const std::uint64_t flipped = (indices & 0xFFF) << 36 | (indices >> 12 & 0xFFF) << 24 |
                                      (indices >> 24 & 0xFFF) << 12 | (indices >> 36 & 0xFFF);
        for (int byte = 2; byte < 8; ++byte)
            block[byte] = static_cast<unsigned char>(flipped >> 8 * (byte - 2));
    }
}

}  // namespace pelto::pixels::reference
