// SPDX-License-Identifier: Apache-2.0

#include "pixels/ChannelReorder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <optional>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "pixels/ChannelReorder.cpp"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"

HWY_BEFORE_NAMESPACE();
namespace pelto::pixels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// These rewrite as many pixels from the start as whole vectors cover, and return how many those are.

#if HWY_TARGET == HWY_SCALAR

// Without vectors all is left to the reference.
std::size_t Reorder3(const unsigned char*, unsigned char*, std::size_t, const std::uint8_t (*)[3][16]) {
    return 0;
}
std::size_t Reorder4(const unsigned char*, unsigned char*, std::size_t, const std::uint8_t (*)[3][16]) {
    return 0;
}
std::size_t Cut4(const unsigned char*, unsigned char*, std::size_t, const ChannelMasks&) { return 0; }

#else

// Four pixels are a vector of 16 bytes: one lookup, the same in each 16 bytes of longer vectors.
std::size_t Reorder4(const unsigned char* from, unsigned char* to, std::size_t pixels,
                     const std::uint8_t (*tables)[3][16]) {
    const hn::ScalableTag<std::uint8_t> d;
    const auto lookup = hn::LoadDup128(d, tables[0][0]);
    const std::size_t step = hn::Lanes(d);
    const std::size_t size = pixels * 4;
    const auto rewrite = [&](std::size_t offset) {
        hn::StoreU(hn::TableLookupBytesOr0(hn::LoadU(d, from + offset), lookup), d, to + offset);
    };
    std::size_t done = 0;
    if (from == to || size < step) {
        for (; size - done >= step; done += step) rewrite(done);
    } else {
        // Between two places vectors may overlap: the first and the last one reach to the ends, and those
        // between are stored at aligned addresses, which do not straddle cache lines.
        rewrite(0);
        done = (step - reinterpret_cast<std::uintptr_t>(to) % step) / 4 * 4;
        for (; size - done >= 4 * step; done += 4 * step) {
            // Loads before stores: a load just behind a store can be taken for one of the same address, and
            // wait, when the two places are apart by about a multiple of a page.
            const auto first = hn::LoadU(d, from + done);
            const auto second = hn::LoadU(d, from + done + step);
            const auto third = hn::LoadU(d, from + done + 2 * step);
            const auto fourth = hn::LoadU(d, from + done + 3 * step);
            hn::StoreU(hn::TableLookupBytesOr0(first, lookup), d, to + done);
            hn::StoreU(hn::TableLookupBytesOr0(second, lookup), d, to + done + step);
            hn::StoreU(hn::TableLookupBytesOr0(third, lookup), d, to + done + 2 * step);
            hn::StoreU(hn::TableLookupBytesOr0(fourth, lookup), d, to + done + 3 * step);
        }
        for (; size - done >= step; done += step) rewrite(done);
        rewrite(size - step);
        done = size;
    }
    return done / 4;
}

// A pixel is a lane of 32 bits.
std::size_t Cut4(const unsigned char* from, unsigned char* to, std::size_t pixels,
                 const ChannelMasks& masks) {
    const hn::ScalableTag<std::uint32_t> d;
    const hn::Repartition<std::uint8_t, decltype(d)> d8;
    const auto byte = hn::Set(d, 0xFF);
    const auto cut = [&](auto pixel, std::uint32_t mask) HWY_ATTR {
        const int shift = mask == 0 ? 0 : std::countr_zero(mask);
        return hn::And(hn::ShiftRightSame(hn::And(pixel, hn::Set(d, mask)), shift), byte);
    };
    const std::size_t step = hn::Lanes(d);
    std::size_t done = 0;
    for (; pixels - done >= step; done += step) {
        const auto pixel = hn::BitCast(d, hn::LoadU(d8, from + done * 4));
        const auto low = hn::Or(cut(pixel, masks.red), hn::ShiftLeft<8>(cut(pixel, masks.green)));
        const auto high = hn::Or(cut(pixel, masks.blue), hn::ShiftLeft<8>(cut(pixel, masks.alpha)));
        hn::StoreU(hn::BitCast(d8, hn::Or(low, hn::ShiftLeft<16>(high))), d8, to + done * 4);
    }
    return done;
}

