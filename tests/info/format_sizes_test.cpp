// SPDX-License-Identifier: Apache-2.0
// Bytes of rows and slices, of every layout.
#include <cstdint>
#include <gtest/gtest.h>
#include <vTextureFormats.h>

#include "info/documented_formats.h"

namespace {

using namespace documented;

constexpr std::uint32_t kExtents[] = {1,     2,     3,          4,          5,          6,         7,
                                      8,     9,     10,         11,         12,         13,        255,
                                      65535, 65536, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFE, 0xFFFFFFFF};

__extension__ typedef unsigned __int128 Wide;

std::uint64_t cut(Wide bytes) { return bytes > UINT64_MAX ? UINT64_MAX : static_cast<std::uint64_t>(bytes); }

Wide blocks(std::uint32_t extent, unsigned block) { return (Wide{extent} + block - 1) / block; }

void expect_bytes(const vPixelFormat& format, unsigned block_width, unsigned block_height, Wide block_bytes) {
    for (const std::uint32_t width : kExtents) {
        const Wide row = blocks(width, block_width) * block_bytes;
        ASSERT_EQ(format.RowBytes(width), cut(row)) << format.name << ' ' << width;
        for (const std::uint32_t height : kExtents) {
            ASSERT_EQ(format.SliceBytes(width, height), cut(row * blocks(height, block_height)))
                << format.name << ' ' << width << " x " << height;
        }
    }
}

TEST(TextureFormats, CountRowsAndSlicesOfPixels) {
    for (const Documented& format : kOfPixels) {
        const vPixelFormat& found = dxgi(format.number);
        switch (format.number) {
            case 66:  // eight pixels a byte
                expect_bytes(found, 8, 1, 1);
                break;
            case 68:  // pairs of pixels
            case 69:
            case 107:
                expect_bytes(found, 2, 1, 4);
                break;
            case 108:
            case 109:
                expect_bytes(found, 2, 1, 8);
                break;
            default:
                expect_bytes(found, 1, 1, format.size / 8);
        }
    }
    expect_bytes(named("UYVY"), 2, 1, 4);
    expect_bytes(named("B8G8R8_UNORM"), 1, 1, 3);
    expect_bytes(named("L16_UNORM"), 1, 1, 2);
}

TEST(TextureFormats, CountRowsAndSlicesOfBlocks) {
    for (const Documented& format : kOfBlocks) expect_bytes(dxgi(format.number), 4, 4, format.size);
    std::uint32_t number = 134;
    for (const Footprint& footprint : kAstcFootprints) {
        expect_bytes(dxgi(number), footprint.width, footprint.height, 16);
        number += 4;
    }
}

TEST(TextureFormats, CountAllPlanes) {
    for (const Planar& format : kPlanar) {
        const vPixelFormat& found = dxgi(format.number);
        for (const std::uint32_t width : kExtents) {
            const Wide row = blocks(width, format.unit) * format.unit_bytes;
            ASSERT_EQ(found.RowBytes(width), cut(row)) << format.name << ' ' << width;
            for (const std::uint32_t height : kExtents) {
                const Wide chroma_rows = format.half_rows ? (Wide{height} + 1) / 2 : Wide{height};
                const Wide all = row * height + row * format.chroma_percent / 100 * chroma_rows;
                ASSERT_EQ(found.SliceBytes(width, height), cut(all))
                    << format.name << ' ' << width << " x " << height;
            }
        }
    }
}

// Sizes that the D3D11 documentation spells out.
TEST(TextureFormats, CountTheSizesOfKnownFrames) {
    EXPECT_EQ(named("NV12").SliceBytes(1920, 1080), 3110400U);
    EXPECT_EQ(named("P010").SliceBytes(1920, 1080), 6220800U);
    EXPECT_EQ(named("NV11").SliceBytes(8, 4), 8U * 4 * 2);
    EXPECT_EQ(named("BC1_UNORM").SliceBytes(1, 1), 8U);
    EXPECT_EQ(named("BC7_UNORM").SliceBytes(5, 5), 64U);
    EXPECT_EQ(named("R1_UNORM").SliceBytes(9, 3), 6U);
}

}  // namespace
