// SPDX-License-Identifier: Apache-2.0

#include <cmath>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/plain_blocks.h"

namespace plain {
namespace {

// A field of a block: bits `first` to `last` of channel r, g or b of endpoint 0 to 3, in the order in which
// they are stored.
struct Field {
    char channel;
    int endpoint;
    int first;
    int last;
};

struct Mode {
    int bits;  // of the mode's own number
    unsigned number;
    int regions;
    bool differences;  // endpoints 1 to 3 are stored as differences from endpoint 0
    int endpoint_bits;
    std::array<int, 3> difference_bits;  // red, green, blue
    std::string fields;                  // as published, from the lowest bit
};

const std::vector<Mode> kModes = {
    {2,
     0x00,
     2,
     true,
     10,
     {5, 5, 5},
     "g2[4] b2[4] b3[4] r0[9:0] g0[9:0] b0[9:0] r1[4:0] g3[4] g2[3:0] g1[4:0] b3[0] g3[3:0] b1[4:0] b3[1] "
     "b2[3:0] r2[4:0] b3[2] r3[4:0] b3[3]"},
    {2,
     0x01,
     2,
     true,
     7,
     {6, 6, 6},
     "g2[5] g3[4] g3[5] r0[6:0] b3[0] b3[1] b2[4] g0[6:0] b2[5] b3[2] g2[4] b0[6:0] b3[3] b3[5] b3[4] "
     "r1[5:0] "
     "g2[3:0] g1[5:0] g3[3:0] b1[5:0] b2[3:0] r2[5:0] r3[5:0]"},
    {5,
     0x02,
     2,
     true,
     11,
     {5, 4, 4},
     "r0[9:0] g0[9:0] b0[9:0] r1[4:0] r0[10] g2[3:0] g1[3:0] g0[10] b3[0] g3[3:0] b1[3:0] b0[10] b3[1] "
     "b2[3:0] "
     "r2[4:0] b3[2] r3[4:0] b3[3]"},
    {5,
     0x06,
     2,
     true,
     11,
     {4, 5, 4},
     "r0[9:0] g0[9:0] b0[9:0] r1[3:0] r0[10] g3[4] g2[3:0] g1[4:0] g0[10] g3[3:0] b1[3:0] b0[10] b3[1] "
     "b2[3:0] "
     "r2[3:0] b3[0] b3[2] r3[3:0] g2[4] b3[3]"},
    {5,
     0x0A,
     2,
     true,
     11,
     {4, 4, 5},
     "r0[9:0] g0[9:0] b0[9:0] r1[3:0] r0[10] b2[4] g2[3:0] g1[3:0] g0[10] b3[0] g3[3:0] b1[4:0] b0[10] "
     "b2[3:0] "
     "r2[3:0] b3[1] b3[2] r3[3:0] b3[4] b3[3]"},
    {5,
     0x0E,
     2,
     true,
     9,
     {5, 5, 5},
     "r0[8:0] b2[4] g0[8:0] g2[4] b0[8:0] b3[4] r1[4:0] g3[4] g2[3:0] g1[4:0] b3[0] g3[3:0] b1[4:0] b3[1] "
     "b2[3:0] r2[4:0] b3[2] r3[4:0] b3[3]"},
    {5,
     0x12,
     2,
     true,
     8,
     {6, 5, 5},
     "r0[7:0] g3[4] b2[4] g0[7:0] b3[2] g2[4] b0[7:0] b3[3] b3[4] r1[5:0] g2[3:0] g1[4:0] b3[0] g3[3:0] "
     "b1[4:0] b3[1] b2[3:0] r2[5:0] r3[5:0]"},
    {5,
     0x16,
     2,
     true,
     8,
     {5, 6, 5},
     "r0[7:0] b3[0] b2[4] g0[7:0] g2[5] g2[4] b0[7:0] g3[5] b3[4] r1[4:0] g3[4] g2[3:0] g1[5:0] g3[3:0] "
     "b1[4:0] b3[1] b2[3:0] r2[4:0] b3[2] r3[4:0] b3[3]"},
    {5,
     0x1A,
     2,
     true,
     8,
     {5, 5, 6},
     "r0[7:0] b3[1] b2[4] g0[7:0] b2[5] g2[4] b0[7:0] b3[5] b3[4] r1[4:0] g3[4] g2[3:0] g1[4:0] b3[0] "
     "g3[3:0] "
     "b1[5:0] b2[3:0] r2[4:0] b3[2] r3[4:0] b3[3]"},
    {5,
     0x1E,
     2,
     false,
     6,
     {6, 6, 6},
     "r0[5:0] g3[4] b3[0] b3[1] b2[4] g0[5:0] g2[5] b2[5] b3[2] g2[4] b0[5:0] g3[5] b3[3] b3[5] b3[4] "
     "r1[5:0] "
     "g2[3:0] g1[5:0] g3[3:0] b1[5:0] b2[3:0] r2[5:0] r3[5:0]"},
    {5, 0x03, 1, false, 10, {10, 10, 10}, "r0[9:0] g0[9:0] b0[9:0] r1[9:0] g1[9:0] b1[9:0]"},
    {5, 0x07, 1, true, 11, {9, 9, 9}, "r0[9:0] g0[9:0] b0[9:0] r1[8:0] r0[10] g1[8:0] g0[10] b1[8:0] b0[10]"},
    {5,
     0x0B,
     1,
     true,
     12,
     {8, 8, 8},
     "r0[9:0] g0[9:0] b0[9:0] r1[7:0] r0[10:11] g1[7:0] g0[10:11] b1[7:0] b0[10:11]"},
    {5,
     0x0F,
     1,
     true,
     16,
     {4, 4, 4},
     "r0[9:0] g0[9:0] b0[9:0] r1[3:0] r0[10:15] g1[3:0] g0[10:15] b1[3:0] b0[10:15]"},
};

// Which of the two regions a pixel belongs to.
constexpr const char* kPartitions[32] = {
    "0011001100110011", "0001000100010001", "0111011101110111", "0001001100110111", "0000000100010011",
    "0011011101111111", "0001001101111111", "0000000100110111", "0000000000010011", "0011011111111111",
    "0000000101111111", "0000000000010111", "0001011111111111", "0000000011111111", "0000111111111111",
    "0000000000001111", "0000100011101111", "0111000100000000", "0000000010001110", "0111001100010000",
    "0011000100000000", "0000100011001110", "0000000010001100", "0111001100110001", "0011000100010000",
    "0000100010001100", "0110011001100110", "0011011001101100", "0001011111101000", "0000111111110000",
    "0111000110001110", "0011100110011100"};

// The pixel of the second region whose index lacks its highest bit, as the first pixel's does.
constexpr int kAnchors[32] = {15, 15, 15, 15, 15, 15, 15, 15, 15, 15, 15, 15, 15, 15, 15, 15,
                              15, 2,  8,  2,  2,  8,  8,  15, 2,  8,  2,  2,  8,  8,  2,  2};

constexpr int kWeights3[] = {0, 9, 18, 27, 37, 46, 55, 64};
constexpr int kWeights4[] = {0, 4, 9, 13, 17, 21, 26, 30, 34, 38, 43, 47, 51, 55, 60, 64};

class Bits {
public:
    explicit Bits(const std::uint8_t* block) : block_(block) {}

