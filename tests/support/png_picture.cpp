// SPDX-License-Identifier: Apache-2.0

#include "support/png_picture.h"

#include <png.h>
#include <stdexcept>

namespace support {

PNGPicture read_png(const std::string& path) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    PNGPicture picture;
    if (png_image_begin_read_from_file(&image, path.c_str())) {
        image.format = PNG_FORMAT_RGB;
        picture.width = image.width;
        picture.height = image.height;
        picture.pixels.resize(picture.width * picture.height * 3);
        png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr);
    }
    if (PNG_IMAGE_FAILED(image)) throw std::runtime_error(path + ": " + image.message);
    return picture;
}

}  // namespace support
