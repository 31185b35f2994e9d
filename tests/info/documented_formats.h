// SPDX-License-Identifier: Apache-2.0
// Typed from the DXGI_FORMAT reference: what the library's own table is compared with.
#ifndef TESTS_INFO_DOCUMENTED_FORMATS_H
#define TESTS_INFO_DOCUMENTED_FORMATS_H

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vTextureFormats.h>

namespace documented {

// Number, name and bits a pixel; of block formats, bytes a block.
struct Documented {
    std::uint32_t number;
    std::string_view name;
    unsigned size;
};

// clang-format off
constexpr Documented kOfPixels[] = {
    {1, "R32G32B32A32_TYPELESS", 128}, {2, "R32G32B32A32_FLOAT", 128}, {3, "R32G32B32A32_UINT", 128},
    {4, "R32G32B32A32_SINT", 128}, {5, "R32G32B32_TYPELESS", 96}, {6, "R32G32B32_FLOAT", 96},
    {7, "R32G32B32_UINT", 96}, {8, "R32G32B32_SINT", 96}, {9, "R16G16B16A16_TYPELESS", 64},
    {10, "R16G16B16A16_FLOAT", 64}, {11, "R16G16B16A16_UNORM", 64}, {12, "R16G16B16A16_UINT", 64},
    {13, "R16G16B16A16_SNORM", 64}, {14, "R16G16B16A16_SINT", 64}, {15, "R32G32_TYPELESS", 64},
    {16, "R32G32_FLOAT", 64}, {17, "R32G32_UINT", 64}, {18, "R32G32_SINT", 64},
    {19, "R32G8X24_TYPELESS", 64}, {20, "D32_FLOAT_S8X24_UINT", 64}, {21, "R32_FLOAT_X8X24_TYPELESS", 64},
    {22, "X32_TYPELESS_G8X24_UINT", 64}, {23, "R10G10B10A2_TYPELESS", 32}, {24, "R10G10B10A2_UNORM", 32},
    {25, "R10G10B10A2_UINT", 32}, {26, "R11G11B10_FLOAT", 32}, {27, "R8G8B8A8_TYPELESS", 32},
    {28, "R8G8B8A8_UNORM", 32}, {29, "R8G8B8A8_UNORM_SRGB", 32}, {30, "R8G8B8A8_UINT", 32},
    {31, "R8G8B8A8_SNORM", 32}, {32, "R8G8B8A8_SINT", 32}, {33, "R16G16_TYPELESS", 32},
    {34, "R16G16_FLOAT", 32}, {35, "R16G16_UNORM", 32}, {36, "R16G16_UINT", 32}, {37, "R16G16_SNORM", 32},
    {38, "R16G16_SINT", 32}, {39, "R32_TYPELESS", 32}, {40, "D32_FLOAT", 32}, {41, "R32_FLOAT", 32},
    {42, "R32_UINT", 32}, {43, "R32_SINT", 32}, {44, "R24G8_TYPELESS", 32}, {45, "D24_UNORM_S8_UINT", 32},
    {46, "R24_UNORM_X8_TYPELESS", 32}, {47, "X24_TYPELESS_G8_UINT", 32}, {48, "R8G8_TYPELESS", 16},
    {49, "R8G8_UNORM", 16}, {50, "R8G8_UINT", 16}, {51, "R8G8_SNORM", 16}, {52, "R8G8_SINT", 16},
    {53, "R16_TYPELESS", 16}, {54, "R16_FLOAT", 16}, {55, "D16_UNORM", 16}, {56, "R16_UNORM", 16},
    {57, "R16_UINT", 16}, {58, "R16_SNORM", 16}, {59, "R16_SINT", 16}, {60, "R8_TYPELESS", 8},
    {61, "R8_UNORM", 8}, {62, "R8_UINT", 8}, {63, "R8_SNORM", 8}, {64, "R8_SINT", 8}, {65, "A8_UNORM", 8},
    {66, "R1_UNORM", 1}, {67, "R9G9B9E5_SHAREDEXP", 32}, {68, "R8G8_B8G8_UNORM", 16},
    {69, "G8R8_G8B8_UNORM", 16}, {85, "B5G6R5_UNORM", 16}, {86, "B5G5R5A1_UNORM", 16},
    {87, "B8G8R8A8_UNORM", 32}, {88, "B8G8R8X8_UNORM", 32}, {89, "R10G10B10_XR_BIAS_A2_UNORM", 32},
    {90, "B8G8R8A8_TYPELESS", 32}, {91, "B8G8R8A8_UNORM_SRGB", 32}, {92, "B8G8R8X8_TYPELESS", 32},
    {93, "B8G8R8X8_UNORM_SRGB", 32}, {100, "AYUV", 32}, {101, "Y410", 32}, {102, "Y416", 64},
    {107, "YUY2", 16}, {108, "Y210", 32}, {109, "Y216", 32}, {111, "AI44", 8}, {112, "IA44", 8},
    {113, "P8", 8}, {114, "A8P8", 16}, {115, "B4G4R4A4_UNORM", 16}, {191, "A4B4G4R4_UNORM", 16},
};
// clang-format on

constexpr Documented kOfBlocks[] = {
    {70, "BC1_TYPELESS", 8},   {71, "BC1_UNORM", 8},  {72, "BC1_UNORM_SRGB", 8},
    {73, "BC2_TYPELESS", 16},  {74, "BC2_UNORM", 16}, {75, "BC2_UNORM_SRGB", 16},
    {76, "BC3_TYPELESS", 16},  {77, "BC3_UNORM", 16}, {78, "BC3_UNORM_SRGB", 16},
    {79, "BC4_TYPELESS", 8},   {80, "BC4_UNORM", 8},  {81, "BC4_SNORM", 8},
    {82, "BC5_TYPELESS", 16},  {83, "BC5_UNORM", 16}, {84, "BC5_SNORM", 16},
    {94, "BC6H_TYPELESS", 16}, {95, "BC6H_UF16", 16}, {96, "BC6H_SF16", 16},
    {97, "BC7_TYPELESS", 16},  {98, "BC7_UNORM", 16}, {99, "BC7_UNORM_SRGB", 16},
};

// Planes: luma, then the two of chroma or one of both, with fewer columns, rows, or bytes.
struct Planar {
    std::uint32_t number;
    std::string_view name;
    unsigned planes;
    unsigned unit;        // pixels that share their chroma, across
    unsigned unit_bytes;  // of luma
    bool half_rows;
    unsigned chroma_percent;  // of the bytes of a luma row, of all chroma together
};

constexpr Planar kPlanar[] = {
    {103, "NV12", 2, 2, 2, true, 100},  {104, "P010", 2, 2, 4, true, 100},
    {105, "P016", 2, 2, 4, true, 100},  {106, "420_OPAQUE", 2, 2, 2, true, 100},
    {110, "NV11", 2, 4, 4, false, 100}, {130, "P208", 2, 2, 2, false, 100},
    {131, "V208", 3, 1, 1, true, 200},  {132, "V408", 3, 1, 1, false, 200},
};

struct Footprint {
    unsigned width, height;
};
constexpr Footprint kAstcFootprints[] = {{4, 4}, {5, 4},  {5, 5},  {6, 5},  {6, 6},   {8, 5},   {8, 6},
                                         {8, 8}, {10, 5}, {10, 6}, {10, 8}, {10, 10}, {12, 10}, {12, 12}};

inline const vPixelFormat& dxgi(std::uint32_t number) {
    const vPixelFormat* const format = vTextureFormats::FindDXGI(number);
    if (!format) throw std::runtime_error("no DXGI format " + std::to_string(number));
    return *format;
}

inline const vPixelFormat& named(const char* name) {
    const vPixelFormat* const format = vTextureFormats::FindName(name);
    if (!format) throw std::runtime_error(std::string("no format ") + name);
    return *format;
}

inline unsigned bits_of(const vPixelFormat::Channels& channels) {
    unsigned bits = 0;
    for (const vPixelFormat::Channel& channel : channels) bits += channel.bits;
    return bits;
}

/// "R5G6B5": letters and bits from the lowest bit up.
inline std::string spelled(const vPixelFormat::Channels& channels) {
    std::string text;
    for (const vPixelFormat::Channel& channel : channels)
        text += channel.letter + std::to_string(channel.bits);
    return text;
}

}  // namespace documented

#endif
