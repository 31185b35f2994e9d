// SPDX-License-Identifier: Apache-2.0

#include "pixels/plain_decode.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace plain_decode {

namespace {

using Format = vPixelFormat;

std::int64_t two_to_the(int power) { return std::int64_t{1} << power; }

std::int64_t value_of_two_complement(const Number& number) {
    const std::int64_t value = number.bits;
    return value < two_to_the(number.count - 1) ? value : value - two_to_the(number.count);
}

// The fraction that a UNORM or SNORM number stands for.
struct Fraction {
    std::int64_t over;
    std::int64_t under;
};

Fraction fraction_of(const Number& number) {
    if (number.kind == Format::eUNorm) return {number.bits, two_to_the(number.count) - 1};
    const std::int64_t value = value_of_two_complement(number);
    if (number.count == 1) return {value, 1};
    const std::int64_t under = two_to_the(number.count - 1) - 1;
    return {std::max(value, -under), under};
}

bool is_small_nan(const Number& number, int mantissa_bits) {
    const std::uint32_t magnitude = number.bits & 0x7FFFu;
    return magnitude >> mantissa_bits == 31 && magnitude % (1u << mantissa_bits) != 0;
}

int mantissa_bits_of(int count) { return count == 16 ? 10 : count == 11 ? 6 : 5; }

// Of a float that is a number, or infinity.
double value_of_float(const Number& number) {
    if (number.kind == Format::eSharedExponent) {
        return std::ldexp(static_cast<double>(number.bits) / 512.0, number.shared_exponent - 15);
    }
    if (number.count == 32) return std::bit_cast<float>(number.bits);
    const int mantissa_bits = mantissa_bits_of(number.count);
    const bool negative = number.count == 16 && number.bits >= 0x8000;
    const std::uint32_t magnitude = number.bits & 0x7FFF;
    const int exponent = static_cast<int>(magnitude >> mantissa_bits);
    const double fraction =
        static_cast<double>(magnitude % (1u << mantissa_bits)) / static_cast<double>(1u << mantissa_bits);
    const double value = exponent == 31  ? HUGE_VAL
                         : exponent == 0 ? std::ldexp(fraction, -14)
                                         : std::ldexp(1.0 + fraction, exponent - 15);
    return negative ? -value : value;
}

bool is_nan(const Number& number) {
    if (number.kind == Format::eSharedExponent) return false;
    if (number.count == 32) return (number.bits & 0x7FFFFFFF) > 0x7F800000;
    return is_small_nan(number, mantissa_bits_of(number.count));
}

// Whether no float is nearer to over / under. Products of a float and `under`, up to 24 bits, are exact.
bool is_nearest(float element, const Fraction& fraction) {
    const auto distance = [&](float value) {
        return std::fabs(static_cast<double>(value) * static_cast<double>(fraction.under) -
                         static_cast<double>(fraction.over));
    };
    return distance(element) <= distance(std::nextafter(element, 2.0F)) &&
           distance(element) <= distance(std::nextafter(element, -2.0F));
}

}  // namespace

std::uint32_t read_bits(const support::Bytes& bytes, std::size_t first, int count) {
    std::uint32_t number = 0;
    for (int i = 0; i < count; ++i) {
        const std::size_t bit = first + static_cast<std::size_t>(i);
        number |= static_cast<std::uint32_t>(bytes.at(bit / 8) >> bit % 8 & 1) << i;
    }
    return number;
}

void write_bits(support::Bytes& bytes, std::size_t first, int count, std::uint32_t number) {
    for (int i = 0; i < count; ++i) {
        const std::size_t bit = first + static_cast<std::size_t>(i);
        const auto mask = static_cast<std::uint8_t>(1 << bit % 8);
        bytes.at(bit / 8) =
            static_cast<std::uint8_t>((bytes.at(bit / 8) & ~mask) | (number >> i & 1 ? mask : 0));
    }
}

