// SPDX-License-Identifier: Apache-2.0
#include "vTexturePixels.h"

#include <algorithm>
#include <optional>

#include "pixels/pixel_decode.h"

namespace {

namespace px = pelto::pixels;
using px::ChannelBits;
using px::PixelLayout;

enum { kRed, kGreen, kBlue, kAlpha };

// DXGI numbers, by which the two formats of pixel pairs are told apart.
constexpr std::uint16_t kR8G8_B8G8 = 68;
constexpr std::uint16_t kG8R8_G8B8 = 69;

std::optional<px::Coding> coding_of(const vPixelFormat::Channel& channel) {
    switch (channel.kind) {
        case vPixelFormat::eUNorm:
            return px::Coding::kUNorm;
        case vPixelFormat::eSNorm:
            return px::Coding::kSNorm;
        case vPixelFormat::eUInt:
            return px::Coding::kUInt;
        case vPixelFormat::eSInt:
            return px::Coding::kSInt;
        case vPixelFormat::eFloat:
            return px::Coding::kFloat;
        case vPixelFormat::eSharedExponent:
            return px::Coding::kSharedExponent;
        case vPixelFormat::eXRBias:
        case vPixelFormat::eTypeless:
            break;
    }
    return std::nullopt;
}

std::optional<PixelLayout> layout_of_pairs(const vPixelFormat& format) {
    constexpr px::Coding kUNorm = px::Coding::kUNorm;
    if (format.dxgi == kR8G8_B8G8) {
        return PixelLayout{4, 2, {{0, 8, kUNorm, 0}, {8, 8, kUNorm, 16}, {16, 8, kUNorm, 0}, {}}, {}};
    }
    if (format.dxgi == kG8R8_G8B8) {
        return PixelLayout{4, 2, {{8, 8, kUNorm, 0}, {0, 8, kUNorm, 16}, {24, 8, kUNorm, 0}, {}}, {}};
    }
    return std::nullopt;
}

// False for a letter that is no colour.
bool place(const vPixelFormat& format, char letter, const ChannelBits& bits, PixelLayout& layout) {
    switch (letter) {
        case 'R':
            layout.channels[kRed] = bits;
            return true;
        case 'G':
            layout.channels[kGreen] = bits;
            return true;
        case 'B':
            layout.channels[kBlue] = bits;
            return true;
        case 'A':
            layout.channels[kAlpha] = bits;
            return true;
        case 'L':
            layout.channels[kBlue] = bits;
            if (!format.channels.Find('R')) layout.channels[kRed] = layout.channels[kGreen] = bits;
            return true;
        case 'E':
            layout.exponent = bits;
            return true;
        case 'X':
            return true;
        default:
            return false;
    }
}

std::optional<PixelLayout> layout_of(const vPixelFormat& format) {
    if (format.layout == vPixelFormat::eSubsampled) return layout_of_pairs(format);
    if (format.layout != vPixelFormat::ePlain) return std::nullopt;
    PixelLayout layout{format.blockBytes, format.blockWidth, {}, {}};
    int bit = 0;
    for (const vPixelFormat::Channel& channel : format.channels) {
        const auto coding = coding_of(channel);
        if (!coding) return std::nullopt;
        ChannelBits bits{static_cast<std::uint8_t>(bit), channel.bits, *coding, 0};
        // Several pixels a byte: the first in the highest bit.
        if (format.blockWidth > 1) bits = {7, 1, *coding, -1};
        if (!place(format, channel.letter, bits, layout)) return std::nullopt;
        bit += channel.bits;
    }
    return layout;
}

using DecodeRow = void (*)(const PixelLayout&, const unsigned char*, unsigned char*, std::size_t);

DecodeRow decoder_to(vTexturePixels::EElement element) {
    switch (element) {
        case vTexturePixels::eRGBA8:
            return px::decode_rgba8;
        case vTexturePixels::eRGBA16:
            return px::decode_rgba16;
        case vTexturePixels::eRGBA32F:
            break;
    }
    return px::decode_rgba32f;
}

}  // namespace

bool vTexturePixels::CanDecode(const vPixelFormat& format) { return layout_of(format).has_value(); }

vTexturePixels::EElement vTexturePixels::FullElement(const vPixelFormat& format) {
    EElement element = eRGBA8;
    for (const vPixelFormat::Channel& channel : format.channels) {
        if (channel.letter == 'X') continue;
        const bool whole = channel.kind == vPixelFormat::eUNorm || channel.kind == vPixelFormat::eSNorm ||
                           channel.kind == vPixelFormat::eUInt;
        if (!whole || channel.bits > 16) return eRGBA32F;
        if (channel.bits > 8) element = eRGBA16;
    }
    return element;
}

bool vTexturePixels::Decode(const vPixelFormat& format, const void* source, std::uint64_t pitch,
                            std::uint32_t width, std::uint32_t height, EElement element, void* destination) {
    const auto layout = layout_of(format);
    if (!layout) return false;
    if (width == 0 || height == 0) return true;
    const DecodeRow decode = decoder_to(element);
    const auto* const from = static_cast<const unsigned char*>(source);
    auto* const to = static_cast<unsigned char*>(destination);
    // Rows without gaps are one long row.
    const bool one_row = pitch == format.RowBytes(width) && width % format.blockWidth == 0;
    const std::size_t pixels = one_row ? std::size_t{width} * height : width;
    const std::size_t rows = one_row ? 1 : height;
    for (std::size_t row = 0; row < rows; ++row) {
        decode(*layout, from + row * pitch, to + row * pixels * PixelBytes(element), pixels);
    }
    return true;
}
