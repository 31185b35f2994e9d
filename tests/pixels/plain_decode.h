// SPDX-License-Identifier: Apache-2.0
// A plain model of decoding: what the bits of a pixel mean, read one by one, and whether an element of a
// decoded pixel is the right one for them.
#ifndef TESTS_PIXELS_PLAIN_DECODE_H
#define TESTS_PIXELS_PLAIN_DECODE_H

#include <array>
#include <cstdint>
#include <optional>
#include <vTextureFormats.h>

#include "support/bytes.h"

namespace plain_decode {

/// The bits of a channel, as a number.
struct Number {
    std::uint32_t bits;
    int count;
    vPixelFormat::EKind kind;
    int shared_exponent;  // where the format has one
};

/// Red, green, blue and alpha of a pixel; nothing where the format lacks them.
using Pixel = std::array<std::optional<Number>, 4>;

std::uint32_t read_bits(const support::Bytes& bytes, std::size_t first, int count);
void write_bits(support::Bytes& bytes, std::size_t first, int count, std::uint32_t number);

/// The pixel at `x` of a row.
Pixel pixel_of(const vPixelFormat& format, const support::Bytes& row, std::size_t x);

/// Whether an element from 0 to `most` (255 or 65535), or the bits of a float, is right for a number.
bool is_right(std::uint32_t element, std::uint32_t most, const Number& number);
bool is_right_float(std::uint32_t element, const Number& number);

}  // namespace plain_decode

#endif
