// What a .basis file says of itself: codec, texture type, and the extent of each level in pixels, which
// vBasisImage gives for the first level only and in whole blocks.
#ifndef PELTO_TOOL_TEXTURE_BASIS_FILE_H
#define PELTO_TOOL_TEXTURE_BASIS_FILE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// Where a file says whether it is a 2D texture, a cube map, a video or a volume: bytes from its start.
constexpr std::size_t kBasisTextureType = 23;

struct BasisLevel {
    std::uint32_t slice = 0;
    std::uint32_t level = 0;
    std::uint32_t width = 0;   // pixels
    std::uint32_t height = 0;  // pixels
};

struct BasisFile {
    std::string codec;
    std::string texture_type;
    bool alpha = false;
    bool y_flipped = false;
    bool srgb = false;
    std::uint32_t slices = 0;
    std::vector<BasisLevel> levels;  // of all slices, in the file's order

    std::uint32_t level_count(std::uint32_t slice) const;
    const BasisLevel* find(std::uint32_t slice, std::uint32_t level) const;
};

/// Whether a file with these first bytes, or of this name, means to be a .basis file.
bool is_basis(const std::string& path);

/// Reads header and table of a file in memory. What lies outside the file is left out.
BasisFile describe_basis(const unsigned char* data, std::size_t size);

#endif
