// SPDX-License-Identifier: Apache-2.0

#include "pelto/sheet_check.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace sheet {

using namespace TOZ::SUPPORTED_FORMAT;
using plain::Texel;
using support::Bytes;

namespace {

Bytes cut_out(const support::PNGPicture& picture, std::size_t x, std::size_t y, std::size_t width,
              std::size_t height) {
    Bytes pixels;
    for (std::size_t row = y; row < y + height; ++row) {
        pixels.insert(pixels.end(), picture.at(x, row), picture.at(x, row) + width * 3);
    }
    return pixels;
}

bool holds_light(Type format) {
    return format == RGBA16F || format == R32F || format == RGB32F || format == RGBA32F ||
           format == BC6H_SF16 || format == BC6H_UF16;
}

double within_0_and_1(double number) { return std::min(std::max(number, 0.0), 1.0); }

// Tone-mapped to less than 1, and encoded as sRGB.
double encoded(double light) {
    const double mapped = light > 0 ? light / (1 + light) : 0;
    return mapped <= 0.0031308 ? mapped * 12.92 : 1.055 * std::pow(mapped, 1 / 2.4) - 0.055;
}

Texel brightened(const Texel& texel, double factor) {
    return {texel.red * factor, texel.green * factor, texel.blue * factor, texel.alpha};
}

}  // namespace

Sheet draw(const std::vector<std::string>& arguments) {
    const support::TemporaryFolder folder;
    const std::string output = folder.path("sheet.png");
    std::vector<std::string> all = {"sheet", "--json", "-o", output};
    all.insert(all.end(), arguments.begin(), arguments.end());
    Sheet sheet;
    sheet.result = support::run_pelto(all);
    if (sheet.result.out.empty()) return sheet;
    const auto json = nlohmann::json::parse(sheet.result.out);
    sheet.errors = json["errors"];
    sheet.cards = json["cards"];
    if (!std::filesystem::exists(output)) return sheet;
    sheet.picture = support::read_png(output);
    const support::PNGPicture& picture = sheet.picture;
    sheet.width = picture.width;
    sheet.height = picture.height;
    EXPECT_EQ(json["width"], picture.width);
    EXPECT_EQ(json["height"], picture.height);
    for (const auto& image : json["images"]) {
        const std::size_t x = image["x"], y = image["y"], width = image["width"], height = image["height"];
        if (x + width > picture.width || y + height > picture.height) {
            ADD_FAILURE() << "an image lies outside of the sheet: " << image;
            continue;
        }
        sheet.places.push_back({x, y});
        sheet.images.push_back({image["path"], image["layer"], image["face"], image["level"], image["slice"],
                                image["caption"], width, height, cut_out(picture, x, y, width, height)});
    }
    return sheet;
}

double tone(double light) { return 255 * encoded(light); }

Shown shown(const Texel& texel, const Format& format, double exposure, std::size_t x, std::size_t y,
            std::size_t height) {
    Texel colour = texel;
    const bool one_channel = format.number == LUMINANCE8 || format.number == R32F || format.number == BC4U ||
                             format.number == BC4S;
    if (one_channel) colour = {texel.red, texel.red, texel.red, texel.alpha};
    if (format.number == BC4S || format.number == BC5S) {
        colour = {colour.red / 2 + 0.5, colour.green / 2 + 0.5, colour.blue / 2 + 0.5, colour.alpha};
    }
    if (holds_light(format.number)) {
        const Texel light = brightened(colour, std::exp2(exposure));
        colour = {encoded(light.red), encoded(light.green), encoded(light.blue), colour.alpha};
    }
    // What is transparent lies on a checkerboard, which is mirrored about the middle row.
    const std::size_t from_edge = std::min(y, height - 1 - y);
    const double ground = (x / 8 + from_edge / 8) % 2 == 0 ? 102 : 153;
    const double alpha = within_0_and_1(colour.alpha);
    const auto laid_over = [&](double channel) { return 255 * channel * alpha + ground * (1 - alpha); };
    return {laid_over(colour.red), laid_over(colour.green), laid_over(colour.blue)};
}

testing::AssertionResult shows(const Image& image, const Format& format, const std::vector<Texel>& texels,
                               double tolerance, double exposure) {
    if (texels.size() != image.width * image.height) {
        return testing::AssertionFailure() << "is " << image.width << " x " << image.height;
    }
    const double rounding = holds_light(format.number) ? std::ldexp(1, -11) : 0;
    for (std::size_t y = 0; y < image.height; ++y) {
        for (std::size_t x = 0; x < image.width; ++x) {
            const std::size_t i = y * image.width + x;
            const Shown a = shown(brightened(texels[i], 1 - rounding), format, exposure, x, y, image.height);
            const Shown b = shown(brightened(texels[i], 1 + rounding), format, exposure, x, y, image.height);
            const std::pair<double, double> ranges[] = {
                std::minmax(a.red, b.red), std::minmax(a.green, b.green), std::minmax(a.blue, b.blue)};
            for (std::size_t channel = 0; channel < 3; ++channel) {
                const double value = image.pixels[i * 3 + channel];
                const auto [least, most] = ranges[channel];
                if (value >= least - tolerance && value <= most + tolerance) continue;
                return testing::AssertionFailure()
                       << format.name << ", level " << image.level << ": channel " << channel << " of pixel ("
                       << x << ", " << y << ") is " << value << ", expected " << least << " to " << most;
            }
        }
    }
    return testing::AssertionSuccess();
}

Bytes upside_down(const Image& image) {
    Bytes pixels;
    for (std::size_t y = image.height; y-- > 0;) {
        const auto row = image.pixels.begin() + static_cast<std::ptrdiff_t>(y * image.width * 3);
        pixels.insert(pixels.end(), row, row + static_cast<std::ptrdiff_t>(image.width * 3));
    }
    return pixels;
}

}  // namespace sheet
