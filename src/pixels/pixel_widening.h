// SPDX-License-Identifier: Apache-2.0
// Widening pixels from three channels to four.
//
// Each function writes `pixels` pixels to `to`, which must not overlap with those at `from`; both may lie at
// any address. The functions in `reference` define the results; the others give the same, as fast as the
// machine's vector instructions allow.
#ifndef PELTO_PIXELS_PIXEL_WIDENING_H
#define PELTO_PIXELS_PIXEL_WIDENING_H

#include <cstddef>

namespace pelto::pixels {

/// 3 bytes a pixel to 4: the same, then 255.
void widen_rgb8(const unsigned char* from, unsigned char* to, std::size_t pixels);

/// 3 bytes a pixel to 4: the three in reverse order, then 255.
void widen_bgr8(const unsigned char* from, unsigned char* to, std::size_t pixels);

/// 12 bytes a pixel to 16: the bits of three floats, then those of 1.0f.
void widen_rgb32f(const unsigned char* from, unsigned char* to, std::size_t pixels);

namespace reference {

void widen_rgb8(const unsigned char* from, unsigned char* to, std::size_t pixels);
void widen_bgr8(const unsigned char* from, unsigned char* to, std::size_t pixels);
void widen_rgb32f(const unsigned char* from, unsigned char* to, std::size_t pixels);

}  // namespace reference
}  // namespace pelto::pixels

#endif
