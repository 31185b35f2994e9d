// SPDX-License-Identifier: Apache-2.0
// The note inexactFlip against vDDSImage::flip: the flipped level, decoded, is or is not the mirror image.
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vDDSImage.h>
#include <vTextureInfo.h>

#include "info/info_check.h"
#include "support/dds_check.h"
#include "support/plain_blocks.h"

namespace {

using namespace support;
using namespace info_check;
using namespace TOZ::SUPPORTED_FORMAT;

struct Extent {
    std::size_t width, height, depth;
};

std::size_t block_size(Type format) { return format == DXT1 || format == BC4U || format == BC4S ? 8 : 16; }

plain::Texel texel_at(const Bytes& level, Type format, const Extent& extent, std::size_t x, std::size_t y,
                      std::size_t z) {
    const std::size_t across = (extent.width + 3) / 4;
    const std::size_t down = (extent.height + 3) / 4;
    const std::size_t block = (z * down + y / 4) * across + x / 4;
    return plain::decode_block(format, level.data() + block * block_size(format))[y % 4 * 4 + x % 4];
}

bool same(const plain::Texel& a, const plain::Texel& b) {
    return a.red == b.red && a.green == b.green && a.blue == b.blue && a.alpha == b.alpha;
}

bool flips_exactly(Type format, const Extent& extent, std::uint32_t seed) {
    const std::size_t blocks = (extent.width + 3) / 4 * ((extent.height + 3) / 4) * extent.depth;
    const Bytes before = random_bytes(blocks * block_size(format), seed);
    Bytes after = before;
    vDDSImage::flip(chars(after), static_cast<int>(extent.width), static_cast<int>(extent.height),
                    static_cast<int>(extent.depth), after.size(), format, true);
    for (std::size_t z = 0; z < extent.depth; ++z) {
        for (std::size_t y = 0; y < extent.height; ++y) {
            for (std::size_t x = 0; x < extent.width; ++x) {
                if (!same(texel_at(after, format, extent, x, y, z),
                          texel_at(before, format, extent, x, extent.height - 1 - y, z))) {
                    return false;
                }
            }
        }
    }
    return true;
}

// Random blocks may be their own mirror images, but not time and again.
bool flips_exactly(Type format, const Extent& extent) {
    for (std::uint32_t seed = 0; seed < 20; ++seed) {
        if (!flips_exactly(format, extent, seed)) return false;
    }
    return true;
}

TEST(InexactFlip, IsNotedWhereTheFlippedBlocksAreNoMirrorImage) {
    struct Kind {
        std::uint32_t dxgi;
        Type format;
    };
    constexpr Kind kKinds[] = {{71, DXT1}, {74, DXT3}, {77, DXT5},      {80, BC4U},     {81, BC4S},
                               {83, BC5U}, {84, BC5S}, {95, BC6H_UF16}, {96, BC6H_SF16}};
    int exact = 0;
    for (const Kind& kind : kKinds) {
        for (std::size_t height = 1; height <= 17; ++height) {
            for (std::size_t width = 1; width <= 9; ++width) {
                for (std::size_t depth = 1; depth <= 2; ++depth) {
                    FileHeader header = dxgi_header(kind.dxgi).sized(static_cast<std::uint32_t>(width),
                                                                     static_cast<std::uint32_t>(height));
                    if (depth > 1) {
                        header = header.with_depth(static_cast<std::uint32_t>(depth)).with_caps2(kVolume);
                        header.resource_dimension = 4;
                    }
                    SCOPED_TRACE(describe(header));
                    const bool expected = flips_exactly(kind.format, {width, height, depth});
                    const vTextureInfo info = read(complete_file(header));
                    ASSERT_NE(info.HasNote(vTextureNote::eInexactFlip), expected);
                    ASSERT_TRUE(info.faithful);
                    exact += expected ? 1 : 0;
                }
            }
        }
    }
    // Heights 8 and 16 with widths 4 and 8, and a single row in any width and depth.
    EXPECT_EQ(exact, 7 * 4 + 9 * 9 * 2);
}

TEST(InexactFlip, IsNotedOfNoUncompressedLevel) {
    for (const std::uint32_t height : {1U, 2U, 3U, 4U, 7U}) {
        for (const FileHeader& header : {fourcc_header(113), dxgi_header(41), plain_header(0x20000, 8)}) {
            EXPECT_FALSE(read(complete_file(header.sized(3, height))).HasNote(vTextureNote::eInexactFlip));
        }
    }
}

TEST(InexactFlip, IsNotedOfNoFormatThatTheLoaderDoesNotTake) {
    Bytes file = header_bytes(dxgi_header(98).sized(4, 4));
    file.resize(file.size() + 16);
    EXPECT_TRUE(read(file).notes.empty());
}

TEST(InexactFlip, SaysTheExtent) {
    const vTextureInfo info = read(complete_file(fourcc_header(four_cc("DXT1")).sized(8, 12)));
    ASSERT_EQ(info.notes.size(), 1U);
    EXPECT_EQ(info.notes[0].text, "vDDSImage::flip does not mirror its base level of 8 x 12 pixels exactly");
}

}  // namespace
