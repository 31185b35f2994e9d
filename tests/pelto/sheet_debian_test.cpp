// SPDX-License-Identifier: Apache-2.0
// pelto sheet on DDS files of Debian packages, made by others' programs. Where scripts/fetch_packages could not
// fetch a package, its test is skipped.
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vDDSImage.h>
#include <vector>

#include "pelto/sheet_check.h"

namespace {

std::vector<std::string> dds_files(const std::string& package) {
    std::vector<std::string> files;
    const std::filesystem::path folder = std::filesystem::path(PELTO_DEBIAN_FILES) / package;
    if (!std::filesystem::is_directory(folder)) return files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ".dds") files.push_back(entry.path().string());
    }
    std::sort(files.begin(), files.end());
    return files;
}

class SheetOfDebianFiles : public testing::TestWithParam<const char*> {};

TEST_P(SheetOfDebianFiles, ShowsEveryLevelAsItDecodes) {
    const std::vector<std::string> files = dds_files(GetParam());
    if (files.empty()) GTEST_SKIP() << "the files of " << GetParam() << " are not there";
    const sheet::Sheet sheet = sheet::draw(files);
    ASSERT_EQ(sheet.result.status, 0) << sheet.result.err;
    EXPECT_EQ(sheet.result.err, "");
    std::size_t next = 0;
    for (const std::string& file : files) {
        vDDSImage image;
        ASSERT_TRUE(image.load(file, false, false)) << file;
        for (int level = 0; level <= image.get_num_mipmaps(); ++level, ++next) {
            ASSERT_LT(next, sheet.images.size());
            const sheet::Image& drawn = sheet.images[next];
            EXPECT_EQ(drawn.path, file);
            EXPECT_EQ(drawn.level, level);
            const vDDSSurface& surface = level == 0 ? image[0] : image[0].get_mipmap(level - 1);
            const auto* const bytes = reinterpret_cast<const std::uint8_t*>(static_cast<char*>(surface));
            const sheet::Format& format = sheet::format_of(image.get_format());
            EXPECT_TRUE(shows(drawn, format, sheet::texels_of(format, drawn.width, drawn.height, bytes), 3))
                << file;
        }
    }
    EXPECT_EQ(next, sheet.images.size());
}

INSTANTIATE_TEST_SUITE_P(Packages, SheetOfDebianFiles, testing::Values("allegro5-doc", "openmw-data"),
                         [](const auto& package) {
                             std::string name = package.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

}  // namespace
