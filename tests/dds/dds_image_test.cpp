// SPDX-License-Identifier: Apache-2.0
// The whole image as a value: its fields, its textures, copies, assignment, moves and clear.
#include <gtest/gtest.h>
#include <type_traits>
#include <utility>

#include "support/allocation.h"
#include "support/dds_check.h"
#include "support/dds_private.h"
#include "support/taken.h"
#include "vDDSImage.h"

namespace {

using namespace support;

char* pixels(const vDDSSurface& surface) { return surface; }

std::vector<vDDSTexture>& textures(vDDSImage& image) { return image.*dds_private::textures(); }

FileHeader cube_header() {
    return plain_header(kRgbWithAlpha, 32)
        .sized(8, 8)
        .with_mips(3)
        .with_depth(1)
        .with_caps2(kCubeMap | kVolume);
}

/// A valid image with every flag set that goes together, and what it holds.
vDDSImage cube_image() { return loaded(complete_file(cube_header())); }
plain::Image cube_model() { return plain::load(complete_file(cube_header()), false, false); }

std::vector<const char*> buffers_of(const vDDSImage& image, int faces) {
    std::vector<const char*> buffers;
    for (int face = 0; face < faces; ++face) {
        buffers.push_back(pixels(image[face]));
        for (int i = 0; i < image[face].get_num_mipmaps(); ++i)
            buffers.push_back(pixels(image[face].get_mipmap(i)));
    }
    return buffers;
}

TEST(DdsImage, StartsCleared) {
    const vDDSImage image;
    EXPECT_TRUE(cleared(image));
    EXPECT_EQ(image.get_format(), TOZ::SUPPORTED_FORMAT::RGBA8);
    EXPECT_EQ(image.get_components(), 0);
    EXPECT_EQ(image.*dds_private::bits_per_component(), 8);
    EXPECT_FALSE(image.is_compressed());
    EXPECT_FALSE(image.is_cubemap());
    EXPECT_FALSE(image.is_volume());
    EXPECT_FALSE(image.is_valid());
}

TEST(DdsImage, ConstructionTakesNoMemory) {
    const AllocationRecorder recorder;
    const vDDSImage image;
    EXPECT_EQ(recorder.allocations(), 0u);
}

TEST(DdsImage, FormatNumbersAreFixed) {
    using namespace TOZ::SUPPORTED_FORMAT;
    const Type in_order[] = {LUMINANCE8, RGB8, RGBA8, BGRA8, RGBA16F, R32F, RGB32F,    RGBA32F,  DXT1,
                             DXT3,       DXT5, BC4U,  BC4S,  BC5U,    BC5S, BC6H_SF16, BC6H_UF16};
    ASSERT_EQ(std::size(in_order), 17u);
    for (int i = 0; i < 17; ++i) EXPECT_EQ(static_cast<int>(in_order[i]), i);
    EXPECT_EQ(sizeof(Type), 4u);
}

TEST(DdsImage, FileRecordsHaveTheirSizeInTheFile) {
    EXPECT_EQ(sizeof(TOZ::DDS_PIXELFORMAT), 32u);
    EXPECT_EQ(sizeof(TOZ::DXTColBlock), 8u);
    EXPECT_EQ(sizeof(TOZ::DXTExplicitAlphaBlock), 8u);
    EXPECT_EQ(sizeof(TOZ::DXT5AlphaBlock), 8u);
    EXPECT_EQ(sizeof(TOZ::BC4ColBlock), 8u);
    EXPECT_EQ(sizeof(TOZ::BC5ColBlock), 16u);
}

TEST(DdsImage, AccessorsSpeakOfTheFirstFace) {
    vDDSImage image = cube_image();
    EXPECT_EQ(image.get_width(), 8);
    EXPECT_EQ(image.get_height(), 8);
    EXPECT_EQ(image.get_depth(), 1);
    EXPECT_EQ(image.get_size(), 256u);
    EXPECT_EQ(image.get_num_mipmaps(), 2);
    EXPECT_EQ(static_cast<char*>(image), pixels(image[0]));
    EXPECT_EQ(&image.get_mipmap(1), &image[0].get_mipmap(1));
    EXPECT_EQ(image.get_components(), 4);
    EXPECT_TRUE(image.is_cubemap());
    EXPECT_TRUE(image.is_volume());
    EXPECT_TRUE(image.is_valid());
}

TEST(DdsImage, ConstantAccessorsGiveTheSameObjects) {
    vDDSImage image = cube_image();
    const vDDSImage& unchanging = image;
    EXPECT_EQ(&unchanging[5], &image[5]);
    EXPECT_EQ(&unchanging.get_mipmap(0), &image.get_mipmap(0));
    EXPECT_EQ(static_cast<char*>(unchanging), static_cast<char*>(image));
}

TEST(DdsImage, ClearEmptiesEverything) {
    vDDSImage image = loaded(complete_file(dxgi_header(10).sized(4, 4).with_caps2(kCubeMap)));
    ASSERT_EQ(image.*dds_private::bits_per_component(), 16);
    image.clear();
    EXPECT_TRUE(cleared(image));
}

TEST(DdsImage, ClearKeepsTheListsStorage) {
    vDDSImage image = cube_image();
    const vDDSTexture* storage = textures(image).data();
    const std::size_t capacity = textures(image).capacity();
    const auto taken = taken_by([&] { image.clear(); });
    EXPECT_EQ(taken.releases, 6u * (3u + 1u)) << "three levels and the mip list of each face";
    EXPECT_EQ(textures(image).capacity(), capacity);
    EXPECT_EQ(textures(image).data(), storage);
}

TEST(DdsImage, DestructionReleasesEverything) {
    const auto before = live_blocks();
    { const vDDSImage image = cube_image(); }
    EXPECT_EQ(live_blocks(), before);
}

TEST(DdsImageCopy, HasFieldsAndLevelsOfItsOwn) {
    const vDDSImage source = cube_image();
    const vDDSImage copy(source);
    EXPECT_TRUE(same(copy, cube_model()));
    pixels(copy[4])[3] ^= 1;
    pixels(copy[5].get_mipmap(1))[0] ^= 1;
    EXPECT_TRUE(same(source, cube_model()));
    EXPECT_FALSE(same(copy, cube_model()));
}

TEST(DdsImageCopy, OfAnEmptyImageIsEmpty) {
    const vDDSImage source;
    const vDDSImage copy(source);
    EXPECT_TRUE(cleared(copy));
}

TEST(DdsImageCopy, OfABaseLevelWithoutPixelsIsAllZero) {
    vDDSImage source = cube_image();
    source[2].clear();
    const vDDSImage copy(source);
    EXPECT_EQ(copy[2].get_width(), 0);
    EXPECT_EQ(copy[2].get_size(), 0u);
    EXPECT_EQ(copy[2].get_num_mipmaps(), 2);
    EXPECT_EQ(source[2].get_width(), 8);
}

TEST(DdsImageCopy, CopiesEveryField) {
    vDDSImage source;
    source.*dds_private::format() = TOZ::SUPPORTED_FORMAT::BC5S;
    source.*dds_private::components() = 77;
    source.*dds_private::bits_per_component() = 99;
    source.*dds_private::compressed() = true;
    source.*dds_private::volume() = true;
    vDDSImage assigned;
    assigned.*dds_private::cubemap() = true;
    assigned = source;
    const vDDSImage copied(source);
    for (const vDDSImage* image : {&copied, static_cast<const vDDSImage*>(&assigned)}) {
        EXPECT_EQ(image->get_format(), TOZ::SUPPORTED_FORMAT::BC5S);
        EXPECT_EQ(image->get_components(), 77);
        EXPECT_EQ(image->*dds_private::bits_per_component(), 99);
        EXPECT_TRUE(image->is_compressed());
        EXPECT_FALSE(image->is_cubemap());
        EXPECT_TRUE(image->is_volume());
        EXPECT_FALSE(image->is_valid());
    }
}

TEST(DdsImageAssignment, ReplacesEverything) {
    const vDDSImage source = cube_image();
    vDDSImage target = loaded(complete_file(fourcc_header(four_cc("DXT5")).sized(16, 4), 3));
    EXPECT_EQ(&(target = source), &target);
    EXPECT_TRUE(same(target, cube_model()));
    pixels(target[0])[0] ^= 1;
    EXPECT_TRUE(same(source, cube_model()));
}

TEST(DdsImageAssignment, OfASmallerImageDropsTheOtherFaces) {
    const Bytes file = complete_file(fourcc_header(four_cc("DXT5")).sized(16, 4), 3);
    vDDSImage target = cube_image();
    const vDDSImage source = loaded(file);
    target = source;
    EXPECT_TRUE(same(target, plain::load(file, false, false)));
}

TEST(DdsImageAssignment, FromAnEmptyImageEmpties) {
    vDDSImage target = cube_image();
    const vDDSImage source;
    target = source;
    EXPECT_TRUE(cleared(target));
}

// Textures are replaced by copies, not assigned one to the other: a base level without pixels comes out
// as all zero, whatever lay there before.
TEST(DdsImageAssignment, OfABaseLevelWithoutPixelsIsAllZero) {
    vDDSImage source = cube_image();
    source[1].clear();
    vDDSImage target = cube_image();
    target = source;
    EXPECT_EQ(target[1].get_width(), 0);
    EXPECT_EQ(target[1].get_height(), 0);
    EXPECT_EQ(target[1].get_size(), 0u);
    EXPECT_EQ(pixels(target[1]), nullptr);
}

TEST(DdsImageAssignment, ToItselfLeavesTheTexturesUntouched) {
    vDDSImage image = cube_image();
    const auto buffers = buffers_of(image, 6);
    const vDDSImage& same_image = image;
    const AllocationRecorder recorder;
    image = same_image;
    EXPECT_EQ(recorder.allocations(), 0u);
    EXPECT_EQ(buffers_of(image, 6), buffers);
    EXPECT_TRUE(same(image, cube_model()));
}

TEST(DdsImageMove, ConstructionHandsEverythingOver) {
    vDDSImage source = cube_image();
    const auto buffers = buffers_of(source, 6);
    const AllocationRecorder recorder;
    const vDDSImage target(std::move(source));
    EXPECT_EQ(recorder.allocations(), 0u);
    EXPECT_EQ(buffers_of(target, 6), buffers);
    EXPECT_TRUE(same(target, cube_model()));
    EXPECT_TRUE(cleared(source));
}

TEST(DdsImageMove, AssignmentHandsEverythingOver) {
    const auto before = live_blocks();
    {
        vDDSImage source = cube_image();
        vDDSImage target = loaded(complete_file(fourcc_header(four_cc("DXT5")).sized(16, 4), 3));
        const auto buffers = buffers_of(source, 6);
        {
            const AllocationRecorder recorder;
            EXPECT_EQ(&(target = std::move(source)), &target);
            EXPECT_EQ(recorder.allocations(), 0u);
        }
        EXPECT_EQ(buffers_of(target, 6), buffers);
        EXPECT_TRUE(same(target, cube_model()));
        EXPECT_TRUE(cleared(source));
    }
    EXPECT_EQ(live_blocks(), before);
}

TEST(DdsImageMove, SourceCanLoadAgain) {
    vDDSImage source = cube_image();
    const vDDSImage target(std::move(source));
    ASSERT_TRUE(load(source, complete_file(cube_header())));
    EXPECT_TRUE(same(source, cube_model()));
}

TEST(DdsImageMove, DoesNotThrow) {
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<vDDSImage>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<vDDSImage>);
}

}  // namespace
