// SPDX-License-Identifier: Apache-2.0
// Reports of formats that do not fit.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/check_failure_capture.h"
#include "support/log_capture.h"
#include "texture/texture_model.h"
#include "texture/texture_private.h"
#include "vTextureUtils.h"

namespace {

using namespace texture_model;
using support::CheckFailureCapture;
using support::CheckFailureReport;
using Extent = TOZ::vTVec3<unsigned int, 0>;
using Reports = std::vector<CheckFailureReport>;

const CheckFailureReport kNotCompressed = {false, "Not a compressed format", "vTextureUtils.cpp", 125};
const CheckFailureReport kNotSupported = {false, "Format not supported !", "vTextureUtils.cpp", 250};

TEST(TextureReport, BytesAPixelOfNoFormat) {
    CheckFailureCapture capture;
    for (int value : no_member()) {
        EXPECT_EQ(texture_private::format_pixel_size()(format(value)), 0u) << value;
        ASSERT_EQ(capture.take(), Reports{kNotSupported}) << value;
    }
}

TEST(TextureReport, BytesAPixelOfACompressedFormat) {
    CheckFailureCapture capture;
    for (int value = 51; value <= 64; ++value) {
        EXPECT_EQ(texture_private::format_pixel_size()(format(value)), 0u) << value;
        ASSERT_EQ(capture.take(), Reports{kNotSupported}) << value;
    }
}

TEST(TextureReport, CompressedSizeOfAFormatThatIsNotCompressed) {
    CheckFailureCapture capture;
    std::vector<int> values = no_member();
    for (int value = 1; value <= 50; ++value) values.push_back(value);
    for (int value : values) {
        EXPECT_EQ(texture_private::compressed_size()(16, 16, format(value)), 0u) << value;
        ASSERT_EQ(capture.take(), Reports{kNotCompressed}) << value;
    }
}

TEST(TextureReport, CompressedSizeOfFormat5) {
    CheckFailureCapture capture;
    EXPECT_EQ(texture_private::compressed_size()(5, 5, vTextureFormat::FORMAT_5), 0u);
    EXPECT_EQ(capture.take(), Reports{kNotCompressed});
}

TEST(TextureReport, ImageSizeOfFormat0) {
    CheckFailureCapture capture;
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(4, 4, 1, 0, format(0)), 0u);
    EXPECT_EQ(capture.take(), Reports{kNotSupported});
}

TEST(TextureReport, EveryFormOfTheImageSizeReportsOnce) {
    CheckFailureCapture capture;
    for (int value : no_member()) {
        EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(640, 480, 3, 2, format(value)), 0u) << value;
        ASSERT_EQ(capture.take(), Reports{kNotSupported}) << value;
        EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(Extent(640, 480, 3), 2, format(value)), 0u) << value;
        ASSERT_EQ(capture.take(), Reports{kNotSupported}) << value;
        EXPECT_EQ(vTextureUtils::ComputeMipSizeInBytes(640, 480, 3, 2, format(value)), 0u) << value;
        ASSERT_EQ(capture.take(), Reports{kNotSupported}) << value;
    }
}

TEST(TextureReport, ExtentsDoNotMatter) {
    CheckFailureCapture capture;
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(0, 0, 0, 0, format(0)), 0u);
    EXPECT_EQ(capture.take(), Reports{kNotSupported});
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(UINT32_MAX, UINT32_MAX, UINT32_MAX, 99, format(65)), 0u);
    EXPECT_EQ(capture.take(), Reports{kNotSupported});
    EXPECT_EQ(texture_private::compressed_size()(0, 0, vTextureFormat::FORMAT_5), 0u);
    EXPECT_EQ(capture.take(), Reports{kNotCompressed});
}

TEST(TextureReport, ReturnsToTheCallerWhoGoesOn) {
    CheckFailureCapture capture;
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(4, 4, 1, 0, format(0)), 0u);
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(4, 4, 1, 0, vTextureFormat::FORMAT_5), 64u);
    EXPECT_EQ(texture_private::compressed_size()(4, 4, vTextureFormat::FORMAT_5), 0u);
    EXPECT_EQ(texture_private::compressed_size()(4, 4, vTextureFormat::FORMAT_51), 8u);
    EXPECT_EQ(capture.take(), (Reports{kNotSupported, kNotCompressed}));
}

TEST(TextureReport, EveryFailureIsReported) {
    CheckFailureCapture capture;
    for (int i = 0; i < 3; ++i) vTextureUtils::ComputeImageSizeInBytes(4, 4, 1, 0, format(0));
    EXPECT_EQ(capture.take(), (Reports{kNotSupported, kNotSupported, kNotSupported}));
}

TEST(TextureReport, ClientTypesAreNeverReported) {
    CheckFailureCapture capture;
    for (int value = 0; value <= 40; ++value) texture_private::client_pixel_size()(client_type(value));
    for (int value : no_member()) {
        EXPECT_EQ(texture_private::client_pixel_size()(client_type(value)), 0u) << value;
        EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(4, 4, 1, 0, client_type(value)), 0u) << value;
    }
    EXPECT_EQ(capture.take(), Reports{});
    texture_private::format_pixel_size()(format(0));
    EXPECT_EQ(capture.take(), Reports{kNotSupported}) << "formats are, on purpose";
}

TEST(TextureReport, GoesToTheLogWhereNothingElseTakesIt) {
    const support::LogCapture log;
    EXPECT_EQ(vTextureUtils::ComputeImageSizeInBytes(4, 4, 1, 0, format(0)), 0u);
    ASSERT_EQ(log.records().size(), 1u);
    EXPECT_NE(log.records()[0].text.find("Format not supported !"), std::string::npos);
}

}  // namespace
