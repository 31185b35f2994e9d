// SPDX-License-Identifier: Apache-2.0

#include "pixels/pixel_widening.h"

#include <cstdint>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "pixels/pixel_widening.cpp"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"

HWY_BEFORE_NAMESPACE();
namespace pelto::pixels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// These widen as many pixels from the start as whole vectors cover, and return how many those are.

#if HWY_TARGET == HWY_SCALAR

// Without vectors all is left to the reference.
std::size_t WidenRGB8(const unsigned char*, unsigned char*, std::size_t) { return 0; }
std::size_t WidenBGR8(const unsigned char*, unsigned char*, std::size_t) { return 0; }
std::size_t WidenRGB32F(const unsigned char*, unsigned char*, std::size_t) { return 0; }

#else

using Bytes = hn::ScalableTag<std::uint8_t>;

// Loads whole vectors of old pixels, of which the first three quarters are used: 12 bytes are put at the
// start of each 16, and `widen` makes new pixels of them. Between two places vectors may overlap: the first
// and the last one reach to the ends, and those between are stored at aligned addresses, which do not
// straddle cache lines.
template <class Widen>
HWY_INLINE std::size_t WidenPixels(const unsigned char* from, unsigned char* to, std::size_t pixels,
                                   std::size_t old_size, Widen widen) {
    const Bytes d;
    const hn::Repartition<std::uint32_t, Bytes> d32;
    const std::size_t new_size = old_size / 3 * 4;
    const std::size_t vector_size = hn::Lanes(d);
    if (pixels * old_size < vector_size) return 0;

    HWY_ALIGN std::uint32_t lanes[hn::MaxLanes(d32)];
    for (std::size_t i = 0; i < hn::Lanes(d32); ++i) {
        lanes[i] = static_cast<std::uint32_t>(i / 4 * 3 + (i % 4 < 3 ? i % 4 : 0));
    }
    const auto spread = hn::SetTableIndices(d32, lanes);
    const auto load = [&](std::size_t pixel) HWY_ATTR { return hn::LoadU(d, from + pixel * old_size); };
    const auto store = [&](std::size_t pixel, auto old) HWY_ATTR {
        const auto placed = hn::TableLookupLanes(hn::BitCast(d32, old), spread);
        hn::StoreU(widen(hn::BitCast(d, placed)), d, to + pixel * new_size);
    };

    const std::size_t step = vector_size / new_size;
    const std::size_t last = (pixels * old_size - vector_size) / old_size;  // the last that can be loaded
    store(0, load(0));
    std::size_t pixel = (vector_size - reinterpret_cast<std::uintptr_t>(to) % vector_size) / new_size;
    for (; pixel + 3 * step < last; pixel += 4 * step) {
        const auto first = load(pixel);
        const auto second = load(pixel + step);
        const auto third = load(pixel + 2 * step);
        const auto fourth = load(pixel + 3 * step);
        store(pixel, first);
        store(pixel + step, second);
        store(pixel + 2 * step, third);
        store(pixel + 3 * step, fourth);
    }
    for (; pixel < last; pixel += step) store(pixel, load(pixel));
    store(last, load(last));
    return last + step;
}

HWY_ALIGN constexpr std::uint8_t kRGB8[16] = {0, 1, 2, 0x80, 3, 4, 5, 0x80, 6, 7, 8, 0x80, 9, 10, 11, 0x80};
HWY_ALIGN constexpr std::uint8_t kBGR8[16] = {2, 1, 0, 0x80, 5, 4, 3, 0x80, 8, 7, 6, 0x80, 11, 10, 9, 0x80};
HWY_ALIGN constexpr std::uint8_t kOpaque[16] = {0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255};

HWY_INLINE std::size_t Widen8(const unsigned char* from, unsigned char* to, std::size_t pixels,
                              const std::uint8_t* order) {
    const Bytes d;
    const auto lookup = hn::LoadDup128(d, order);
    const auto opaque = hn::LoadDup128(d, kOpaque);
    return WidenPixels(from, to, pixels, 3, [&](auto old) HWY_ATTR {
        return hn::Or(hn::TableLookupBytesOr0(old, lookup), opaque);
    });
}

std::size_t WidenRGB8(const unsigned char* from, unsigned char* to, std::size_t pixels) {
    return Widen8(from, to, pixels, kRGB8);
}

std::size_t WidenBGR8(const unsigned char* from, unsigned char* to, std::size_t pixels) {
    return Widen8(from, to, pixels, kBGR8);
}

std::size_t WidenRGB32F(const unsigned char* from, unsigned char* to, std::size_t pixels) {
    // The bits of 1.0f are 0x3F800000.
    HWY_ALIGN constexpr std::uint8_t kOne[16] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x80, 0x3F};
    HWY_ALIGN constexpr std::uint8_t kThree[16] = {255, 255, 255, 255, 255, 255,
                                                   255, 255, 255, 255, 255, 255};
    const Bytes d;
    const auto one = hn::LoadDup128(d, kOne);
    const auto three = hn::LoadDup128(d, kThree);
    return WidenPixels(from, to, pixels, 12,
                       [&](auto old) HWY_ATTR { return hn::Or(hn::And(old, three), one); });
}

#endif

}  // namespace pelto::pixels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pelto::pixels {

HWY_EXPORT(WidenRGB8);
HWY_EXPORT(WidenBGR8);
HWY_EXPORT(WidenRGB32F);

void widen_rgb8(const unsigned char* from, unsigned char* to, std::size_t pixels) {
    const std::size_t done = HWY_DYNAMIC_DISPATCH(WidenRGB8)(from, to, pixels);
    reference::widen_rgb8(from + done * 3, to + done * 4, pixels - done);
}

void widen_bgr8(const unsigned char* from, unsigned char* to, std::size_t pixels) {
    const std::size_t done = HWY_DYNAMIC_DISPATCH(WidenBGR8)(from, to, pixels);
    reference::widen_bgr8(from + done * 3, to + done * 4, pixels - done);
}

void widen_rgb32f(const unsigned char* from, unsigned char* to, std::size_t pixels) {
    const std::size_t done = HWY_DYNAMIC_DISPATCH(WidenRGB32F)(from, to, pixels);
    reference::widen_rgb32f(from + done * 12, to + done * 16, pixels - done);
}

}  // namespace pelto::pixels
#endif
