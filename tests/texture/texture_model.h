// SPDX-License-Identifier: Apache-2.0
// Sizes of textures computed the slow and obvious way, from lists of the formats by size.
#ifndef TESTS_TEXTURE_TEXTURE_MODEL_H
#define TESTS_TEXTURE_TEXTURE_MODEL_H

#include <bit>
#include <climits>
#include <cstdint>
#include <span>
#include <vector>

#include "vTextureUtils.h"

namespace texture_model {

struct SizeClass {
    unsigned int bytes;
    std::vector<int> members;
};

inline std::span<const SizeClass> format_sizes() {
    static const std::vector<SizeClass> sizes = {
        {1, {1, 2, 8, 11}},
        {2, {3, 9, 12, 15, 18, 21, 24, 27, 50}},
        {3, {4, 6, 13, 49}},
        {4, {5, 7, 10, 14, 16, 19, 22, 25, 28, 30, 34, 38, 42, 43, 45, 47, 48}},
        {8, {17, 20, 23, 26, 29, 31, 35, 39, 44, 46}},
        {12, {32, 36, 40}},
        {16, {33, 37, 41}},
    };
    return sizes;
}

inline std::span<const SizeClass> client_sizes() {
    static const std::vector<SizeClass> sizes = {
        {1, {1, 25, 26}},
        {2, {2, 7, 27, 28, 29, 30, 31, 32}},
        {3, {3, 4}},
        {4, {5, 6, 8, 13, 19, 33, 34, 35, 36}},
        {6, {9, 10}},
        {8, {11, 12, 14, 20}},
        {12, {15, 16, 21, 22}},
        {16, {17, 18, 23, 24}},
    };
    return sizes;
}

/// Bytes a pixel of the member; 0 when no class has it.
inline unsigned int bytes_of(std::span<const SizeClass> sizes, int member) {
    for (const SizeClass& size : sizes)
        for (int candidate : size.members)
            if (candidate == member) return size.bytes;
    return 0;
}

inline vTextureFormat::Type format(int value) { return static_cast<vTextureFormat::Type>(value); }
inline vTextureClientDataType client_type(int value) { return static_cast<vTextureClientDataType>(value); }

/// Whole numbers that stand for no format and no client type: 0, small and large ones, negative ones, and
/// those that only lose their upper bits to look like members.
inline std::vector<int> no_member() {
    std::vector<int> values = {0, INT_MIN, INT_MIN + 5, INT_MAX, 1000, 4096, 1 << 30};
    for (int value = 65; value <= 70; ++value) values.push_back(value);
    for (int value = 1; value <= 64; ++value) {
        values.push_back(-value);
        values.push_back(value + 128);
        values.push_back(value + 256);
        values.push_back(value + 65536);
        values.push_back(value + (1 << 24));
    }
    return values;
}

/// One component of a level.
inline std::uint32_t level_extent(std::uint32_t extent, std::uint32_t level) {
    for (std::uint32_t halvings = level % 32; halvings > 0; --halvings) extent /= 2;
    return extent == 0 ? 1 : extent;
}

/// The low 32 bits of a product of four factors.
inline std::uint32_t product(std::uint64_t a, std::uint64_t b, std::uint64_t c, std::uint64_t d) {
    constexpr std::uint64_t kModulus = std::uint64_t{1} << 32;
    return static_cast<std::uint32_t>(a % kModulus * b % kModulus * c % kModulus * d % kModulus);
}

/// The nearest number of 53 significant bits, of two equally near ones the even one.
inline std::uint64_t rounded_to_double(std::uint64_t value) {
    const int excess = static_cast<int>(std::bit_width(value)) - 53;
    if (excess <= 0) return value;
    const std::uint64_t unit = std::uint64_t{1} << excess;
    const std::uint64_t rest = value % unit;
    const std::uint64_t below = value - rest;
    const bool below_is_odd = below / unit % 2 == 1;
    return 2 * rest > unit || (2 * rest == unit && below_is_odd) ? below + unit : below;
}

/// Bytes of whole 4x4-pixel blocks, all arithmetic in 32 bits.
inline std::uint32_t block_bytes(std::uint32_t width, std::uint32_t height, std::uint32_t bytes_a_block) {
    const std::uint32_t columns = (width + 3u) / 4u;
    const std::uint32_t rows = (height + 3u) / 4u;
    return product(columns, rows, bytes_a_block, 1);
}

/// The same for blocks of 16 bytes that are counted in double precision, without wrapping.
inline std::uint32_t double_block_bytes(std::uint32_t width, std::uint32_t height) {
    const std::uint64_t columns = (std::uint64_t{width} + 3) / 4;
    const std::uint64_t rows = (std::uint64_t{height} + 3) / 4;
    return product(rounded_to_double(columns * rows), 16, 1, 1);
}

/// Bytes of an extent in one of the formats 51 to 64.
inline std::uint32_t compressed_bytes(std::uint32_t width, std::uint32_t height, int format) {
    if (format >= 61) return double_block_bytes(width, height);
    const bool is_small = format == 51 || format == 52 || format == 57 || format == 58;
    return block_bytes(width, height, is_small ? 8 : 16);
}

/// Bytes of a level in one of the formats 1 to 64.
inline std::uint32_t level_bytes(std::uint32_t width, std::uint32_t height, std::uint32_t depth,
                                 std::uint32_t level, int format) {
    const std::uint32_t w = level_extent(width, level);
    const std::uint32_t h = level_extent(height, level);
    if (format >= 51) return compressed_bytes(w, h, format);
    return product(w, h, level_extent(depth, level), bytes_of(format_sizes(), format));
}

/// Extents where arithmetic of 32 bits, of floats or of doubles goes wrong first.
inline std::vector<std::uint32_t> critical_extents() {
    std::vector<std::uint32_t> extents;
    for (std::uint32_t value = 0; value <= 9; ++value) extents.push_back(value);
    for (int power = 4; power < 32; ++power)
        for (std::uint32_t offset = 0; offset < 7; ++offset)
            extents.push_back((std::uint32_t{1} << power) + offset - 3);
    for (std::uint32_t below = 0; below <= 20; ++below) extents.push_back(UINT32_MAX - below);
    return extents;
}

}  // namespace texture_model

#endif
