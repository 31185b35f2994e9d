// SPDX-License-Identifier: Apache-2.0

#include "pixels/pixel_decode_steps.h"

#include <bit>

namespace pelto::pixels {

namespace {

constexpr std::size_t kAlpha = 3;

std::uint32_t low_bits(int count) { return static_cast<std::uint32_t>((std::uint64_t{1} << count) - 1); }

bool find_field(const PixelLayout& layout, const ChannelBits& channel, BitField& field) {
    if (layout.block_pixels != 1 || (layout.block_bytes > 4 && layout.block_bytes != 8)) return false;
    if (channel.count == 0) return true;
    field = {channel.first / 32, channel.first % 32, low_bits(channel.count)};
    return field.position + channel.count <= 32;
}

// t * most / greatest, a half upwards, for t up to `greatest`. Of the factor's whole part nothing is lost,
// and the rest is held as finely as 32 bits allow, rounded up. The tests try every number of up to 16 bits.
void spread(std::uint32_t greatest, std::uint32_t most, IntegerSteps& steps) {
    if (most > 255) steps.factor = most / greatest;
    const std::uint32_t rest = most - steps.factor * greatest;
    steps.shift = rest == 0 ? 1 : std::countl_zero(rest);
    const std::uint64_t shifted = std::uint64_t{rest} << steps.shift;
    steps.multiplier = static_cast<std::uint32_t>((shifted + greatest - 1) / greatest);
    steps.addend = 1u << (steps.shift - 1);
}

// t * 255 / greatest, a half upwards. 16 bits leave few addends that are right for all t, and none for the
// signed numbers of 7 bits.
bool spread_narrow(std::uint32_t greatest, NarrowSteps& steps) {
    constexpr std::uint32_t kSigned7 = 126;
    constexpr std::uint32_t kUnsigned6 = 63;
    constexpr std::uint32_t kSigned8 = 254;
    if (greatest == kSigned7) return false;
    steps.multiplier = (255 * 256 + greatest / 2) / greatest;
    steps.addend = greatest == kUnsigned6 ? 132 : greatest == kSigned8 ? 129 : 128;
    return true;
}

}  // namespace

bool find_narrow_steps(const PixelLayout& layout, std::array<NarrowSteps, 4>& steps) {
    for (std::size_t i = 0; i < 4; ++i) {
        const ChannelBits& channel = layout.channels[i];
        NarrowSteps& to = steps[i];
        to = NarrowSteps();
        if (channel.count > 8 || !find_field(layout, channel, to.field)) return false;
        if (channel.count == 0) {
            to.addend = i == kAlpha ? 255 * 256 : 0;
            continue;
        }
        const std::uint32_t sign = 1u << (channel.count - 1);
        switch (channel.coding) {
            case Coding::kUNorm:
                if (!spread_narrow(low_bits(channel.count), to)) return false;
                break;
            case Coding::kSNorm:
                // The two lowest numbers are one.
                if (channel.count == 1) return false;
                to.flip = sign;
                to.least = 1;
                if (!spread_narrow(low_bits(channel.count) - 1, to)) return false;
                break;
            case Coding::kUInt:
                to.multiplier = 256;
                break;
            case Coding::kSInt:
                to.flip = sign;
                to.least = sign;
                to.multiplier = 256;
                break;
            case Coding::kFloat:
            case Coding::kSharedExponent:
                return false;
        }
    }
    return true;
}

bool find_integer_steps(const PixelLayout& layout, std::uint32_t most, std::array<IntegerSteps, 4>& steps) {
    for (std::size_t i = 0; i < 4; ++i) {
        const ChannelBits& channel = layout.channels[i];
        IntegerSteps& to = steps[i];
        to = IntegerSteps();
        if (!find_field(layout, channel, to.field)) return false;
        if (channel.count == 0) {
            to.addend = i == kAlpha ? most : 0;
            continue;
        }
        const std::uint32_t sign = 1u << (channel.count - 1);
        switch (channel.coding) {
            case Coding::kUNorm:
                if (channel.count > 16) return false;
                spread(low_bits(channel.count), most, to);
                break;
            case Coding::kSNorm:
                // The two lowest numbers are one.
                if (channel.count > 16 || channel.count == 1) return false;
                to.flip = sign;
                to.least = 1;
                spread(low_bits(channel.count) - 1, most, to);
                break;
            case Coding::kUInt:
                to.multiplier = 1;
                break;
            case Coding::kSInt:
                to.flip = sign;
                to.least = sign;
                to.multiplier = 1;
                break;
            case Coding::kFloat:
            case Coding::kSharedExponent:
                return false;
        }
    }
    return true;
}

bool find_float_steps(const PixelLayout& layout, std::array<FloatSteps, 4>& steps, BitField& exponent) {
    if (!find_field(layout, layout.exponent, exponent)) return false;
    for (std::size_t i = 0; i < 4; ++i) {
        const ChannelBits& channel = layout.channels[i];
        FloatSteps& to = steps[i];
        to = FloatSteps();
        if (!find_field(layout, channel, to.field)) return false;
        if (channel.count == 0) {
            to.flip = i == kAlpha ? 1 : 0;
            continue;
        }
        if (channel.coding == Coding::kFloat) {
            to.way = channel.count == 32 ? FloatSteps::Way::kBits : FloatSteps::Way::kHalf;
            to.shift = channel.count == 32 ? 0 : channel.count == 16 ? 0 : 15 - channel.count;
            continue;
        }
        // Floats have room for 24 bits.
        if (channel.count > 24) return false;
        const auto sign = std::int32_t{1} << (channel.count - 1);
        const auto greatest = static_cast<std::int32_t>(low_bits(channel.count));
        switch (channel.coding) {
            case Coding::kUNorm:
                to.divisor = static_cast<float>(greatest);
                break;
            case Coding::kSNorm:
                if (channel.count == 1) return false;
                to.flip = static_cast<std::uint32_t>(sign);
                to.offset = sign;
                to.lowest = 1 - sign;
                to.divisor = static_cast<float>(sign - 1);
                break;
            case Coding::kSInt:
                to.flip = static_cast<std::uint32_t>(sign);
                to.offset = sign;
                to.lowest = -sign;
                break;
            case Coding::kSharedExponent:
                to.way = FloatSteps::Way::kShared;
                to.offset = 127 - 15 - channel.count;
                break;
            case Coding::kUInt:
            case Coding::kFloat:
                break;
        }
    }
    return true;
}

bool find_byte_steps(const PixelLayout& layout, ByteSteps& steps) {
    if (layout.block_pixels != 1 || layout.block_bytes > 4) return false;
    for (std::size_t i = 0; i < 16; ++i) {
        const ChannelBits& channel = layout.channels[i % 4];
        const bool there = channel.count != 0;
        if (there && (channel.count != 8 || channel.first % 8 != 0)) return false;
        if (there && channel.coding != Coding::kUNorm && channel.coding != Coding::kUInt) return false;
        steps.places[i] = static_cast<std::uint8_t>(there ? i / 4 * 4 + channel.first / 8 : 0x80);
        steps.added[i] = !there && i % 4 == kAlpha ? 255 : 0;
    }
    return true;
}

}  // namespace pelto::pixels
