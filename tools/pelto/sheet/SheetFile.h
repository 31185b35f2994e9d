// SPDX-License-Identifier: Apache-2.0
// The images of a texture file that go onto a sheet.
#ifndef PELTO_TOOL_SHEET_SHEET_FILE_H
#define PELTO_TOOL_SHEET_SHEET_FILE_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vTextureInfo.h>
#include <vector>

#include "sheet/GLTexture.h"
#include "texture/TextureFile.h"
#include "texture/trust.h"

/// One slice of a level of a face.
struct SheetImage {
    std::uint32_t layer = 0;
    std::uint32_t face = 0;
    std::uint32_t slice = 0;  // of a volume; of a .basis file, the same as the layer
    std::uint32_t level = 0;
    std::string caption;
    PixelData pixels;
};

struct SheetFile {
    std::string path;
    std::string title;                                // above its images
    std::string description;                          // in words for a person
    std::string reason;                               // why there are no images; else empty
    std::vector<vTextureNote> notes;                  // where a loader gives something else
    std::vector<SheetImage> images;                   // by layer, face, slice and level
    std::vector<std::string> warnings;                // what there is to say although the file was read
    std::vector<std::shared_ptr<const void>> owners;  // of the images' pixels
};

/// Which images of a file are asked for, and how it is read.
struct SheetChoice {
    bool as_loaded = false;  // of DDS files: what vDDSImage makes of it, instead of what it means
    bool flip = false;       // of DDS files, as vDDSImage flips them
    std::optional<std::uint32_t> layer;
    std::optional<std::uint32_t> face;
    std::optional<std::uint32_t> level;
    std::optional<std::uint32_t> slice;  // of .basis files
    std::optional<std::string> usage;    // of .basis files: a name of kBasisUsages
    Trust trust = Trust::kNo;            // to load a file that a check refuses

    bool takes(const SheetImage& image) const {
        const auto fits = [](std::optional<std::uint32_t> chosen, std::uint32_t number) {
            return !chosen || *chosen == number;
        };
        return fits(layer, image.layer) && fits(face, image.face) && fits(level, image.level) &&
               fits(slice, image.slice);
    }
};

/// Reads the chosen images of a DDS or .basis file. `max_extent` is the most pixels across and down an image.
/// Throws std::runtime_error, which says what is wrong with the file or the choice. A file that promises more
/// than a sheet can show is refused before memory is taken for its pixels.
SheetFile read_sheet_file(TextureFile& file, const SheetChoice& choice, int max_extent);

#endif
