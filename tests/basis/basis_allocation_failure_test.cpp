// SPDX-License-Identifier: Apache-2.0
// Memory runs out at each allocation in turn: std::bad_alloc comes out, and a transcoder that the call had
// made stays behind. The tests release what does.
#include <cstddef>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <new>
#include <string>
#include <vector>

#include "basis/basis_check.h"
#include "basis/basis_private.h"
#include "basis/fixture_files.h"
#include "support/allocation.h"
#include "vBasisImage.h"

namespace {

using namespace basis_check;
using basis_fixtures::made;
using basis_fixtures::made_path;
namespace direct = support::direct;

struct Outcome {
    bool thrown = false;
    std::vector<support::Block> left;  // behind by the call
};

/// Runs the action with allocation `index` failing.
template <class Action>
Outcome fail(std::size_t index, Action action) {
    Outcome outcome;
    const support::AllocationRecorder recorder;
    {
        const support::FailAllocation failure(index);
        try {
            action();
        } catch (const std::bad_alloc&) {
            outcome.thrown = true;
        }
    }
    outcome.left = recorder.left();
    return outcome;
}

/// Whether a transcoder alone has been left behind, which it destroys.
bool left_a_transcoder(const Outcome& outcome) {
    if (outcome.left.size() != 1 || outcome.left[0].size != direct::transcoder_size()) return false;
    direct::destroy_transcoder(outcome.left[0].address);
    return true;
}

TEST(BasisAllocationFailure, OfTheFileBufferLeavesTheObjectAsItWas) {
    const std::string path = made_path("etc1s_alpha_30x10.basis");
    vBasisImage image;
    const Bytes file = made("uastc_array_mips");
    hold(image, file);
    const unsigned char* const data = image.getBasisFileRawData();
    const Outcome outcome = fail(0, [&] { image.load(path.c_str()); });
    EXPECT_TRUE(outcome.thrown);
    EXPECT_TRUE(outcome.left.empty());
    EXPECT_EQ(image.getBasisFileRawData(), data);
    EXPECT_EQ(image.getBasisFileSize(), file.size());
    EXPECT_TRUE(fields_are(image, direct::analyse(file)));
}

#if defined(__linux__)
std::ptrdiff_t open_files() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                         std::filesystem::directory_iterator());
}

TEST(BasisAllocationFailure, OfTheFileBufferLeavesNoFileOpen) {
    const std::string path = made_path("etc1s_alpha_30x10.basis");
    vBasisImage image;
    const std::ptrdiff_t before = open_files();
    EXPECT_TRUE(fail(0, [&] { image.load(path.c_str()); }).thrown);
    EXPECT_EQ(open_files(), before);
}
#endif

TEST(BasisAllocationFailure, OfTheTranscoderWhileLoadingLeavesTheFileHeldAndTheExtents) {
    const std::string path = made_path("etc1s_alpha_30x10.basis");
    const Bytes file = made("etc1s_alpha_30x10");
    vBasisImage image;
    hold(image, made("uastc_array_mips"));
    const unsigned char* const earlier = image.getBasisFileRawData();
    const Outcome outcome = fail(1, [&] { image.load(path.c_str()); });
    EXPECT_TRUE(outcome.thrown);
    ASSERT_EQ(outcome.left.size(), 1u);
    EXPECT_EQ(outcome.left[0].address, image.getBasisFileRawData());
    EXPECT_EQ(Bytes(image.getBasisFileRawData(), image.getBasisFileRawData() + image.getBasisFileSize()),
              file);
    EXPECT_TRUE(fields_are(image, direct::analyse(made("uastc_array_mips"))));
    EXPECT_TRUE((image.*basis_private::analysis())());
    EXPECT_TRUE(fields_are(image, direct::analyse(file)));
    delete[] earlier;
}

TEST(BasisAllocationFailure, OfNothingWhileLoadingNeedsTwoBlocks) {
    const std::string path = made_path("etc1s_alpha_30x10.basis");
    vBasisImage image;
    EXPECT_FALSE(fail(2, [&] { image.load(path.c_str()); }).thrown);
    EXPECT_TRUE(fields_are(image, direct::analyse(made("etc1s_alpha_30x10"))));
}

