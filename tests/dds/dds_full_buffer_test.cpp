// SPDX-License-Identifier: Apache-2.0
// Assembly of all levels and faces in one buffer.
#include <gtest/gtest.h>

#include "support/allocation.h"
#include "support/dds_check.h"
#include "vDDSImage.h"

namespace {

using namespace support;

constexpr std::uint8_t kUntouched = 0xEE;

/// Base of 256 bytes and mip levels of 64, 16 and 4.
FileHeader flat_header() { return plain_header(kRgbWithAlpha, 32).sized(8, 8).with_mips(4); }

/// Six faces of 100 bytes with one mip level of 25 each.
FileHeader cube_header() { return plain_header(0x2, 8).sized(10, 10).with_mips(2).with_caps2(kCubeMap); }

Bytes pixels_in(const Bytes& file) { return Bytes(file.begin() + 128, file.end()); }

Bytes joined(const std::vector<Bytes>& pieces) {
    Bytes all;
    for (const Bytes& piece : pieces) all.insert(all.end(), piece.begin(), piece.end());
    return all;
}

Bytes part(const Bytes& bytes, std::ptrdiff_t first, std::ptrdiff_t count) {
    return Bytes(bytes.begin() + first, bytes.begin() + first + count);
}

struct Assembly {
    bool complete;
    Bytes buffer;
};

/// A buffer of the stated size, of which every byte can be seen to be touched.
Assembly assemble(const vDDSImage& image, std::size_t buffer_size, int mipmaps) {
    Bytes buffer(buffer_size, kUntouched);
    const bool complete = image.compute_full_buffer(chars(buffer), buffer_size, mipmaps);
    return {complete, buffer};
}

TEST(DdsFullSize, CountsTheLevelsAskedFor) {
    const vDDSImage image = loaded(complete_file(flat_header()));
    EXPECT_EQ(image.compute_full_size(-1), 340u);
    EXPECT_EQ(image.compute_full_size(0), 256u);
    EXPECT_EQ(image.compute_full_size(1), 320u);
    EXPECT_EQ(image.compute_full_size(2), 336u);
    EXPECT_EQ(image.compute_full_size(3), 340u);
}

TEST(DdsFullSize, EveryNegativeCountMeansAllLevels) {
    const vDDSImage image = loaded(complete_file(flat_header()));
    EXPECT_EQ(image.compute_full_size(-2), 340u);
    EXPECT_EQ(image.compute_full_size(-0x7FFFFFFF - 1), 340u);
}

TEST(DdsFullSize, CubeMapCountsSixFaces) {
    const vDDSImage image = loaded(complete_file(cube_header()));
    EXPECT_EQ(image.compute_full_size(-1), 750u);
    EXPECT_EQ(image.compute_full_size(1), 750u);
    EXPECT_EQ(image.compute_full_size(0), 600u);
}

TEST(DdsFullSize, VolumeSlicesLieInTheirSurfaces) {
    const FileHeader header = plain_header(0x2, 8).sized(4, 4).with_depth(4).with_mips(3).with_caps2(kVolume);
    const vDDSImage image = loaded(complete_file(header));
    EXPECT_EQ(image.compute_full_size(-1), 64u + 8u + 1u);
}

TEST(DdsFullSize, OfAHeaderOnlyImageCountsItsPlaceholders) {
    const vDDSImage image = loaded(header_bytes(flat_header()), Flip::no, Read::header_only);
    EXPECT_EQ(image.compute_full_size(-1), 4u);
    EXPECT_EQ(image.compute_full_size(0), 1u);
}

TEST(DdsFullBuffer, HoldsEveryLevelEndToEnd) {
    const Bytes file = complete_file(flat_header());
    const vDDSImage image = loaded(file);
    const Assembly all = assemble(image, 340, -1);
    EXPECT_TRUE(all.complete);
    EXPECT_EQ(all.buffer, pixels_in(file));
}

TEST(DdsFullBuffer, OneByteShortCopiesWhatFits) {
    const Bytes file = complete_file(flat_header());
    const Assembly partial = assemble(loaded(file), 339, -1);
    EXPECT_FALSE(partial.complete);
    EXPECT_EQ(partial.buffer, joined({part(file, 128, 336), Bytes(3, kUntouched)}));
}

TEST(DdsFullBuffer, StopsAtTheFirstLevelThatDoesNotFit) {
    const Bytes file = complete_file(flat_header());
    // After the base level, 63 bytes: too few for the 64 of the next level, though later levels would fit.
    const Assembly partial = assemble(loaded(file), 256 + 63, -1);
    EXPECT_FALSE(partial.complete);
    EXPECT_EQ(partial.buffer, joined({part(file, 128, 256), Bytes(63, kUntouched)}));
}

TEST(DdsFullBuffer, TooSmallForTheBaseLevelStaysUntouched) {
    const vDDSImage image = loaded(complete_file(flat_header()));
    for (std::size_t size : {0u, 1u, 255u}) {
        const Assembly nothing = assemble(image, size, 0);
        EXPECT_FALSE(nothing.complete);
        EXPECT_EQ(nothing.buffer, Bytes(size, kUntouched));
    }
}

TEST(DdsFullBuffer, LargerBufferKeepsItsTail) {
    const Bytes file = complete_file(flat_header());
    const Assembly all = assemble(loaded(file), 400, -1);
    EXPECT_TRUE(all.complete);
    EXPECT_EQ(all.buffer, joined({pixels_in(file), Bytes(60, kUntouched)}));
}

TEST(DdsFullBuffer, CountOfZeroCopiesTheBaseLevelAlone) {
    const Bytes file = complete_file(flat_header());
    const Assembly base = assemble(loaded(file), 340, 0);
    EXPECT_TRUE(base.complete);
    EXPECT_EQ(base.buffer, joined({part(file, 128, 256), Bytes(84, kUntouched)}));
    EXPECT_TRUE(assemble(loaded(file), 256, 0).complete) << "a level that ends with the buffer fits";
}

TEST(DdsFullBuffer, CountBetweenCopiesThatManyLevels) {
    const Bytes file = complete_file(flat_header());
    const Assembly two = assemble(loaded(file), 336, 2);
    EXPECT_TRUE(two.complete);
    EXPECT_EQ(two.buffer, part(file, 128, 336));
}

TEST(DdsFullBuffer, ImageWithoutMipmapsIsItsBaseLevel) {
    const Bytes file = complete_file(flat_header().with_mips(1));
    for (int count : {-1, 0}) {
        const Assembly base = assemble(loaded(file), 256, count);
        EXPECT_TRUE(base.complete);
        EXPECT_EQ(base.buffer, pixels_in(file));
    }
}

TEST(DdsFullBuffer, CubeMapIsLaidFaceAfterFace) {
    const Bytes file = complete_file(cube_header());
    const vDDSImage image = loaded(file);
    const Assembly all = assemble(image, 750, -1);
    EXPECT_TRUE(all.complete);
    EXPECT_EQ(all.buffer, pixels_in(file));
    EXPECT_EQ(part(all.buffer, 125, 100), pixels_of(image[1]));
    EXPECT_EQ(part(all.buffer, 725, 25), pixels_of(image[5].get_mipmap(0)));
}

TEST(DdsFullBuffer, CubeMapBaseLevelsAlone) {
    const Bytes file = complete_file(cube_header());
    const Assembly bases = assemble(loaded(file), 600, 0);
    EXPECT_TRUE(bases.complete);
    std::vector<Bytes> faces;
    for (int face = 0; face < 6; ++face) faces.push_back(part(file, 128 + 125 * face, 100));
    EXPECT_EQ(bases.buffer, joined(faces));
}

TEST(DdsFullBuffer, CubeMapStopsInsideAFace) {
    const Bytes file = complete_file(cube_header());
    const Assembly partial = assemble(loaded(file), 749, -1);
    EXPECT_FALSE(partial.complete);
    EXPECT_EQ(partial.buffer, joined({part(file, 128, 725), Bytes(24, kUntouched)}));
    const Assembly three = assemble(loaded(file), 374, -1);
    EXPECT_FALSE(three.complete);
    EXPECT_EQ(three.buffer, joined({part(file, 128, 350), Bytes(24, kUntouched)}));
}

TEST(DdsFullBuffer, FlippedCubeMapIsLaidInTheOrderOfTheImage) {
    const Bytes file = complete_file(cube_header());
    const vDDSImage image = loaded(file, Flip::yes);
    const Assembly all = assemble(image, 750, -1);
    EXPECT_TRUE(all.complete);
    EXPECT_EQ(all.buffer, plain::full_buffer(plain::load(file, true, false), -1));
    EXPECT_EQ(part(all.buffer, 250, 100), pixels_of(image[2]));
}

// The count comes from the first face and holds for every face.
TEST(DdsFullBuffer, NegativeCountIsThatOfTheFirstFace) {
    const Bytes file = complete_file(cube_header());
    vDDSImage image = loaded(file);
    const vDDSTexture base_alone(10, 10, 1, 100);
    image[0] = base_alone;
    EXPECT_EQ(image.compute_full_size(-1), 600u);
    EXPECT_TRUE(assemble(image, 600, -1).complete);
}

TEST(DdsFullBuffer, ChangesNothingInTheImage) {
    const Bytes file = complete_file(cube_header());
    const vDDSImage image = loaded(file);
    assemble(image, 750, -1);
    assemble(image, 10, -1);
    EXPECT_TRUE(same(image, plain::load(file, false, false)));
}

TEST(DdsFullBuffer, TakesNoMemory) {
    const vDDSImage image = loaded(complete_file(cube_header()));
    Bytes buffer(750);
    const AllocationRecorder recorder;
    EXPECT_TRUE(image.compute_full_buffer(chars(buffer), buffer.size(), -1));
    EXPECT_EQ(recorder.allocations(), 0u);
}

}  // namespace
