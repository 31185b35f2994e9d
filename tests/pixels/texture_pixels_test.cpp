// SPDX-License-Identifier: Apache-2.0
// Every format of the table, and those made from masks, held against the plain model.
#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <string_view>
#include <vTexturePixels.h>
#include <vector>

#include "pixels/plain_decode.h"
#include "support/bytes.h"
#include "support/guarded_memory.h"

namespace {

using support::Bytes;
using support::GuardedMemory;
using support::random_bytes;
using vTextureFormatTables::kPixelFormats;

constexpr vTexturePixels::EElement kElements[] = {vTexturePixels::eRGBA8, vTexturePixels::eRGBA16,
                                                  vTexturePixels::eRGBA32F};

// By name, as a person reads the table.
bool holds_a_picture(std::string_view name) {
    if (name.find("TYPELESS") != name.npos || name.find("XR_BIAS") != name.npos) return false;
    for (const char* const start : {"BC", "ASTC", "D16", "D24", "D32", "A8P8"}) {
        if (name.substr(0, std::strlen(start)) == start) return false;
    }
    const std::set<std::string_view> others = {"AYUV",       "Y410", "Y416", "NV12", "P010", "P016",
                                               "420_OPAQUE", "YUY2", "Y210", "Y216", "NV11", "AI44",
                                               "IA44",       "P8",   "P208", "V208", "V408", "UYVY"};
    return others.count(name) == 0;
}

std::vector<const vPixelFormat*> decodable_formats() {
    std::vector<const vPixelFormat*> formats;
    for (const vPixelFormat& format : kPixelFormats) {
        if (holds_a_picture(format.name)) formats.push_back(&format);
    }
    return formats;
}

std::size_t decoded_bytes(vTexturePixels::EElement element, std::size_t pixels) {
    return vTexturePixels::PixelBytes(element) * pixels;
}

// Element `index` of what was decoded; of floats, their bits.
std::uint32_t element_at(const Bytes& decoded, vTexturePixels::EElement element, std::size_t index) {
    const std::size_t size = vTexturePixels::PixelBytes(element) / 4;
    std::uint16_t small = 0;
    std::uint32_t large = 0;
    if (size == 1) return decoded.at(index);
    if (size == 2) std::memcpy(&small, &decoded.at(index * size), size);
    if (size == 4) std::memcpy(&large, &decoded.at(index * size), size);
    return size == 2 ? small : large;
}

bool is_right(std::uint32_t actual, vTexturePixels::EElement element, const plain_decode::Number& number) {
    if (element == vTexturePixels::eRGBA32F) return plain_decode::is_right_float(actual, number);
    return plain_decode::is_right(actual, element == vTexturePixels::eRGBA8 ? 255 : 65535, number);
}

std::uint32_t one_in(vTexturePixels::EElement element) {
    return element == vTexturePixels::eRGBA8 ? 255 : element == vTexturePixels::eRGBA16 ? 65535 : 0x3F800000;
}

// Decodes a row and holds each element against the model.
void check_row(const vPixelFormat& format, const Bytes& row, std::uint32_t width) {
    for (const vTexturePixels::EElement element : kElements) {
        Bytes decoded(decoded_bytes(element, width), 0xCD);
        ASSERT_TRUE(
            vTexturePixels::Decode(format, row.data(), row.size(), width, 1, element, decoded.data()));
        for (std::uint32_t x = 0; x < width; ++x) {
            const plain_decode::Pixel pixel = plain_decode::pixel_of(format, row, x);
            for (std::size_t i = 0; i < 4; ++i) {
                const std::uint32_t actual = element_at(decoded, element, std::size_t{x} * 4 + i);
                const bool right = pixel[i] ? is_right(actual, element, *pixel[i])
                                            : actual == (i == 3 ? one_in(element) : 0);
                ASSERT_TRUE(right) << "RGBA"[i] << " of pixel " << x << ", element " << int{element} << ": "
                                   << actual << " for " << (pixel[i] ? pixel[i]->bits : 0);
            }
        }
    }
}

// All numbers of a channel of up to 12 bits; of larger ones those around every power of two, and some more.
std::vector<std::uint32_t> numbers_of(int bits) {
    std::vector<std::uint32_t> numbers;
    if (bits <= 12) {
        for (std::uint32_t number = 0; number < 1u << bits; ++number) numbers.push_back(number);
        return numbers;
    }
    const auto mask = static_cast<std::uint32_t>((std::uint64_t{1} << bits) - 1);
    for (int bit = 0; bit < bits; ++bit) {
        for (std::uint32_t near = 0; near < 5; ++near) {
            const std::uint32_t number = (1u << bit) + near - 2;
            numbers.push_back(number & mask);
            numbers.push_back(~number & mask);
        }
    }
    const Bytes more = random_bytes(2000 * 4, 5);
    for (std::size_t i = 0; i < 2000; ++i) {
        numbers.push_back(plain_decode::read_bits(more, i * 32, bits));
    }
    return numbers;
}

// Pixels in which one channel takes all its numbers in turn, among random others.
Bytes row_with_numbers(const vPixelFormat& format, std::size_t first_bit, int bits,
                       const std::vector<std::uint32_t>& numbers) {
    Bytes row = random_bytes(numbers.size() * format.blockBytes, 11);
    for (std::size_t x = 0; x < numbers.size(); ++x) {
        plain_decode::write_bits(row, x * format.blockBytes * 8 + first_bit, bits, numbers[x]);
    }
    return row;
}

void check_all_numbers(const vPixelFormat& format) {
    std::size_t bit = 0;
    for (const vPixelFormat::Channel& channel : format.channels) {
        const std::vector<std::uint32_t> numbers = numbers_of(channel.bits);
        const Bytes row = row_with_numbers(format, bit, channel.bits, numbers);
        ASSERT_NO_FATAL_FAILURE(check_row(format, row, static_cast<std::uint32_t>(numbers.size())));
        bit += channel.bits;
    }
}

TEST(TexturePixels, OnlyFormatsThatHoldAPictureInPlainPixelsCanBeDecoded) {
    for (const vPixelFormat& format : kPixelFormats) {
        SCOPED_TRACE(format.name);
        const bool expected = holds_a_picture(format.name);
        EXPECT_EQ(vTexturePixels::CanDecode(format), expected);
        Bytes decoded(16, 0xCD);
        const Bytes source(16);
        EXPECT_EQ(
            vTexturePixels::Decode(format, source.data(), 16, 1, 1, vTexturePixels::eRGBA8, decoded.data()),
            expected);
        EXPECT_EQ(decoded == Bytes(16, 0xCD), !expected);
    }
    EXPECT_EQ(decodable_formats().size(), 76u);
}

TEST(TexturePixels, EveryNumberOfEveryChannelIsDecodedAsDefined) {
    for (const vPixelFormat* const format : decodable_formats()) {
        if (format->blockWidth > 1) continue;
        SCOPED_TRACE(format->name);
        ASSERT_NO_FATAL_FAILURE(check_all_numbers(*format));
    }
}

TEST(TexturePixels, EveryByteOfFormatsWithSeveralPixelsABlockIsDecodedAsDefined) {
    for (const vPixelFormat* const format : decodable_formats()) {
        if (format->blockWidth == 1) continue;
        SCOPED_TRACE(format->name);
        Bytes row = random_bytes(256 * 4 * format->blockBytes, 3);
        for (std::size_t i = 0; i < 256; ++i) {
            for (std::size_t place = 0; place < format->blockBytes; ++place) {
                row[(i * 4 + place % 4) * format->blockBytes + place] = static_cast<std::uint8_t>(i);
            }
        }
        ASSERT_NO_FATAL_FAILURE(check_row(*format, row, 256 * 4 * format->blockWidth));
    }
}

// Masks of red, green, blue and alpha, or of luminance.
TOZ::DDS_PIXELFORMAT header_of(std::uint32_t flags, std::uint32_t bits, std::array<std::uint32_t, 4> masks) {
    return {32, flags, 0, bits, masks[0], masks[1], masks[2], masks[3]};
}

TEST(TexturePixels, MasksInAnyOrderAndOfAnyWidthAreDecoded) {
    constexpr std::uint32_t kColour = 0x41;
    constexpr std::uint32_t kBump = 0x80000;
    const std::vector<std::vector<int>> widths = {
        {5, 6, 5, 0}, {1, 5, 5, 5},    {4, 4, 4, 4},    {2, 3, 3, 0},  {8, 8, 8, 0},
        {8, 8, 8, 8}, {2, 10, 10, 10}, {11, 11, 10, 0}, {7, 9, 3, 13}, {16, 16, 0, 0},
        {1, 1, 1, 1}, {12, 14, 6, 0},  {18, 0, 0, 0},   {24, 8, 0, 0}};
    for (const std::uint32_t flags : {kColour, kBump}) {
        for (const std::vector<int>& width : widths) {
            std::vector<std::size_t> order = {0, 1, 2, 3};
            do {
                std::array<std::uint32_t, 4> masks{};
                int bit = 0;
                for (const std::size_t channel : order) {
                    if (width[channel] == 0) continue;
                    masks[channel] = ((1u << width[channel]) - 1) << bit;
                    bit += width[channel];
                }
                const auto bits = static_cast<std::uint32_t>(bit + 7) / 8 * 8;
                vPixelFormat format{};
                ASSERT_TRUE(vTextureFormats::FromMasks(header_of(flags, bits, masks), format));
                SCOPED_TRACE(format.name);
                ASSERT_TRUE(vTexturePixels::CanDecode(format));
                const Bytes row = random_bytes(format.blockBytes * 300u, static_cast<std::uint32_t>(bit));
                for (std::size_t i = 0; i < 4; ++i) {
                    const plain_decode::Pixel pixel = plain_decode::pixel_of(format, row, 7);
                    const std::uint32_t number =
                        plain_decode::read_bits(row, format.blockBytes * 56u, format.blockBytes * 8);
                    ASSERT_EQ(pixel[i].has_value(), masks[i] != 0);
                    if (pixel[i]) {
                        ASSERT_EQ(pixel[i]->bits, (number & masks[i]) >> std::countr_zero(masks[i]));
                    }
                }
                ASSERT_NO_FATAL_FAILURE(check_row(format, row, 300));
            } while (std::next_permutation(order.begin(), order.end()));
        }
    }
}

TEST(TexturePixels, RowsBeginAtThePitchAndNothingBehindTheLastOneIsRead) {
    constexpr std::uint32_t kHeight = 3;
    for (const vPixelFormat* const format : decodable_formats()) {
        SCOPED_TRACE(format->name);
        for (const std::uint32_t width : {1u, 2u, 3u, 7u, 8u, 9u, 33u}) {
            const auto row_bytes = static_cast<std::size_t>(format->RowBytes(width));
            for (const std::size_t padding : {0u, 1u, 4u, 13u}) {
                const std::size_t pitch = row_bytes + padding;
                const Bytes rows = random_bytes((kHeight - 1) * pitch + row_bytes, width);
                GuardedMemory source(rows.size(), GuardedMemory::Side::kEnd);
                source.fill(rows);
                for (const vTexturePixels::EElement element : kElements) {
                    GuardedMemory decoded(decoded_bytes(element, width * kHeight), GuardedMemory::Side::kEnd);
                    ASSERT_TRUE(vTexturePixels::Decode(*format, source.data(), pitch, width, kHeight, element,
                                                       decoded.data()));
                    Bytes expected;
                    for (std::size_t row = 0; row < kHeight; ++row) {
                        Bytes one(decoded_bytes(element, width));
                        ASSERT_TRUE(vTexturePixels::Decode(*format, rows.data() + row * pitch, row_bytes,
                                                           width, 1, element, one.data()));
                        expected.insert(expected.end(), one.begin(), one.end());
                    }
                    ASSERT_EQ(decoded.bytes(), expected) << width << " + " << padding;
                }
            }
        }
    }
}

TEST(TexturePixels, NoPixelsNeedNoMemory) {
    const vPixelFormat& format = *vTextureFormats::FindName("B5G6R5_UNORM");
    for (const vTexturePixels::EElement element : kElements) {
        EXPECT_TRUE(vTexturePixels::Decode(format, nullptr, 0, 0, 0, element, nullptr));
        EXPECT_TRUE(vTexturePixels::Decode(format, nullptr, 8, 0, 5, element, nullptr));
        EXPECT_TRUE(vTexturePixels::Decode(format, nullptr, 8, 4, 0, element, nullptr));
    }
}

TEST(TexturePixels, TheFullElementTellsAllNumbersApart) {
    for (const vPixelFormat* const format : decodable_formats()) {
        if (format->blockWidth > 1) continue;
        SCOPED_TRACE(format->name);
        const vTexturePixels::EElement element = vTexturePixels::FullElement(*format);
        std::size_t bit = 0;
        for (const vPixelFormat::Channel& channel : format->channels) {
            const std::size_t first_bit = bit;
            bit += channel.bits;
            if (channel.letter == 'X' || channel.letter == 'E' || channel.bits > 16) continue;
            std::vector<std::uint32_t> numbers(std::size_t{1} << channel.bits);
            for (std::uint32_t i = 0; i < numbers.size(); ++i) numbers[i] = i;
            Bytes row(numbers.size() * format->blockBytes);
            for (std::size_t x = 0; x < numbers.size(); ++x) {
                plain_decode::write_bits(row, x * format->blockBytes * 8 + first_bit, channel.bits,
                                         numbers[x]);
                // Any exponent but 0 tells mantissas apart.
                if (format->channels.Find('E')) plain_decode::write_bits(row, x * 32 + 27, 5, 1);
            }
            Bytes decoded(decoded_bytes(element, numbers.size()));
            ASSERT_TRUE(vTexturePixels::Decode(*format, row.data(), row.size(),
                                               static_cast<std::uint32_t>(numbers.size()), 1, element,
                                               decoded.data()));
            const std::size_t place = channel.letter == 'R'   ? 0
                                      : channel.letter == 'G' ? 1
                                      : channel.letter == 'A' ? 3
                                                              : 2;
            std::vector<std::uint32_t> seen;
            for (std::size_t x = 0; x < numbers.size(); ++x) {
                seen.push_back(element_at(decoded, element, x * 4 + place));
            }
            std::sort(seen.begin(), seen.end());
            seen.erase(std::unique(seen.begin(), seen.end()), seen.end());
            // The two least numbers of SNORM are one.
            const std::size_t same = channel.kind == vPixelFormat::eSNorm ? 1 : 0;
            EXPECT_EQ(seen.size(), numbers.size() - same) << channel.letter;
        }
    }
}

TEST(TexturePixels, TheFullElementIsTheSmallest) {
    const auto full = [](const char* name) {
        return vTexturePixels::FullElement(*vTextureFormats::FindName(name));
    };
    for (const char* const name : {"R8G8B8A8_UNORM_SRGB", "R8G8_SNORM", "R8_UINT", "B5G6R5_UNORM", "R1_UNORM",
                                   "R8G8_B8G8_UNORM", "R5G5_SNORM_L6_UNORM", "A8_UNORM"}) {
        EXPECT_EQ(full(name), vTexturePixels::eRGBA8) << name;
    }
    for (const char* const name : {"R10G10B10A2_UNORM", "R16_UINT", "R16G16_SNORM", "L16_UNORM"}) {
        EXPECT_EQ(full(name), vTexturePixels::eRGBA16) << name;
    }
    for (const char* const name :
         {"R16_FLOAT", "R11G11B10_FLOAT", "R9G9B9E5_SHAREDEXP", "R32_UINT", "R8_SINT"}) {
        EXPECT_EQ(full(name), vTexturePixels::eRGBA32F) << name;
    }
}

}  // namespace
