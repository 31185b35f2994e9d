// SPDX-License-Identifier: Apache-2.0
// What block-compressed pixels mean, read from their published definitions bit by bit: BC1 to BC5 and BC6H as
// in Microsoft's "Block Compression" pages and the Khronos Data Format Specification.
#ifndef TESTS_SUPPORT_PLAIN_BLOCKS_H
#define TESTS_SUPPORT_PLAIN_BLOCKS_H

#include <array>
#include <cstdint>
#include <vDDSImage.h>

namespace plain {

/// Channels that a format does not have are 0, alpha 1.
struct Texel {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
};

/// The pixels of a block, row after row.
using Texels = std::array<Texel, 16>;

/// A block of 8 or 16 bytes of one of the formats DXT1 to BC6H_UF16.
Texels decode_block(TOZ::SUPPORTED_FORMAT::Type format, const std::uint8_t* block);

/// A block of 16 bytes of BC6H.
Texels decode_bc6h(const std::uint8_t* block, bool is_signed);

/// The value of a half float that is neither infinite nor NaN.
double value_of_half(std::uint16_t half);

}  // namespace plain

#endif
