// SPDX-License-Identifier: Apache-2.0
// Uncompressed pixels of any format, decoded to red, green, blue and alpha.
//
// Decodes the formats of vTextureFormats, including those made from masks, that hold numbers for colour,
// luminance or alpha, one pixel after the other or in pairs (R8G8_B8G8_UNORM). It does not decode blocks,
// YUV, palettes, depth and stencil, XR bias, and formats that are typeless in part or whole.
//
// A decoded pixel is four elements in a row: red, green, blue, alpha. A colour that the format lacks is 0,
// and alpha that it lacks is 1 (the most of an element), even if it has unused bits (X). Luminance gives red,
// green and blue; beside red and green (R5G5_SNORM_L6_UNORM) it gives only blue. vPixelFormat::channels says
// which channels a format has. sRGB values stay as stored.
//
// What the number of a channel of n bits becomes:
//
//   kind             8 or 16 bits (most: 255 or 65535)            float
//   UNORM            v / (2^n - 1) of most                        v / (2^n - 1)
//   SNORM            -1 to 1 spread over 0 to most                max(v / (2^(n-1) - 1), -1)
//   UINT, SINT       the number, cut to 0 and most                the number
//   FLOAT, shared    cut to 0 and 1, then of most; NaN is 0       the same value, including subnormals,
//   exponent                                                      infinities and NaN (with sign and mantissa)
//
// Results are the nearest whole number, with halves rounded up, or the nearest float. A single-bit SNORM is 0
// or -1. R1_UNORM holds 8 pixels a byte, the first in the highest bit.
//
// Hostile data: every byte decodes to something, and Decode reads only the bytes that it documents. Compare
// the extents with the size of the data first.
//
// Errors: a format that cannot be decoded gives false. Nothing throws.
//
// Threads: no state; every operation may run on several threads at once.
#ifndef V_TEXTURE_PIXELS_H
#define V_TEXTURE_PIXELS_H

#include <cstdint>

#include "PeltoExport.h"
#include "vTextureFormats.h"

class PELTO_API vTexturePixels {
public:
    /// One of the four elements of a decoded pixel, in the machine's byte order.
    enum EElement : std::uint8_t {
        eRGBA8,    ///< 0 to 255
        eRGBA16,   ///< 0 to 65535
        eRGBA32F,  ///< IEEE float
    };

    /// Bytes of a decoded pixel: 4, 8 or 16.
    static constexpr std::uint32_t PixelBytes(EElement element) { return 4u << element; }

    static bool CanDecode(const vPixelFormat& format);

    /// The smallest element that tells all values of the format's channels apart: eRGBA8 up to 8 bits UNORM,
    /// SNORM or UINT, eRGBA16 up to 16, else eRGBA32F. No element does so for integers of more than 24 bits;
    /// eRGBA32F gives the nearest float. Meaningful only if the format can be decoded.
    static EElement FullElement(const vPixelFormat& format);

    /// Decodes `height` rows of `width` pixels. A row takes format.RowBytes(width) bytes, and begins `pitch`
    /// bytes after the previous one; nothing is read behind the last row. `destination` gets
    /// PixelBytes(element) x width x height bytes, rows without gaps, and must not overlap the source. Both
    /// may lie at any address, and stay the caller's; without pixels they may be null. False, with the
    /// destination unchanged, if the format cannot be decoded.
    static bool Decode(const vPixelFormat& format, const void* source, std::uint64_t pitch,
                       std::uint32_t width, std::uint32_t height, EElement element, void* destination);
};

#endif
