// SPDX-License-Identifier: Apache-2.0

#include "pixels/pixel_widening.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <vector>

#include "pixels/ChannelReorder.h"
#include "support/bytes.h"
#include "support/every_target.h"
#include "support/guarded_memory.h"

namespace {

using support::Bytes;
using support::GuardedMemory;
using support::random_bytes;

using Widen = void (*)(const unsigned char*, unsigned char*, std::size_t);

struct Kernel {
    const char* name;
    std::size_t old_size;  // bytes of a pixel
    std::size_t new_size;
    Widen fast;
    Widen reference;
};

namespace px = pelto::pixels;

// BGRA8 is not widened, but converted on the same terms: from one place to another.
constexpr px::ChannelMasks kBlueFirst = {0xFF0000, 0xFF00, 0xFF, 0xFF000000};

void reorder_bgra8(const unsigned char* from, unsigned char* to, std::size_t pixels) {
    px::ChannelReorder(kBlueFirst, 4).apply(from, to, pixels);
}

void reference_bgra8(const unsigned char* from, unsigned char* to, std::size_t pixels) {
    px::reference::reorder_channels(from, to, pixels, 4, kBlueFirst);
}

const Kernel kKernels[] = {
    {"BGRA8", 4, 4, reorder_bgra8, reference_bgra8},
    {"RGB8", 3, 4, px::widen_rgb8, px::reference::widen_rgb8},
    {"BGR8", 3, 4, px::widen_bgr8, px::reference::widen_bgr8},
    {"RGB32F", 12, 16, px::widen_rgb32f, px::reference::widen_rgb32f},
};

Bytes widened(Widen widen, const Bytes& from, std::size_t pixels, std::size_t new_size) {
    Bytes to(pixels * new_size);
    widen(from.data(), to.data(), pixels);
    return to;
}

TEST(PixelWideningReference, KeepsOrTurnsTheOrderAndAddsFullAlpha) {
    const Bytes pixels = {1, 2, 3, 4, 5, 6};
    EXPECT_EQ(widened(px::reference::widen_rgb8, pixels, 2, 4), (Bytes{1, 2, 3, 255, 4, 5, 6, 255}));
    EXPECT_EQ(widened(px::reference::widen_bgr8, pixels, 2, 4), (Bytes{3, 2, 1, 255, 6, 5, 4, 255}));
}

TEST(PixelWideningReference, AddsAFloatOfOne) {
    const Bytes pixel = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    EXPECT_EQ(widened(px::reference::widen_rgb32f, pixel, 1, 16),
              (Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 0, 0, 0x80, 0x3F}));
}

// Memory that ends, or starts, at a page that must not be touched.
TEST(PixelWidening, EveryTargetEqualsTheReferenceForAllSizesUpToPagesThatMustNotBeTouched) {
    support::on_every_target([] {
        for (const Kernel& kernel : kKernels) {
            SCOPED_TRACE(kernel.name);
            for (std::size_t pixels = 0; pixels * kernel.old_size <= 4096; ++pixels) {
                const Bytes from =
                    random_bytes(pixels * kernel.old_size, static_cast<std::uint32_t>(pixels) + 1);
                const Bytes expected = widened(kernel.reference, from, pixels, kernel.new_size);
                for (const GuardedMemory::Side side :
                     {GuardedMemory::Side::kStart, GuardedMemory::Side::kEnd}) {
                    GuardedMemory input(from.size(), side);
                    GuardedMemory output(expected.size(), side);
                    input.fill(from);
                    kernel.fast(input.data(), output.data(), pixels);
                    ASSERT_EQ(output.bytes(), expected) << pixels;
                    ASSERT_EQ(input.bytes(), from) << pixels;
                }
            }
        }
    });
}

TEST(PixelWidening, EveryTargetTakesAnyAddressAndWritesOnlyThePixels) {
    constexpr std::size_t kMargin = 64;
    constexpr std::size_t kPixels = 77;
    support::on_every_target([] {
        for (const Kernel& kernel : kKernels) {
            SCOPED_TRACE(kernel.name);
            for (std::size_t offset = 0; offset < kMargin; ++offset) {
                const Bytes from = random_bytes(kMargin + kPixels * kernel.old_size, 7);
                Bytes to = random_bytes(kMargin + kPixels * kernel.new_size + kMargin, 8);
                Bytes expected = to;
                kernel.fast(from.data() + offset, to.data() + offset, kPixels);
                kernel.reference(from.data() + offset, expected.data() + offset, kPixels);
                ASSERT_EQ(to, expected) << offset;
            }
        }
    });
}

}  // namespace
