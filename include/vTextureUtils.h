// SPDX-License-Identifier: Apache-2.0
// Sizes of textures by format, and converters that widen pixels to four channels.
//
// Texture formats and client data types have numbers for names; all that matters is how many bytes their
// pixels or blocks take. The block-compressed formats, with blocks of 4x4 pixels, are the pairs of BC1, BC2,
// BC3, BC4, BC5, BC6H and BC7, in this order (published in the Khronos Data Format Specification).
//
// Size arithmetic is unsigned 32-bit and wraps around.
//
// Errors: a wrong format and a null pointer are reported through CheckFailure__ and Check_Pointer_Failed__,
// which return; the operation then returns 0 or null. The only exceptions are the standard library's for
// failed allocations.
//
// Threads: no state; every operation may run on several threads at once.
#ifndef V_TEXTURE_UTILS_H
#define V_TEXTURE_UTILS_H

#include <cstdint>

#include "PeltoExport.h"
#include "vTVec3.h"

/// Storage formats of textures.
struct vTextureFormat {
    // clang-format off

    /// 1 to 50 are uncompressed, 51 to 64 block-compressed; no other number is a format.
    enum Type : std::int32_t {
        FORMAT_1 = 1, FORMAT_2 = 2, FORMAT_3 = 3, FORMAT_4 = 4, FORMAT_5 = 5,
        FORMAT_6 = 6, FORMAT_7 = 7, FORMAT_8 = 8, FORMAT_9 = 9, FORMAT_10 = 10,
        FORMAT_11 = 11, FORMAT_12 = 12, FORMAT_13 = 13, FORMAT_14 = 14, FORMAT_15 = 15,
        FORMAT_16 = 16, FORMAT_17 = 17, FORMAT_18 = 18, FORMAT_19 = 19, FORMAT_20 = 20,
        FORMAT_21 = 21, FORMAT_22 = 22, FORMAT_23 = 23, FORMAT_24 = 24, FORMAT_25 = 25,
        FORMAT_26 = 26, FORMAT_27 = 27, FORMAT_28 = 28, FORMAT_29 = 29, FORMAT_30 = 30,
        FORMAT_31 = 31, FORMAT_32 = 32, FORMAT_33 = 33, FORMAT_34 = 34, FORMAT_35 = 35,
        FORMAT_36 = 36, FORMAT_37 = 37, FORMAT_38 = 38, FORMAT_39 = 39, FORMAT_40 = 40,
        FORMAT_41 = 41, FORMAT_42 = 42, FORMAT_43 = 43, FORMAT_44 = 44, FORMAT_45 = 45,
        FORMAT_46 = 46, FORMAT_47 = 47, FORMAT_48 = 48, FORMAT_49 = 49, FORMAT_50 = 50,
        FORMAT_51 = 51, FORMAT_52 = 52, FORMAT_53 = 53, FORMAT_54 = 54, FORMAT_55 = 55,
        FORMAT_56 = 56, FORMAT_57 = 57, FORMAT_58 = 58, FORMAT_59 = 59, FORMAT_60 = 60,
        FORMAT_61 = 61, FORMAT_62 = 62, FORMAT_63 = 63, FORMAT_64 = 64,
    };

    // clang-format on
};

// clang-format off

/// Layouts of a client's pixel data; no other number is a type.
enum vTextureClientDataType : std::int32_t {
    CLIENT_TYPE_1 = 1, CLIENT_TYPE_2 = 2, CLIENT_TYPE_3 = 3, CLIENT_TYPE_4 = 4,
    CLIENT_TYPE_5 = 5, CLIENT_TYPE_6 = 6, CLIENT_TYPE_7 = 7, CLIENT_TYPE_8 = 8,
    CLIENT_TYPE_9 = 9, CLIENT_TYPE_10 = 10, CLIENT_TYPE_11 = 11, CLIENT_TYPE_12 = 12,
    CLIENT_TYPE_13 = 13, CLIENT_TYPE_14 = 14, CLIENT_TYPE_15 = 15, CLIENT_TYPE_16 = 16,
    CLIENT_TYPE_17 = 17, CLIENT_TYPE_18 = 18, CLIENT_TYPE_19 = 19, CLIENT_TYPE_20 = 20,
    CLIENT_TYPE_21 = 21, CLIENT_TYPE_22 = 22, CLIENT_TYPE_23 = 23, CLIENT_TYPE_24 = 24,
    CLIENT_TYPE_25 = 25, CLIENT_TYPE_26 = 26, CLIENT_TYPE_27 = 27, CLIENT_TYPE_28 = 28,
    CLIENT_TYPE_29 = 29, CLIENT_TYPE_30 = 30, CLIENT_TYPE_31 = 31, CLIENT_TYPE_32 = 32,
    CLIENT_TYPE_33 = 33, CLIENT_TYPE_34 = 34, CLIENT_TYPE_35 = 35, CLIENT_TYPE_36 = 36,
};

