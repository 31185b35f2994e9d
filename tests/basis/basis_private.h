// SPDX-License-Identifier: Apache-2.0
// The private members of vBasisImage.
#ifndef TESTS_BASIS_BASIS_PRIVATE_H
#define TESTS_BASIS_BASIS_PRIVATE_H

#include "support/private_access.h"
#include "vBasisImage.h"

namespace basis_private {

using TOZ::vBasisImage;

PELTO_PRIVATE_MEMBER(raw_data, &vBasisImage::_basisFileRawData, const unsigned char* vBasisImage::*)
PELTO_PRIVATE_MEMBER(file_size, &vBasisImage::_basisFileSize, int vBasisImage::*)
PELTO_PRIVATE_MEMBER(width, &vBasisImage::_width, int vBasisImage::*)
PELTO_PRIVATE_MEMBER(height, &vBasisImage::_height, int vBasisImage::*)
PELTO_PRIVATE_MEMBER(num_slices, &vBasisImage::_numSlices, int vBasisImage::*)
PELTO_PRIVATE_MEMBER(num_mip_levels, &vBasisImage::_numMipLevels, int vBasisImage::*)

PELTO_PRIVATE_MEMBER(analysis, &vBasisImage::_analysis, bool (vBasisImage::*)())
PELTO_PRIVATE_MEMBER(load_full_file, &vBasisImage::_loadFullFile,
                     bool (vBasisImage::*)(const char*, const unsigned char*&, int&) const)

}  // namespace basis_private

#endif
