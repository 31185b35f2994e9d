// SPDX-License-Identifier: Apache-2.0
#include "info/ktx2_file.h"

namespace ktx2 {

using support::Bytes;

namespace {

void put(Bytes& bytes, std::uint64_t value, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i) bytes.push_back(static_cast<std::uint8_t>(value >> 8 * i));
}

void pad(Bytes& bytes, std::size_t unit) {
    while (bytes.size() % unit != 0) bytes.push_back(0);
}

Bytes descriptor(const File& file) {
    const std::uint64_t block = 24 + 16 * file.channels.size();
    Bytes bytes;
    put(bytes, 4 + block, 4);
    put(bytes, 0, 4);                // vendor and type
    put(bytes, 2 | block << 16, 4);  // version and size
    put(bytes, file.model | 1U << 8 | file.transfer << 16 | file.descriptor_flags << 24, 4);
    const bool blocks = file.model != kModelRgbsda;
    put(bytes, blocks ? 0x0303U : 0, 4);
    put(bytes, file.scheme != 0 ? 0 : blocks ? 16 : 4, 4);
    put(bytes, 0, 4);
    for (std::size_t i = 0; i < file.channels.size(); ++i) {
        const std::uint32_t bits = blocks ? 64 : 8;
        put(bytes, static_cast<std::uint32_t>(i) * bits | (bits - 1) << 16 | file.channels[i] << 24, 4);
        put(bytes, 0, 4);
        put(bytes, 0, 4);
        put(bytes, 0xFFFFFFFF, 4);
    }
    return bytes;
}

Bytes key_values(const File& file) {
    Bytes bytes;
    for (const auto& [key, value] : file.values) {
        put(bytes, key.size() + value.size() + 2, 4);
        bytes.insert(bytes.end(), key.begin(), key.end());
        bytes.push_back(0);
        bytes.insert(bytes.end(), value.begin(), value.end());
        bytes.push_back(0);
        pad(bytes, 4);
    }
    return bytes;
}

}  // namespace

Built build(const File& file) {
    const Bytes format = descriptor(file);
    const Bytes values = key_values(file);
    const std::size_t index_end = kHeaderSize + kIndexEntrySize * file.levels.size();
    const std::size_t values_at = index_end + format.size();
    std::uint64_t at = values_at + values.size();
    const std::uint64_t global_at = (at + 7) / 8 * 8;
    if (file.global_data > 0) at = global_at + file.global_data;
    Built built;
    built.offsets.resize(file.levels.size());
    for (std::size_t i = file.levels.size(); i-- > 0;) {
        const std::uint64_t alignment = file.scheme == 0 ? file.alignment : 1;
        at = (at + alignment - 1) / alignment * alignment;
        built.offsets[i] = at;
        at += file.levels[i].stored;
    }
    Bytes& bytes = built.bytes;
    bytes = {0xAB, 'K', 'T', 'X', ' ', '2', '0', 0xBB, '\r', '\n', 0x1A, '\n'};
    for (const std::uint32_t field :
         {file.vk_format, file.type_size, file.width, file.height, file.depth, file.layers, file.faces,
          file.level_count, file.scheme, static_cast<std::uint32_t>(index_end),
          static_cast<std::uint32_t>(format.size()),
          static_cast<std::uint32_t>(values.empty() ? 0 : values_at),
          static_cast<std::uint32_t>(values.size())}) {
        put(bytes, field, 4);
    }
    put(bytes, file.global_data > 0 ? global_at : 0, 8);
    put(bytes, file.global_data, 8);
    for (std::size_t i = 0; i < file.levels.size(); ++i) {
        put(bytes, built.offsets[i], 8);
        put(bytes, file.levels[i].stored, 8);
        put(bytes, file.levels[i].uncompressed, 8);
    }
    bytes.insert(bytes.end(), format.begin(), format.end());
    bytes.insert(bytes.end(), values.begin(), values.end());
    bytes.resize(at);
    bytes.shrink_to_fit();
    return built;
}

}  // namespace ktx2
