// SPDX-License-Identifier: Apache-2.0
// vDDSImage::flip: twice is not at all, and blocks that it must not touch stay as they are.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vDDSImage.h>
#include <vector>

#include "fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    constexpr int kFormats = TOZ::SUPPORTED_FORMAT::BC6H_UF16 + 1;
    const auto format = static_cast<TOZ::SUPPORTED_FORMAT::Type>(input.byte() % kFormats);
    const bool compressed = format >= TOZ::SUPPORTED_FORMAT::DXT1;
    const int width = 1 + input.byte() % 64;
    const int height = 1 + input.byte() % 64;
    const int depth = 1 + input.byte() % 4;
    const std::size_t block = format == TOZ::SUPPORTED_FORMAT::DXT1 ||
                                      format == TOZ::SUPPORTED_FORMAT::BC4U ||
                                      format == TOZ::SUPPORTED_FORMAT::BC4S
                                  ? 8
                                  : 16;
    const auto least = static_cast<std::size_t>(depth) *
                       (compressed ? block * static_cast<std::size_t>((width + 3) / 4 * ((height + 3) / 4))
                                   : static_cast<std::size_t>(height));
    std::vector<char> pixels(input.rest(), input.rest() + input.rest_size());
    pixels.resize(std::max(pixels.size(), least));
    pixels.shrink_to_fit();

    const std::vector<char> before = pixels;
    vDDSImage::flip(pixels.data(), width, height, depth, pixels.size(), format, compressed);
    if (format >= TOZ::SUPPORTED_FORMAT::BC6H_SF16) require(pixels == before, "BC6H is left alone");
    vDDSImage::flip(pixels.data(), width, height, depth, pixels.size(), format, compressed);
    require(pixels == before, "two flips are none");
    return 0;
}
