// SPDX-License-Identifier: Apache-2.0

#include "vTextureUtils.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <new>

#include "CheckFailure.h"
#include "pixels/ChannelReorder.h"
#include "pixels/pixel_widening.h"

namespace {

using Extent = TOZ::vTVec3<unsigned int, 0>;

// The lines under which failed checks of this file are known to those who filter reports. They stay the same
// when the code moves.
constexpr int kLineNotCompressed = 125;
constexpr int kLineFormatNotSupported = 250;

struct ConverterLines {
    int data;
    int result;
};
constexpr ConverterLines kLinesRGB8 = {356, 363};
constexpr ConverterLines kLinesRGB32F = {383, 390};
constexpr ConverterLines kLinesBGR8 = {411, 418};
constexpr ConverterLines kLinesBGRA8 = {438, 445};

constexpr int kLastFormat = 64;
constexpr int kLastClientType = 36;

struct SizeClass {
    unsigned char bytes;
    std::initializer_list<int> members;
};

// The bytes of each member by its value; 0 for those in no class.
template <int Last>
constexpr auto sizes_by_value(std::initializer_list<SizeClass> classes) {
    std::array<unsigned char, static_cast<std::size_t>(Last) + 1> sizes{};
    for (const SizeClass& size_class : classes) {
        for (const int member : size_class.members)
            sizes[static_cast<std::size_t>(member)] = size_class.bytes;
    }
    return sizes;
}

constexpr auto kFormatPixelBytes = sizes_by_value<kLastFormat>({
    {1, {1, 2, 8, 11}},
    {2, {3, 9, 12, 15, 18, 21, 24, 27, 50}},
    {3, {4, 6, 13, 49}},
    {4, {5, 7, 10, 14, 16, 19, 22, 25, 28, 30, 34, 38, 42, 43, 45, 47, 48}},
    {8, {17, 20, 23, 26, 29, 31, 35, 39, 44, 46}},
    {12, {32, 36, 40}},
    {16, {33, 37, 41}},
});

constexpr auto kFormatBlockBytes = sizes_by_value<kLastFormat>({
    {8, {51, 52, 57, 58}},
    {16, {53, 54, 55, 56, 59, 60, 61, 62, 63, 64}},
});

constexpr auto kClientPixelBytes = sizes_by_value<kLastClientType>({
    {1, {1, 25, 26}},
    {2, {2, 7, 27, 28, 29, 30, 31, 32}},
    {3, {3, 4}},
    {4, {5, 6, 8, 13, 19, 33, 34, 35, 36}},
    {6, {9, 10}},
    {8, {11, 12, 14, 20}},
    {12, {15, 16, 21, 22}},
    {16, {17, 18, 23, 24}},
});

template <std::size_t N>
constexpr unsigned int size_of(const std::array<unsigned char, N>& sizes, int value) {
    return value < 0 || value >= static_cast<int>(N) ? 0 : sizes[static_cast<std::size_t>(value)];
}

constexpr unsigned int level_extent(unsigned int extent, unsigned int level) {
    return std::max(extent >> (level & 31), 1U);
}

// The last four formats have always been counted in floating point.
bool counts_blocks_in_double(vTextureFormat::Type format) { return format >= vTextureFormat::FORMAT_61; }

// The bytes of a result of `pixels` pixels, as an array-new of pixels would check them.
std::size_t checked_bytes(std::uint64_t pixels, std::size_t pixel_bytes) {
    if (pixels > static_cast<std::uint64_t>(PTRDIFF_MAX) / pixel_bytes) throw std::bad_array_new_length();
    return static_cast<std::size_t>(pixels) * pixel_bytes;
}

void swap_bgra8(const unsigned char* from, unsigned char* to, std::size_t pixels) {
    pelto::pixels::ChannelReorder({0xFF0000, 0xFF00, 0xFF, 0xFF000000}, 4).apply(from, to, pixels);
}

using Convert = void (*)(const unsigned char* from, unsigned char* to, std::size_t pixels);

unsigned char* converted(const unsigned char* iData, std::uint64_t pixels, std::size_t pixel_bytes,
                         Convert convert, const ConverterLines& lines) {
    if (iData == nullptr) {
        Check_Pointer_Failed__("iData", __FILE__, lines.data, nullptr);
        return nullptr;
    }
    unsigned char* const rgba = new unsigned char[checked_bytes(pixels, pixel_bytes)];
    if (rgba == nullptr) {
        Check_Pointer_Failed__("rgba", __FILE__, lines.result, nullptr);
        return nullptr;
    }
    convert(iData, rgba, static_cast<std::size_t>(pixels));
    return rgba;
}

}  // namespace

Extent vTextureUtils::ComputeImageSize(unsigned int width, unsigned int height, unsigned int depth,
                                       unsigned int level) {
    return {level_extent(width, level), level_extent(height, level), level_extent(depth, level)};
}

Extent vTextureUtils::ComputeImageSize(Extent size, unsigned int level) {
    return ComputeImageSize(size[0], size[1], size[2], level);
}

