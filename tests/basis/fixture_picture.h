// SPDX-License-Identifier: Apache-2.0
// The pictures that the fixtures are encoded from.
#ifndef TESTS_BASIS_FIXTURE_PICTURE_H
#define TESTS_BASIS_FIXTURE_PICTURE_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "basis/fixtures.h"

namespace basis_fixtures {

struct Pixel {
    std::uint8_t red;
    std::uint8_t green;
    std::uint8_t blue;
    std::uint8_t alpha;
};

struct Picture {
    int width;
    int height;
    std::vector<Pixel> pixels;  // rows from the top
};

/// Image `index` of the fixture. Gradients, edges and some noise; the corner's alpha is never opaque, so that
/// the smallest image keeps its alpha too.
inline Picture picture_of(const Fixture& fixture, int index) {
    const int shift = fixture.halving ? index : 0;
    Picture picture{fixture.width >> shift, fixture.height >> shift, {}};
    std::uint32_t noise = 12345u + static_cast<std::uint32_t>(index);
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            noise = noise * 1664525u + 1013904223u;
            const int grain = static_cast<int>(noise >> 28);
            const int edge = ((x / 5 + y / 3 + index) & 1) * 90;
            const int opacity = fixture.alpha ? (60 + 11 * x + 7 * y + 40 * index) % 255 : 255;
            picture.pixels.push_back(
                {static_cast<std::uint8_t>(200 - x + 20 * index), static_cast<std::uint8_t>(y * 5 + edge),
                 static_cast<std::uint8_t>(x * 3 + grain), static_cast<std::uint8_t>(opacity)});
        }
    }
    return picture;
}

}  // namespace basis_fixtures

#endif
