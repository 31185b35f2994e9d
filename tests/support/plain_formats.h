// SPDX-License-Identifier: Apache-2.0
// How the plain model reads a pixel-format record, as tables of what each number stands for.
#ifndef TESTS_SUPPORT_PLAIN_FORMATS_H
#define TESTS_SUPPORT_PLAIN_FORMATS_H

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace plain {

struct PixelFormat {
    std::uint32_t flags;
    std::uint32_t fourcc;
    std::uint32_t bit_count;
    std::uint32_t dxgi_format;  // of the DX10 header, if there is one
};

struct FormatDecision {
    bool supported;
    int format;
    int components;
    int bits;
    std::vector<std::string> messages;
};

/// One accepted number and what it stands for.
struct FormatRow {
    std::uint32_t number;
    int format;
    int components;
    int bits;
};

/// One accepted pair of pixel-format flags and bits per pixel.
struct PlainRow {
    std::uint32_t flags;
    std::uint32_t bit_count;
    int format;
    int components;
};

/// The accepted DXGI formats, FourCC codes, and pairs of flags 0x40 and 0x41 with a bit count.
std::span<const FormatRow> dxgi_rows();
std::span<const FormatRow> fourcc_rows();
std::span<const PlainRow> plain_rows();

FormatDecision decide_format(const PixelFormat& pixel_format);

}  // namespace plain

#endif
