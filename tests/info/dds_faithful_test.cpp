// SPDX-License-Identifier: Apache-2.0
// vTextureInfo::faithful against what vDDSImage really holds, pixel by pixel.
#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vDDSImage.h>
#include <vTextureInfo.h>

#include "info/dds_model.h"
#include "info/info_check.h"
#include "support/dds_check.h"

namespace {

using namespace support;
using namespace info_check;
using Values = std::array<double, 4>;

constexpr std::uint32_t kAlphaOnly = 0x2;
constexpr std::uint32_t kPalette = 0x20;
constexpr std::uint32_t kLuminance = 0x20000;
constexpr std::uint32_t kBump = 0x80000;

double cut_out(std::uint32_t pixel, std::uint32_t mask, bool is_signed) {
    const int bits = std::popcount(mask);
    const auto number = static_cast<double>((pixel & mask) >> std::countr_zero(mask));
    if (!is_signed) return number / (std::exp2(bits) - 1);
    const double half = std::exp2(bits - 1);
    return std::max((number < half ? number : number - 2 * half) / (half - 1), -1.0);
}

// What the masks mean. A channel without a mask is 0, alpha 1; but luminance or alpha alone fills the pixel.
Values meant(const FilePixelFormat& format, std::uint32_t pixel) {
    const bool is_signed = (format.flags & kBump) != 0;
    const auto value = [&](std::uint32_t mask, double none) {
        return mask == 0 ? none : cut_out(pixel, mask, is_signed);
    };
    if (format.flags & kAlphaOnly) return {0, 0, 0, value(format.alpha, pixel / 255.0)};
    if (format.flags == kLuminance && format.red == 0 && format.alpha == 0) {
        return {pixel / 255.0, pixel / 255.0, pixel / 255.0, 1};
    }
    const double red = value(format.red, 0);
    if (format.flags & kLuminance) return {red, red, red, value(format.alpha, 1)};
    // A single red channel has no other colours to compare.
    if (format.green == 0 && format.blue == 0 && format.alpha == 0) return {red, red, red, 1};
    return {red, value(format.green, 0), value(format.blue, 0), value(format.alpha, 1)};
}

// What a user of the image takes a pixel for.
Values held(TOZ::SUPPORTED_FORMAT::Type type, const std::uint8_t* pixel) {
    const auto value = [&](int i) { return pixel[i] / 255.0; };
    switch (type) {
        case TOZ::SUPPORTED_FORMAT::LUMINANCE8:
            return {value(0), value(0), value(0), 1};
        case TOZ::SUPPORTED_FORMAT::RGB8:
            return {value(0), value(1), value(2), 1};
        default:
            return {value(0), value(1), value(2), value(3)};
    }
}

bool same_pixels(const FileHeader& header, TOZ::SUPPORTED_FORMAT::Type type, const std::uint8_t* file,
                 const Bytes& pixels) {
    const std::size_t size = header.pixel_format.bit_count / 8;
    for (std::size_t at = 0; at + size <= pixels.size(); at += size) {
        std::uint32_t pixel = 0;
        for (std::size_t i = size; i-- > 0;) pixel = pixel << 8 | file[at + i];
        const Values expected = meant(header.pixel_format, pixel);
        const Values got = held(type, pixels.data() + at);
        for (std::size_t i = 0; i < 4; ++i) {
            if (std::abs(expected[i] - got[i]) > 1e-9) return false;
        }
    }
    return true;
}

// The signed block formats; a FourCC may name one that the image takes for unsigned.
bool same_meaning(const std::string& name, TOZ::SUPPORTED_FORMAT::Type type) {
    if (name == "BC4_SNORM") return type == TOZ::SUPPORTED_FORMAT::BC4S;
    if (name == "BC5_SNORM") return type == TOZ::SUPPORTED_FORMAT::BC5S;
    return type != TOZ::SUPPORTED_FORMAT::BC4S && type != TOZ::SUPPORTED_FORMAT::BC5S;
}

const vDDSSurface& surface(const vDDSImage& image, int face, int level) {
    return level == 0 ? static_cast<const vDDSSurface&>(image[face]) : image[face].get_mipmap(level - 1);
}

bool same_level(const vDDSImage& image, const vDDSSurface& got, const dds_model::Level& level,
                const FileHeader& header, const Bytes& file) {
    const auto extent = [](int value) { return static_cast<std::uint32_t>(value); };
    if (extent(got.get_width()) != level.width || extent(got.get_height()) != level.height ||
        extent(got.get_depth()) != level.depth || got.get_size() != level.bytes) {
        return false;
    }
    const Bytes pixels = pixels_of(got);
    const std::uint8_t* const bytes = file.data() + level.offset;
    if ((header.pixel_format.flags & kHasFourCC) == 0) {
        return (header.pixel_format.flags & kPalette) == 0 &&
               same_pixels(header, image.get_format(), bytes, pixels);
    }
    return std::equal(pixels.begin(), pixels.end(), bytes);
}

bool holds_what_the_file_means(const dds_model::Pixels& pixels, const FileHeader& header, const Bytes& file) {
    const dds_model::File expected = dds_model::describe(header, pixels.name, file.size());
    if (plain::file_size(header_bytes(header)) > file.size() || expected.end > file.size()) return false;
    const vDDSImage image = loaded(file);
    const std::uint32_t faces = image.is_cubemap() ? 6 : 1;
    if (expected.layers != 1 || expected.faces != faces) return false;
    if (!same_meaning(pixels.name, image.get_format())) return false;
    return std::all_of(expected.table.begin(), expected.table.end(), [&](const dds_model::Level& level) {
        return same_level(image, surface(image, static_cast<int>(level.face), static_cast<int>(level.level)),
                          level, header, file);
    });
}

std::string notes_of(const vTextureInfo& info) {
    std::string notes;
    for (const vTextureNote& note : info.notes) notes += note.text + "; ";
    return notes;
}

// Whether the loader takes the format, whatever the rest of the header says.
bool is_loaded(const FileHeader& header) { return plain::load(header_bytes(header), false, true).loaded; }

void expect_told(const dds_model::Pixels& pixels, const FileHeader& header, std::mt19937& random,
                 int (&counts)[2]) {
    const std::uint64_t promised = plain::file_size(header_bytes(header));
    Bytes file = header_bytes(header);
    const std::uint64_t described = dds_model::describe(header, pixels.name, 0).end;
    const Bytes rest =
        random_bytes(std::max(promised, described) - file.size(), static_cast<std::uint32_t>(random()));
    file.insert(file.end(), rest.begin(), rest.end());
    const vTextureInfo info = read(file);
    ASSERT_TRUE(info.Described()) << info.problem.sentence;
    ASSERT_TRUE(info.loads);
    ASSERT_EQ(info.format, pixels.name);
    ASSERT_EQ(info.faithful, holds_what_the_file_means(pixels, header, file)) << notes_of(info);
    ++counts[info.faithful ? 1 : 0];
}

TEST(DdsFaithful, IsWhetherTheLoaderHoldsWhatTheFileMeans) {
    const std::uint32_t seed = std::random_device()();
    std::mt19937 random(seed);
    int counts[2] = {};
    for (int i = 0; i < 20000; ++i) {
        const dds_model::Pixels& pixels = dds_model::all_pixels()[random() % dds_model::all_pixels().size()];
        FileHeader header = dds_model::random_header(pixels, random);
        if (!is_loaded(header)) continue;
        // Enough pixels that one of them differs, and more than one level: no padded rows.
        const std::uint32_t height = header.resource_dimension == 2 ? 1 : header.height + 4;
        header = header.sized(header.width + 4, height).with_mips(2 + header.mip_count);
        if (header.pixel_format.flags & kHasFourCC && random() % 2 == 0) {
            header = header.with_masks(0xFF0000, 0xFF00, random() % 2 == 0 ? 0xFF : 0, 0xFF000000);
        }
        SCOPED_TRACE("seed " + std::to_string(seed) + ", file " + std::to_string(i) + ": " + pixels.name +
                     ' ' + describe(header));
        expect_told(pixels, header, random, counts);
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(counts[0], 100);
    EXPECT_GT(counts[1], 100);
}

// Channels of 8 bits at bytes in any order, or of random bits.
FilePixelFormat random_masks(std::mt19937& random) {
    constexpr std::uint32_t kFlags[] = {0x40, 0x41, kLuminance, kLuminance | 1, kAlphaOnly, kBump};
    FilePixelFormat format;
    format.flags = kFlags[random() % 6];
    constexpr std::uint32_t kBits[] = {8, 24, 32};
    format.bit_count = format.flags > 0x41 || format.flags == kAlphaOnly ? 8 : kBits[random() % 3];
    if (format.flags == 0x41 && format.bit_count == 24) format.bit_count = 32;
    std::uint32_t* channels[] = {&format.red, &format.green, &format.blue, &format.alpha};
    std::shuffle(std::begin(channels), std::end(channels), random);
    const bool bytes = random() % 2 == 0;
    std::uint32_t bit = 0;
    for (std::uint32_t* const channel : channels) {
        if (!bytes) bit += static_cast<std::uint32_t>(random() % 3);
        const std::uint32_t bits = bytes ? 8 : 1 + static_cast<std::uint32_t>(random() % 12);
        if (bit + bits > format.bit_count) break;
        if (random() % 8 != 0) *channel = ((1U << bits) - 1) << bit;
        bit += bits;
    }
    return format;
}

TEST(DdsFaithful, IsToldOfAnyMasks) {
    const std::uint32_t seed = std::random_device()();
    std::mt19937 random(seed);
    int counts[2] = {};
    for (int i = 0; i < 20000; ++i) {
        FileHeader header = plain_header(0, 0).sized(8, 8);
        header.pixel_format = random_masks(random);
        const vTextureInfo info = read(header_bytes(header));
        if (!info.Described() || info.loaderFormat < 0) continue;
        if (info.format == "R32_FLOAT") continue;  // one channel of all bits
        SCOPED_TRACE("seed " + std::to_string(seed) + ", file " + std::to_string(i) + ": " + info.format +
                     ' ' + describe(header));
        Bytes file = header_bytes(header);
        const Bytes rest = random_bytes(header.pixel_format.bit_count * 8, static_cast<std::uint32_t>(i));
        file.insert(file.end(), rest.begin(), rest.end());
        const vDDSImage image = loaded(file);
        const bool same = same_pixels(header, image.get_format(), file.data() + 128, pixels_of(image[0]));
        const vTextureInfo whole = read(file);
        ASSERT_TRUE(whole.loads);
        ASSERT_EQ(whole.faithful, same);
        ASSERT_EQ(whole.notes.empty(), same);
        const bool is_signed = whole.format.find("SNORM") != std::string::npos;
        ASSERT_TRUE(same || whole.HasNote(vTextureNote::eChannelMasks) ||
                    (is_signed && whole.HasNote(vTextureNote::eSignLost)));
        ++counts[same ? 1 : 0];
    }
    EXPECT_GT(counts[0], 100);
    EXPECT_GT(counts[1], 100);
}

// Rows that a 1D texture does not have.
TEST(DdsFaithful, IsFalseOfA1DTextureOfWhichTheLoaderReadsRows) {
    FileHeader header = dxgi_header(41).sized(4, 3);
    header.resource_dimension = 2;
    const vTextureInfo info = read(complete_file(header));
    EXPECT_EQ(info.height, 1U);
    EXPECT_TRUE(info.loads);
    EXPECT_FALSE(info.faithful);
    header.height = 1;
    EXPECT_TRUE(read(complete_file(header)).faithful);
}

// Masks that say where the bytes are already, applied to floats, change none.
TEST(DdsFaithful, IsTrueOfFloatsWithMasksThatMoveNothing) {
    for (const std::uint32_t number : {113U, 116U}) {
        const FileHeader header =
            fourcc_header(number).sized(5, 3).with_masks(0xFF, 0xFF00, 0xFF0000, 0xFF000000);
        const vTextureInfo info = read(complete_file(header));
        EXPECT_TRUE(info.faithful);
        EXPECT_FALSE(info.HasNote(vTextureNote::eFloatWithMasks));
        const vTextureInfo cut = read(complete_file(header.with_masks(0xFF, 0xFF00, 0xFF0000, 0)));
        EXPECT_FALSE(cut.faithful);
        EXPECT_TRUE(cut.HasNote(vTextureNote::eFloatWithMasks));
    }
    const FileHeader three = dxgi_header(6).sized(5, 3).with_masks(0xFF, 0xFF00, 0xFF0000, 0);
    EXPECT_TRUE(read(complete_file(three)).faithful);
    EXPECT_FALSE(read(complete_file(three.with_masks(0xFF, 0xFF0000, 0xFF00, 0))).faithful);
}

}  // namespace
