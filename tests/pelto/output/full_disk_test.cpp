// SPDX-License-Identifier: Apache-2.0
// Outputs that cannot be completed, and what the others then are.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <vector>

#include "pelto/output/folder_content.h"
#include "pelto/output/slices.h"
#include "pelto/output/started_command.h"
#include "support/command.h"
#include "support/temporary_folder.h"

namespace {

using namespace support;
namespace fs = std::filesystem;

constexpr const char* kBasis = PELTO_BASIS_FIXTURES "/etc1s_257x129.basis";

std::string told(const std::string& input, const std::string& output, const std::string& why) {
    return "pelto: " + input + ": " + output + " cannot be written: " + why + "\n";
}

TEST(FullDisk, LeavesEveryOutputAsItWas) {
    for (const bool there_before : {false, true}) {
        for (const char* const no_unnamed : {"0", "1"}) {
            const Slices slices(there_before);
            Surroundings surroundings;
            // Room for the first output, and the header of the second.
            surroundings.faults["FAULT_FULL_AFTER"] =
                std::to_string(Slices::contents_after()[0].size() + 130);
            surroundings.faults["FAULT_NO_UNNAMED"] = no_unnamed;
            const Ending ending = run(slices.arguments(), surroundings);
            EXPECT_EQ(ending.status, 1);
            EXPECT_EQ(ending.err, told(Slices::kInput, slices.path("out.1.dds"), "No space left on device"));
            EXPECT_EQ(slices.contents(), Slices::contents_before(there_before));
            EXPECT_EQ(names_in(slices.folder()).size(), there_before ? 3U : 0U);
        }
    }
}

TEST(FullDisk, OfATrueFileSystemIsToldAndLeavesNothing) {
    const TemporaryFolder folder;
    fs::create_directory(folder.path("disk"));
    const std::string script = folder.write(
        "script", "cd '" + folder.path(".") + "'\nmount -t tmpfs -o size=16k none disk || exit 1\n" +
                      PELTO_COMMAND " transcode '" + kBasis +
                      "' --usage bc3 -o disk/out.dds 2>err\necho $? >status\nls -A disk >names\n");
    const std::string line =
        "unshare --user --map-root-user --mount sh '" + script + "' 2>'" + folder.path("log") + "'";
    if (std::system(line.c_str()) != 0)
        GTEST_SKIP() << "nothing can be mounted: " << bytes_of(folder.path("log"));
    EXPECT_EQ(bytes_of(folder.path("status")), "1\n");
    EXPECT_EQ(bytes_of(folder.path("err")), told(kBasis, "disk/out.dds", "No space left on device"));
    EXPECT_EQ(bytes_of(folder.path("names")), "");
}

TEST(FullDisk, IsALimitOfTheFileSizeToo) {
    const TemporaryFolder folder;
    const std::string out = folder.write("out.dds", "before");
    // In blocks of 512 bytes: 16 KiB.
    const CommandResult result =
        run_pelto({"transcode", kBasis, "--usage", "bc3", "-o", out}, "ulimit -f 32");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, told(kBasis, out, "File too large"));
    EXPECT_EQ(bytes_of(out), "before");
    EXPECT_EQ(names_in(folder.path(".")), std::vector<std::string>{"out.dds"});
    const CommandResult sheet = run_pelto(
        {"sheet", PELTO_SAMPLES "/textures/bc1_mips.dds", "-o", folder.path("out.png")}, "ulimit -f 2");
    EXPECT_EQ(sheet.status, 1);
    EXPECT_EQ(names_in(folder.path(".")), std::vector<std::string>{"out.dds"});
}

TEST(Outputs, GiveTheirNamesBackWhereOneIsRefused) {
    for (const bool there_before : {false, true}) {
        for (const char* const no_unnamed : {"0", "1"}) {
            const bool unnamed = std::string(no_unnamed) == "0" && has_unnamed_files();
            for (int refused = 1; refused <= 3; ++refused) {
                SCOPED_TRACE(refused);
                const Slices slices(there_before);
                Surroundings surroundings;
                surroundings.faults["FAULT_NAME"] = slices.path("out.");
                // An output that is there already is first tried to be given a name, then replaced.
                const bool tried = there_before && unnamed;
                surroundings.faults["FAULT_NO_NAME"] = std::to_string(tried ? 2 * refused : refused);
                surroundings.faults["FAULT_NO_UNNAMED"] = no_unnamed;
                const Ending ending = run(slices.arguments(), surroundings);
                EXPECT_EQ(ending.status, 1);
                const std::string name = Slices::names()[static_cast<std::size_t>(refused - 1)];
                EXPECT_EQ(ending.err, told(Slices::kInput, slices.path(name), "No space left on device"));
                EXPECT_EQ(slices.contents(), Slices::contents_before(there_before));
                EXPECT_EQ(names_in(slices.folder()).size(), there_before ? 3U : 0U);
            }
        }
    }
}

TEST(Outputs, HaveTheModeOfAnyNewFile) {
    for (const char* const no_unnamed : {"0", "1"}) {
        for (const bool there_before : {false, true}) {
            const Slices slices(there_before);
            if (there_before) fs::permissions(slices.path("out.0.dds"), fs::perms::owner_all);
            const mode_t before = umask(027);
            const Ending ending = run(slices.arguments(), {{{"FAULT_NO_UNNAMED", no_unnamed}}, {}});
            umask(before);
            EXPECT_EQ(ending.status, 0) << ending.err;
            struct stat status = {};
            ASSERT_EQ(stat(slices.path("out.0.dds").c_str(), &status), 0);
            EXPECT_EQ(status.st_mode & 07777U, 0640U);
        }
    }
}

TEST(Outputs, KeepTheLinksThatTheyAreNamedBy) {
    const Slices slices(false);
    fs::create_directory(slices.path("store"));
    std::ofstream(slices.path("store/first")) << "before";
    fs::create_symlink("store/first", slices.path("out.0.dds"));
    EXPECT_EQ(run(slices.arguments()).status, 0);
    EXPECT_TRUE(fs::is_symlink(slices.path("out.0.dds")));
    EXPECT_TRUE(slices.contents() == Slices::contents_after());
    EXPECT_EQ(names_in(slices.path("store")), std::vector<std::string>{"first"});
}

}  // namespace
