// SPDX-License-Identifier: Apache-2.0
// Names for files that were taken for textures and are something else.
#ifndef PELTO_INFO_OTHER_KINDS_H
#define PELTO_INFO_OTHER_KINDS_H

#include <cstddef>
#include <string>
#include <string_view>

#include "vTextureCheck.h"

namespace pelto::info {

/// Bytes from a file's start that tell its kind.
constexpr std::size_t kStartSize = 512;

constexpr std::string_view kDDSMagic = "DDS ";
constexpr std::string_view kBasisMagic = "sB";
constexpr std::string_view kKTX2Magic("\xABKTX 20\xBB\r\n\x1A\n", 12);

bool is_lfs_pointer(std::string_view start);

/// Of a file that starts with these bytes (up to kStartSize) instead of `magic`: "is a PNG image, not
/// WANTED".
vTextureCheck::Result other_kind(std::string_view start, const char* wanted, std::string_view magic);

}  // namespace pelto::info

#endif
