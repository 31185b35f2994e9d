// SPDX-License-Identifier: Apache-2.0

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "pixels/ChannelReorder.h"
#include "support/every_target.h"

namespace {

using pelto::pixels::ChannelMasks;
using Bytes = std::vector<unsigned char>;

Bytes random_bytes(std::size_t size) {
    std::mt19937 random(static_cast<unsigned>(size) + 7);
    Bytes bytes(size);
    for (auto& byte : bytes) byte = static_cast<unsigned char>(random());
    return bytes;
}

Bytes reordered(const Bytes& from, int components, const ChannelMasks& masks) {
    Bytes to(from.size());
    pelto::pixels::ChannelReorder(masks, components)
        .apply(from.data(), to.data(), from.size() / static_cast<std::size_t>(components));
    return to;
}

Bytes reference(const Bytes& from, int components, const ChannelMasks& masks) {
    Bytes to(from.size());
    pelto::pixels::reference::reorder_channels(
        from.data(), to.data(), from.size() / static_cast<std::size_t>(components), components, masks);
    return to;
}

// Every choice of a whole byte, or nothing, for each channel.
std::vector<ChannelMasks> whole_byte_masks() {
    const std::uint32_t choices[] = {0, 0xFF, 0xFF00, 0xFF0000, 0xFF000000};
    std::vector<ChannelMasks> all;
    for (const auto red : choices) {
        for (const auto green : choices) {
            for (const auto blue : choices) {
                for (const auto alpha : choices) all.push_back({red, green, blue, alpha});
            }
        }
    }
    return all;
}

// Masks that cut other bits than a whole byte's, or more than one byte.
std::vector<ChannelMasks> odd_masks() {
    return {
        {0x7C00, 0x3E0, 0x1F, 0x8000},
        {0xF800, 0x7E0, 0x1F, 0},
        {0x3FF, 0xFFC00, 0x3FF00000, 0xC0000000},
        {0xFFFF, 0xFFFF0000, 0xFFFFFF, 0xFFFFFFFF},
        {0xFFFFFF00, 0xFF00FF, 0xF0F0F0F0, 0x80000000},
        {1, 2, 4, 8},
        {0xFF, 0xFF00, 0xFF0000, 0x7F000000},
        {0x1FF00, 0x1FF, 0xFF80, 0xFF800000},
    };
}

TEST(ChannelReorderReference, CutsEachChannelByItsMask) {
    // 0x44332211: bits 12 to 19 are 0x32, bits 0 to 3 are 1, bits 4 to 15 end in 0x22 1 -> low 8 bits 0x21.
    const Bytes pixel = {0x11, 0x22, 0x33, 0x44};
    EXPECT_EQ(reference(pixel, 4, {0xFF000, 0xF, 0xFFF0, 0xFF000000}), (Bytes{0x32, 0x01, 0x21, 0x44}));
    EXPECT_EQ(reference(pixel, 4, {0xFF0000, 0xFF00, 0xFF, 0}), (Bytes{0x33, 0x22, 0x11, 0x00}));
}

TEST(ChannelReorderReference, AThreeBytePixelHasNoFourthByte) {
    EXPECT_EQ(reference({1, 2, 3, 4, 5, 6}, 3, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}),
              (Bytes{3, 2, 1, 6, 5, 4}));
    EXPECT_EQ(reference({1, 2, 3}, 3, {0xFF000000, 0xFF00, 0, 0}), (Bytes{0, 2, 0}));
}

TEST(ChannelReorder, EveryTargetEqualsTheReferenceForEveryChoiceOfWholeBytes) {
    support::on_every_target([] {
        for (const int components : {3, 4}) {
            const Bytes from = random_bytes(static_cast<std::size_t>(components) * 53);
            for (const ChannelMasks& masks : whole_byte_masks()) {
                ASSERT_EQ(reordered(from, components, masks), reference(from, components, masks))
                    << components << std::hex << " " << masks.red << " " << masks.green << " " << masks.blue
                    << " " << masks.alpha;
            }
        }
    });
}

TEST(ChannelReorder, KnowsWhenTheMasksLeaveThePixelsAsTheyAre) {
    using pelto::pixels::ChannelReorder;
    EXPECT_TRUE(ChannelReorder({0xFF, 0xFF00, 0xFF0000, 0xFF000000}, 4).keeps_pixels());
    EXPECT_TRUE(ChannelReorder({0xFF, 0xFF00, 0xFF0000, 0}, 3).keeps_pixels());
    EXPECT_FALSE(ChannelReorder({0xFF, 0xFF00, 0xFF0000, 0}, 4).keeps_pixels());
    EXPECT_FALSE(ChannelReorder({0xFF0000, 0xFF00, 0xFF, 0xFF000000}, 4).keeps_pixels());
    EXPECT_FALSE(ChannelReorder({0x7F, 0xFF00, 0xFF0000, 0xFF000000}, 4).keeps_pixels());
}

TEST(ChannelReorder, EveryTargetEqualsTheReferenceForOddMasks) {
    support::on_every_target([] {
        for (const int components : {3, 4}) {
            const Bytes from = random_bytes(static_cast<std::size_t>(components) * 200);
            for (const ChannelMasks& masks : odd_masks()) {
                ASSERT_EQ(reordered(from, components, masks), reference(from, components, masks));
            }
        }
    });
}

TEST(ChannelReorder, EveryTargetEqualsTheReferenceForAllPixelCounts) {
    support::on_every_target([] {
        for (const int components : {3, 4}) {
            for (std::size_t pixels = 0; pixels <= 150; ++pixels) {
                const Bytes from = random_bytes(static_cast<std::size_t>(components) * pixels);
                const ChannelMasks masks{0xFF0000, 0xFF00, 0xFF, 0xFF000000};
                ASSERT_EQ(reordered(from, components, masks), reference(from, components, masks)) << pixels;
            }
        }
    });
}

TEST(ChannelReorder, EveryTargetWorksInPlaceAtAnyAddressAndTouchesOnlyThePixels) {
    constexpr std::size_t kMargin = 64;
    constexpr std::size_t kPixels = 101;
    const ChannelMasks masks{0xFF0000, 0xFF, 0xFF00, 0xFF000000};
    support::on_every_target([&] {
        for (const int components : {3, 4}) {
            const std::size_t size = kPixels * static_cast<std::size_t>(components);
            for (std::size_t offset = 0; offset < kMargin; ++offset) {
                Bytes memory = random_bytes(kMargin + size + kMargin);
                Bytes expected = memory;
                unsigned char* const pixels = memory.data() + offset;
                pelto::pixels::ChannelReorder(masks, components).apply(pixels, pixels, kPixels);
                const auto start = expected.begin() + static_cast<std::ptrdiff_t>(offset);
                const Bytes cut(start, start + static_cast<std::ptrdiff_t>(size));
                const Bytes rewritten = reference(cut, components, masks);
                std::copy(rewritten.begin(), rewritten.end(), start);
                ASSERT_EQ(memory, expected) << components << " " << offset;
            }
        }
    });
}

}  // namespace
