// SPDX-License-Identifier: Apache-2.0
// Adopting a file in memory.
#include <gtest/gtest.h>

#include "basis/basis_check.h"
#include "basis/fixture_files.h"
#include "support/allocation.h"
#include "support/basis_file.h"
#include "vBasisImage.h"

namespace {

using namespace basis_check;
using basis_fixtures::made;
namespace basis = support::basis;
namespace direct = support::direct;

TEST(BasisRawData, AdoptsTheBufferItself) {
    const Bytes file = made("etc1s_alpha_mips");
    unsigned char* const data = new_copy(file);
    vBasisImage image;
    image.setBasisFileRawData(data, static_cast<unsigned int>(file.size()));
    EXPECT_EQ(image.getBasisFileRawData(), data);
    EXPECT_EQ(image.getBasisFileSize(), file.size());
    EXPECT_TRUE(fields_are(image, {true, 40, 64, 1, 7}));
}

TEST(BasisRawData, ReleasesTheBufferAtItsEnd) {
    const Bytes file = made("etc1s_alpha_mips");
    const auto before = support::live_blocks();
    {
        vBasisImage image;
        hold(image, file);
        EXPECT_EQ(support::live_blocks(), before + 1);
    }
    EXPECT_EQ(support::live_blocks(), before);
}

TEST(BasisRawData, ReleasesTheEarlierBuffer) {
    vBasisImage image;
    hold(image, made("uastc_mips"));
    const Bytes file = made("etc1s_5x3");
    unsigned char* const data = new_copy(file);
    const auto before = support::live_blocks();
    image.setBasisFileRawData(data, static_cast<unsigned int>(file.size()));
    EXPECT_EQ(support::live_blocks(), before - 1);
    EXPECT_TRUE(fields_are(image, direct::analyse(file)));
}

TEST(BasisRawData, ReleasesWhatLoadHasRead) {
    vBasisImage image;
    ASSERT_TRUE(image.load(basis_fixtures::made_path("uastc_mips.basis").c_str()));
    const auto before = support::live_blocks();
    image.setBasisFileRawData(nullptr, 0);
    EXPECT_EQ(support::live_blocks(), before - 1);
    EXPECT_EQ(image.getBasisFileRawData(), nullptr);
}

// With a size of 0 nobody reads the buffer, which is gone by then.
TEST(BasisRawData, ReleasesTheHeldBufferFirstEvenIfItIsTheNewOne) {
    vBasisImage image;
    hold(image, made("uastc_4x4"));
    const unsigned char* const data = image.getBasisFileRawData();
    const auto before = support::live_blocks();
    image.setBasisFileRawData(data, 0);
    EXPECT_EQ(support::live_blocks(), before - 1);
    EXPECT_EQ(image.getBasisFileRawData(), data);
    image = vBasisImage();
}

TEST(BasisRawData, OfNoBasisFileIsHeldAndLeavesTheExtents) {
    vBasisImage image;
    const Bytes good = made("uastc_array_mips");
    hold(image, good);
    const Bytes other = support::random_bytes(500, 8);
    hold(image, other);
    EXPECT_EQ(image.getBasisFileSize(), 500u);
    EXPECT_TRUE(fields_are(image, direct::analyse(good)));
    EXPECT_FALSE(image.isValidHeader());
    EXPECT_TRUE(refused(get_image(image, 0, 0, 2)));
}

TEST(BasisRawData, OfAnUnsupportedTypeIsHeldAndLeavesTheExtents) {
    vBasisImage image;
    hold(image, made("etc1s_volume"));
    EXPECT_TRUE(fields_are(image, {}));
    EXPECT_TRUE(image.isValidHeader());
}

TEST(BasisRawData, WithoutItsFirstImageTellsTheNumberOfSlicesAlone) {
    vBasisImage image;
    hold(image, made("uastc_30x10"));
    hold(image, basis::with_slice(basis::with(made("etc1s_4x4"), basis::header::kTotalImages, 3), 0,
                                  basis::slice::kLevel, 1));
    EXPECT_TRUE(fields_are(image, {false, 32, 12, 3, 1}));
}

TEST(BasisRawData, NullIsAnEmptyObject) {
    vBasisImage image;
    image.setBasisFileRawData(nullptr, 0);
    EXPECT_FALSE(image.isValidHeader());
    EXPECT_TRUE(refused(get_image(image, 0, 0, 2)));
}

TEST(BasisRawData, NullOfSomeSizeIsNoFile) {
    vBasisImage image;
    image.setBasisFileRawData(nullptr, 1000);
    EXPECT_EQ(image.getBasisFileSize(), 1000u);
    EXPECT_FALSE(image.isValidHeader());
    EXPECT_TRUE(refused(get_image(image, 0, 0, 2)));
    EXPECT_TRUE(fields_are(image, {}));
}

// The size is kept in a signed field and given out as what it was.
TEST(BasisRawData, ABufferOver2GiBKeepsItsSizeAndItsFile) {
    constexpr unsigned int kSize = 0x80000000u + 100;
    const Bytes file = made("uastc_4x4");
    auto* const data = new unsigned char[kSize];
    for (std::size_t i = 0; i < file.size(); ++i) data[i] = file[i];
    vBasisImage image;
    image.setBasisFileRawData(data, kSize);
    EXPECT_EQ(image.getBasisFileSize(), kSize);
    EXPECT_TRUE(fields_are(image, {true, 4, 4, 1, 1}));
    EXPECT_TRUE(image.isValidHeader());
    EXPECT_TRUE(like_direct_calls(image, file, 0, 0, 2));
}

}  // namespace
