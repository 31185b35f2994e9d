// SPDX-License-Identifier: Apache-2.0
// Runs pelto sheet and compares what it draws with what the pixels mean.
#ifndef TESTS_PELTO_SHEET_CHECK_H
#define TESTS_PELTO_SHEET_CHECK_H

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "pelto/sheet_texture.h"
#include "support/command.h"
#include "support/png_picture.h"
#include "support/temporary_folder.h"

namespace sheet {

/// An image on a drawn sheet.
struct Image {
    std::string path;
    int layer;
    int face;
    int level;
    int slice;
    std::string caption;
    std::size_t width;
    std::size_t height;
    support::Bytes pixels;  // red, green, blue; row after row
};

struct Sheet {
    support::CommandResult result;
    std::size_t width = 0;  // 0 where no sheet was drawn
    std::size_t height = 0;
    std::vector<Image> images;
    struct Corner {
        std::size_t x;
        std::size_t y;
    };
    std::vector<Corner> places;  // of the images
    nlohmann::json cards;
    nlohmann::json errors;
    support::PNGPicture picture;
};

/// Runs `pelto sheet --json` with the arguments into a folder of its own, and cuts the sheet into its images.
Sheet draw(const std::vector<std::string>& arguments);

/// What a float is shown as, without exposure: 0 to 255, not rounded.
double tone(double light);

/// Each channel of a pixel as 0 to 255, not rounded. `x`, `y` are those of the pixel in its image.
struct Shown {
    double red;
    double green;
    double blue;
};
Shown shown(const plain::Texel& texel, const Format& format, double exposure, std::size_t x, std::size_t y,
            std::size_t height);

/// Whether the image shows the texels of its size: each channel at most `tolerance` away, beyond what half
/// floats are rounded by where the format holds light.
testing::AssertionResult shows(const Image& image, const Format& format,
                               const std::vector<plain::Texel>& texels, double tolerance,
                               double exposure = 0);

support::Bytes upside_down(const Image& image);

}  // namespace sheet

#endif
