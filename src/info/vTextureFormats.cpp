// SPDX-License-Identifier: Apache-2.0
#include "vTextureFormats.h"

#include <algorithm>
#include <array>
#include <bit>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include "info/checked_numbers.h"

using pelto::info::product;
using vTextureFormatTables::kLegacyFormats;
using vTextureFormatTables::kPixelFormats;

namespace {

template <class Condition>
const vPixelFormat* find_format(Condition condition) {
    const auto* const found = std::find_if(std::begin(kPixelFormats), std::end(kPixelFormats), condition);
    return found != std::end(kPixelFormats) ? found : nullptr;
}

}  // namespace

std::uint64_t vPixelFormat::RowBytes(std::uint32_t width) const {
    return (std::uint64_t{width} + blockWidth - 1) / blockWidth * blockBytes;
}

std::uint64_t vPixelFormat::SliceBytes(std::uint32_t width, std::uint32_t height) const {
    std::uint64_t rows = (std::uint64_t{height} + blockHeight - 1) / blockHeight;
    rows += (planes - 1u) * (layout == eYUVHalf ? (rows + 1) / 2 : rows);
    return product(RowBytes(width), rows);
}

const vPixelFormat* vTextureFormats::FindDXGI(std::uint32_t dxgi) {
    if (dxgi == 0) return nullptr;
    return find_format([&](const vPixelFormat& format) { return format.dxgi == dxgi; });
}

const vPixelFormat* vTextureFormats::FindVulkan(std::uint32_t vulkan) {
    // BC1 without alpha, plain and sRGB: the same bytes as with it.
    if (vulkan == 131 || vulkan == 132) vulkan += 2;
    if (vulkan == 0) return nullptr;
    return find_format([&](const vPixelFormat& format) { return format.vulkan == vulkan; });
}

const vPixelFormat* vTextureFormats::FindName(const char* name) {
    return find_format([&](const vPixelFormat& format) { return std::string_view(format.name) == name; });
}

const vLegacyFormat* vTextureFormats::FindFourCC(std::uint32_t fourCC) {
    const auto* const found =
        std::find_if(std::begin(kLegacyFormats), std::end(kLegacyFormats),
                     [&](const vLegacyFormat& format) { return format.fourCC == fourCC; });
    return found != std::end(kLegacyFormats) ? found : nullptr;
}

