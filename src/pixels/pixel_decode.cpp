// SPDX-License-Identifier: Apache-2.0

#include "pixels/pixel_decode.h"

#include <array>
#include <cstdint>
#include <cstring>

#include "pixels/pixel_decode_steps.h"
#include "pixels/pixel_widening.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "pixels/pixel_decode.cpp"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"

HWY_BEFORE_NAMESPACE();
namespace pelto::pixels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// These decode as many pixels from the start as whole vectors cover, and return how many those are. They get
// steps by value: stores to `to` cannot change those.

#if HWY_TARGET == HWY_SCALAR || HWY_TARGET == HWY_EMU128

// Without vectors all is left to the reference; emulated ones would also store to aligned addresses alone.
std::size_t PlaceBytes(const ByteSteps&, std::size_t, const unsigned char*, unsigned char*, std::size_t) {
    return 0;
}
std::size_t DecodeNarrow(std::array<NarrowSteps, 4>, std::size_t, const unsigned char*, unsigned char*,
                         std::size_t) {
    return 0;
}
std::size_t DecodeRGBA8(std::array<IntegerSteps, 4>, std::size_t, const unsigned char*, unsigned char*,
                        std::size_t) {
    return 0;
}
std::size_t DecodeRGBA16(std::array<IntegerSteps, 4>, std::size_t, const unsigned char*, unsigned char*,
                         std::size_t) {
    return 0;
}
std::size_t DecodeRGBA32F(std::array<FloatSteps, 4>, BitField, std::size_t, const unsigned char*,
                          unsigned char*, std::size_t) {
    return 0;
}

#else

using Words = hn::ScalableTag<std::uint32_t>;
using Signed = hn::RebindToSigned<Words>;
using Floats = hn::RebindToFloat<Words>;
using Bytes = hn::Repartition<std::uint8_t, Words>;
using Vector = hn::VFromD<Words>;

// Calls `use` with the words of a vector's pixels: the low ones, and the high ones of 8 bytes.
template <std::size_t kSize, class Use>
HWY_INLINE void WithWords(const unsigned char* from, Use use) {
    const Words d;
    const Bytes d8;
    if constexpr (kSize == 1) {
        const auto words = hn::PromoteTo(d, hn::LoadU(hn::Rebind<std::uint8_t, Words>(), from));
        use(words, words);
    } else if constexpr (kSize == 2) {
        const hn::Rebind<std::uint16_t, Words> d16;
        const hn::Repartition<std::uint8_t, decltype(d16)> half;
        const auto words = hn::PromoteTo(d, hn::BitCast(d16, hn::LoadU(half, from)));
        use(words, words);
    } else if constexpr (kSize == 3) {
        // 12 bytes are put at the start of each 16, and 3 of them into each word.
        HWY_ALIGN constexpr std::uint8_t kPlaces[16] = {0, 1, 2, 0x80, 3, 4,  5,  0x80,
                                                        6, 7, 8, 0x80, 9, 10, 11, 0x80};
        HWY_ALIGN std::uint32_t lanes[hn::MaxLanes(Words())];
        for (std::size_t i = 0; i < hn::Lanes(d); ++i) {
            lanes[i] = static_cast<std::uint32_t>(i / 4 * 3 + (i % 4 < 3 ? i % 4 : 0));
        }
        const auto packed = hn::BitCast(d, hn::LoadU(d8, from));
        const auto placed = hn::BitCast(d8, hn::TableLookupLanes(packed, hn::SetTableIndices(d, lanes)));
        const auto words = hn::BitCast(d, hn::TableLookupBytesOr0(placed, hn::LoadDup128(d8, kPlaces)));
        use(words, words);
    } else if constexpr (kSize == 4) {
        const auto words = hn::BitCast(d, hn::LoadU(d8, from));
        use(words, words);
    } else {
        const auto first = hn::BitCast(d, hn::LoadU(d8, from));
        const auto second = hn::BitCast(d, hn::LoadU(d8, from + hn::Lanes(d8)));
        use(hn::ConcatEven(d, second, first), hn::ConcatOdd(d, second, first));
    }
}

