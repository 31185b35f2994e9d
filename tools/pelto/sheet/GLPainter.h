// SPDX-License-Identifier: Apache-2.0
// Textures drawn by the GPU and read back as pixels for the eye.
#ifndef PELTO_TOOL_SHEET_GL_PAINTER_H
#define PELTO_TOOL_SHEET_GL_PAINTER_H

#include <cstdint>
#include <vector>

#include "sheet/GLTexture.h"

/// Draws rows of textures, one texel a pixel. A GLContext must be current.
///
/// Colours are shown as they are, signed numbers as x * 0.5 + 0.5. Light (HDR) is tone-mapped: multiplied by
/// 2 to the power of the exposure, taken from x to x / (1 + x), which leaves nothing out (what is less than 0
/// or no number becomes 0), and encoded as sRGB. What is transparent then lies on a checkerboard of 8 x 8
/// pixels of the greys 102 and 153, which starts at the left edge and is mirrored about the middle row, so
/// that an image and its upside-down form lie on the same ground.
class GLPainter {
public:
    /// Up to `rows` rows are drawn at once, `width` pixels wide at most.
    GLPainter(int width, int rows, double exposure);
    ~GLPainter();
    GLPainter(const GLPainter&) = delete;
    GLPainter& operator=(const GLPainter&) = delete;

    /// The texture's rows `first_row` to `first_row` + `rows` - 1: red, green, blue and 255 for each pixel,
    /// valid until the next call.
    const std::vector<std::uint8_t>& draw(const GLTexture& texture, const PixelData& pixels, int first_row,
                                          int rows);

private:
    unsigned int program_;
    unsigned int target_ = 0;
    unsigned int framebuffer_ = 0;
    unsigned int vertices_ = 0;
    float scale_;
    std::vector<std::uint8_t> drawn_;
};

#endif
