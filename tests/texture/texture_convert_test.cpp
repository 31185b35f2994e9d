// SPDX-License-Identifier: Apache-2.0
// What the converters make of pixels.
#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <vector>

#include "support/check_failure_capture.h"
#include "support/guarded_memory.h"
#include "support/taken.h"
#include "texture/converters.h"

namespace {

using namespace converters;
using support::CheckFailureCapture;
using support::GuardedMemory;
using support::random_bytes;

Bytes converted(const Converter& converter, const Bytes& input) {
    return converters::converted(converter, input.data(), input.size());
}

TEST(TextureConvert, Rgb8KeepsTheOrderAndBecomesOpaque) {
    EXPECT_EQ(converted(kRgb8, {1, 2, 3, 4, 5, 6}), (Bytes{1, 2, 3, 255, 4, 5, 6, 255}));
    EXPECT_EQ(converted(kRgb8, {0, 128, 255}), (Bytes{0, 128, 255, 255}));
}

TEST(TextureConvert, Bgr8TurnsTheOrderAndBecomesOpaque) {
    EXPECT_EQ(converted(kBgr8, {1, 2, 3, 4, 5, 6}), (Bytes{3, 2, 1, 255, 6, 5, 4, 255}));
    EXPECT_EQ(converted(kBgr8, {0, 128, 255}), (Bytes{255, 128, 0, 255}));
}

TEST(TextureConvert, Bgra8TurnsTheOrderAndKeepsAlpha) {
    EXPECT_EQ(converted(kBgra8, {1, 2, 3, 4, 5, 6, 7, 8}), (Bytes{3, 2, 1, 4, 7, 6, 5, 8}));
    EXPECT_EQ(converted(kBgra8, {0, 128, 255, 0}), (Bytes{255, 128, 0, 0}));
}

TEST(TextureConvert, Rgb32fGetsAFourthFloatOfOne) {
    const float pixels[] = {0.5f, -2.0f, 1e30f, 0.0f, -0.0f, 1.0f};
    const float expected[] = {0.5f, -2.0f, 1e30f, 1.0f, 0.0f, -0.0f, 1.0f, 1.0f};
    const Buffer result = convert(kRgb32f, reinterpret_cast<const unsigned char*>(pixels), sizeof(pixels));
    ASSERT_NE(result, nullptr);
    EXPECT_EQ(std::memcmp(result.get(), expected, sizeof(expected)), 0);
}

TEST(TextureConvert, Rgb8OfSevenBytesIsTwoPixels) {
    EXPECT_EQ(converted(kRgb8, {1, 2, 3, 4, 5, 6, 7}), (Bytes{1, 2, 3, 255, 4, 5, 6, 255}));
}

TEST(TextureConvert, Bgra8OfTenBytesIsTwoPixels) {
    EXPECT_EQ(converted(kBgra8, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}), (Bytes{3, 2, 1, 4, 7, 6, 5, 8}));
}

TEST(TextureConvert, LessThanAPixelIsAnEmptyBufferOfItsOwn) {
    CheckFailureCapture capture;
    const Bytes input = random_bytes(16, 1);
    for (const Converter& converter : kAll) {
        SCOPED_TRACE(converter.name);
        for (std::size_t size = 0; size < converter.old_size; ++size) {
            const Buffer source = exact_copy(input.data(), size);
            Buffer first;
            const support::Taken taken =
                support::taken_by([&] { first = convert(converter, source.get(), size); });
            const Buffer second = convert(converter, source.get(), size);
            EXPECT_NE(first, nullptr) << size << " bytes";
            EXPECT_NE(first, second) << size << " bytes";
            EXPECT_NE(first, source) << size << " bytes";
            EXPECT_EQ(taken.sizes, std::vector<std::size_t>{0}) << size << " bytes";
        }
    }
    EXPECT_TRUE(capture.take().empty());
}

TEST(TextureConvert, NoBytesMeansNoByteIsRead) {
    GuardedMemory untouchable(0, GuardedMemory::Side::kEnd);
    for (const Converter& converter : kAll)
        EXPECT_NE(convert(converter, untouchable.data(), 0), nullptr) << converter.name;
}

TEST(TextureConvert, EverySizeIsConvertedPixelByPixelAndLeavesTheInput) {
    CheckFailureCapture capture;
    const Bytes input = random_bytes(4096, 2);
    for (const Converter& converter : kAll) {
        SCOPED_TRACE(converter.name);
        const Bytes expected = expected_result(converter, input.data(), input.size());
        for (std::size_t size = 0; size <= input.size(); ++size) {
            const Buffer source = exact_copy(input.data(), size);
            const Bytes result = converters::converted(converter, source.get(), size);
            ASSERT_EQ(result.size(), result_size(converter, size)) << size << " bytes";
            ASSERT_TRUE(std::equal(result.begin(), result.end(), expected.begin())) << size << " bytes";
            ASSERT_TRUE(std::equal(source.get(), source.get() + size, input.begin())) << size << " bytes";
        }
    }
    EXPECT_TRUE(capture.take().empty());
}

