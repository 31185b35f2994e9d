// SPDX-License-Identifier: Apache-2.0
// Every pixel format of DDS files, and more of KTX2 files, as compile-time data: one line a format.
//
// The table names the DXGI formats (published in Microsoft's DXGI_FORMAT reference), the formats that only
// the older header of a DDS file can express, by FourCC, by Direct3D 9 format number or by channel masks
// (published in "Programming Guide for DDS" and the D3DFORMAT reference), and sRGB formats of KTX2 files. A
// name lists the channels of a pixel, a little-endian number, from its lowest bits up.
//
// Hostile data: every lookup takes any number. Errors: a null pointer if there is no such format.
// Threads: constant data, and functions without state.
#ifndef V_TEXTURE_FORMATS_H
#define V_TEXTURE_FORMATS_H

#include <cstdint>

#include "PeltoExport.h"
#include "vDDSImage.h"

/// A format of pixels, or of the blocks that hold them.
struct vPixelFormat {
    /// How the bytes of a level are arranged.
    enum ELayout : std::uint8_t {
        ePlain,       ///< pixels one after the other, each a little-endian number
        eSubsampled,  ///< pairs of pixels that share red and blue
        eBlocks,      ///< 4x4-pixel blocks, BC1 to BC7
        eASTC,        ///< ASTC blocks
        eYUV,         ///< luma and chroma, packed or in planes
        eYUVHalf,     ///< the same in planes, those of chroma with half as many rows
        ePalette,     ///< indices into a palette
    };

    /// What the bits of a channel mean.
    enum EKind : std::uint8_t {
        eUNorm,           ///< 0 to 1
        eSNorm,           ///< -1 to 1, two's complement
        eUInt,            ///< unsigned integer
        eSInt,            ///< integer, two's complement
        eFloat,           ///< 32 or 16 bits: IEEE; 11 or 10 bits: no sign, 5 bits of exponent
        eSharedExponent,  ///< a 9-bit mantissa, or the 5-bit exponent E that all of them share
        eXRBias,          ///< (number - 384) / 510
        eTypeless,        ///< whatever the reader chooses
    };

    /// R, G, B, A, L (luminance), D (depth), S (stencil), Y, U, V, P (palette index), E (exponent), or X:
    /// unused.
    struct Channel {
        char letter;
        std::uint8_t bits;
        EKind kind;
    };

    /// Channels from the lowest bit up; letter 0 ends the list. Of blocks, what they decode to.
    struct Channels {
        static constexpr int kMost = 9;
        Channel list[kMost + 1];

        constexpr const Channel* begin() const { return list; }
        constexpr const Channel* end() const {
            const Channel* channel = list;
            while (channel->letter != 0) ++channel;
            return channel;
        }
        /// The channel of that letter, or null.
        constexpr const Channel* Find(char letter) const {
            for (const Channel& channel : *this) {
                if (channel.letter == letter) return &channel;
            }
            return nullptr;
        }
    };

    static constexpr std::int8_t kRefused = -1;

    char name[40];         ///< "BC1_UNORM": the DXGI name without its prefix, or a name in the same manner
    std::uint16_t dxgi;    ///< DXGI_FORMAT; 0 if there is none
    std::uint16_t vulkan;  ///< VkFormat of the same bytes, which KTX2 files use; 0 if there is none
    std::uint16_t openGL;  ///< sized internal format that holds the values; 0 if there is none
    ELayout layout;
    std::uint8_t blockWidth;   ///< pixels across a block; 1 for single pixels
    std::uint8_t blockHeight;  ///< pixels down a block
    std::uint8_t blockBytes;   ///< of a block or pixel; of the first plane if there are several
    std::uint8_t planes;
    bool srgb;
    std::int8_t loader;  ///< the TOZ::SUPPORTED_FORMAT that vDDSImage makes of it in a DX10 file, or kRefused
    Channels channels;

    /// Bytes of a row of pixels or blocks; of the first plane if there are several.
    PELTO_API std::uint64_t RowBytes(std::uint32_t width) const;

    /// Bytes of a slice of `width` x `height` pixels, all planes together; UINT64_MAX if they are more.
    PELTO_API std::uint64_t SliceBytes(std::uint32_t width, std::uint32_t height) const;
};

/// The FourCC, or Direct3D 9 format number, of a DDS header without DX10 extension.
struct vLegacyFormat {
    std::uint32_t fourCC;
    const char* name;    ///< of the vPixelFormat
    std::int8_t loader;  ///< the TOZ::SUPPORTED_FORMAT that vDDSImage makes of it, or vPixelFormat::kRefused
    bool premultiplied;  ///< the FourCC says that colour is multiplied by alpha
};

/// Lookups in the tables below. Their results live as long as the program.
class PELTO_API vTextureFormats {
public:
    static const vPixelFormat* FindDXGI(std::uint32_t dxgi);
    static const vPixelFormat* FindVulkan(std::uint32_t vulkan);

    /// `name` is zero-terminated and compared as it is: "BC1_UNORM".
    static const vPixelFormat* FindName(const char* name);

