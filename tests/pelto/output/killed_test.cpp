// SPDX-License-Identifier: Apache-2.0
// What a signal leaves of a command that writes files, at whatever moment it comes.
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "pelto/output/folder_content.h"
#include "pelto/output/slices.h"
#include "pelto/output/started_command.h"
#include "support/command.h"
#include "support/temporary_folder.h"

namespace {

using namespace support;
namespace fs = std::filesystem;

struct Case {
    int signal;
    bool unnamed;       // whether the file system has files without a name
    bool there_before;  // the outputs
};

void PrintTo(const Case& the_case, std::ostream* out) { *out << strsignal(the_case.signal); }

std::string name_of(const testing::TestParamInfo<Case>& info) {
    return std::string("Signal") + std::to_string(info.param.signal) +
           (info.param.unnamed ? "Unnamed" : "Named") + (info.param.there_before ? "Replacing" : "New");
}

std::vector<Case> cases() {
    std::vector<Case> all;
    for (const int signal : {SIGTERM, SIGKILL}) {
        for (const bool unnamed : {false, true}) {
            for (const bool there_before : {false, true}) all.push_back({signal, unnamed, there_before});
        }
    }
    return all;
}

class KilledAtEachStep : public testing::TestWithParam<Case> {};

// Before each call that changes a file or a folder, from the opening of the first output on.
TEST_P(KilledAtEachStep, LeavesAllOrNothing) {
    const auto [signal, unnamed, there_before] = GetParam();
    if (unnamed && !has_unnamed_files()) GTEST_SKIP() << "the file system has no files without a name";
    const std::vector<std::string> before = Slices::contents_before(there_before);
    const std::vector<std::string> after = Slices::contents_after();
    int step = 0;
    bool ended_by_itself = false;
    while (!ended_by_itself) {
        ++step;
        SCOPED_TRACE("step " + std::to_string(step));
        const Slices slices(there_before);
        Surroundings surroundings;
        surroundings.faults["FAULT_SIGNAL"] = std::to_string(signal);
        surroundings.faults["FAULT_AT"] = std::to_string(step);
        if (!unnamed) surroundings.faults["FAULT_NO_UNNAMED"] = "1";
        const Ending ending = run(slices.arguments(), surroundings);
        ended_by_itself = ending.signal == 0;
        EXPECT_TRUE(ended_by_itself ? ending.status == 0 : ending.signal == signal) << ending.err;
        EXPECT_EQ(ending.err, "");
        const std::vector<std::string> contents = slices.contents();
        const std::vector<std::string> hidden = hidden_in(slices.folder());
        if (signal == SIGKILL) {
            for (std::size_t i = 0; i < contents.size(); ++i) {
                EXPECT_TRUE(contents[i] == before[i] || contents[i] == after[i]) << i;
            }
            EXPECT_LE(hidden.size(), unnamed && !there_before ? 0U : 1U);
        } else {
            EXPECT_TRUE(contents == before || contents == after);
            EXPECT_EQ(hidden, std::vector<std::string>());
        }
        if (!hidden.empty()) {
            EXPECT_EQ(run(slices.arguments()).status, 0);
            EXPECT_EQ(names_in(slices.folder()), Slices::names());
            EXPECT_TRUE(slices.contents() == after);
        }
        if (HasFailure()) return;
    }
    // Three files are at least opened, written and named.
    EXPECT_GT(step, 9);
}

INSTANTIATE_TEST_SUITE_P(Signals, KilledAtEachStep, testing::ValuesIn(cases()), name_of);

// How often, by an environment variable: PELTO_KILLS=200 for the full measure.
int kills() {
    const char* const number = std::getenv("PELTO_KILLS");
    return number ? std::atoi(number) : 30;
}

struct RandomCase {
    int signal;
    bool there_before;
};

void PrintTo(const RandomCase& the_case, std::ostream* out) { *out << strsignal(the_case.signal); }

class KilledAtRandom : public testing::TestWithParam<RandomCase> {
protected:
    static std::vector<std::string> arguments(const std::string& output) {
        return {"sheet", PELTO_SAMPLES "/textures/bc1_mips.dds", PELTO_SAMPLES "/textures/cube_bc1_mips.dds",
                "-o", output};
    }
};

TEST_P(KilledAtRandom, LeavesAWholeSheetOrNone) {
    using Clock = std::chrono::steady_clock;
    const auto [signal, there_before] = GetParam();
    const TemporaryFolder whole;
    const Clock::time_point start = Clock::now();
    ASSERT_EQ(run(arguments(whole.path("sheet.png"))).status, 0);
    std::chrono::duration<double> time = Clock::now() - start;
    const std::string after = bytes_of(whole.path("sheet.png"));

    const unsigned int seed = std::random_device()();
    std::cout << "seed " << seed << '\n';
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> share(0, 1.2);
    int killed = 0;
    int hidden_at_all = 0;
    for (int i = 0; i < kills(); ++i) {
        const TemporaryFolder folder;
        const std::string output = folder.path("sheet.png");
        const std::string before = there_before ? "before" : "";
        if (there_before) folder.write("sheet.png", before);
        StartedCommand command(arguments(output));
        std::this_thread::sleep_for(share(random) * time);
        command.send(signal);
        const Ending ending = command.end();
        EXPECT_TRUE(ending.signal == signal || (ending.signal == 0 && ending.status == 0)) << ending.err;
        killed += ending.signal == signal;
        // Three of four are to come in time, whatever else the machine does meanwhile.
        time *= ending.signal == signal ? 1.03 : 0.915;
        const std::string content = bytes_of(output);
        EXPECT_TRUE(content == before || content == after);
        std::vector<std::string> names = names_in(folder.path("."));
        std::erase(names, "sheet.png");
        const std::size_t allowed = signal == SIGKILL && (there_before || !has_unnamed_files()) ? 1 : 0;
        EXPECT_LE(names.size(), allowed);
        EXPECT_EQ(names, hidden_in(folder.path(".")));
        hidden_at_all += !names.empty();
        if (HasFailure()) return;
    }
    std::cout << kills() << " signals, " << killed << " before the end, " << hidden_at_all << " leftovers\n";
    EXPECT_GT(killed, 0);
}

INSTANTIATE_TEST_SUITE_P(Signals, KilledAtRandom,
                         testing::Values(RandomCase{SIGTERM, false}, RandomCase{SIGTERM, true},
                                         RandomCase{SIGKILL, false}, RandomCase{SIGKILL, true}),
                         [](const testing::TestParamInfo<RandomCase>& info) {
                             return std::string(info.param.signal == SIGTERM ? "Term" : "Kill") +
                                    (info.param.there_before ? "Replacing" : "New");
                         });

// Stopped once its hidden folder has a file.
Surroundings stopped_while_writing(int signal) {
    return {{{"FAULT_NO_UNNAMED", "1"}, {"FAULT_SIGNAL", std::to_string(signal)}, {"FAULT_AT", "6"}}, {}};
}

TEST(Killed, LeavesNothingWhateverTheSignal) {
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGXCPU}) {
        const Slices slices(true);
        EXPECT_EQ(run(slices.arguments(), stopped_while_writing(signal)).signal, signal);
        EXPECT_EQ(names_in(slices.folder()), Slices::names());
        EXPECT_EQ(slices.contents(), Slices::contents_before(true));
    }
}