// Calls decode(pixel, low words, high words) for one vector after the other. The last reaches to the end,
// over pixels of the one before.
template <std::size_t kSize, class Decode>
HWY_INLINE std::size_t ForPixels(const unsigned char* from, std::size_t pixels, Decode decode) {
    const std::size_t step = hn::Lanes(Words());
    const std::size_t loaded = step * (kSize == 3 ? 4 : kSize);
    if (pixels * kSize < loaded) return 0;
    const std::size_t last = (pixels * kSize - loaded) / kSize;  // the last that can be loaded
    for (std::size_t pixel = 0;; pixel += step) {
        if (pixel > last) pixel = last;
        WithWords<kSize>(from + pixel * kSize,
                         [&](Vector low, Vector high) HWY_ATTR { decode(pixel, low, high); });
        if (pixel == last) return last + step;
    }
}

template <class Decode>
HWY_INLINE std::size_t ForPixels(std::size_t size, const unsigned char* from, std::size_t pixels,
                                 Decode decode) {
    switch (size) {
        case 1:
            return ForPixels<1>(from, pixels, decode);
        case 2:
            return ForPixels<2>(from, pixels, decode);
        case 3:
            return ForPixels<3>(from, pixels, decode);
        case 4:
            return ForPixels<4>(from, pixels, decode);
        default:
            return ForPixels<8>(from, pixels, decode);
    }
}

HWY_INLINE Vector Cut(const BitField& field, Vector low, Vector high) {
    const Vector word = field.word == 0 ? low : high;
    return hn::And(hn::ShiftRightSame(word, field.position), hn::Set(Words(), field.mask));
}

using Halves = hn::Repartition<std::uint16_t, Words>;

// Two channels at once, in the halves of a word: each is left in the high byte of its half.
HWY_INLINE hn::VFromD<Halves> ToHighBytes(const NarrowSteps& first, const NarrowSteps& second, Vector low,
                                          Vector high) {
    const Words d;
    const Halves halves;
    const auto both = [&](std::uint32_t NarrowSteps::*step) HWY_ATTR {
        return hn::BitCast(halves, hn::Set(d, first.*step | second.*step << 16));
    };
    const auto cut = hn::Or(Cut(first.field, low, high), hn::ShiftLeft<16>(Cut(second.field, low, high)));
    const auto flipped = hn::Xor(hn::BitCast(halves, cut), both(&NarrowSteps::flip));
    const auto number = hn::SaturatedSub(flipped, both(&NarrowSteps::least));
    return hn::Add(hn::Mul(number, both(&NarrowSteps::multiplier)), both(&NarrowSteps::addend));
}

template <std::uint32_t kMost>
HWY_INLINE Vector ToInteger(const IntegerSteps& steps, Vector low, Vector high) {
    const Words d;
    const auto least = hn::Set(d, steps.least);
    const auto flipped = hn::Xor(Cut(steps.field, low, high), hn::Set(d, steps.flip));
    const auto number = hn::Sub(hn::Max(flipped, least), least);
    const auto fine = hn::Add(hn::Mul(number, hn::Set(d, steps.multiplier)), hn::Set(d, steps.addend));
    auto result = hn::ShiftRightSame(fine, steps.shift);
    if constexpr (kMost > 255) {
        result = hn::Add(result, hn::Mul(number, hn::Set(d, steps.factor)));
    }
    return hn::Min(result, hn::Set(d, kMost));
}

HWY_INLINE Vector FromHalf(Vector half) {
    const Words d;
    const auto magnitude = hn::And(half, hn::Set(d, 0x7FFF));
    const auto sign = hn::ShiftLeft<16>(hn::Xor(half, magnitude));
    const auto rebias = hn::Set(d, (127u - 15u) << 23);
    const auto normal = hn::Add(hn::ShiftLeft<13>(magnitude), rebias);
    const auto infinite = hn::Add(normal, rebias);
    const auto subnormal =
        hn::Mul(hn::ConvertTo(Floats(), hn::BitCast(Signed(), magnitude)), hn::Set(Floats(), 0x1p-24F));
    auto result = hn::IfThenElse(hn::Lt(magnitude, hn::Set(d, 0x7C00)), normal, infinite);
    result = hn::IfThenElse(hn::Lt(magnitude, hn::Set(d, 0x400)), hn::BitCast(d, subnormal), result);
    return hn::Or(result, sign);
}

