// SPDX-License-Identifier: Apache-2.0

#include "support/dds_file.h"

#include <algorithm>

namespace support {
namespace {

void append_number(Bytes& bytes, std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) bytes.push_back(static_cast<std::uint8_t>(value >> shift));
}

}  // namespace

FileHeader FileHeader::sized(std::uint32_t new_width, std::uint32_t new_height) const {
    FileHeader copy = *this;
    copy.width = new_width;
    copy.height = new_height;
    return copy;
}

FileHeader FileHeader::with_mips(std::uint32_t count) const {
    FileHeader copy = *this;
    copy.mip_count = count;
    return copy;
}

FileHeader FileHeader::with_depth(std::uint32_t new_depth) const {
    FileHeader copy = *this;
    copy.depth = new_depth;
    return copy;
}

FileHeader FileHeader::with_caps2(std::uint32_t bits) const {
    FileHeader copy = *this;
    copy.caps2 = bits;
    return copy;
}

FileHeader FileHeader::with_masks(std::uint32_t r, std::uint32_t g, std::uint32_t b, std::uint32_t a) const {
    FileHeader copy = *this;
    copy.pixel_format.red = r;
    copy.pixel_format.green = g;
    copy.pixel_format.blue = b;
    copy.pixel_format.alpha = a;
    return copy;
}

FileHeader fourcc_header(std::uint32_t fourcc) {
    FileHeader header;
    header.pixel_format.flags = kHasFourCC;
    header.pixel_format.fourcc = fourcc;
    return header;
}

FileHeader dxgi_header(std::uint32_t dxgi_format) {
    FileHeader header = fourcc_header(four_cc("DX10"));
    header.dxgi_format = dxgi_format;
    return header;
}

FileHeader plain_header(std::uint32_t flags, std::uint32_t bit_count) {
    FileHeader header;
    header.pixel_format.flags = flags;
    header.pixel_format.bit_count = bit_count;
    return header;
}

Bytes header_bytes(const FileHeader& header) {
    Bytes bytes;
    for (std::uint32_t value : {header.magic, header.header_size, header.flags, header.height, header.width,
                                header.pitch, header.depth, header.mip_count})
        append_number(bytes, value);
    for (int i = 0; i < 11; ++i) append_number(bytes, header.reserved);
    const FilePixelFormat& format = header.pixel_format;
    for (std::uint32_t value : {format.size, format.flags, format.fourcc, format.bit_count, format.red,
                                format.green, format.blue, format.alpha})
        append_number(bytes, value);
    for (std::uint32_t value : {header.caps, header.caps2, header.caps3, header.caps4, header.last_reserved})
        append_number(bytes, value);
    if (format.fourcc != four_cc("DX10")) return bytes;
    for (std::uint32_t value : {header.dxgi_format, header.resource_dimension, header.misc_flag,
                                header.array_size, header.misc_flags2})
        append_number(bytes, value);
    return bytes;
}

Bytes dds_file(const FileHeader& header, const Bytes& pixels) {
    const Bytes headers = header_bytes(header);
    Bytes file(headers.size() + pixels.size());
    std::copy(headers.begin(), headers.end(), file.begin());
    std::copy(pixels.begin(), pixels.end(), file.begin() + static_cast<std::ptrdiff_t>(headers.size()));
    return file;
}

}  // namespace support
