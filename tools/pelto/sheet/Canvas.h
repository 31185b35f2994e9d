// SPDX-License-Identifier: Apache-2.0
// Pixels of a part of a sheet.
#ifndef PELTO_TOOL_SHEET_CANVAS_H
#define PELTO_TOOL_SHEET_CANVAS_H

#include <cstddef>
#include <cstdint>
#include <vector>

struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
};

/// Pixels of a sheet, from its upper left corner.
struct Rectangle {
    std::int64_t x = 0;
    std::int64_t y = 0;
    std::int64_t width = 0;
    std::int64_t height = 0;
};

/// Whole rows of a sheet. What is drawn outside of them is left out.
class Canvas {
public:
    Canvas(std::int64_t width, std::int64_t first_row, std::int64_t rows);

    std::int64_t first_row() const { return first_row_; }
    std::int64_t rows() const { return rows_; }

    /// Red, green and blue of each pixel of a row of the sheet that the canvas has.
    const std::uint8_t* row(std::int64_t y) const { return pixels_.data() + offset(0, y); }

    void fill(const Rectangle& place, Colour colour);

    /// `coverage` is 0, which leaves the pixel, to 255, which replaces it.
    void blend(std::int64_t x, std::int64_t y, Colour colour, std::uint8_t coverage);

    /// Pixels of four bytes, of which the last is left out, from (x, y) to the right. The row must be one of
    /// the canvas, and all of it inside the sheet.
    void put(std::int64_t x, std::int64_t y, const std::uint8_t* pixels, std::int64_t count);

private:
    std::size_t offset(std::int64_t x, std::int64_t y) const {
        return static_cast<std::size_t>(((y - first_row_) * width_ + x) * 3);
    }

    std::int64_t width_;
    std::int64_t first_row_;
    std::int64_t rows_;
    std::vector<std::uint8_t> pixels_;
};

#endif
