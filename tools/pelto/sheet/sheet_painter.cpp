// SPDX-License-Identifier: Apache-2.0

#include "sheet/sheet_painter.h"

#include <algorithm>
#include <future>
#include <memory>
#include <utility>
#include <vector>

#include "output/PNGWriter.h"
#include "output/Progress.h"
#include "sheet/Canvas.h"
#include "sheet/GLPainter.h"
#include "sheet/GLTexture.h"

namespace {

constexpr std::int64_t kRowsAtOnce = 128;
constexpr std::int64_t kTallestText = 24;

constexpr Colour kGround = {24, 24, 27};
constexpr Colour kCard = {36, 36, 40};
constexpr Colour kFrame = {70, 70, 76};

// A picture and its texture, which is there from the first of its rows to the last.
struct DrawnPicture {
    const SheetPicture* picture;
    std::unique_ptr<GLTexture> texture;
};

std::vector<DrawnPicture> in_drawing_order(const Sheet& sheet) {
    std::vector<DrawnPicture> pictures;
    for (const SheetPicture& picture : sheet.pictures) pictures.push_back({&picture, nullptr});
    std::stable_sort(pictures.begin(), pictures.end(), [](const DrawnPicture& a, const DrawnPicture& b) {
        return a.picture->place.y < b.picture->place.y;
    });
    return pictures;
}

int widest(const Sheet& sheet) {
    std::int64_t width = 1;
    for (const SheetPicture& picture : sheet.pictures) width = std::max(width, picture.place.width);
    return static_cast<int>(width);
}

bool touches(const Rectangle& place, const Canvas& canvas) {
    return place.y < canvas.first_row() + canvas.rows() && place.y + place.height > canvas.first_row();
}

Rectangle framed(const Rectangle& place) {
    return {place.x - 1, place.y - 1, place.width + 2, place.height + 2};
}

void draw_picture(Canvas& canvas, GLPainter& painter, DrawnPicture& drawn) {
    const Rectangle& place = drawn.picture->place;
    const PixelData& pixels = drawn.picture->image->pixels;
    if (!drawn.texture) drawn.texture = std::make_unique<GLTexture>(pixels);
    const std::int64_t top = std::max(place.y, canvas.first_row());
    const std::int64_t bottom = std::min(place.y + place.height, canvas.first_row() + canvas.rows());
    const std::vector<std::uint8_t>& rows =
        painter.draw(*drawn.texture, pixels, static_cast<int>(top - place.y), static_cast<int>(bottom - top));
    for (std::int64_t y = top; y < bottom; ++y) {
        canvas.put(place.x, y, rows.data() + (y - top) * place.width * 4, place.width);
    }
    if (bottom == place.y + place.height) drawn.texture.reset();
}

// The rows of a sheet that the canvas has.
void draw_rows(Canvas& canvas, const Sheet& sheet, const CaptionFont& font, GLPainter& painter,
               std::vector<DrawnPicture>& pictures) {
    canvas.fill({0, canvas.first_row(), sheet.width, canvas.rows()}, kGround);
    for (const Rectangle& card : sheet.cards) canvas.fill(card, kCard);
    for (const SheetText& text : sheet.texts) {
        const Rectangle lines = {0, text.baseline - kTallestText, 0, 2 * kTallestText};
        if (touches(lines, canvas)) {
            font.draw(canvas, text.x, text.baseline, text.text, text.size, text.colour);
        }
    }
    for (DrawnPicture& drawn : pictures) {
        canvas.fill(framed(drawn.picture->place), kFrame);
        if (touches(drawn.picture->place, canvas)) draw_picture(canvas, painter, drawn);
    }
}

void write_rows(PNGWriter& file, const Canvas& canvas) {
    for (std::int64_t y = 0; y < canvas.rows(); ++y) file.write_row(canvas.row(canvas.first_row() + y));
}

}  // namespace

void paint_sheet(const Sheet& sheet, const CaptionFont& font, double exposure, const std::string& path) {
    PNGWriter file(path, sheet.width, sheet.height);
    GLPainter painter(widest(sheet), static_cast<int>(kRowsAtOnce), exposure);
    std::vector<DrawnPicture> pictures = in_drawing_order(sheet);
    Progress progress("drawing", static_cast<std::size_t>((sheet.height + kRowsAtOnce - 1) / kRowsAtOnce));
    // Writing takes the most time: the next rows are drawn meanwhile.
    std::future<void> writing;
    for (std::int64_t first_row = 0; first_row < sheet.height; first_row += kRowsAtOnce) {
        Canvas canvas(sheet.width, first_row, std::min(kRowsAtOnce, sheet.height - first_row));
        draw_rows(canvas, sheet, font, painter, pictures);
        if (writing.valid()) writing.get();
        writing =
            std::async(std::launch::async, [&file, canvas = std::move(canvas)] { write_rows(file, canvas); });
        progress.step();
    }
    writing.get();
    file.complete();
}
