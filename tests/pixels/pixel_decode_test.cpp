// SPDX-License-Identifier: Apache-2.0

#include "pixels/pixel_decode.h"

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/bytes.h"
#include "support/every_target.h"
#include "support/guarded_memory.h"

namespace {

using support::Bytes;
using support::GuardedMemory;
using support::random_bytes;

namespace px = pelto::pixels;
using px::ChannelBits;
using px::Coding;
using px::PixelLayout;

using Decode = void (*)(const PixelLayout&, const unsigned char*, unsigned char*, std::size_t);

struct Kernel {
    const char* name;
    std::size_t new_size;  // bytes of a decoded pixel
    Decode fast;
    Decode reference;
};

const Kernel kKernels[] = {
    {"rgba8", 4, px::decode_rgba8, px::reference::decode_rgba8},
    {"rgba16", 8, px::decode_rgba16, px::reference::decode_rgba16},
    {"rgba32f", 16, px::decode_rgba32f, px::reference::decode_rgba32f},
};

constexpr Coding kWholeNumbers[] = {Coding::kUNorm, Coding::kSNorm, Coding::kUInt, Coding::kSInt};

struct Channel {
    int bits;
    Coding coding;
};

// Channels one after the other from the lowest bit up; `order` tells which element each of them is.
PixelLayout layout_of(int bytes, const std::vector<Channel>& channels, const std::vector<int>& order) {
    PixelLayout layout{static_cast<std::uint8_t>(bytes), 1, {}, {}};
    int bit = 0;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        layout.channels[order[i]] = {static_cast<std::uint8_t>(bit),
                                     static_cast<std::uint8_t>(channels[i].bits), channels[i].coding, 0};
        bit += channels[i].bits;
    }
    return layout;
}

std::vector<Channel> of_one_coding(Coding coding, const std::vector<int>& bits) {
    std::vector<Channel> channels;
    for (const int count : bits) channels.push_back({count, coding});
    return channels;
}

std::string text_of(const PixelLayout& layout) {
    std::string text = std::to_string(layout.block_bytes) + " bytes:";
    for (const ChannelBits& channel : layout.channels) {
        text += " " + std::to_string(channel.first) + "+" + std::to_string(channel.count) + " coding " +
                std::to_string(static_cast<int>(channel.coding)) + ",";
    }
    return text;
}

// Every size of a pixel, with channels of all codings in several orders.
std::vector<PixelLayout> layouts() {
    struct Division {
        int bytes;
        std::vector<int> bits;
    };
    const Division divisions[] = {
        {1, {8}},
        {1, {3, 3, 2}},
        {1, {4, 4}},
        {1, {1, 2, 1, 4}},
        {2, {16}},
        {2, {8, 8}},
        {2, {5, 6, 5}},
        {2, {5, 5, 5, 1}},
        {2, {4, 4, 4, 4}},
        {3, {8, 8, 8}},
        {3, {16, 8}},
        {3, {24}},
        {3, {7, 1, 9, 7}},
        {4, {8, 8, 8, 8}},
        {4, {10, 10, 10, 2}},
        {4, {16, 16}},
        {4, {24, 8}},
        {4, {8, 8, 8}},
        {4, {32}},
        {4, {11, 11, 10}},
        {4, {12, 13, 7}},
        {4, {17, 15}},
        {4, {9, 14, 9}},
        {6, {16, 16, 16}},
        {8, {16, 16, 16, 16}},
        {8, {32, 32}},
        {8, {20, 20, 24}},
        {12, {32, 32, 32}},
        {16, {32, 32, 32, 32}},
    };
    const std::vector<int> orders[] = {{0, 1, 2, 3}, {2, 1, 0, 3}, {3, 2, 1, 0}};
    std::vector<PixelLayout> result;
    for (const auto& [bytes, bits] : divisions) {
        for (const std::vector<int>& order : orders) {
            for (const Coding coding : kWholeNumbers) {
                result.push_back(layout_of(bytes, of_one_coding(coding, bits), order));
            }
            const auto is_float = [](int count) {
                return count == 32 || count == 16 || count == 11 || count == 10;
            };
            if (std::all_of(bits.begin(), bits.end(), is_float)) {
                result.push_back(layout_of(bytes, of_one_coding(Coding::kFloat, bits), order));
            }
        }
    }
    result.push_back(layout_of(4, of_one_coding(Coding::kSharedExponent, {9, 9, 9}), {0, 1, 2}));
    result.back().exponent = {27, 5, Coding::kSharedExponent, 0};
    result.push_back(
        layout_of(2, {{5, Coding::kSNorm}, {5, Coding::kSNorm}, {6, Coding::kUNorm}}, {0, 1, 2}));
    result.push_back(
        layout_of(4, {{16, Coding::kFloat}, {8, Coding::kUInt}, {8, Coding::kSNorm}}, {1, 0, 3}));
    // Luminance; bits that nothing uses; pixels in pairs; eight pixels a byte.
    constexpr ChannelBits kLow = {0, 8, Coding::kUNorm, 0};
    constexpr ChannelBits kHigh = {24, 8, Coding::kUNorm, 0};
    result.push_back({1, 1, {kLow, kLow, kLow, {}}, {}});
    result.push_back({4, 1, {kLow, kLow, kLow, kHigh}, {}});
    result.push_back({4, 1, {{}, {}, {}, kHigh}, {}});
    result.push_back({4, 2, {kLow, {8, 8, Coding::kUNorm, 16}, {16, 8, Coding::kUNorm, 0}, {}}, {}});
    result.push_back({1, 8, {{7, 1, Coding::kUNorm, -1}, {}, {}, {}}, {}});
    return result;
}

