// SPDX-License-Identifier: Apache-2.0
// The bytes of a file, in memory or on disk, of which a description needs a few.
#ifndef PELTO_INFO_BYTE_SOURCE_H
#define PELTO_INFO_BYTE_SOURCE_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace pelto::info {

struct ByteSource {
    std::uint64_t size = 0;

    /// Copies `n` bytes from `offset` on, and returns how many there were.
    std::function<std::size_t(std::uint64_t offset, void* to, std::size_t n)> read;

    /// All of it, where it lies in memory; else null.
    const unsigned char* data = nullptr;

    /// The first `n` bytes, or all where there are fewer.
    std::string start(std::size_t n) const {
        std::string bytes(n, '\0');
        bytes.resize(read(0, bytes.data(), n));
        return bytes;
    }
};

ByteSource byte_source(const void* data, std::uint64_t size);

}  // namespace pelto::info

#endif
