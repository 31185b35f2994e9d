// SPDX-License-Identifier: Apache-2.0
// One face: a base level and the list of its mip levels.
#include <gtest/gtest.h>
#include <type_traits>
#include <utility>

#include "support/allocation.h"
#include "support/dds_check.h"
#include "support/dds_private.h"
#include "support/taken.h"
#include "vDDSImage.h"

namespace {

using support::filled_texture;
using support::pixels_of;

char* pixels(const vDDSSurface& surface) { return surface; }

std::vector<vDDSSurface>& mipmaps(vDDSTexture& texture) { return texture.*dds_private::mipmaps(); }

std::vector<const char*> buffers_of(const vDDSTexture& texture) {
    std::vector<const char*> buffers = {pixels(texture)};
    for (int i = 0; i < texture.get_num_mipmaps(); ++i) buffers.push_back(pixels(texture.get_mipmap(i)));
    return buffers;
}

std::vector<support::Bytes> levels_of(const vDDSTexture& texture) {
    std::vector<support::Bytes> levels = {pixels_of(texture)};
    for (int i = 0; i < texture.get_num_mipmaps(); ++i) levels.push_back(pixels_of(texture.get_mipmap(i)));
    return levels;
}

TEST(DdsTexture, IsASurface) { EXPECT_TRUE((std::is_base_of_v<vDDSSurface, vDDSTexture>)); }

TEST(DdsTexture, StartsEmpty) {
    const vDDSTexture texture;
    EXPECT_EQ(texture.get_width(), 0);
    EXPECT_EQ(texture.get_size(), 0u);
    EXPECT_EQ(pixels(texture), nullptr);
    EXPECT_EQ(texture.get_num_mipmaps(), 0);
}

TEST(DdsTexture, BaseLevelAloneHasNoMipmaps) {
    const vDDSTexture texture(4, 3, 2, 96);
    EXPECT_EQ(texture.get_width(), 4);
    EXPECT_EQ(texture.get_height(), 3);
    EXPECT_EQ(texture.get_depth(), 2);
    EXPECT_EQ(texture.get_size(), 96u);
    EXPECT_NE(pixels(texture), nullptr);
    EXPECT_EQ(texture.get_num_mipmaps(), 0);
}

TEST(DdsTexture, MipmapsAreCountedFromTheLevelAfterTheBase) {
    vDDSTexture texture = filled_texture(64, {16, 4, 1}, 1);
    EXPECT_EQ(texture.get_num_mipmaps(), 3);
    EXPECT_EQ(texture.get_mipmap(0).get_size(), 16u);
    EXPECT_EQ(texture.get_mipmap(2).get_size(), 1u);
    const vDDSTexture& unchanging = texture;
    EXPECT_EQ(&unchanging.get_mipmap(1), &texture.get_mipmap(1));
}

TEST(DdsTexture, ClearReleasesTheBaseLevelAlone) {
    vDDSTexture texture = filled_texture(64, {16}, 1);
    texture.clear();
    EXPECT_EQ(pixels(texture), nullptr);
    EXPECT_EQ(texture.get_num_mipmaps(), 1);
    EXPECT_NE(pixels(texture.get_mipmap(0)), nullptr);
}

TEST(DdsTexture, DestructionReleasesEveryLevel) {
    const auto before = support::live_blocks();
    { const vDDSTexture texture = filled_texture(64, {16, 4, 1}, 1); }
    EXPECT_EQ(support::live_blocks(), before);
}

TEST(DdsTextureCopy, HasIndependentLevels) {
    const vDDSTexture source = filled_texture(64, {16, 4, 1}, 2);
    const auto levels = levels_of(source);
    const vDDSTexture copy(source);
    EXPECT_EQ(levels_of(copy), levels);
    for (int i = -1; i < 3; ++i) {
        const vDDSSurface& level = i < 0 ? copy : copy.get_mipmap(i);
        pixels(level)[0] ^= 0x55;
    }
    EXPECT_EQ(levels_of(source), levels);
    EXPECT_NE(levels_of(copy), levels);
}

TEST(DdsTextureCopy, TakesOneBufferALevel) {
    const vDDSTexture source = filled_texture(6400, {1600, 401}, 2);
    const auto taken = support::taken_by([&] { const vDDSTexture copy(source); });
    std::vector<std::size_t> sizes = taken.sizes;
    for (std::size_t size : {6400u, 1600u, 401u}) EXPECT_EQ(std::erase(sizes, size), 1u) << size;
    EXPECT_LE(sizes.size(), 1u) << "beside the pixels only the list's storage";
}

TEST(DdsTextureCopy, OfAMipmapWithoutPixelsIsAllZero) {
    vDDSTexture source = filled_texture(64, {16, 4}, 3);
    source.get_mipmap(0).clear();
    const vDDSTexture copy(source);
    ASSERT_EQ(copy.get_num_mipmaps(), 2);
    EXPECT_EQ(copy.get_mipmap(0).get_width(), 0);
    EXPECT_EQ(copy.get_mipmap(0).get_size(), 0u);
    EXPECT_EQ(pixels(copy.get_mipmap(0)), nullptr);
    EXPECT_EQ(pixels_of(copy.get_mipmap(1)), pixels_of(source.get_mipmap(1)));
}

TEST(DdsTextureCopy, OfABaseLevelWithoutPixelsKeepsTheMipmaps) {
    vDDSTexture source = filled_texture(64, {16}, 4);
    source.clear();
    const vDDSTexture copy(source);
    EXPECT_EQ(copy.get_width(), 0);
    EXPECT_EQ(copy.get_size(), 0u);
    EXPECT_EQ(pixels(copy), nullptr);
    ASSERT_EQ(copy.get_num_mipmaps(), 1);
    EXPECT_EQ(pixels_of(copy.get_mipmap(0)), pixels_of(source.get_mipmap(0)));
}

TEST(DdsTextureAssignment, ReplacesEveryLevel) {
    const vDDSTexture source = filled_texture(64, {16, 4, 1}, 5);
    vDDSTexture target = filled_texture(100, {25}, 6);
    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(levels_of(target), levels_of(source));
    EXPECT_EQ(target.get_width(), 64);
    pixels(target.get_mipmap(2))[0] ^= 1;
    EXPECT_EQ(pixels_of(source.get_mipmap(2)), support::random_bytes(1, 8));
}

TEST(DdsTextureAssignment, ToFewerLevelsDropsTheOthers) {
    const vDDSTexture source = filled_texture(64, {16}, 5);
    vDDSTexture target = filled_texture(100, {25, 6, 1}, 6);
    target = source;
    EXPECT_EQ(levels_of(target), levels_of(source));
}

TEST(DdsTextureAssignment, ReusesTheListsStorage) {
    const vDDSTexture source = filled_texture(6400, {1600, 401}, 5);
    vDDSTexture target = filled_texture(100, {25, 6, 1}, 6);
    const vDDSSurface* storage = mipmaps(target).data();
    const auto taken = support::taken_by([&] { target = source; });
    EXPECT_EQ(taken.sizes, (std::vector<std::size_t>{6400, 1600, 401})) << "base first, then in order";
    EXPECT_EQ(taken.releases, 4u);
    EXPECT_EQ(mipmaps(target).data(), storage);
}

TEST(DdsTextureAssignment, ToItselfDoesNothing) {
    vDDSTexture texture = filled_texture(64, {16, 4}, 7);
    const auto buffers = buffers_of(texture);
    const vDDSTexture& same = texture;
    const support::AllocationRecorder recorder;
    texture = same;
    EXPECT_EQ(recorder.allocations(), 0u);
    EXPECT_EQ(buffers_of(texture), buffers);
}

TEST(DdsTextureAssignment, FromAnEmptyTextureKeepsTheBaseExtentAndDropsTheMipmaps) {
    vDDSTexture target(4, 4, 1, 64);
    mipmaps(target).push_back(vDDSSurface(2, 2, 1, 16));
    const vDDSTexture empty;
    target = empty;
    EXPECT_EQ(target.get_width(), 4);
    EXPECT_EQ(target.get_height(), 4);
    EXPECT_EQ(target.get_depth(), 1);
    EXPECT_EQ(target.get_size(), 64u);
    EXPECT_EQ(pixels(target), nullptr);
    EXPECT_EQ(target.get_num_mipmaps(), 0);
}

// The mip levels are copied, not assigned: nothing of the levels before shows through.
TEST(DdsTextureAssignment, OfAMipmapWithoutPixelsIsAllZero) {
    vDDSTexture source = filled_texture(64, {16}, 8);
    source.get_mipmap(0).clear();
    vDDSTexture target = filled_texture(100, {25}, 9);
    target = source;
    ASSERT_EQ(target.get_num_mipmaps(), 1);
    EXPECT_EQ(target.get_mipmap(0).get_width(), 0);
    EXPECT_EQ(target.get_mipmap(0).get_size(), 0u);
    EXPECT_EQ(pixels(target.get_mipmap(0)), nullptr);
}

TEST(DdsTextureAssignment, FromATemporaryCopies) {
    vDDSTexture target;
    target = filled_texture(64, {16}, 10);
    EXPECT_EQ(pixels_of(target), support::random_bytes(64, 10));
    ASSERT_EQ(target.get_num_mipmaps(), 1);
    EXPECT_EQ(pixels_of(target.get_mipmap(0)), support::random_bytes(16, 11));
}

TEST(DdsTextureMove, HandsEveryBufferOverWithoutAllocating) {
    vDDSTexture source = filled_texture(64, {16, 4}, 11);
    const auto buffers = buffers_of(source);
    const support::AllocationRecorder recorder;
    const vDDSTexture target(std::move(source));
    EXPECT_EQ(recorder.allocations(), 0u);
    EXPECT_EQ(buffers_of(target), buffers);
    EXPECT_EQ(target.get_width(), 64);
}

TEST(DdsTextureMove, LeavesTheBaseExtentWithoutPixelsAndNoMipmaps) {
    vDDSTexture source = filled_texture(64, {16, 4}, 12);
    const vDDSTexture target(std::move(source));
    EXPECT_EQ(source.get_width(), 64);
    EXPECT_EQ(source.get_size(), 64u);
    EXPECT_EQ(pixels(source), nullptr);
    EXPECT_EQ(source.get_num_mipmaps(), 0);
}

TEST(DdsTextureMove, GrowingAListOfTexturesCopiesNoPixels) {
    std::vector<vDDSTexture> list;
    std::vector<std::vector<const char*>> buffers;
    for (std::uint32_t i = 0; i < 6; ++i) {
        list.push_back(filled_texture(64, {16, 4}, i));
        buffers.push_back(buffers_of(list.back()));
    }
    const support::AllocationRecorder recorder;
    list.reserve(list.capacity() + 1);
    EXPECT_EQ(recorder.allocations(), 1u) << "the list's own storage";
    for (std::size_t i = 0; i < 6; ++i) EXPECT_EQ(buffers_of(list[i]), buffers[i]);
}

TEST(DdsTextureMove, SourceCanBeUsedAgain) {
    vDDSTexture source = filled_texture(64, {16, 4}, 13);
    const vDDSTexture target(std::move(source));
    source = target;
    EXPECT_EQ(levels_of(source), levels_of(target));
}

}  // namespace
