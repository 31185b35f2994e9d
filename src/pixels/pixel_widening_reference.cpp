// SPDX-License-Identifier: Apache-2.0

#include <cstring>

#include "pixels/pixel_widening.h"

namespace pelto::pixels::reference {

void widen_rgb8(const unsigned char* from, unsigned char* to, std::size_t pixels) {
    for (; pixels > 0; --pixels, from += 3, to += 4) {
        to[0] = from[0];
        to[1] = from[1];
        to[2] = from[2];
        to[3] = 255;
    }
}

void widen_bgr8(const unsigned char* from, unsigned char* to, std::size_t pixels) {
    for (; pixels > 0; --pixels, from += 3, to += 4) {
        to[0] = from[2];
        to[1] = from[1];
        to[2] = from[0];
        to[3] = 255;
    }
}

void widen_rgb32f(const unsigned char* from, unsigned char* to, std::size_t pixels) {
    constexpr float kOne = 1.0F;
    for (; pixels > 0; --pixels, from += 12, to += 16) {
        std::memcpy(to, from, 12);
        std::memcpy(to + 12, &kOne, 4);
    }
}

}  // namespace pelto::pixels::reference
