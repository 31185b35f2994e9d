// SPDX-License-Identifier: Apache-2.0
// vTextureFormats.h against a list typed from the DXGI_FORMAT, VkFormat and OpenGL references.
#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vTextureFormats.h>

#include "info/documented_formats.h"
#include "support/dds_file.h"

namespace {

using namespace documented;
using support::four_cc;
using vTextureFormatTables::kPixelFormats;

TEST(TextureFormats, HaveTheDocumentedNamesAndBitsOfPixels) {
    for (const Documented& expected : kOfPixels) {
        SCOPED_TRACE(expected.name);
        const vPixelFormat& format = dxgi(expected.number);
        EXPECT_EQ(format.name, expected.name);
        EXPECT_EQ(format.dxgi, expected.number);
        EXPECT_EQ(format.blockHeight, 1);
        EXPECT_EQ(format.planes, 1);
        EXPECT_EQ(format.blockBytes * 8U, expected.size * format.blockWidth);
    }
}

TEST(TextureFormats, HaveTheDocumentedNamesAndBytesOfBlocks) {
    for (const Documented& expected : kOfBlocks) {
        SCOPED_TRACE(expected.name);
        const vPixelFormat& format = dxgi(expected.number);
        EXPECT_EQ(format.name, expected.name);
        EXPECT_EQ(format.layout, vPixelFormat::eBlocks);
        EXPECT_EQ(format.blockWidth, 4);
        EXPECT_EQ(format.blockHeight, 4);
        EXPECT_EQ(format.blockBytes, expected.size);
        EXPECT_EQ(format.planes, 1);
    }
}

TEST(TextureFormats, HaveTheDocumentedNamesAndPlanes) {
    for (const Planar& expected : kPlanar) {
        SCOPED_TRACE(expected.name);
        const vPixelFormat& format = dxgi(expected.number);
        EXPECT_EQ(format.name, expected.name);
        EXPECT_EQ(format.planes, expected.planes);
        EXPECT_EQ(format.layout, expected.half_rows ? vPixelFormat::eYUVHalf : vPixelFormat::eYUV);
    }
}

TEST(TextureFormats, HaveTheFourteenFootprintsOfAstc) {
    std::uint32_t number = 133;
    std::uint32_t vulkan = 157;
    for (const Footprint& footprint : kAstcFootprints) {
        const std::string stem =
            "ASTC_" + std::to_string(footprint.width) + "X" + std::to_string(footprint.height);
        for (const char* const ending : {"_TYPELESS", "_UNORM", "_UNORM_SRGB"}) {
            const vPixelFormat& format = dxgi(number++);
            EXPECT_EQ(format.name, stem + ending);
            EXPECT_EQ(format.layout, vPixelFormat::eASTC);
            EXPECT_EQ(format.blockWidth, footprint.width);
            EXPECT_EQ(format.blockHeight, footprint.height);
            EXPECT_EQ(format.blockBytes, 16);
            EXPECT_EQ(format.vulkan, ending == std::string_view("_TYPELESS") ? 0U : vulkan++);
        }
        ++number;  // one is free after each three
    }
}

TEST(TextureFormats, AreFoundByNoOtherDxgiNumber) {
    std::set<std::uint32_t> numbers;
    for (const Documented& format : kOfPixels) numbers.insert(format.number);
    for (const Documented& format : kOfBlocks) numbers.insert(format.number);
    for (const Planar& format : kPlanar) numbers.insert(format.number);
    for (std::uint32_t i = 0; i < 14 * 4; ++i) {
        if (i % 4 != 3) numbers.insert(133 + i);
    }
    for (std::uint32_t number = 0; number < 70000; ++number) {
        EXPECT_EQ(vTextureFormats::FindDXGI(number) != nullptr, numbers.count(number) == 1) << number;
    }
    for (const std::uint32_t number : {0x80000000U, 0xFFFFFFFFU, 0x10000U + 28}) {
        EXPECT_EQ(vTextureFormats::FindDXGI(number), nullptr);
    }
}

TEST(TextureFormats, HaveUniqueNamesAndNumbers) {
    std::set<std::string> names;
    std::set<std::uint32_t> vulkan;
    for (const vPixelFormat& format : kPixelFormats) {
        EXPECT_TRUE(names.insert(format.name).second) << format.name;

        ASSERT_NE(vTextureFormats::FindName(format.name), nullptr);
        EXPECT_STREQ(vTextureFormats::FindName(format.name)->name, format.name);
        if (format.vulkan == 0) continue;
        EXPECT_TRUE(vulkan.insert(format.vulkan).second) << format.name;
    }
    for (const char* const other :
         {"", "BC1", "BC1_UNORM ", "bc1_unorm", "DXGI_FORMAT_BC1_UNORM", "UNKNOWN"}) {
        EXPECT_EQ(vTextureFormats::FindName(other), nullptr) << other;
    }
}

// What the name says is what the channels are.
TEST(TextureFormats, HaveChannelsThatFillThePixel) {
    for (const vPixelFormat& format : kPixelFormats) {
        if (format.layout != vPixelFormat::ePlain && format.layout != vPixelFormat::ePalette) continue;
        EXPECT_EQ(bits_of(format.channels) * format.blockWidth, format.blockBytes * 8U) << format.name;
    }
}

TEST(TextureFormats, HaveChannelsAsNamed) {
    for (const vPixelFormat& format : kPixelFormats) {
        if (format.layout != vPixelFormat::ePlain) continue;
        // The parts of a name that are channels, joined.
        std::string expected;
        const std::string name = format.name;
        for (std::size_t begin = 0; begin < name.size();) {
            const std::size_t end = std::min(name.find('_', begin), name.size());
            const std::string part = name.substr(begin, end - begin);
            if (std::string_view("RGBAXLDS").find(part[0]) != std::string_view::npos && part.size() > 1 &&
                part[1] >= '0' && part[1] <= '9') {
                expected += part;
            }
            begin = end + 1;
        }
        EXPECT_EQ(spelled(format.channels), expected) << format.name;
    }
}

TEST(TextureFormats, HaveTheKindsThatTheirNamesEndOn) {
    using Format = vPixelFormat;
    const std::pair<std::string_view, Format::EKind> endings[] = {
        {"_TYPELESS", Format::eTypeless}, {"_FLOAT", Format::eFloat},
        {"_UNORM", Format::eUNorm},       {"_SNORM", Format::eSNorm},
        {"_UINT", Format::eUInt},         {"_SINT", Format::eSInt},
        {"_UNORM_SRGB", Format::eUNorm},  {"_UF16", Format::eFloat},
        {"_SF16", Format::eFloat},        {"_SHAREDEXP", Format::eSharedExponent},
    };
    for (const Format& format : kPixelFormats) {
        const std::string_view name = format.name;
        EXPECT_EQ(format.srgb, name.find("SRGB") != std::string_view::npos) << name;
        // Names of two kinds are looked at below.
        const bool several = name.find("NORM_") != std::string_view::npos && !format.srgb;
        if (several || name.find("FLOAT_") != std::string_view::npos ||
            name.find("TYPELESS_") != std::string_view::npos ||
            name.find("XR_BIAS") != std::string_view::npos) {
            continue;
        }
        for (const auto& [ending, kind] : endings) {
            if (name.size() < ending.size() || name.substr(name.size() - ending.size()) != ending) continue;
            for (const Format::Channel& channel : format.channels) EXPECT_EQ(channel.kind, kind) << name;
        }
    }
    const auto kinds = [](const char* name) {
        std::string text;
        for (const Format::Channel& channel : named(name).channels) {
            text += std::to_string(static_cast<int>(channel.kind));
        }
        return text;
    };
    const auto digits = [](std::initializer_list<Format::EKind> list) {
        std::string text;
        for (const Format::EKind kind : list) text += std::to_string(static_cast<int>(kind));
        return text;
    };
    EXPECT_EQ(kinds("D32_FLOAT_S8X24_UINT").substr(0, 2), digits({Format::eFloat, Format::eUInt}));
    EXPECT_EQ(kinds("R32_FLOAT_X8X24_TYPELESS"),
              digits({Format::eFloat, Format::eTypeless, Format::eTypeless}));
    EXPECT_EQ(kinds("X32_TYPELESS_G8X24_UINT").substr(0, 2), digits({Format::eTypeless, Format::eUInt}));
    EXPECT_EQ(kinds("D24_UNORM_S8_UINT"), digits({Format::eUNorm, Format::eUInt}));
    EXPECT_EQ(kinds("R24_UNORM_X8_TYPELESS"), digits({Format::eUNorm, Format::eTypeless}));
    EXPECT_EQ(kinds("X24_TYPELESS_G8_UINT"), digits({Format::eTypeless, Format::eUInt}));
    EXPECT_EQ(kinds("R10G10B10_XR_BIAS_A2_UNORM"),
              digits({Format::eXRBias, Format::eXRBias, Format::eXRBias, Format::eUNorm}));
    EXPECT_EQ(kinds("R5G5_SNORM_L6_UNORM"), digits({Format::eSNorm, Format::eSNorm, Format::eUNorm}));
    EXPECT_EQ(kinds("R10G10B10_SNORM_A2_UNORM"),
              digits({Format::eSNorm, Format::eSNorm, Format::eSNorm, Format::eUNorm}));
}

// VkFormat and what holds the same bytes. A packed VkFormat is named from the highest bit down.
TEST(TextureFormats, AreFoundByVulkanNumber) {
    const std::pair<std::uint32_t, const char*> numbers[] = {
        {2, "A4B4G4R4_UNORM"},
        {4, "B5G6R5_UNORM"},
        {6, "A1B5G5R5_UNORM"},
        {8, "B5G5R5A1_UNORM"},
        {9, "R8_UNORM"},
        {10, "R8_SNORM"},
        {13, "R8_UINT"},
        {14, "R8_SINT"},
        {16, "R8G8_UNORM"},
        {17, "R8G8_SNORM"},
        {20, "R8G8_UINT"},
        {21, "R8G8_SINT"},
        {23, "R8G8B8_UNORM"},
        {30, "B8G8R8_UNORM"},
        {37, "R8G8B8A8_UNORM"},
        {38, "R8G8B8A8_SNORM"},
        {41, "R8G8B8A8_UINT"},
        {42, "R8G8B8A8_SINT"},
        {43, "R8G8B8A8_UNORM_SRGB"},
        {44, "B8G8R8A8_UNORM"},
        {50, "B8G8R8A8_UNORM_SRGB"},
        {58, "B10G10R10A2_UNORM"},
        {64, "R10G10B10A2_UNORM"},
        {68, "R10G10B10A2_UINT"},
        {70, "R16_UNORM"},
        {71, "R16_SNORM"},
        {74, "R16_UINT"},
        {75, "R16_SINT"},
        {76, "R16_FLOAT"},
        {77, "R16G16_UNORM"},
        {78, "R16G16_SNORM"},
        {81, "R16G16_UINT"},
        {82, "R16G16_SINT"},
        {83, "R16G16_FLOAT"},
        {91, "R16G16B16A16_UNORM"},
        {92, "R16G16B16A16_SNORM"},
        {95, "R16G16B16A16_UINT"},
        {96, "R16G16B16A16_SINT"},
        {97, "R16G16B16A16_FLOAT"},
        {98, "R32_UINT"},
        {99, "R32_SINT"},
        {100, "R32_FLOAT"},
        {101, "R32G32_UINT"},
        {102, "R32G32_SINT"},
        {103, "R32G32_FLOAT"},
        {104, "R32G32B32_UINT"},
        {105, "R32G32B32_SINT"},
        {106, "R32G32B32_FLOAT"},
        {107, "R32G32B32A32_UINT"},
        {108, "R32G32B32A32_SINT"},
        {109, "R32G32B32A32_FLOAT"},
        {122, "R11G11B10_FLOAT"},
        {123, "R9G9B9E5_SHAREDEXP"},
        {124, "D16_UNORM"},
        {126, "D32_FLOAT"},
        {129, "D24_UNORM_S8_UINT"},
        {130, "D32_FLOAT_S8X24_UINT"},
        {133, "BC1_UNORM"},
        {134, "BC1_UNORM_SRGB"},
        {135, "BC2_UNORM"},
        {136, "BC2_UNORM_SRGB"},
        {137, "BC3_UNORM"},
        {138, "BC3_UNORM_SRGB"},
        {139, "BC4_UNORM"},
        {140, "BC4_SNORM"},
        {141, "BC5_UNORM"},
        {142, "BC5_SNORM"},
        {143, "BC6H_UF16"},
        {144, "BC6H_SF16"},
        {145, "BC7_UNORM"},
        {146, "BC7_UNORM_SRGB"},
        {15, "R8_UNORM_SRGB"},
        {22, "R8G8_UNORM_SRGB"},
        {29, "R8G8B8_UNORM_SRGB"},
        {36, "B8G8R8_UNORM_SRGB"},
        {157, "ASTC_4X4_UNORM"},
        {184, "ASTC_12X12_UNORM_SRGB"},
    };
    for (const auto& [number, name] : numbers) {
        const vPixelFormat* const format = vTextureFormats::FindVulkan(number);
        ASSERT_NE(format, nullptr) << number;
        EXPECT_STREQ(format->name, name) << number;
    }
    for (const std::uint32_t none : {0U, 11U, 12U, 147U, 156U, 185U, 0x10000U + 37, 0xFFFFFFFFU}) {
        EXPECT_EQ(vTextureFormats::FindVulkan(none), nullptr) << none;
    }
}

TEST(TextureFormats, NameTheSizedFormatsOfOpenGL) {
    const std::pair<const char*, unsigned> numbers[] = {
        {"R32G32B32A32_FLOAT", 0x8814},
        {"R32G32B32_FLOAT", 0x8815},
        {"R16G16B16A16_FLOAT", 0x881A},
        {"R16G16B16A16_UNORM", 0x805B},
        {"R16G16B16A16_SNORM", 0x8F9B},
        {"R8G8B8A8_UNORM", 0x8058},
        {"R8G8B8A8_UNORM_SRGB", 0x8C43},
        {"R8G8B8A8_SNORM", 0x8F97},
        {"R8G8_UNORM", 0x822B},
        {"R8G8_SNORM", 0x8F95},
        {"R8_UNORM", 0x8229},
        {"R16_UNORM", 0x822A},
        {"R16_SNORM", 0x8F98},
        {"R16G16_UNORM", 0x822C},
        {"R16G16_SNORM", 0x8F99},
        {"R16_FLOAT", 0x822D},
        {"R32_FLOAT", 0x822E},
        {"R16G16_FLOAT", 0x822F},
        {"R32G32_FLOAT", 0x8230},
        {"R8_SINT", 0x8231},
        {"R8_UINT", 0x8232},
        {"R16_SINT", 0x8233},
        {"R16_UINT", 0x8234},
        {"R32_SINT", 0x8235},
        {"R32_UINT", 0x8236},
        {"R8G8_SINT", 0x8237},
        {"R8G8_UINT", 0x8238},
        {"R16G16_SINT", 0x8239},
        {"R16G16_UINT", 0x823A},
        {"R32G32_SINT", 0x823B},
        {"R32G32_UINT", 0x823C},
        {"R32G32B32A32_UINT", 0x8D70},
        {"R32G32B32A32_SINT", 0x8D82},
        {"R16G16B16A16_UINT", 0x8D76},
        {"R16G16B16A16_SINT", 0x8D88},
        {"R8G8B8A8_UINT", 0x8D7C},
        {"R8G8B8A8_SINT", 0x8D8E},
        {"R10G10B10A2_UNORM", 0x8059},
        {"R10G10B10A2_UINT", 0x906F},
        {"R11G11B10_FLOAT", 0x8C3A},
        {"R9G9B9E5_SHAREDEXP", 0x8C3D},
        {"B5G6R5_UNORM", 0x8D62},
        {"BC1_UNORM", 0x83F1},
        {"BC1_UNORM_SRGB", 0x8C4D},
        {"BC2_UNORM", 0x83F2},
        {"BC2_UNORM_SRGB", 0x8C4E},
        {"BC3_UNORM", 0x83F3},
        {"BC3_UNORM_SRGB", 0x8C4F},
        {"BC4_UNORM", 0x8DBB},
        {"BC4_SNORM", 0x8DBC},
        {"BC5_UNORM", 0x8DBD},
        {"BC5_SNORM", 0x8DBE},
        {"BC6H_UF16", 0x8E8F},
        {"BC6H_SF16", 0x8E8E},
        {"BC7_UNORM", 0x8E8C},
        {"BC7_UNORM_SRGB", 0x8E8D},
        {"ASTC_4X4_UNORM", 0x93B0},
        {"ASTC_12X12_UNORM_SRGB", 0x93DD},
    };
    for (const auto& [name, number] : numbers) EXPECT_EQ(named(name).openGL, number) << name;
}

struct LegacyRow {
    std::uint32_t number;
    const char* name;
    bool premultiplied = false;
};

TEST(TextureFormats, AreFoundByFourCC) {
    const LegacyRow rows[] = {
        {four_cc("DXT1"), "BC1_UNORM"},
        {four_cc("DXT2"), "BC2_UNORM", true},
        {four_cc("DXT3"), "BC2_UNORM"},
        {four_cc("DXT4"), "BC3_UNORM", true},
        {four_cc("DXT5"), "BC3_UNORM"},
        {four_cc("ATI1"), "BC4_UNORM"},
        {four_cc("BC4U"), "BC4_UNORM"},
        {four_cc("BC4S"), "BC4_SNORM"},
        {four_cc("ATI2"), "BC5_UNORM"},
        {four_cc("BC5U"), "BC5_UNORM"},
        {four_cc("BC5S"), "BC5_SNORM"},
        {four_cc("RGBG"), "R8G8_B8G8_UNORM"},
        {four_cc("GRGB"), "G8R8_G8B8_UNORM"},
        {four_cc("UYVY"), "UYVY"},
        {four_cc("YUY2"), "YUY2"},
    };
    for (const LegacyRow& row : rows) {
        const vLegacyFormat* const format = vTextureFormats::FindFourCC(row.number);
        ASSERT_NE(format, nullptr) << row.name;
        EXPECT_STREQ(format->name, row.name);
        EXPECT_EQ(format->premultiplied, row.premultiplied) << row.name;
        EXPECT_NE(vTextureFormats::FindName(format->name), nullptr);
    }
    for (const std::uint32_t none : {0U, 1U, 118U, 0xFFFFFFFFU, four_cc("DX10"), four_cc("dxt1"),
                                     four_cc("ETC1"), four_cc("ATC "), four_cc("PTC4")}) {
        EXPECT_EQ(vTextureFormats::FindFourCC(none), nullptr) << none;
    }
}

// The block formats' channels are what they decode to.
TEST(TextureFormats, HaveTheChannelsThatBlocksDecodeTo) {
    for (const Documented& expected : kOfBlocks) {
        const vPixelFormat& format = dxgi(expected.number);
        const std::string_view name = expected.name;
        std::string letters;
        for (const vPixelFormat::Channel& channel : format.channels) letters += channel.letter;
        const char kind = name[2];
        const char* const wanted = kind == '4' ? "R" : kind == '5' ? "RG" : kind == '6' ? "RGB" : "RGBA";
        EXPECT_EQ(letters, wanted) << name;
        EXPECT_EQ(format.channels.Find('X'), nullptr);
        ASSERT_NE(format.channels.Find('R'), nullptr);
        EXPECT_EQ(format.channels.Find('R')->letter, 'R');
    }
}

}  // namespace