// The bits of floats.
HWY_INLINE Vector ToFloat(const FloatSteps& steps, const BitField& exponent, Vector low, Vector high) {
    const Words d;
    const Floats df;
    const Vector bits = Cut(steps.field, low, high);
    switch (steps.way) {
        case FloatSteps::Way::kBits:
            return bits;
        case FloatSteps::Way::kHalf:
            return FromHalf(hn::ShiftLeftSame(bits, steps.shift));
        case FloatSteps::Way::kShared: {
            const auto offset = hn::Set(d, static_cast<std::uint32_t>(steps.offset));
            const auto power = hn::ShiftLeft<23>(hn::Add(Cut(exponent, low, high), offset));
            const auto mantissa = hn::ConvertTo(df, hn::BitCast(Signed(), bits));
            return hn::BitCast(d, hn::Mul(mantissa, hn::BitCast(df, power)));
        }
        case FloatSteps::Way::kRatio:
            break;
    }
    const auto flipped = hn::BitCast(Signed(), hn::Xor(bits, hn::Set(d, steps.flip)));
    const auto number =
        hn::Max(hn::Sub(flipped, hn::Set(Signed(), steps.offset)), hn::Set(Signed(), steps.lowest));
    return hn::BitCast(d, hn::Div(hn::ConvertTo(df, number), hn::Set(df, steps.divisor)));
}

std::size_t PlaceBytes(const ByteSteps& steps, std::size_t size, const unsigned char* from, unsigned char* to,
                       std::size_t pixels) {
    const Bytes d8;
    const auto places = hn::LoadDup128(d8, steps.places);
    const auto added = hn::LoadDup128(d8, steps.added);
    return ForPixels(size, from, pixels, [&](std::size_t pixel, Vector words, Vector) HWY_ATTR {
        const auto placed = hn::TableLookupBytesOr0(hn::BitCast(d8, words), places);
        hn::StoreU(hn::Or(placed, added), d8, to + pixel * 4);
    });
}

std::size_t DecodeNarrow(std::array<NarrowSteps, 4> steps, std::size_t size, const unsigned char* from,
                         unsigned char* to, std::size_t pixels) {
    const Bytes d8;
    const auto high_bytes = hn::BitCast(Halves(), hn::Set(Words(), 0xFF00FF00));
    return ForPixels(size, from, pixels, [&](std::size_t pixel, Vector low, Vector high) HWY_ATTR {
        const auto red_blue = ToHighBytes(steps[0], steps[2], low, high);
        const auto green_alpha = ToHighBytes(steps[1], steps[3], low, high);
        const auto all = hn::Or(hn::ShiftRight<8>(red_blue), hn::And(green_alpha, high_bytes));
        hn::StoreU(hn::BitCast(d8, all), d8, to + pixel * 4);
    });
}

std::size_t DecodeRGBA8(std::array<IntegerSteps, 4> steps, std::size_t size, const unsigned char* from,
                        unsigned char* to, std::size_t pixels) {
    return ForPixels(size, from, pixels, [&](std::size_t pixel, Vector low, Vector high) HWY_ATTR {
        const auto red = ToInteger<255>(steps[0], low, high);
        const auto green = ToInteger<255>(steps[1], low, high);
        const auto blue = ToInteger<255>(steps[2], low, high);
        const auto alpha = ToInteger<255>(steps[3], low, high);
        const auto first = hn::Or(red, hn::ShiftLeft<8>(green));
        const auto second = hn::Or(blue, hn::ShiftLeft<8>(alpha));
        const auto all = hn::Or(first, hn::ShiftLeft<16>(second));
        hn::StoreU(hn::BitCast(Bytes(), all), Bytes(), to + pixel * 4);
    });
}

std::size_t DecodeRGBA16(std::array<IntegerSteps, 4> steps, std::size_t size, const unsigned char* from,
                         unsigned char* to, std::size_t pixels) {
    return ForPixels(size, from, pixels, [&](std::size_t pixel, Vector low, Vector high) HWY_ATTR {
        const auto red = ToInteger<65535>(steps[0], low, high);
        const auto green = ToInteger<65535>(steps[1], low, high);
        const auto blue = ToInteger<65535>(steps[2], low, high);
        const auto alpha = ToInteger<65535>(steps[3], low, high);
        hn::StoreInterleaved2(hn::Or(red, hn::ShiftLeft<16>(green)), hn::Or(blue, hn::ShiftLeft<16>(alpha)),
                              Words(), reinterpret_cast<std::uint32_t*>(to + pixel * 8));
    });
}

