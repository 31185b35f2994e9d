// The images of a texture file that go onto a sheet.
#ifndef PELTO_TOOL_SHEET_SHEET_FILE_H
#define PELTO_TOOL_SHEET_SHEET_FILE_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sheet/gl_texture.h"
#include "texture/texture_check.h"

/// One level of one face of a texture, or of one slice of a volume or an array.
struct SheetImage {
    std::uint32_t face = 0;
    std::uint32_t level = 0;
    std::uint32_t slice = 0;
    std::string caption;
    PixelData pixels;
};

struct SheetFile {
    std::string path;
    std::string title;                                // above its images
    std::string description;                          // in words for a person
    std::vector<SheetImage> images;                   // at least one; by face, slice and level
    std::vector<std::string> warnings;                // what there is to say although the file was read
    std::vector<std::shared_ptr<const void>> owners;  // of the images' pixels
};

/// Which images of a file are asked for, and whether it is loaded without a look at it first.
struct SheetChoice {
    bool flip = false;  // of DDS files
    std::optional<std::uint32_t> face;
    std::optional<std::uint32_t> level;
    std::optional<std::uint32_t> slice;  // of .basis files
    std::optional<std::string> usage;    // of .basis files: a name of kBasisUsages
    Trust trust = Trust::kNo;
};

/// Reads the chosen images of a DDS or .basis file, whose title is its path. `max_extent` is the most pixels
/// across and down an image. Throws std::runtime_error, which says what is wrong with the file or the choice.
/// A file that promises more than a sheet can show is refused before memory is taken for its pixels.
SheetFile read_sheet_file(const std::string& path, const SheetChoice& choice, int max_extent);

#endif
