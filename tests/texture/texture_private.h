// SPDX-License-Identifier: Apache-2.0
// The private members of the texture utilities.
#ifndef TESTS_TEXTURE_TEXTURE_PRIVATE_H
#define TESTS_TEXTURE_TEXTURE_PRIVATE_H

#include "support/private_access.h"
#include "vTextureUtils.h"

namespace texture_private {

PELTO_PRIVATE_MEMBER(compressed_size, &vTextureUtils::_ComputeCompressedSize,
                     unsigned int (*)(unsigned int, unsigned int, vTextureFormat::Type))
PELTO_PRIVATE_MEMBER(format_pixel_size, &vTextureUtils::_GetSizeForUncompressedFormat,
                     unsigned int (*)(const vTextureFormat::Type&))
PELTO_PRIVATE_MEMBER(client_pixel_size, &vTextureUtils::_GetSizeForUncompressedFormat,
                     unsigned int (*)(const vTextureClientDataType&))

}  // namespace texture_private

#endif
