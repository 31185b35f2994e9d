// SPDX-License-Identifier: Apache-2.0
// The arithmetic by which vectors decode a channel, as constants.
//
// A pixel of 1 to 4 bytes is a word of 32 bits, one of 8 bytes is two. Each function is false for a layout
// that these steps do not give exactly.
#ifndef PELTO_PIXELS_PIXEL_DECODE_STEPS_H
#define PELTO_PIXELS_PIXEL_DECODE_STEPS_H

#include <array>
#include <cstdint>

#include "pixels/pixel_decode.h"

namespace pelto::pixels {

/// The bits of a channel: word >> position & mask. A channel that is not there has an empty mask.
struct BitField {
    int word = 0;
    int position = 0;
    std::uint32_t mask = 0;
};

/// To a number from 0 to 255 or 65535, all in 32 bits: with t = max(bits ^ flip, least) - least,
/// min(t * factor + (t * multiplier + addend >> shift), most).
struct IntegerSteps {
    BitField field;
    std::uint32_t flip = 0;
    std::uint32_t least = 0;
    std::uint32_t factor = 0;  ///< 0 for a `most` of 255
    std::uint32_t multiplier = 0;
    std::uint32_t addend = 0;
    int shift = 0;
};

bool find_integer_steps(const PixelLayout& layout, std::uint32_t most, std::array<IntegerSteps, 4>& steps);

/// To a number from 0 to 255 in 16 bits, from up to 8: with t = max(bits ^ flip, least) - least,
/// (t * multiplier + addend) >> 8.
struct NarrowSteps {
    BitField field;
    std::uint32_t flip = 0;
    std::uint32_t least = 0;
    std::uint32_t multiplier = 0;
    std::uint32_t addend = 0;
};

bool find_narrow_steps(const PixelLayout& layout, std::array<NarrowSteps, 4>& steps);

/// To a float.
struct FloatSteps {
    enum class Way {
        kRatio,   ///< max((bits ^ flip) - offset, lowest) / divisor
        kHalf,    ///< half precision: bits << shift
        kShared,  ///< bits * 2^(exponent - 127 + offset)
        kBits,    ///< the bits of the float
    };
    Way way = Way::kRatio;
    BitField field;
    std::uint32_t flip = 0;
    std::int32_t offset = 0;
    std::int32_t lowest = 0;
    float divisor = 1;
    int shift = 0;
};

bool find_float_steps(const PixelLayout& layout, std::array<FloatSteps, 4>& steps, BitField& exponent);

/// Where channels are whole bytes: for each byte of four decoded pixels the place of its byte among four
/// words, or 0x80 for none; and what is added.
struct ByteSteps {
    alignas(16) std::uint8_t places[16];
    alignas(16) std::uint8_t added[16];
};

bool find_byte_steps(const PixelLayout& layout, ByteSteps& steps);

}  // namespace pelto::pixels

#endif
