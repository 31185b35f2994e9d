// SPDX-License-Identifier: Apache-2.0

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

#include "pixels/pixel_decode.h"

namespace pelto::pixels::reference {

namespace {

// The bits of floats: a NaN keeps its own only where no arithmetic touches it.
constexpr std::uint32_t kOne = 0x3F800000;
constexpr std::uint32_t kInfinity = 0x7F800000;

std::uint32_t read_bits(const unsigned char* block, int first, int count) {
    std::uint64_t number = 0;
    for (int byte = (first + count - 1) / 8; byte >= first / 8; --byte) number = number << 8 | block[byte];
    return static_cast<std::uint32_t>(number >> first % 8 & ((std::uint64_t{1} << count) - 1));
}

std::int64_t signed_number(std::uint32_t number, int bits) {
    const std::int64_t sign = std::int64_t{1} << (bits - 1);
    return (number ^ sign) - sign;
}

std::int64_t greatest_unorm(int bits) { return (std::int64_t{1} << bits) - 1; }

// A single bit has room for 0 and -1 alone.
std::int64_t greatest_snorm(int bits) { return bits == 1 ? 1 : greatest_unorm(bits - 1); }

// Half precision with fewer bits of mantissa, or none for the sign.
std::uint32_t bits_of_small_float(std::uint32_t number, int bits) {
    const int mantissa_bits = bits == 16 ? 10 : bits - 5;
    const std::uint32_t mantissa = number & ((1u << mantissa_bits) - 1);
    const std::uint32_t exponent = number >> mantissa_bits & 31;
    const std::uint32_t sign = number >> 15 << 31;
    const std::uint32_t widened = mantissa << (23 - mantissa_bits);
    if (exponent == 31) return sign | kInfinity | widened;
    if (exponent != 0) return sign | (exponent - 15 + 127) << 23 | widened;
    return sign | std::bit_cast<std::uint32_t>(std::ldexp(static_cast<float>(mantissa), -14 - mantissa_bits));
}

// `shared` is the exponent of all channels, where they have one.
std::uint32_t bits_of_float(std::uint32_t number, const ChannelBits& channel, std::uint32_t shared) {
    const auto ratio = [](std::int64_t value, std::int64_t greatest) {
        // Rounding twice does no harm: no such quotient is so near the middle between two floats.
        const double quotient = static_cast<double>(value) / static_cast<double>(greatest);
        return std::bit_cast<std::uint32_t>(static_cast<float>(quotient));
    };
    switch (channel.coding) {
        case Coding::kUNorm:
            return ratio(number, greatest_unorm(channel.count));
        case Coding::kSNorm: {
            const std::int64_t greatest = greatest_snorm(channel.count);
            return ratio(std::max(signed_number(number, channel.count), -greatest), greatest);
        }
        case Coding::kUInt:
            return ratio(number, 1);
        case Coding::kSInt:
            return ratio(signed_number(number, channel.count), 1);
        case Coding::kFloat:
            return channel.count == 32 ? number : bits_of_small_float(number, channel.count);
        case Coding::kSharedExponent:
            break;
    }
    constexpr int kBias = 15;
    const int exponent = static_cast<int>(shared) - kBias - channel.count;
    return std::bit_cast<std::uint32_t>(std::ldexp(static_cast<float>(number), exponent));
}

// value * most / greatest, a half upwards.
std::int64_t scaled(std::int64_t value, std::int64_t most, std::int64_t greatest) {
    return (2 * value * most + greatest) / (2 * greatest);
}

std::int64_t normalised(std::uint32_t number, const ChannelBits& channel, std::uint32_t shared,
                        std::int64_t most) {
    switch (channel.coding) {
        case Coding::kUNorm:
            return scaled(number, most, greatest_unorm(channel.count));
        case Coding::kSNorm: {
            const std::int64_t greatest = greatest_snorm(channel.count);
            const std::int64_t value = std::max(signed_number(number, channel.count), -greatest);
            return scaled(value + greatest, most, 2 * greatest);
        }
        case Coding::kUInt:
            return std::min<std::int64_t>(number, most);
        case Coding::kSInt:
            return std::clamp(signed_number(number, channel.count), std::int64_t{0}, most);
        case Coding::kFloat:
        case Coding::kSharedExponent:
            break;
    }
    const double value = std::bit_cast<float>(bits_of_float(number, channel, shared));
    if (!(value > 0)) return 0;  // NaN too
    // Exact where a half decides: the product has 40 bits at the most.
    return static_cast<std::int64_t>(std::min(value, 1.0) * static_cast<double>(most) + 0.5);
}

template <class Element, class Convert>
void decode(const PixelLayout& layout, const unsigned char* from, unsigned char* to, std::size_t pixels,
            Element one, Convert convert) {
    for (std::size_t pixel = 0; pixel < pixels; ++pixel) {
        const unsigned char* const block = from + pixel / layout.block_pixels * layout.block_bytes;
        const int place = static_cast<int>(pixel % layout.block_pixels);
        const auto read = [&](const ChannelBits& channel) {
            return read_bits(block, channel.first + channel.step * place, channel.count);
        };
        const std::uint32_t shared = layout.exponent.count == 0 ? 0 : read(layout.exponent);
        Element rgba[4] = {0, 0, 0, one};
        for (int i = 0; i < 4; ++i) {
            const ChannelBits& channel = layout.channels[i];
            if (channel.count != 0) rgba[i] = static_cast<Element>(convert(read(channel), channel, shared));
        }
        std::memcpy(to + pixel * sizeof rgba, rgba, sizeof rgba);
    }
}

template <class Element>
void decode_normalised(const PixelLayout& layout, const unsigned char* from, unsigned char* to,
                       std::size_t pixels) {
    constexpr Element kMost = static_cast<Element>(-1);
    decode<Element>(layout, from, to, pixels, kMost,
                    [](std::uint32_t number, const ChannelBits& channel, std::uint32_t shared) {
                        return normalised(number, channel, shared, kMost);
                    });
}

}  // namespace

void decode_rgba8(const PixelLayout& layout, const unsigned char* from, unsigned char* to,
                  std::size_t pixels) {
    decode_normalised<std::uint8_t>(layout, from, to, pixels);
}

void decode_rgba16(const PixelLayout& layout, const unsigned char* from, unsigned char* to,
                   std::size_t pixels) {
    decode_normalised<std::uint16_t>(layout, from, to, pixels);
}

void decode_rgba32f(const PixelLayout& layout, const unsigned char* from, unsigned char* to,
                    std::size_t pixels) {
    decode<std::uint32_t>(layout, from, to, pixels, kOne, bits_of_float);
}

}  // namespace pelto::pixels::reference