TEST(BasisAllocationFailure, OfTheTranscoderWhileAdoptingLeavesTheNewFileHeldAndTheExtents) {
    const Bytes file = made("etc1s_alpha_30x10");
    vBasisImage image;
    hold(image, made("uastc_array_mips"));
    unsigned char* const data = new_copy(file);
    const auto before = support::live_blocks();
    const auto size = static_cast<unsigned int>(file.size());
    const Outcome outcome = fail(0, [&] { image.setBasisFileRawData(data, size); });
    EXPECT_TRUE(outcome.thrown);
    EXPECT_TRUE(outcome.left.empty());
    EXPECT_EQ(support::live_blocks(), before - 1) << "the earlier file is gone";
    EXPECT_EQ(image.getBasisFileRawData(), data);
    EXPECT_EQ(image.getBasisFileSize(), file.size());
    EXPECT_TRUE(fields_are(image, direct::analyse(made("uastc_array_mips"))));
    EXPECT_TRUE(like_direct_calls(image, file, 0, 0, 2));
}

TEST(BasisAllocationFailure, OfNothingWhileAdoptingNeedsOneBlock) {
    const Bytes file = made("etc1s_alpha_30x10");
    vBasisImage image;
    unsigned char* const data = new_copy(file);
    const auto size = static_cast<unsigned int>(file.size());
    EXPECT_FALSE(fail(1, [&] { image.setBasisFileRawData(data, size); }).thrown);
    EXPECT_TRUE(fields_are(image, direct::analyse(file)));
}

TEST(BasisAllocationFailure, OfTheTranscoderWhileTheHeaderIsValidated) {
    for (const char* const name : {"etc1s_alpha_30x10", "uastc_30x10"}) {
        vBasisImage image;
        hold(image, made(name));
        const Outcome outcome = fail(0, [&] { image.isValidHeader(); });
        EXPECT_TRUE(outcome.thrown);
        EXPECT_TRUE(outcome.left.empty());
        EXPECT_FALSE(fail(1, [&] { EXPECT_TRUE(image.isValidHeader()); }).thrown);
    }
}

TEST(BasisAllocationFailure, OfTheTranscoderWhileAnImageIsTranscodedLeavesTheOutputsAlone) {
    vBasisImage image;
    hold(image, made("etc1s_alpha_30x10"));
    unsigned char marker = 0;
    unsigned char* out = &marker;
    unsigned int size = 7;
    const Outcome outcome = fail(0, [&] { image.getImage(0, 0, out, size, TOZ::eUsageFormatBC3); });
    EXPECT_TRUE(outcome.thrown);
    EXPECT_TRUE(outcome.left.empty());
    EXPECT_EQ(out, &marker);
    EXPECT_EQ(size, 7u);
}

TEST(BasisAllocationFailure, OfTheImageLeavesTheOutputsAloneAndTheTranscoderBehind) {
    for (const char* const name : {"etc1s_alpha_30x10", "uastc_30x10"}) {
        const Bytes file = made(name);
        vBasisImage image;
        hold(image, file);
        unsigned char marker = 0;
        unsigned char* out = &marker;
        unsigned int size = 7;
        const Outcome outcome = fail(1, [&] { image.getImage(0, 0, out, size, TOZ::eUsageFormatBC3); });
        EXPECT_TRUE(outcome.thrown);
        EXPECT_TRUE(left_a_transcoder(outcome));
        EXPECT_EQ(out, &marker);
        EXPECT_EQ(size, 7u);
        EXPECT_TRUE(fields_are(image, direct::analyse(file)));
        EXPECT_TRUE(like_direct_calls(image, file, 0, 0, 2));
    }
}

TEST(BasisAllocationFailure, OfNothingWhileAnImageIsTranscodedNeedsTwoBlocks) {
    vBasisImage image;
    hold(image, made("etc1s_alpha_30x10"));
    unsigned char* out = nullptr;
    unsigned int size = 0;
    EXPECT_FALSE(fail(2, [&] { image.getImage(0, 0, out, size, TOZ::eUsageFormatBC3); }).thrown);
    EXPECT_EQ(size, 384u);
    delete[] out;
}

TEST(BasisAllocationFailure, ARefusedImageNeedsTheTranscoderAlone) {
    vBasisImage image;
    hold(image, made("etc1s_alpha_30x10"));
    unsigned char* out = nullptr;
    unsigned int size = 0;
    const Outcome outcome = fail(1, [&] { image.getImage(1, 0, out, size, TOZ::eUsageFormatBC3); });
    EXPECT_FALSE(outcome.thrown);
    EXPECT_TRUE(outcome.left.empty());
}

}  // namespace
