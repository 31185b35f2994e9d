// SPDX-License-Identifier: Apache-2.0
// Products and sums that stay at the largest number where they would exceed it.
#ifndef PELTO_INFO_CHECKED_NUMBERS_H
#define PELTO_INFO_CHECKED_NUMBERS_H

#include <cstdint>
#include <limits>

namespace pelto::info {

constexpr std::uint64_t kUncountable = std::numeric_limits<std::uint64_t>::max();

constexpr std::uint64_t product(std::uint64_t a, std::uint64_t b) {
    return b != 0 && a > kUncountable / b ? kUncountable : a * b;
}

constexpr std::uint64_t sum(std::uint64_t a, std::uint64_t b) {
    return a > kUncountable - b ? kUncountable : a + b;
}

}  // namespace pelto::info

#endif
