// SPDX-License-Identifier: Apache-2.0
// What a DDS header describes, computed level by level. Tests compare vTextureInfo with it.
#ifndef TESTS_INFO_DDS_MODEL_H
#define TESTS_INFO_DDS_MODEL_H

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "support/dds_file.h"

namespace dds_model {

/// A pixel-format record with the name of the format that it means.
struct Pixels {
    std::string name;
    support::FileHeader header;
};

/// Formats by DXGI number, by FourCC and by masks.
const std::vector<Pixels>& all_pixels();

struct Level {
    std::uint32_t layer, face, level, width, height, depth;
    std::uint64_t offset, bytes, row_bytes;
    bool whole;
};

struct File {
    std::uint32_t dxgi;
    int dimension;
    std::uint32_t width, height, depth, layers, faces, face_mask, levels;
    int alpha_mode;
    std::uint64_t bytes, end;
    std::vector<Level> table;
};

/// The file of that header and format, of `size` bytes. Rows are packed.
File describe(const support::FileHeader& header, const std::string& format, std::uint64_t size);

/// A header of that format with random extents, levels, faces and layers.
support::FileHeader random_header(const Pixels& pixels, std::mt19937& random);

}  // namespace dds_model

#endif