std::size_t DecodeRGBA32F(std::array<FloatSteps, 4> steps, BitField exponent, std::size_t size,
                          const unsigned char* from, unsigned char* to, std::size_t pixels) {
    return ForPixels(size, from, pixels, [&](std::size_t pixel, Vector low, Vector high) HWY_ATTR {
        const auto red = ToFloat(steps[0], exponent, low, high);
        const auto green = ToFloat(steps[1], exponent, low, high);
        const auto blue = ToFloat(steps[2], exponent, low, high);
        const auto alpha = ToFloat(steps[3], exponent, low, high);
        hn::StoreInterleaved4(red, green, blue, alpha, Words(),
                              reinterpret_cast<std::uint32_t*>(to + pixel * 16));
    });
}

#endif

}  // namespace pelto::pixels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pelto::pixels {

HWY_EXPORT(PlaceBytes);
HWY_EXPORT(DecodeNarrow);
HWY_EXPORT(DecodeRGBA8);
HWY_EXPORT(DecodeRGBA16);
HWY_EXPORT(DecodeRGBA32F);

namespace {

// Red, green, blue and perhaps alpha one after the other, as they are decoded.
bool lies_as_decoded(const PixelLayout& layout, int channels, int bits, Coding coding) {
    if (layout.block_pixels != 1 || layout.block_bytes * 8 != channels * bits) return false;
    for (int i = 0; i < channels; ++i) {
        const ChannelBits& channel = layout.channels[i];
        if (channel.first != i * bits || channel.count != bits || channel.coding != coding) return false;
    }
    return true;
}

}  // namespace

void decode_rgba8(const PixelLayout& layout, const unsigned char* from, unsigned char* to,
                  std::size_t pixels) {
    std::size_t done = 0;
    ByteSteps bytes;
    std::array<NarrowSteps, 4> narrow;
    std::array<IntegerSteps, 4> steps;
    if (lies_as_decoded(layout, 4, 8, Coding::kUNorm)) {
        std::memcpy(to, from, pixels * 4);
        return;
    }
    if (find_byte_steps(layout, bytes)) {
        done = HWY_DYNAMIC_DISPATCH(PlaceBytes)(bytes, layout.block_bytes, from, to, pixels);
    } else if (find_narrow_steps(layout, narrow)) {
        done = HWY_DYNAMIC_DISPATCH(DecodeNarrow)(narrow, layout.block_bytes, from, to, pixels);
    } else if (find_integer_steps(layout, 255, steps)) {
        done = HWY_DYNAMIC_DISPATCH(DecodeRGBA8)(steps, layout.block_bytes, from, to, pixels);
    }
    reference::decode_rgba8(layout, from + done * layout.block_bytes, to + done * 4, pixels - done);
}

void decode_rgba16(const PixelLayout& layout, const unsigned char* from, unsigned char* to,
                   std::size_t pixels) {
    std::size_t done = 0;
    std::array<IntegerSteps, 4> steps;
    if (lies_as_decoded(layout, 4, 16, Coding::kUNorm)) {
        std::memcpy(to, from, pixels * 8);
        return;
    }
    if (find_integer_steps(layout, 65535, steps)) {
        done = HWY_DYNAMIC_DISPATCH(DecodeRGBA16)(steps, layout.block_bytes, from, to, pixels);
    }
    reference::decode_rgba16(layout, from + done * layout.block_bytes, to + done * 8, pixels - done);
}

void decode_rgba32f(const PixelLayout& layout, const unsigned char* from, unsigned char* to,
                    std::size_t pixels) {
    std::size_t done = 0;
    std::array<FloatSteps, 4> steps;
    BitField exponent;
    if (lies_as_decoded(layout, 4, 32, Coding::kFloat)) {
        std::memcpy(to, from, pixels * 16);
        return;
    }
    if (lies_as_decoded(layout, 3, 32, Coding::kFloat)) {
        widen_rgb32f(from, to, pixels);
        return;
    }
    if (find_float_steps(layout, steps, exponent)) {
        done = HWY_DYNAMIC_DISPATCH(DecodeRGBA32F)(steps, exponent, layout.block_bytes, from, to, pixels);
    }
    reference::decode_rgba32f(layout, from + done * layout.block_bytes, to + done * 16, pixels - done);
}

}  // namespace pelto::pixels
#endif
