// SPDX-License-Identifier: Apache-2.0
// The extent of a mip level, which halves from one level to the next.
#ifndef PELTO_INFO_LEVEL_EXTENT_H
#define PELTO_INFO_LEVEL_EXTENT_H

#include <algorithm>
#include <cstdint>

namespace pelto::info {

/// Pixels.
struct LevelExtent {
    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t depth;

    constexpr LevelExtent next() const {
        return {std::max(width / 2, 1u), std::max(height / 2, 1u), std::max(depth / 2, 1u)};
    }
};

}  // namespace pelto::info

#endif
