// SPDX-License-Identifier: Apache-2.0

#include "support/bytes.h"

namespace support {

Bytes random_bytes(std::size_t count, std::uint32_t seed) {
    Bytes bytes(count);
    std::uint32_t state = seed * 2654435761u + 0x9E3779B9u;
    for (std::uint8_t& byte : bytes) {
        state = state * 1664525u + 1013904223u;
        byte = static_cast<std::uint8_t>(state >> 24);
    }
    return bytes;
}

}  // namespace support
