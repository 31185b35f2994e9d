// SPDX-License-Identifier: Apache-2.0
// Builds KTX2 files in memory, from the Khronos KTX File Format Specification, version 2.
#ifndef TESTS_INFO_KTX2_FILE_H
#define TESTS_INFO_KTX2_FILE_H

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "support/bytes.h"

namespace ktx2 {

constexpr std::uint32_t kHeaderSize = 80;
constexpr std::uint32_t kIndexEntrySize = 24;

// Of the data format descriptor.
constexpr std::uint32_t kModelRgbsda = 1;
constexpr std::uint32_t kModelBC1 = 128;
constexpr std::uint32_t kModelBC7 = 134;
constexpr std::uint32_t kModelEtc1s = 163;
constexpr std::uint32_t kModelUastc = 166;
constexpr std::uint32_t kModelUastcHdr = 167;
constexpr std::uint32_t kTransferLinear = 1;
constexpr std::uint32_t kTransferSrgb = 2;

constexpr std::uint32_t kBasisLZ = 1;
constexpr std::uint32_t kZstandard = 2;

/// A level's bytes in the file, and how many they are uncompressed.
struct Level {
    std::uint64_t stored;
    std::uint64_t uncompressed;
};

struct File {
    std::uint32_t vk_format = 37;
    std::uint32_t type_size = 1;
    std::uint32_t width = 4;
    std::uint32_t height = 4;
    std::uint32_t depth = 0;
    std::uint32_t layers = 0;
    std::uint32_t faces = 1;
    std::uint32_t level_count = 1;  // of the header; 0 stands for one
    std::uint32_t scheme = 0;
    std::uint32_t model = kModelRgbsda;
    std::uint32_t transfer = kTransferLinear;
    std::uint32_t descriptor_flags = 0;  // 1: premultiplied
    std::vector<std::uint32_t> channels = {0, 1, 2, 15};
    std::vector<std::pair<std::string, std::string>> values;
    std::vector<Level> levels;  // from the base level down
    std::uint32_t alignment = 4;
    std::uint64_t global_data = 0;
};

struct Built {
    support::Bytes bytes;
    std::vector<std::uint64_t> offsets;  // of the levels, from the base level down
};

/// The smallest level lies first, as KTX2 orders them.
Built build(const File& file);

}  // namespace ktx2

#endif
