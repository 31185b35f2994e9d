// SPDX-License-Identifier: Apache-2.0
// How often the command opens a file: once a subcommand, so that it speaks of one state of the file.
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <system_error>
#include <vector>

#include "support/command.h"
#include "support/temporary_folder.h"

namespace {

using namespace support;

const std::string kDDS = PELTO_SAMPLES "/textures/bc1_mips.dds";
const std::string kBasis = PELTO_SAMPLES "/textures/etc1s_mips.basis";

class Opens : public testing::Test {
protected:
    // Of `file`, by a run that must end well.
    int opens(const std::string& file, const std::vector<std::string>& arguments) const {
        const std::string log = folder_.path("opens");
        std::filesystem::remove(log);
        // An address sanitizer wants to be loaded first, but need not be.
        const CommandResult result =
            run_pelto(arguments, "export LD_PRELOAD='" PELTO_OPEN_COUNTER "' OPEN_COUNTED='" + file +
                                     "' OPEN_COUNT='" + log + "' ASAN_OPTIONS=verify_asan_link_order=0");
        EXPECT_EQ(result.status, 0) << result.err;
        std::error_code none;
        const auto size = std::filesystem::file_size(log, none);
        return none ? 0 : static_cast<int>(size);
    }

    std::string output(const std::string& name) const { return folder_.path(name); }

    const TemporaryFolder folder_;
};

TEST_F(Opens, OneOfATextureForEachSubcommand) {
    for (const std::string& file : {kDDS, kBasis}) {
        EXPECT_EQ(opens(file, {"check", file}), 1);
        EXPECT_EQ(opens(file, {"inspect", file, "--levels"}), 1);
        EXPECT_EQ(opens(file, {"sheet", file, "-o", output("a.png")}), 1);
    }
    EXPECT_EQ(opens(kDDS, {"sheet", "--as-loaded", kDDS, "-o", output("a.png")}), 1);
    EXPECT_EQ(opens(kBasis, {"transcode", kBasis, "--usage", "bc1", "-o", output("a.dds")}), 1);
}

TEST_F(Opens, OneForEachTextureOfALibrary) {
    const std::string document =
        folder_.write("library.xml",
                      "<library xmlns='urn:pelto:texture-library'><material name='m'>"
                      "<texture name='a'><file>" +
                          kDDS + "</file><kind>2d</kind></texture><texture name='b'><file>" + kBasis +
                          "</file><kind>2d</kind></texture></material></library>");
    const std::string sheet = output("a.png");
    for (const std::string& file : {kDDS, kBasis}) {
        EXPECT_EQ(opens(file, {"library", document}), 1) << file;
        EXPECT_EQ(opens(file, {"library", document, "--sheet", sheet}), 1) << file;
    }
}

// So that a count of 1 is not one of nothing.
TEST_F(Opens, AreCountedForEachTimeThatAFileIsNamed) {
    EXPECT_EQ(opens(kDDS, {"check", kDDS, kDDS, kBasis}), 2);
    EXPECT_EQ(opens(kDDS, {"check", kBasis}), 0);
}

}  // namespace
