// SPDX-License-Identifier: Apache-2.0
// The two enumerations and what can be asked of a format without an extent.
#include <cstdint>
#include <gtest/gtest.h>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/check_failure_capture.h"
#include "texture/texture_model.h"
#include "texture/texture_private.h"
#include "vTextureUtils.h"

namespace {

using namespace texture_model;
using support::CheckFailureCapture;

static_assert(std::is_same_v<std::underlying_type_t<vTextureFormat::Type>, std::int32_t>);
static_assert(std::is_same_v<std::underlying_type_t<vTextureClientDataType>, std::int32_t>);
static_assert(std::is_convertible_v<vTextureFormat::Type, int>, "unscoped");
static_assert(std::is_convertible_v<vTextureClientDataType, int>, "unscoped");

static_assert(std::is_empty_v<vTextureUtils>);
static_assert(std::is_trivially_copy_assignable_v<vTextureUtils>);
static_assert(std::is_trivially_move_assignable_v<vTextureUtils>);

TEST(TextureFormat, MembersCarryTheNumberInTheirName) {
    using F = vTextureFormat;
    const std::vector<int> formats = {
        F::FORMAT_1,  F::FORMAT_2,  F::FORMAT_3,  F::FORMAT_4,  F::FORMAT_5,  F::FORMAT_6,  F::FORMAT_7,
        F::FORMAT_8,  F::FORMAT_9,  F::FORMAT_10, F::FORMAT_11, F::FORMAT_12, F::FORMAT_13, F::FORMAT_14,
        F::FORMAT_15, F::FORMAT_16, F::FORMAT_17, F::FORMAT_18, F::FORMAT_19, F::FORMAT_20, F::FORMAT_21,
        F::FORMAT_22, F::FORMAT_23, F::FORMAT_24, F::FORMAT_25, F::FORMAT_26, F::FORMAT_27, F::FORMAT_28,
        F::FORMAT_29, F::FORMAT_30, F::FORMAT_31, F::FORMAT_32, F::FORMAT_33, F::FORMAT_34, F::FORMAT_35,
        F::FORMAT_36, F::FORMAT_37, F::FORMAT_38, F::FORMAT_39, F::FORMAT_40, F::FORMAT_41, F::FORMAT_42,
        F::FORMAT_43, F::FORMAT_44, F::FORMAT_45, F::FORMAT_46, F::FORMAT_47, F::FORMAT_48, F::FORMAT_49,
        F::FORMAT_50, F::FORMAT_51, F::FORMAT_52, F::FORMAT_53, F::FORMAT_54, F::FORMAT_55, F::FORMAT_56,
        F::FORMAT_57, F::FORMAT_58, F::FORMAT_59, F::FORMAT_60, F::FORMAT_61, F::FORMAT_62, F::FORMAT_63,
        F::FORMAT_64,
    };
    ASSERT_EQ(formats.size(), 64u);
    for (std::size_t i = 0; i < formats.size(); ++i) EXPECT_EQ(formats[i], static_cast<int>(i) + 1);
}

TEST(TextureClientType, MembersCarryTheNumberInTheirName) {
    const std::vector<int> types = {
        CLIENT_TYPE_1,  CLIENT_TYPE_2,  CLIENT_TYPE_3,  CLIENT_TYPE_4,  CLIENT_TYPE_5,  CLIENT_TYPE_6,
        CLIENT_TYPE_7,  CLIENT_TYPE_8,  CLIENT_TYPE_9,  CLIENT_TYPE_10, CLIENT_TYPE_11, CLIENT_TYPE_12,
        CLIENT_TYPE_13, CLIENT_TYPE_14, CLIENT_TYPE_15, CLIENT_TYPE_16, CLIENT_TYPE_17, CLIENT_TYPE_18,
        CLIENT_TYPE_19, CLIENT_TYPE_20, CLIENT_TYPE_21, CLIENT_TYPE_22, CLIENT_TYPE_23, CLIENT_TYPE_24,
        CLIENT_TYPE_25, CLIENT_TYPE_26, CLIENT_TYPE_27, CLIENT_TYPE_28, CLIENT_TYPE_29, CLIENT_TYPE_30,
        CLIENT_TYPE_31, CLIENT_TYPE_32, CLIENT_TYPE_33, CLIENT_TYPE_34, CLIENT_TYPE_35, CLIENT_TYPE_36,
    };
    ASSERT_EQ(types.size(), 36u);
    for (std::size_t i = 0; i < types.size(); ++i) EXPECT_EQ(types[i], static_cast<int>(i) + 1);
}

TEST(TextureFormat, EveryUncompressedFormatHasItsBytesAPixel) {
    CheckFailureCapture capture;
    std::size_t members = 0;
    for (const SizeClass& size : format_sizes()) {
        for (int value : size.members) {
            EXPECT_EQ(texture_private::format_pixel_size()(format(value)), size.bytes) << "format " << value;
            ++members;
        }
    }
    EXPECT_EQ(members, 50u);
    EXPECT_TRUE(capture.take().empty());
}

TEST(TextureFormat, CompressedFormatsAndOtherNumbersHaveNoBytesAPixel) {
    CheckFailureCapture capture;
    for (int value = 51; value <= 64; ++value)
        EXPECT_EQ(texture_private::format_pixel_size()(format(value)), 0u) << "format " << value;
    for (int value : no_member())
        EXPECT_EQ(texture_private::format_pixel_size()(format(value)), 0u) << "format " << value;
}

TEST(TextureClientType, EveryTypeHasItsBytesAPixel) {
    std::size_t members = 0;
    for (const SizeClass& size : client_sizes()) {
        for (int value : size.members) {
            EXPECT_EQ(texture_private::client_pixel_size()(client_type(value)), size.bytes)
                << "type " << value;
            ++members;
        }
    }
    EXPECT_EQ(members, 36u);
}

TEST(TextureClientType, OtherNumbersHaveNoBytesAPixel) {
    for (int value = 37; value <= 64; ++value)
        EXPECT_EQ(texture_private::client_pixel_size()(client_type(value)), 0u) << "type " << value;
    for (int value : no_member())
        EXPECT_EQ(texture_private::client_pixel_size()(client_type(value)), 0u) << "type " << value;
}

TEST(TextureIsCompressed, IsTrueFrom51To64Only) {
    CheckFailureCapture capture;
    EXPECT_FALSE(vTextureUtils::IsCompressed(vTextureFormat::FORMAT_50));
    EXPECT_TRUE(vTextureUtils::IsCompressed(vTextureFormat::FORMAT_51));
    EXPECT_TRUE(vTextureUtils::IsCompressed(vTextureFormat::FORMAT_64));
    for (int value = -70; value <= 70; ++value)
        EXPECT_EQ(vTextureUtils::IsCompressed(format(value)), value >= 51 && value <= 64) << value;
    for (int value : no_member()) EXPECT_FALSE(vTextureUtils::IsCompressed(format(value))) << value;
    EXPECT_TRUE(capture.take().empty());
}

/// The formats with a client type of their own.
const std::vector<std::pair<int, int>> kCompatible = {{30, 19}, {31, 20}, {38, 13}, {39, 14}, {41, 17}};

TEST(TextureCompatibleFormat, FiveFormatsHaveATypeOfTheirOwn) {
    for (const auto& [value, type] : kCompatible)
        EXPECT_EQ(vTextureUtils::ComputeCompatibleFormat(format(value)), client_type(type)) << value;
}

TEST(TextureCompatibleFormat, EveryOtherNumberFallsBack) {
    CheckFailureCapture capture;
    EXPECT_EQ(vTextureUtils::ComputeCompatibleFormat(vTextureFormat::FORMAT_40), CLIENT_TYPE_23);
    std::size_t fallbacks = 0;
    for (int value = -70; value <= 70; ++value) {
        bool has_own = false;
        for (const auto& pair : kCompatible) has_own = has_own || pair.first == value;
        if (has_own) continue;
        EXPECT_EQ(vTextureUtils::ComputeCompatibleFormat(format(value)), CLIENT_TYPE_23) << value;
        ++fallbacks;
    }
    EXPECT_EQ(fallbacks, 136u);
    for (int value : no_member())
        EXPECT_EQ(vTextureUtils::ComputeCompatibleFormat(format(value)), CLIENT_TYPE_23) << value;
    EXPECT_TRUE(capture.take().empty());
}

TEST(TextureCompatibleFormat, ATypeOfItsOwnHasAsManyBytes) {
    for (const auto& [value, type] : kCompatible) {
        const vTextureClientDataType own = vTextureUtils::ComputeCompatibleFormat(format(value));
        EXPECT_EQ(texture_private::client_pixel_size()(own),
                  texture_private::format_pixel_size()(format(value)))
            << value << " and " << type;
    }
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(1, 1, 1, 0, CLIENT_TYPE_23), 16u) << "the fallback";
}

}  // namespace
