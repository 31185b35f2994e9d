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
const char* loader_format_name(TOZ::SUPPORTED_FORMAT::Type format);

/// "+X": of a cube face, counted from 0.
const char* face_name(std::uint32_t face);

/// "BC1_UNORM, cube map, 2 layers, 7 levels".
std::string description_words(const vTextureInfo& info);

/// "1 level" or "3 levels".
std::string counted_words(std::uint64_t count, const char* one);

/// Why pixels of the format are not drawn: "YUV is not shown". Empty where they are.
std::string why_no_picture(const vPixelFormat& format);

/// What there is to say of bytes that a loaded file lacks.
std::string cut_short_words(std::uint64_t missing_bytes);

/// Whether the note tells that a loader gives something else than the file means.
bool concerns_loader(const vTextureNote& note);

/// "64 x 32", with " x 16" where the image is deeper than one pixel.
std::string extent_words(std::uint32_t width, std::uint32_t height, std::uint32_t depth);
std::string extent_words(const vTextureInfo& info);

#endif
