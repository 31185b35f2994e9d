// SPDX-License-Identifier: Apache-2.0
#include "dds/pixel_layout.h"

#include <iterator>

#include "vTextureFormats.h"

namespace pelto::dds {

namespace {

using namespace TOZ::SUPPORTED_FORMAT;

// By the number of the format.
constexpr LoaderLayout kLayouts[] = {
    {LUMINANCE8, 1, 8, false}, {RGB8, 3, 8, false},  {RGBA8, 4, 8, false},
    {BGRA8, 3, 8, false},  // four bytes in the file, read as three
    {RGBA16F, 4, 16, false},   {R32F, 1, 32, false}, {RGB32F, 3, 32, false},
    {RGBA32F, 4, 32, false},   {DXT1, 3, 8, true},   {DXT3, 4, 8, true},
    {DXT5, 4, 8, true},        {BC4U, 1, 8, true},   {BC4S, 1, 8, true},
    {BC5U, 2, 8, true},        {BC5S, 2, 8, true},   {BC6H_SF16, 3, 8, true},
    {BC6H_UF16, 3, 8, true},
};

constexpr bool each_lies_at_its_number() {
    for (std::size_t i = 0; i < std::size(kLayouts); ++i) {
        if (kLayouts[i].format != static_cast<Type>(i)) return false;
    }
    return true;
}
static_assert(each_lies_at_its_number());

std::optional<LoaderLayout> layout_or_nothing(int loader_format) {
    if (loader_format == vPixelFormat::kRefused) return std::nullopt;
    return layout_of(static_cast<Type>(loader_format));
}

std::optional<LoaderLayout> uncompressed_layout(std::uint32_t flags, std::uint32_t bit_count) {
    const bool rgb = flags == kPixelFormatRGB;
    const bool rgba = flags == kPixelFormatRGBA;
    if (bit_count == 32 && (rgb || rgba)) return layout_of(RGBA8);
    if (bit_count == 24 && rgb) return layout_of(RGB8);
    if (bit_count == 8) return layout_of(LUMINANCE8);
    return std::nullopt;
}

}  // namespace

FormatCode format_code(const TOZ::DDS_PIXELFORMAT& pixel_format) {
    if ((pixel_format.dwFlags & kPixelFormatFourCC) == 0) return FormatCode::kPixelFormat;
    return pixel_format.dwFourCC == kFourCCDX10 ? FormatCode::kDXGI : FormatCode::kFourCC;
}

std::optional<LoaderLayout> find_pixel_layout(const TOZ::DDS_PIXELFORMAT& pixel_format,
                                              std::uint32_t dxgi_format) {
    switch (format_code(pixel_format)) {
        case FormatCode::kPixelFormat:
            return uncompressed_layout(pixel_format.dwFlags, pixel_format.dwRGBBitCount);
        case FormatCode::kDXGI: {
            const vPixelFormat* const found = vTextureFormats::FindDXGI(dxgi_format);
            return layout_or_nothing(found ? found->loader : vPixelFormat::kRefused);
        }
        case FormatCode::kFourCC:
            break;
    }
    const vLegacyFormat* const found = vTextureFormats::FindFourCC(pixel_format.dwFourCC);
    return layout_or_nothing(found ? found->loader : vPixelFormat::kRefused);
}

const LoaderLayout& layout_of(Type format) { return kLayouts[format]; }

std::size_t block_size(Type format) { return format == DXT1 || format == BC4U || format == BC4S ? 8 : 16; }

}  // namespace pelto::dds