Pixel pixel_of(const vPixelFormat& format, const support::Bytes& row, std::size_t x) {
    const auto byte = [&](std::size_t at) { return Number{row.at(at), 8, Format::eUNorm, 0}; };
    const std::size_t pair = x / 2 * 4;
    if (std::strcmp(format.name, "R8G8_B8G8_UNORM") == 0) {
        return {byte(pair), byte(pair + (x % 2 == 0 ? 1 : 3)), byte(pair + 2), std::nullopt};
    }
    if (std::strcmp(format.name, "G8R8_G8B8_UNORM") == 0) {
        return {byte(pair + 1), byte(pair + (x % 2 == 0 ? 0 : 2)), byte(pair + 3), std::nullopt};
    }
    if (std::strcmp(format.name, "R1_UNORM") == 0) {
        const std::uint32_t bit = (row.at(x / 8) & (128u >> x % 8)) != 0 ? 1 : 0;
        return {Number{bit, 1, Format::eUNorm, 0}, std::nullopt, std::nullopt, std::nullopt};
    }
    Pixel pixel;
    std::optional<Number> luminance;
    int shared_exponent = 0;
    std::size_t bit = x * format.blockBytes * 8;
    for (const Format::Channel& channel : format.channels) {
        const Number number{read_bits(row, bit, channel.bits), channel.bits, channel.kind, 0};
        bit += channel.bits;
        if (channel.letter == 'R') pixel[0] = number;
        if (channel.letter == 'G') pixel[1] = number;
        if (channel.letter == 'B') pixel[2] = number;
        if (channel.letter == 'A') pixel[3] = number;
        if (channel.letter == 'L') luminance = number;
        if (channel.letter == 'E') shared_exponent = static_cast<int>(number.bits);
    }
    if (luminance) {
        const bool bump = pixel[0].has_value();
        pixel[2] = luminance;
        if (!bump) pixel[0] = pixel[1] = luminance;
    }
    for (auto& number : pixel) {
        if (number) number->shared_exponent = shared_exponent;
    }
    return pixel;
}

bool is_right(std::uint32_t element, std::uint32_t most, const Number& number) {
    const std::int64_t half_below = 2 * std::int64_t{element} - 1;
    const std::int64_t half_above = 2 * std::int64_t{element} + 1;
    switch (number.kind) {
        case Format::eUNorm: {
            const auto [over, under] = fraction_of(number);
            const std::int64_t twice = 2 * over * most;
            return half_below * under <= twice && twice < half_above * under;
        }
        case Format::eSNorm: {
            const auto [over, under] = fraction_of(number);
            const std::int64_t twice = (over + under) * most;
            return half_below * under <= twice && twice < half_above * under;
        }
        case Format::eUInt:
            return element == std::min(number.bits, most);
        case Format::eSInt: {
            const std::int64_t value = value_of_two_complement(number);
            return element == (value < 0 ? 0 : value > most ? most : value);
        }
        default:
            break;
    }
    if (is_nan(number)) return element == 0;
    const double value = value_of_float(number);
    if (value <= 0) return element == 0;
    if (value >= 1) return element == most;
    const double twice = 2 * value * most;
    return static_cast<double>(half_below) <= twice && twice < static_cast<double>(half_above);
}

bool is_right_float(std::uint32_t element, const Number& number) {
    const auto value = std::bit_cast<float>(element);
    switch (number.kind) {
        case Format::eUNorm:
        case Format::eSNorm:
            return is_nearest(value, fraction_of(number));
        case Format::eUInt:
            return value == static_cast<float>(number.bits);
        case Format::eSInt:
            return value == static_cast<float>(value_of_two_complement(number));
        default:
            break;
    }
    if (number.count == 32) return element == number.bits;
    if (is_nan(number)) {
        const int mantissa_bits = mantissa_bits_of(number.count);
        const std::uint32_t sign = number.count == 16 && number.bits >= 0x8000 ? 0x80000000 : 0;
        const std::uint32_t mantissa = number.bits % (1u << mantissa_bits) << (23 - mantissa_bits);
        return element == (sign | 0x7F800000 | mantissa);
    }
    return element == std::bit_cast<std::uint32_t>(static_cast<float>(value_of_float(number)));
}

}  // namespace plain_decode
