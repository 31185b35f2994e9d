// Writing DDS files of block-compressed 2D textures.
#ifndef PELTO_TOOL_DDS_WRITER_H
#define PELTO_TOOL_DDS_WRITER_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct DDSContent {
    std::string_view four_cc;
    std::uint32_t width = 0;   // pixels of the first level
    std::uint32_t height = 0;  // pixels of the first level
    /// The blocks of each level; each is half as wide and high as the one before, rounded down, at least 1.
    std::vector<std::string> levels;
};

/// The bytes of a DDS file.
std::string dds_bytes(const DDSContent& content);

#endif
