// SPDX-License-Identifier: Apache-2.0
// Contact sheets of texture files, for every subcommand that makes one.
#ifndef PELTO_TOOL_SHEET_CONTACT_SHEET_H
#define PELTO_TOOL_SHEET_CONTACT_SHEET_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "sheet/Canvas.h"
#include "sheet/SheetFile.h"

/// A DDS or .basis file, what its card on the sheet is called, in UTF-8, and what the card shows of it.
struct SheetEntry {
    std::string path;
    std::string title;
    SheetChoice choice;
    std::shared_ptr<TextureFile> file;  // the file at `path`, where it has been opened already
};

/// An image on the sheet: one pixel of the sheet for each of its own, where `place` says.
struct PlacedImage {
    std::string path;
    std::uint32_t layer = 0;
    std::uint32_t face = 0;
    std::uint32_t level = 0;
    std::uint32_t slice = 0;
    std::string caption;
    Rectangle place;
};

/// The card of a file that could be read, also of one without a picture.
struct PlacedCard {
    std::string path;
    std::string description;
    std::string reason;  // why it has no picture; else empty
    std::vector<vTextureNote> notes;
    Rectangle place;
};

/// What there is to say of a file, in words for a person.
struct SheetRemark {
    std::string path;
    std::string text;
};

struct SheetReport {
    std::int64_t width = 0;  // pixels; 0 where no file could be shown, and no sheet was written
    std::int64_t height = 0;
    std::vector<PlacedCard> cards;
    std::vector<PlacedImage> images;    // file after file, each by layer, face, slice and level
    std::vector<SheetRemark> warnings;  // of files that have a card
    std::vector<SheetRemark> errors;    // of files that have none
};

/// Draws the chosen images of the files, a card for each file in the given order, into a PNG file, which
/// appears when it is complete; a file of that name is replaced. Light (BC6H and float formats) is multiplied
/// by 2 to the power of `exposure`. A file that cannot be shown does not keep the others from the sheet.
/// Throws std::runtime_error, which says why, where there is no OpenGL to draw with, the sheet would be too
/// large, or the PNG file cannot be written.
SheetReport make_contact_sheet(const std::vector<SheetEntry>& entries, double exposure,
                               const std::string& output);

#endif