// 16 pixels are three vectors of 16 bytes. A byte comes from its own vector or from a neighbour, one pixel
// away at the most, so each new vector is put together from lookups into the old ones around it.
std::size_t Reorder3(const unsigned char* from, unsigned char* to, std::size_t pixels,
                     const std::uint8_t (*tables)[3][16]) {
    const hn::FixedTag<std::uint8_t, 16> d;
    const auto first_from_first = hn::Load(d, tables[0][0]);
    const auto first_from_second = hn::Load(d, tables[0][1]);
    const auto second_from_first = hn::Load(d, tables[1][0]);
    const auto second_from_second = hn::Load(d, tables[1][1]);
    const auto second_from_third = hn::Load(d, tables[1][2]);
    const auto third_from_second = hn::Load(d, tables[2][1]);
    const auto third_from_third = hn::Load(d, tables[2][2]);

    const std::size_t groups = pixels / 16;
    for (std::size_t group = 0; group < groups; ++group, from += 48, to += 48) {
        const auto first = hn::LoadU(d, from);
        const auto second = hn::LoadU(d, from + 16);
        const auto third = hn::LoadU(d, from + 32);
        hn::StoreU(hn::Or(hn::TableLookupBytesOr0(first, first_from_first),
                          hn::TableLookupBytesOr0(second, first_from_second)),
                   d, to);
        hn::StoreU(hn::Or(hn::TableLookupBytesOr0(first, second_from_first),
                          hn::Or(hn::TableLookupBytesOr0(second, second_from_second),
                                 hn::TableLookupBytesOr0(third, second_from_third))),
                   d, to + 16);
        hn::StoreU(hn::Or(hn::TableLookupBytesOr0(second, third_from_second),
                          hn::TableLookupBytesOr0(third, third_from_third)),
                   d, to + 32);
    }
    return groups * 16;
}

#endif

}  // namespace pelto::pixels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pelto::pixels {

HWY_EXPORT(Reorder3);
HWY_EXPORT(Reorder4);
HWY_EXPORT(Cut4);

namespace {

/// For each byte of a rewritten pixel the byte of the old pixel that it comes from, or kZeroByte.
using ByteSources = std::array<std::uint8_t, 4>;
constexpr std::uint8_t kZeroByte = 0x80;

// Nothing when some mask cuts other bits than those of a whole byte.
std::optional<ByteSources> byte_sources(const ChannelMasks& masks, int components) {
    const std::uint32_t channels[] = {masks.red, masks.green, masks.blue, masks.alpha};
    ByteSources sources{};
    for (int i = 0; i < components; ++i) {
        const std::uint32_t mask = channels[i];
        const int shift = mask == 0 ? 0 : std::countr_zero(mask);
        const bool empty = mask == 0 || shift >= 8 * components;
        if (!empty && (shift % 8 != 0 || (mask >> shift & 0xFF) != 0xFF)) return std::nullopt;
        sources[static_cast<std::size_t>(i)] = empty ? kZeroByte : static_cast<std::uint8_t>(shift / 8);
    }
    return sources;
}

}  // namespace

ChannelReorder::ChannelReorder(const ChannelMasks& masks, int components)
    : masks_(masks), components_(components), way_(Way::kBits) {
    const std::optional<ByteSources> sources = byte_sources(masks, components);
    if (!sources) return;
    constexpr ByteSources kInOrder = {0, 1, 2, 3};
    const bool in_order = std::equal(kInOrder.begin(), kInOrder.begin() + components, sources->begin());
    way_ = in_order ? Way::kNone : Way::kWholeBytes;

    // Byte i of three vectors in a row comes from byte `from` of the old three, or is zero.
    const auto pixel_size = static_cast<std::size_t>(components);
    for (std::size_t i = 0; i < 48; ++i) {
        const std::uint8_t source = (*sources)[i % pixel_size];
        const std::size_t from = i / pixel_size * pixel_size + source;
        for (std::size_t old = 0; old < 3; ++old) {
            const bool here = source != kZeroByte && from / 16 == old;
            tables_[i / 16][old][i % 16] = here ? static_cast<std::uint8_t>(from % 16) : kZeroByte;
        }
    }
}

void ChannelReorder::apply(const unsigned char* from, unsigned char* to, std::size_t pixels) const {
    const auto pixel_size = static_cast<std::size_t>(components_);
    if (way_ == Way::kNone) {
        if (from != to) std::memcpy(to, from, pixels * pixel_size);
        return;
    }
    std::size_t done = 0;
    if (way_ == Way::kWholeBytes) {
        done = components_ == 3 ? HWY_DYNAMIC_DISPATCH(Reorder3)(from, to, pixels, tables_)
                                : HWY_DYNAMIC_DISPATCH(Reorder4)(from, to, pixels, tables_);
    } else if (components_ == 4) {
        done = HWY_DYNAMIC_DISPATCH(Cut4)(from, to, pixels, masks_);
    }
    reference::reorder_channels(from + done * pixel_size, to + done * pixel_size, pixels - done, components_,
                                masks_);
}

}  // namespace pelto::pixels
#endif
