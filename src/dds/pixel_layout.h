// SPDX-License-Identifier: Apache-2.0
// How the header of a DDS file codes the format of its pixels.
#ifndef PELTO_DDS_PIXEL_LAYOUT_H
#define PELTO_DDS_PIXEL_LAYOUT_H

#include <cstddef>
#include <cstdint>
#include <optional>

#include "dds/dds_file.h"
#include "vDDSImage.h"

namespace pelto::dds {

/// Which field of the headers names the format.
enum class FormatCode { kPixelFormat, kFourCC, kDXGI };

struct LoaderLayout {
    TOZ::SUPPORTED_FORMAT::Type format;
    int components;
    int bits_per_component;  // 8 for compressed formats, which do not use it
    bool compressed;
};

FormatCode format_code(const TOZ::DDS_PIXELFORMAT& pixel_format);

/// Nothing for a format that is not supported. `dxgi_format` counts where the FourCC is "DX10".
std::optional<LoaderLayout> find_pixel_layout(const TOZ::DDS_PIXELFORMAT& pixel_format,
                                              std::uint32_t dxgi_format);

/// What the loader stores of pixels of that format.
const LoaderLayout& layout_of(TOZ::SUPPORTED_FORMAT::Type format);

/// Bytes of a 4x4-pixel block of a compressed format.
std::size_t block_size(TOZ::SUPPORTED_FORMAT::Type format);

}  // namespace pelto::dds

#endif
