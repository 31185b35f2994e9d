// SPDX-License-Identifier: Apache-2.0
// Decoding pixels of any arrangement of bits to red, green, blue and alpha.
//
// The functions in `reference` define the results, as include/vTexturePixels.h describes them; the others
// give the same, with vector instructions for most layouts. `from` holds whole blocks, the last
// one used as far as there are pixels; `to` takes 4, 8 or 16 bytes a pixel and must not overlap with it. Both
// may lie at any address.
#ifndef PELTO_PIXELS_PIXEL_DECODE_H
#define PELTO_PIXELS_PIXEL_DECODE_H

#include <cstddef>
#include <cstdint>

namespace pelto::pixels {

/// What the bits of a channel mean.
enum class Coding : std::uint8_t {
    kUNorm,           ///< 0 to 1
    kSNorm,           ///< -1 to 1, two's complement
    kUInt,            ///< unsigned integer
    kSInt,            ///< integer, two's complement
    kFloat,           ///< 32 or 16 bits: IEEE; 11 or 10 bits: no sign, 5 bits of exponent
    kSharedExponent,  ///< a mantissa of 9 bits, for the exponent in the layout
};

/// Where a channel lies in a block that is read as a little-endian number.
struct ChannelBits {
    std::uint8_t first = 0;  ///< the lowest bit, for the first pixel of a block
    std::uint8_t count = 0;  ///< 0: the channel is not there
    Coding coding = Coding::kUNorm;
    std::int8_t step = 0;  ///< bits from one pixel of a block to the next
};

struct PixelLayout {
    std::uint8_t block_bytes;
    std::uint8_t block_pixels;  ///< in a row
    ChannelBits channels[4];    ///< red, green, blue, alpha; where not there, 0, and 1 for alpha
    ChannelBits exponent;       ///< 5 bits, for shared exponents
};

void decode_rgba8(const PixelLayout& layout, const unsigned char* from, unsigned char* to,
                  std::size_t pixels);
void decode_rgba16(const PixelLayout& layout, const unsigned char* from, unsigned char* to,
                   std::size_t pixels);
void decode_rgba32f(const PixelLayout& layout, const unsigned char* from, unsigned char* to,
                    std::size_t pixels);

namespace reference {

void decode_rgba8(const PixelLayout& layout, const unsigned char* from, unsigned char* to,
                  std::size_t pixels);
void decode_rgba16(const PixelLayout& layout, const unsigned char* from, unsigned char* to,
                   std::size_t pixels);
void decode_rgba32f(const PixelLayout& layout, const unsigned char* from, unsigned char* to,
                    std::size_t pixels);

}  // namespace reference
}  // namespace pelto::pixels

#endif
