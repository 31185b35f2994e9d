// SPDX-License-Identifier: Apache-2.0
// The private members of the DDS classes that tests call or look at.
#ifndef TESTS_SUPPORT_DDS_PRIVATE_H
#define TESTS_SUPPORT_DDS_PRIVATE_H

#include <cstddef>
#include <vector>

#include "support/private_access.h"
#include "vDDSImage.h"

namespace dds_private {

PELTO_PRIVATE_MEMBER(mipmaps, &vDDSTexture::mipmaps, std::vector<vDDSSurface> vDDSTexture::*)

PELTO_PRIVATE_MEMBER(format, &vDDSImage::format, TOZ::SUPPORTED_FORMAT::Type vDDSImage::*)
PELTO_PRIVATE_MEMBER(components, &vDDSImage::components, int vDDSImage::*)
PELTO_PRIVATE_MEMBER(bits_per_component, &vDDSImage::bitsPerComponent, int vDDSImage::*)
PELTO_PRIVATE_MEMBER(compressed, &vDDSImage::compressed, bool vDDSImage::*)
PELTO_PRIVATE_MEMBER(cubemap, &vDDSImage::cubemap, bool vDDSImage::*)
PELTO_PRIVATE_MEMBER(volume, &vDDSImage::volume, bool vDDSImage::*)
PELTO_PRIVATE_MEMBER(valid, &vDDSImage::valid, bool vDDSImage::*)
PELTO_PRIVATE_MEMBER(textures, &vDDSImage::textures, std::vector<vDDSTexture> vDDSImage::*)

PELTO_PRIVATE_MEMBER(size_rgb, &vDDSImage::size_rgb, std::size_t (vDDSImage::*)(int, int) const)
PELTO_PRIVATE_MEMBER(size_dxtc, &vDDSImage::size_dxtc, std::size_t (vDDSImage::*)(int, int) const)
PELTO_PRIVATE_MEMBER(size_bc6h, &vDDSImage::size_bc6h, std::size_t (vDDSImage::*)(int, int) const)
PELTO_PRIVATE_MEMBER(clamp_size, &vDDSImage::clamp_size, int (vDDSImage::*)(int) const)
PELTO_PRIVATE_MEMBER(get_line_width, &vDDSImage::get_line_width, int (vDDSImage::*)(int, int) const)
PELTO_PRIVATE_MEMBER(swap_endian, &vDDSImage::swap_endian, void (vDDSImage::*)(void*) const)

PELTO_PRIVATE_MEMBER(swap, &vDDSImage::_Swap, void (*)(void*, void*, std::size_t))
PELTO_PRIVATE_MEMBER(swap_memcopy, &vDDSImage::_SwapMemcopy, void (*)(void*, void*, std::size_t))
PELTO_PRIVATE_MEMBER(swap_optimized, &vDDSImage::_SwapOptimized, void (*)(void*, void*))

using RowRoutine = void (*)(TOZ::DXTColBlock*, int);
PELTO_PRIVATE_MEMBER(flip_block_rows, &vDDSImage::flip_block_rows,
                     void (*)(char*, unsigned, unsigned, unsigned, RowRoutine))
PELTO_PRIVATE_MEMBER(flip_blocks_dxtc1, &vDDSImage::flip_blocks_dxtc1, RowRoutine)
PELTO_PRIVATE_MEMBER(flip_blocks_dxtc3, &vDDSImage::flip_blocks_dxtc3, RowRoutine)
PELTO_PRIVATE_MEMBER(flip_blocks_dxtc5, &vDDSImage::flip_blocks_dxtc5, RowRoutine)
PELTO_PRIVATE_MEMBER(flip_dxt5_alpha, &vDDSImage::flip_dxt5_alpha, void (*)(TOZ::DXT5AlphaBlock*))
PELTO_PRIVATE_MEMBER(flip_blocks_bc4, &vDDSImage::flip_blocks_bc4, void (*)(TOZ::BC4ColBlock*, int))
PELTO_PRIVATE_MEMBER(flip_block_bc4, &vDDSImage::flip_block_bc4, void (*)(TOZ::BC4ColBlock&))
PELTO_PRIVATE_MEMBER(flip_blocks_bc5, &vDDSImage::flip_blocks_bc5, void (*)(TOZ::BC5ColBlock*, int))

}  // namespace dds_private

#endif
