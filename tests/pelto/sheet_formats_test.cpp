// SPDX-License-Identifier: Apache-2.0
// pelto sheet on files of every kind of format: pixels by hand, cards without a picture, notes.
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "pelto/sheet_check.h"

namespace {

using namespace support;
using sheet::draw;
using sheet::Image;
using sheet::Sheet;
using sheet::tone;

// One row of pixels, and red, green and blue of what each is shown as.
struct Case {
    const char* name;
    FileHeader header;
    Bytes bytes;
    std::vector<double> shown;
};

constexpr double kHalf = 127.5;  // of a signed number, 0

double level(double number, double most) { return 255 * number / most; }
double signed_level(double number, double most) { return 255 * (number / most / 2 + 0.5); }

FileHeader masks(std::uint32_t flags, std::uint32_t bits, std::uint32_t r, std::uint32_t g, std::uint32_t b,
                 std::uint32_t a) {
    return plain_header(flags, bits).with_masks(r, g, b, a);
}

constexpr std::uint32_t kLuminance = 0x20000;
constexpr std::uint32_t kLuminanceAlpha = 0x20001;
constexpr std::uint32_t kAlphaAlone = 0x2;

class SheetOfFormats : public testing::Test {
protected:
    std::string write(const std::string& name, const FileHeader& header, const Bytes& pixels) const {
        const Bytes file = dds_file(header, pixels);
        return folder_.write(name, {reinterpret_cast<const char*>(file.data()), file.size()});
    }

    void expect_shown(const std::vector<Case>& cases) const {
        std::vector<std::string> files;
        for (const Case& one : cases) {
            const auto width = static_cast<std::uint32_t>(one.shown.size() / 3);
            files.push_back(write(std::string(one.name) + ".dds", one.header.sized(width, 1), one.bytes));
        }
        const Sheet sheet = draw(files);
        ASSERT_EQ(sheet.result.status, 0) << sheet.result.err;
        ASSERT_EQ(sheet.images.size(), cases.size());
        for (std::size_t i = 0; i < cases.size(); ++i) {
            const Case& one = cases[i];
            const std::string description = sheet.cards[i]["description"];
            EXPECT_EQ(description, std::string(one.name) + ", 1 level");
            ASSERT_EQ(sheet.images[i].pixels.size(), one.shown.size()) << one.name;
            for (std::size_t k = 0; k < one.shown.size(); ++k) {
                EXPECT_NEAR(sheet.images[i].pixels[k], one.shown[k], 0.55) << one.name << ", channel " << k;
            }
        }
    }

