// SPDX-License-Identifier: Apache-2.0
// Assignment copies the pointer, not the file.
#include <gtest/gtest.h>

#include "basis/basis_check.h"
#include "basis/fixture_files.h"
#include "support/allocation.h"
#include "vBasisImage.h"

namespace {

using namespace basis_check;
using basis_fixtures::made;
namespace direct = support::direct;

/// Makes an object forget its file, whose release is another's or has happened.
void forget(vBasisImage& image) { image = vBasisImage(); }

TEST(BasisAssignment, SharesTheBufferAndCopiesEveryField) {
    const Bytes file = made("etc1s_array_mips");
    vBasisImage source;
    hold(source, file);
    vBasisImage target;
    target = source;
    EXPECT_EQ(target.getBasisFileRawData(), source.getBasisFileRawData());
    EXPECT_EQ(target.getBasisFileSize(), file.size());
    EXPECT_TRUE(fields_are(target, direct::analyse(file)));
    EXPECT_TRUE(like_direct_calls(target, file, 1, 2, 1));
    forget(target);
}

TEST(BasisAssignment, TakesAndReleasesNoMemory) {
    vBasisImage source;
    hold(source, made("uastc_4x4"));
    vBasisImage target;
    {
        const support::AllocationRecorder recorder;
        target = source;
        EXPECT_EQ(recorder.allocations(), 0u);
        EXPECT_EQ(recorder.releases(), 0u);
    }
    forget(target);
}

TEST(BasisAssignment, GivesTheAssignedObject) {
    vBasisImage source;
    vBasisImage target;
    EXPECT_EQ(&(target = source), &target);
}

TEST(BasisAssignment, DoesNotReleaseWhatTheObjectHeld) {
    vBasisImage source;
    vBasisImage target;
    hold(target, made("uastc_4x4"));
    const unsigned char* const held = target.getBasisFileRawData();
    const auto before = support::live_blocks();
    target = source;
    EXPECT_EQ(support::live_blocks(), before);
    EXPECT_EQ(target.getBasisFileRawData(), nullptr);
    delete[] held;
}

TEST(BasisAssignment, ToItselfChangesNothing) {
    const Bytes file = made("uastc_4x4");
    vBasisImage image;
    hold(image, file);
    const unsigned char* const held = image.getBasisFileRawData();
    const vBasisImage& same = image;
    image = same;
    EXPECT_EQ(image.getBasisFileRawData(), held);
    EXPECT_TRUE(like_direct_calls(image, file, 0, 0, 2));
}

TEST(BasisAssignment, EitherObjectReleasesTheSharedBuffer) {
    for (const bool copy_goes_first : {false, true}) {
        auto* const source = new vBasisImage;
        auto* const copy = new vBasisImage;
        hold(*source, made("uastc_4x4"));
        *copy = *source;
        vBasisImage* const first = copy_goes_first ? copy : source;
        vBasisImage* const second = copy_goes_first ? source : copy;
        const auto before = support::live_blocks();
        delete first;
        EXPECT_EQ(support::live_blocks(), before - 2) << "the object and the file";
        forget(*second);
        delete second;
        EXPECT_EQ(support::live_blocks(), before - 3);
    }
}

}  // namespace
