// SPDX-License-Identifier: Apache-2.0
// One level: creation, copies, assignment, moves and release.
#include <algorithm>
#include <gtest/gtest.h>
#include <type_traits>
#include <utility>

#include "support/allocation.h"
#include "support/dds_check.h"
#include "support/taken.h"
#include "vDDSImage.h"

namespace {

using support::Bytes;
using support::filled_surface;
using support::pixels_of;

char* pixels(const vDDSSurface& surface) { return surface; }

void expect_values(const vDDSSurface& surface, int width, int height, int depth, std::size_t size) {
    EXPECT_EQ(surface.get_width(), width);
    EXPECT_EQ(surface.get_height(), height);
    EXPECT_EQ(surface.get_depth(), depth);
    EXPECT_EQ(surface.get_size(), size);
}

TEST(DdsSurface, StartsEmpty) {
    const vDDSSurface surface;
    expect_values(surface, 0, 0, 0, 0);
    EXPECT_EQ(pixels(surface), nullptr);
}

TEST(DdsSurface, EmptySurfaceTakesNoMemory) {
    const support::AllocationRecorder recorder;
    const vDDSSurface surface;
    EXPECT_EQ(recorder.allocations(), 0u);
}

TEST(DdsSurface, ConstructionTakesOneBufferOfTheGivenSize) {
    const auto taken = support::taken_by([] { vDDSSurface(3, 5, 2, 91); });
    EXPECT_EQ(taken.sizes, std::vector<std::size_t>{91});
    const vDDSSurface surface(3, 5, 2, 91);
    expect_values(surface, 3, 5, 2, 91);
    EXPECT_NE(pixels(surface), nullptr);
}

TEST(DdsSurface, SizeIsIndependentOfTheExtent) {
    const vDDSSurface surface(-7, 0, 1000, 3);
    expect_values(surface, -7, 0, 1000, 3);
}

TEST(DdsSurface, EveryByteOfTheBufferCanBeUsed) {
    const vDDSSurface surface = filled_surface(4, 4, 1, 64, 5);
    EXPECT_EQ(pixels_of(surface), support::random_bytes(64, 5));
}

TEST(DdsSurface, SizeZeroStillOwnsABlock) {
    const support::AllocationRecorder recorder;
    const vDDSSurface surface(0, 0, 0, 0);
    EXPECT_NE(pixels(surface), nullptr);
    EXPECT_EQ(recorder.allocations(), 1u);
}

TEST(DdsSurface, CreateReplacesValuesAndBuffer) {
    vDDSSurface surface(4, 4, 1, 64);
    const auto taken = support::taken_by([&] { surface.create(1, 2, 3, 24); });
    EXPECT_EQ(taken.sizes, std::vector<std::size_t>{24});
    EXPECT_EQ(taken.releases, 1u);
    expect_values(surface, 1, 2, 3, 24);
}

TEST(DdsSurface, CreateWithTheSameSizeReplacesTheBufferToo) {
    vDDSSurface surface(4, 4, 1, 64);
    const auto taken = support::taken_by([&] { surface.create(4, 4, 1, 64); });
    EXPECT_EQ(taken.sizes.size(), 1u);
    EXPECT_EQ(taken.releases, 1u);
}

TEST(DdsSurface, DestructionReleasesTheBuffer) {
    const auto before = support::live_blocks();
    {
        const vDDSSurface surface(4, 4, 1, 64);
        EXPECT_EQ(support::live_blocks(), before + 1);
    }
    EXPECT_EQ(support::live_blocks(), before);
}

TEST(DdsSurface, DestructionThroughTheBaseClassReleasesAWholeTexture) {
    const auto before = support::live_blocks();
    vDDSSurface* surface = new vDDSTexture(support::filled_texture(16, {4, 1}, 1));
    EXPECT_GT(support::live_blocks(), before + 3);
    delete surface;
    EXPECT_EQ(support::live_blocks(), before);
}

TEST(DdsSurface, ClearReleasesThePixelsAndKeepsTheValues) {
    vDDSSurface surface(4, 2, 1, 32);
    const auto taken = support::taken_by([&] { surface.clear(); });
    EXPECT_EQ(taken.releases, 1u);
    EXPECT_EQ(pixels(surface), nullptr);
    expect_values(surface, 4, 2, 1, 32);
}

TEST(DdsSurface, ClearingTwiceReleasesOnce) {
    vDDSSurface surface(4, 2, 1, 32);
    const support::AllocationRecorder recorder;
    surface.clear();
    surface.clear();
    EXPECT_EQ(recorder.releases(), 1u);
}

TEST(DdsSurface, CreateAfterClearGivesAFreshBuffer) {
    vDDSSurface surface(4, 2, 1, 32);
    surface.clear();
    surface.create(2, 2, 1, 16);
    expect_values(surface, 2, 2, 1, 16);
    EXPECT_NE(pixels(surface), nullptr);
}

TEST(DdsSurfaceCopy, HasValuesAndPixelsOfItsOwn) {
    const vDDSSurface source = filled_surface(4, 2, 3, 96, 7);
    const vDDSSurface copy(source);
    expect_values(copy, 4, 2, 3, 96);
    EXPECT_NE(pixels(copy), pixels(source));
    EXPECT_EQ(pixels_of(copy), pixels_of(source));
    pixels(copy)[95] ^= 1;
    EXPECT_EQ(pixels_of(source), support::random_bytes(96, 7));
}

TEST(DdsSurfaceCopy, TakesOneBuffer) {
    const vDDSSurface source(4, 2, 1, 33);
    const auto taken = support::taken_by([&] { const vDDSSurface copy(source); });
    EXPECT_EQ(taken.sizes, std::vector<std::size_t>{33});
}

TEST(DdsSurfaceCopy, OfAnEmptySurfaceIsEmpty) {
    const vDDSSurface source;
    const vDDSSurface copy(source);
    expect_values(copy, 0, 0, 0, 0);
    EXPECT_EQ(pixels(copy), nullptr);
}

TEST(DdsSurfaceCopy, OfAClearedSurfaceForgetsTheExtent) {
    vDDSSurface source(4, 2, 3, 96);
    source.clear();
    const vDDSSurface copy(source);
    expect_values(copy, 0, 0, 0, 0);
    EXPECT_EQ(pixels(copy), nullptr);
    expect_values(source, 4, 2, 3, 96);
}

TEST(DdsSurfaceCopy, OfASurfaceOfNoBytesOwnsABlock) {
    const vDDSSurface source(1, 2, 3, 0);
    const vDDSSurface copy(source);
    expect_values(copy, 1, 2, 3, 0);
    EXPECT_NE(pixels(copy), nullptr);
    EXPECT_NE(pixels(copy), pixels(source));
}

TEST(DdsSurfaceAssignment, ReplacesValuesAndPixels) {
    const vDDSSurface source = filled_surface(4, 2, 3, 96, 8);
    vDDSSurface target = filled_surface(1, 1, 1, 4, 9);
    EXPECT_EQ(&(target = source), &target);
    expect_values(target, 4, 2, 3, 96);
    EXPECT_EQ(pixels_of(target), pixels_of(source));
    EXPECT_NE(pixels(target), pixels(source));
}

TEST(DdsSurfaceAssignment, TakesOneBufferAndReleasesOne) {
    const vDDSSurface source(4, 2, 3, 96);
    vDDSSurface target(1, 1, 1, 4);
    const auto taken = support::taken_by([&] { target = source; });
    EXPECT_EQ(taken.sizes, std::vector<std::size_t>{96});
    EXPECT_EQ(taken.releases, 1u);
}

TEST(DdsSurfaceAssignment, ToItselfDoesNothing) {
    vDDSSurface surface = filled_surface(4, 2, 1, 32, 10);
    const char* before = pixels(surface);
    const vDDSSurface& same = surface;
    const support::AllocationRecorder recorder;
    surface = same;
    EXPECT_EQ(recorder.allocations(), 0u);
    EXPECT_EQ(pixels(surface), before);
    EXPECT_EQ(pixels_of(surface), support::random_bytes(32, 10));
}

TEST(DdsSurfaceAssignment, FromAnEmptySurfaceKeepsTheExtentWithoutPixels) {
    vDDSSurface target(4, 4, 1, 64);
    const vDDSSurface empty;
    target = empty;
    expect_values(target, 4, 4, 1, 64);
    EXPECT_EQ(pixels(target), nullptr);
}

TEST(DdsSurfaceAssignment, FromAnEmptySurfaceReleasesTheOldPixels) {
    vDDSSurface target(4, 4, 1, 64);
    const vDDSSurface empty;
    const auto taken = support::taken_by([&] { target = empty; });
    EXPECT_EQ(taken.releases, 1u);
    EXPECT_EQ(taken.sizes.size(), 0u);
}

TEST(DdsSurfaceAssignment, FromAClearedSurfaceTakesNothingOfItsExtent) {
    vDDSSurface source(9, 9, 9, 9);
    source.clear();
    vDDSSurface target(4, 4, 1, 64);
    target = source;
    expect_values(target, 4, 4, 1, 64);
    EXPECT_EQ(pixels(target), nullptr);
}

TEST(DdsSurfaceAssignment, FromATemporaryCopies) {
    const auto before = support::live_blocks();
    {
        vDDSSurface target(1, 1, 1, 4);
        target = filled_surface(2, 2, 1, 16, 11);
        EXPECT_EQ(pixels_of(target), support::random_bytes(16, 11));
        EXPECT_EQ(support::live_blocks(), before + 1);
    }
    EXPECT_EQ(support::live_blocks(), before);
}

TEST(DdsSurfaceMove, HandsTheBufferOverWithoutCopying) {
    vDDSSurface source = filled_surface(4, 2, 3, 96, 12);
    const char* buffer = pixels(source);
    const support::AllocationRecorder recorder;
    const vDDSSurface target(std::move(source));
    EXPECT_EQ(recorder.allocations(), 0u);
    EXPECT_EQ(pixels(target), buffer);
    expect_values(target, 4, 2, 3, 96);
}

TEST(DdsSurfaceMove, LeavesTheExtentWithoutPixels) {
    vDDSSurface source(4, 2, 3, 96);
    const vDDSSurface target(std::move(source));
    expect_values(source, 4, 2, 3, 96);
    EXPECT_EQ(pixels(source), nullptr);
}

TEST(DdsSurfaceMove, OfAnEmptySurfaceIsEmpty) {
    vDDSSurface source;
    const vDDSSurface target(std::move(source));
    expect_values(target, 0, 0, 0, 0);
    EXPECT_EQ(pixels(target), nullptr);
}

TEST(DdsSurfaceMove, OfAClearedSurfaceKeepsTheExtent) {
    vDDSSurface source(4, 2, 3, 96);
    source.clear();
    const vDDSSurface target(std::move(source));
    expect_values(target, 4, 2, 3, 96);
    EXPECT_EQ(pixels(target), nullptr);
}

TEST(DdsSurfaceMove, SourceCanBeUsedAgain) {
    vDDSSurface source(4, 2, 3, 96);
    const vDDSSurface target(std::move(source));
    source.create(1, 1, 1, 4);
    expect_values(source, 1, 1, 1, 4);
    EXPECT_NE(pixels(source), nullptr);
    EXPECT_NE(pixels(source), pixels(target));
}

TEST(DdsSurfaceMove, GrowingAListOfSurfacesCopiesNoPixels) {
    std::vector<vDDSSurface> list;
    for (std::uint32_t i = 0; i < 3; ++i) list.push_back(filled_surface(1, 1, 1, 1001, i));
    std::vector<const char*> buffers;
    for (const vDDSSurface& surface : list) buffers.push_back(pixels(surface));
    const support::AllocationRecorder recorder;
    list.reserve(list.capacity() + 100);
    EXPECT_EQ(recorder.allocations(), 1u) << "the list's own storage";
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(pixels(list[i]), buffers[i]);
}

TEST(DdsSurfaceType, DestructorIsVirtualAndMovesDoNotThrow) {
    EXPECT_TRUE(std::has_virtual_destructor_v<vDDSSurface>);
    EXPECT_TRUE(std::has_virtual_destructor_v<vDDSTexture>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<vDDSSurface>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<vDDSTexture>);
    EXPECT_FALSE(std::is_polymorphic_v<vDDSImage>);
}

}  // namespace
