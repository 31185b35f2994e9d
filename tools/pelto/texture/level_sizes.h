// SPDX-License-Identifier: Apache-2.0
// The levels of an image, held against what a renderer reckons with for its format.
#ifndef PELTO_TOOL_TEXTURE_LEVEL_SIZES_H
#define PELTO_TOOL_TEXTURE_LEVEL_SIZES_H

#include <cstdint>
#include <vDDSImage.h>
#include <vTextureInfo.h>
#include <vTextureUtils.h>

/// The texture format that a renderer stores an image's pixels in.
vTextureFormat::Type texture_format(TOZ::SUPPORTED_FORMAT::Type format);

/// Bytes of a level by vTextureUtils, all slices of it. The extent is that of level 0.
std::uint64_t expected_bytes(std::uint32_t width, std::uint32_t height, std::uint32_t depth,
                             std::uint32_t level, vTextureFormat::Type format);

/// Throws std::runtime_error where the bytes of a level are not those that are expected.
void check_level(std::uint32_t level, std::uint64_t bytes, std::uint64_t expected);

/// Throws std::runtime_error, which names the first level whose bytes are not as expected. Of a DDS file that
/// vDDSImage takes.
void check_levels(const vTextureInfo& info);

#endif
