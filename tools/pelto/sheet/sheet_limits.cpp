#include "sheet/sheet_limits.h"

#include <stdexcept>
#include <string>

void SheetLimits::add_images(std::uint64_t count) {
    constexpr std::uint64_t kMost = 10'000;
    if (count > kMost || (images_ += count) > kMost) {
        throw std::runtime_error("promises more images than a sheet takes, which are " +
                                 std::to_string(kMost));
    }
}

void SheetLimits::add_pixels(std::int64_t width, std::int64_t height, std::uint64_t images) {
    const std::string extent = std::to_string(width) + " x " + std::to_string(height);
    if (width < 1 || height < 1) throw std::runtime_error("has no pixels: it is " + extent);
    if (width > max_extent_ || height > max_extent_) {
        const std::string most = std::to_string(max_extent_);
        throw std::runtime_error("is " + extent + " pixels, where OpenGL takes " + most + " x " + most +
                                 " at most");
    }
    constexpr std::uint64_t kMost = std::uint64_t{1} << 30;
    pixels_ += static_cast<std::uint64_t>(width * height) * images;
    if (pixels_ > kMost) {
        throw std::runtime_error("promises more pixels than a sheet takes, which are " +
                                 std::to_string(kMost));
    }
}

void check_choice(const char* what, std::optional<std::uint32_t> chosen, std::uint32_t count) {
    if (!chosen || *chosen < count) return;
    throw std::runtime_error(std::string("there is no ") + what + " " + std::to_string(*chosen) +
                             ": the last one is " + std::to_string(count - 1));
}
