// SPDX-License-Identifier: Apache-2.0

#include "texture/dds_writer.h"

#include <cstddef>

namespace {

constexpr std::uint32_t kHeaderSize = 124;
constexpr std::uint32_t kPixelFormatSize = 32;

constexpr std::uint32_t kHasCapsHeightWidthPixelFormat = 0x1007;
constexpr std::uint32_t kHasMipMapCount = 0x20000;
constexpr std::uint32_t kHasLinearSize = 0x80000;
constexpr std::uint32_t kPixelFormatFourCC = 0x4;
constexpr std::uint32_t kCapsTexture = 0x1000;
constexpr std::uint32_t kCapsMipMaps = 0x400008;  // mip map, complex

void append(std::string& bytes, std::uint32_t number) {
    for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(number >> shift & 0xFF);
}

void append_zeros(std::string& bytes, std::size_t numbers) { bytes.append(4 * numbers, '\0'); }

}  // namespace

std::string dds_header(const DDSDescription& description) {
    const bool mips = description.levels > 1;
    std::string bytes = "DDS ";
    append(bytes, kHeaderSize);
    append(bytes, kHasCapsHeightWidthPixelFormat | kHasLinearSize | (mips ? kHasMipMapCount : 0));
    append(bytes, description.height);
    append(bytes, description.width);
    append(bytes, description.bytes);
    append_zeros(bytes, 1);  // depth
    append(bytes, description.levels);
    append_zeros(bytes, 11);
    append(bytes, kPixelFormatSize);
    append(bytes, kPixelFormatFourCC);
    bytes += description.four_cc;
    append_zeros(bytes, 5);  // bit count and masks
    append(bytes, kCapsTexture | (mips ? kCapsMipMaps : 0));
    append_zeros(bytes, 4);
    return bytes;
}
