// The encoder has a transcoder of its own, of another release: its blocks are the same.
#include <algorithm>
#include <cstdio>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

#include "basis/basis_check.h"
#include "basis/fixture_files.h"
#include "support/ktx_file.h"
#include "vBasisImage.h"

namespace {

using namespace basis_check;

std::string unpacked(const std::string& name, const std::string& format, unsigned int slice) {
    char number[16];
    std::snprintf(number, sizeof number, "_%04u.ktx", slice);
    return basis_fixtures::made_path(name + "_" + format + number);
}

std::vector<basis_fixtures::Fixture> fixtures_of_2d_images() {
    std::vector<basis_fixtures::Fixture> fixtures;
    std::copy_if(std::begin(basis_fixtures::kFixtures), std::end(basis_fixtures::kFixtures),
                 std::back_inserter(fixtures), basis_fixtures::is_2d);
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

INSTANTIATE_TEST_SUITE_P(Fixtures, BasisEncoder, testing::ValuesIn(fixtures_of_2d_images()),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
