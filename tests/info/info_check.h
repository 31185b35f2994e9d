// SPDX-License-Identifier: Apache-2.0
// Reads descriptions of files in memory, and looks whether one agrees with itself.
#ifndef TESTS_INFO_INFO_CHECK_H
#define TESTS_INFO_INFO_CHECK_H

#include <vTextureInfo.h>

#include "support/bytes.h"

namespace info_check {

/// From a heap block of exactly the file's size: a sanitizer sees a read beyond it.
vTextureInfo read(const support::Bytes& file, const vTextureLimits& limits = vTextureLimits());

/// Fails the test where the description contradicts itself. Looks at no more than the first and the last 500
/// levels.
void expect_consistent(const vTextureInfo& info);

void expect_same(const vTextureInfo& info, const vTextureInfo& expected);

}  // namespace info_check

#endif
