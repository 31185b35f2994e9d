// SPDX-License-Identifier: Apache-2.0

#include "pelto/sheet_texture.h"

#include <cstring>
#include <stdexcept>

namespace sheet {

using namespace TOZ::SUPPORTED_FORMAT;
using plain::Texel;
using support::Bytes;

namespace {

double float_at(const std::uint8_t* bytes) {
    float number;
    std::memcpy(&number, bytes, sizeof number);
    return number;
}

double half_at(const std::uint8_t* bytes) {
    return plain::value_of_half(static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8));
}

Texel pixel(Type format, const std::uint8_t* bytes) {
    const auto part = [&](std::size_t i) { return bytes[i] / 255.0; };
    switch (format) {
        case LUMINANCE8:
            return {part(0), 0, 0, 1};
        case RGB8:
            return {part(0), part(1), part(2), 1};
        case RGBA8:
            return {part(0), part(1), part(2), part(3)};
        case BGRA8:
            return {part(2), part(1), part(0), part(3)};
        case RGBA16F:
            return {half_at(bytes), half_at(bytes + 2), half_at(bytes + 4), half_at(bytes + 6)};
        case R32F:
            return {float_at(bytes), 0, 0, 1};
        case RGB32F:
            return {float_at(bytes), float_at(bytes + 4), float_at(bytes + 8), 1};
        case RGBA32F:
            return {float_at(bytes), float_at(bytes + 4), float_at(bytes + 8), float_at(bytes + 12)};
        default:
            throw std::invalid_argument("no format of pixels");
    }
}

// One of 14 powers of two, times 1 to 2, with either sign.
void make_halves_moderate(Bytes& bytes) {
    for (std::size_t i = 1; i < bytes.size(); i += 2) {
        const int exponent = 5 + (bytes[i] >> 2 & 31) % 14;
        bytes[i] = static_cast<std::uint8_t>((bytes[i] & 0x83) | exponent << 2);
    }
}

void make_floats_moderate(Bytes& bytes) {
    for (std::size_t i = 3; i < bytes.size(); i += 4) {
        const int exponent = 117 + bytes[i] % 14;
        bytes[i - 1] = static_cast<std::uint8_t>((bytes[i - 1] & 0x7F) | (exponent & 1) << 7);
        bytes[i] = static_cast<std::uint8_t>((bytes[i] & 0x80) | exponent >> 1);
    }
}

}  // namespace

const std::vector<Format>& formats() {
    using namespace support;
    static const std::vector<Format> all = {
        {"LUMINANCE8", LUMINANCE8, plain_header(kRgb, 8).with_masks(0xFF, 0, 0, 0), 1, false},
        {"RGB8", RGB8, plain_header(kRgb, 24).with_masks(0xFF, 0xFF00, 0xFF0000, 0), 3, false},
        {"RGBA8", RGBA8, plain_header(kRgbWithAlpha, 32).with_masks(0xFF, 0xFF00, 0xFF0000, 0xFF000000), 4,
         false},
        {"BGRA8", BGRA8, dxgi_header(87), 4, false},
        {"RGBA16F", RGBA16F, dxgi_header(10), 8, false},
        {"R32F", R32F, dxgi_header(41), 4, false},
        {"RGB32F", RGB32F, dxgi_header(6), 12, false},
        {"RGBA32F", RGBA32F, fourcc_header(116), 16, false},
        {"DXT1", DXT1, fourcc_header(four_cc("DXT1")), 8, true},
        {"DXT3", DXT3, fourcc_header(four_cc("DXT3")), 16, true},
        {"DXT5", DXT5, fourcc_header(four_cc("DXT5")), 16, true},
        {"BC4U", BC4U, dxgi_header(80), 8, true},
        {"BC4S", BC4S, dxgi_header(81), 8, true},
        {"BC5U", BC5U, dxgi_header(83), 16, true},
        {"BC5S", BC5S, dxgi_header(84), 16, true},
        {"BC6H_SF16", BC6H_SF16, dxgi_header(96), 16, true},
        {"BC6H_UF16", BC6H_UF16, dxgi_header(95), 16, true},
    };
    return all;
}

const Format& format_of(Type number) { return formats().at(static_cast<std::size_t>(number)); }

std::size_t level_size(const Format& format, std::size_t width, std::size_t height) {
    if (!format.blocks) return width * height * format.unit;
    return ((width + 3) / 4) * ((height + 3) / 4) * format.unit;
}

Bytes random_level(const Format& format, std::size_t width, std::size_t height, std::uint32_t seed) {
    Bytes bytes = support::random_bytes(level_size(format, width, height), seed);
    if (format.number == RGBA16F) make_halves_moderate(bytes);
    if (format.number == R32F || format.number == RGB32F || format.number == RGBA32F) {
        make_floats_moderate(bytes);
    }
    return bytes;
}

std::vector<Texel> texels_of(const Format& format, std::size_t width, std::size_t height,
                             const std::uint8_t* bytes) {
    std::vector<Texel> texels;
    const std::size_t across = (width + 3) / 4;
    for (std::size_t y = 0; y < height; ++y) {
        for (std::size_t x = 0; x < width; ++x) {
            if (format.blocks) {
                const std::uint8_t* const block = bytes + (y / 4 * across + x / 4) * format.unit;
                texels.push_back(plain::decode_block(format.number, block)[y % 4 * 4 + x % 4]);
            } else {
                texels.push_back(pixel(format.number, bytes + (y * width + x) * format.unit));
            }
        }
    }
    return texels;
}

}  // namespace sheet
