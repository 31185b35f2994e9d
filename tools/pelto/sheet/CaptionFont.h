// SPDX-License-Identifier: Apache-2.0
// Captions in DejaVu Sans, which is part of the program.
#ifndef PELTO_TOOL_SHEET_CAPTION_FONT_H
#define PELTO_TOOL_SHEET_CAPTION_FONT_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "sheet/Canvas.h"

class CaptionFont {
public:
    CaptionFont();
    ~CaptionFont();

    /// Pixels across a UTF-8 text, rounded up. `size` is the font's em in pixels. What is not UTF-8 counts
    /// and is drawn as the character for what cannot be shown.
    std::int64_t width(const std::string& text, int size) const;

    /// The text, or its end behind an ellipsis where the whole is wider.
    std::string shortened(const std::string& text, int size, std::int64_t most) const;

    /// The text in lines, broken between words. A word that is wider than a line is shortened.
    std::vector<std::string> lines(const std::string& text, int size, std::int64_t most) const;

    /// Draws the text from `x` to the right, on the line `baseline`.
    void draw(Canvas& canvas, std::int64_t x, std::int64_t baseline, const std::string& text, int size,
              Colour colour) const;

private:
    struct Face;
    std::unique_ptr<Face> face_;
};

#endif
