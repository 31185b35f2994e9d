// SPDX-License-Identifier: Apache-2.0
// The pixel side of the plain model: flipping and channel reordering.
#include <algorithm>

#include "support/plain_model.h"

namespace plain {
namespace {

std::size_t index_of(int value) { return static_cast<std::size_t>(value); }

unsigned read_number(const Bytes& block, unsigned first_bit, unsigned bits) {
    unsigned value = 0;
    for (unsigned i = 0; i < bits; ++i) {
        const unsigned bit = first_bit + i;
        value += (block[bit / 8] / (1u << bit % 8) % 2) << i;
    }
    return value;
}

void write_number(Bytes& block, unsigned first_bit, unsigned bits, unsigned value) {
    for (unsigned i = 0; i < bits; ++i) {
        const unsigned bit = first_bit + i;
        const auto weight = static_cast<std::uint8_t>(1u << bit % 8);
        if (value / (1u << i) % 2 != 0)
            block[bit / 8] = static_cast<std::uint8_t>(block[bit / 8] | weight);
        else
            block[bit / 8] = static_cast<std::uint8_t>(block[bit / 8] & ~weight);
    }
}

void flip_lines(Bytes& bytes, int height, int depth) {
    const std::size_t slice = bytes.size() / index_of(depth);
    const std::size_t line = slice / index_of(height);
    const Bytes before = bytes;
    for (std::size_t z = 0; z < index_of(depth); ++z)
        for (std::size_t y = 0; y < index_of(height); ++y)
            for (std::size_t x = 0; x < line; ++x)
                bytes[z * slice + y * line + x] = before[z * slice + (index_of(height) - 1 - y) * line + x];
}

void flip_blocks(Bytes& bytes, int width, int height, int format) {
    const std::size_t block_size = format == 8 || format == 11 || format == 12 ? 8 : 16;
    const std::size_t columns = index_of(width) / 4;
    const std::size_t rows = index_of(height) / 4;
    const Bytes before = bytes;
    for (std::size_t y = 0; y < rows; ++y) {
        const std::size_t from = rows - 1 - y;
        if (from == y) continue;
        for (std::size_t x = 0; x < columns; ++x) {
            const auto source =
                before.begin() + static_cast<std::ptrdiff_t>((from * columns + x) * block_size);
            Bytes block(source, source + static_cast<std::ptrdiff_t>(block_size));
            flip_block(block, format);
            std::copy(block.begin(), block.end(),
                      bytes.begin() + static_cast<std::ptrdiff_t>((y * columns + x) * block_size));
        }
    }
}

}  // namespace

void reverse_index_rows(Bytes& block, unsigned first_bit, unsigned bits) {
    unsigned indices[4][4];
    for (unsigned y = 0; y < 4; ++y)
        for (unsigned x = 0; x < 4; ++x)
            indices[y][x] = read_number(block, first_bit + (y * 4 + x) * bits, bits);
    for (unsigned y = 0; y < 4; ++y)
        for (unsigned x = 0; x < 4; ++x)
            write_number(block, first_bit + (y * 4 + x) * bits, bits, indices[3 - y][x]);
}

void flip_block(Bytes& block, int format) {
    constexpr unsigned second_half = 64;
    if (format == 8) reverse_index_rows(block, 32, 2);
    if (format == 9) reverse_index_rows(block, 0, 4);
    if (format >= 10) reverse_index_rows(block, 16, 3);
    if (format == 9 || format == 10) reverse_index_rows(block, second_half + 32, 2);
    if (format == 13 || format == 14) reverse_index_rows(block, second_half + 16, 3);
}

void flip(Bytes& bytes, int width, int height, int depth, int format, bool compressed) {
    if (!compressed)
        flip_lines(bytes, height, depth);
    else if (format >= 8 && format <= 14)
        flip_blocks(bytes, width, height, format);
}

std::uint8_t channel(std::uint32_t value, std::uint32_t mask) {
    unsigned result = 0;
    int lowest = -1;
    for (int bit = 0; bit < 32; ++bit) {
        const bool in_mask = mask / (1u << bit) % 2 != 0;
        if (in_mask && lowest < 0) lowest = bit;
        const bool is_set = in_mask && value / (1u << bit) % 2 != 0;
        if (is_set && bit - lowest < 8) result += 1u << (bit - lowest);
    }
    return static_cast<std::uint8_t>(result);
}

void reorder(Bytes& bytes, int width, int height, int depth, int components, const Masks& masks) {
    if (components != 3 && components != 4) return;
    const std::uint32_t by_channel[4] = {masks.red, masks.green, masks.blue, masks.alpha};
    const std::size_t slice = bytes.size() / index_of(depth);
    const std::size_t pixels = index_of(width) * index_of(height);
    const std::size_t count = index_of(components);
    for (std::size_t z = 0; z < index_of(depth); ++z)
        for (std::size_t pixel = 0; pixel < pixels; ++pixel) {
            const std::size_t at = z * slice + pixel * count;
            std::uint32_t value = 0;
            for (std::size_t i = count; i-- > 0;) value = value * 256 + bytes[at + i];
            for (std::size_t i = 0; i < count; ++i) bytes[at + i] = channel(value, by_channel[i]);
        }
}

}  // namespace plain
