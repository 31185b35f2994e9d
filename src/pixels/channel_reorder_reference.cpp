// SPDX-License-Identifier: Apache-2.0

#include <bit>
#include <cstring>

#include "pixels/ChannelReorder.h"

namespace pelto::pixels::reference {

namespace {

struct Channel {
    explicit Channel(std::uint32_t channel_mask)
        : mask(channel_mask), shift(channel_mask == 0 ? 0 : std::countr_zero(channel_mask)) {}

    unsigned char cut(std::uint32_t pixel) const {
        return static_cast<unsigned char>((pixel & mask) >> shift);
    }

    std::uint32_t mask;
    int shift;
};

}  // namespace

void reorder_channels(const unsigned char* from, unsigned char* to, std::size_t pixels, int components,
                      const ChannelMasks& masks) {
    const Channel red(masks.red);
    const Channel green(masks.green);
    const Channel blue(masks.blue);
    const Channel alpha(masks.alpha);
    if (components == 4) {
        for (; pixels > 0; --pixels, from += 4, to += 4) {
            std::uint32_t pixel;
            std::memcpy(&pixel, from, 4);
            const unsigned char cut[] = {red.cut(pixel), green.cut(pixel), blue.cut(pixel), alpha.cut(pixel)};
            std::memcpy(to, cut, 4);
        }
    } else {
        for (; pixels > 0; --pixels, from += 3, to += 3) {
            const std::uint32_t pixel = from[0] | std::uint32_t{from[1]} << 8 | std::uint32_t{from[2]} << 16;
            to[0] = red.cut(pixel);
            to[1] = green.cut(pixel);
            to[2] = blue.cut(pixel);
        }
    }
}

}  // namespace pelto::pixels::reference
