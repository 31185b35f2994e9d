// SPDX-License-Identifier: Apache-2.0
// Textures for the tests of sheets: DDS files of every format, and what their pixels are.
#ifndef TESTS_PELTO_SHEET_TEXTURE_H
#define TESTS_PELTO_SHEET_TEXTURE_H

#include <string>
#include <vDDSImage.h>
#include <vector>

#include "support/bytes.h"
#include "support/dds_file.h"
#include "support/plain_blocks.h"

namespace sheet {

struct Format {
    std::string name;
    TOZ::SUPPORTED_FORMAT::Type number;
    support::FileHeader header;
    std::size_t unit;  // bytes of a pixel or a block
    bool blocks;
};

/// Each format once, by its number.
const std::vector<Format>& formats();
const Format& format_of(TOZ::SUPPORTED_FORMAT::Type number);

/// Pseudo-random pixels of a level; floating-point ones are numbers from 2^-10 to 2^4, or less than 0.
support::Bytes random_level(const Format& format, std::size_t width, std::size_t height, std::uint32_t seed);

/// The pixels of a level, row after row.
std::vector<plain::Texel> texels_of(const Format& format, std::size_t width, std::size_t height,
                                    const std::uint8_t* bytes);

std::size_t level_size(const Format& format, std::size_t width, std::size_t height);

}  // namespace sheet

#endif
