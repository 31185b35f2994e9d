// SPDX-License-Identifier: Apache-2.0
// The pixel converters of the texture utilities, each with what it does to one pixel.
#ifndef TESTS_TEXTURE_CONVERTERS_H
#define TESTS_TEXTURE_CONVERTERS_H

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "support/bytes.h"
#include "vTextureUtils.h"

namespace converters {

using support::Bytes;

struct Converter {
    const char* name;
    unsigned char* (*convert)(const unsigned char*, std::uint64_t);
    std::size_t old_size;  // bytes of a pixel
    std::size_t new_size;
    Bytes (*pixel)(const unsigned char*);
    int null_line;  // where a null input is reported
};

inline Bytes turned_and_opaque(const unsigned char* p) { return {p[2], p[1], p[0], 255}; }
inline Bytes opaque(const unsigned char* p) { return {p[0], p[1], p[2], 255}; }
inline Bytes turned(const unsigned char* p) { return {p[2], p[1], p[0], p[3]}; }
inline Bytes with_one(const unsigned char* p) {
    Bytes pixel(p, p + 12);
    for (unsigned char byte : std::bit_cast<std::array<unsigned char, 4>>(1.0f)) pixel.push_back(byte);
    return pixel;
}

inline constexpr Converter kRgb8 = {"RGB8", vTextureUtils::ConvertRGB8ToRGBA8, 3, 4, opaque, 356};
inline constexpr Converter kBgr8 = {"BGR8", vTextureUtils::ConvertBGR8ToRGBA8, 3, 4, turned_and_opaque, 411};
inline constexpr Converter kBgra8 = {"BGRA8", vTextureUtils::ConvertBGRA8ToRGBA8, 4, 4, turned, 438};
inline constexpr Converter kRgb32f = {"RGB32F", vTextureUtils::ConvertRGB32FToRGBA32F, 12, 16, with_one, 383};

inline constexpr Converter kAll[] = {kRgb8, kBgr8, kBgra8, kRgb32f};

/// Bytes of the result for an input of `size` bytes.
inline std::size_t result_size(const Converter& converter, std::size_t size) {
    return size / converter.old_size * converter.new_size;
}

/// The result, pixel by pixel.
inline Bytes expected_result(const Converter& converter, const unsigned char* input, std::size_t size) {
    Bytes result;
    result.reserve(result_size(converter, size));
    for (std::size_t at = 0; at + converter.old_size <= size; at += converter.old_size)
        for (std::uint8_t byte : converter.pixel(input + at)) result.push_back(byte);
    return result;
}

using Buffer = std::unique_ptr<unsigned char[]>;

inline Buffer convert(const Converter& converter, const unsigned char* input, std::uint64_t size) {
    return Buffer(converter.convert(input, size));
}

/// The bytes of the result, which is released.
inline Bytes converted(const Converter& converter, const unsigned char* input, std::size_t size) {
    const Buffer result = convert(converter, input, size);
    if (result == nullptr) return {};
    return Bytes(result.get(), result.get() + result_size(converter, size));
}

/// A block of exactly the bytes' size, which is not null even without a byte.
inline Buffer exact_copy(const unsigned char* bytes, std::size_t size) {
    Buffer copy(new unsigned char[size]);
    for (std::size_t i = 0; i < size; ++i) copy[i] = bytes[i];
    return copy;
}

}  // namespace converters

#endif
