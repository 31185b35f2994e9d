// SPDX-License-Identifier: Apache-2.0
// isValidHeader: the transcoder's start, then its look at the whole header; nothing else.
#include <gtest/gtest.h>

#include "basis/basis_check.h"
#include "basis/basis_private.h"
#include "basis/fixture_files.h"
#include "support/basis_file.h"
#include "vBasisImage.h"

namespace {

using namespace basis_check;
using basis_fixtures::made;
namespace basis = support::basis;

bool is_valid(const Bytes& file) {
    vBasisImage image;
    hold(image, file);
    return image.isValidHeader();
}

bool is_loadable(const Bytes& file) {
    vBasisImage image;
    hold(image, file);
    return (image.*basis_private::analysis())();
}

TEST(BasisValidHeader, IsThatOfEveryFixture) {
    for (const auto& fixture : basis_fixtures::kFixtures) EXPECT_TRUE(is_valid(made(fixture.name)));
}

TEST(BasisValidHeader, IsNeverThatOf77BytesOrFewer) {
    for (const char* const name : {"etc1s_1x1", "uastc_1x1"}) {
        for (std::size_t size = 0; size <= 77; ++size) {
            Bytes file = made(name);
            file.resize(size);
            if (size == 77) basis::put(file, basis::header::kDataSize, 0);
            EXPECT_FALSE(is_valid(file)) << size;
            EXPECT_FALSE(is_loadable(file)) << size;
        }
    }
}

TEST(BasisValidHeader, DoesNotDependOnTheTextureType) {
    for (const std::uint32_t type : {0u, 1u, 2u, 3u, 4u, 5u, 255u})
        EXPECT_TRUE(is_valid(basis::with(made("etc1s_4x4"), basis::header::kTextureType, type))) << type;
}

TEST(BasisValidHeader, DoesNotDependOnTheChecksums) {
    const Bytes file = made("etc1s_alpha_30x10");
    for (const basis::Field crc : {basis::header::kHeaderCrc, basis::header::kDataCrc,
                                   basis::of_slice(file, 0, basis::slice::kDataCrc)}) {
        const Bytes changed = basis::with(file, crc, basis::get(file, crc) ^ 0x5555);
        EXPECT_TRUE(is_valid(changed));
        EXPECT_TRUE(is_loadable(changed));
    }
}

// The header alone would do, were it not for the tables that do not unpack.
TEST(BasisValidHeader, NeedsAFileThatTheTranscoderStartsOn) {
    const Bytes file = made("etc1s_alpha_30x10");
    EXPECT_FALSE(is_valid(basis::with(file, basis::header::kTablesSize, 0)));
    EXPECT_FALSE(is_valid(basis::with(file, basis::header::kTablesOffset, 0x7FFFFFFF)));
    EXPECT_FALSE(is_valid(basis::with(file, basis::header::kEndpointsSize, 0)));
    EXPECT_FALSE(is_valid(basis::with(file, basis::header::kSelectorsSize, 0)));
}

TEST(BasisValidHeader, MayBeMissingInAFileThatLoads) {
    const Bytes etc1s = made("etc1s_4x4");
    const Bytes files[] = {
        basis::with(etc1s, basis::header::kTotalImages, 2),
        basis::with(etc1s, basis::header::kFlags, 0),
        basis::with(etc1s, basis::header::kFlags, basis::kFlagEtc1s | basis::kFlagAlphaSlices),
        basis::with(made("uastc_4x4"), basis::header::kFlags, basis::kFlagEtc1s),
    };
    for (const Bytes& file : files) {
        EXPECT_FALSE(is_valid(file));
        EXPECT_TRUE(is_loadable(file));
    }
}

TEST(BasisValidHeader, MayBeThereInAFileThatDoesNotLoad) {
    for (const Bytes& file : {made("uastc_cube_map"), made("etc1s_video"), made("etc1s_volume"),
                              basis::with_slice(made("uastc_4x4"), 0, basis::slice::kLevel, 1)}) {
        EXPECT_TRUE(is_valid(file));
        EXPECT_FALSE(is_loadable(file));
    }
}

TEST(BasisValidHeader, ChangesNoField) {
    vBasisImage image;
    hold(image, made("etc1s_array_mips"));
    image.*basis_private::width() = 1;
    image.*basis_private::height() = 2;
    image.*basis_private::num_slices() = 3;
    image.*basis_private::num_mip_levels() = 4;
    EXPECT_TRUE(image.isValidHeader());
    EXPECT_TRUE(fields_are(image, {true, 1, 2, 3, 4}));
}

}  // namespace
