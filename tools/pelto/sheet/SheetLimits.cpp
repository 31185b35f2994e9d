// SPDX-License-Identifier: Apache-2.0

#include "sheet/SheetLimits.h"

#include <stdexcept>
#include <string>

void SheetLimits::add_images(std::int64_t width, std::int64_t height, std::uint64_t count) {
    constexpr std::uint64_t kMostImages = 10'000;
    if (count > kMostImages || (images_ += count) > kMostImages) {
        throw std::runtime_error("promises more images than a sheet takes, which are " +
                                 std::to_string(kMostImages));
    }
    const std::string extent = std::to_string(width) + " x " + std::to_string(height);
    if (width < 1 || height < 1) throw std::runtime_error("has no pixels: it is " + extent);
    if (width > max_extent_ || height > max_extent_) {
        const std::string most = std::to_string(max_extent_);
        throw std::runtime_error("is " + extent + " pixels, where OpenGL takes " + most + " x " + most +
                                 " at most");
    }
    constexpr std::uint64_t kMostPixels = std::uint64_t{1} << 30;
    pixels_ += static_cast<std::uint64_t>(width * height) * count;
    if (pixels_ > kMostPixels) {
        throw std::runtime_error("promises more pixels than a sheet takes, which are " +
                                 std::to_string(kMostPixels));
    }
}

void check_missing_bytes(std::uint64_t promised, std::uint64_t length) {
    constexpr std::uint64_t kMostMissing = std::uint64_t{1} << 28;
    if (promised <= kMostMissing || promised - kMostMissing <= length) return;
    throw std::runtime_error("its header promises " + std::to_string(promised) +
                             " bytes of pixels, and the file has " + std::to_string(length));
}

void check_choice(const char* what, std::optional<std::uint32_t> chosen, std::uint32_t count) {
    if (!chosen || *chosen < count) return;
    throw std::runtime_error(std::string("there is no ") + what + " " + std::to_string(*chosen) +
                             ": the last one is " + std::to_string(count - 1));
}
