// SPDX-License-Identifier: Apache-2.0

#include "support/plain_formats.h"

#include "support/dds_file.h"

namespace plain {
namespace {

using support::four_cc;

FormatDecision refuse() { return {false, 2, 0, 8, {}}; }

FormatDecision refuse_with(const std::string& message) { return {false, 2, 0, 8, {message}}; }

const FormatRow* find(std::span<const FormatRow> rows, std::uint32_t number) {
    for (const FormatRow& row : rows)
        if (row.number == number) return &row;
    return nullptr;
}

FormatDecision accept(const FormatRow& row) { return {true, row.format, row.components, row.bits, {}}; }

FormatDecision decide_plain(const PixelFormat& pixel_format) {
    for (const PlainRow& row : plain_rows())
        if (row.flags == pixel_format.flags && row.bit_count == pixel_format.bit_count)
            return {true, row.format, row.components, 8, {}};
    const bool rgb = pixel_format.flags == support::kRgb || pixel_format.flags == support::kRgbWithAlpha;
    if (!rgb && pixel_format.bit_count == 8) return {true, 0, 1, 8, {}};
    return refuse_with("DDS Format not supported.");
}

}  // namespace

std::span<const FormatRow> dxgi_rows() {
    static constexpr FormatRow rows[] = {
        {6, 6, 3, 32},  {10, 4, 4, 16}, {41, 5, 1, 32}, {71, 8, 3, 8},  {74, 9, 4, 8},
        {77, 10, 4, 8}, {80, 11, 1, 8}, {81, 12, 1, 8}, {83, 13, 2, 8}, {84, 14, 2, 8},
        {87, 3, 3, 8},  {95, 16, 3, 8}, {96, 15, 3, 8},
    };
    return rows;
}

std::span<const FormatRow> fourcc_rows() {
    static constexpr FormatRow rows[] = {
        {four_cc("DXT1"), 8, 3, 8},
        {four_cc("DXT3"), 9, 4, 8},
        {four_cc("DXT5"), 10, 4, 8},
        {four_cc("ATI1"), 11, 1, 8},
        {four_cc("BC4U"), 11, 1, 8},
        {four_cc("BC4S"), 12, 1, 8},
        {four_cc("ATI2"), 13, 2, 8},
        {four_cc("BC5U"), 13, 2, 8},
        {four_cc("BC5S"), 13, 2, 8},
        {113, 4, 4, 16},
        {114, 5, 1, 32},
        {116, 7, 4, 32},
    };
    return rows;
}

std::span<const PlainRow> plain_rows() {
    static constexpr PlainRow rows[] = {
        {0x41, 32, 2, 4}, {0x41, 8, 0, 1}, {0x40, 32, 2, 4}, {0x40, 24, 1, 3}, {0x40, 8, 0, 1},
    };
    return rows;
}

FormatDecision decide_format(const PixelFormat& pixel_format) {
    if ((pixel_format.flags & support::kHasFourCC) == 0) return decide_plain(pixel_format);
    if (pixel_format.fourcc != four_cc("DX10")) {
        const FormatRow* row = find(fourcc_rows(), pixel_format.fourcc);
        return row == nullptr ? refuse() : accept(*row);
    }
    const FormatRow* row = find(dxgi_rows(), pixel_format.dxgi_format);
    if (row != nullptr) return accept(*row);
    const std::string number = std::to_string(static_cast<std::int32_t>(pixel_format.dxgi_format));
    return refuse_with("The DXGI type " + number + " for the DDS file : is not supported.");
}

}  // namespace plain
