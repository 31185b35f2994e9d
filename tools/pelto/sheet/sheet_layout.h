// SPDX-License-Identifier: Apache-2.0
// Where everything of a contact sheet lies.
#ifndef PELTO_TOOL_SHEET_SHEET_LAYOUT_H
#define PELTO_TOOL_SHEET_SHEET_LAYOUT_H

#include <cstdint>
#include <string>
#include <vector>

#include "sheet/Canvas.h"
#include "sheet/CaptionFont.h"
#include "sheet/SheetFile.h"

struct SheetText {
    std::int64_t x = 0;
    std::int64_t baseline = 0;
    std::string text;
    int size = 0;  // the font's em in pixels
    Colour colour;
};

struct SheetPicture {
    Rectangle place;  // as large as the image
    const SheetFile* file = nullptr;
    const SheetImage* image = nullptr;
};

struct Sheet {
    std::int64_t width = 0;
    std::int64_t height = 0;
    std::vector<Rectangle> cards;        // the grounds of the files, one each
    std::vector<SheetText> texts;        // of files, and of images above them
    std::vector<SheetPicture> pictures;  // file after file, each in the order of its images
};

/// A card for each file, from left to right and then from top to bottom. On a card each layer, face or slice
/// has a row, and each level a column; notes, and why there are no images, stand above. The sheet points to the files. Throws std::runtime_error where it would be
/// too large for a PNG file that others read.
Sheet lay_out(const std::vector<SheetFile>& files, const CaptionFont& font);

#endif
