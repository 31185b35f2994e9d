// SPDX-License-Identifier: Apache-2.0

#include "dds_sample.h"

#include <bit>
#include <cmath>
#include <cstring>

namespace bench {

namespace {

struct Kind {
    std::uint32_t flags;
    const char* four_cc;
    std::uint32_t bits;  // of a pixel; of a block divided by 16 for compressed data
    std::uint32_t masks[4];
};

Kind kind_of(Pixels pixels) {
    switch (pixels) {
        case Pixels::kBC1:
            return {0x4, "DXT1", 4, {}};
        case Pixels::kBC2:
            return {0x4, "DXT3", 8, {}};
        case Pixels::kBC3:
            return {0x4, "DXT5", 8, {}};
        case Pixels::kBC4:
            return {0x4, "BC4U", 4, {}};
        case Pixels::kBC5:
            return {0x4, "BC5U", 8, {}};
        case Pixels::kRGBA8:
            return {0x41, "\0\0\0\0", 32, {0xFF, 0xFF00, 0xFF0000, 0xFF000000}};
        case Pixels::kBGRA8:
            return {0x41, "\0\0\0\0", 32, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}};
        case Pixels::kBGR8:
            return {0x40, "\0\0\0\0", 24, {0xFF0000, 0xFF00, 0xFF, 0}};
    }
    return {};
}

void put(std::string& file, std::size_t offset, std::uint32_t value) {
    std::memcpy(&file[offset], &value, 4);
}

}  // namespace

Sample make_sample(Pixels pixels, std::size_t bytes, bool cube, bool mips) {
    const Kind kind = kind_of(pixels);
    const std::size_t faces = cube ? 6 : 1;
    const double area = static_cast<double>(bytes / faces) * 8 / kind.bits / (mips ? 4.0 / 3 : 1);
    const auto side = std::uint32_t{4} * static_cast<std::uint32_t>(std::sqrt(area) / 4);
    const std::uint32_t levels = mips ? static_cast<std::uint32_t>(std::bit_width(side)) : 1;

    Sample sample;
    for (std::size_t face = 0; face < faces; ++face) {
        for (std::uint32_t level = 0, extent = side; level < levels; ++level) {
            const bool compressed = kind.flags == 0x4;
            const std::size_t stored = compressed ? (extent + 3) / 4 * std::size_t{4} : extent;
            sample.level_sizes.push_back(stored * stored * kind.bits / 8);
            sample.bytes += sample.level_sizes.back();
            extent = extent > 1 ? extent / 2 : 1;
        }
    }

    sample.file.resize(128 + sample.bytes);
    std::memcpy(sample.file.data(), "DDS ", 4);
    put(sample.file, 4, 124);
    put(sample.file, 12, side);
    put(sample.file, 16, side);
    put(sample.file, 28, levels);
    put(sample.file, 76, 32);
    put(sample.file, 80, kind.flags);
    std::memcpy(&sample.file[84], kind.four_cc, 4);
    put(sample.file, 88, kind.bits);
    for (std::size_t i = 0; i < 4; ++i) put(sample.file, 92 + 4 * i, kind.masks[i]);
    put(sample.file, 112, cube ? 0x200 : 0);
    std::uint32_t noise = 1;
    for (std::size_t i = 128; i < sample.file.size(); ++i) {
        noise = noise * 1664525 + 1013904223;
        sample.file[i] = static_cast<char>(noise >> 24);
    }
    return sample;
}

}  // namespace bench
