// SPDX-License-Identifier: Apache-2.0
// pelto sheet, run as a user runs it: what its pixels are.
#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>
#include <vBasisImage.h>
#include <vector>

#include "pelto/sheet_check.h"

namespace {

using namespace TOZ::SUPPORTED_FORMAT;
using plain::Texel;
using sheet::draw;
using sheet::Format;
using sheet::format_of;
using sheet::formats;
using sheet::Image;
using sheet::random_level;
using sheet::Sheet;
using sheet::shows;
using support::Bytes;
using support::FileHeader;

std::string fixture(const std::string& name) { return PELTO_BASIS_FIXTURES "/" + name + ".basis"; }

// A file of one 2D texture, with the pixels that it is made of.
struct Texture {
    Format format;
    FileHeader header;
    std::vector<Bytes> levels;
    std::string path;

    std::vector<Texel> texels(std::size_t level) const {
        const std::size_t width = std::max<std::size_t>(header.width >> level, 1);
        const std::size_t height = std::max<std::size_t>(header.height >> level, 1);
        return sheet::texels_of(format, width, height, levels[level].data());
    }
};

class SheetOfPixels : public testing::Test {
protected:
    std::string write(const std::string& name, const FileHeader& header, const std::vector<Bytes>& parts) {
        Bytes pixels;
        for (const Bytes& part : parts) pixels.insert(pixels.end(), part.begin(), part.end());
        const Bytes file = support::dds_file(header, pixels);
        return folder_.write(name, {reinterpret_cast<const char*>(file.data()), file.size()});
    }

    Texture texture(const Format& format, std::uint32_t width, std::uint32_t height, std::uint32_t levels) {
        Texture texture{format, format.header.sized(width, height).with_mips(levels), {}, ""};
        for (std::uint32_t level = 0; level < levels; ++level) {
            texture.levels.push_back(random_level(format, std::max(width >> level, 1u),
                                                  std::max(height >> level, 1u), 7 * level + width));
        }
        const std::string extent = std::to_string(width) + "x" + std::to_string(height);
        texture.path = write(format.name + "_" + extent + ".dds", texture.header, texture.levels);
        return texture;
    }

    // A texture of each format whose number lies in the range.
    std::vector<Texture> textures(Type first, Type last, std::uint32_t width, std::uint32_t height,
                                  std::uint32_t levels) {
        std::vector<Texture> made;
        for (int i = first; i <= last; ++i) {
            made.push_back(texture(format_of(static_cast<Type>(i)), width, height, levels));
        }
        return made;
    }

    static std::vector<std::string> paths(const std::vector<Texture>& textures) {
        std::vector<std::string> paths;
        for (const Texture& texture : textures) paths.push_back(texture.path);
        return paths;
    }

    // A sheet of the textures must show every level of each in turn.
    static void expect_shown(const std::vector<Texture>& textures, double tolerance, double exposure = 0) {
        std::vector<std::string> arguments = paths(textures);
        arguments.push_back("--exposure=" + std::to_string(exposure));
        const Sheet sheet = draw(arguments);
        ASSERT_EQ(sheet.result.status, 0) << sheet.result.err;
        EXPECT_EQ(sheet.result.err, "");
        std::size_t next = 0;
        for (const Texture& texture : textures) {
            for (std::size_t level = 0; level < texture.levels.size(); ++level, ++next) {
                ASSERT_LT(next, sheet.images.size());
                const Image& image = sheet.images[next];
                EXPECT_EQ(image.path, texture.path);
                EXPECT_EQ(image.level, static_cast<int>(level));
                EXPECT_TRUE(shows(image, texture.format, texture.texels(level), tolerance, exposure));
            }
        }
        EXPECT_EQ(next, sheet.images.size());
    }

