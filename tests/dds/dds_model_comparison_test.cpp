// SPDX-License-Identifier: Apache-2.0
// Thousands of generated files, each loaded and compared with the plain model.
#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>
#include <utility>

#include "support/dds_check.h"
#include "support/plain_formats.h"
#include "vDDSImage.h"

namespace {

using namespace support;

/// Every way in which a header can announce a supported format.
std::vector<FileHeader> supported_headers() {
    std::vector<FileHeader> headers;
    for (const plain::FormatRow& row : plain::dxgi_rows()) headers.push_back(dxgi_header(row.number));
    for (const plain::FormatRow& row : plain::fourcc_rows()) headers.push_back(fourcc_header(row.number));
    for (const plain::PlainRow& row : plain::plain_rows())
        headers.push_back(plain_header(row.flags, row.bit_count));
    for (std::uint32_t flags : {0u, 0x2u, 0x20000u}) headers.push_back(plain_header(flags, 8));
    for (std::uint32_t bits : {8u, 24u, 32u}) {
        headers.push_back(dxgi_header(71));
        headers.back().pixel_format.flags = kRgb;
        headers.back().pixel_format.bit_count = bits;
    }
    return headers;
}

struct Shape {
    std::uint32_t caps2;
    std::uint32_t depth;
};

constexpr Shape kShapes[] = {
    {0, 0},        {0, 1},        {0, 3},
    {kVolume, 4},  {kVolume, 0},  {kVolume, 1},
    {kCubeMap, 0}, {kCubeMap, 2}, {kCubeMap | kVolume, 1},
    {0xFC00, 0},
};

constexpr plain::Masks kMasks[] = {
    {0, 0, 0, 0},
    {0xFF, 0xFF00, 0xFF0000, 0xFF000000},
    {0xFF0000, 0xFF00, 0xFF, 0xFF000000},
    {0xFF000000, 0xFF0000, 0xFF00, 0xFF},
    {0xFF00, 0xFF0000, 0xFF000000, 0xFF},
    {0xFF0000, 0xFF00, 0xFF, 0},
    {0, 0xFF00, 0xFF, 0xFF000000},
    {0xFF0000, 0, 0xFF, 0xFF000000},
    {0xFF0000, 0xFF00, 0, 0xFF000000},
    {0, 0, 0, 0xFF000000},
    {0xF800, 0x7E0, 0x1F, 0},
    {0x7C00, 0x3E0, 0x1F, 0x8000},
    {0x3FF, 0xFFC00, 0x3FF00000, 0xC0000000},
    {0xFF, 0xFF, 0xFF, 0xFF},
    {0x00FFFF00, 0x0000FFFF, 0xFFFFFFFF, 0xFFFF0000},
    {0x80000000, 0x80000000, 0x1, 0x80000000},
    {0x80000001, 0x55555555, 0xAAAAAAAA, 0x01010101},
};

std::uint32_t natural_levels(const FileHeader& header) {
    std::uint32_t levels = 1;
    for (std::uint32_t extent = std::max({header.width, header.height, header.depth}); extent > 1;
         extent /= 2)
        ++levels;
    return levels;
}

constexpr std::uint32_t kMipChoices = 5;

std::uint32_t mip_count(const FileHeader& header, std::uint32_t choice) {
    const std::uint32_t natural = natural_levels(header);
    const std::uint32_t counts[kMipChoices] = {0, 1, 2, natural, natural + 3};
    return counts[choice % kMipChoices];
}

FileHeader with_masks(const FileHeader& header, const plain::Masks& masks) {
    return header.with_masks(masks.red, masks.green, masks.blue, masks.alpha);
}

void compare(const FileHeader& header, Flip flip, Read read, std::uint32_t seed) {
    SCOPED_TRACE(describe(header) + (flip == Flip::yes ? ", flipped" : "") +
                 (read == Read::header_only ? ", header only" : ""));
    ASSERT_TRUE(loads_as_modelled(complete_file(header, seed), flip, read));
}

/// Both ways of flipping.
void compare(const FileHeader& header, std::uint32_t seed) {
    for (Flip flip : {Flip::no, Flip::yes}) ASSERT_NO_FATAL_FAILURE(compare(header, flip, Read::all, seed));
}

// Shape, level count and masks go round with periods that share no factor with each other's.
TEST(DdsModel, EveryFormatAtEveryExtentUpTo17) {
    std::uint32_t count = 0;
    for (const FileHeader& format : supported_headers())
        for (std::uint32_t width = 1; width <= 17; ++width)
            for (std::uint32_t height = 1; height <= 17; ++height) {
                const Shape& shape = kShapes[count * 7 % std::size(kShapes)];
                FileHeader header =
                    format.sized(width, height).with_depth(shape.depth).with_caps2(shape.caps2);
                header = header.with_mips(mip_count(header, count / 3));
                if (count % 2 == 0) header = with_masks(header, kMasks[count / 2 % std::size(kMasks)]);
                const Flip flip = count / 5 % 2 == 0 ? Flip::no : Flip::yes;
                ASSERT_NO_FATAL_FAILURE(compare(header, flip, Read::all, count));
                ++count;
            }
    EXPECT_GT(count, 10000u);
}

TEST(DdsModel, EveryFormatInEveryShapeWithEveryLevelCount) {
    std::uint32_t seed = 0;
    for (const FileHeader& format : supported_headers())
        for (const Shape& shape : kShapes)
            for (std::uint32_t choice = 0; choice < kMipChoices; ++choice) {
                FileHeader header = format.sized(12, 9).with_depth(shape.depth).with_caps2(shape.caps2);
                header = header.with_mips(mip_count(header, choice));
                ASSERT_NO_FATAL_FAILURE(compare(header, ++seed));
            }
}

TEST(DdsModel, EveryFormatWithEveryMaskLayout) {
    std::uint32_t seed = 0;
    for (const FileHeader& format : supported_headers())
        for (const plain::Masks& masks : kMasks) {
            const FileHeader header = with_masks(format.sized(7, 5).with_depth(2).with_mips(4), masks);
            ASSERT_NO_FATAL_FAILURE(compare(header, ++seed));
        }
}

TEST(DdsModel, EveryFormatDescribedByItsHeader) {
    std::uint32_t seed = 0;
    for (const FileHeader& format : supported_headers())
        for (const Shape& shape : kShapes)
            for (std::uint32_t choice = 0; choice < kMipChoices; ++choice) {
                FileHeader header = format.sized(300, 200).with_depth(shape.depth).with_caps2(shape.caps2);
                header = header.with_mips(mip_count(header, choice));
                const Bytes file = header_bytes(with_masks(header, kMasks[++seed % std::size(kMasks)]));
                for (Flip flip : {Flip::no, Flip::yes})
                    ASSERT_TRUE(loads_as_modelled(file, flip, Read::header_only)) << describe(header);
            }
}

TEST(DdsModel, EveryBlockFormatAtSeveralHundredPixels) {
    std::uint32_t seed = 0;
    for (std::uint32_t dxgi : {71u, 74u, 77u, 80u, 81u, 83u, 84u, 95u})
        for (auto [width, height] : {std::pair{260u, 136u}, std::pair{131u, 203u}, std::pair{4u, 600u}}) {
            const FileHeader header = dxgi_header(dxgi).sized(width, height).with_mips(10);
            ASSERT_NO_FATAL_FAILURE(compare(header, ++seed));
        }
}

TEST(DdsModel, EveryPixelWidthAtSeveralHundredPixels) {
    const FileHeader formats[] = {plain_header(0, 8), plain_header(kRgb, 24), plain_header(kRgb, 32),
                                  dxgi_header(87),    dxgi_header(10),        dxgi_header(41),
                                  dxgi_header(6),     fourcc_header(116)};
    std::uint32_t seed = 0;
    for (const FileHeader& format : formats)
        for (auto [width, height] : {std::pair{261u, 67u}, std::pair{64u, 130u}}) {
            const FileHeader header =
                with_masks(format.sized(width, height).with_mips(9), kMasks[2 + seed % 4]);
            ASSERT_NO_FATAL_FAILURE(compare(header, ++seed));
        }
}

/// Pseudo-random choices for headers that are mostly refused.
class Choice {
public:
    explicit Choice(std::uint32_t seed) : bytes_(random_bytes(64, seed)) {}

