// SPDX-License-Identifier: Apache-2.0
// vTextureCheck on .basis files that lie just inside, at and just outside its bounds.
#include <algorithm>
#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <new>
#include <string>
#include <sys/mman.h>
#include <vBasisImage.h>
#include <vTextureCheck.h>
#include <vector>

#include "basis/basis_check.h"
#include "basis/fixture_files.h"
#include "support/allocation.h"
#include "support/basis_file.h"

namespace {

using namespace basis_fixtures;
using namespace support;
using namespace support::basis;
using Check = vTextureCheck;

Check::Result check(const Bytes& file, const vTextureLimits& limits = vTextureLimits()) {
    return Check::CheckBasisBuffer(file.data(), file.size(), limits);
}

// A file of a codec whose data nobody looks at before they are transcoded.
SingleSlice xuastc(std::uint32_t width, std::uint32_t height) {
    SingleSlice slice;
    slice.format = kFormatXuastc4x4;
    slice.width = width;
    slice.height = height;
    slice.blocks_across = (width + 3) / 4;
    slice.blocks_down = (height + 3) / 4;
    slice.data = Bytes(16);
    return slice;
}

struct Place {
    std::uint32_t image;
    std::uint32_t level;
};

// A file of 4 x 4 pixels for each place, in this order.
Bytes file_with(const std::vector<Place>& places, std::uint32_t images) {
    Bytes file = file_of(xuastc(4, 4));
    const auto table = static_cast<std::ptrdiff_t>(get(file, header::kTableOffset));
    const Bytes entry(file.begin() + table, file.begin() + table + slice::kSize);
    put(file, header::kTotalSlices, static_cast<std::uint32_t>(places.size()));
    put(file, header::kTotalImages, images);
    put(file, header::kTableOffset, static_cast<std::uint32_t>(file.size()));
    for (std::size_t i = 0; i < places.size(); ++i) {
        file.insert(file.end(), entry.begin(), entry.end());
        put(file, of_slice(file, i, slice::kImage), places[i].image);
        put(file, of_slice(file, i, slice::kLevel), places[i].level);
    }
    put(file, header::kDataSize, static_cast<std::uint32_t>(file.size() - header::kSize));
    return file;
}

Bytes file_of_levels(std::uint32_t count) {
    std::vector<Place> places;
    for (std::uint32_t level = 0; level < count; ++level) places.push_back({0, level});
    return file_with(places, 1);
}

TEST(BasisBounds, SixteenLevelsPassAndAreLoaded) {
    for (const std::uint32_t count : {1U, 15U, 16U}) {
        const Bytes file = file_of_levels(count);
        EXPECT_TRUE(check(file).ok()) << check(file).sentence;
        EXPECT_EQ(check(file).totalBytes, 16 * count);
        TOZ::vBasisImage image;
        basis_check::hold(image, file);
        EXPECT_EQ(image.getNumMipLevels(), static_cast<int>(count));
    }
}

TEST(BasisBounds, SeventeenLevelsAreRefusedAsByTheLoader) {
    for (const std::uint32_t count : {17U, 18U}) {
        const Bytes file = file_of_levels(count);
        const Check::Result result = check(file);
        EXPECT_EQ(result.status, Check::eAbsurdSize);
        EXPECT_EQ(result.offset, of_slice(file, 16, slice::kLevel).offset);
        EXPECT_EQ(result.sentence, "has more than 16 levels");
        TOZ::vBasisImage image;
        basis_check::hold(image, file);
        EXPECT_EQ(image.getNumMipLevels(), 0);
    }
}

TEST(BasisBounds, ImagesOfTheTableAreThoseOfTheHeader) {
    const std::vector<Place> two = {{0, 0}, {0, 1}, {1, 0}};
    const Check::Result result = check(file_with(two, 2));
    EXPECT_TRUE(result.ok()) << result.sentence;
    EXPECT_EQ(result.totalBytes, 48U);
    for (const std::uint32_t images : {1U, 3U}) {
        const Check::Result other = check(file_with(two, images));
        EXPECT_EQ(other.status, Check::eMalformedTable) << images;
        EXPECT_EQ(other.offset, 17U);
        EXPECT_EQ(other.sentence, "its table of slices has another number of images, says byte 17");
    }
}

TEST(BasisBounds, ImagesAndLevelsAreInOrder) {
    const std::vector<std::vector<Place>> orders = {
        {{1, 0}, {0, 0}}, {{0, 1}, {0, 0}}, {{0, 0}, {1, 1}},
        {{0, 0}, {2, 0}}, {{0, 0}, {0, 0}}, {{0, 1}, {1, 0}},
    };
    for (const std::vector<Place>& order : orders) {
        for (const std::uint32_t images : {1U, 2U}) {
            const Check::Result result = check(file_with(order, images));
            EXPECT_EQ(result.status, Check::eMalformedTable);
            EXPECT_NE(result.sentence.find("its slices are not in order"), std::string::npos)
                << result.sentence;
        }
    }
}

// Blocks of 16 bytes; the loader counts a level's bytes in 31 bits.
TEST(BasisBounds, ALevelOfLessThan2GiBPasses) {
    const struct {
        std::uint32_t width;
        std::uint32_t height;
        std::uint64_t blocks;
    } cases[] = {{4 * 8193, 4 * 16382, 134217726}, {65535, 4 * 8191, 134201344}};
    for (const auto& test : cases) {
        const Bytes file = file_of(xuastc(test.width, test.height));
        const Check::Result result = check(file);
        EXPECT_TRUE(result.ok()) << result.sentence;
        EXPECT_EQ(result.totalBytes, 16 * test.blocks);
    }
}

TEST(BasisBounds, ALevelOf2GiBIsRefused) {
    const struct {
        std::uint32_t width;
        std::uint32_t height;
    } cases[] = {{65535, 4 * 8192}, {4 * 8192, 65535}, {65535, 4 * 8193}, {46340, 46344}, {65535, 65535}};
    for (const auto& test : cases) {
        const Bytes file = file_of(xuastc(test.width, test.height));
        const Check::Result result = check(file);
        EXPECT_EQ(result.status, Check::eAbsurdSize);
        EXPECT_EQ(result.offset, of_slice(file, 0, slice::kWidth).offset);
        EXPECT_EQ(result.sentence, "has a level of 2 GiB or more: " + std::to_string(test.width) + " x " +
                                       std::to_string(test.height) + " pixels");
    }
}

// No .basis file counts its bytes in more than 32 bits. Memory that is mapped, but never touched.
TEST(BasisBounds, AFileOf4GiBIsRefused) {
    constexpr std::size_t kMapped = (std::size_t{1} << 32) + 1;
    void* const memory =
        mmap(nullptr, kMapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    ASSERT_NE(memory, MAP_FAILED);
    const Bytes file = file_of(xuastc(4, 4));
    std::copy(file.begin(), file.end(), static_cast<unsigned char*>(memory));
    EXPECT_TRUE(Check::CheckBasisBuffer(memory, UINT32_MAX).ok());
    for (const std::uint64_t size : {std::uint64_t{1} << 32, std::uint64_t{kMapped}}) {
        const Check::Result result = Check::CheckBasisBuffer(memory, size);
        EXPECT_EQ(result.status, Check::eAbsurdSize);
        EXPECT_EQ(result.offset, 0U);
        EXPECT_EQ(result.sentence, "has 4 GiB or more, which no .basis file has");
    }
    munmap(memory, kMapped);
}

// The promise of the header may be short: what lies behind it is in the file all the same.
TEST(BasisBounds, SectionsBehindThePromisedLengthPassWhereTheFileHasThem) {
    for (const char* const name : {"etc1s_alpha_mips", "uastc_array_mips"}) {
        const Bytes file = made(name);
        const Bytes at_the_end = with_table_at_the_end(file, 0);
        for (const Bytes& whole : {file, at_the_end}) {
            for (const std::uint32_t promised : {0U, 1U, 100U}) {
                const Bytes less = with(whole, header::kDataSize, promised);
                const Check::Result result = check(less);
                EXPECT_TRUE(result.ok()) << name << ": " << result.sentence;
                EXPECT_EQ(result.totalBytes, check(file).totalBytes);
                TOZ::vBasisImage image;
                basis_check::hold(image, less);
                EXPECT_TRUE(image.isValidHeader());
            }
        }
    }
}

// The last byte of each section is the last that the promise reaches.
TEST(BasisBounds, SectionsEndWhereThePromiseEnds) {
    const Bytes file = file_of(Etc1sFile());
    ASSERT_TRUE(check(file).ok()) << check(file).sentence;
    const auto length = static_cast<std::uint32_t>(file.size());
    const struct {
        Field offset;
        Field size;
    } sections[] = {{header::kEndpointsOffset, header::kEndpointsSize},
                    {header::kSelectorsOffset, header::kSelectorsSize},
                    {header::kTablesOffset, header::kTablesSize}};
    for (const auto& section : sections) {
        const std::uint32_t bytes = length - get(file, section.offset);
        EXPECT_TRUE(check(with(file, section.size, bytes)).ok());
        const Check::Result beyond = check(with(file, section.size, bytes + 1));
        EXPECT_EQ(beyond.status, Check::eMalformedTable);
        EXPECT_EQ(beyond.offset, section.offset.offset);
    }
    const Field size = of_slice(file, 0, slice::kDataSize);
    const std::uint32_t bytes = length - get(file, of_slice(file, 0, slice::kDataOffset));
    EXPECT_TRUE(check(with(file, size, bytes)).ok());
    EXPECT_EQ(check(with(file, size, bytes + 1)).status, Check::eMalformedTable);
}

TEST(BasisBounds, TheTableOfSlicesBeginsBehindTheHeader) {
    const Bytes file = file_of(xuastc(4, 4));
    ASSERT_EQ(get(file, header::kTableOffset), 77U);
    EXPECT_TRUE(check(file).ok());
    EXPECT_EQ(check(with(file, header::kTableOffset, 76)).offset, 65U);
}

TEST(BasisBounds, BlocksHaveTheExtentsOfTheirCodec) {
    constexpr std::array<std::array<std::uint32_t, 2>, 14> kAstc = {{{4, 4},
                                                                     {5, 4},
                                                                     {5, 5},
                                                                     {6, 5},
                                                                     {6, 6},
                                                                     {8, 5},
                                                                     {8, 6},
                                                                     {10, 5},
                                                                     {10, 6},
                                                                     {8, 8},
                                                                     {10, 8},
                                                                     {10, 10},
                                                                     {12, 10},
                                                                     {12, 12}}};
    std::vector<std::array<std::uint32_t, 2>> extents = {{4, 4}, {4, 4}, {6, 6}, {6, 6}};  // codecs 1 to 4
    for (int i = 0; i < 2; ++i) extents.insert(extents.end(), kAstc.begin(), kAstc.end());
    for (std::uint32_t codec = 1; codec <= 32; ++codec) {
        const auto [width, height] = extents[codec - 1];
        SingleSlice slice;
        slice.format = codec;
        slice.blocks_across = 2;
        slice.blocks_down = 3;
        slice.data = Bytes(16 * 6);
        for (const std::uint32_t excess : {0U, 1U}) {
            slice.width = 2 * width + excess;
            slice.height = 3 * height;
            EXPECT_EQ(check(file_of(slice)).ok(), excess == 0) << codec;
            slice.width = 2 * width;
            slice.height = 3 * height + excess;
            EXPECT_EQ(check(file_of(slice)).ok(), excess == 0) << codec;
        }
        slice.width = width + 1;
        slice.height = 2 * height + 1;
        EXPECT_TRUE(check(file_of(slice)).ok()) << codec;
        slice.width = width;
        EXPECT_FALSE(check(file_of(slice)).ok()) << codec;
    }
}

TEST(BasisBounds, DataMayBeShorterThanBlocksOnlyWhereTheCodecPacksThem) {
    for (std::uint32_t codec = 1; codec <= 32; ++codec) {
        SingleSlice slice;
        slice.format = codec;
        slice.data = Bytes(15);
        const bool packs = codec >= 4 && codec <= 18;
        EXPECT_EQ(check(file_of(slice)).ok(), packs) << codec;
    }
}

// Memory runs out at each allocation in turn. The bytes stay the caller's, to read and to release.
TEST(BasisBounds, BytesStayTheCallersWhenMemoryRunsOut) {
    for (const char* const name : {"etc1s_alpha_mips", "uastc_mips", "etc1s_cube_map"}) {
        const Bytes file = made(name);
        const Bytes copy = file;
        bool thrown = true;
        for (std::size_t index = 0; thrown; ++index) {
            thrown = false;
            const AllocationRecorder recorder;
            {
                const FailAllocation failure(index);
                try {
                    check(file);
                } catch (const std::bad_alloc&) {
                    thrown = true;
                }
            }
            EXPECT_EQ(recorder.releases(), recorder.allocations()) << "allocation " << index;
            EXPECT_EQ(file, copy);
        }
    }
}

}  // namespace
