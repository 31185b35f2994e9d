// SPDX-License-Identifier: Apache-2.0
// The byte sequences that tests build files and buffers from.
#ifndef TESTS_SUPPORT_BYTES_H
#define TESTS_SUPPORT_BYTES_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace support {

using Bytes = std::vector<std::uint8_t>;

/// `count` pseudo-random bytes, the same for the same seed on every machine.
Bytes random_bytes(std::size_t count, std::uint32_t seed);

/// The bytes as the char pointer that the DDS classes take.
inline char* chars(Bytes& bytes) { return reinterpret_cast<char*>(bytes.data()); }

}  // namespace support

#endif
