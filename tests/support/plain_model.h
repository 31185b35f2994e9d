// SPDX-License-Identifier: Apache-2.0
// What a DDS file means, computed the slow and obvious way: index by index, pixel by pixel, line by line.
// Tests compare the library with it. Made for small extents: it does not model arithmetic that wraps.
#ifndef TESTS_SUPPORT_PLAIN_MODEL_H
#define TESTS_SUPPORT_PLAIN_MODEL_H

#include <string>
#include <vector>

#include "support/bytes.h"

namespace plain {

using support::Bytes;

struct Masks {
    std::uint32_t red;
    std::uint32_t green;
    std::uint32_t blue;
    std::uint32_t alpha;
};

struct Level {
    int width;
    int height;
    int depth;
    std::size_t size;
    Bytes bytes;  // empty in a header-only image
};

using Face = std::vector<Level>;  // the base level first

struct Image {
    bool loaded = false;
    int format = 2;
    int components = 0;
    int bits_per_component = 8;
    bool compressed = false;
    bool cubemap = false;
    bool volume = false;
    bool valid = false;
    std::vector<Face> faces;
    std::vector<std::string> messages;  // logged on the way
};

/// Decodes a file. Bytes that the header promises and the file lacks read as zero.
Image load(const Bytes& file, bool flip_image, bool header_only);

/// Bytes that the headers promise, headers included; only the headers' own where the format is refused.
std::size_t file_size(const Bytes& headers);

/// Bytes of one slice of a level.
std::size_t slice_size(const Image& image, int width, int height);

/// Turns one level upside down, by lines or by blocks. `depth` and `height` are at least 1.
void flip(Bytes& bytes, int width, int height, int depth, int format, bool compressed);

/// Reverses the four pixel rows of one 8- or 16-byte block of the formats 8 to 14.
void flip_block(Bytes& block, int format);

/// Reverses four rows of four numbers of `bits` bits each, the first of them at bit `first_bit`.
void reverse_index_rows(Bytes& block, unsigned first_bit, unsigned bits);

/// Rewrites packed pixels of 3 or 4 bytes at the start of each slice into the order R, G, B(, A).
void reorder(Bytes& bytes, int width, int height, int depth, int components, const Masks& masks);

/// The low 8 bits of a masked value moved down to the mask's lowest bit.
std::uint8_t channel(std::uint32_t value, std::uint32_t mask);

/// Base level and `mipmaps` mip levels (all when negative) of every face, end to end.
Bytes full_buffer(const Image& image, int mipmaps);

}  // namespace plain

#endif
