// SPDX-License-Identifier: Apache-2.0
// The headers of a DDS file, and the format that they mean.
#ifndef PELTO_INFO_DDS_HEADERS_H
#define PELTO_INFO_DDS_HEADERS_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "dds/dds_file.h"
#include "vTextureCheck.h"
#include "vTextureFormats.h"

namespace pelto::info {

constexpr std::size_t kDDSHeaderEnd = sizeof dds::kMagic + sizeof(dds::Header);

// Fields: bytes from the start of the file.
constexpr std::size_t kDDSHeight = sizeof dds::kMagic + offsetof(dds::Header, height);
constexpr std::size_t kDDSWidth = sizeof dds::kMagic + offsetof(dds::Header, width);
constexpr std::size_t kDDSDepth = sizeof dds::kMagic + offsetof(dds::Header, depth);
constexpr std::size_t kDDSMipMapCount = sizeof dds::kMagic + offsetof(dds::Header, mipMapCount);
constexpr std::size_t kDDSPixelFormat = sizeof dds::kMagic + offsetof(dds::Header, pixelFormat);
constexpr std::size_t kDDSFlags = kDDSPixelFormat + offsetof(TOZ::DDS_PIXELFORMAT, dwFlags);
constexpr std::size_t kDDSFourCC = kDDSPixelFormat + offsetof(TOZ::DDS_PIXELFORMAT, dwFourCC);
constexpr std::size_t kDDSDXGIFormat = kDDSHeaderEnd + offsetof(dds::HeaderDX10, dxgiFormat);
constexpr std::size_t kDDSArraySize = kDDSHeaderEnd + offsetof(dds::HeaderDX10, arraySize);

struct DDSHeaders {
    dds::Header header{};
    dds::HeaderDX10 extension{};

    /// Where vDDSImage looks for the first level: it goes by the FourCC, whatever the flags say.
    std::size_t loader_data = kDDSHeaderEnd;

    bool has_fourcc() const { return (header.pixelFormat.dwFlags & dds::kPixelFormatFourCC) != 0; }
    bool has_extension() const { return has_fourcc() && header.pixelFormat.dwFourCC == dds::kFourCCDX10; }
    bool has_stale_fourcc() const { return !has_fourcc() && header.pixelFormat.dwFourCC == dds::kFourCCDX10; }
};

/// From the first bytes of a file: all of them, or at least both headers.
std::optional<vTextureCheck::Result> read_dds_headers(std::string_view start, DDSHeaders& headers);

/// False, with `format` unchanged, for a format that the table does not know.
bool find_dds_format(const DDSHeaders& headers, vPixelFormat& format);

/// "the DXGI format 300 at byte 128": what names the format.
std::string dds_format_words(const DDSHeaders& headers);
std::size_t dds_format_offset(const DDSHeaders& headers);

/// Whether its pixels are colours or grey, which a sheet shows.
bool has_picture(const vPixelFormat& format);

/// An extent that is 0 or beyond the limits, or too many levels.
std::optional<vTextureCheck::Result> dds_extent_fault(const dds::Header& header, std::uint32_t depth,
                                                      const vTextureLimits& limits);

}  // namespace pelto::info

#endif
