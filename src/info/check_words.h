// SPDX-License-Identifier: Apache-2.0
// Results of checks, with their sentences for a person.
#ifndef PELTO_INFO_CHECK_WORDS_H
#define PELTO_INFO_CHECK_WORDS_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "info/checked_numbers.h"
#include "vTextureCheck.h"

namespace pelto::info {

vTextureCheck::Result failure(vTextureCheck::EStatus status, std::uint64_t offset, std::string sentence);

/// "is cut short: WHAT ends at byte PROMISED, the file at byte LENGTH".
vTextureCheck::Result cut_short(const std::string& what, std::uint64_t promised, std::uint64_t length);

/// An extent that is 0 or beyond the limit: "its WHAT of N pixels at byte OFFSET is ...".
vTextureCheck::Result absurd_extent(const char* what, std::uint32_t pixels, std::uint64_t offset,
                                    std::uint32_t limit);

vTextureCheck::Result too_many_bytes(std::uint64_t bytes, std::uint64_t offset, std::uint64_t limit);

/// Of a file that is longer than its caller is ready to read.
std::optional<vTextureCheck::Result> length_fault(std::uint64_t length, const vTextureLimits& limits);

/// "1 byte", "2 bytes".
std::string count_of(std::uint64_t number, const char* what);

/// Bytes in quotes; those that are no printable ASCII characters as \xNN.
std::string in_quotes(std::string_view bytes);

}  // namespace pelto::info

#endif
