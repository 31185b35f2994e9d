// SPDX-License-Identifier: Apache-2.0
// Builds DDS files in memory. Every header field can be set, those included that a reader ignores.
#ifndef TESTS_SUPPORT_DDS_FILE_H
#define TESTS_SUPPORT_DDS_FILE_H

#include <cstdint>

#include "support/bytes.h"

namespace support {

constexpr std::uint32_t kCubeMap = 0x200;
constexpr std::uint32_t kVolume = 0x200000;

constexpr std::uint32_t kHasFourCC = 0x4;
constexpr std::uint32_t kRgb = 0x40;
constexpr std::uint32_t kRgbWithAlpha = 0x41;

/// Four characters as a little-endian number.
constexpr std::uint32_t four_cc(const char (&text)[5]) {
    std::uint32_t value = 0;
    for (int i = 3; i >= 0; --i) value = value << 8 | static_cast<unsigned char>(text[i]);
    return value;
}

/// The pixel-format record of the header, field by field in file order.
struct FilePixelFormat {
    std::uint32_t size = 32;
    std::uint32_t flags = 0;
    std::uint32_t fourcc = 0;
    std::uint32_t bit_count = 0;
    std::uint32_t red = 0;
    std::uint32_t green = 0;
    std::uint32_t blue = 0;
    std::uint32_t alpha = 0;
};

/// Header fields in file order; the DX10 fields are written when the FourCC is "DX10".
struct FileHeader {
    std::uint32_t magic = four_cc("DDS ");
    std::uint32_t header_size = 124;
    std::uint32_t flags = 0x1007;
    std::uint32_t height = 1;
    std::uint32_t width = 1;
    std::uint32_t pitch = 0;
    std::uint32_t depth = 0;
    std::uint32_t mip_count = 0;
    std::uint32_t reserved = 0;  // all eleven words
    FilePixelFormat pixel_format;
    std::uint32_t caps = 0x1000;
    std::uint32_t caps2 = 0;
    std::uint32_t caps3 = 0;
    std::uint32_t caps4 = 0;
    std::uint32_t last_reserved = 0;

    std::uint32_t dxgi_format = 0;
    std::uint32_t resource_dimension = 3;
    std::uint32_t misc_flag = 0;
    std::uint32_t array_size = 1;
    std::uint32_t misc_flags2 = 0;

    /// The same file with another extent or level count.
    FileHeader sized(std::uint32_t new_width, std::uint32_t new_height) const;
    FileHeader with_mips(std::uint32_t count) const;
    FileHeader with_depth(std::uint32_t new_depth) const;
    FileHeader with_caps2(std::uint32_t bits) const;
    FileHeader with_masks(std::uint32_t r, std::uint32_t g, std::uint32_t b, std::uint32_t a) const;
};

/// A header whose format is the given FourCC.
FileHeader fourcc_header(std::uint32_t fourcc);

/// A header with a DX10 extension of the given DXGI format.
FileHeader dxgi_header(std::uint32_t dxgi_format);

/// A header without a FourCC and without masks.
FileHeader plain_header(std::uint32_t flags, std::uint32_t bit_count);

/// The headers alone: 128 bytes, or 148 with a DX10 extension.
Bytes header_bytes(const FileHeader& header);

/// Headers and pixel data, in a vector without spare capacity.
Bytes dds_file(const FileHeader& header, const Bytes& pixels);

}  // namespace support

#endif