namespace {

using TOZ::DDS_PIXELFORMAT;
using Channel = vPixelFormat::Channel;
using Kind = vPixelFormat::EKind;

// Flags of the pixel-format record.
constexpr std::uint32_t kAlphaPixels = 0x1;
constexpr std::uint32_t kAlphaOnly = 0x2;
constexpr std::uint32_t kPalette8 = 0x20;
constexpr std::uint32_t kOtherKinds =
    0x4 | 0x8 | 0x200 | 0x400 | 0x800 | 0x1000;  // FourCC, palettes, YUV, depth
constexpr std::uint32_t kLuminance = 0x20000;
constexpr std::uint32_t kBumpLuminance = 0x40000;
constexpr std::uint32_t kBump = 0x80000;

struct MaskedChannel {
    std::uint32_t mask;
    char letter;
    Kind kind;
};

// What each of the four masks stands for, by the flags. A single channel without a mask has all bits.
std::array<MaskedChannel, 4> masked_channels(const DDS_PIXELFORMAT& header) {
    const std::uint32_t flags = header.dwFlags;
    const bool has_masks = (header.dwRBitMask | header.dwABitMask) != 0;
    const std::uint32_t all = static_cast<std::uint32_t>((std::uint64_t{1} << header.dwRGBBitCount) - 1);
    const std::uint32_t red = has_masks || (flags & kAlphaPixels) != 0 ? header.dwRBitMask : all;
    const std::uint32_t alpha = has_masks ? header.dwABitMask : all;
    if (flags & kAlphaOnly) return {{{alpha, 'A', Kind::eUNorm}}};
    if (flags & kLuminance) return {{{red, 'L', Kind::eUNorm}, {header.dwABitMask, 'A', Kind::eUNorm}}};
    const Kind colour = flags & (kBump | kBumpLuminance) ? Kind::eSNorm : Kind::eUNorm;
    const bool narrow_alpha = std::popcount(header.dwABitMask) < 8;
    const bool luminance = flags & kBumpLuminance;
    return {{{header.dwRBitMask, 'R', colour},
             {header.dwGBitMask, 'G', colour},
             {header.dwBBitMask, luminance ? 'L' : 'B', luminance ? Kind::eUNorm : colour},
             {header.dwABitMask, 'A', narrow_alpha ? Kind::eUNorm : colour}}};
}

bool is_contiguous(std::uint32_t mask) {
    const std::uint64_t shifted = mask >> std::countr_zero(mask);
    return (shifted & (shifted + 1)) == 0;
}

const char* suffix(Kind kind) { return kind == Kind::eSNorm ? "_SNORM" : "_UNORM"; }

// "R5G5_SNORM_L6_UNORM": channels, each group of one kind followed by that.
std::string name_of(const vPixelFormat::Channels& channels) {
    std::string name;
    Kind kind = channels.begin()->kind;
    for (const Channel& channel : channels) {
        if (channel.kind != kind) name.append(suffix(kind)).append("_");
        kind = channel.kind;
        name.append(1, channel.letter).append(std::to_string(channel.bits));
    }
    return name + suffix(kind);
}

void append(vPixelFormat::Channels& channels, int& count, Channel channel) {
    channels.list[count++] = channel;
}

// Nothing where the masks overlap, have holes or exceed the pixel, or where there are none.
std::optional<vPixelFormat::Channels> channels_of(const DDS_PIXELFORMAT& header) {
    std::array<MaskedChannel, 4> masked = masked_channels(header);
    std::sort(masked.begin(), masked.end(),
              [](const MaskedChannel& a, const MaskedChannel& b) { return a.mask < b.mask; });
    vPixelFormat::Channels channels{};
    int count = 0;
    int bit = 0;
    const auto skip_to = [&](int next) {
        if (next == bit) return;
        const Kind kind = count > 0 ? channels.list[count - 1].kind : Kind::eUNorm;
        append(channels, count, {'X', static_cast<std::uint8_t>(next - bit), kind});
        bit = next;
    };
    for (const MaskedChannel& channel : masked) {
        if (channel.mask == 0) continue;
        const int low = std::countr_zero(channel.mask);
        const int bits = std::popcount(channel.mask);
        if (low < bit || !is_contiguous(channel.mask)) return std::nullopt;
        skip_to(low);
        append(channels, count, {channel.letter, static_cast<std::uint8_t>(bits), channel.kind});
        bit += bits;
    }
    const int pixel = static_cast<int>(header.dwRGBBitCount);
    if (count == 0 || bit > pixel) return std::nullopt;
    skip_to(pixel);
    return channels;
}

// Indices, with the palette before the first level, which the DXGI format of that name does not have.
bool from_palette(const DDS_PIXELFORMAT& header, vPixelFormat& format) {
    const char* const name = header.dwRGBBitCount == 8 ? "P8" : header.dwRGBBitCount == 16 ? "A8P8" : "";
    const vPixelFormat* const found = vTextureFormats::FindName(name);
    if (!found) return false;
    format = *found;
    format.dxgi = 0;
    return true;
}

}  // namespace

bool vTextureFormats::FromMasks(const DDS_PIXELFORMAT& header, vPixelFormat& format) {
    if (header.dwFlags & kPalette8) return from_palette(header, format);
    if (header.dwFlags & kOtherKinds) return false;
    if (header.dwRGBBitCount > 32 || header.dwRGBBitCount % 8 != 0) return false;
    const auto channels = channels_of(header);
    if (!channels) return false;
    std::string name = name_of(*channels);
    // Direct3D 9 has a single format with one channel of 32 bits, which holds floats.
    if (name == "R32_UNORM") name = "R32_FLOAT";
    if (const vPixelFormat* const found = FindName(name.c_str())) {
        format = *found;
        return true;
    }
    vPixelFormat made{};
    name.copy(made.name, sizeof made.name - 1);
    made.layout = vPixelFormat::ePlain;
    made.blockWidth = made.blockHeight = made.planes = 1;
    made.blockBytes = static_cast<std::uint8_t>(header.dwRGBBitCount / 8);
    made.loader = vPixelFormat::kRefused;
    made.channels = *channels;
    format = made;
    return true;
}
