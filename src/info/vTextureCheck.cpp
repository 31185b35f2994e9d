// SPDX-License-Identifier: Apache-2.0
#include "vTextureCheck.h"

#include <array>

#include "info/BasisReading.h"
#include "info/DDSTable.h"
#include "info/RegularFile.h"
#include "info/check_words.h"
#include "info/other_kinds.h"

using pelto::info::failure;
using pelto::info::RegularFile;

vTextureCheck::Result vTextureCheck::CheckDDSFile(const std::string& path, const vTextureLimits& limits) {
    RegularFile file(path);
    if (!file.fault().empty()) return failure(eUnreadable, 0, file.fault());
    std::array<unsigned char, pelto::info::kStartSize> start{};
    const std::size_t available = file.read(start.data(), start.size());
    if (!file.fault().empty()) return failure(eUnreadable, 0, file.fault());
    return pelto::info::read_dds_table(start.data(), available, file.length(), limits).result;
}

vTextureCheck::Result vTextureCheck::CheckDDSBuffer(const void* data, std::uint64_t size,
                                                    const vTextureLimits& limits) {
    const auto* const bytes = static_cast<const unsigned char*>(data);
    return pelto::info::read_dds_table(bytes, size, size, limits).result;
}

vTextureCheck::Result vTextureCheck::CheckBasisFile(const std::string& path, const vTextureLimits& limits) {
    RegularFile file(path);
    if (!file.fault().empty()) return failure(eUnreadable, 0, file.fault());
    const Result result = pelto::info::read_basis(file.source(), limits, true).result;
    return file.fault().empty() ? result : failure(eUnreadable, 0, file.fault());
}

vTextureCheck::Result vTextureCheck::CheckBasisBuffer(const void* data, std::uint64_t size,
                                                      const vTextureLimits& limits) {
    return pelto::info::read_basis(pelto::info::byte_source(data, size), limits, true).result;
}
