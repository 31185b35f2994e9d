// SPDX-License-Identifier: Apache-2.0
#include "texture/BasisTexture.h"

#include <algorithm>
#include <climits>
#include <stdexcept>

BasisTexture::BasisTexture(const std::vector<unsigned char>& file, Trust trust) {
    vTextureLimits limits;
    limits.maxFileBytes = INT_MAX;  // vBasisImage counts no more
    const vTextureCheck::Result check = vTextureCheck::CheckBasisBuffer(file.data(), file.size(), limits);
    if (!check.ok() && trust == Trust::kNo) throw std::runtime_error(check.sentence);
    info_ = vTextureInfo::ReadBuffer(file.data(), file.size(), limits);
    if (!info_.Described()) throw std::runtime_error(info_.problem.sentence);
    auto copy = std::make_unique<unsigned char[]>(file.size());
    std::copy(file.begin(), file.end(), copy.get());
    image_.setBasisFileRawData(copy.release(), static_cast<unsigned int>(file.size()));
    if (image_.getNumMipLevels() == 0) throw std::runtime_error(check.ok() ? "is damaged" : check.sentence);
}

std::uint32_t BasisTexture::level_count(std::uint32_t slice) const {
    std::uint32_t count = 0;
    const std::uint64_t images = info_.GetNumImages();
    for (std::uint64_t i = 0; i < images; ++i) count += info_.GetImage(i).layer == slice;
    return count;
}

std::optional<vTextureLevel> BasisTexture::find(std::uint32_t slice, std::uint32_t level) const {
    const vTextureLevel found = info_.GetLevel(slice, 0, level);
    if (found.width == 0) return std::nullopt;
    return found;
}

BasisBlocks BasisTexture::transcoded(std::uint32_t slice, std::uint32_t level, TOZ::EUsageFormat usage,
                                     const std::string& usage_name) const {
    unsigned char* blocks = nullptr;
    unsigned int size = 0;
    if (!image_.getImage(level, slice, blocks, size, usage)) {
        throw std::runtime_error("level " + std::to_string(level) + " of slice " + std::to_string(slice) +
                                 " cannot be transcoded to " + usage_name + ": its " + info_.format +
                                 " data is damaged, or has no such form");
    }
    return {std::unique_ptr<unsigned char[]>(blocks), size};
}
