// SPDX-License-Identifier: Apache-2.0
// What a .basis file is.
#include "info/byte_source.h"
#include "info/check_words.h"
#include "vTextureInfo.h"

void vTextureInfo::_DescribeBasis(const pelto::info::ByteSource&, const vTextureLimits&) {
    problem = pelto::info::failure(vTextureCheck::eUnsupportedFormat, 0, "is a .basis file");
}
