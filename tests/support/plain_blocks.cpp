// SPDX-License-Identifier: Apache-2.0

#include "support/plain_blocks.h"

#include <algorithm>
#include <stdexcept>

namespace plain {
namespace {

using Channel = std::array<double, 16>;

std::uint64_t number(const std::uint8_t* bytes, int count) {
    std::uint64_t number = 0;
    for (int i = count; i-- > 0;) number = number << 8 | bytes[i];
    return number;
}

Texel colour_565(std::uint64_t packed) {
    return {static_cast<double>(packed >> 11 & 31) / 31, static_cast<double>(packed >> 5 & 63) / 63,
            static_cast<double>(packed & 31) / 31, 1};
}

Texel mixed(const Texel& a, const Texel& b, double part_of_b) {
    const auto mix = [&](double from, double to) { return from + (to - from) * part_of_b; };
    return {mix(a.red, b.red), mix(a.green, b.green), mix(a.blue, b.blue), 1};
}

// `with_transparent`: the first colour not being the greater one stands for three colours and a transparent
// one.
Texels decode_colours(const std::uint8_t* block, bool with_transparent) {
    const std::uint64_t first = number(block, 2);
    const std::uint64_t second = number(block + 2, 2);
    const Texel a = colour_565(first);
    const Texel b = colour_565(second);
    std::array<Texel, 4> colours = {a, b, mixed(a, b, 1.0 / 3), mixed(a, b, 2.0 / 3)};
    if (with_transparent && first <= second) colours = {a, b, mixed(a, b, 0.5), {0, 0, 0, 0}};
    const std::uint64_t indices = number(block + 4, 4);
    Texels texels;
    for (std::size_t i = 0; i < 16; ++i) texels[i] = colours[indices >> (2 * i) & 3];
    return texels;
}

Channel decode_explicit_alpha(const std::uint8_t* block) {
    Channel alpha;
    for (std::size_t i = 0; i < 16; ++i)
        alpha[i] = static_cast<double>(number(block, 8) >> (4 * i) & 15) / 15;
    return alpha;
}

// The least number of a signed byte means the same as the one above it.
double normalised(std::uint8_t byte, bool is_signed) {
    if (!is_signed) return byte / 255.0;
    return std::max<int>(static_cast<std::int8_t>(byte), -127) / 127.0;
}

Channel decode_channel(const std::uint8_t* block, bool is_signed) {
    const double a = normalised(block[0], is_signed);
    const double b = normalised(block[1], is_signed);
    std::array<double, 8> values = {a, b};
    if (a > b) {
        for (std::size_t i = 1; i <= 6; ++i) values[i + 1] = a + (b - a) * static_cast<double>(i) / 7;
    } else {
        for (std::size_t i = 1; i <= 4; ++i) values[i + 1] = a + (b - a) * static_cast<double>(i) / 5;
        values[6] = is_signed ? -1 : 0;
        values[7] = 1;
    }
    const std::uint64_t indices = number(block + 2, 6);
    Channel channel;
    for (std::size_t i = 0; i < 16; ++i) channel[i] = values[indices >> (3 * i) & 7];
    return channel;
}

Texels with_alpha(Texels texels, const Channel& alpha) {
    for (std::size_t i = 0; i < 16; ++i) texels[i].alpha = alpha[i];
    return texels;
}

Texels of_channels(const Channel& red, const Channel& green) {
    Texels texels;
    for (std::size_t i = 0; i < 16; ++i) texels[i] = {red[i], green[i], 0, 1};
    return texels;
}

}  // namespace

Texels decode_block(TOZ::SUPPORTED_FORMAT::Type format, const std::uint8_t* block) {
    switch (format) {
        case TOZ::SUPPORTED_FORMAT::DXT1:
            return decode_colours(block, true);
        case TOZ::SUPPORTED_FORMAT::DXT3:
            return with_alpha(decode_colours(block + 8, false), decode_explicit_alpha(block));
        case TOZ::SUPPORTED_FORMAT::DXT5:
            return with_alpha(decode_colours(block + 8, false), decode_channel(block, false));
        case TOZ::SUPPORTED_FORMAT::BC4U:
            return of_channels(decode_channel(block, false), {});
        case TOZ::SUPPORTED_FORMAT::BC4S:
            return of_channels(decode_channel(block, true), {});
        case TOZ::SUPPORTED_FORMAT::BC5U:
            return of_channels(decode_channel(block, false), decode_channel(block + 8, false));
        case TOZ::SUPPORTED_FORMAT::BC5S:
            return of_channels(decode_channel(block, true), decode_channel(block + 8, true));
        case TOZ::SUPPORTED_FORMAT::BC6H_SF16:
            return decode_bc6h(block, true);
        case TOZ::SUPPORTED_FORMAT::BC6H_UF16:
            return decode_bc6h(block, false);
        default:
            throw std::invalid_argument("no block format");
    }
}

}  // namespace plain
