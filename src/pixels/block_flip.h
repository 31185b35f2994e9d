// SPDX-License-Identifier: Apache-2.0
// Reversing the four pixel rows inside 4x4 blocks, on arrays of blocks as they lie in a texture.
//
// `blocks` may lie at any address and is changed in place; `count` is in blocks and may be 0. Endpoints are
// never touched. The functions in `reference` define the results; the others give the same, as fast as
// the machine's vector instructions allow.
#ifndef PELTO_PIXELS_BLOCK_FLIP_H
#define PELTO_PIXELS_BLOCK_FLIP_H

#include <cstddef>

namespace pelto::pixels {

/// 8-byte blocks: 4 bytes of endpoints, then a byte per pixel row.
void flip_bc1_blocks(unsigned char* blocks, std::size_t count);

/// 16-byte blocks: a BC4 block (the alpha), then a BC1 block (the colour).
void flip_bc3_blocks(unsigned char* blocks, std::size_t count);

/// 8-byte blocks: 2 bytes of endpoints, then 48 bits of sixteen 3-bit indices, 12 bits per pixel row.
/// A BC5 block is two of them.
void flip_bc4_blocks(unsigned char* blocks, std::size_t count);

namespace reference {

void flip_bc1_blocks(unsigned char* blocks, std::size_t count);
void flip_bc3_blocks(unsigned char* blocks, std::size_t count);
void flip_bc4_blocks(unsigned char* blocks, std::size_t count);

}  // namespace reference
}  // namespace pelto::pixels

#endif