std::size_t row_bytes(const PixelLayout& layout, std::size_t pixels) {
    return (pixels + layout.block_pixels - 1) / layout.block_pixels * layout.block_bytes;
}

// Both places end at a page that must not be touched.
void check_all_widths(const PixelLayout& layout, const Kernel& kernel) {
    constexpr std::size_t kMost = 70;
    const Bytes from = random_bytes(row_bytes(layout, kMost), layout.block_bytes);
    GuardedMemory input(from.size(), GuardedMemory::Side::kEnd);
    GuardedMemory output(kMost * kernel.new_size, GuardedMemory::Side::kEnd);
    input.fill(from);
    for (std::size_t pixels = 0; pixels <= kMost; ++pixels) {
        const unsigned char* const source = input.data() + from.size() - row_bytes(layout, pixels);
        unsigned char* const destination = output.data() + (kMost - pixels) * kernel.new_size;
        Bytes expected(pixels * kernel.new_size);
        kernel.reference(layout, source, expected.data(), pixels);
        kernel.fast(layout, source, destination, pixels);
        ASSERT_TRUE(std::equal(expected.begin(), expected.end(), destination)) << pixels;
    }
}

TEST(PixelDecode, EveryTargetEqualsTheReferenceForAllWidthsUpToPagesThatMustNotBeTouched) {
    support::on_every_target([] {
        for (const PixelLayout& layout : layouts()) {
            SCOPED_TRACE(text_of(layout));
            for (const Kernel& kernel : kKernels) {
                SCOPED_TRACE(kernel.name);
                ASSERT_NO_FATAL_FAILURE(check_all_widths(layout, kernel));
            }
        }
    });
}

TEST(PixelDecode, EveryTargetTakesAnyAddressAndWritesOnlyThePixels) {
    constexpr std::size_t kMargin = 64;
    constexpr std::size_t kPixels = 67;
    support::on_every_target([] {
        for (const PixelLayout& layout : layouts()) {
            SCOPED_TRACE(text_of(layout));
            for (const Kernel& kernel : kKernels) {
                SCOPED_TRACE(kernel.name);
                for (const std::size_t offset : {0u, 1u, 2u, 3u, 7u, 8u, 13u, 31u, 63u}) {
                    const Bytes from = random_bytes(kMargin + row_bytes(layout, kPixels), 7);
                    Bytes to = random_bytes(kMargin + kPixels * kernel.new_size + kMargin, 8);
                    Bytes expected = to;
                    kernel.fast(layout, from.data() + offset, to.data() + offset, kPixels);
                    kernel.reference(layout, from.data() + offset, expected.data() + offset, kPixels);
                    ASSERT_EQ(to, expected) << offset;
                }
            }
        }
    });
}

// A pixel of two bytes for each number of `bits` bits, with the channel at its lowest bits.
Bytes all_numbers(int bits) {
    Bytes bytes;
    for (std::uint32_t number = 0; number < 1u << bits; ++number) {
        bytes.push_back(static_cast<std::uint8_t>(number & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(number >> 8));
    }
    return bytes;
}

// On every target, for as many pixels as `from` holds.
void check_on_every_target(const PixelLayout& layout, const Bytes& from) {
    SCOPED_TRACE(text_of(layout));
    const std::size_t pixels = from.size() / layout.block_bytes;
    for (const Kernel& kernel : kKernels) {
        Bytes expected(pixels * kernel.new_size);
        kernel.reference(layout, from.data(), expected.data(), pixels);
        support::on_every_target([&] {
            Bytes actual(expected.size());
            kernel.fast(layout, from.data(), actual.data(), pixels);
            ASSERT_TRUE(actual == expected) << kernel.name;
        });
    }
}

TEST(PixelDecode, EveryTargetEqualsTheReferenceForEveryNumberOfUpTo16Bits) {
    for (int bits = 1; bits <= 16; ++bits) {
        const Bytes from = all_numbers(bits);
        for (const Coding coding : kWholeNumbers) {
            ASSERT_NO_FATAL_FAILURE(check_on_every_target(layout_of(2, {{bits, coding}}, {0}), from));
        }
        if (bits != 10 && bits != 11 && bits != 16) continue;
        ASSERT_NO_FATAL_FAILURE(check_on_every_target(layout_of(2, {{bits, Coding::kFloat}}, {0}), from));
    }
}

TEST(PixelDecode, EveryTargetEqualsTheReferenceForEverySharedExponent) {
    PixelLayout layout = layout_of(4, of_one_coding(Coding::kSharedExponent, {9, 9, 9}), {0, 1, 2});
    layout.exponent = {27, 5, Coding::kSharedExponent, 0};
    Bytes from;
    for (std::uint32_t exponent = 0; exponent < 32; ++exponent) {
        for (std::uint32_t mantissa = 0; mantissa < 512; ++mantissa) {
            const std::uint32_t pixel =
                exponent << 27 | (mantissa ^ 0x155) << 18 | (511 - mantissa) << 9 | mantissa;
            for (int i = 0; i < 4; ++i) from.push_back(static_cast<std::uint8_t>(pixel >> 8 * i));
        }
    }
    check_on_every_target(layout, from);
}

}  // namespace
