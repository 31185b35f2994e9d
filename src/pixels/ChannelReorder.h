// SPDX-License-Identifier: Apache-2.0
// Cutting the channels of packed pixels out by bit masks, into the byte order red, green, blue (, alpha).
#ifndef PELTO_PIXELS_CHANNEL_REORDER_H
#define PELTO_PIXELS_CHANNEL_REORDER_H

#include <cstddef>
#include <cstdint>

namespace pelto::pixels {

/// Where each channel lies in a pixel read as a little-endian number; 0 for a channel that is not there.
struct ChannelMasks {
    std::uint32_t red;
    std::uint32_t green;
    std::uint32_t blue;
    std::uint32_t alpha;
};

/// Rewrites pixels of `components` (3 or 4) bytes. Each channel is moved down to its mask's lowest bit and
/// keeps its low 8 bits; one with an empty mask becomes 0. With 3 components there is no alpha, and mask
/// bits above the 24th find nothing.
///
/// Made once for all levels of an image. reference::reorder_channels defines the result; this gives the
/// same, with vector instructions for all masks but those of 3-byte pixels that are not whole bytes.
class ChannelReorder {
public:
    ChannelReorder(const ChannelMasks& masks, int components);

    /// Whether the masks leave every pixel as it is.
    bool keeps_pixels() const { return way_ == Way::kNone; }

    /// Rewrites `pixels` pixels from `from` to `to`, which are the same or do not overlap, and may lie at
    /// any address.
    void apply(const unsigned char* from, unsigned char* to, std::size_t pixels) const;

private:
    enum class Way { kNone, kWholeBytes, kBits };

    ChannelMasks masks_;
    int components_;
    Way way_;
    alignas(
        16) std::uint8_t tables_[3][3][16] = {};  // [new vector][old vector][byte]: see channel_reorder.cpp
};

namespace reference {

void reorder_channels(const unsigned char* from, unsigned char* to, std::size_t pixels, int components,
                      const ChannelMasks& masks);

}  // namespace reference
}  // namespace pelto::pixels

#endif
