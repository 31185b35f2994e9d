// SPDX-License-Identifier: Apache-2.0
// Transcoding one level of one slice: arguments, sizes, outputs.
#include <gtest/gtest.h>
#include <vector>

#include "basis/basis_check.h"
#include "basis/basis_private.h"
#include "basis/fixture_files.h"
#include "support/allocation.h"
#include "support/basis_file.h"
#include "support/taken.h"
#include "vBasisImage.h"

namespace {

using namespace basis_check;
using basis_fixtures::made;
namespace basis = support::basis;
namespace direct = support::direct;

constexpr int kBlocksOf30x10 = 8 * 3;

TEST(BasisGetImage, Of30x10PixelsInBc1Is192Bytes) {
    vBasisImage image;
    hold(image, made("etc1s_30x10"));
    EXPECT_EQ(image.getWidth(), 32);
    EXPECT_EQ(image.getHeight(), 12);
    const Got got = get_image(image, 0, 0, TOZ::eUsageFormatBC1);
    EXPECT_TRUE(got.result);
    EXPECT_EQ(got.size, 192u);
}

TEST(BasisGetImage, TakesTheBytesPerBlockFromTheUsage) {
    const struct {
        int usage;
        unsigned int bytes;
    } cases[] = {{1, 8},  {2, 16}, {3, 16}, {4, 16},  {5, 8},           {0, 16},
                 {6, 16}, {7, 16}, {9, 16}, {-1, 16}, {2147483647, 16}, {-2147483647 - 1, 16}};
    for (const char* const name : {"etc1s_30x10", "etc1s_alpha_30x10", "uastc_30x10", "uastc_alpha_30x10"}) {
        vBasisImage image;
        hold(image, made(name));
        for (const auto& test : cases) {
            const Got got = get_image(image, 0, 0, test.usage);
            EXPECT_TRUE(got.result);
            EXPECT_EQ(got.size, test.bytes * kBlocksOf30x10) << name << ", usage " << test.usage;
        }
    }
}

TEST(BasisGetImage, GivesBc3ForEveryUsageThatIsNoOther) {
    for (const char* const name : {"etc1s_alpha_30x10", "uastc_alpha_30x10"}) {
        vBasisImage image;
        hold(image, made(name));
        const Bytes bc3 = get_image(image, 0, 0, TOZ::eUsageFormatBC3).blocks;
        ASSERT_EQ(bc3.size(), 16u * kBlocksOf30x10);
        for (const int usage : {3, 0, 6, 9, -1, 2147483647})
            EXPECT_EQ(get_image(image, 0, 0, usage).blocks, bc3) << name << ", usage " << usage;
        EXPECT_NE(get_image(image, 0, 0, TOZ::eUsageFormatBC5).blocks, bc3);
    }
}

// A BC4 block of red is the first half of the BC5 block of red and green.
TEST(BasisGetImage, GivesTwoChannelsForUsage4AndOneForUsage5) {
    vBasisImage image;
    hold(image, made("uastc_alpha_30x10"));
    const Bytes two = get_image(image, 0, 0, 4).blocks;
    const Bytes one = get_image(image, 0, 0, 5).blocks;
    ASSERT_EQ(two.size(), 2 * one.size());
    for (std::size_t i = 0; i < one.size(); ++i) ASSERT_EQ(one[i], two[i / 8 * 16 + i % 8]) << "byte " << i;
}

TEST(BasisGetImage, TakesTheLevelFirstThenTheSlice) {
    const Bytes file = made("etc1s_array_mips");
    vBasisImage image;
    hold(image, file);
    const Got last = get_image(image, 4, 2, TOZ::eUsageFormatBC1);
    EXPECT_TRUE(last.result);
    EXPECT_EQ(last.size, 8u) << "the level of one pixel";
    EXPECT_TRUE(refused(get_image(image, 2, 4, TOZ::eUsageFormatBC1))) << "there is no slice 4";
    const Got large = get_image(image, 0, 2, TOZ::eUsageFormatBC1);
    const Got small = get_image(image, 2, 0, TOZ::eUsageFormatBC1);
    EXPECT_EQ(large.size, 8u * 8 * 3);
    EXPECT_EQ(small.size, 8u * 2 * 1);
}

TEST(BasisGetImage, TakesEachSlicesOwnExtents) {
    vBasisImage image;
    hold(image, made("uastc_alpha_different_sizes"));  // 40 x 24, 20 x 12, 10 x 6
    EXPECT_EQ(get_image(image, 0, 0, TOZ::eUsageFormatBC1).size, 8u * 10 * 6);
    EXPECT_EQ(get_image(image, 0, 1, TOZ::eUsageFormatBC1).size, 8u * 5 * 3);
    EXPECT_EQ(get_image(image, 0, 2, TOZ::eUsageFormatBC1).size, 8u * 3 * 2);
    EXPECT_TRUE(get_image(image, 5, 0, TOZ::eUsageFormatBC1).result);
    EXPECT_TRUE(refused(get_image(image, 5, 1, TOZ::eUsageFormatBC1)));
    EXPECT_NE(get_image(image, 1, 0, TOZ::eUsageFormatBC1).blocks,
              get_image(image, 0, 1, TOZ::eUsageFormatBC1).blocks);
}

TEST(BasisGetImage, BeyondTheLastLevelLeavesTheOutputsAlone) {
    for (const char* const name : {"etc1s_mips", "etc1s_alpha_mips", "uastc_mips", "etc1s_30x10"}) {
        vBasisImage image;
        hold(image, made(name));
        const auto levels = static_cast<unsigned int>(image.getNumMipLevels());
        EXPECT_TRUE(get_image(image, levels - 1, 0, 1).result) << name;
        for (const unsigned int level : {levels, levels + 1, 255u, 256u, 0x7FFFFFFFu, 0xFFFFFFFFu})
            EXPECT_TRUE(refused(get_image(image, level, 0, 1))) << name << ", level " << level;
    }
}

TEST(BasisGetImage, BeyondTheLastSliceLeavesTheOutputsAlone) {
    for (const char* const name : {"etc1s_array", "etc1s_alpha_array_mips", "uastc_alpha_array"}) {
        vBasisImage image;
        hold(image, made(name));
        EXPECT_TRUE(get_image(image, 0, 2, 1).result) << name;
        for (const unsigned int slice : {3u, 4u, 0xFFFFFFu, 0x1000000u, 0x7FFFFFFFu, 0xFFFFFFFFu})
            EXPECT_TRUE(refused(get_image(image, 0, slice, 1))) << name << ", slice " << slice;
    }
}

TEST(BasisGetImage, TakesTheTranscoderAndABlockOfTheImagesSizeAndKeepsTheLatter) {
    vBasisImage image;
    hold(image, made("etc1s_alpha_30x10"));
    unsigned char* out = nullptr;
    unsigned int size = 0;
    const support::Taken taken =
        support::taken_by([&] { image.getImage(0, 0, out, size, TOZ::eUsageFormatBC3); });
    EXPECT_EQ(taken.sizes, (std::vector<std::size_t>{direct::transcoder_size(), 384}));
    EXPECT_EQ(taken.releases, 1u);
    EXPECT_EQ(size, 384u);
    delete[] out;
}

// Of a level that is there but has no data: null and the size, and the block is no one's.
TEST(BasisGetImage, OfDamagedDataGivesTheSizeWithoutAnImageAndKeepsTheBlock) {
    vBasisImage image;
    hold(image, basis::with_slice(made("uastc_30x10"), 0, basis::slice::kDataSize, 16));
    unsigned char marker = 0;
    unsigned char* out = &marker;
    unsigned int size = 1;
    bool result = true;
    std::vector<support::Block> left;
    {
        const support::AllocationRecorder recorder;
        result = image.getImage(0, 0, out, size, TOZ::eUsageFormatBC1);
        left = recorder.left();
    }
    EXPECT_FALSE(result);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(size, 192u);
    ASSERT_EQ(left.size(), 1u);
    EXPECT_EQ(left[0].size, 192u);
    delete[] static_cast<unsigned char*>(left[0].address);
}

TEST(BasisGetImage, DoesNotReadTheFields) {
    const Bytes file = made("etc1s_array_mips");
    vBasisImage image;
    hold(image, file);
    image.*basis_private::width() = -1;
    image.*basis_private::height() = 0;
    image.*basis_private::num_slices() = 0;
    image.*basis_private::num_mip_levels() = 0;
    EXPECT_TRUE(like_direct_calls(image, file, 3, 2, 1));
    EXPECT_TRUE(get_image(image, 3, 2, 1).result);
    image.*basis_private::num_slices() = 100;
    image.*basis_private::num_mip_levels() = 100;
    EXPECT_TRUE(refused(get_image(image, 50, 50, 1)));
}

TEST(BasisGetImage, WritesNoField) {
    for (const Bytes& file : {made("etc1s_array_mips"), made("etc1s_cube_map"),
                              basis::with_slice(made("uastc_30x10"), 0, basis::slice::kDataSize, 16)}) {
        vBasisImage image;
        hold(image, file);
        const unsigned char* const data = image.getBasisFileRawData();
        image.*basis_private::width() = 1;
        image.*basis_private::height() = 2;
        image.*basis_private::num_slices() = 3;
        image.*basis_private::num_mip_levels() = 4;
        get_image(image, 0, 0, 2);
        get_image(image, 7, 7, 2);
        EXPECT_TRUE(fields_are(image, {true, 1, 2, 3, 4}));
        EXPECT_EQ(image.getBasisFileRawData(), data);
        EXPECT_EQ(Bytes(data, data + image.getBasisFileSize()), file);
    }
}

TEST(BasisGetImage, GivesTheSameEachTime) {
    vBasisImage image;
    hold(image, made("etc1s_alpha_64x64"));
    const Bytes first = get_image(image, 0, 0, 2).blocks;
    get_image(image, 0, 0, 5);
    EXPECT_EQ(get_image(image, 0, 0, 2).blocks, first);
}

}  // namespace
