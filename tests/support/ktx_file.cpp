// SPDX-License-Identifier: Apache-2.0

#include "support/ktx_file.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace support {

namespace {

std::size_t number(const Bytes& file, std::size_t offset) {
    return file.at(offset) | std::size_t{file.at(offset + 1)} << 8 | std::size_t{file.at(offset + 2)} << 16 |
           std::size_t{file.at(offset + 3)} << 24;
}

}  // namespace

std::vector<Bytes> ktx_levels(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    const Bytes file{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    constexpr std::size_t kHeader = 64;
    if (file.size() < kHeader || file[1] != 'K' || file[2] != 'T' || file[3] != 'X')
        throw std::runtime_error("no KTX file: " + path);
    const std::size_t count = number(file, 56);
    std::size_t at = kHeader + number(file, 60);
    std::vector<Bytes> levels;
    for (std::size_t level = 0; level < count; ++level) {
        const std::size_t size = number(file, at);
        at += 4;
        if (size > file.size() - at) throw std::runtime_error("truncated KTX file: " + path);
        const auto begin = file.begin() + static_cast<std::ptrdiff_t>(at);
        levels.emplace_back(begin, begin + static_cast<std::ptrdiff_t>(size));
        at += (size + 3) / 4 * 4;
    }
    if (at != file.size()) throw std::runtime_error("a KTX file with more in it: " + path);
    return levels;
}

}  // namespace support