TEST(TextureConvert, EverySizeTakesOneBlockOfTheResultsSize) {
    const Bytes input = random_bytes(4096, 3);
    for (const Converter& converter : kAll) {
        SCOPED_TRACE(converter.name);
        for (std::size_t size = 0; size <= input.size(); ++size) {
            Buffer result;
            const support::Taken taken =
                support::taken_by([&] { result = convert(converter, input.data(), size); });
            ASSERT_EQ(taken.sizes, std::vector<std::size_t>{result_size(converter, size)}) << size;
            ASSERT_EQ(taken.releases, 0u) << size;
        }
    }
}

TEST(TextureConvert, ABlockHoldsTheWholePixelsOnly) {
    const Bytes input = random_bytes(64, 4);
    const auto block = [&](const Converter& converter, std::size_t size) {
        Buffer result;
        return support::taken_by([&] { result = convert(converter, input.data(), size); }).sizes;
    };
    EXPECT_EQ(block(kRgb8, 7), std::vector<std::size_t>{8});
    EXPECT_EQ(block(kBgr8, 8), std::vector<std::size_t>{8});
    EXPECT_EQ(block(kBgra8, 10), std::vector<std::size_t>{8});
    EXPECT_EQ(block(kRgb32f, 35), std::vector<std::size_t>{32});
}

TEST(TextureConvert, TheResultIsReleasedWithArrayDelete) {
    const Bytes input = random_bytes(100, 5);
    for (const Converter& converter : kAll) {
        const std::ptrdiff_t before = support::live_blocks();
        const unsigned char* const result = converter.convert(input.data(), input.size());
        EXPECT_EQ(support::live_blocks(), before + 1) << converter.name;
        delete[] result;
        EXPECT_EQ(support::live_blocks(), before) << converter.name;
    }
}

TEST(TextureConvert, TheInputMayLieAtAnyAddress) {
    const Bytes input = random_bytes(400, 6);
    for (const Converter& converter : kAll) {
        SCOPED_TRACE(converter.name);
        for (std::size_t offset = 0; offset <= 65; ++offset) {
            for (std::size_t size = 0; size <= 300; size += offset % 3 + 1) {
                const Buffer source = exact_copy(input.data(), offset + size);
                ASSERT_EQ(converters::converted(converter, source.get() + offset, size),
                          expected_result(converter, input.data() + offset, size))
                    << size << " bytes at " << offset;
            }
        }
    }
}

TEST(TextureConvert, OnlyTheInputIsRead) {
    for (const Converter& converter : kAll) {
        SCOPED_TRACE(converter.name);
        for (std::size_t size = 0; size <= 700; ++size) {
            const Bytes input = random_bytes(size, static_cast<std::uint32_t>(size));
            for (GuardedMemory::Side side : {GuardedMemory::Side::kStart, GuardedMemory::Side::kEnd}) {
                GuardedMemory source(size, side);
                source.fill(input);
                ASSERT_EQ(converters::converted(converter, source.data(), size),
                          expected_result(converter, input.data(), size))
                    << size;
                ASSERT_EQ(source.bytes(), input) << size;
            }
        }
    }
}

TEST(TextureConvert, LargeImagesAreConvertedToTheLastPixel) {
    const Bytes input = random_bytes((std::size_t{8} << 20) + 11, 7);
    for (const Converter& converter : kAll) {
        const Bytes result = converted(converter, input);
        const std::size_t pixels = input.size() / converter.old_size;
        ASSERT_EQ(result.size(), pixels * converter.new_size) << converter.name;
        for (std::size_t i = 0; i < pixels; ++i) {
            const Bytes pixel = converter.pixel(input.data() + i * converter.old_size);
            ASSERT_EQ(std::memcmp(result.data() + i * converter.new_size, pixel.data(), pixel.size()), 0)
                << converter.name << ", pixel " << i;
        }
    }
}

// Every component in turn, in images of one pixel and in ones long enough for several at a time.
TEST(TextureConvert, FloatsKeepTheirBits) {
    const std::uint32_t patterns[] = {
        0x7F800001u, 0xFF800001u, 0x7FBFFFFFu, 0xFFBFFFFFu,  // signalling NaNs
        0x7FC00000u, 0xFFC00000u, 0x7FC12345u, 0xFFFFFFFFu,  // quiet ones
        0x7F800000u, 0xFF800000u,                            // infinities
        0x00000001u, 0x807FFFFFu, 0x80000000u,               // subnormal numbers and minus zero
    };
    constexpr std::uint32_t kOne = 0x3F800000u;
    for (std::uint32_t pattern : patterns) {
        for (std::size_t pixels : {1u, 2u, 5u, 67u}) {
            for (std::size_t place = 0; place < 3; ++place) {
                std::vector<std::uint32_t> input(3 * pixels, 0x40490FDBu);
                std::vector<std::uint32_t> expected(4 * pixels, 0x40490FDBu);
                for (std::size_t i = 0; i < pixels; ++i) {
                    input[3 * i + place] = pattern;
                    expected[4 * i + place] = pattern;
                    expected[4 * i + 3] = kOne;
                }
                const Buffer bytes =
                    convert(kRgb32f, reinterpret_cast<const unsigned char*>(input.data()), 12 * pixels);
                std::vector<std::uint32_t> result(4 * pixels);
                std::memcpy(result.data(), bytes.get(), 16 * pixels);
                ASSERT_EQ(result, expected) << std::hex << pattern << " at " << place;
            }
        }
    }
}

}  // namespace
