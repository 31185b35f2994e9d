// SPDX-License-Identifier: Apache-2.0

#include "pixels/block_flip.h"

#include <cstdint>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "pixels/block_flip.cpp"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"

HWY_BEFORE_NAMESPACE();
namespace pelto::pixels::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR

// Without vectors all is left to the reference.
std::size_t FlipBC1(unsigned char*, std::size_t) { return 0; }
std::size_t FlipBC3(unsigned char*, std::size_t) { return 0; }
std::size_t FlipBC4(unsigned char*, std::size_t) { return 0; }

#else

// Where each byte of 16 comes from; kNone gives 0.
constexpr std::uint8_t kNone = 0x80;

// A BC1 block's row bytes change places.
HWY_ALIGN constexpr std::uint8_t kBC1[16] = {0, 1, 2, 3, 7, 6, 5, 4, 8, 9, 10, 11, 15, 14, 13, 12};

// A 12-bit pixel row is three nibbles, so the index bytes of a flipped BC4 block are made of nibbles that
// lie in other bytes: the low one is the high nibble of one byte, the high one the low nibble of another.
struct NibbleTables {
    HWY_ALIGN std::uint8_t whole[16];  // bytes taken as they are
    HWY_ALIGN std::uint8_t low[16];    // bytes whose high nibble becomes the low one
    HWY_ALIGN std::uint8_t high[16];   // bytes whose low nibble becomes the high one
};

constexpr NibbleTables kBC4 = {
    {0, 1, kNone, kNone, kNone, kNone, kNone, kNone, 8, 9, kNone, kNone, kNone, kNone, kNone, kNone},
    {kNone, kNone, 6, 7, 5, 3, 4, 2, kNone, kNone, 14, 15, 13, 11, 12, 10},
    {kNone, kNone, 7, 5, 6, 4, 2, 3, kNone, kNone, 15, 13, 14, 12, 10, 11},
};

constexpr NibbleTables kBC3 = {
    {0, 1, kNone, kNone, kNone, kNone, kNone, kNone, 8, 9, 10, 11, 15, 14, 13, 12},
    {kNone, kNone, 6, 7, 5, 3, 4, 2, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone},
    {kNone, kNone, 7, 5, 6, 4, 2, 3, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone},
};

// Rewrites whole vectors from the start of `bytes`; returns how many bytes that covers.
std::size_t FlipBC1(unsigned char* bytes, std::size_t size) {
    const hn::ScalableTag<std::uint8_t> d;
    const auto table = hn::LoadDup128(d, kBC1);
    std::size_t done = 0;
    for (; size - done >= hn::Lanes(d); done += hn::Lanes(d)) {
        hn::StoreU(hn::TableLookupBytes(hn::LoadU(d, bytes + done), table), d, bytes + done);
    }
    return done;
}

HWY_INLINE std::size_t FlipNibbles(const NibbleTables& tables, unsigned char* bytes, std::size_t size) {
    const hn::ScalableTag<std::uint8_t> d;
    const auto whole = hn::LoadDup128(d, tables.whole);
    const auto low = hn::LoadDup128(d, tables.low);
    const auto high = hn::LoadDup128(d, tables.high);
    std::size_t done = 0;
    for (; size - done >= hn::Lanes(d); done += hn::Lanes(d)) {
        const auto old = hn::LoadU(d, bytes + done);
        const auto flipped = hn::Or(hn::ShiftRight<4>(hn::TableLookupBytesOr0(old, low)),
                                    hn::ShiftLeft<4>(hn::TableLookupBytesOr0(old, high)));
        hn::StoreU(hn::Or(hn::TableLookupBytesOr0(old, whole), flipped), d, bytes + done);
    }
    return done;
}

std::size_t FlipBC3(unsigned char* bytes, std::size_t size) { return FlipNibbles(kBC3, bytes, size); }

std::size_t FlipBC4(unsigned char* bytes, std::size_t size) { return FlipNibbles(kBC4, bytes, size); }

#endif

}  // namespace pelto::pixels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pelto::pixels {

HWY_EXPORT(FlipBC1);
HWY_EXPORT(FlipBC3);
HWY_EXPORT(FlipBC4);

void flip_bc1_blocks(unsigned char* blocks, std::size_t count) {
    const std::size_t done = HWY_DYNAMIC_DISPATCH(FlipBC1)(blocks, count * 8);
    reference::flip_bc1_blocks(blocks + done, count - done / 8);
}

void flip_bc3_blocks(unsigned char* blocks, std::size_t count) {
    const std::size_t done = HWY_DYNAMIC_DISPATCH(FlipBC3)(blocks, count * 16);
    reference::flip_bc3_blocks(blocks + done, count - done / 16);
}

void flip_bc4_blocks(unsigned char* blocks, std::size_t count) {
    const std::size_t done = HWY_DYNAMIC_DISPATCH(FlipBC4)(blocks, count * 8);
    reference::flip_bc4_blocks(blocks + done, count - done / 8);
}

}  // namespace pelto::pixels
#endif
