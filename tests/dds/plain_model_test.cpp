// SPDX-License-Identifier: Apache-2.0
// The model that the other tests trust, against cases worked out by hand.
#include "support/plain_model.h"

#include <gtest/gtest.h>

#include "support/dds_check.h"

namespace {

using plain::Bytes;

TEST(PlainModel, ReversesTwoBitRowsOfAColourBlock) {
    Bytes block = {1, 2, 3, 4, 0x1B, 0x2C, 0x3D, 0x4E};
    plain::flip_block(block, 8);
    EXPECT_EQ(block, (Bytes{1, 2, 3, 4, 0x4E, 0x3D, 0x2C, 0x1B}));
}

TEST(PlainModel, ReversesFourBitRowsOfAnExplicitAlphaBlock) {
    Bytes block = {0x10, 0x11, 0x20, 0x21, 0x30, 0x31, 0x40, 0x41, 1, 2, 3, 4, 5, 6, 7, 8};
    plain::flip_block(block, 9);
    EXPECT_EQ(block, (Bytes{0x40, 0x41, 0x30, 0x31, 0x20, 0x21, 0x10, 0x11, 1, 2, 3, 4, 8, 7, 6, 5}));
}

// Rows 0xABC, 0x123, 0x456 and 0x789 of twelve bits each: the field is 0x789456123ABC.
TEST(PlainModel, ReversesTwelveBitRowsOfAnInterpolatedBlock) {
    Bytes block = {7, 9, 0xBC, 0x3A, 0x12, 0x56, 0x94, 0x78};
    plain::flip_block(block, 11);
    // Reversed: 0xABC123456789.
    EXPECT_EQ(block, (Bytes{7, 9, 0x89, 0x67, 0x45, 0x23, 0xC1, 0xAB}));
}

TEST(PlainModel, TakesAChannelFromTheLowestMaskBitUp) {
    EXPECT_EQ(plain::channel(0x44332211, 0x00FF0000), 0x33);
    EXPECT_EQ(plain::channel(0x80000000, 0x80000000), 1);
    EXPECT_EQ(plain::channel(0xFFFFFFFF, 0), 0);
    EXPECT_EQ(plain::channel(0x0000F800, 0x0000F800), 0x1F);
    EXPECT_EQ(plain::channel(0x00000ABC, 0x00000FFF), 0xBC) << "wider masks lose their high bits";
    EXPECT_EQ(plain::channel(0x000000FF, 0x00000011), 0x11) << "gaps in a mask stay gaps";
}

TEST(PlainModel, ExchangesLinesSliceBySlice) {
    Bytes bytes = {1, 2, 3, 4, 5, 6, 11, 12, 13, 14, 15, 16};
    plain::flip(bytes, 2, 3, 2, 2, false);
    EXPECT_EQ(bytes, (Bytes{5, 6, 3, 4, 1, 2, 15, 16, 13, 14, 11, 12}));
}

TEST(PlainModel, LeavesTheMiddleRowOfBlocks) {
    Bytes bytes = {0, 0, 0, 0, 1, 2, 3, 4, 9, 9, 9, 9, 5, 6, 7, 8, 7, 7, 7, 7, 1, 3, 5, 7};
    plain::flip(bytes, 4, 12, 1, 8, true);
    EXPECT_EQ(bytes, (Bytes{7, 7, 7, 7, 7, 5, 3, 1, 9, 9, 9, 9, 5, 6, 7, 8, 0, 0, 0, 0, 4, 3, 2, 1}));
}

TEST(PlainModel, ReadsTwoLevelsOfALuminanceFile) {
    const auto header = support::plain_header(0x20000, 8).sized(2, 2).with_mips(2);
    EXPECT_EQ(plain::file_size(support::header_bytes(header)), 133u);
    const plain::Image image = plain::load(support::dds_file(header, {1, 2, 3, 4, 5}), true, false);
    ASSERT_TRUE(image.loaded);
    EXPECT_EQ(image.format, 0);
    EXPECT_EQ(image.components, 1);
    ASSERT_EQ(image.faces.size(), 1u);
    ASSERT_EQ(image.faces[0].size(), 2u);
    EXPECT_EQ(image.faces[0][0].bytes, (Bytes{3, 4, 1, 2}));
    EXPECT_EQ(image.faces[0][1].bytes, (Bytes{5}));
}

TEST(PlainModel, ReadsMissingPixelsAsZeros) {
    const auto header = support::plain_header(0, 8).sized(2, 2);
    const plain::Image image = plain::load(support::dds_file(header, {1, 2, 3}), false, false);
    EXPECT_EQ(image.faces[0][0].bytes, (Bytes{1, 2, 3, 0}));
}

TEST(PlainModel, LaysHeaderFieldsWhereTheFileFormatHasThem) {
    auto header = support::dxgi_header(0xD1);
    header.height = 0xA1;
    header.width = 0xA2;
    header.depth = 0xA3;
    header.mip_count = 0xA4;
    header.pixel_format.alpha = 0xA5;
    header.caps2 = 0xA6;
    const Bytes bytes = support::header_bytes(header);
    ASSERT_EQ(bytes.size(), 148u);
    EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 4), (Bytes{'D', 'D', 'S', ' '}));
    EXPECT_EQ(bytes[12], 0xA1);
    EXPECT_EQ(bytes[16], 0xA2);
    EXPECT_EQ(bytes[24], 0xA3);
    EXPECT_EQ(bytes[28], 0xA4);
    EXPECT_EQ(bytes[80], 0x04);
    EXPECT_EQ(Bytes(bytes.begin() + 84, bytes.begin() + 88), (Bytes{'D', 'X', '1', '0'}));
    EXPECT_EQ(bytes[104], 0xA5);
    EXPECT_EQ(bytes[112], 0xA6);
    EXPECT_EQ(bytes[128], 0xD1);
}

}  // namespace
