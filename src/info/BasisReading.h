// SPDX-License-Identifier: Apache-2.0
// The header and slices of a .basis file, and what a check of it says.
#ifndef PELTO_INFO_BASIS_READING_H
#define PELTO_INFO_BASIS_READING_H

#include <vector>

#include "basis/basis_header.h"
#include "info/ByteSource.h"
#include "vTextureCheck.h"

namespace pelto::info {

struct BasisReading {
    vTextureCheck::Result result;
    basis::Header header{};
    std::vector<basis::Slice> slices;  ///< empty where the tables cannot be made sense of
};

/// Reads the header and the table of slices, and with `codebooks` those of the file, too, which it decodes.
BasisReading read_basis(const ByteSource& source, const vTextureLimits& limits, bool codebooks);

}  // namespace pelto::info

#endif
