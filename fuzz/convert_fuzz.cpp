// SPDX-License-Identifier: Apache-2.0
// vDDSImage::convertTexturePixel against a plain model.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vDDSImage.h>

#include "fuzz_input.h"
#include "support/plain_model.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const int width = 1 + input.byte() % 40;
    const int height = 1 + input.byte() % 8;
    const int depth = 1 + input.byte() % 3;
    const int components = input.byte() % 6;
    TOZ::DDS_PIXELFORMAT format{};
    format.dwRBitMask = input.number();
    format.dwGBitMask = input.number();
    format.dwBBitMask = input.number();
    format.dwABitMask = input.number();

    const auto slice = static_cast<std::size_t>(width * height * std::max(components, 1));
    plain::Bytes pixels(input.rest(), input.rest() + input.rest_size());
    pixels.resize(std::max(pixels.size(), slice * static_cast<std::size_t>(depth)));
    pixels.shrink_to_fit();
    plain::Bytes expected = pixels;
    if (components == 3 || components == 4) {
        plain::reorder(expected, width, height, depth, components,
                       {format.dwRBitMask, format.dwGBitMask, format.dwBBitMask, format.dwABitMask});
    }
    vDDSImage::convertTexturePixel(reinterpret_cast<char*>(pixels.data()), width, height, depth,
                                   pixels.size(), format, components);
    require(pixels == expected, "pixels are those of the plain model");
    return 0;
}