    /// By the FourCC of a DDS header, a little-endian number, or by the Direct3D 9 format number in its
    /// place.
    static const vLegacyFormat* FindFourCC(std::uint32_t fourCC);

    /// Describes the pixels of a DDS header without a FourCC, by its flags, bit count and masks. False, with
    /// `format` unchanged, if these name no format: masks that are missing, overlap, have holes, or exceed
    /// the pixel. Luminance alone or alpha alone needs no mask: it fills the pixel.
    static bool FromMasks(const TOZ::DDS_PIXELFORMAT& header, vPixelFormat& format);
};

namespace vTextureFormatTables {

using namespace TOZ::SUPPORTED_FORMAT;
using Format = vPixelFormat;
constexpr auto ePlain = Format::ePlain;
constexpr auto eSubsampled = Format::eSubsampled;
constexpr auto eBlocks = Format::eBlocks;
constexpr auto eASTC = Format::eASTC;
constexpr auto eYUV = Format::eYUV;
constexpr auto eYUVHalf = Format::eYUVHalf;
constexpr auto ePalette = Format::ePalette;
constexpr auto eUNorm = Format::eUNorm;
constexpr auto eSNorm = Format::eSNorm;
constexpr auto eUInt = Format::eUInt;
constexpr auto eSInt = Format::eSInt;
constexpr auto eFloat = Format::eFloat;
constexpr auto eSharedExponent = Format::eSharedExponent;
constexpr auto eXRBias = Format::eXRBias;
constexpr auto eTypeless = Format::eTypeless;
constexpr auto kRefused = Format::kRefused;

constexpr int Append(Format::Channels& channels, int count, const char* text, Format::EKind kind) {
    while (*text != 0) {
        const char letter = *text++;
        int bits = 0;
        while (*text >= '0' && *text <= '9') bits = bits * 10 + (*text++ - '0');
        channels.list[count++] = {letter, static_cast<std::uint8_t>(bits), kind};
    }
    return count;
}

/// channels("R10G10B10", eSNorm, "A2", eUNorm): groups of channels with their kinds.
constexpr Format::Channels channels(const char* first, Format::EKind kind, const char* second = "",
                                    Format::EKind secondKind = eUNorm, const char* third = "",
                                    Format::EKind thirdKind = eUNorm) {
    Format::Channels result{};
    int count = Append(result, 0, first, kind);
    count = Append(result, count, second, secondKind);
    Append(result, count, third, thirdKind);
    return result;
}

constexpr std::uint32_t FourCC(const char (&text)[5]) {
    std::uint32_t code = 0;
    for (int i = 3; i >= 0; --i) code = code << 8 | static_cast<unsigned char>(text[i]);
    return code;
}

// clang-format off
inline constexpr vPixelFormat kPixelFormats[] = {
//   name                         DXGI   Vk  OpenGL  layout    block: w,  h, bytes, planes, sRGB, vDDSImage, channels
    {"R32G32B32A32_TYPELESS",        1,   0,     0, ePlain,       1,  1, 16, 1, false, kRefused,  channels("R32G32B32A32", eTypeless)},
    {"R32G32B32A32_FLOAT",           2, 109, 0x8814, ePlain,       1,  1, 16, 1, false, kRefused,  channels("R32G32B32A32", eFloat)},
    {"R32G32B32A32_UINT",            3, 107, 0x8D70, ePlain,       1,  1, 16, 1, false, kRefused,  channels("R32G32B32A32", eUInt)},
    {"R32G32B32A32_SINT",            4, 108, 0x8D82, ePlain,       1,  1, 16, 1, false, kRefused,  channels("R32G32B32A32", eSInt)},
    {"R32G32B32_TYPELESS",           5,   0,     0, ePlain,       1,  1, 12, 1, false, kRefused,  channels("R32G32B32", eTypeless)},
    {"R32G32B32_FLOAT",              6, 106, 0x8815, ePlain,       1,  1, 12, 1, false, RGB32F,    channels("R32G32B32", eFloat)},
    {"R32G32B32_UINT",               7, 104, 0x8D71, ePlain,       1,  1, 12, 1, false, kRefused,  channels("R32G32B32", eUInt)},
    {"R32G32B32_SINT",               8, 105, 0x8D83, ePlain,       1,  1, 12, 1, false, kRefused,  channels("R32G32B32", eSInt)},
    {"R16G16B16A16_TYPELESS",        9,   0,     0, ePlain,       1,  1,  8, 1, false, kRefused,  channels("R16G16B16A16", eTypeless)},
    {"R16G16B16A16_FLOAT",          10,  97, 0x881A, ePlain,       1,  1,  8, 1, false, RGBA16F,   channels("R16G16B16A16", eFloat)},
    {"R16G16B16A16_UNORM",          11,  91, 0x805B, ePlain,       1,  1,  8, 1, false, kRefused,  channels("R16G16B16A16", eUNorm)},
    {"R16G16B16A16_UINT",           12,  95, 0x8D76, ePlain,       1,  1,  8, 1, false, kRefused,  channels("R16G16B16A16", eUInt)},
    {"R16G16B16A16_SNORM",          13,  92, 0x8F9B, ePlain,       1,  1,  8, 1, false, kRefused,  channels("R16G16B16A16", eSNorm)},
    {"R16G16B16A16_SINT",           14,  96, 0x8D88, ePlain,       1,  1,  8, 1, false, kRefused,  channels("R16G16B16A16", eSInt)},
    {"R32G32_TYPELESS",             15,   0,     0, ePlain,       1,  1,  8, 1, false, kRefused,  channels("R32G32", eTypeless)},
    {"R32G32_FLOAT",                16, 103, 0x8230, ePlain,       1,  1,  8, 1, false, kRefused,  channels("R32G32", eFloat)},
    {"R32G32_UINT",                 17, 101, 0x823C, ePlain,       1,  1,  8, 1, false, kRefused,  channels("R32G32", eUInt)},
    {"R32G32_SINT",                 18, 102, 0x823B, ePlain,       1,  1,  8, 1, false, kRefused,  channels("R32G32", eSInt)},
    {"R32G8X24_TYPELESS",           19,   0,     0, ePlain,       1,  1,  8, 1, false, kRefused,  channels("R32G8X24", eTypeless)},
    {"D32_FLOAT_S8X24_UINT",        20, 130, 0x8CAD, ePlain,       1,  1,  8, 1, false, kRefused,  channels("D32", eFloat, "S8", eUInt, "X24", eTypeless)},
    {"R32_FLOAT_X8X24_TYPELESS",    21,   0,     0, ePlain,       1,  1,  8, 1, false, kRefused,  channels("R32", eFloat, "X8X24", eTypeless)},
    {"X32_TYPELESS_G8X24_UINT",     22,   0,     0, ePlain,       1,  1,  8, 1, false, kRefused,  channels("X32", eTypeless, "G8", eUInt, "X24", eTypeless)},
    {"R10G10B10A2_TYPELESS",        23,   0,     0, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R10G10B10A2", eTypeless)},
    {"R10G10B10A2_UNORM",           24,  64, 0x8059, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R10G10B10A2", eUNorm)},
    {"R10G10B10A2_UINT",            25,  68, 0x906F, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R10G10B10A2", eUInt)},
    {"R11G11B10_FLOAT",             26, 122, 0x8C3A, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R11G11B10", eFloat)},
    {"R8G8B8A8_TYPELESS",           27,   0,     0, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R8G8B8A8", eTypeless)},
    {"R8G8B8A8_UNORM",              28,  37, 0x8058, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R8G8B8A8", eUNorm)},
    {"R8G8B8A8_UNORM_SRGB",         29,  43, 0x8C43, ePlain,       1,  1,  4, 1, true,  kRefused,  channels("R8G8B8A8", eUNorm)},
    {"R8G8B8A8_UINT",               30,  41, 0x8D7C, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R8G8B8A8", eUInt)},
    {"R8G8B8A8_SNORM",              31,  38, 0x8F97, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R8G8B8A8", eSNorm)},
    {"R8G8B8A8_SINT",               32,  42, 0x8D8E, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R8G8B8A8", eSInt)},
    {"R16G16_TYPELESS",             33,   0,     0, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R16G16", eTypeless)},
    {"R16G16_FLOAT",                34,  83, 0x822F, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R16G16", eFloat)},
    {"R16G16_UNORM",                35,  77, 0x822C, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R16G16", eUNorm)},
    {"R16G16_UINT",                 36,  81, 0x823A, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R16G16", eUInt)},
    {"R16G16_SNORM",                37,  78, 0x8F99, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R16G16", eSNorm)},
    {"R16G16_SINT",                 38,  82, 0x8239, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R16G16", eSInt)},
    {"R32_TYPELESS",                39,   0,     0, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R32", eTypeless)},
    {"D32_FLOAT",                   40, 126, 0x8CAC, ePlain,       1,  1,  4, 1, false, kRefused,  channels("D32", eFloat)},
    {"R32_FLOAT",                   41, 100, 0x822E, ePlain,       1,  1,  4, 1, false, R32F,      channels("R32", eFloat)},
    {"R32_UINT",                    42,  98, 0x8236, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R32", eUInt)},
    {"R32_SINT",                    43,  99, 0x8235, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R32", eSInt)},
    {"R24G8_TYPELESS",              44,   0,     0, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R24G8", eTypeless)},
    {"D24_UNORM_S8_UINT",           45, 129, 0x88F0, ePlain,       1,  1,  4, 1, false, kRefused,  channels("D24", eUNorm, "S8", eUInt)},
    {"R24_UNORM_X8_TYPELESS",       46,   0,     0, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R24", eUNorm, "X8", eTypeless)},
    {"X24_TYPELESS_G8_UINT",        47,   0,     0, ePlain,       1,  1,  4, 1, false, kRefused,  channels("X24", eTypeless, "G8", eUInt)},
    {"R8G8_TYPELESS",               48,   0,     0, ePlain,       1,  1,  2, 1, false, kRefused,  channels("R8G8", eTypeless)},
    {"R8G8_UNORM",                  49,  16, 0x822B, ePlain,       1,  1,  2, 1, false, kRefused,  channels("R8G8", eUNorm)},
    {"R8G8_UINT",                   50,  20, 0x8238, ePlain,       1,  1,  2, 1, false, kRefused,  channels("R8G8", eUInt)},
    {"R8G8_SNORM",                  51,  17, 0x8F95, ePlain,       1,  1,  2, 1, false, kRefused,  channels("R8G8", eSNorm)},
    {"R8G8_SINT",                   52,  21, 0x8237, ePlain,       1,  1,  2, 1, false, kRefused,  channels("R8G8", eSInt)},
    {"R16_TYPELESS",                53,   0,     0, ePlain,       1,  1,  2, 1, false, kRefused,  channels("R16", eTypeless)},
    {"R16_FLOAT",                   54,  76, 0x822D, ePlain,       1,  1,  2, 1, false, kRefused,  channels("R16", eFloat)},
    {"D16_UNORM",                   55, 124, 0x81A5, ePlain,       1,  1,  2, 1, false, kRefused,  channels("D16", eUNorm)},
    {"R16_UNORM",                   56,  70, 0x822A, ePlain,       1,  1,  2, 1, false, kRefused,  channels("R16", eUNorm)},
    {"R16_UINT",                    57,  74, 0x8234, ePlain,       1,  1,  2, 1, false, kRefused,  channels("R16", eUInt)},
    {"R16_SNORM",                   58,  71, 0x8F98, ePlain,       1,  1,  2, 1, false, kRefused,  channels("R16", eSNorm)},
    {"R16_SINT",                    59,  75, 0x8233, ePlain,       1,  1,  2, 1, false, kRefused,  channels("R16", eSInt)},
    {"R8_TYPELESS",                 60,   0,     0, ePlain,       1,  1,  1, 1, false, kRefused,  channels("R8", eTypeless)},
    {"R8_UNORM",                    61,   9, 0x8229, ePlain,       1,  1,  1, 1, false, kRefused,  channels("R8", eUNorm)},
    {"R8_UINT",                     62,  13, 0x8232, ePlain,       1,  1,  1, 1, false, kRefused,  channels("R8", eUInt)},
    {"R8_SNORM",                    63,  10, 0x8F94, ePlain,       1,  1,  1, 1, false, kRefused,  channels("R8", eSNorm)},
    {"R8_SINT",                     64,  14, 0x8231, ePlain,       1,  1,  1, 1, false, kRefused,  channels("R8", eSInt)},
    {"A8_UNORM",                    65,   0, 0x8229, ePlain,       1,  1,  1, 1, false, kRefused,  channels("A8", eUNorm)},
    {"R1_UNORM",                    66,   0,     0, ePlain,       8,  1,  1, 1, false, kRefused,  channels("R1", eUNorm)},
    {"R9G9B9E5_SHAREDEXP",          67, 123, 0x8C3D, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R9G9B9E5", eSharedExponent)},
    {"R8G8_B8G8_UNORM",             68,   0,     0, eSubsampled,  2,  1,  4, 1, false, kRefused,  channels("R8G8B8", eUNorm)},
    {"G8R8_G8B8_UNORM",             69,   0,     0, eSubsampled,  2,  1,  4, 1, false, kRefused,  channels("R8G8B8", eUNorm)},
    {"BC1_TYPELESS",                70,   0,     0, eBlocks,      4,  4,  8, 1, false, kRefused,  channels("R5G6B5A1", eTypeless)},
    {"BC1_UNORM",                   71, 133, 0x83F1, eBlocks,      4,  4,  8, 1, false, DXT1,      channels("R5G6B5A1", eUNorm)},
    {"BC1_UNORM_SRGB",              72, 134, 0x8C4D, eBlocks,      4,  4,  8, 1, true,  kRefused,  channels("R5G6B5A1", eUNorm)},
    {"BC2_TYPELESS",                73,   0,     0, eBlocks,      4,  4, 16, 1, false, kRefused,  channels("R5G6B5A4", eTypeless)},
    {"BC2_UNORM",                   74, 135, 0x83F2, eBlocks,      4,  4, 16, 1, false, DXT3,      channels("R5G6B5A4", eUNorm)},
    {"BC2_UNORM_SRGB",              75, 136, 0x8C4E, eBlocks,      4,  4, 16, 1, true,  kRefused,  channels("R5G6B5A4", eUNorm)},
    {"BC3_TYPELESS",                76,   0,     0, eBlocks,      4,  4, 16, 1, false, kRefused,  channels("R5G6B5A8", eTypeless)},
    {"BC3_UNORM",                   77, 137, 0x83F3, eBlocks,      4,  4, 16, 1, false, DXT5,      channels("R5G6B5A8", eUNorm)},
    {"BC3_UNORM_SRGB",              78, 138, 0x8C4F, eBlocks,      4,  4, 16, 1, true,  kRefused,  channels("R5G6B5A8", eUNorm)},
    {"BC4_TYPELESS",                79,   0,     0, eBlocks,      4,  4,  8, 1, false, kRefused,  channels("R8", eTypeless)},
    {"BC4_UNORM",                   80, 139, 0x8DBB, eBlocks,      4,  4,  8, 1, false, BC4U,      channels("R8", eUNorm)},
    {"BC4_SNORM",                   81, 140, 0x8DBC, eBlocks,      4,  4,  8, 1, false, BC4S,      channels("R8", eSNorm)},
    {"BC5_TYPELESS",                82,   0,     0, eBlocks,      4,  4, 16, 1, false, kRefused,  channels("R8G8", eTypeless)},
    {"BC5_UNORM",                   83, 141, 0x8DBD, eBlocks,      4,  4, 16, 1, false, BC5U,      channels("R8G8", eUNorm)},
    {"BC5_SNORM",                   84, 142, 0x8DBE, eBlocks,      4,  4, 16, 1, false, BC5S,      channels("R8G8", eSNorm)},
    {"B5G6R5_UNORM",                85,   4, 0x8D62, ePlain,       1,  1,  2, 1, false, kRefused,  channels("B5G6R5", eUNorm)},
    {"B5G5R5A1_UNORM",              86,   8, 0x8057, ePlain,       1,  1,  2, 1, false, kRefused,  channels("B5G5R5A1", eUNorm)},
    {"B8G8R8A8_UNORM",              87,  44, 0x8058, ePlain,       1,  1,  4, 1, false, BGRA8,     channels("B8G8R8A8", eUNorm)},
    {"B8G8R8X8_UNORM",              88,   0, 0x8051, ePlain,       1,  1,  4, 1, false, kRefused,  channels("B8G8R8X8", eUNorm)},
    {"R10G10B10_XR_BIAS_A2_UNORM",  89,   0,     0, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R10G10B10", eXRBias, "A2", eUNorm)},
    {"B8G8R8A8_TYPELESS",           90,   0,     0, ePlain,       1,  1,  4, 1, false, kRefused,  channels("B8G8R8A8", eTypeless)},
    {"B8G8R8A8_UNORM_SRGB",         91,  50, 0x8C43, ePlain,       1,  1,  4, 1, true,  kRefused,  channels("B8G8R8A8", eUNorm)},
    {"B8G8R8X8_TYPELESS",           92,   0,     0, ePlain,       1,  1,  4, 1, false, kRefused,  channels("B8G8R8X8", eTypeless)},
    {"B8G8R8X8_UNORM_SRGB",         93,   0, 0x8C41, ePlain,       1,  1,  4, 1, true,  kRefused,  channels("B8G8R8X8", eUNorm)},
    {"BC6H_TYPELESS",               94,   0,     0, eBlocks,      4,  4, 16, 1, false, kRefused,  channels("R16G16B16", eTypeless)},
    {"BC6H_UF16",                   95, 143, 0x8E8F, eBlocks,      4,  4, 16, 1, false, BC6H_UF16, channels("R16G16B16", eFloat)},
    {"BC6H_SF16",                   96, 144, 0x8E8E, eBlocks,      4,  4, 16, 1, false, BC6H_SF16, channels("R16G16B16", eFloat)},
    {"BC7_TYPELESS",                97,   0,     0, eBlocks,      4,  4, 16, 1, false, kRefused,  channels("R8G8B8A8", eTypeless)},
    {"BC7_UNORM",                   98, 145, 0x8E8C, eBlocks,      4,  4, 16, 1, false, kRefused,  channels("R8G8B8A8", eUNorm)},
    {"BC7_UNORM_SRGB",              99, 146, 0x8E8D, eBlocks,      4,  4, 16, 1, true,  kRefused,  channels("R8G8B8A8", eUNorm)},
    {"AYUV",                       100,   0,     0, eYUV,         1,  1,  4, 1, false, kRefused,  channels("V8U8Y8A8", eUNorm)},
    {"Y410",                       101,   0,     0, eYUV,         1,  1,  4, 1, false, kRefused,  channels("U10Y10V10A2", eUNorm)},
    {"Y416",                       102,   0,     0, eYUV,         1,  1,  8, 1, false, kRefused,  channels("U16Y16V16A16", eUNorm)},
    {"NV12",                       103,   0,     0, eYUVHalf,     2,  1,  2, 2, false, kRefused,  channels("Y8U8V8", eUNorm)},
    {"P010",                       104,   0,     0, eYUVHalf,     2,  1,  4, 2, false, kRefused,  channels("Y10U10V10", eUNorm)},
    {"P016",                       105,   0,     0, eYUVHalf,     2,  1,  4, 2, false, kRefused,  channels("Y16U16V16", eUNorm)},
    {"420_OPAQUE",                 106,   0,     0, eYUVHalf,     2,  1,  2, 2, false, kRefused,  channels("Y8U8V8", eUNorm)},
    {"YUY2",                       107,   0,     0, eYUV,         2,  1,  4, 1, false, kRefused,  channels("Y8U8V8", eUNorm)},
    {"Y210",                       108,   0,     0, eYUV,         2,  1,  8, 1, false, kRefused,  channels("Y10U10V10", eUNorm)},
    {"Y216",                       109,   0,     0, eYUV,         2,  1,  8, 1, false, kRefused,  channels("Y16U16V16", eUNorm)},
    {"NV11",                       110,   0,     0, eYUV,         4,  1,  4, 2, false, kRefused,  channels("Y8U8V8", eUNorm)},
    {"AI44",                       111,   0,     0, ePalette,     1,  1,  1, 1, false, kRefused,  channels("A4P4", eUInt)},
    {"IA44",                       112,   0,     0, ePalette,     1,  1,  1, 1, false, kRefused,  channels("P4A4", eUInt)},
    {"P8",                         113,   0,     0, ePalette,     1,  1,  1, 1, false, kRefused,  channels("P8", eUInt)},
    {"A8P8",                       114,   0,     0, ePalette,     1,  1,  2, 1, false, kRefused,  channels("P8A8", eUInt)},
    {"B4G4R4A4_UNORM",             115,   0, 0x8056, ePlain,       1,  1,  2, 1, false, kRefused,  channels("B4G4R4A4", eUNorm)},
    {"P208",                       130,   0,     0, eYUV,         2,  1,  2, 2, false, kRefused,  channels("Y8U8V8", eUNorm)},
    {"V208",                       131,   0,     0, eYUVHalf,     1,  1,  1, 3, false, kRefused,  channels("Y8U8V8", eUNorm)},
    {"V408",                       132,   0,     0, eYUV,         1,  1,  1, 3, false, kRefused,  channels("Y8U8V8", eUNorm)},
    {"ASTC_4X4_TYPELESS",          133,   0,     0, eASTC,        4,  4, 16, 1, false, kRefused,  channels("R8G8B8A8", eTypeless)},
    {"ASTC_4X4_UNORM",             134, 157, 0x93B0, eASTC,        4,  4, 16, 1, false, kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_4X4_UNORM_SRGB",        135, 158, 0x93D0, eASTC,        4,  4, 16, 1, true,  kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_5X4_TYPELESS",          137,   0,     0, eASTC,        5,  4, 16, 1, false, kRefused,  channels("R8G8B8A8", eTypeless)},
    {"ASTC_5X4_UNORM",             138, 159, 0x93B1, eASTC,        5,  4, 16, 1, false, kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_5X4_UNORM_SRGB",        139, 160, 0x93D1, eASTC,        5,  4, 16, 1, true,  kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_5X5_TYPELESS",          141,   0,     0, eASTC,        5,  5, 16, 1, false, kRefused,  channels("R8G8B8A8", eTypeless)},
    {"ASTC_5X5_UNORM",             142, 161, 0x93B2, eASTC,        5,  5, 16, 1, false, kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_5X5_UNORM_SRGB",        143, 162, 0x93D2, eASTC,        5,  5, 16, 1, true,  kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_6X5_TYPELESS",          145,   0,     0, eASTC,        6,  5, 16, 1, false, kRefused,  channels("R8G8B8A8", eTypeless)},
    {"ASTC_6X5_UNORM",             146, 163, 0x93B3, eASTC,        6,  5, 16, 1, false, kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_6X5_UNORM_SRGB",        147, 164, 0x93D3, eASTC,        6,  5, 16, 1, true,  kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_6X6_TYPELESS",          149,   0,     0, eASTC,        6,  6, 16, 1, false, kRefused,  channels("R8G8B8A8", eTypeless)},
    {"ASTC_6X6_UNORM",             150, 165, 0x93B4, eASTC,        6,  6, 16, 1, false, kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_6X6_UNORM_SRGB",        151, 166, 0x93D4, eASTC,        6,  6, 16, 1, true,  kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_8X5_TYPELESS",          153,   0,     0, eASTC,        8,  5, 16, 1, false, kRefused,  channels("R8G8B8A8", eTypeless)},
    {"ASTC_8X5_UNORM",             154, 167, 0x93B5, eASTC,        8,  5, 16, 1, false, kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_8X5_UNORM_SRGB",        155, 168, 0x93D5, eASTC,        8,  5, 16, 1, true,  kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_8X6_TYPELESS",          157,   0,     0, eASTC,        8,  6, 16, 1, false, kRefused,  channels("R8G8B8A8", eTypeless)},
    {"ASTC_8X6_UNORM",             158, 169, 0x93B6, eASTC,        8,  6, 16, 1, false, kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_8X6_UNORM_SRGB",        159, 170, 0x93D6, eASTC,        8,  6, 16, 1, true,  kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_8X8_TYPELESS",          161,   0,     0, eASTC,        8,  8, 16, 1, false, kRefused,  channels("R8G8B8A8", eTypeless)},
    {"ASTC_8X8_UNORM",             162, 171, 0x93B7, eASTC,        8,  8, 16, 1, false, kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_8X8_UNORM_SRGB",        163, 172, 0x93D7, eASTC,        8,  8, 16, 1, true,  kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_10X5_TYPELESS",         165,   0,     0, eASTC,       10,  5, 16, 1, false, kRefused,  channels("R8G8B8A8", eTypeless)},
    {"ASTC_10X5_UNORM",            166, 173, 0x93B8, eASTC,       10,  5, 16, 1, false, kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_10X5_UNORM_SRGB",       167, 174, 0x93D8, eASTC,       10,  5, 16, 1, true,  kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_10X6_TYPELESS",         169,   0,     0, eASTC,       10,  6, 16, 1, false, kRefused,  channels("R8G8B8A8", eTypeless)},
    {"ASTC_10X6_UNORM",            170, 175, 0x93B9, eASTC,       10,  6, 16, 1, false, kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_10X6_UNORM_SRGB",       171, 176, 0x93D9, eASTC,       10,  6, 16, 1, true,  kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_10X8_TYPELESS",         173,   0,     0, eASTC,       10,  8, 16, 1, false, kRefused,  channels("R8G8B8A8", eTypeless)},
    {"ASTC_10X8_UNORM",            174, 177, 0x93BA, eASTC,       10,  8, 16, 1, false, kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_10X8_UNORM_SRGB",       175, 178, 0x93DA, eASTC,       10,  8, 16, 1, true,  kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_10X10_TYPELESS",        177,   0,     0, eASTC,       10, 10, 16, 1, false, kRefused,  channels("R8G8B8A8", eTypeless)},
    {"ASTC_10X10_UNORM",           178, 179, 0x93BB, eASTC,       10, 10, 16, 1, false, kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_10X10_UNORM_SRGB",      179, 180, 0x93DB, eASTC,       10, 10, 16, 1, true,  kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_12X10_TYPELESS",        181,   0,     0, eASTC,       12, 10, 16, 1, false, kRefused,  channels("R8G8B8A8", eTypeless)},
    {"ASTC_12X10_UNORM",           182, 181, 0x93BC, eASTC,       12, 10, 16, 1, false, kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_12X10_UNORM_SRGB",      183, 182, 0x93DC, eASTC,       12, 10, 16, 1, true,  kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_12X12_TYPELESS",        185,   0,     0, eASTC,       12, 12, 16, 1, false, kRefused,  channels("R8G8B8A8", eTypeless)},
    {"ASTC_12X12_UNORM",           186, 183, 0x93BD, eASTC,       12, 12, 16, 1, false, kRefused,  channels("R8G8B8A8", eUNorm)},
    {"ASTC_12X12_UNORM_SRGB",      187, 184, 0x93DD, eASTC,       12, 12, 16, 1, true,  kRefused,  channels("R8G8B8A8", eUNorm)},
    {"A4B4G4R4_UNORM",             191,   2, 0x8056, ePlain,       1,  1,  2, 1, false, kRefused,  channels("A4B4G4R4", eUNorm)},
    {"B8G8R8_UNORM",                 0,  30, 0x8051, ePlain,       1,  1,  3, 1, false, kRefused,  channels("B8G8R8", eUNorm)},
    {"R8G8B8_UNORM",                 0,  23, 0x8051, ePlain,       1,  1,  3, 1, false, kRefused,  channels("R8G8B8", eUNorm)},
    {"R8G8B8X8_UNORM",               0,   0, 0x8051, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R8G8B8X8", eUNorm)},
    {"B10G10R10A2_UNORM",            0,  58, 0x8059, ePlain,       1,  1,  4, 1, false, kRefused,  channels("B10G10R10A2", eUNorm)},
    {"B2G3R3_UNORM",                 0,   0,     0, ePlain,       1,  1,  1, 1, false, kRefused,  channels("B2G3R3", eUNorm)},
    {"B2G3R3A8_UNORM",               0,   0,     0, ePlain,       1,  1,  2, 1, false, kRefused,  channels("B2G3R3A8", eUNorm)},
    {"B5G5R5X1_UNORM",               0,   0,     0, ePlain,       1,  1,  2, 1, false, kRefused,  channels("B5G5R5X1", eUNorm)},
    {"B4G4R4X4_UNORM",               0,   0,     0, ePlain,       1,  1,  2, 1, false, kRefused,  channels("B4G4R4X4", eUNorm)},
    {"A1B5G5R5_UNORM",               0,   6,     0, ePlain,       1,  1,  2, 1, false, kRefused,  channels("A1B5G5R5", eUNorm)},
    {"L8_UNORM",                     0,   0, 0x8229, ePlain,       1,  1,  1, 1, false, kRefused,  channels("L8", eUNorm)},
    {"L8A8_UNORM",                   0,   0, 0x822B, ePlain,       1,  1,  2, 1, false, kRefused,  channels("L8A8", eUNorm)},
    {"L16_UNORM",                    0,   0, 0x822A, ePlain,       1,  1,  2, 1, false, kRefused,  channels("L16", eUNorm)},
    {"L4A4_UNORM",                   0,   0,     0, ePlain,       1,  1,  1, 1, false, kRefused,  channels("L4A4", eUNorm)},
    {"R5G5_SNORM_L6_UNORM",          0,   0,     0, ePlain,       1,  1,  2, 1, false, kRefused,  channels("R5G5", eSNorm, "L6", eUNorm)},
    {"R8G8_SNORM_L8X8_UNORM",        0,   0,     0, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R8G8", eSNorm, "L8X8", eUNorm)},
    {"R10G10B10_SNORM_A2_UNORM",     0,   0,     0, ePlain,       1,  1,  4, 1, false, kRefused,  channels("R10G10B10", eSNorm, "A2", eUNorm)},
    {"R8_UNORM_SRGB",                0,  15, 0x8FBD, ePlain,       1,  1,  1, 1, true,  kRefused,  channels("R8", eUNorm)},
    {"R8G8_UNORM_SRGB",              0,  22, 0x8FBE, ePlain,       1,  1,  2, 1, true,  kRefused,  channels("R8G8", eUNorm)},
    {"R8G8B8_UNORM_SRGB",            0,  29, 0x8C41, ePlain,       1,  1,  3, 1, true,  kRefused,  channels("R8G8B8", eUNorm)},
    {"B8G8R8_UNORM_SRGB",            0,  36, 0x8C41, ePlain,       1,  1,  3, 1, true,  kRefused,  channels("B8G8R8", eUNorm)},
    {"UYVY",                         0,   0,     0, eYUV,         2,  1,  4, 1, false, kRefused,  channels("U8Y8V8", eUNorm)},
};

inline constexpr vLegacyFormat kLegacyFormats[] = {
    {FourCC("DXT1"), "BC1_UNORM", DXT1, false},
    {FourCC("DXT2"), "BC2_UNORM", kRefused, true},
    {FourCC("DXT3"), "BC2_UNORM", DXT3, false},
    {FourCC("DXT4"), "BC3_UNORM", kRefused, true},
    {FourCC("DXT5"), "BC3_UNORM", DXT5, false},
    {FourCC("ATI1"), "BC4_UNORM", BC4U, false},
    {FourCC("BC4U"), "BC4_UNORM", BC4U, false},
    {FourCC("BC4S"), "BC4_SNORM", BC4S, false},
    {FourCC("ATI2"), "BC5_UNORM", BC5U, false},
    {FourCC("BC5U"), "BC5_UNORM", BC5U, false},
    {FourCC("BC5S"), "BC5_SNORM", BC5U, false},  // unsigned, unlike DXGI format 84
    {FourCC("RGBG"), "R8G8_B8G8_UNORM", kRefused, false},
    {FourCC("GRGB"), "G8R8_G8B8_UNORM", kRefused, false},
    {FourCC("UYVY"), "UYVY", kRefused, false},
    {FourCC("YUY2"), "YUY2", kRefused, false},
    {20, "B8G8R8_UNORM", kRefused, false},
    {21, "B8G8R8A8_UNORM", kRefused, false},
    {22, "B8G8R8X8_UNORM", kRefused, false},
    {23, "B5G6R5_UNORM", kRefused, false},
    {24, "B5G5R5X1_UNORM", kRefused, false},
    {25, "B5G5R5A1_UNORM", kRefused, false},
    {26, "B4G4R4A4_UNORM", kRefused, false},
    {27, "B2G3R3_UNORM", kRefused, false},
    {28, "A8_UNORM", kRefused, false},
    {29, "B2G3R3A8_UNORM", kRefused, false},
    {30, "B4G4R4X4_UNORM", kRefused, false},
    {31, "R10G10B10A2_UNORM", kRefused, false},
    {32, "R8G8B8A8_UNORM", kRefused, false},
    {33, "R8G8B8X8_UNORM", kRefused, false},
    {34, "R16G16_UNORM", kRefused, false},
    {35, "B10G10R10A2_UNORM", kRefused, false},
    {36, "R16G16B16A16_UNORM", kRefused, false},
    {40, "A8P8", kRefused, false},
    {41, "P8", kRefused, false},
    {50, "L8_UNORM", kRefused, false},
    {51, "L8A8_UNORM", kRefused, false},
    {52, "L4A4_UNORM", kRefused, false},
    {60, "R8G8_SNORM", kRefused, false},
    {61, "R5G5_SNORM_L6_UNORM", kRefused, false},
    {62, "R8G8_SNORM_L8X8_UNORM", kRefused, false},
    {63, "R8G8B8A8_SNORM", kRefused, false},
    {64, "R16G16_SNORM", kRefused, false},
    {67, "R10G10B10_SNORM_A2_UNORM", kRefused, false},
    {70, "D16_UNORM", kRefused, false},
    {80, "D16_UNORM", kRefused, false},
    {81, "L16_UNORM", kRefused, false},
    {82, "D32_FLOAT", kRefused, false},
    {110, "R16G16B16A16_SNORM", kRefused, false},
    {111, "R16_FLOAT", kRefused, false},
    {112, "R16G16_FLOAT", kRefused, false},
    {113, "R16G16B16A16_FLOAT", RGBA16F, false},
    {114, "R32_FLOAT", R32F, false},
    {115, "R32G32_FLOAT", kRefused, false},
    {116, "R32G32B32A32_FLOAT", RGBA32F, false},
    {117, "R8G8_SNORM", kRefused, false},
    {119, "R10G10B10_XR_BIAS_A2_UNORM", kRefused, false},
};
// clang-format on

}  // namespace vTextureFormatTables

#endif
