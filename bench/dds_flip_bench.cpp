// SPDX-License-Identifier: Apache-2.0
// Flipping and channel reordering in place, beside one pass that reads and writes the same bytes.
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <vDDSImage.h>
#include <vector>

#include "paired.h"

namespace {

using TOZ::SUPPORTED_FORMAT::Type;

void in_place_pass(std::vector<char>& bytes) {
    for (char& byte : bytes) byte = static_cast<char>(byte ^ 0x55);
}

struct Kind {
    const char* name;
    Type format;
    bool compressed;
    std::size_t pixel_bits;
};

constexpr Kind kKinds[] = {
    {"BC1", TOZ::SUPPORTED_FORMAT::DXT1, true, 4}, {"BC2", TOZ::SUPPORTED_FORMAT::DXT3, true, 8},
    {"BC3", TOZ::SUPPORTED_FORMAT::DXT5, true, 8}, {"BC4", TOZ::SUPPORTED_FORMAT::BC4U, true, 4},
    {"BC5", TOZ::SUPPORTED_FORMAT::BC5U, true, 8}, {"RGBA8_lines", TOZ::SUPPORTED_FORMAT::RGBA8, false, 32},
};

void flip(benchmark::State& state, std::size_t bytes, const Kind& kind) {
    const int side = 8 * static_cast<int>(std::sqrt(static_cast<double>(bytes * 8 / kind.pixel_bits)) / 8);
    const auto extent = static_cast<std::size_t>(side);
    std::vector<char> data(extent * extent * kind.pixel_bits / 8, 'x');
    bench::paired(
        state, data.size(),
        [&](std::size_t) {
            vDDSImage::flip(data.data(), side, side, 1, data.size(), kind.format, kind.compressed);
        },
        [&](std::size_t) { in_place_pass(data); });
}

void convert(benchmark::State& state, std::size_t bytes, int components, std::uint32_t red,
             std::uint32_t green, std::uint32_t blue) {
    TOZ::DDS_PIXELFORMAT format{};
    format.dwRBitMask = red;
    format.dwGBitMask = green;
    format.dwBBitMask = blue;
    format.dwABitMask = components == 4 ? 0xFF000000 : 0;
    const auto pixels = bytes / static_cast<std::size_t>(components);
    std::vector<char> data(pixels * static_cast<std::size_t>(components), 'x');
    bench::paired(
        state, data.size(),
        [&](std::size_t) {
            vDDSImage::convertTexturePixel(data.data(), static_cast<int>(pixels), 1, 1, data.size(), format,
                                           components);
        },
        [&](std::size_t) { in_place_pass(data); });
}

const bool registered = [] {
    for (const unsigned megabytes : {1U, 64U}) {
        for (const Kind& kind : kKinds) bench::add(std::string("flip/") + kind.name, megabytes, flip, kind);
        bench::add("convertTexturePixel/BGRA8", megabytes, convert, 4, 0xFF0000U, 0xFF00U, 0xFFU);
        bench::add("convertTexturePixel/BGR8", megabytes, convert, 3, 0xFF0000U, 0xFF00U, 0xFFU);
        bench::add("convertTexturePixel/10_10_10_2", megabytes, convert, 4, 0x3FF00000U, 0xFFC00U, 0x3FFU);
    }
    return true;
}();

}  // namespace
