// The header and tables of a .basis file, held against its true length.
#ifndef PELTO_CHECK_BASIS_TABLE_H
#define PELTO_CHECK_BASIS_TABLE_H

#include <cstdint>

#include "vTextureCheck.h"

namespace pelto::check {

/// Looks at everything but the compressed data themselves.
vTextureCheck::Result check_basis_table(const unsigned char* data, std::uint64_t size,
                                        const vTextureLimits& limits);

}  // namespace pelto::check

#endif
