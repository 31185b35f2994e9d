// SPDX-License-Identifier: Apache-2.0

#include "sheet/Canvas.h"

#include <algorithm>

Canvas::Canvas(std::int64_t width, std::int64_t first_row, std::int64_t rows)
    : width_(width),
      first_row_(first_row),
      rows_(rows),
      pixels_(static_cast<std::size_t>(width * rows * 3)) {}

void Canvas::fill(const Rectangle& place, Colour colour) {
    const std::int64_t left = std::max<std::int64_t>(place.x, 0);
    const std::int64_t right = std::min(place.x + place.width, width_);
    const std::int64_t top = std::max(place.y, first_row_);
    const std::int64_t bottom = std::min(place.y + place.height, first_row_ + rows_);
    for (std::int64_t y = top; y < bottom; ++y) {
        std::uint8_t* pixel = pixels_.data() + offset(left, y);
        for (std::int64_t x = left; x < right; ++x) {
            *pixel++ = colour.red;
            *pixel++ = colour.green;
            *pixel++ = colour.blue;
        }
    }
}

void Canvas::blend(std::int64_t x, std::int64_t y, Colour colour, std::uint8_t coverage) {
    if (x < 0 || x >= width_ || y < first_row_ || y >= first_row_ + rows_) return;
    std::uint8_t* const pixel = pixels_.data() + offset(x, y);
    const auto mixed = [&](int under, int over) {
        return static_cast<std::uint8_t>((under * (255 - coverage) + over * coverage + 127) / 255);
    };
    pixel[0] = mixed(pixel[0], colour.red);
    pixel[1] = mixed(pixel[1], colour.green);
    pixel[2] = mixed(pixel[2], colour.blue);
}

void Canvas::put(std::int64_t x, std::int64_t y, const std::uint8_t* pixels, std::int64_t count) {
    std::uint8_t* pixel = pixels_.data() + offset(x, y);
    for (std::int64_t i = 0; i < count; ++i) {
        *pixel++ = pixels[4 * i];
        *pixel++ = pixels[4 * i + 1];
        *pixel++ = pixels[4 * i + 2];
    }
}
