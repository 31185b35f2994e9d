// SPDX-License-Identifier: Apache-2.0
// Calls of vBasisImage whose outputs, exceptions and leaks are looked at, and their comparison with direct
// calls of the transcoder.
#ifndef TESTS_BASIS_BASIS_CHECK_H
#define TESTS_BASIS_BASIS_CHECK_H

#include <gtest/gtest.h>

#include "support/bytes.h"
#include "support/direct_transcode.h"
#include "vBasisImage.h"

namespace basis_check {

using support::Bytes;
using TOZ::EUsageFormat;
using TOZ::vBasisImage;

/// A copy of the bytes in a block of the global array new of exactly their size.
unsigned char* new_copy(const Bytes& bytes);

/// Makes the object hold a copy of the file.
void hold(vBasisImage& image, const Bytes& file);

/// Usage values of every kind.
constexpr int kUsages[] = {1, 2, 3, 4, 5, 0, 6, 9, -1, 2147483647};

struct Got {
    bool result = false;
    bool thrown = false;  // std::bad_alloc
    bool image_written = false;
    bool size_written = false;
    bool has_image = false;
    unsigned int size = 0;
    Bytes blocks;
};

/// getImage. Whatever it leaves behind is released, after a look at whether it may: a block for the image; on
/// a failed transcode that block, though no one is told of it; on std::bad_alloc the transcoder.
Got get_image(const vBasisImage& image, unsigned int level, unsigned int slice, int usage);

/// Whether nothing was written.
testing::AssertionResult refused(const Got& got);

/// Whether there is a size, and null for the image.
testing::AssertionResult not_transcoded(const Got& got, unsigned int size);

/// Whether getImage on an object that holds the file does what the calls of the transcoder do, or fails where
/// they would leave the memory that is theirs.
testing::AssertionResult like_direct_calls(const vBasisImage& image, const Bytes& file, unsigned int level,
                                           unsigned int slice, int usage);

/// Whether the fields are those of the analysis.
testing::AssertionResult fields_are(const vBasisImage& image, const support::direct::Analysis& analysis);

/// Compares every operation on the file with direct calls: each level of each slice that the header and the
/// slice table name, and some beyond.
void expect_like_direct_calls(const Bytes& file);

}  // namespace basis_check

#endif
