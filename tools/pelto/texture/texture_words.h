// SPDX-License-Identifier: Apache-2.0
// The words that scripts and people read for what a texture file is.
#ifndef PELTO_TOOL_TEXTURE_TEXTURE_WORDS_H
#define PELTO_TOOL_TEXTURE_TEXTURE_WORDS_H

#include <cstdint>
#include <string>
#include <vTextureInfo.h>

const char* container_name(vTextureInfo::EContainer container);
const char* alpha_mode_name(vTextureInfo::EAlphaMode mode);
const char* status_name(vTextureCheck::EStatus status);

/// The name in TOZ::SUPPORTED_FORMAT, or null where vDDSImage refuses the format.
const char* loader_format_name(const vTextureInfo& info);

/// "64 x 32", with " x 16" where the image is deeper than one pixel.
std::string extent_words(std::uint32_t width, std::uint32_t height, std::uint32_t depth);
std::string extent_words(const vTextureInfo& info);

#endif
