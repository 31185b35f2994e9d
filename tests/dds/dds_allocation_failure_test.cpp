// SPDX-License-Identifier: Apache-2.0
// Every allocation fails in turn: nothing leaks, the state is the documented one, and the object serves
// again.
#include <gtest/gtest.h>
#include <new>
#include <string>
#include <utility>

#include "support/allocation.h"
#include "support/dds_check.h"
#include "support/dds_private.h"
#include "vDDSImage.h"

namespace {

using namespace support;

char* pixels(const vDDSSurface& surface) { return surface; }

/// One run of a scenario, in which one allocation fails.
class Attempt {
public:
    explicit Attempt(std::size_t index) : index_(index) {}

    /// Runs the action; whether it ended in std::bad_alloc.
    template <class Action>
    bool fails(Action action) {
        bool thrown = false;
        const FailAllocation failure(index_);
        try {
            action();
        } catch (const std::bad_alloc&) {
            thrown = true;
        }
        fired_ = failure.fired();
        EXPECT_EQ(thrown, fired_);
        return thrown;
    }

    std::size_t index() const { return index_; }
    bool fired() const { return fired_; }

private:
    std::size_t index_;
    bool fired_ = false;
};

/// Repeats the scenario until no allocation is left to fail, and returns how many there were.
template <class Scenario>
std::size_t fail_each_allocation(Scenario scenario) {
    for (std::size_t index = 0;; ++index) {
        SCOPED_TRACE("allocation " + std::to_string(index));
        Attempt attempt(index);
        const auto before = live_blocks();
        scenario(attempt);
        EXPECT_EQ(live_blocks(), before);
        if (!attempt.fired() || testing::Test::HasFailure()) return index;
    }
}

void expect_no_pixels(const vDDSSurface& surface, int width, int height, int depth, std::size_t size) {
    EXPECT_EQ(pixels(surface), nullptr);
    EXPECT_EQ(surface.get_width(), width);
    EXPECT_EQ(surface.get_height(), height);
    EXPECT_EQ(surface.get_depth(), depth);
    EXPECT_EQ(surface.get_size(), size);
}

TEST(DdsAllocationFailure, SurfaceConstruction) {
    EXPECT_EQ(fail_each_allocation([](Attempt& attempt) { attempt.fails([] { vDDSSurface(4, 4, 1, 64); }); }),
              1u);
}

TEST(DdsAllocationFailure, SurfaceCreationLeavesTheNewValuesWithoutPixels) {
    const std::size_t count = fail_each_allocation([](Attempt& attempt) {
        vDDSSurface surface = filled_surface(4, 4, 1, 64, 1);
        if (attempt.fails([&] { surface.create(2, 3, 5, 30); })) expect_no_pixels(surface, 2, 3, 5, 30);
        surface.create(1, 1, 1, 4);
        EXPECT_NE(pixels(surface), nullptr);
    });
    EXPECT_EQ(count, 1u);
}

TEST(DdsAllocationFailure, SurfaceCopy) {
    const vDDSSurface source = filled_surface(4, 4, 1, 64, 1);
    EXPECT_EQ(
        fail_each_allocation([&](Attempt& attempt) { attempt.fails([&] { vDDSSurface copy(source); }); }),
        1u);
    EXPECT_EQ(pixels_of(source), random_bytes(64, 1));
}

TEST(DdsAllocationFailure, SurfaceAssignmentLeavesTheSourcesValuesWithoutPixels) {
    const vDDSSurface source = filled_surface(2, 3, 5, 30, 2);
    const std::size_t count = fail_each_allocation([&](Attempt& attempt) {
        vDDSSurface target = filled_surface(4, 4, 1, 64, 1);
        if (attempt.fails([&] { target = source; })) expect_no_pixels(target, 2, 3, 5, 30);
        target = source;
        EXPECT_EQ(pixels_of(target), pixels_of(source));
    });
    EXPECT_EQ(count, 1u);
}

TEST(DdsAllocationFailure, CopyOfASurfaceWithoutItsPixelsIsEmpty) {
    vDDSSurface surface = filled_surface(4, 4, 1, 64, 1);
    {
        const FailAllocation failure(0);
        EXPECT_THROW(surface.create(2, 3, 5, 30), std::bad_alloc);
    }
    const vDDSSurface copy(surface);
    expect_no_pixels(copy, 0, 0, 0, 0);
}

TEST(DdsAllocationFailure, TextureConstruction) {
    EXPECT_EQ(fail_each_allocation([](Attempt& attempt) { attempt.fails([] { vDDSTexture(4, 4, 1, 64); }); }),
              1u);
}

TEST(DdsAllocationFailure, TextureCopyReleasesWhatItHadBuilt) {
    const vDDSTexture source = filled_texture(64, {16, 4, 1}, 3);
    const std::size_t count =
        fail_each_allocation([&](Attempt& attempt) { attempt.fails([&] { vDDSTexture copy(source); }); });
    EXPECT_GE(count, 4u);
}

// The base level is assigned first, then the mip levels are dropped, then copies are appended in order: what
// is in the list is always the first of the source's levels.
TEST(DdsAllocationFailure, TextureAssignmentLeavesNoLevelOfTheOldChainBesideANewBase) {
    const vDDSTexture source = filled_texture(64, {16, 4, 1}, 3);
    const std::size_t count = fail_each_allocation([&](Attempt& attempt) {
        vDDSTexture target = filled_texture(100, {25, 6, 2}, 9);
        if (attempt.fails([&] { target = source; })) {
            if (attempt.index() == 0) {
                expect_no_pixels(target, 64, 1, 1, 64);
                EXPECT_EQ(target.get_num_mipmaps(), 3) << "not yet dropped";
                EXPECT_EQ(pixels_of(target.get_mipmap(0)), random_bytes(25, 10));
            } else {
                EXPECT_EQ(pixels_of(target), pixels_of(source));
                ASSERT_LT(target.get_num_mipmaps(), static_cast<int>(attempt.index()));
                for (int i = 0; i < target.get_num_mipmaps(); ++i)
                    EXPECT_EQ(pixels_of(target.get_mipmap(i)), pixels_of(source.get_mipmap(i)));
            }
        }
        target = source;
        EXPECT_EQ(target.get_num_mipmaps(), 3);
        EXPECT_EQ(pixels_of(target.get_mipmap(2)), pixels_of(source.get_mipmap(2)));
    });
    EXPECT_EQ(count, 4u) << "one buffer a level; the list's storage is there";
}

TEST(DdsAllocationFailure, TextureAssignmentThatGrowsTheList) {
    const vDDSTexture source = filled_texture(64, {16, 4, 1}, 3);
    const std::size_t count = fail_each_allocation([&](Attempt& attempt) {
        vDDSTexture target(10, 10, 1, 100);
        if (attempt.fails([&] { target = source; })) {
            EXPECT_LT(target.get_num_mipmaps(), 3);
        }
        target = source;
        EXPECT_EQ(target.get_num_mipmaps(), 3);
    });
    EXPECT_GE(count, 5u);
}

FileHeader cube_header() {
    return plain_header(kRgbWithAlpha, 32)
        .sized(8, 8)
        .with_mips(3)
        .with_caps2(kCubeMap)
        .with_masks(0xFF0000, 0xFF00, 0xFF, 0xFF000000);
}

TEST(DdsAllocationFailure, ImageCopyReleasesWhatItHadBuilt) {
    const vDDSImage source = loaded(complete_file(cube_header()));
    const std::size_t count =
        fail_each_allocation([&](Attempt& attempt) { attempt.fails([&] { vDDSImage copy(source); }); });
    EXPECT_GE(count, 18u);
}

TEST(DdsAllocationFailure, ImageAssignmentLeavesTheSourcesFieldsWithoutTextures) {
    const Bytes file = complete_file(cube_header());
    const Bytes other = complete_file(dxgi_header(77).sized(16, 16).with_mips(2));
    const vDDSImage source = loaded(file);
    plain::Image without_textures = plain::load(file, false, false);
    without_textures.faces.clear();
    const std::size_t count = fail_each_allocation([&](Attempt& attempt) {
        vDDSImage target = loaded(other);
        if (attempt.fails([&] { target = source; })) {
            EXPECT_TRUE(same(target, without_textures));
        }
        target = source;
        EXPECT_TRUE(same(target, plain::load(file, false, false)));
    });
    EXPECT_GE(count, 18u);
}

/// What is left of a load that ran out of memory: everything the header says, the faces that were complete,
/// no pixels announced.
void expect_partial(const vDDSImage& image, const plain::Image& full, const plain::Image& in_file_order) {
    const auto& textures = image.*dds_private::textures();
    ASSERT_LE(textures.size(), full.faces.size());
    EXPECT_EQ(image.get_format(), full.format);
    EXPECT_EQ(image.get_components(), full.components);
    EXPECT_EQ(image.is_compressed(), full.compressed);
    EXPECT_EQ(image.is_cubemap(), full.cubemap);
    EXPECT_EQ(image.is_volume(), full.volume);
    EXPECT_FALSE(image.is_valid());
    for (std::size_t i = 0; i < textures.size(); ++i) {
        const bool in_exchange = textures.size() == 6 && (i == 2 || i == 3);
        if (in_exchange) continue;
        EXPECT_TRUE(same_face(textures[i], in_file_order.faces[i])) << "face " << i;
    }
}

/// The faces of a flipped cube map before two of them are exchanged.
plain::Image before_the_exchange(plain::Image image, Flip flip) {
    if (image.cubemap && flip == Flip::yes && image.format < 15) std::swap(image.faces[2], image.faces[3]);
    return image;
}

void fail_each_allocation_of_a_load(const FileHeader& header, Flip flip) {
    SCOPED_TRACE(describe(header));
    const Bytes file = complete_file(header);
    const plain::Image full = plain::load(file, flip == Flip::yes, false);
    const plain::Image in_file_order = before_the_exchange(full, flip);
    const Bytes earlier = complete_file(dxgi_header(80).sized(4, 4).with_caps2(kCubeMap));
    const std::size_t count = fail_each_allocation([&](Attempt& attempt) {
        vDDSImage image = loaded(earlier);
        const auto load_it = [&] {
            EXPECT_TRUE(
                image.loadFromBuffer(file.data(), static_cast<int>(file.size()), flip == Flip::yes, false));
        };
        if (attempt.fails(load_it)) expect_partial(image, full, in_file_order);
        load_it();
        EXPECT_TRUE(same(image, full));
    });
    EXPECT_GE(count, full.faces.size() * full.faces[0].size()) << "at least one buffer a level";
}

TEST(DdsAllocationFailure, LoadOfABlockImageWithMipmaps) {
    fail_each_allocation_of_a_load(fourcc_header(four_cc("DXT1")).sized(16, 16).with_mips(5), Flip::no);
}

TEST(DdsAllocationFailure, LoadOfAPixelImageWithMipmaps) {
    const FileHeader header = plain_header(kRgbWithAlpha, 32).sized(8, 8).with_mips(4);
    fail_each_allocation_of_a_load(header, Flip::no);
    fail_each_allocation_of_a_load(header.with_masks(0xFF0000, 0xFF00, 0xFF, 0xFF000000), Flip::yes);
}

TEST(DdsAllocationFailure, LoadOfACubeMap) {
    fail_each_allocation_of_a_load(cube_header(), Flip::no);
    fail_each_allocation_of_a_load(cube_header(), Flip::yes);
}

TEST(DdsAllocationFailure, LoadOfAVolume) {
    const FileHeader header = dxgi_header(10).sized(4, 4).with_depth(4).with_mips(3).with_caps2(kVolume);
    fail_each_allocation_of_a_load(header, Flip::yes);
}

TEST(DdsAllocationFailure, FlippedLoadOfBlocks) {
    for (std::uint32_t dxgi : {71u, 74u, 77u, 80u, 83u, 95u})
        fail_each_allocation_of_a_load(dxgi_header(dxgi).sized(8, 16).with_mips(2), Flip::yes);
}

TEST(DdsAllocationFailure, FlippedLoadOfABlockCubeMap) {
    fail_each_allocation_of_a_load(dxgi_header(74).sized(4, 8).with_mips(2).with_caps2(kCubeMap), Flip::yes);
}

TEST(DdsAllocationFailure, HeaderOnlyLoad) {
    const Bytes file = header_bytes(dxgi_header(77).sized(64, 64).with_mips(4));
    const std::size_t count = fail_each_allocation([&](Attempt& attempt) {
        vDDSImage image;
        const auto load_it = [&] {
            EXPECT_TRUE(image.loadFromBuffer(file.data(), static_cast<int>(file.size()), false, true));
        };
        if (attempt.fails(load_it)) {
            EXPECT_FALSE(image.is_valid());
            EXPECT_EQ((image.*dds_private::textures()).size(), 0u);
        }
        load_it();
        EXPECT_TRUE(same(image, plain::load(file, false, true)));
    });
    EXPECT_GE(count, 4u);
}

TEST(DdsAllocationFailure, Flip) {
    using namespace TOZ::SUPPORTED_FORMAT;
    for (Type format : {DXT1, DXT3, DXT5, BC4U, BC5S, RGBA8}) {
        const std::size_t count = fail_each_allocation([&](Attempt& attempt) {
            Bytes bytes = random_bytes(16 * 16, 1);
            attempt.fails(
                [&] { vDDSImage::flip(chars(bytes), 8, 16, 1, bytes.size(), format, format != RGBA8); });
            vDDSImage::flip(chars(bytes), 8, 16, 1, bytes.size(), format, format != RGBA8);
        });
        EXPECT_GE(count, 2u) << format;
    }
}

// Two to the power of 38 bytes, which no buffer behind the header has to hold: the level comes first.
TEST(DdsAllocationFailure, LevelTooLargeForTheMachine) {
    vDDSImage image = loaded(complete_file(cube_header()));
    EXPECT_THROW(load(image, header_bytes(fourcc_header(116).sized(0x20000, 0x20000))), std::bad_alloc);
    EXPECT_EQ(image.get_format(), TOZ::SUPPORTED_FORMAT::RGBA32F);
    EXPECT_FALSE(image.is_valid());
    EXPECT_FALSE(image.is_cubemap());
    EXPECT_EQ((image.*dds_private::textures()).size(), 0u);
}

TEST(DdsAllocationFailure, OneNegativeExtentAsksForAnImpossibleLevel) {
    vDDSImage image;
    EXPECT_THROW(load(image, header_bytes(plain_header(kRgb, 32).sized(1, 0xFFFFFFFF))), std::bad_alloc);
    EXPECT_FALSE(image.is_valid());
    const Bytes file = complete_file(cube_header());
    ASSERT_TRUE(load(image, file));
    EXPECT_TRUE(same(image, plain::load(file, false, false)));
}

}  // namespace
