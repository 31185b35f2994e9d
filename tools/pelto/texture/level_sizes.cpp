// SPDX-License-Identifier: Apache-2.0

#include "texture/level_sizes.h"

#include <stdexcept>
#include <string>

vTextureFormat::Type texture_format(TOZ::SUPPORTED_FORMAT::Type format) {
    switch (format) {
        case TOZ::SUPPORTED_FORMAT::LUMINANCE8:
            return vTextureFormat::FORMAT_1;
        case TOZ::SUPPORTED_FORMAT::RGB8:
        case TOZ::SUPPORTED_FORMAT::BGRA8:  // three components
            return vTextureFormat::FORMAT_4;
        case TOZ::SUPPORTED_FORMAT::RGBA8:
            return vTextureFormat::FORMAT_5;
        case TOZ::SUPPORTED_FORMAT::RGBA16F:
            return vTextureFormat::FORMAT_31;
        case TOZ::SUPPORTED_FORMAT::R32F:
            return vTextureFormat::FORMAT_30;
        case TOZ::SUPPORTED_FORMAT::RGB32F:
            return vTextureFormat::FORMAT_40;
        case TOZ::SUPPORTED_FORMAT::RGBA32F:
            return vTextureFormat::FORMAT_41;
        case TOZ::SUPPORTED_FORMAT::DXT1:
            return vTextureFormat::FORMAT_51;
        case TOZ::SUPPORTED_FORMAT::DXT3:
            return vTextureFormat::FORMAT_53;
        case TOZ::SUPPORTED_FORMAT::DXT5:
            return vTextureFormat::FORMAT_55;
        case TOZ::SUPPORTED_FORMAT::BC4U:
            return vTextureFormat::FORMAT_57;
        case TOZ::SUPPORTED_FORMAT::BC4S:
            return vTextureFormat::FORMAT_58;
        case TOZ::SUPPORTED_FORMAT::BC5U:
            return vTextureFormat::FORMAT_59;
        case TOZ::SUPPORTED_FORMAT::BC5S:
            return vTextureFormat::FORMAT_60;
        case TOZ::SUPPORTED_FORMAT::BC6H_SF16:
        case TOZ::SUPPORTED_FORMAT::BC6H_UF16:
            break;
    }
    return vTextureFormat::FORMAT_61;
}

std::uint64_t expected_bytes(std::uint32_t width, std::uint32_t height, std::uint32_t depth,
                             std::uint32_t level, vTextureFormat::Type format) {
    const auto extent = vTextureUtils::ComputeImageSize(width, height, depth, level);
    return std::uint64_t{extent[2]} *
           vTextureUtils::ComputeImageSizeInBytes(extent[0], extent[1], 1, 0, format);
}

void check_level(std::uint32_t level, std::uint64_t bytes, std::uint64_t expected) {
    if (bytes == expected) return;
    throw std::runtime_error("level " + std::to_string(level) + " has " + std::to_string(bytes) +
                             " bytes, where its format and extent take " + std::to_string(expected));
}

void check_levels(const vTextureInfo& info) {
    const auto format = texture_format(static_cast<TOZ::SUPPORTED_FORMAT::Type>(info.loaderFormat));
    const std::uint64_t images = info.GetNumImages();
    for (std::uint64_t i = 0; i < images; ++i) {
        const vTextureLevel level = info.GetImage(i);
        check_level(level.level, level.bytes,
                    expected_bytes(info.width, info.height, info.depth, level.level, format));
    }
}
