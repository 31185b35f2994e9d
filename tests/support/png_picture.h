// SPDX-License-Identifier: Apache-2.0
// PNG files, read with libpng.
#ifndef TESTS_SUPPORT_PNG_PICTURE_H
#define TESTS_SUPPORT_PNG_PICTURE_H

#include <cstddef>
#include <string>

#include "support/bytes.h"

namespace support {

struct PNGPicture {
    std::size_t width = 0;
    std::size_t height = 0;
    Bytes pixels;  // red, green, blue; row after row

    const std::uint8_t* at(std::size_t x, std::size_t y) const { return pixels.data() + (y * width + x) * 3; }
};

/// Throws std::runtime_error where there is no such file, or it is damaged.
PNGPicture read_png(const std::string& path);

}  // namespace support

#endif
