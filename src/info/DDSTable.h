// SPDX-License-Identifier: Apache-2.0
// Where the levels of a DDS file lie, held against its true length.
#ifndef PELTO_INFO_DDS_TABLE_H
#define PELTO_INFO_DDS_TABLE_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "vDDSImage.h"
#include "vDDSLevels.h"
#include "vTextureCheck.h"

namespace pelto::info {

struct DDSTable {
    vTextureCheck::Result result;

    /// Face after face, without their data; none where the file is refused for another reason than its end.
    std::vector<vDDSLevel> levels;

    bool has_format = false;  // the loader takes the format, whatever else is wrong
    TOZ::SUPPORTED_FORMAT::Type format = TOZ::SUPPORTED_FORMAT::RGBA8;
    int faces = 0;
};

/// Of a file of `length` bytes, of which the first `available` lie at `start`: all of them, or at least both
/// headers.
DDSTable read_dds_table(const unsigned char* start, std::size_t available, std::uint64_t length,
                        const vTextureLimits& limits);

}  // namespace pelto::info

#endif
