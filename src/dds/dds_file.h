// SPDX-License-Identifier: Apache-2.0
// The layout of a DDS file, and reading bytes from one that may be cut short.
#ifndef PELTO_DDS_DDS_FILE_H
#define PELTO_DDS_DDS_FILE_H

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

#include "vDDSImage.h"

namespace pelto::dds {

static_assert(sizeof(std::size_t) == 8, "level sizes are 64-bit numbers");
static_assert(std::endian::native == std::endian::little, "DDS fields are read in place: little-endian only");

/// The header of 124 bytes that follows the magic.
struct Header {
    std::uint32_t size;
    std::uint32_t flags;
    std::uint32_t height;
    std::uint32_t width;
    std::uint32_t pitchOrLinearSize;
    std::uint32_t depth;
    std::uint32_t mipMapCount;
    std::uint32_t reserved1[11];
    TOZ::DDS_PIXELFORMAT pixelFormat;
    std::uint32_t caps;
    std::uint32_t caps2;
    std::uint32_t caps3;
    std::uint32_t caps4;
    std::uint32_t reserved2;
};
static_assert(sizeof(Header) == 124 && offsetof(Header, pixelFormat) == 72);

/// The extension header of 20 bytes that follows when the FourCC is "DX10".
struct HeaderDX10 {
    std::uint32_t dxgiFormat;
    std::uint32_t resourceDimension;
    std::uint32_t miscFlag;
    std::uint32_t arraySize;
    std::uint32_t miscFlags2;
};
static_assert(sizeof(HeaderDX10) == 20);

constexpr char kMagic[] = {'D', 'D', 'S', ' '};
constexpr std::size_t kHeadersSize = sizeof kMagic + sizeof(Header) + sizeof(HeaderDX10);

constexpr std::uint32_t kPixelFormatFourCC = 0x4;
constexpr std::uint32_t kPixelFormatRGB = 0x40;
constexpr std::uint32_t kPixelFormatRGBA = 0x41;
constexpr std::uint32_t kCaps2Cubemap = 0x200;
constexpr std::uint32_t kCaps2Volume = 0x200000;

constexpr int kCubeFaces = 6;

constexpr std::uint32_t four_cc(const char (&text)[5]) {
    std::uint32_t code = 0;
    for (int i = 3; i >= 0; --i) code = code << 8 | static_cast<unsigned char>(text[i]);
    return code;
}

constexpr std::uint32_t kFourCCDX10 = four_cc("DX10");

/// Reads a file's bytes from front to back. What lies beyond the available bytes reads as zero.
class FileBytes {
public:
    /// For a caller who vouches that every byte that will be read is there.
    static constexpr std::size_t kComplete = std::numeric_limits<std::size_t>::max();

    /// `bytes` stays the caller's and must outlive the reader.
    FileBytes(const char* bytes, std::size_t available) : bytes_(bytes), remaining_(available) {}

    /// Copies the next `n` bytes to `to`, and moves on.
    void read(void* to, std::size_t n) {
        const std::size_t present = std::min(n, remaining_);
        std::memcpy(to, bytes_, present);
        if (present < n) std::memset(static_cast<char*>(to) + present, 0, n - present);
        advance(present);
    }

    /// The next `n` bytes where they lie, moving on; null, without moving, when not all are available.
    const char* take(std::size_t n) {
        if (n > remaining_) return nullptr;
        const char* const taken = bytes_;
        advance(n);
        return taken;
    }

private:
    void advance(std::size_t n) {
        bytes_ += n;
        remaining_ -= n;
    }

    const char* bytes_;
    std::size_t remaining_;
};

}  // namespace pelto::dds

#endif
