// SPDX-License-Identifier: Apache-2.0
// The numbers of a .basis file are read from where they lie, and its codecs have the names and blocks that
// the format gives them.
#include "basis/basis_header.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <regex>
#include <string>
#include <vector>

#include "support/basis_file.h"

namespace {

using namespace pelto::basis;
using support::Bytes;
namespace file = support::basis;

// Every byte is its own place, so that a number tells where it was read.
Bytes counting_bytes(std::size_t count) {
    Bytes bytes(count);
    for (std::size_t i = 0; i < count; ++i) bytes[i] = static_cast<std::uint8_t>(i + 100);
    return bytes;
}

TEST(BasisHeader, NumbersAreReadFromTheirPlaces) {
    const Bytes bytes = counting_bytes(file::header::kSize);
    const Header header = read_header(bytes.data());
    EXPECT_EQ(header.version, file::get(bytes, file::header::kVersion));
    EXPECT_EQ(header.header_size, file::get(bytes, file::header::kHeaderSize));
    EXPECT_EQ(header.data_size, file::get(bytes, file::header::kDataSize));
    EXPECT_EQ(header.total_slices, file::get(bytes, file::header::kTotalSlices));
    EXPECT_EQ(header.total_images, file::get(bytes, file::header::kTotalImages));
    EXPECT_EQ(header.codec, file::get(bytes, file::header::kFormat));
    EXPECT_EQ(header.flags, file::get(bytes, file::header::kFlags));
    EXPECT_EQ(header.texture_type, file::get(bytes, file::header::kTextureType));
    EXPECT_EQ(header.endpoints.offset, file::get(bytes, file::header::kEndpointsOffset));
    EXPECT_EQ(header.endpoints.bytes, file::get(bytes, file::header::kEndpointsSize));
    EXPECT_EQ(header.selectors.offset, file::get(bytes, file::header::kSelectorsOffset));
    EXPECT_EQ(header.selectors.bytes, file::get(bytes, file::header::kSelectorsSize));
    EXPECT_EQ(header.tables.offset, file::get(bytes, file::header::kTablesOffset));
    EXPECT_EQ(header.tables.bytes, file::get(bytes, file::header::kTablesSize));
    EXPECT_EQ(header.slice_table, file::get(bytes, file::header::kTableOffset));
}

TEST(BasisHeader, NumbersOfASliceAreReadFromTheirPlaces) {
    const Bytes bytes = counting_bytes(file::slice::kSize);
    const Slice slice = read_slice(bytes.data());
    EXPECT_EQ(slice.image, file::get(bytes, file::slice::kImage));
    EXPECT_EQ(slice.level, file::get(bytes, file::slice::kLevel));
    EXPECT_EQ(slice.flags, file::get(bytes, file::slice::kFlags));
    EXPECT_EQ(slice.width, file::get(bytes, file::slice::kWidth));
    EXPECT_EQ(slice.height, file::get(bytes, file::slice::kHeight));
    EXPECT_EQ(slice.blocks_across, file::get(bytes, file::slice::kBlocksAcross));
    EXPECT_EQ(slice.blocks_down, file::get(bytes, file::slice::kBlocksDown));
    EXPECT_EQ(slice.data.offset, file::get(bytes, file::slice::kDataOffset));
    EXPECT_EQ(slice.data.bytes, file::get(bytes, file::slice::kDataSize));
}

TEST(BasisHeader, ProductsAndSumsDoNotWrap) {
    Header header = {};
    header.data_size = 0xFFFFFFFF;
    header.slice_table = 0xFFFFFFFF;
    EXPECT_EQ(header.promised_length(), 0xFFFFFFFFU + std::uint64_t{77});
    EXPECT_EQ(header.slice_entry(0xFFFFFF), 0xFFFFFFFFU + std::uint64_t{23} * 0xFFFFFF);
    EXPECT_EQ((Section{0xFFFFFFFF, 0xFFFFFFFF}).end(), std::uint64_t{0xFFFFFFFF} * 2);
    Slice slice = {};
    slice.blocks_across = slice.blocks_down = 0xFFFF;
    EXPECT_EQ(slice.blocks(), std::uint64_t{0xFFFF} * 0xFFFF);
}

TEST(BasisHeader, EachFlagIsABitOfItsOwn) {
    for (std::uint32_t bit = 0; bit < 16; ++bit) {
        Header header = {};
        header.flags = 1U << bit;
        EXPECT_EQ(header.has_etc1s_flag(), bit == 0);
        EXPECT_EQ(header.is_y_flipped(), bit == 1);
        EXPECT_EQ(header.has_alpha_entries(), bit == 2);
        EXPECT_EQ(header.shares_codebooks(), bit == 3);
        EXPECT_EQ(header.is_srgb(), bit == 4);
        header.codec = 1;
        EXPECT_FALSE(header.has_alpha_entries()) << "only ETC1S stores alpha apart";
        Slice slice = {};
        slice.flags = 1U << bit;
        EXPECT_EQ(slice.has_alpha(), bit == 0);
    }
}

TEST(BasisHeader, OnlyTheFirstTwoTextureTypesAreOf2DImages) {
    Header header = {};
    for (const std::uint32_t type : {0U, 1U, 2U, 3U, 4U, 5U, 255U}) {
        header.texture_type = type;
        EXPECT_EQ(header.holds_2d_images(), type < 2) << type;
    }
}

TEST(BasisHeader, NamesOfCodecsThatTellTheirBlocksTellTheTrueOnes) {
    const std::regex extent("([0-9]+)x([0-9]+)$");
    for (std::uint32_t number = 1; number < 33; ++number) {
        const Codec* const codec = find_codec(number);
        ASSERT_NE(codec, nullptr);
        const std::string name = codec->name;
        std::smatch match;
        ASSERT_TRUE(std::regex_search(name, match, extent)) << name;
        EXPECT_EQ(match[1], std::to_string(codec->block_width)) << name;
        EXPECT_EQ(match[2], std::to_string(codec->block_height)) << name;
    }
    for (const std::uint32_t number : {33U, 255U, 0xFFFFFFFFU}) EXPECT_EQ(find_codec(number), nullptr);
}

TEST(BasisHeader, CodecsHaveTheNamesOfTheFormat) {
    const std::string astc[] = {"4x4",  "5x4",  "5x5", "6x5",  "6x6",   "8x5",   "8x6",
                                "10x5", "10x6", "8x8", "10x8", "10x10", "12x10", "12x12"};
    std::vector<std::string> names = {"ETC1S", "UASTC LDR 4x4", "UASTC HDR 4x4", "ASTC HDR 6x6",
                                      "UASTC HDR 6x6"};
    for (const char* const family : {"XUASTC LDR ", "ASTC LDR "}) {
        for (const std::string& extent : astc) names.push_back(family + extent);
    }
    ASSERT_EQ(names.size(), kCodecs.size());
    for (std::size_t i = 0; i < names.size(); ++i) EXPECT_EQ(kCodecs[i].name, names[i]) << i;
}

}  // namespace
