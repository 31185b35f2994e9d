// SPDX-License-Identifier: Apache-2.0
// Uncompressed surfaces are flipped by exchanging lines.
#include <algorithm>
#include <gtest/gtest.h>
#include <new>

#include "support/allocation.h"
#include "support/dds_check.h"
#include "support/taken.h"
#include "vDDSImage.h"

namespace {

using support::AllocationRecorder;
using support::Bytes;
using support::chars;
using support::random_bytes;
using support::taken_by;

using Sizes = std::vector<std::size_t>;
using Format = TOZ::SUPPORTED_FORMAT::Type;

constexpr Format kAnyFormat = TOZ::SUPPORTED_FORMAT::RGBA8;

void flip_lines(Bytes& bytes, int height, int depth, int width = 1, Format format = kAnyFormat) {
    vDDSImage::flip(chars(bytes), width, height, depth, bytes.size(), format, false);
}

TEST(DdsFlipLines, ExchangesTopAndBottomAndKeepsTheMiddle) {
    Bytes bytes = {1, 2, 3, 4, 5, 6};
    flip_lines(bytes, 3, 1);
    EXPECT_EQ(bytes, (Bytes{5, 6, 3, 4, 1, 2}));
}

TEST(DdsFlipLines, ExchangesEveryLineOfAnEvenCount) {
    Bytes bytes = {1, 2, 3, 4, 5, 6, 7, 8};
    flip_lines(bytes, 4, 1);
    EXPECT_EQ(bytes, (Bytes{7, 8, 5, 6, 3, 4, 1, 2}));
}

TEST(DdsFlipLines, OneLineStays) {
    Bytes bytes = {1, 2, 3};
    const AllocationRecorder recorder;
    flip_lines(bytes, 1, 1);
    EXPECT_EQ(recorder.allocations(), 0u);
    EXPECT_EQ(bytes, (Bytes{1, 2, 3}));
}

TEST(DdsFlipLines, EachSliceOfAVolumeIsFlippedWithinItself) {
    Bytes bytes = {1, 2, 3, 4, 11, 12, 13, 14, 21, 22, 23, 24, 31, 32, 33, 34};
    flip_lines(bytes, 2, 4);
    EXPECT_EQ(bytes, (Bytes{3, 4, 1, 2, 13, 14, 11, 12, 23, 24, 21, 22, 33, 34, 31, 32}));
}

TEST(DdsFlipLines, TakesOneTemporaryForEachExchangedPair) {
    Bytes bytes = random_bytes(2 * 7 * 10, 1);
    const auto taken = taken_by([&] { flip_lines(bytes, 7, 2); });
    EXPECT_EQ(taken.sizes, (Sizes{10, 10, 10, 10, 10, 10})) << "three pairs in each of two slices";
    EXPECT_EQ(taken.releases, 6u);
}

TEST(DdsFlipLines, OfOneByteAreExchangedWithoutATemporary) {
    Bytes bytes = {1, 2, 3, 4, 5};
    const AllocationRecorder recorder;
    flip_lines(bytes, 5, 1);
    EXPECT_EQ(recorder.allocations(), 0u);
    EXPECT_EQ(bytes, (Bytes{5, 4, 3, 2, 1}));
}

TEST(DdsFlipLines, AreAsWideAsTheSizeSays) {
    for (int width : {-1, 0, 1, 100}) {
        Bytes bytes = {1, 2, 3, 99, 4, 5, 6, 98};
        flip_lines(bytes, 2, 1, width);
        EXPECT_EQ(bytes, (Bytes{4, 5, 6, 98, 1, 2, 3, 99})) << "padding moves with its line";
    }
}

TEST(DdsFlipLines, WhateverTheFormatSays) {
    for (int format = 0; format <= 17; ++format) {
        Bytes bytes = {1, 2, 3, 4};
        flip_lines(bytes, 2, 1, 2, static_cast<Format>(format));
        EXPECT_EQ(bytes, (Bytes{3, 4, 1, 2})) << format;
    }
}

// Eleven bytes in three lines: three bytes a line, the last line is the last three bytes of the slice.
TEST(DdsFlipLines, LastLineIsCountedFromTheEndOfTheSlice) {
    Bytes bytes = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
    flip_lines(bytes, 3, 1);
    EXPECT_EQ(bytes, (Bytes{9, 10, 11, 4, 5, 6, 7, 8, 1, 2, 3}));
}

// Nine bytes in two slices: four bytes a slice, the ninth belongs to none.
TEST(DdsFlipLines, BytesBehindTheLastSliceStay) {
    Bytes bytes = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    flip_lines(bytes, 2, 2);
    EXPECT_EQ(bytes, (Bytes{3, 4, 1, 2, 7, 8, 5, 6, 9}));
}

// Fewer bytes than lines leave lines of no bytes, and an exchange of no bytes is one of single bytes: the
// first byte of the slice changes places with the byte behind it at each of the height / 2 exchanges.
TEST(DdsFlipLines, OfNoBytesExchangeTheFirstByteWithTheOneBehindTheSlice) {
    const auto flipped = [](int height) {
        Bytes bytes = {1, 2, 9, 8};
        vDDSImage::flip(chars(bytes), 1, height, 1, 2, kAnyFormat, false);
        return bytes;
    };
    EXPECT_EQ(flipped(3), (Bytes{9, 2, 1, 8})) << "once";
    EXPECT_EQ(flipped(5), (Bytes{1, 2, 9, 8})) << "twice";
}

TEST(DdsFlipLines, NegativeDepthStops) {
    for (int depth : {-1, -4}) {
        Bytes bytes = {1, 2, 3, 4};
        flip_lines(bytes, 2, depth);
        EXPECT_EQ(bytes, (Bytes{1, 2, 3, 4}));
    }
}

TEST(DdsFlipLines, NegativeHeightExchangesNothing) {
    for (int height : {-1, -2, -5}) {
        Bytes bytes = {1, 2, 3, 4};
        flip_lines(bytes, height, 1);
        EXPECT_EQ(bytes, (Bytes{1, 2, 3, 4}));
    }
}

TEST(DdsFlipLines, TwiceGivesTheBytesBack) {
    const Bytes before = random_bytes(3 * 5 * 7, 4);
    Bytes bytes = before;
    flip_lines(bytes, 5, 3);
    EXPECT_NE(bytes, before);
    flip_lines(bytes, 5, 3);
    EXPECT_EQ(bytes, before);
}

TEST(DdsFlipLines, AgreesWithTheModel) {
    for (int depth = 1; depth <= 3; ++depth)
        for (int height = 1; height <= 9; ++height)
            for (std::size_t line = 1; line <= 40; ++line) {
                const std::size_t size = line * static_cast<std::size_t>(height * depth);
                Bytes bytes = random_bytes(size, static_cast<std::uint32_t>(size));
                Bytes expected = bytes;
                flip_lines(bytes, height, depth);
                plain::flip(expected, 1, height, depth, 2, false);
                ASSERT_TRUE(support::same_bytes(bytes, expected)) << line << "x" << height << "x" << depth;
            }
}

TEST(DdsFlipLines, AtAnyAddress) {
    for (std::size_t shift = 0; shift < 16; ++shift) {
        Bytes memory = random_bytes(shift + 90, 5);
        Bytes expected(memory.begin() + static_cast<std::ptrdiff_t>(shift), memory.end());
        plain::flip(expected, 1, 5, 1, 2, false);
        vDDSImage::flip(chars(memory) + shift, 1, 5, 1, 90, kAnyFormat, false);
        EXPECT_EQ(Bytes(memory.begin() + static_cast<std::ptrdiff_t>(shift), memory.end()), expected);
        const Bytes before = random_bytes(shift + 90, 5);
        EXPECT_TRUE(
            std::equal(memory.begin(), memory.begin() + static_cast<std::ptrdiff_t>(shift), before.begin()));
    }
}

TEST(DdsFlipLines, WithoutMemoryKeepTheExchangesMadeSoFar) {
    const auto before = support::live_blocks();
    {
        Bytes bytes = {1, 2, 3, 4, 5, 6, 7, 8};
        const support::FailAllocation failure(1);
        EXPECT_THROW(flip_lines(bytes, 4, 1), std::bad_alloc);
        EXPECT_EQ(bytes, (Bytes{7, 8, 3, 4, 5, 6, 1, 2}));
    }
    EXPECT_EQ(support::live_blocks(), before);
}

}  // namespace
