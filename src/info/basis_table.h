// SPDX-License-Identifier: Apache-2.0
// The header and tables of a .basis file, held against its true length.
#ifndef PELTO_INFO_BASIS_TABLE_H
#define PELTO_INFO_BASIS_TABLE_H

#include <cstdint>
#include <optional>

#include "vTextureCheck.h"

namespace pelto::info {

/// What the header alone says against a file of `length` bytes, which starts with the bytes at `header`:
/// basis::kHeaderSize of them, or all where the file has fewer.
std::optional<vTextureCheck::Result> basis_header_fault(const unsigned char* header, std::uint64_t length);

/// Looks at everything but the compressed data themselves.
vTextureCheck::Result check_basis_table(const unsigned char* data, std::uint64_t size,
                                        const vTextureLimits& limits);

}  // namespace pelto::info

#endif