unsigned int vTextureUtils::ComputeImageNumPixels(unsigned int width, unsigned int height, unsigned int depth,
                                                  unsigned int level) {
    return level_extent(width, level) * level_extent(height, level) * level_extent(depth, level);
}

unsigned int vTextureUtils::ComputeImageNumPixels(Extent size, unsigned int level) {
    return ComputeImageNumPixels(size[0], size[1], size[2], level);
}

unsigned int vTextureUtils::ComputeImageSizeInBytes(unsigned int width, unsigned int height,
                                                    unsigned int depth, unsigned int level,
                                                    vTextureFormat::Type format) {
    if (IsCompressed(format)) {
        return _ComputeCompressedSize(level_extent(width, level), level_extent(height, level), format);
    }
    return _GetSizeForUncompressedFormat(format) * ComputeImageNumPixels(width, height, depth, level);
}

unsigned int vTextureUtils::ComputeImageSizeInBytes(Extent size, unsigned int level,
                                                    vTextureFormat::Type format) {
    return ComputeImageSizeInBytes(size[0], size[1], size[2], level, format);
}

unsigned int vTextureUtils::ComputeImageSizeInBytes(unsigned int width, unsigned int height,
                                                    unsigned int depth, unsigned int level,
                                                    vTextureClientDataType type) {
    return _GetSizeForUncompressedFormat(type) * ComputeImageNumPixels(width, height, depth, level);
}

unsigned int vTextureUtils::ComputeImageSizeInBytes(Extent size, unsigned int level,
                                                    vTextureClientDataType type) {
    return ComputeImageSizeInBytes(size[0], size[1], size[2], level, type);
}

unsigned int vTextureUtils::ComputeMipSizeInBytes(unsigned int width, unsigned int height, unsigned int depth,
                                                  unsigned int level, vTextureFormat::Type format) {
    return ComputeImageSizeInBytes(width, height, depth, level, format);
}

unsigned int vTextureUtils::ComputeMipmapNumber(unsigned int width, unsigned int height) {
    return static_cast<unsigned int>(std::bit_width(std::max(width, height)));
}

bool vTextureUtils::IsCompressed(const vTextureFormat::Type& format) {
    return format >= vTextureFormat::FORMAT_51 && format <= vTextureFormat::FORMAT_64;
}

vTextureClientDataType vTextureUtils::ComputeCompatibleFormat(vTextureFormat::Type format) {
    switch (format) {
        case vTextureFormat::FORMAT_30:
            return CLIENT_TYPE_19;
        case vTextureFormat::FORMAT_31:
            return CLIENT_TYPE_20;
        case vTextureFormat::FORMAT_38:
            return CLIENT_TYPE_13;
        case vTextureFormat::FORMAT_39:
            return CLIENT_TYPE_14;
        case vTextureFormat::FORMAT_41:
            return CLIENT_TYPE_17;
        default:
            return CLIENT_TYPE_23;
    }
}

unsigned char* vTextureUtils::ConvertRGB8ToRGBA8(const unsigned char* iData, std::uint64_t size) {
    return converted(iData, size / 3, 4, pelto::pixels::widen_rgb8, kLinesRGB8);
}

unsigned char* vTextureUtils::ConvertBGR8ToRGBA8(const unsigned char* iData, std::uint64_t size) {
    return converted(iData, size / 3, 4, pelto::pixels::widen_bgr8, kLinesBGR8);
}

unsigned char* vTextureUtils::ConvertBGRA8ToRGBA8(const unsigned char* iData, std::uint64_t size) {
    return converted(iData, size / 4, 4, swap_bgra8, kLinesBGRA8);
}

unsigned char* vTextureUtils::ConvertRGB32FToRGBA32F(const unsigned char* iData, std::uint64_t size) {
    return converted(iData, size / 12, 16, pelto::pixels::widen_rgb32f, kLinesRGB32F);
}

unsigned int vTextureUtils::_ComputeCompressedSize(unsigned int width, unsigned int height,
                                                   vTextureFormat::Type format) {
    if (!IsCompressed(format)) {
        CheckFailure__("Not a compressed format", __FILE__, kLineNotCompressed, nullptr);
        return 0;
    }
    const unsigned int block_bytes = size_of(kFormatBlockBytes, format);
    if (counts_blocks_in_double(format)) {
        const double blocks = std::ceil(width * 0.25) * std::ceil(height * 0.25);
        return static_cast<unsigned int>(static_cast<std::uint64_t>(blocks)) * block_bytes;
    }
    return ((width + 3) >> 2) * ((height + 3) >> 2) * block_bytes;
}

unsigned int vTextureUtils::_GetSizeForUncompressedFormat(const vTextureFormat::Type& format) {
    const unsigned int bytes = size_of(kFormatPixelBytes, format);
    if (bytes == 0) CheckFailure__("Format not supported !", __FILE__, kLineFormatNotSupported, nullptr);
    return bytes;
}

unsigned int vTextureUtils::_GetSizeForUncompressedFormat(const vTextureClientDataType& type) {
    return size_of(kClientPixelBytes, type);
}
