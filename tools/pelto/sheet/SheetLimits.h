// SPDX-License-Identifier: Apache-2.0
// What a sheet can show, checked before memory is taken for it.
#ifndef PELTO_TOOL_SHEET_SHEET_LIMITS_H
#define PELTO_TOOL_SHEET_SHEET_LIMITS_H

#include <cstdint>
#include <optional>

/// Counts what a file promises. Each operation throws std::runtime_error where a sheet cannot show it.
class SheetLimits {
public:
    /// `max_extent`: pixels across and down an image.
    explicit SheetLimits(int max_extent) : max_extent_(max_extent) {}

    /// So many images of this extent.
    void add_images(std::int64_t width, std::int64_t height, std::uint64_t count);

private:
    int max_extent_;
    std::uint64_t images_ = 0;
    std::uint64_t pixels_ = 0;
};

/// Throws std::runtime_error where headers promise far more than the file has: that much would be read as zero.
void check_missing_bytes(std::uint64_t promised, std::uint64_t length);

/// Throws std::runtime_error where there is no such face or level.
void check_choice(const char* what, std::optional<std::uint32_t> chosen, std::uint32_t count);

#endif
