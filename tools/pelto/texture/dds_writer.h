// SPDX-License-Identifier: Apache-2.0
// The header of DDS files of block-compressed 2D textures.
#ifndef PELTO_TOOL_TEXTURE_DDS_WRITER_H
#define PELTO_TOOL_TEXTURE_DDS_WRITER_H

#include <cstdint>
#include <string>
#include <string_view>

struct DDSDescription {
    std::string_view four_cc;
    std::uint32_t width = 0;   // pixels of the first level
    std::uint32_t height = 0;  // pixels of the first level
    std::uint32_t bytes = 0;   // of the first level
    std::uint32_t levels = 0;  // each half as wide and high as the one before, rounded down, at least 1
};

/// The bytes of a DDS file before those of its levels, which follow one another.
std::string dds_header(const DDSDescription& description);

#endif
