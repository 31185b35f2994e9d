// SPDX-License-Identifier: Apache-2.0

#include "info/DDSTable.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <numeric>
#include <optional>
#include <string>
#include <string_view>

#include "dds/dds_file.h"
#include "dds/pixel_layout.h"
#include "info/DDSHeaders.h"
#include "info/LevelExtent.h"
#include "info/check_words.h"

namespace pelto::info {

namespace {

using dds::Header;
using dds::LoaderLayout;
using Result = vTextureCheck::Result;

// Of a format that the loader does not take, but that is known.
std::string who_takes(const vPixelFormat& format) {
    return has_picture(format) ? "vDDSLevels and pelto sheet do" : "vDDSLevels does";
}

Result unsupported_format(const DDSHeaders& headers) {
    const std::size_t offset = dds_format_offset(headers);
    vPixelFormat format;
    if (!find_dds_format(headers, format)) {
        return failure(vTextureCheck::eUnsupportedFormat, offset,
                       dds_format_words(headers) + " is not supported");
    }
    return failure(
        vTextureCheck::eUnsupportedFormat, offset,
        std::string("is ").append(format.name) + ", which vDDSImage does not take: " + who_takes(format));
}

// The loader takes a depth that is no positive number for 1.
std::uint32_t depth_of(const Header& header) {
    return header.depth == 0 || header.depth > INT_MAX ? 1 : header.depth;
}

std::uint64_t slice_bytes(const LoaderLayout& layout, std::uint64_t width, std::uint64_t height) {
    if (layout.compressed) {
        return product(product((width + 3) / 4, (height + 3) / 4), dds::block_size(layout.format));
    }
    // All pixels have whole bytes.
    const auto pixel = static_cast<std::uint64_t>(layout.components * layout.bits_per_component) / 8;
    return product(product(width, height), pixel);
}

// The loader counts the blocks of a slice in 32 bits, and its other pixels by their bits, in 64.
bool is_countable(const LoaderLayout& layout, const vDDSLevel& level) {
    const std::uint64_t slice = slice_bytes(layout, level.width, level.height);
    const std::uint64_t most = layout.compressed ? UINT32_MAX : UINT64_MAX / 8;
    return level.bytes != kUncountable && slice <= most;
}

std::vector<vDDSLevel> levels_of(const DDSHeaders& headers, const LoaderLayout& layout, int faces) {
    const Header& header = headers.header;
    const std::uint32_t count = std::max(header.mipMapCount, 1u);
    std::vector<vDDSLevel> levels;
    levels.reserve(static_cast<std::size_t>(faces) * count);
    std::uint64_t offset = headers.loader_data;
    for (int face = 0; face < faces; ++face) {
        LevelExtent extent = {header.width, header.height, depth_of(header)};
        for (std::uint32_t i = 0; i < count; ++i, extent = extent.next()) {
            const auto [width, height, depth] = extent;
            const std::uint64_t bytes = product(slice_bytes(layout, width, height), depth);
            levels.push_back({offset, bytes, width, height, depth, nullptr});
            offset = sum(offset, bytes);
        }
    }
    return levels;
}

std::string level_words(int level, int face, int faces) {
    std::string words = "level " + std::to_string(level);
    if (faces > 1) words.append(" of face ").append(std::to_string(face));
    return words;
}

std::uint64_t total_bytes(const std::vector<vDDSLevel>& levels) {
    return std::accumulate(
        levels.begin(), levels.end(), std::uint64_t{0},
        [](std::uint64_t total, const vDDSLevel& level) { return sum(total, level.bytes); });
}

std::optional<Result> size_fault(const DDSTable& table, const LoaderLayout& layout,
                                 const vTextureLimits& limits) {
    for (const vDDSLevel& level : table.levels) {
        if (is_countable(layout, level)) continue;
        Result result = failure(vTextureCheck::eAbsurdSize, kDDSWidth,
                                "its extent of " + std::to_string(level.width) + " x " +
                                    std::to_string(level.height) + " x " + std::to_string(level.depth) +
                                    " pixels takes more bytes than the loader can count");
        result.totalBytes = kUncountable;
        return result;
    }
    const std::uint64_t total = total_bytes(table.levels);
    if (total == kUncountable || total > limits.maxBytes)
        return too_many_bytes(total, kDDSWidth, limits.maxBytes);
    return std::nullopt;
}

Result result_of(const DDSTable& table, std::uint64_t length) {
    Result result;
    const int levels = static_cast<int>(table.levels.size()) / table.faces;
    const auto lost = std::find_if(table.levels.begin(), table.levels.end(), [&](const vDDSLevel& level) {
        return sum(level.offset, level.bytes) > length;
    });
    const vDDSLevel& last = table.levels.back();
    if (lost != table.levels.end()) {
        const int number = static_cast<int>(lost - table.levels.begin());
        const int face = number / levels;
        const int level = number % levels;
        result = cut_short(level_words(level, face, table.faces), sum(lost->offset, lost->bytes), length);
        result.face = face;
        result.level = level;
        result.missingBytes = sum(last.offset, last.bytes) - length;
        if (&*lost != &last) {
            result.sentence += "; " + std::to_string(result.missingBytes) + " bytes are missing in all";
        }
    }
    result.totalBytes = total_bytes(table.levels);
    return result;
}

}  // namespace

DDSTable read_dds_table(const unsigned char* start, std::size_t available, std::uint64_t length,
                        const vTextureLimits& limits) {
    DDSTable table;
    DDSHeaders headers;
    const auto refused = [&](const Result& result) {
        table.result = result;
        table.levels.clear();
        table.faces = 0;
        return table;
    };
    if (const auto fault = length_fault(length, limits)) return refused(*fault);
    const std::string_view bytes(reinterpret_cast<const char*>(start), available);
    if (const auto fault = read_dds_headers(bytes, headers)) return refused(*fault);
    const std::optional<LoaderLayout> layout =
        dds::find_pixel_layout(headers.header.pixelFormat, headers.extension.dxgiFormat);
    if (!layout) return refused(unsupported_format(headers));
    table.has_format = true;
    table.format = layout->format;
    if (const auto fault = dds_extent_fault(headers.header, depth_of(headers.header), limits))
        return refused(*fault);

    table.faces = (headers.header.caps2 & dds::kCaps2Cubemap) != 0 ? dds::kCubeFaces : 1;
    table.levels = levels_of(headers, *layout, table.faces);
    if (const auto fault = size_fault(table, *layout, limits)) return refused(*fault);
    table.result = result_of(table, length);
    return table;
}

}  // namespace pelto::info
