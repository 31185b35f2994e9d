// SPDX-License-Identifier: Apache-2.0
// The levels of a KTX file (version 1) of one 2D texture.
#ifndef TESTS_SUPPORT_KTX_FILE_H
#define TESTS_SUPPORT_KTX_FILE_H

#include <string>
#include <vector>

#include "support/bytes.h"

namespace support {

/// The blocks of each level, from the largest. Throws where the file cannot be read as one.
std::vector<Bytes> ktx_levels(const std::string& path);

}  // namespace support

#endif
