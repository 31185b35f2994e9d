// SPDX-License-Identifier: Apache-2.0
// What the encoder was given and what its command transcodes, beside the blocks of vBasisImage.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "basis/basis_check.h"
#include "basis/fixture_files.h"
#include "basis/fixture_picture.h"
#include "support/ktx_file.h"
#include "support/plain_blocks.h"
#include "vBasisImage.h"

namespace {

using namespace basis_check;
using basis_fixtures::Picture;
using basis_fixtures::picture_of;
using basis_fixtures::Pixel;

std::string unpacked(const std::string& name, const std::string& format, unsigned int slice) {
    char number[16];
    std::snprintf(number, sizeof number, "_%04u.ktx", slice);
    return basis_fixtures::made_path(name + "_" + format + number);
}

std::vector<basis_fixtures::Fixture> transcoded_fixtures() {
    std::vector<basis_fixtures::Fixture> fixtures;
    std::copy_if(std::begin(basis_fixtures::kFixtures), std::end(basis_fixtures::kFixtures),
                 std::back_inserter(fixtures), basis_fixtures::is_transcoded);
    return fixtures;
}

class BasisEncoder : public testing::TestWithParam<basis_fixtures::Fixture> {};

TEST_P(BasisEncoder, UnpacksToTheSameBlocks) {
    const std::string name = GetParam().name;
    vBasisImage image;
    hold(image, basis_fixtures::made(name));
    ASSERT_EQ(image.getNumSlices(), GetParam().images);

    const struct {
        const char* format;
        int usage;
    } cases[] = {{"BC1_RGB", TOZ::eUsageFormatBC1},
                 {"BC3_RGBA", TOZ::eUsageFormatBC3},
                 {"BC4_R", TOZ::eUsageFormatBC4},
                 {"BC5_RG", TOZ::eUsageFormatBC5}};
    for (const auto& test : cases) {
        for (unsigned int slice = 0; slice < static_cast<unsigned int>(GetParam().images); ++slice) {
            const auto levels = support::ktx_levels(unpacked(name, test.format, slice));
            if (slice == 0) {
                EXPECT_EQ(static_cast<int>(levels.size()), image.getNumMipLevels());
            }
            for (unsigned int level = 0; level < levels.size(); ++level) {
                const Got got = get_image(image, level, slice, test.usage);
                EXPECT_TRUE(got.result);
                EXPECT_TRUE(got.blocks == levels[level])
                    << test.format << ", slice " << slice << ", level " << level;
            }
            EXPECT_TRUE(
                refused(get_image(image, static_cast<unsigned int>(levels.size()), slice, test.usage)));
        }
    }
}

/// The channels of a block format, as its definition decodes them, and those of the picture that they show.
struct Shown {
    int usage;
    TOZ::SUPPORTED_FORMAT::Type format;
    std::vector<std::pair<double plain::Texel::*, std::uint8_t Pixel::*>> channels;
};

const Shown kShown[] = {
    {TOZ::eUsageFormatBC1,
     TOZ::SUPPORTED_FORMAT::DXT1,
     {{&plain::Texel::red, &Pixel::red},
      {&plain::Texel::green, &Pixel::green},
      {&plain::Texel::blue, &Pixel::blue}}},
    {TOZ::eUsageFormatBC3,
     TOZ::SUPPORTED_FORMAT::DXT5,
     {{&plain::Texel::red, &Pixel::red},
      {&plain::Texel::green, &Pixel::green},
      {&plain::Texel::blue, &Pixel::blue},
      {&plain::Texel::alpha, &Pixel::alpha}}},
    {TOZ::eUsageFormatBC4, TOZ::SUPPORTED_FORMAT::BC4U, {{&plain::Texel::red, &Pixel::red}}},
    {TOZ::eUsageFormatBC5,
     TOZ::SUPPORTED_FORMAT::BC5U,
     {{&plain::Texel::red, &Pixel::red}, {&plain::Texel::green, &Pixel::alpha}}},
};

/// The mean difference of a picture and the blocks that show it, of 255.
double mean_difference(const Shown& shown, const Bytes& blocks, const Picture& picture) {
    const std::size_t block_bytes =
        shown.format == TOZ::SUPPORTED_FORMAT::DXT1 || shown.format == TOZ::SUPPORTED_FORMAT::BC4U ? 8 : 16;
    double sum = 0;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const auto block = static_cast<std::size_t>(y / 4 * ((picture.width + 3) / 4) + x / 4);
            const plain::Texel texel = plain::decode_block(
                shown.format,
                blocks.data() + block * block_bytes)[static_cast<std::size_t>(y % 4 * 4 + x % 4)];
            const Pixel& pixel = picture.pixels[static_cast<std::size_t>(y * picture.width + x)];
            for (const auto& [decoded, original] : shown.channels)
                sum += std::abs(texel.*decoded * 255 - pixel.*original);
        }
    }
    return sum / static_cast<double>(picture.pixels.size() * shown.channels.size());
}

Picture upside_down(const Picture& picture) {
    Picture turned{picture.width, picture.height, {}};
    for (auto row = picture.pixels.end(); row != picture.pixels.begin();) {
        row -= picture.width;
        turned.pixels.insert(turned.pixels.end(), row, row + picture.width);
    }
    return turned;
}

// ETC1S has one hue in a block and may be far from the picture, but not as far as from the picture
// upside down, which differs in green.
TEST_P(BasisEncoder, WasGivenThePictureThatTheBlocksShow) {
    vBasisImage image;
    hold(image, basis_fixtures::made(GetParam().name));
    const bool etc1s = std::string(GetParam().name).rfind("etc1s", 0) == 0;
    for (const Shown& shown : kShown) {
        for (int i = 0; i < GetParam().images; ++i) {
            const Got got = get_image(image, 0, static_cast<unsigned int>(i), shown.usage);
            ASSERT_TRUE(got.result);
            Picture picture = picture_of(GetParam(), i);
            Picture turned = upside_down(picture);
            if (has_option(GetParam(), "-y_flip")) std::swap(picture, turned);
            const double difference = mean_difference(shown, got.blocks, picture);
            if (!etc1s) {
                EXPECT_LT(difference, 8) << "slice " << i << ", usage " << shown.usage;
            }
            if (shown.channels.size() > 2 && picture.height > 8 && picture.width > 1) {
                EXPECT_LT(difference, 0.9 * mean_difference(shown, got.blocks, turned))
                    << "slice " << i << ", usage " << shown.usage;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Fixtures, BasisEncoder, testing::ValuesIn(transcoded_fixtures()),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