    const TemporaryFolder folder_;
};

TEST_F(SheetOfFormats, ShowsColoursAsTheyAreStored) {
    expect_shown({
        {"R8G8B8A8_UNORM", dxgi_header(28), {10, 20, 30, 255}, {10, 20, 30}},
        {"R8G8B8A8_UNORM_SRGB", dxgi_header(29), {10, 20, 30, 255}, {10, 20, 30}},
        {"B8G8R8A8_UNORM", dxgi_header(87), {30, 20, 10, 255, 3, 2, 1, 255}, {10, 20, 30, 1, 2, 3}},
        {"B8G8R8X8_UNORM", dxgi_header(88), {30, 20, 10, 0}, {10, 20, 30}},
        {"B8G8R8A8_UNORM_SRGB", dxgi_header(91), {30, 20, 10, 255}, {10, 20, 30}},
        {"B8G8R8X8_UNORM_SRGB", dxgi_header(93), {30, 20, 10, 0}, {10, 20, 30}},
        {"R10G10B10A2_UNORM", dxgi_header(24), {0xFF, 0x03, 0x08, 0xC0}, {255, level(512, 1023), 0}},
        {"R16G16B16A16_UNORM",
         dxgi_header(11),
         {0xFF, 0xFF, 0, 0x80, 1, 1, 0xFF, 0xFF},
         {255, level(0x8000, 65535), 1}},
        {"B5G6R5_UNORM", dxgi_header(85), {0x01, 0xFC}, {255, level(32, 63), level(1, 31)}},
        {"B5G5R5A1_UNORM", dxgi_header(86), {0xE0, 0xC3}, {level(16, 31), 255, 0}},
        {"B4G4R4A4_UNORM", dxgi_header(115), {0x23, 0xF1}, {17, 34, 51}},
        {"A4B4G4R4_UNORM", dxgi_header(191), {0x3F, 0x12}, {17, 34, 51}},
        {"R8_UNORM", dxgi_header(61), {77}, {77, 77, 77}},
        {"A8_UNORM", dxgi_header(65), {77}, {77, 77, 77}},
        {"R8G8_UNORM", dxgi_header(49), {10, 20}, {10, 20, 0}},
        {"R16_UNORM", dxgi_header(56), {1, 1}, {1, 1, 1}},
        {"R16G16_UNORM", dxgi_header(35), {0xFF, 0xFF, 1, 1}, {255, 1, 0}},
        {"R8G8_B8G8_UNORM", dxgi_header(68), {10, 20, 30, 40}, {10, 20, 30, 10, 40, 30}},
        {"G8R8_G8B8_UNORM", dxgi_header(69), {20, 10, 40, 30}, {10, 20, 30, 10, 40, 30}},
        {"R1_UNORM", dxgi_header(66), {0xA0}, {255, 255, 255, 0, 0, 0, 255, 255, 255}},
    });
}

TEST_F(SheetOfFormats, ShowsFormatsOfOlderHeaders) {
    expect_shown({
        {"L8_UNORM", masks(kLuminance, 8, 0xFF, 0, 0, 0), {77}, {77, 77, 77}},
        {"L16_UNORM", masks(kLuminance, 16, 0xFFFF, 0, 0, 0), {2, 2}, {2, 2, 2}},
        {"L8A8_UNORM", masks(kLuminanceAlpha, 16, 0xFF, 0, 0, 0xFF00), {77, 0}, {102, 102, 102}},
        {"L4A4_UNORM", masks(kLuminanceAlpha, 8, 0xF, 0, 0, 0xF0), {0xF3}, {51, 51, 51}},
        {"A8_UNORM", masks(kAlphaAlone, 8, 0, 0, 0, 0xFF), {77}, {77, 77, 77}},
        {"B2G3R3_UNORM", masks(kRgb, 8, 0xE0, 0x1C, 0x03, 0), {0xE3}, {255, 0, 255}},
        {"B2G3R3A8_UNORM", masks(kRgbWithAlpha, 16, 0xE0, 0x1C, 3, 0xFF00), {0x1C, 255}, {0, 255, 0}},
        {"B8G8R8_UNORM", masks(kRgb, 24, 0xFF0000, 0xFF00, 0xFF, 0), {30, 20, 10}, {10, 20, 30}},
        {"R8G8B8X8_UNORM", masks(kRgb, 32, 0xFF, 0xFF00, 0xFF0000, 0), {10, 20, 30, 0}, {10, 20, 30}},
        {"B5G5R5X1_UNORM", masks(kRgb, 16, 0x7C00, 0x3E0, 0x1F, 0), {0xE0, 0x43}, {level(16, 31), 255, 0}},
        {"B10G10R10A2_UNORM",
         masks(kRgbWithAlpha, 32, 0x3FF00000, 0xFFC00, 0x3FF, 0xC0000000),
         {0, 0, 0xF0, 0xFF},
         {255, 0, 0}},
        {"R16G16B16A16_UNORM", fourcc_header(36), {1, 1, 2, 2, 3, 3, 0xFF, 0xFF}, {1, 2, 3}},
        {"R8G8B8A8_UNORM", fourcc_header(32), {10, 20, 30, 255}, {10, 20, 30}},
    });
}

TEST_F(SheetOfFormats, ShowsSignedNumbersFromBlackToWhite) {
    expect_shown({
        {"R8_SNORM", dxgi_header(63), {64, 0x81}, {191.75, 191.75, 191.75, 0, 0, 0}},
        {"R8G8_SNORM", dxgi_header(51), {127, 0x81}, {255, 0, kHalf}},
        {"R8G8B8A8_SNORM", dxgi_header(31), {127, 0x80, 64, 127}, {255, 0, signed_level(64, 127)}},
        {"R16_SNORM", dxgi_header(58), {0xFF, 0x7F}, {255, 255, 255}},
        {"R16G16_SNORM", dxgi_header(37), {0xFF, 0x7F, 0x01, 0x80}, {255, 0, kHalf}},
        {"R16G16B16A16_SNORM",
         dxgi_header(13),
         {0xFF, 0x7F, 0x01, 0x80, 0, 0x40, 0xFF, 0x7F},
         {255, 0, signed_level(0x4000, 32767)}},
        // 15, -15, and 63 of 63.
        {"R5G5_SNORM_L6_UNORM", fourcc_header(61), {0x2F, 0xFE}, {255, 0, 255}},
        {"R8G8_SNORM_L8X8_UNORM", fourcc_header(62), {127, 0x81, 255, 0}, {255, 0, 255}},
        // 511, -511 and 0; alpha 3 of 3.
        {"R10G10B10_SNORM_A2_UNORM", fourcc_header(67), {0xFF, 0x05, 0x08, 0xC0}, {255, 0, kHalf}},
    });
}

TEST_F(SheetOfFormats, ShowsIntegersCutToWhatAByteHolds) {
    expect_shown({
        {"R8_UINT", dxgi_header(62), {9}, {9, 9, 9}},
        {"R8G8_UINT", dxgi_header(50), {9, 200}, {9, 200, 0}},
        {"R8G8B8A8_UINT", dxgi_header(30), {10, 20, 30, 255}, {10, 20, 30}},
        {"R16G16B16A16_UINT", dxgi_header(12), {0x2C, 1, 5, 0, 0, 0, 255, 0}, {255, 5, 0}},
        {"R10G10B10A2_UINT", dxgi_header(25), {5, 0, 0, 0}, {102, 102, 102}},  // alpha is 0 of 255
        {"R32_UINT", dxgi_header(42), {0xE8, 3, 0, 0}, {255, 255, 255}},
        {"R32G32_UINT", dxgi_header(17), {7, 0, 0, 0, 0, 0, 0, 0xFF}, {7, 255, 0}},
        {"R8_SINT", dxgi_header(64), {0xFF, 100}, {0, 0, 0, 100, 100, 100}},
        {"R16_SINT", dxgi_header(59), {0, 0x80}, {0, 0, 0}},
        {"R32G32_SINT", dxgi_header(18), {7, 0, 0, 0, 0xF9, 0xFF, 0xFF, 0xFF}, {7, 0, 0}},
        {"R16G16B16A16_SINT", dxgi_header(14), {9, 0, 0xFF, 0xFF, 0, 1, 255, 0}, {9, 0, 255}},
    });
}

TEST_F(SheetOfFormats, ShowsFloatsToneMapped) {
    const double one = tone(1), two = tone(2), half = tone(0.5);
    expect_shown({
        {"R16_FLOAT", dxgi_header(54), {0, 0x3C}, {one, one, one}},
        {"R16G16_FLOAT", dxgi_header(34), {0, 0x3C, 0, 0x40}, {one, two, 0}},
        {"R32G32_FLOAT", dxgi_header(16), {0, 0, 0x80, 0x3F, 0, 0, 0, 0x3F}, {one, half, 0}},
        {"R32G32B32A32_FLOAT",
         dxgi_header(2),
         {0, 0, 0x80, 0x3F, 0, 0, 0, 0x40, 0, 0, 0, 0x3F, 0, 0, 0x80, 0x3F},
         {one, two, half}},
        // Exponents 15, 16 and 14, and no mantissa.
        {"R11G11B10_FLOAT", dxgi_header(26), {0xC0, 0x03, 0x20, 0x70}, {one, two, half}},
        // 128, 256 and 64, times 2^(17 - 24).
        {"R9G9B9E5_SHAREDEXP", dxgi_header(67), {0x80, 0x00, 0x02, 0x89}, {one, two, half}},
    });
}

void put_bits(Bytes& block, unsigned& at, unsigned count, unsigned value) {
    for (unsigned i = 0; i < count; ++i, ++at) {
        if (value >> i & 1) block[at / 8] = static_cast<std::uint8_t>(block[at / 8] | 1u << at % 8);
    }
}

// Mode 6: both ends 7 bits a channel and a last bit that all share; the weight of every pixel is 0.
Bytes bc7_block(unsigned red, unsigned green, unsigned blue, unsigned alpha) {
    Bytes block(16);
    unsigned at = 6;
    put_bits(block, at, 1, 1);
    for (const unsigned channel : {red, green, blue, alpha}) {
        put_bits(block, at, 7, channel / 2);
        put_bits(block, at, 7, channel / 2);
    }
    put_bits(block, at, 2, 3);
    return block;
}

TEST_F(SheetOfFormats, ShowsBlocksThatTheLoaderDoesNotTake) {
    const Bytes red = {0, 0xF8, 0, 0, 0, 0, 0, 0};
    Bytes opaque_red(8, 0xFF);
    opaque_red.insert(opaque_red.end(), red.begin(), red.end());
    Bytes red_of_bc3 = {255, 255, 0, 0, 0, 0, 0, 0};
    red_of_bc3.insert(red_of_bc3.end(), red.begin(), red.end());
    const std::vector<double> shown = {255, 0, 0, 255, 0, 0};
    expect_shown({
        {"BC1_UNORM_SRGB", dxgi_header(72), red, shown},
        {"BC2_UNORM_SRGB", dxgi_header(75), opaque_red, shown},
        {"BC3_UNORM_SRGB", dxgi_header(78), red_of_bc3, shown},
        {"BC2_UNORM", fourcc_header(four_cc("DXT2")), opaque_red, shown},
        {"BC3_UNORM", fourcc_header(four_cc("DXT4")), red_of_bc3, shown},
        {"BC7_UNORM", dxgi_header(98), bc7_block(201, 101, 51, 255), {201, 101, 51}},
        {"BC7_UNORM_SRGB", dxgi_header(99), bc7_block(201, 101, 51, 255), {201, 101, 51}},
    });
}

TEST_F(SheetOfFormats, ShowsSignedBlocksOfAnOlderHeaderAsSigned) {
    // Red 127 and green -127 throughout.
    const Bytes block = {127, 127, 0, 0, 0, 0, 0, 0, 0x81, 0x81, 0, 0, 0, 0, 0, 0};
    const std::string file = write("a.dds", fourcc_header(four_cc("BC5S")).sized(4, 4), block);
    const Sheet meant = draw({file});
    ASSERT_EQ(meant.images.size(), 1u) << meant.result.err;
    EXPECT_NEAR(meant.images[0].pixels[0], 255, 2);
    EXPECT_NEAR(meant.images[0].pixels[1], 0, 2);
    EXPECT_EQ(meant.cards[0]["notes"][0]["code"], "signLost");
    const Sheet loaded = draw({file, "--as-loaded"});
    ASSERT_EQ(loaded.images.size(), 1u) << loaded.result.err;
    EXPECT_NEAR(loaded.images[0].pixels[0], 127, 2);
    EXPECT_NEAR(loaded.images[0].pixels[1], 129, 2);
    EXPECT_EQ(loaded.cards[0]["description"], "BC5U as loaded, 1 level");
}

TEST_F(SheetOfFormats, SkipsThePaddingOfRows) {
    const FileHeader header = masks(kRgb, 24, 0xFF0000, 0xFF00, 0xFF, 0).sized(1, 3);
    const Sheet sheet = draw({write("a.dds", header, {3, 2, 1, 99, 6, 5, 4, 99, 9, 8, 7, 99})});
    ASSERT_EQ(sheet.images.size(), 1u) << sheet.result.err;
    EXPECT_EQ(sheet.images[0].pixels, (Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(sheet.cards[0]["notes"][0]["code"], "paddedRows");
}

std::vector<std::string> captions(const Sheet& sheet) {
    std::vector<std::string> all;
    for (const Image& image : sheet.images) all.push_back(image.caption);
    return all;
}

using Names = std::vector<std::string>;

TEST_F(SheetOfFormats, HasAllLayersOfAnArray) {
    FileHeader header = dxgi_header(61).sized(2, 1).with_mips(2);
    header.array_size = 3;
    const std::string file = write("a.dds", header, {1, 2, 3, 11, 12, 13, 21, 22, 23});
    const Sheet sheet = draw({file});
    ASSERT_EQ(sheet.images.size(), 6u) << sheet.result.err;
    EXPECT_EQ(captions(sheet), (Names{"layer 0, level 0", "layer 0, level 1", "layer 1, level 0",
                                      "layer 1, level 1", "layer 2, level 0", "layer 2, level 1"}));
    for (std::size_t i = 0; i < 3; ++i) {
        const auto first = static_cast<std::uint8_t>(10 * i + 1);
        const auto second = static_cast<std::uint8_t>(first + 1);
        const auto small = static_cast<std::uint8_t>(first + 2);
        EXPECT_EQ(sheet.images[2 * i].layer, static_cast<int>(i));
        EXPECT_EQ(sheet.images[2 * i].pixels, (Bytes{first, first, first, second, second, second}));
        EXPECT_EQ(sheet.images[2 * i + 1].pixels, (Bytes{small, small, small}));
    }
    EXPECT_EQ(sheet.cards[0]["description"], "R8_UNORM, 3 layers, 2 levels");

    const Sheet one = draw({file, "--layer", "2", "--level", "1"});
    ASSERT_EQ(one.images.size(), 1u) << one.result.err;
    EXPECT_EQ(one.images[0].pixels, (Bytes{23, 23, 23}));
    EXPECT_NE(draw({file, "--layer", "3"}).result.err.find("there is no layer 3: the last one is 2"),
              std::string::npos);
}

TEST_F(SheetOfFormats, NotesTheLayersThatTheLoaderDrops) {
    FileHeader header = fourcc_header(four_cc("DX10")).sized(1, 1);
    header.dxgi_format = 41;
    header.array_size = 2;
    const std::string file = write("a.dds", header, {0, 0, 0x80, 0x3F, 0, 0, 0, 0x40});
    EXPECT_EQ(draw({file}).images.size(), 2u);
    EXPECT_EQ(draw({file}).cards[0]["notes"][0]["code"], "layersDropped");
    EXPECT_EQ(draw({file, "--as-loaded"}).images.size(), 1u);
}

TEST_F(SheetOfFormats, NamesTheFacesOfAPartialCubeMap) {
    constexpr std::uint32_t kPositiveX = 0x400, kNegativeY = 0x2000;
    const FileHeader header =
        masks(kLuminance, 8, 0xFF, 0, 0, 0).sized(1, 1).with_caps2(kCubeMap | kPositiveX | kNegativeY);
    const std::string file = write("a.dds", header, {5, 6});
    const Sheet sheet = draw({file});
    ASSERT_EQ(sheet.images.size(), 2u) << sheet.result.err;
    EXPECT_EQ(captions(sheet), (Names{"+X, level 0", "\u2212Y, level 0"}));
    EXPECT_EQ(sheet.images[1].face, 3);
    EXPECT_EQ(sheet.images[1].pixels, (Bytes{6, 6, 6}));
    EXPECT_EQ(sheet.cards[0]["description"], "L8_UNORM, cube map of +X \u2212Y, 1 level");
    EXPECT_EQ(sheet.cards[0]["notes"][0]["code"], "partialCube");
    EXPECT_EQ(draw({file, "--face", "3"}).images.size(), 1u);
    EXPECT_NE(draw({file, "--face", "1"}).result.err.find("there is no face 1: it is a cube map of +X"),
              std::string::npos);
}

TEST_F(SheetOfFormats, CaptionsFacesAndSlicesInTheirOrder) {
    const FileHeader grey = masks(kLuminance, 8, 0xFF, 0, 0, 0);
    const std::string cube = write("cube.dds", grey.sized(1, 1).with_caps2(kCubeMap), Bytes(6));
    EXPECT_EQ(captions(draw({cube})), (Names{"+X, level 0", "\u2212X, level 0", "+Y, level 0",
                                             "\u2212Y, level 0", "+Z, level 0", "\u2212Z, level 0"}));
    EXPECT_EQ(captions(draw({cube, "--as-loaded"})), captions(draw({cube})));
    const std::string volume =
        write("volume.dds", grey.sized(2, 1).with_mips(2).with_depth(2).with_caps2(kVolume), Bytes(5));
    const Names slices = {"slice 0, level 0", "slice 0, level 1", "slice 1, level 0"};
    EXPECT_EQ(captions(draw({volume})), slices);
    EXPECT_EQ(captions(draw({volume, "--as-loaded"})), slices);
    EXPECT_EQ(captions(draw({PELTO_BASIS_FIXTURES "/uastc_alpha_array.basis"})),
              (Names{"slice 0, level 0", "slice 1, level 0", "slice 2, level 0"}));
}

TEST_F(SheetOfFormats, GivesACardToFilesWithoutAPicture) {
    const std::vector<std::pair<std::uint32_t, const char*>> kinds = {
        {103, "YUV is not shown"},
        {107, "YUV is not shown"},
        {55, "depth and stencil are not shown"},
        {20, "depth and stencil are not shown"},
        {27, "typeless data are not shown: any reader may take them otherwise"},
        {94, "typeless data are not shown: any reader may take them otherwise"},
        {89, "XR bias is not shown"},
        {113, "palettes are not shown"},
        {134, "ASTC is not shown"},
    };
    std::vector<std::string> files;
    for (const auto& [dxgi, reason] : kinds) {
        files.push_back(write(std::to_string(dxgi) + ".dds", dxgi_header(dxgi).sized(4, 4), Bytes(256)));
    }
    const Sheet sheet = draw(files);
    EXPECT_EQ(sheet.result.status, 0) << sheet.result.err;
    EXPECT_EQ(sheet.result.err, "");
    EXPECT_TRUE(sheet.images.empty());
    ASSERT_EQ(sheet.cards.size(), kinds.size());
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        EXPECT_EQ(sheet.cards[i]["path"], files[i]);
        EXPECT_EQ(sheet.cards[i]["reason"], kinds[i].second) << files[i];
    }
    EXPECT_EQ(sheet.cards[0]["description"], "NV12, 1 level");
    EXPECT_GT(sheet.width, 0u);
}

bool is_yellow(const std::uint8_t* pixel) { return pixel[0] > 180 && pixel[1] > 120 && pixel[2] < 90; }

// Of the card's pixels above its first picture.
std::size_t yellow_pixels(const Sheet& sheet, std::size_t card) {
    const auto& place = sheet.cards[card];
    const std::size_t left = place["x"], top = place["y"], width = place["width"];
    std::size_t count = 0;
    for (std::size_t y = top; y < top + 85; ++y) {
        for (std::size_t x = left; x < left + width; ++x) count += is_yellow(sheet.picture.at(x, y));
    }
    return count;
}

TEST_F(SheetOfFormats, DrawsANoteWhereTheLoaderGivesSomethingElse) {
    const Bytes pixels = {30, 20, 10, 255};
    const std::string noted = write("noted.dds", dxgi_header(87).sized(1, 1), pixels);
    const std::string good = write("good.dds", dxgi_header(28).sized(1, 1), pixels);
    const Sheet sheet = draw({noted, good});
    ASSERT_EQ(sheet.cards.size(), 2u) << sheet.result.err;
    EXPECT_EQ(sheet.cards[0]["notes"][0]["code"], "threeBytePixels");
    EXPECT_EQ(sheet.cards[0]["notes"][0]["text"], "has four bytes a pixel, which vDDSImage reads as three");
    EXPECT_TRUE(sheet.cards[0]["reason"].is_null());
    EXPECT_TRUE(sheet.cards[1]["notes"].empty());
    EXPECT_GT(yellow_pixels(sheet, 0), 20u);
    EXPECT_EQ(yellow_pixels(sheet, 1), 0u);
}

TEST_F(SheetOfFormats, BytesBehindTheLastLevelAreNotNoted) {
    const Sheet sheet = draw({write("a.dds", dxgi_header(80).sized(4, 4), Bytes(9))});
    ASSERT_EQ(sheet.cards.size(), 1u) << sheet.result.err;
    EXPECT_TRUE(sheet.cards[0]["notes"].empty());
}

TEST_F(SheetOfFormats, ShowsOnRequestWhatTheLoaderGives) {
    // Three bytes a pixel: the fourth begins the next one.
    const std::string bgra = write("bgra.dds", dxgi_header(87).sized(2, 1), {30, 20, 10, 255, 3, 2, 1, 255});
    const Sheet loaded = draw({bgra, "--as-loaded"});
    ASSERT_EQ(loaded.images.size(), 1u) << loaded.result.err;
    EXPECT_EQ(loaded.images[0].pixels, (Bytes{10, 20, 30, 2, 3, 255}));
    EXPECT_EQ(loaded.cards[0]["description"], "BGRA8 as loaded, 1 level");
    EXPECT_EQ(loaded.cards[0]["notes"][0]["code"], "threeBytePixels");

    const std::string bc7 = write("bc7.dds", dxgi_header(99).sized(4, 4), bc7_block(1, 1, 1, 255));
    const Sheet refused = draw({bc7, "--as-loaded"});
    EXPECT_EQ(refused.result.status, 1);
    EXPECT_NE(refused.result.err.find("is BC7_UNORM_SRGB, which vDDSImage does not take"), std::string::npos)
        << refused.result.err;
    EXPECT_EQ(draw({bgra, "--flip"}).images[0].pixels, loaded.images[0].pixels);
}

TEST_F(SheetOfFormats, SaysWhyAKTX2FileIsNotShown) {
    const Bytes start = {0xAB, 'K', 'T', 'X', ' ', '2', '0', 0xBB, '\r', '\n', 0x1A, '\n'};
    const std::string file = folder_.write("a.ktx2", std::string(start.begin(), start.end()));
    const Sheet sheet = draw({file});
    EXPECT_EQ(sheet.result.status, 1);
    EXPECT_NE(sheet.result.err.find("is cut short"), std::string::npos) << sheet.result.err;
}

}  // namespace
