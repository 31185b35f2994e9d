#include "dds/pixel_layout.h"

#include <algorithm>

namespace pelto::dds {

namespace {

using namespace TOZ::SUPPORTED_FORMAT;

struct CodedLayout {
    std::uint32_t code;
    PixelLayout layout;
};

// By DXGI format. RGBA32F (DXGI 2) is accepted by its FourCC alone.
constexpr CodedLayout kDXGILayouts[] = {
    {6, {RGB32F, 3, 32, false}},    // R32G32B32_FLOAT
    {10, {RGBA16F, 4, 16, false}},  // R16G16B16A16_FLOAT
    {41, {R32F, 1, 32, false}},     // R32_FLOAT
    {71, {DXT1, 3, 8, true}},       // BC1_UNORM
    {74, {DXT3, 4, 8, true}},       // BC2_UNORM
    {77, {DXT5, 4, 8, true}},       // BC3_UNORM
    {80, {BC4U, 1, 8, true}},       // BC4_UNORM
    {81, {BC4S, 1, 8, true}},       // BC4_SNORM
    {83, {BC5U, 2, 8, true}},       // BC5_UNORM
    {84, {BC5S, 2, 8, true}},       // BC5_SNORM
    {87, {BGRA8, 3, 8, false}},     // B8G8R8A8_UNORM, read at three bytes per pixel
    {95, {BC6H_UF16, 3, 8, true}},  // BC6H_UF16
    {96, {BC6H_SF16, 3, 8, true}},  // BC6H_SF16
};

// By FourCC; the numbers are Direct3D 9 format codes. "BC5S" reads as unsigned, unlike DXGI format 84.
constexpr CodedLayout kFourCCLayouts[] = {
    {four_cc("DXT1"), {DXT1, 3, 8, true}}, {four_cc("DXT3"), {DXT3, 4, 8, true}},
    {four_cc("DXT5"), {DXT5, 4, 8, true}}, {four_cc("ATI1"), {BC4U, 1, 8, true}},
    {four_cc("BC4U"), {BC4U, 1, 8, true}}, {four_cc("BC4S"), {BC4S, 1, 8, true}},
    {four_cc("ATI2"), {BC5U, 2, 8, true}}, {four_cc("BC5U"), {BC5U, 2, 8, true}},
    {four_cc("BC5S"), {BC5U, 2, 8, true}}, {113, {RGBA16F, 4, 16, false}},
    {114, {R32F, 1, 32, false}},           {116, {RGBA32F, 4, 32, false}},
};

template <std::size_t N>
std::optional<PixelLayout> find_layout(const CodedLayout (&layouts)[N], std::uint32_t code) {
    const auto* const found =
        std::find_if(layouts, layouts + N, [&](const CodedLayout& entry) { return entry.code == code; });
    if (found == layouts + N) return std::nullopt;
    return found->layout;
}

std::optional<PixelLayout> uncompressed_layout(std::uint32_t flags, std::uint32_t bit_count) {
    const bool rgb = flags == kPixelFormatRGB;
    const bool rgba = flags == kPixelFormatRGBA;
    if (bit_count == 32 && (rgb || rgba)) return PixelLayout{RGBA8, 4, 8, false};
    if (bit_count == 24 && rgb) return PixelLayout{RGB8, 3, 8, false};
    if (bit_count == 8) return PixelLayout{LUMINANCE8, 1, 8, false};
    return std::nullopt;
}

}  // namespace

FormatCode format_code(const TOZ::DDS_PIXELFORMAT& pixel_format) {
    if ((pixel_format.dwFlags & kPixelFormatFourCC) == 0) return FormatCode::kPixelFormat;
    return pixel_format.dwFourCC == kFourCCDX10 ? FormatCode::kDXGI : FormatCode::kFourCC;
}

std::optional<PixelLayout> find_pixel_layout(const TOZ::DDS_PIXELFORMAT& pixel_format,
                                             std::uint32_t dxgi_format) {
    switch (format_code(pixel_format)) {
        case FormatCode::kPixelFormat:
            return uncompressed_layout(pixel_format.dwFlags, pixel_format.dwRGBBitCount);
        case FormatCode::kDXGI:
            return find_layout(kDXGILayouts, dxgi_format);
        case FormatCode::kFourCC:
            break;
    }
    return find_layout(kFourCCLayouts, pixel_format.dwFourCC);
}

std::size_t block_size(Type format) { return format == DXT1 || format == BC4U || format == BC4S ? 8 : 16; }

}  // namespace pelto::dds
