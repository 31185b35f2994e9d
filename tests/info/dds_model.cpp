// SPDX-License-Identifier: Apache-2.0
#include "info/dds_model.h"

#include <algorithm>
#include <bit>
#include <vTextureFormats.h>

#include "info/documented_formats.h"

namespace dds_model {

using namespace support;

namespace {

constexpr std::uint32_t kDX10 = four_cc("DX10");
constexpr std::uint32_t kFaceBits = 0xFC00;
constexpr std::uint32_t kMiscCube = 4;

Pixels by_masks(const char* name, std::uint32_t flags, std::uint32_t bits, std::uint32_t red,
                std::uint32_t green, std::uint32_t blue, std::uint32_t alpha) {
    return {name, plain_header(flags, bits).with_masks(red, green, blue, alpha)};
}

bool is_extended(const FileHeader& header) {
    return (header.pixel_format.flags & kHasFourCC) != 0 && header.pixel_format.fourcc == kDX10;
}

bool has_palette(const FileHeader& header, const std::string& format) {
    return format == "P8" && !is_extended(header);
}

}  // namespace

const std::vector<Pixels>& all_pixels() {
    static const std::vector<Pixels> all = [] {
        std::vector<Pixels> list;
        for (const auto& format : documented::kOfPixels) {
            list.push_back({std::string(format.name), dxgi_header(format.number)});
        }
        for (const auto& format : documented::kOfBlocks) {
            list.push_back({std::string(format.name), dxgi_header(format.number)});
        }
        for (const auto& format : documented::kPlanar) {
            list.push_back({std::string(format.name), dxgi_header(format.number)});
        }
        list.push_back({"ASTC_8X5_UNORM", dxgi_header(154)});
        for (const auto& [code, name] : {std::pair{"DXT1", "BC1_UNORM"},
                                         {"DXT2", "BC2_UNORM"},
                                         {"DXT3", "BC2_UNORM"},
                                         {"DXT4", "BC3_UNORM"},
                                         {"DXT5", "BC3_UNORM"},
                                         {"ATI1", "BC4_UNORM"},
                                         {"BC4S", "BC4_SNORM"},
                                         {"ATI2", "BC5_UNORM"},
                                         {"BC5S", "BC5_SNORM"},
                                         {"UYVY", "UYVY"},
                                         {"GRGB", "G8R8_G8B8_UNORM"}}) {
            const char text[5] = {code[0], code[1], code[2], code[3], 0};
            list.push_back({name, fourcc_header(four_cc(text))});
        }
        for (const auto& [number, name] : {std::pair{36U, "R16G16B16A16_UNORM"},
                                           {41U, "P8"},
                                           {110U, "R16G16B16A16_SNORM"},
                                           {113U, "R16G16B16A16_FLOAT"},
                                           {114U, "R32_FLOAT"},
                                           {116U, "R32G32B32A32_FLOAT"},
                                           {21U, "B8G8R8A8_UNORM"}}) {
            list.push_back({name, fourcc_header(number)});
        }
        list.push_back(by_masks("B8G8R8_UNORM", 0x40, 24, 0xFF0000, 0xFF00, 0xFF, 0));
        list.push_back(by_masks("R8G8B8_UNORM", 0x40, 24, 0xFF, 0xFF00, 0xFF0000, 0));
        list.push_back(by_masks("B8G8R8A8_UNORM", 0x41, 32, 0xFF0000, 0xFF00, 0xFF, 0xFF000000));
        list.push_back(by_masks("R8G8B8A8_UNORM", 0x41, 32, 0xFF, 0xFF00, 0xFF0000, 0xFF000000));
        list.push_back(by_masks("B8G8R8X8_UNORM", 0x40, 32, 0xFF0000, 0xFF00, 0xFF, 0));
        list.push_back(by_masks("B5G6R5_UNORM", 0x40, 16, 0xF800, 0x7E0, 0x1F, 0));
        list.push_back(by_masks("B10G10R10A2_UNORM", 0x41, 32, 0x3FF00000, 0xFFC00, 0x3FF, 0xC0000000));
        list.push_back(by_masks("L8_UNORM", 0x20000, 8, 0xFF, 0, 0, 0));
        list.push_back(by_masks("A8_UNORM", 0x2, 8, 0, 0, 0, 0xFF));
        list.push_back(by_masks("R8_UNORM", 0x40, 8, 0xFF, 0, 0, 0));
        list.push_back(by_masks("L4A4_UNORM", 0x20001, 8, 0xF, 0, 0, 0xF0));
        list.push_back(by_masks("R16G16_SNORM", 0x80000, 32, 0xFFFF, 0xFFFF0000, 0, 0));
        list.push_back(by_masks("P8", 0x20, 8, 0, 0, 0, 0));
        return list;
    }();
    return all;
}

File describe(const FileHeader& header, const std::string& format, std::uint64_t size) {
    const vPixelFormat& pixels = documented::named(format.c_str());
    const bool extended = is_extended(header);
    File file{};
    file.dxgi = has_palette(header, format) ? 0 : pixels.dxgi;
    const bool volume = extended ? header.resource_dimension == 4 : (header.caps2 & kVolume) != 0;
    file.dimension = volume ? 3 : extended && header.resource_dimension == 2 ? 1 : 2;
    file.width = header.width;
    file.height = header.height;
    file.depth = volume ? std::max(header.depth, 1U) : 1;
    file.layers = extended ? header.array_size : 1;
    const bool cube = extended ? (header.misc_flag & kMiscCube) != 0 : (header.caps2 & kCubeMap) != 0;
    file.face_mask = 1;
    if (cube) {
        const std::uint32_t bits = extended ? 0 : (header.caps2 & kFaceBits) >> 10;
        file.face_mask = bits == 0 ? 0x3F : bits;
    }
    file.faces = static_cast<std::uint32_t>(std::popcount(file.face_mask));
    file.levels = std::max(header.mip_count, 1U);
    const std::uint32_t mode = header.misc_flags2 & 7;
    if (extended) {
        file.alpha_mode = mode <= 4 ? static_cast<int>(mode) : 0;
    } else {
        const std::uint32_t code = header.pixel_format.flags & kHasFourCC ? header.pixel_format.fourcc : 0;
        file.alpha_mode = code == four_cc("DXT2") || code == four_cc("DXT4") ? 2 : 0;
    }
    std::uint64_t offset = extended ? 148 : 128;
    if (has_palette(header, format)) offset += 1024;
    for (std::uint32_t layer = 0; layer < file.layers; ++layer) {
        for (std::uint32_t face = 0; face < 6; ++face) {
            if ((file.face_mask >> face & 1) == 0) continue;
            for (std::uint32_t level = 0; level < file.levels; ++level) {
                const auto extent = [level](std::uint32_t base) { return std::max(base >> level, 1U); };
                Level entry{};
                entry.layer = layer;
                entry.face = face;
                entry.level = level;
                entry.width = extent(file.width);
                entry.height = extent(file.height);
                entry.depth = extent(file.depth);
                entry.offset = offset;
                entry.bytes = pixels.SliceBytes(entry.width, entry.height) * entry.depth;
                entry.row_bytes = pixels.RowBytes(entry.width);
                entry.whole = offset + entry.bytes <= size;
                offset += entry.bytes;
                file.bytes += entry.bytes;
                file.table.push_back(entry);
            }
        }
    }
    file.end = offset;
    return file;
}

FileHeader random_header(const Pixels& pixels, std::mt19937& random) {
    const auto below = [&](std::uint32_t count) { return static_cast<std::uint32_t>(random() % count); };
    FileHeader header = pixels.header.sized(1 + below(18), 1 + below(18)).with_mips(below(7));
    header.misc_flags2 = below(6);
    const bool extended = is_extended(header);
    switch (below(4)) {
        case 0:
            break;
        case 1:  // a volume
            header = header.with_depth(below(5)).with_caps2(kVolume);
            header.resource_dimension = 4;
            return header;
        case 2:  // a cube map
            header = header.with_caps2(kCubeMap | (extended ? kFaceBits : below(64) << 10));
            header.misc_flag = kMiscCube;
            break;
        case 3:
            if (extended) {
                header = header.sized(header.width, 1);
                header.resource_dimension = 2;
            }
            break;
    }
    if (below(2) == 0) header.array_size = 1 + below(4);
    // The two headers of a DX10 file need not agree.
    if (extended && below(8) == 0) header = header.with_caps2(header.caps2 ^ kCubeMap);
    if (below(8) == 0) header = header.with_depth(below(4));
    return header;
}

}  // namespace dds_model
