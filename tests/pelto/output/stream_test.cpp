// SPDX-License-Identifier: Apache-2.0
// Outputs that are written as they come: standard output, pipes, devices.
#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

#include "pelto/output/folder_content.h"
#include "pelto/output/started_command.h"
#include "support/command.h"
#include "support/png_picture.h"
#include "support/temporary_folder.h"

namespace {

using namespace support;
namespace fs = std::filesystem;

constexpr const char* kTexture = PELTO_SAMPLES "/textures/bc4.dds";
constexpr const char* kBasis = PELTO_BASIS_FIXTURES "/etc1s_257x129.basis";

class Stream : public testing::Test {
protected:
    std::string path(const std::string& name) const { return folder_.path(name); }

    std::string sheet() const {
        EXPECT_EQ(run_pelto({"sheet", kTexture, "-o", path("sheet.png")}).status, 0);
        return bytes_of(path("sheet.png"));
    }

    std::string texture() const {
        EXPECT_EQ(run_pelto({"transcode", kBasis, "--usage", "bc1", "-o", path("texture.dds")}).status, 0);
        return bytes_of(path("texture.dds"));
    }

    const TemporaryFolder folder_;
};

TEST_F(Stream, IsStandardOutputByAHyphen) {
    const CommandResult drawn = run_pelto({"sheet", kTexture, "-o", "-"});
    EXPECT_EQ(drawn.status, 0) << drawn.err;
    EXPECT_TRUE(drawn.out == sheet());
    const CommandResult made = run_pelto({"transcode", kBasis, "--usage", "bc1", "-o", "-"});
    EXPECT_EQ(made.status, 0) << made.err;
    EXPECT_TRUE(made.out == texture());
}

TEST_F(Stream, OfALibraryStandsAloneOnStandardOutput) {
    const CommandResult result = run_pelto({"library", PELTO_SAMPLES "/library/library.xml", "--sheet", "-"});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.err.find("8 textures, 32568 bytes, 0 failed\n"), std::string::npos) << result.err;
    EXPECT_GT(read_png(folder_.write("out.png", result.out)).width, 128U);
}

// What the shell has opened keeps its place, and what it already holds.
TEST_F(Stream, IsStandardOutputByItsOtherNames) {
    const std::string out = folder_.write("log", "before\n");
    const std::string line =
        PELTO_COMMAND " sheet '" + std::string(kTexture) + "' -o /dev/stdout >>'" + out + "'";
    ASSERT_EQ(std::system(line.c_str()), 0);
    EXPECT_TRUE(bytes_of(out) == "before\n" + sheet());
}

TEST_F(Stream, MayBeAPipe) {
    const std::string pipe = path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::string expected = texture();
    // Which takes all of it before anybody reads.
    const int reader = open(pipe.c_str(), O_RDWR | O_NONBLOCK);
    const CommandResult result = run_pelto({"transcode", kBasis, "--usage", "bc1", "-o", pipe});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(fs::is_fifo(pipe));
    std::string got(1 << 16, '\0');
    got.resize(static_cast<std::size_t>(std::max<ssize_t>(read(reader, got.data(), got.size()), 0)));
    close(reader);
    EXPECT_TRUE(got == expected);
}

// As a superuser, not the system's own device: a mistake would replace it.
TEST_F(Stream, MayBeADevice) {
    std::string device = "/dev/null";
    if (geteuid() == 0) {
        device = path("null");
        ASSERT_EQ(mknod(device.c_str(), S_IFCHR | 0600, makedev(1, 3)), 0);
        if (!std::ofstream(device)) GTEST_SKIP() << "the temporary folder takes no devices";
    }
    const CommandResult result = run_pelto({"sheet", kTexture, "-o", device, "--json"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(fs::is_character_file(device));
    const CommandResult made = run_pelto({"transcode", kBasis, "--usage", "bc1", "-o", device});
    EXPECT_EQ(made.status, 0) << made.err;
    EXPECT_TRUE(fs::is_character_file(device));
}

TEST_F(Stream, ThatIsFullIsToldOf) {
    const CommandResult result = run_pelto({"transcode", kBasis, "--usage", "bc1", "-o", "/dev/full"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err,
              "pelto: " + std::string(kBasis) + ": /dev/full cannot be written: No space left on device\n");
}

TEST_F(Stream, EndsTheCommandQuietlyWhereNobodyReads) {
    const std::string closed = path("closed");
    const std::string line = "{ until [ -e '" + closed +
                             "' ]; do sleep 0.01; done; " PELTO_COMMAND " sheet '" + kTexture + "' -o - 2>'" +
                             path("err") + "'; echo $? >'" + path("status") + "'; } | { exec <&-; echo >'" +
                             closed + "'; }";
    ASSERT_EQ(std::system(line.c_str()), 0);
    EXPECT_EQ(bytes_of(path("status")), std::to_string(128 + SIGPIPE) + "\n");
    EXPECT_EQ(bytes_of(path("err")), "");
}

TEST_F(Stream, ThatIsClosedIsNotMistakenForAnOutput) {
    const std::string out = path("out.dds");
    Surroundings surroundings;
    surroundings.closed_standard_error = true;
    surroundings.faults["FAULT_NOISE"] = "1";
    EXPECT_EQ(run({"transcode", kBasis, "--usage", "bc1", "-o", out}, surroundings).status, 0);
    EXPECT_TRUE(bytes_of(out) == texture());
}

TEST_F(Stream, ThatIsClosedIsToldOf) {
    const std::string line =
        PELTO_COMMAND " transcode '" + std::string(kBasis) + "' --usage bc1 -o - >&- 2>'" + path("err") + "'";
    EXPECT_EQ(WEXITSTATUS(std::system(line.c_str())), 1);
    EXPECT_EQ(bytes_of(path("err")),
              "pelto: " + std::string(kBasis) + ": standard output cannot be written: Bad file descriptor\n");
}

}  // namespace