    int next() {
        const int bit = block_[at_ / 8] >> at_ % 8 & 1;
        ++at_;
        return bit;
    }

    int next(int count) {
        int number = 0;
        for (int i = 0; i < count; ++i) number |= next() << i;
        return number;
    }

private:
    const std::uint8_t* block_;
    int at_ = 0;
};

// "r0[9:0]" stores bit 0 first, "r0[10:15]" bit 15.
std::vector<Field> fields_of(const std::string& text) {
    std::vector<Field> fields;
    for (std::size_t at = 0; at < text.size(); at = text.find(' ', at), at += at < text.size()) {
        const std::size_t colon = text.find_first_of(":]", at);
        const int left = std::atoi(text.c_str() + at + 3);
        const int right = text[colon] == ':' ? std::atoi(text.c_str() + colon + 1) : left;
        fields.push_back({text[at], text[at + 1] - '0', right, left});
    }
    return fields;
}

int with_sign(int number, int bits) { return number >> (bits - 1) & 1 ? number - (1 << bits) : number; }

using Endpoint = std::array<int, 3>;
using Endpoints = std::array<Endpoint, 4>;

Endpoints read_endpoints(Bits& bits, const Mode& mode) {
    Endpoints endpoints{};
    for (const Field& field : fields_of(mode.fields)) {
        const std::size_t channel = field.channel == 'r' ? 0 : field.channel == 'g' ? 1 : 2;
        int& number = endpoints[static_cast<std::size_t>(field.endpoint)][channel];
        const int step = field.first <= field.last ? 1 : -1;
        for (int bit = field.first; bit != field.last + step; bit += step) number |= bits.next() << bit;
    }
    return endpoints;
}

// What the stored endpoints stand for, with the sign where the format has one.
Endpoints made_whole(Endpoints endpoints, const Mode& mode, bool is_signed) {
    const int mask = (1 << mode.endpoint_bits) - 1;
    for (std::size_t i = 0; i < 4; ++i) {
        for (std::size_t channel = 0; channel < 3; ++channel) {
            int& number = endpoints[i][channel];
            if (i > 0 && mode.differences) {
                number = (with_sign(number, mode.difference_bits[channel]) + endpoints[0][channel]) & mask;
            }
        }
    }
    if (!is_signed) return endpoints;
    for (Endpoint& endpoint : endpoints) {
        for (int& number : endpoint) number = with_sign(number, mode.endpoint_bits);
    }
    return endpoints;
}

int spread_unsigned(int number, int bits) {
    if (bits >= 15 || number == 0) return number;
    if (number == (1 << bits) - 1) return 0xFFFF;
    return ((number << 16) + 0x8000) >> bits;
}

int spread_signed(int number, int bits) {
    if (bits >= 16 || number == 0) return number;
    const int magnitude = std::abs(number);
    const int spread =
        magnitude >= (1 << (bits - 1)) - 1 ? 0x7FFF : ((magnitude << 15) + 0x4000) >> (bits - 1);
    return number < 0 ? -spread : spread;
}

double finished(int number, bool is_signed) {
    if (!is_signed) return value_of_half(static_cast<std::uint16_t>(number * 31 >> 6));
    const double magnitude = value_of_half(static_cast<std::uint16_t>(std::abs(number) * 31 >> 5));
    return number < 0 ? -magnitude : magnitude;
}

const Mode* mode_of(const std::uint8_t* block) {
    for (const Mode& mode : kModes) {
        if ((block[0] & ((1u << mode.bits) - 1)) == mode.number) return &mode;
    }
    return nullptr;
}

}  // namespace

double value_of_half(std::uint16_t half) {
    const int exponent = half >> 10 & 31;
    const int fraction = half & 1023;
    if (exponent == 31) throw std::invalid_argument("no number");
    const double value =
        exponent == 0 ? std::ldexp(fraction, -24) : std::ldexp(1024 + fraction, exponent - 25);
    return half >> 15 ? -value : value;
}

Texels decode_bc6h(const std::uint8_t* block, bool is_signed) {
    Texels texels;
    const Mode* const mode = mode_of(block);
    if (!mode) return texels;
    Bits bits(block);
    bits.next(mode->bits);
    const Endpoints endpoints = made_whole(read_endpoints(bits, *mode), *mode, is_signed);
    const auto partition = static_cast<std::size_t>(mode->regions == 2 ? bits.next(5) : 0);
    const int index_bits = mode->regions == 2 ? 3 : 4;
    for (std::size_t i = 0; i < 16; ++i) {
        const bool second = mode->regions == 2 && kPartitions[partition][i] == '1';
        const bool anchor =
            i == 0 || (mode->regions == 2 && i == static_cast<std::size_t>(kAnchors[partition]));
        const int index = bits.next(anchor ? index_bits - 1 : index_bits);
        const int weight = mode->regions == 2 ? kWeights3[index] : kWeights4[index];
        const auto channel = [&](std::size_t c) {
            const auto spread = is_signed ? spread_signed : spread_unsigned;
            const int from = spread(endpoints[second ? 2 : 0][c], mode->endpoint_bits);
            const int to = spread(endpoints[second ? 3 : 1][c], mode->endpoint_bits);
            return finished((from * (64 - weight) + to * weight + 32) >> 6, is_signed);
        };
        texels[i] = {channel(0), channel(1), channel(2), 1};
    }
    return texels;
}

}  // namespace plain