    const support::TemporaryFolder folder_;
};

// How far a value that is rounded to a whole number may be away, with a little for the GPU's powers.
constexpr double kRounding = 0.55;

TEST_F(SheetOfPixels, ShowsBlocksOfBC1ToBC5AsTheyDecode) { expect_shown(textures(DXT1, BC5S, 64, 48, 3), 3); }

TEST_F(SheetOfPixels, ShowsBlocksOfExtentsThatAreNoMultiplesOfFour) {
    std::vector<Texture> all = textures(DXT1, BC5S, 61, 37, 6);
    all.push_back(texture(format_of(DXT1), 1, 1, 1));
    all.push_back(texture(format_of(DXT5), 2, 131, 1));
    expect_shown(all, 3);
}

TEST_F(SheetOfPixels, ShowsBytesExactly) { expect_shown(textures(LUMINANCE8, RGB8, 61, 37, 6), 0.001); }

TEST_F(SheetOfPixels, LaysTransparentPixelsOverACheckerboard) {
    expect_shown(textures(RGBA8, BGRA8, 61, 37, 6), kRounding);
}

TEST_F(SheetOfPixels, ShowsOpaquePixelsOfFourBytesExactly) {
    for (const std::uint32_t flags : {support::kRgb, support::kRgbWithAlpha}) {
        Format format = format_of(RGBA8);
        format.header = support::plain_header(flags, 32).with_masks(0xFF, 0xFF00, 0xFF0000, 0);
        const Texture opaque = texture(format, 20, 12, 1);
        std::vector<Texel> texels = opaque.texels(0);
        for (Texel& texel : texels) texel.alpha = 1;
        const Sheet sheet = draw({opaque.path});
        ASSERT_EQ(sheet.images.size(), 1u) << sheet.result.err;
        EXPECT_TRUE(shows(sheet.images[0], format, texels, 0.001));
    }
}

TEST_F(SheetOfPixels, ShowsChannelsByTheirMasks) {
    const Bytes blue_green_red_alpha = {10, 20, 30, 255, 40, 50, 60, 255};
    const FileHeader header = support::plain_header(support::kRgbWithAlpha, 32)
                                  .sized(2, 1)
                                  .with_masks(0xFF0000, 0xFF00, 0xFF, 0xFF000000);
    const Sheet sheet = draw({write("bgra.dds", header, {blue_green_red_alpha})});
    ASSERT_EQ(sheet.images.size(), 1u) << sheet.result.err;
    EXPECT_EQ(sheet.images[0].pixels, (Bytes{30, 20, 10, 60, 50, 40}));
}

TEST_F(SheetOfPixels, ShowsLightOfFloatsToneMapped) {
    const std::vector<Texture> all = textures(RGBA16F, RGBA32F, 61, 37, 6);
    expect_shown(all, kRounding);
    expect_shown(all, kRounding, 3.5);
}

TEST_F(SheetOfPixels, ShowsLightOfBC6HAtEveryExposure) {
    const std::vector<Texture> all = textures(BC6H_SF16, BC6H_UF16, 128, 64, 2);
    for (const double exposure : {-12, 0, 12}) expect_shown(all, kRounding, exposure);
}

TEST_F(SheetOfPixels, ShowsWhatIsNoLightAsBlackAndInfiniteLightAsWhite) {
    const float infinity = std::numeric_limits<float>::infinity();
    const float numbers[] = {std::numeric_limits<float>::quiet_NaN(), infinity, -infinity, -1, 3, 0};
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(numbers);
    const FileHeader header = support::dxgi_header(41).sized(6, 1);
    const Sheet sheet = draw({write("odd.dds", header, {Bytes(bytes, bytes + sizeof numbers)})});
    ASSERT_EQ(sheet.images.size(), 1u) << sheet.result.err;
    EXPECT_EQ(sheet.images[0].pixels,
              (Bytes{0, 0, 0, 255, 255, 255, 0, 0, 0, 0, 0, 0, 225, 225, 225, 0, 0, 0}));
}

// The flip leaves the middle row of an odd number of block rows as it is.
Bytes flipped_block_rows(const Image& image) {
    Bytes pixels = sheet::upside_down(image);
    if (image.height / 4 % 2 == 1) {
        const auto middle = static_cast<std::ptrdiff_t>((image.height / 2 - 2) * image.width * 3);
        const auto count = static_cast<std::ptrdiff_t>(4 * image.width * 3);
        std::copy_n(image.pixels.begin() + middle, count, pixels.begin() + middle);
    }
    return pixels;
}

TEST_F(SheetOfPixels, OfAFlippedLoadIsThePlainOneUpsideDown) {
    const std::vector<std::string> files = paths(textures(DXT1, BC5S, 64, 48, 3));
    const Sheet plain = draw(files);
    std::vector<std::string> arguments = files;
    arguments.emplace_back("--flip");
    const Sheet flipped = draw(arguments);
    ASSERT_EQ(plain.images.size(), files.size() * 3) << plain.result.err;
    ASSERT_EQ(flipped.images.size(), plain.images.size()) << flipped.result.err;
    for (std::size_t i = 0; i < plain.images.size(); ++i) {
        EXPECT_TRUE(flipped.images[i].pixels == flipped_block_rows(plain.images[i]))
            << plain.images[i].path << ", level " << plain.images[i].level;
        EXPECT_FALSE(flipped.images[i].pixels == plain.images[i].pixels);
    }
}

TEST_F(SheetOfPixels, ShowsBC6HAsItIsWhereItCannotBeFlippedAndSaysSo) {
    const std::vector<Texture> all = textures(BC6H_SF16, BC6H_UF16, 16, 16, 1);
    const Sheet plain = draw(paths(all));
    const Sheet flipped = draw({all[0].path, all[1].path, "--flip"});
    ASSERT_EQ(flipped.images.size(), 2u) << flipped.result.err;
    for (std::size_t i = 0; i < 2; ++i) EXPECT_EQ(flipped.images[i].pixels, plain.images[i].pixels);
    EXPECT_EQ(flipped.result.status, 0);
    EXPECT_NE(flipped.result.err.find("BC6H is never flipped"), std::string::npos) << flipped.result.err;
}

TEST_F(SheetOfPixels, HasAllFacesAndLevelsOfACubeMap) {
    const Format& format = format_of(DXT1);
    std::vector<Bytes> parts;
    for (std::uint32_t i = 0; i < 12; ++i) {
        const std::size_t extent = i % 2 == 0 ? 16 : 8;
        parts.push_back(random_level(format, extent, extent, i));
    }
    const FileHeader header = format.header.sized(16, 16).with_mips(2).with_caps2(support::kCubeMap);
    const std::string path = write("cube.dds", header, parts);
    const Sheet sheet = draw({path});
    ASSERT_EQ(sheet.images.size(), 12u) << sheet.result.err;
    for (std::size_t i = 0; i < 12; ++i) {
        const Image& image = sheet.images[i];
        EXPECT_EQ(image.face, static_cast<int>(i / 2));
        EXPECT_EQ(image.level, static_cast<int>(i % 2));
        EXPECT_TRUE(
            shows(image, format, sheet::texels_of(format, image.width, image.height, parts[i].data()), 3));
    }

    // Upside down, the faces above and below change places.
    const Sheet flipped = draw({path, "--flip", "--level", "0"});
    ASSERT_EQ(flipped.images.size(), 6u) << flipped.result.err;
    const std::size_t same_face[] = {0, 1, 3, 2, 4, 5};
    for (std::size_t face = 0; face < 6; ++face) {
        EXPECT_EQ(flipped.images[face].pixels, sheet::upside_down(sheet.images[2 * same_face[face]]));
    }
}

TEST_F(SheetOfPixels, HasAllSlicesOfAVolume) {
    const Format& format = format_of(BC4U);
    std::vector<Bytes> parts;
    for (std::uint32_t i = 0; i < 4; ++i) parts.push_back(random_level(format, 12, 8, i));
    for (std::uint32_t i = 0; i < 2; ++i) parts.push_back(random_level(format, 6, 4, i));
    FileHeader header = format.header.sized(12, 8).with_mips(2).with_depth(4).with_caps2(support::kVolume);
    header.resource_dimension = 4;
    const Sheet sheet = draw({write("volume.dds", header, parts)});
    ASSERT_EQ(sheet.images.size(), 6u) << sheet.result.err;
    for (const Image& image : sheet.images) {
        const auto part = static_cast<std::size_t>(4 * image.level + image.slice);
        ASSERT_LT(part, parts.size());
        EXPECT_TRUE(
            shows(image, format, sheet::texels_of(format, image.width, image.height, parts[part].data()), 3));
    }
}

TEST_F(SheetOfPixels, HasTheChosenFaceAndLevelAlone) {
    const Format& format = format_of(LUMINANCE8);
    std::vector<Bytes> parts;
    for (std::uint32_t i = 0; i < 12; ++i) {
        const std::size_t extent = i % 2 == 0 ? 4 : 2;
        parts.push_back(random_level(format, extent, extent, i));
    }
    const FileHeader header = format.header.sized(4, 4).with_mips(2).with_caps2(support::kCubeMap);
    const std::string path = write("cube.dds", header, parts);
    const Sheet one = draw({path, "--face", "3", "--level", "1"});
    ASSERT_EQ(one.images.size(), 1u) << one.result.err;
    EXPECT_TRUE(shows(one.images[0], format, sheet::texels_of(format, 2, 2, parts[7].data()), 0.001));
    EXPECT_EQ(draw({path, "--face", "3"}).images.size(), 2u);
    EXPECT_EQ(draw({path, "--level", "1"}).images.size(), 6u);
}

// The levels of a .basis file must be shown as the blocks that the library makes of them.
void expect_basis_shown(const std::string& name, TOZ::EUsageFormat usage, Type number) {
    SCOPED_TRACE(name);
    const Sheet sheet = draw({fixture(name)});
    ASSERT_EQ(sheet.result.status, 0) << sheet.result.err;
    ASSERT_FALSE(sheet.images.empty());
    TOZ::vBasisImage basis;
    ASSERT_TRUE(basis.load(fixture(name).c_str()));
    for (const Image& image : sheet.images) {
        unsigned char* blocks = nullptr;
        unsigned int size = 0;
        ASSERT_TRUE(basis.getImage(static_cast<unsigned int>(image.level),
                                   static_cast<unsigned int>(image.slice), blocks, size, usage));
        const std::unique_ptr<unsigned char[]> owned(blocks);
        ASSERT_EQ(size, sheet::level_size(format_of(number), image.width, image.height));
        std::vector<Texel> texels = sheet::texels_of(format_of(number), image.width, image.height, blocks);
        EXPECT_TRUE(shows(image, format_of(number), texels, 3));
    }
}

TEST(SheetOfBasisFiles, ShowsEveryLevelAsBlocks) {
    expect_basis_shown("etc1s_mips", TOZ::eUsageFormatBC1, DXT1);
    expect_basis_shown("etc1s_alpha_mips", TOZ::eUsageFormatBC3, DXT5);
    expect_basis_shown("uastc_mips", TOZ::eUsageFormatBC1, DXT1);
    expect_basis_shown("etc1s_30x10", TOZ::eUsageFormatBC1, DXT1);
    expect_basis_shown("uastc_alpha_array", TOZ::eUsageFormatBC3, DXT5);
}

TEST(SheetOfBasisFiles, HasTheChosenLevelOfEverySlice) {
    const Sheet sheet = draw({fixture("etc1s_different_sizes"), "--level", "1"});
    ASSERT_EQ(sheet.images.size(), 3u) << sheet.result.err;
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(sheet.images[i].slice, static_cast<int>(i));
        EXPECT_EQ(sheet.images[i].width, std::size_t{20} >> i);
    }
}

}  // namespace
