// SPDX-License-Identifier: Apache-2.0
// A .basis file of 2D textures, and its levels as blocks for the GPU.
#ifndef PELTO_TOOL_TEXTURE_BASIS_TEXTURE_H
#define PELTO_TOOL_TEXTURE_BASIS_TEXTURE_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vBasisImage.h>
#include <vTextureInfo.h>
#include <vector>

#include "texture/trust.h"

struct BasisBlocks {
    std::unique_ptr<unsigned char[]> data;
    std::size_t size = 0;
};

class BasisTexture {
public:
    /// Takes the bytes of a file. Throws std::runtime_error, which says why it cannot be transcoded.
    BasisTexture(const std::vector<unsigned char>& file, Trust trust);

    /// The layers of the file are its slices.
    const vTextureInfo& info() const { return info_; }

    std::uint32_t level_count(std::uint32_t slice) const;
    std::optional<vTextureLevel> find(std::uint32_t slice, std::uint32_t level) const;

    /// Transcodes one level. Throws std::runtime_error, which says what went wrong; `usage_name` is what the
    /// usage is called in it.
    BasisBlocks transcoded(std::uint32_t slice, std::uint32_t level, TOZ::EUsageFormat usage,
                           const std::string& usage_name) const;

private:
    vTextureInfo info_;
    TOZ::vBasisImage image_;
};

#endif
