// SPDX-License-Identifier: Apache-2.0
// What a person sees at a terminal, and nobody else.
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <gtest/gtest.h>
#include <pty.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "support/command.h"

namespace {

std::string sample(const std::string& name) { return std::string(PELTO_SAMPLES "/textures/").append(name); }

/// A system without /dev/pts, a bare chroot for example, has no terminals.
class Terminal : public testing::Test {
protected:
    void SetUp() override {
        int terminal = -1;
        int other_side = -1;
        if (openpty(&terminal, &other_side, nullptr, nullptr, nullptr) != 0)
            GTEST_SKIP() << "no terminal can be opened (is /dev/pts mounted?): " << std::strerror(errno);
        close(terminal);
        close(other_side);
    }
};

// All that the command writes to a terminal of its own.
std::string shown(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "pelto");
    std::vector<char*> argv;
    for (std::string& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        execv(PELTO_COMMAND, argv.data());
        _exit(127);
    }
    std::string text;
    std::array<char, 4096> part{};
    // Reading fails once the other side is closed.
    for (ssize_t n = 0; (n = read(terminal, part.data(), part.size())) > 0;) {
        text.append(part.data(), static_cast<std::size_t>(n));
    }
    close(terminal);
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    return text;
}

constexpr char kWipedLine[] = "\r\x1b[K";

TEST_F(Terminal, ShowsHowFarSeveralFilesAreAndWipesThat) {
    const std::string text = shown({"check", sample("bc4.dds"), sample("bc5.dds")});
    const std::size_t begin = text.find("\rchecking [..............................] 0/2");
    const std::size_t half = text.find("\rchecking [###############...............] 1/2");
    const std::size_t end = text.find("\rchecking [##############################] 2/2");
    const std::size_t wiped = text.find(kWipedLine);
    const std::size_t table = text.find(sample("bc4.dds") + ": ok, ");
    ASSERT_NE(begin, std::string::npos) << text;
    ASSERT_NE(table, std::string::npos) << text;
    EXPECT_LT(begin, half);
    EXPECT_LT(half, end);
    EXPECT_LT(end, wiped);
    EXPECT_LT(wiped, table);
}

TEST_F(Terminal, ShowsNoProgressOfOneFile) {
    const std::string text = shown({"check", sample("bc4.dds")});
    EXPECT_EQ(text, sample("bc4.dds") + ": ok, 2048 bytes\r\n");
}

TEST(NoTerminal, ShowsNoProgress) {
    EXPECT_EQ(support::run_pelto({"check", sample("bc4.dds"), sample("bc5.dds")}).err, "");
}

}  // namespace
