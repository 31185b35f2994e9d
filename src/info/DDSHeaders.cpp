// SPDX-License-Identifier: Apache-2.0
#include "info/DDSHeaders.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdio>
#include <cstring>

#include "info/check_words.h"
#include "info/other_kinds.h"

namespace pelto::info {

namespace {

using Result = vTextureCheck::Result;

constexpr std::uint32_t kMostLevels = 32;  // an extent has 32 bits

std::optional<Result> magic_fault(std::string_view start) {
    if (start.substr(0, kDDSMagic.size()) == kDDSMagic) return std::nullopt;
    if (!start.empty() && start == kDDSMagic.substr(0, start.size())) {
        return cut_short("its header", kDDSHeaderEnd, start.size());
    }
    return other_kind(start, "a DDS file", kDDSMagic);
}

std::string masks_words(const TOZ::DDS_PIXELFORMAT& format) {
    std::array<char, 64> text;
    std::snprintf(text.data(), text.size(), "masks %08x %08x %08x %08x", format.dwRBitMask, format.dwGBitMask,
                  format.dwBBitMask, format.dwABitMask);
    return text.data();
}

}  // namespace

std::optional<Result> read_dds_headers(std::string_view start, DDSHeaders& headers) {
    if (std::optional<Result> fault = magic_fault(start)) return fault;
    if (start.size() < kDDSHeaderEnd) return cut_short("its header", kDDSHeaderEnd, start.size());
    std::memcpy(&headers.header, start.data() + kDDSMagic.size(), sizeof headers.header);
    if (headers.header.pixelFormat.dwFourCC != dds::kFourCCDX10) return std::nullopt;
    headers.loader_data += sizeof headers.extension;
    if (start.size() < headers.loader_data) {
        return cut_short("its DX10 header", headers.loader_data, start.size());
    }
    std::memcpy(&headers.extension, start.data() + kDDSHeaderEnd, sizeof headers.extension);
    return std::nullopt;
}

bool find_dds_format(const DDSHeaders& headers, vPixelFormat& format) {
    const TOZ::DDS_PIXELFORMAT& record = headers.header.pixelFormat;
    if (!headers.has_fourcc()) return vTextureFormats::FromMasks(record, format);
    const vPixelFormat* found = nullptr;
    if (headers.has_extension()) {
        found = vTextureFormats::FindDXGI(headers.extension.dxgiFormat);
    } else if (const vLegacyFormat* const legacy = vTextureFormats::FindFourCC(record.dwFourCC)) {
        found = vTextureFormats::FindName(legacy->name);
    }
    if (!found) return false;
    format = *found;
    // What the older header calls a palette lies in the file; DXGI has no such format.
    if (!headers.has_extension() && format.layout == vPixelFormat::ePalette) format.dxgi = 0;
    return true;
}

std::string dds_format_words(const DDSHeaders& headers) {
    const TOZ::DDS_PIXELFORMAT& record = headers.header.pixelFormat;
    const std::string place = " at byte " + std::to_string(dds_format_offset(headers));
    if (headers.has_extension()) {
        return "the DXGI format " + std::to_string(headers.extension.dxgiFormat) + place;
    }
    if (headers.has_fourcc()) {
        // Direct3D 9 format numbers are small; a FourCC has four characters.
        constexpr std::uint32_t kLargestNumber = 255;
        if (record.dwFourCC <= kLargestNumber) {
            return "the Direct3D 9 format " + std::to_string(record.dwFourCC) + place;
        }
        char code[4];
        std::memcpy(code, &record.dwFourCC, sizeof code);
        return "the FourCC " + in_quotes({code, sizeof code}) + place;
    }
    return "the pixel format" + place + " (flags " + std::to_string(record.dwFlags) + ", " +
           std::to_string(record.dwRGBBitCount) + " bits a pixel, " + masks_words(record) + ")";
}

std::size_t dds_format_offset(const DDSHeaders& headers) {
    if (headers.has_extension()) return kDDSDXGIFormat;
    return headers.has_fourcc() ? kDDSFourCC : kDDSFlags;
}

bool has_picture(const vPixelFormat& format) {
    using Format = vPixelFormat;
    if (format.layout > Format::eBlocks) return false;
    return std::all_of(format.channels.begin(), format.channels.end(), [](const Format::Channel& channel) {
        return channel.letter != 'D' && channel.letter != 'S' && channel.kind != Format::eTypeless &&
               channel.kind != Format::eXRBias;
    });
}

std::optional<Result> dds_extent_fault(const dds::Header& header, std::uint32_t depth,
                                       const vTextureLimits& limits) {
    const std::uint32_t limit = std::min(limits.maxExtent, std::uint32_t{INT_MAX});
    const auto absurd = [&](std::uint32_t pixels) { return pixels == 0 || pixels > limit; };
    if (absurd(header.width)) return absurd_extent("width", header.width, kDDSWidth, limit);
    if (absurd(header.height)) return absurd_extent("height", header.height, kDDSHeight, limit);
    if (absurd(depth)) return absurd_extent("depth", depth, kDDSDepth, limit);
    if (header.mipMapCount > kMostLevels) {
        return failure(vTextureCheck::eAbsurdSize, kDDSMipMapCount,
                       "its " + std::to_string(header.mipMapCount) + " levels at byte " +
                           std::to_string(kDDSMipMapCount) + " are more than the " +
                           std::to_string(kMostLevels) + " of the largest image");
    }
    return std::nullopt;
}

}  // namespace pelto::info
