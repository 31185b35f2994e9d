// SPDX-License-Identifier: Apache-2.0
// Turning surfaces upside down: lines of uncompressed data, 4x4-pixel blocks of compressed data.
#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "pixels/block_flip.h"
#include "vDDSImage.h"

namespace {

unsigned char* as_bytes(void* memory) { return static_cast<unsigned char*>(memory); }

void exchange_bytes(void* a, void* b) { std::swap(*as_bytes(a), *as_bytes(b)); }

// Each exchange takes a temporary of its full size, by a plain call of the global allocation function: unlike
// a new-expression, a compiler may not leave it out. The bytes pass through its start in pieces that stay
// in the processor's first cache.
void exchange_through_temporary(void* a, void* b, std::size_t n) {
    if (a == nullptr || b == nullptr) return;
    constexpr std::size_t kPiece = 4096;
    void* const temporary = ::operator new(n);
    for (std::size_t done = 0; done < n; done += kPiece) {
        const std::size_t piece = std::min(kPiece, n - done);
        std::memcpy(temporary, as_bytes(a) + done, piece);
        std::memmove(as_bytes(a) + done, as_bytes(b) + done, piece);
        std::memcpy(as_bytes(b) + done, temporary, piece);
    }
    ::operator delete(temporary);
}

void exchange(void* a, void* b, std::size_t n) {
    if (n <= 1) {
        exchange_bytes(a, b);
    } else {
        exchange_through_temporary(a, b, n);
    }
}

void flip_lines(char* data, int height, int depth, std::size_t size) {
    if (height == 0 || depth <= 0) return;
    const std::size_t slice_size = size / static_cast<std::size_t>(depth);
    const std::size_t line_size = slice_size / static_cast<std::size_t>(height);
    for (char* slice = data; depth > 0; --depth, slice += slice_size) {
        char* top = slice;
        char* bottom = slice + slice_size - line_size;
        for (int pairs = height >> 1; pairs > 0; --pairs, top += line_size, bottom -= line_size) {
            exchange(bottom, top, line_size);
        }
    }
}

// The middle row of an odd number of block rows is neither moved nor flipped inside its blocks.
template <class Block>
void flip_rows(char* data, unsigned xblocks, unsigned yblocks, unsigned block_size,
               void (*flip_blocks)(Block*, int)) {
    const std::size_t row_size = xblocks * block_size;
    for (std::size_t row = 0; row < yblocks / 2; ++row) {
        char* const top = data + row * row_size;
        char* const bottom = data + (yblocks - row - 1) * row_size;
        flip_blocks(reinterpret_cast<Block*>(top), static_cast<int>(xblocks));
        flip_blocks(reinterpret_cast<Block*>(bottom), static_cast<int>(xblocks));
        exchange(bottom, top, row_size);
    }
}

unsigned whole_blocks(int pixels) { return static_cast<unsigned>(std::max(pixels, 0)) / 4; }

}  // namespace

void vDDSImage::flip(char* data, int width, int height, int depth, std::size_t size,
                     TOZ::SUPPORTED_FORMAT::Type format, bool compressed) {
    if (!compressed) {
        flip_lines(data, height, depth, size);
        return;
    }
    const unsigned xblocks = whole_blocks(width);
    const unsigned yblocks = whole_blocks(height);
    switch (format) {
        case TOZ::SUPPORTED_FORMAT::DXT1:
            flip_block_rows(data, xblocks, yblocks, 8, flip_blocks_dxtc1);
            break;
        case TOZ::SUPPORTED_FORMAT::DXT3:
            flip_block_rows(data, xblocks, yblocks, 16, flip_blocks_dxtc3);
            break;
        case TOZ::SUPPORTED_FORMAT::DXT5:
            flip_block_rows(data, xblocks, yblocks, 16, flip_blocks_dxtc5);
            break;
        case TOZ::SUPPORTED_FORMAT::BC4U:
        case TOZ::SUPPORTED_FORMAT::BC4S:
            flip_rows(data, xblocks, yblocks, 8, flip_blocks_bc4);
            break;
        case TOZ::SUPPORTED_FORMAT::BC5U:
        case TOZ::SUPPORTED_FORMAT::BC5S:
            flip_rows(data, xblocks, yblocks, 16, flip_blocks_bc5);
            break;
        default:
            break;
    }
}

void vDDSImage::_Swap(void* a, void* b, std::size_t n) { exchange(a, b, n); }

void vDDSImage::_SwapMemcopy(void* a, void* b, std::size_t n) { exchange_through_temporary(a, b, n); }

void vDDSImage::_SwapOptimized(void* a, void* b) { exchange_bytes(a, b); }

void vDDSImage::flip_block_rows(char* row_data, unsigned xblocks, unsigned yblocks, unsigned block_size,
                                void (*flip_blocks)(TOZ::DXTColBlock*, int)) {
    flip_rows(row_data, xblocks, yblocks, block_size, flip_blocks);
}

void vDDSImage::flip_blocks_dxtc1(TOZ::DXTColBlock* blocks, int count) {
    if (blocks == nullptr || count < 1) return;
    pelto::pixels::flip_bc1_blocks(as_bytes(blocks), static_cast<std::size_t>(count));
}

// The alpha rows are 16-bit words that change places by the common exchange, temporaries included.
void vDDSImage::flip_blocks_dxtc3(TOZ::DXTColBlock* blocks, int count) {
    if (blocks == nullptr) return;
    for (; count > 0; --count, blocks += 2) {
        auto* const alpha = reinterpret_cast<TOZ::DXTExplicitAlphaBlock*>(blocks);
        exchange(&alpha->row[0], &alpha->row[3], sizeof alpha->row[0]);
        exchange(&alpha->row[1], &alpha->row[2], sizeof alpha->row[0]);
        pelto::pixels::reference::flip_bc1_blocks(as_bytes(blocks + 1), 1);
    }
}

void vDDSImage::flip_blocks_dxtc5(TOZ::DXTColBlock* blocks, int count) {
    if (blocks == nullptr || count < 1) return;
    pelto::pixels::flip_bc3_blocks(as_bytes(blocks), static_cast<std::size_t>(count));
}

void vDDSImage::flip_dxt5_alpha(TOZ::DXT5AlphaBlock* block) {
    if (block == nullptr) return;
    pelto::pixels::reference::flip_bc4_blocks(as_bytes(block), 1);
}

void vDDSImage::flip_blocks_bc4(TOZ::BC4ColBlock* blocks, int count) {
    if (blocks == nullptr || count < 1) return;
    pelto::pixels::flip_bc4_blocks(as_bytes(blocks), static_cast<std::size_t>(count));
}

void vDDSImage::flip_block_bc4(TOZ::BC4ColBlock& block) {
    pelto::pixels::reference::flip_bc4_blocks(as_bytes(&block), 1);
}

void vDDSImage::flip_blocks_bc5(TOZ::BC5ColBlock* blocks, int count) {
    if (blocks == nullptr || count < 1) return;
    pelto::pixels::flip_bc4_blocks(as_bytes(blocks), 2 * static_cast<std::size_t>(count));
}
