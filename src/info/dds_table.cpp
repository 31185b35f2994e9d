#include "info/dds_table.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <numeric>
#include <optional>
#include <string>
#include <string_view>

#include "dds/DDSFile.h"
#include "dds/pixel_layout.h"
#include "info/check_words.h"

namespace pelto::info {

namespace {

using dds::Header;
using dds::HeaderDX10;
using dds::kMagic;
using dds::PixelLayout;
using Result = vTextureCheck::Result;

constexpr std::uint32_t kMostLevels = 32;  // an extent has 32 bits

constexpr std::size_t kHeaderEnd = sizeof kMagic + sizeof(Header);

// Bytes from the start of the file.
constexpr std::size_t kHeight = sizeof kMagic + offsetof(Header, height);
constexpr std::size_t kWidth = sizeof kMagic + offsetof(Header, width);
constexpr std::size_t kDepth = sizeof kMagic + offsetof(Header, depth);
constexpr std::size_t kMipMapCount = sizeof kMagic + offsetof(Header, mipMapCount);
constexpr std::size_t kPixelFormat =
    sizeof kMagic + offsetof(Header, pixelFormat) + offsetof(TOZ::DDS_PIXELFORMAT, dwFlags);
constexpr std::size_t kFourCC =
    sizeof kMagic + offsetof(Header, pixelFormat) + offsetof(TOZ::DDS_PIXELFORMAT, dwFourCC);

struct Headers {
    Header header{};
    HeaderDX10 extension{};
    std::size_t end = kHeaderEnd;  // where the pixels begin
};

std::optional<Result> magic_fault(std::string_view start) {
    const std::string_view magic(kMagic, sizeof kMagic);
    if (start.substr(0, magic.size()) == magic) return std::nullopt;
    if (start.empty()) return failure(vTextureCheck::eNotThisKind, 0, "is empty");
    if (start.size() < magic.size() && start == magic.substr(0, start.size())) {
        return cut_short("its header", kHeaderEnd, start.size());
    }
    return failure(vTextureCheck::eNotThisKind, 0,
                   "is not a DDS file: it starts with " + in_quotes(start.substr(0, magic.size())) +
                       " instead of \"DDS \"");
}

std::optional<Result> read_headers(std::string_view start, Headers& headers) {
    if (std::optional<Result> fault = magic_fault(start)) return fault;
    if (start.size() < kHeaderEnd) return cut_short("its header", kHeaderEnd, start.size());
    std::memcpy(&headers.header, start.data() + sizeof kMagic, sizeof(Header));
    if (headers.header.pixelFormat.dwFourCC != dds::kFourCCDX10) return std::nullopt;
    headers.end += sizeof(HeaderDX10);
    if (start.size() < headers.end) return cut_short("its DX10 header", headers.end, start.size());
    std::memcpy(&headers.extension, start.data() + kHeaderEnd, sizeof(HeaderDX10));
    return std::nullopt;
}

Result unsupported_format(const Headers& headers) {
    const TOZ::DDS_PIXELFORMAT& pixel_format = headers.header.pixelFormat;
    const auto fault = [](std::size_t offset, const std::string& what, const std::string& more) {
        return failure(vTextureCheck::eUnsupportedFormat, offset,
                       what + " at byte " + std::to_string(offset) + more + " is not supported");
    };
    switch (dds::format_code(pixel_format)) {
        case dds::FormatCode::kDXGI:
            return fault(kHeaderEnd, "the DXGI format " + std::to_string(headers.extension.dxgiFormat), "");
        case dds::FormatCode::kFourCC: {
            char code[4];
            std::memcpy(code, &pixel_format.dwFourCC, sizeof code);
            return fault(kFourCC, "the FourCC " + in_quotes({code, sizeof code}), "");
        }
        case dds::FormatCode::kPixelFormat:
            break;
    }
    return fault(kPixelFormat, "the pixel format",
                 " (flags " + std::to_string(pixel_format.dwFlags) + ", " +
                     std::to_string(pixel_format.dwRGBBitCount) + " bits a pixel)");
}

// The loader takes a depth that is no positive number for 1.
std::uint32_t depth_of(const Header& header) {
    return header.depth == 0 || header.depth > INT_MAX ? 1 : header.depth;
}

std::optional<Result> extent_fault(const Header& header, const vTextureLimits& limits) {
    const std::uint32_t limit = std::min(limits.maxExtent, std::uint32_t{INT_MAX});
    const auto absurd = [&](std::uint32_t pixels) { return pixels == 0 || pixels > limit; };
    if (absurd(header.width)) return absurd_extent("width", header.width, kWidth, limit);
    if (absurd(header.height)) return absurd_extent("height", header.height, kHeight, limit);
    if (absurd(depth_of(header))) return absurd_extent("depth", header.depth, kDepth, limit);
    if (header.mipMapCount > kMostLevels) {
        return failure(vTextureCheck::eAbsurdSize, kMipMapCount,
                       "its " + std::to_string(header.mipMapCount) + " levels at byte " +
                           std::to_string(kMipMapCount) + " are more than the " +
                           std::to_string(kMostLevels) + " of the largest image");
    }
    return std::nullopt;
}

std::uint64_t slice_bytes(const PixelLayout& layout, std::uint64_t width, std::uint64_t height) {
    if (layout.compressed) {
        return product(product((width + 3) / 4, (height + 3) / 4), dds::block_size(layout.format));
    }
    // All pixels have whole bytes.
    const auto pixel = static_cast<std::uint64_t>(layout.components * layout.bits_per_component) / 8;
    return product(product(width, height), pixel);
}

// The loader counts the blocks of a slice in 32 bits, and its other pixels by their bits, in 64.
bool is_countable(const PixelLayout& layout, const vDDSLevel& level) {
    const std::uint64_t slice = slice_bytes(layout, level.width, level.height);
    const std::uint64_t most = layout.compressed ? UINT32_MAX : UINT64_MAX / 8;
    return level.bytes != kUncountable && slice <= most;
}

std::vector<vDDSLevel> levels_of(const Headers& headers, const PixelLayout& layout, int faces) {
    const Header& header = headers.header;
    const std::uint32_t count = std::max(header.mipMapCount, 1u);
    std::vector<vDDSLevel> levels;
    levels.reserve(static_cast<std::size_t>(faces) * count);
    std::uint64_t offset = headers.end;
    for (int face = 0; face < faces; ++face) {
        std::uint32_t width = header.width;
        std::uint32_t height = header.height;
        std::uint32_t depth = depth_of(header);
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::uint64_t bytes = product(slice_bytes(layout, width, height), depth);
            levels.push_back({offset, bytes, width, height, depth, nullptr});
            offset = sum(offset, bytes);
            width = std::max(width / 2, 1u);
            height = std::max(height / 2, 1u);
            depth = std::max(depth / 2, 1u);
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

std::optional<Result> size_fault(const DDSTable& table, const PixelLayout& layout,
                                 const vTextureLimits& limits) {
    for (const vDDSLevel& level : table.levels) {
        if (is_countable(layout, level)) continue;
        Result result = failure(vTextureCheck::eAbsurdSize, kWidth,
                                "its extent of " + std::to_string(level.width) + " x " +
                                    std::to_string(level.height) + " x " + std::to_string(level.depth) +
                                    " pixels takes more bytes than the loader can count");
        result.totalBytes = kUncountable;
        return result;
    }
    const std::uint64_t total = total_bytes(table.levels);
    if (total == kUncountable || total > limits.maxBytes)
        return too_many_bytes(total, kWidth, limits.maxBytes);
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
    Headers headers;
    const auto refused = [&](const Result& result) {
        table.result = result;
        table.levels.clear();
        table.faces = 0;
        return table;
    };
    if (const auto fault = length_fault(length, limits)) return refused(*fault);
    const std::string_view bytes(reinterpret_cast<const char*>(start), available);
    if (const auto fault = read_headers(bytes, headers)) return refused(*fault);
    const std::optional<PixelLayout> layout =
        dds::find_pixel_layout(headers.header.pixelFormat, headers.extension.dxgiFormat);
    if (!layout) return refused(unsupported_format(headers));
    if (const auto fault = extent_fault(headers.header, limits)) return refused(*fault);

    table.format = layout->format;
    table.faces = (headers.header.caps2 & dds::kCaps2Cubemap) != 0 ? dds::kCubeFaces : 1;
    table.levels = levels_of(headers, *layout, table.faces);
    if (const auto fault = size_fault(table, *layout, limits)) return refused(*fault);
    table.result = result_of(table, length);
    return table;
}

}  // namespace pelto::info
