// SPDX-License-Identifier: Apache-2.0

#include "sheet/CaptionFont.h"

#include <cmath>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <utf8.h>

#include "embedded.h"

#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wsign-conversion"
#pragma GCC diagnostic ignored "-Wunused-function"
#endif
#define STB_TRUETYPE_IMPLEMENTATION
#define STBTT_STATIC
#include <stb_truetype.h>
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

struct CaptionFont::Face {
    stbtt_fontinfo info;
};

namespace {

struct Glyph {
    int index;
    float x;  // pixels from the text's start
};

// The glyphs in their places, and the text's width.
float place(const stbtt_fontinfo& font, const std::string& text, float scale, std::vector<Glyph>& glyphs) {
    std::string valid;
    utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(valid));
    float x = 0;
    for (auto at = valid.begin(); at != valid.end();) {
        const int index = stbtt_FindGlyphIndex(&font, static_cast<int>(utf8::next(at, valid.end())));
        if (!glyphs.empty()) {
            x += scale * static_cast<float>(stbtt_GetGlyphKernAdvance(&font, glyphs.back().index, index));
        }
        glyphs.push_back({index, x});
        int advance = 0;
        int bearing = 0;
        stbtt_GetGlyphHMetrics(&font, index, &advance, &bearing);
        x += scale * static_cast<float>(advance);
    }
    return x;
}

void draw_glyph(Canvas& canvas, const stbtt_fontinfo& font, float scale, int glyph, std::int64_t x,
                float shift, std::int64_t baseline, Colour colour) {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    stbtt_GetGlyphBitmapBoxSubpixel(&font, glyph, scale, scale, shift, 0, &left, &top, &right, &bottom);
    const int width = right - left;
    const int height = bottom - top;
    if (width <= 0 || height <= 0) return;
    std::vector<unsigned char> coverage(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    stbtt_MakeGlyphBitmapSubpixel(&font, coverage.data(), width, height, width, scale, scale, shift, 0,
                                  glyph);
    auto covered = coverage.cbegin();
    for (int j = 0; j < height; ++j) {
        for (int i = 0; i < width; ++i) canvas.blend(x + left + i, baseline + top + j, colour, *covered++);
    }
}

}  // namespace

CaptionFont::CaptionFont() : face_(std::make_unique<Face>()) {
    if (!stbtt_InitFont(&face_->info, caption_font_data, 0)) throw std::runtime_error("the font is damaged");
}

CaptionFont::~CaptionFont() = default;

std::int64_t CaptionFont::width(const std::string& text, int size) const {
    std::vector<Glyph> glyphs;
    const float scale = stbtt_ScaleForMappingEmToPixels(&face_->info, static_cast<float>(size));
    return static_cast<std::int64_t>(std::ceil(place(face_->info, text, scale, glyphs)));
}

std::string CaptionFont::shortened(const std::string& text, int size, std::int64_t most) const {
    if (width(text, size) <= most) return text;
    std::string valid;
    utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(valid));
    const std::string ellipsis = "\u2026";
    for (auto at = valid.begin(); at != valid.end(); utf8::next(at, valid.end())) {
        std::string end = ellipsis + std::string(at, valid.end());
        if (width(end, size) <= most) return end;
    }
    return ellipsis;
}

std::vector<std::string> CaptionFont::lines(const std::string& text, int size, std::int64_t most) const {
    std::vector<std::string> lines;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        const bool fits = !lines.empty() && width(lines.back() + " " + word, size) <= most;
        if (fits) {
            lines.back() += " " + word;
        } else {
            lines.push_back(shortened(word, size, most));
        }
    }
    return lines;
}

void CaptionFont::draw(Canvas& canvas, std::int64_t x, std::int64_t baseline, const std::string& text,
                       int size, Colour colour) const {
    std::vector<Glyph> glyphs;
    const float scale = stbtt_ScaleForMappingEmToPixels(&face_->info, static_cast<float>(size));
    place(face_->info, text, scale, glyphs);
    for (const Glyph& glyph : glyphs) {
        const float whole = std::floor(glyph.x);
        draw_glyph(canvas, face_->info, scale, glyph.index, x + static_cast<std::int64_t>(whole),
                   glyph.x - whole, baseline, colour);
    }
}