// clang-format on

/// Static helpers for creating and uploading textures. `level` is a mip level, taken modulo 32: 0 is the full
/// image.
class PELTO_API vTextureUtils {
public:
    /// The extent of a level in pixels: each component is max(component >> level, 1).
    static TOZ::vTVec3<unsigned int, 0> ComputeImageSize(unsigned int width, unsigned int height,
                                                         unsigned int depth, unsigned int level);
    static TOZ::vTVec3<unsigned int, 0> ComputeImageSize(TOZ::vTVec3<unsigned int, 0> size,
                                                         unsigned int level);

    /// The number of pixels of a level.
    static unsigned int ComputeImageNumPixels(unsigned int width, unsigned int height, unsigned int depth,
                                              unsigned int level);
    static unsigned int ComputeImageNumPixels(TOZ::vTVec3<unsigned int, 0> size, unsigned int level);

    /// Bytes of a level in a texture format. A block-compressed level counts in whole blocks and as one
    /// slice, whatever its depth. A number that is no format is reported and gives 0.
    static unsigned int ComputeImageSizeInBytes(unsigned int width, unsigned int height, unsigned int depth,
                                                unsigned int level, vTextureFormat::Type format);
    static unsigned int ComputeImageSizeInBytes(TOZ::vTVec3<unsigned int, 0> size, unsigned int level,
                                                vTextureFormat::Type format);

    /// Bytes of a level of client data. A number that is no type gives 0, without a report.
    static unsigned int ComputeImageSizeInBytes(unsigned int width, unsigned int height, unsigned int depth,
                                                unsigned int level, vTextureClientDataType type);
    static unsigned int ComputeImageSizeInBytes(TOZ::vTVec3<unsigned int, 0> size, unsigned int level,
                                                vTextureClientDataType type);

    /// As ComputeImageSizeInBytes.
    static unsigned int ComputeMipSizeInBytes(unsigned int width, unsigned int height, unsigned int depth,
                                              unsigned int level, vTextureFormat::Type format);

    /// The number of levels of a full mip chain down to 1 x 1; 0 if both extents are 0.
    static unsigned int ComputeMipmapNumber(unsigned int width, unsigned int height);

    /// Whether the format is block-compressed.
    static bool IsCompressed(const vTextureFormat::Type& format);

    /// A client data type that suits the format; CLIENT_TYPE_23 if no other does.
    static vTextureClientDataType ComputeCompatibleFormat(vTextureFormat::Type format);

    // The converters read `size` bytes at `iData`, which may lie at any address, and return a new buffer with
    // the whole pixels among them; they ignore a last, partial pixel. The caller owns the buffer and releases
    // it with array delete; without a pixel it is empty, not null. A null `iData` is reported and gives null.
    // They throw std::bad_array_new_length for a result too large for any memory, std::bad_alloc for one that
    // cannot be allocated.

    /// 3 bytes a pixel to 4: red, green, blue, 255.
    static unsigned char* ConvertRGB8ToRGBA8(const unsigned char* iData, std::uint64_t size);

    /// 3 bytes a pixel, blue first, to 4: red, green, blue, 255.
    static unsigned char* ConvertBGR8ToRGBA8(const unsigned char* iData, std::uint64_t size);

    /// 4 bytes a pixel, blue first, to red, green, blue, alpha.
    static unsigned char* ConvertBGRA8ToRGBA8(const unsigned char* iData, std::uint64_t size);

    /// 3 floats a pixel to 4; the fourth is 1. Keeps the bits of the three.
    static unsigned char* ConvertRGB32FToRGBA32F(const unsigned char* iData, std::uint64_t size);

private:
    static unsigned int _ComputeCompressedSize(unsigned int width, unsigned int height,
                                               vTextureFormat::Type format);
    static unsigned int _GetSizeForUncompressedFormat(const vTextureFormat::Type& format);
    static unsigned int _GetSizeForUncompressedFormat(const vTextureClientDataType& type);
};

#endif