TEST(Killed, IsCleanedUpAfterByTheNextRunInThatFolder) {
    const Slices slices(true);
    EXPECT_EQ(run(slices.arguments(), stopped_while_writing(SIGKILL)).signal, SIGKILL);
    ASSERT_EQ(hidden_in(slices.folder()).size(), 1U);
    EXPECT_EQ(run(slices.arguments()).status, 0);
    EXPECT_EQ(names_in(slices.folder()), Slices::names());
}

TEST(Killed, IsToldFromARunThatIsAlive) {
    const Slices slices(false);
    StartedCommand first(slices.arguments(), stopped_while_writing(SIGSTOP));
    ASSERT_TRUE(first.wait_until_stopped());
    const std::vector<std::string> hidden = hidden_in(slices.folder());
    ASSERT_EQ(hidden.size(), 1U);
    EXPECT_EQ(run({"transcode", Slices::kInput, "--usage", "bc1", "-o", slices.path("other.dds")}).status, 0);
    EXPECT_EQ(hidden_in(slices.folder()), hidden);
    first.send(SIGCONT);
    const Ending ending = first.end();
    EXPECT_EQ(ending.status, 0) << ending.err;
    EXPECT_TRUE(slices.contents() == Slices::contents_after());
    EXPECT_EQ(names_in(slices.folder()),
              (std::vector<std::string>{"other.dds", "out.0.dds", "out.1.dds", "out.2.dds"}));
}

TEST(Killed, IsToldFromWhatBelongsToOthers) {
    const Slices slices(false);
    const std::vector<std::string> folders = {".pelto-unfinished-", ".pelto-unfinished-abcde",
                                              ".pelto-unfinished-abcdefg", "pelto-unfinished-abcdef"};
    for (const std::string& name : folders) fs::create_directory(slices.path(name));
    // Of the right name, with what pelto does not put there.
    const std::string kept = slices.path(".pelto-unfinished-Kept00");
    fs::create_directory(kept);
    std::ofstream(kept + "/lock") << "";
    std::ofstream(kept + "/notes") << "a person's";
    const std::string no_lock = slices.path(".pelto-unfinished-Full00");
    fs::create_directory(no_lock);
    std::ofstream(no_lock + "/0") << "a person's";
    std::ofstream(slices.path(".pelto-unfinished-File00")) << "a person's";
    const TemporaryFolder elsewhere;
    elsewhere.write("lock", "");
    elsewhere.write("0", "a person's");
    fs::create_directory_symlink(elsewhere.path("."), slices.path(".pelto-unfinished-Link00"));

    EXPECT_EQ(run(slices.arguments()).status, 0);
    for (const std::string& name : folders) EXPECT_TRUE(fs::is_directory(slices.path(name))) << name;
    EXPECT_EQ(bytes_of(kept + "/notes"), "a person's");
    EXPECT_EQ(bytes_of(no_lock + "/0"), "a person's");
    EXPECT_EQ(bytes_of(slices.path(".pelto-unfinished-File00")), "a person's");
    EXPECT_EQ(names_in(elsewhere.path(".")), (std::vector<std::string>{"0", "lock"}));
}

TEST(Killed, IsNotWhatIgnoresTheSignal) {
    const Slices slices(true);
    Surroundings surroundings = stopped_while_writing(SIGHUP);
    surroundings.ignored_signals = {SIGHUP};
    const Ending ending = run(slices.arguments(), surroundings);
    EXPECT_EQ(ending.status, 0) << ending.err;
    EXPECT_TRUE(slices.contents() == Slices::contents_after());
}

}  // namespace