    template <std::size_t n>
    std::uint32_t of(const std::uint32_t (&values)[n]) {
        return values[next() % n];
    }

    std::uint32_t number() {
        std::uint32_t value = 0;
        for (int i = 0; i < 4; ++i) value = value << 8 | next();
        return value;
    }

    std::uint32_t next() { return bytes_[at_++ % bytes_.size()]; }

private:
    Bytes bytes_;
    std::size_t at_ = 0;
};

FileHeader random_header(std::uint32_t seed) {
    Choice choice(seed);
    FileHeader header;
    header.width = 1 + choice.next() % 9;
    header.height = 1 + choice.next() % 9;
    header.depth = choice.of({0, 0, 1, 2, 0xFFFFFFFF});
    header.mip_count = choice.of({0, 1, 2, 3, 4, 0x80000001, 0xFFFFFFFF});
    header.caps2 = choice.of({0, 0, kCubeMap, kVolume, kCubeMap | kVolume, 0x400});
    FilePixelFormat& format = header.pixel_format;
    format.flags = choice.of({0, 1, 2, 4, 4, 4, 4, 5, 0x40, 0x41, 0x44, 0x45, 0x42, 0x20000});
    format.fourcc = choice.of({0, four_cc("DX10"), four_cc("DX10"), four_cc("DX10"), four_cc("DXT1"),
                               four_cc("DXT2"), four_cc("DXT5"), four_cc("BC5S"), four_cc("ATI1"), 113, 115});
    format.bit_count = choice.of({0, 8, 8, 16, 24, 24, 32, 32, 33, 64});
    header.dxgi_format = choice.next() % 128;
    if (choice.next() % 2 == 0) header = with_masks(header, kMasks[choice.next() % std::size(kMasks)]);
    header.flags = choice.number();
    header.pitch = choice.number();
    header.caps = choice.number();
    header.reserved = choice.number();
    header.array_size = choice.number();
    return header;
}

TEST(DdsModel, RandomHeaders) {
    for (std::uint32_t seed = 0; seed < 4000; ++seed) {
        SCOPED_TRACE(seed);
        const FileHeader header = random_header(seed);
        const Flip flip = seed % 3 == 0 ? Flip::yes : Flip::no;
        ASSERT_NO_FATAL_FAILURE(compare(header, flip, seed % 4 == 0 ? Read::header_only : Read::all, seed));
    }
}

TEST(DdsModel, OneImageThroughManyFiles) {
    vDDSImage image;
    for (std::uint32_t seed = 0; seed < 500; ++seed) {
        SCOPED_TRACE(seed);
        FileHeader header = random_header(seed);
        if (seed % 2 == 0) header.pixel_format = fourcc_header(four_cc("DXT5")).pixel_format;
        const Bytes file = complete_file(header, seed);
        const plain::Image expected = plain::load(file, true, false);
        if (!expected.messages.empty()) continue;
        ASSERT_EQ(load(image, file, Flip::yes), expected.loaded);
        ASSERT_TRUE(same(image, expected));
    }
}

TEST(DdsModel, FullBufferOfEveryFormat) {
    std::uint32_t seed = 0;
    for (const FileHeader& format : supported_headers())
        for (std::uint32_t caps2 : {0u, kCubeMap, kVolume}) {
            const FileHeader header = format.sized(11, 6).with_depth(2).with_mips(4).with_caps2(caps2);
            const Bytes file = complete_file(header, ++seed);
            const vDDSImage image = loaded(file, Flip::yes);
            const plain::Image expected = plain::load(file, true, false);
            for (int count = -1; count <= 3; ++count) {
                const Bytes whole = plain::full_buffer(expected, count);
                Bytes buffer(whole.size());
                EXPECT_EQ(image.compute_full_size(count), whole.size());
                EXPECT_TRUE(image.compute_full_buffer(chars(buffer), buffer.size(), count));
                ASSERT_TRUE(same_bytes(buffer, whole)) << describe(header);
                EXPECT_FALSE(image.compute_full_buffer(chars(buffer), buffer.size() - 1, count));
            }
        }
}

}  // namespace
