// SPDX-License-Identifier: Apache-2.0
// pelto check, run as a user runs it, and what the other subcommands do with a file that it refuses.
#include <atomic>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <linux/capability.h>
#include <nlohmann/json.hpp>
#include <string>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "support/command.h"
#include "support/dds_file.h"
#include "support/temporary_folder.h"

namespace {

using namespace support;
using nlohmann::json;

std::string sample(const std::string& name) { return std::string(PELTO_SAMPLES "/textures/").append(name); }

std::string bytes_of(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Also where a superuser runs the tests, whom permissions do not stop: the thread gives that right up, and
// what it starts has no way to get it back.
CommandResult run_pelto_bound_by_permissions(const std::vector<std::string>& arguments) {
    CommandResult result;
    std::thread([&] {
        if (geteuid() == 0) {
            EXPECT_EQ(prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE), 0);
        }
        result = run_pelto(arguments);
    }).join();
    return result;
}

class Check : public testing::Test {
protected:
    // bc4.dds has 128 bytes of header and 2048 of blocks.
    std::string cut_short() const {
        return folder_.write("cut.dds", bytes_of(sample("bc4.dds")).substr(0, 2000));
    }

    const TemporaryFolder folder_;
};

TEST_F(Check, SaysOfEachFileWhetherItIsGood) {
    const std::string cut = cut_short();
    const CommandResult result = run_pelto({"check", sample("bc4.dds"), cut, sample("etc1s_mips.basis")});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, sample("bc4.dds") + ": ok, 2048 bytes\n" + cut +
                              ": is cut short: level 0 ends at byte 2176, the file at byte 2000\n" + cut +
                              ": note: ends 176 bytes before the end of its last level\n" +
                              sample("etc1s_mips.basis") + ": ok, 8224 bytes\n");
}

TEST_F(Check, FindsTheSamplesGood) {
    std::vector<std::string> arguments = {"check", "-j", "4"};
    for (const auto& entry : std::filesystem::directory_iterator(PELTO_SAMPLES "/textures")) {
        arguments.push_back(entry.path().string());
    }
    const CommandResult result = run_pelto(arguments);
    EXPECT_EQ(result.status, 0) << result.out;
}

TEST_F(Check, KeepsTheOrderOfTheFilesOnManyThreads) {
    std::vector<std::string> arguments = {"check", "-j", "8"};
    std::string expected;
    for (int i = 0; i < 200; ++i) {
        arguments.push_back(i % 3 == 0 ? sample("bc4.dds") : folder_.path("none" + std::to_string(i)));
        expected += arguments.back() +
                    (i % 3 == 0 ? ": ok, 2048 bytes\n" : ": cannot be opened: No such file or directory\n");
    }
    EXPECT_EQ(run_pelto(arguments).out, expected);
}

// Sanitizers take more addresses than this leaves them.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST_F(Check, LooksAtAllFilesWhereFewerThreadsCanStartThanAsked) {
    std::vector<std::string> arguments = {"check", "-j", "256"};
    std::string expected;
    for (int i = 0; i < 256; ++i) {
        arguments.push_back(sample("bc4.dds"));
        expected += arguments.back() + ": ok, 2048 bytes\n";
    }
    // Stacks of 8 MiB in addresses of 1 GiB.
    const CommandResult result = run_pelto(arguments, "ulimit -s 8192; ulimit -v 1048576");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, expected);
}
#endif

TEST_F(Check, KeepsToLimits) {
    EXPECT_EQ(run_pelto({"check", "--max-bytes", "2048", "--max-extent", "64", sample("bc4.dds")}).status, 0);
    const CommandResult bytes = run_pelto({"check", "--max-bytes", "2047", sample("bc4.dds")});
    EXPECT_EQ(bytes.status, 1);
    EXPECT_NE(bytes.out.find("its levels take 2048 bytes, beyond the limit of 2047"), std::string::npos);
    EXPECT_EQ(run_pelto({"check", "--max-extent", "63", sample("bc4.dds")}).status, 1);
    EXPECT_EQ(run_pelto({"check", "--max-file-bytes", "2176", sample("bc4.dds")}).status, 0);
    EXPECT_EQ(run_pelto({"check", "--max-file-bytes", "2175", sample("bc4.dds")}).status, 1);
}

// 3 x 1 pixels of four bytes, which vDDSImage reads as three.
std::string three_byte_pixels() {
    const Bytes bytes = dds_file(dxgi_header(87).sized(3, 1), random_bytes(12, 1));
    return {bytes.begin(), bytes.end()};
}

TEST_F(Check, PrintsNotesWhichAreFaultsWhereItIsStrict) {
    const std::string path = folder_.write("a.dds", three_byte_pixels());
    const CommandResult result = run_pelto({"check", path});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, path + ": ok, 9 bytes\n" + path +
                              ": note: has four bytes a pixel, which vDDSImage reads as three\n");
    EXPECT_EQ(run_pelto({"check", "--strict", path}).status, 1);
    EXPECT_EQ(run_pelto({"check", "--strict", sample("bc4.dds")}).status, 0);
    const json object = json::parse(run_pelto({"check", "--json", path}).out).at(0);
    EXPECT_EQ(object.at("status"), "ok");
    EXPECT_EQ(object.at("notes").at(0).at("code"), "threeBytePixels");
}

TEST_F(Check, NotesAGitLFSPointer) {
    const std::string path = folder_.write("a.dds", "version https://git-lfs.github.com/spec/v1\n");
    const CommandResult result = run_pelto({"check", path});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, path +
                              ": is a Git LFS pointer, not a DDS, .basis or KTX2 file: run "
                              "'git lfs pull' to fetch the file itself\n");
    const json object = json::parse(run_pelto({"check", "--json", path}).out).at(0);
    EXPECT_EQ(object.at("status"), "not-this-kind");
    EXPECT_EQ(object.at("notes").at(0).at("code"), "lfsPointer");
}

TEST_F(Check, NamesTheFormatThatTheLoaderDoesNotTake) {
    const Bytes bytes = dds_file(dxgi_header(99).sized(4, 4), random_bytes(16, 1));
    const std::string path = folder_.write("a.dds", std::string(bytes.begin(), bytes.end()));
    const CommandResult result = run_pelto({"check", path});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out,
              path + ": is BC7_UNORM_SRGB, which vDDSImage does not take: vDDSLevels and pelto sheet do\n");
}

TEST_F(Check, PrintsJson) {
    const CommandResult result =
        run_pelto({"check", "--json", sample("bc4.dds"), cut_short(), folder_.path("none")});
    EXPECT_EQ(result.status, 1);
    const json none = json::array();
    const json expected = {
        {{"path", sample("bc4.dds")}, {"status", "ok"}, {"totalBytes", 2048}, {"notes", none}},
        {{"path", folder_.path("cut.dds")},
         {"status", "truncated"},
         {"totalBytes", 2048},
         {"error", "is cut short: level 0 ends at byte 2176, the file at byte 2000"},
         {"offset", 2000},
         {"missingBytes", 176},
         {"face", 0},
         {"level", 0},
         {"notes", {{{"code", "truncated"}, {"text", "ends 176 bytes before the end of its last level"}}}}},
        {{"path", folder_.path("none")},
         {"status", "unreadable"},
         {"error", "cannot be opened: No such file or directory"},
         {"offset", 0},
         {"notes", none}}};
    EXPECT_EQ(json::parse(result.out), expected);
}

TEST_F(Check, RefusesWhatIsNoRegularFile) {
    const std::string pipe = folder_.path("pipe.dds");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::filesystem::create_symlink(sample("bc4.dds"), folder_.path("link.dds"));
    const CommandResult result =
        run_pelto({"check", pipe, "/dev/zero", folder_.path("."), folder_.path("link.dds")});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, pipe + ": is not a regular file: its length cannot be told\n" +
                              "/dev/zero: is not a regular file: its length cannot be told\n" +
                              folder_.path(".") + ": is a directory\n" + folder_.path("link.dds") +
                              ": ok, 2048 bytes\n");
}

TEST_F(Check, WrongUsageIsToldFromFailure) {
    EXPECT_EQ(run_pelto({"check"}).status, 2);
    EXPECT_EQ(run_pelto({"check", "-j", "0", sample("bc4.dds")}).status, 2);
    EXPECT_EQ(run_pelto({"check", "--max-bytes", "-1", sample("bc4.dds")}).status, 2);
}

TEST_F(Check, AnswersForTerabytesAtOnce) {
    std::string header = bytes_of(sample("rgba32f.dds")).substr(0, 128);
    for (const std::size_t extent : {12U, 16U}) header.replace(extent, 4, std::string("\0\0\x10\0", 4));
    const CommandResult result = run_pelto({"check", folder_.write("huge.dds", header)});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.out.find("level 0 ends at byte 17592186044544, the file at byte 128"), std::string::npos)
        << result.out;
}

TEST_F(Check, WhatItRefusesIsNotLoadedByOtherSubcommands) {
    const std::string dds = cut_short();
    const std::string basis =
        folder_.write("cut.basis", bytes_of(sample("etc1s_mips.basis")).substr(0, 1600));
    const CommandResult sheet = run_pelto({"sheet", dds, basis, "-o", folder_.path("out.png")});
    EXPECT_EQ(sheet.status, 1);
    EXPECT_NE(sheet.err.find("cut.dds: is cut short"), std::string::npos) << sheet.err;
    EXPECT_NE(sheet.err.find("cut.basis: is cut short"), std::string::npos) << sheet.err;
    const CommandResult transcode =
        run_pelto({"transcode", basis, "--usage", "bc1", "-o", folder_.path("out.dds")});
    EXPECT_EQ(transcode.status, 1);
    EXPECT_NE(transcode.err.find("cut.basis: is cut short"), std::string::npos) << transcode.err;
    EXPECT_FALSE(std::filesystem::exists(folder_.path("out.dds")));
}

// Sanitizers take more addresses than this leaves them.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST_F(Check, AFileThatDoesNotFitIntoMemoryIsToldByName) {
    const std::string basis = folder_.write("large.basis", bytes_of(sample("etc1s_mips.basis")));
    std::filesystem::resize_file(basis, std::uintmax_t{1} << 31);
    const std::string document =
        folder_.write("library.xml",
                      "<library xmlns='urn:pelto:texture-library'><material name='m'><texture name='t'>"
                      "<file>large.basis</file></texture></material></library>");
    const std::string no_room = "ulimit -v 1048576";
    const std::string sheet = folder_.path("out.png");
    EXPECT_EQ(run_pelto({"check", basis}, no_room).out, basis + ": does not fit into memory\n");
    EXPECT_EQ(run_pelto({"inspect", basis}, no_room).err, "pelto: " + basis + ": does not fit into memory\n");
    EXPECT_EQ(run_pelto({"transcode", basis, "--usage", "bc1", "-o", folder_.path("out.dds")}, no_room).err,
              "pelto: " + basis + ": does not fit into memory\n");
    EXPECT_EQ(run_pelto({"sheet", basis, "-o", sheet}, no_room).err,
              "pelto: " + basis + ": its pixels do not fit into memory\n");
    const CommandResult library = run_pelto({"library", document}, no_room);
    EXPECT_NE(library.err.find("error: large.basis: does not fit into memory\n"), std::string::npos)
        << library.err;
}
#endif

// A limit on the size of files stands for a full disk: writing fails in the middle.
TEST_F(Check, AFullDiskLeavesNoHalfWrittenFile) {
    const std::string full = "trap '' XFSZ; ulimit -f 1";
    const std::string basis = PELTO_BASIS_FIXTURES "/uastc_257x129.basis";
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"transcode", basis, "--usage", "bc3", "--level", "0", "-o",
                                   folder_.path("out.dds")},
          {"sheet", sample("bc1_mips.dds"), "-o", folder_.path("out.png")},
          {"library", PELTO_SAMPLES "/library/library.xml", "--sheet", folder_.path("out.png")}}) {
        const CommandResult result = run_pelto(arguments, full);
        EXPECT_EQ(result.status, 1) << arguments.front();
        EXPECT_NE(result.err.find(arguments.back()), std::string::npos) << result.err;
        EXPECT_NE(result.err.find("File too large"), std::string::npos) << result.err;
        EXPECT_TRUE(std::filesystem::is_empty(folder_.path("."))) << arguments.front();
    }
}

TEST_F(Check, AReadOnlyPlaceForTheOutputIsToldByName) {
    const std::string basis = PELTO_BASIS_FIXTURES "/uastc_4x4.basis";
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"transcode", basis, "--usage", "bc3", "-o", "/proc/out.dds"},
          {"sheet", sample("bc1_mips.dds"), "-o", "/proc/out.png"}}) {
        const CommandResult result = run_pelto(arguments);
        EXPECT_EQ(result.status, 1) << arguments.front();
        EXPECT_NE(result.err.find(arguments.back() + " cannot be written: "), std::string::npos)
            << result.err;
    }
}

TEST_F(Check, AnOutputThatIsALinkStaysOneAndItsTargetIsReplaced) {
    std::filesystem::create_directory(folder_.path("elsewhere"));
    const std::string target = folder_.write("elsewhere/target.dds", "before");
    const std::string link = folder_.path("link.dds");
    std::filesystem::create_symlink("elsewhere/target.dds", link);
    const std::string basis = PELTO_BASIS_FIXTURES "/uastc_4x4.basis";
    const CommandResult result = run_pelto({"transcode", basis, "--usage", "bc3", "-o", link});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(bytes_of(target).substr(0, 4), "DDS ");

    std::filesystem::remove(target);
    const CommandResult nowhere = run_pelto({"transcode", basis, "--usage", "bc3", "-o", link});
    EXPECT_EQ(nowhere.status, 1);
    EXPECT_NE(nowhere.err.find(link + " cannot be written: it is a link that leads to no file"),
              std::string::npos)
        << nowhere.err;
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_TRUE(std::filesystem::is_empty(folder_.path("elsewhere")));
}

TEST_F(Check, AnOutputMayHaveTheLongestNameThatTheSystemTakes) {
    const std::string path = folder_.path(std::string(251, 'a') + ".dds");
    const std::string basis = PELTO_BASIS_FIXTURES "/uastc_4x4.basis";
    const CommandResult result = run_pelto({"transcode", basis, "--usage", "bc3", "-o", path});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(std::filesystem::exists(path));
}

TEST_F(Check, AnOutputThatMayNotBeWrittenIsNotReplaced) {
    const std::string path = folder_.write("out.dds", "before");
    std::filesystem::permissions(path, std::filesystem::perms::owner_read);
    const std::string basis = PELTO_BASIS_FIXTURES "/uastc_4x4.basis";
    const CommandResult result =
        run_pelto_bound_by_permissions({"transcode", basis, "--usage", "bc3", "-o", path});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find(path + " cannot be written: Permission denied"), std::string::npos)
        << result.err;
    EXPECT_EQ(bytes_of(path), "before");
}

TEST_F(Check, AnOutputWhoseNameIsTooLongIsToldInThePlainWords) {
    const std::string path = folder_.path(std::string(296, 'a') + ".dds");
    const CommandResult result =
        run_pelto({"transcode", PELTO_BASIS_FIXTURES "/uastc_4x4.basis", "--usage", "bc3", "-o", path});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find(path + " cannot be written: File name too long\n"), std::string::npos)
        << result.err;
}

TEST_F(Check, AFileThatShrinksAndGrowsMeanwhileEndsNoProcess) {
    const std::string dds = folder_.write("a.dds", bytes_of(sample("bgra8_mips.dds")));
    const std::string basis = folder_.write("a.basis", bytes_of(sample("uastc_alpha.basis")));
    const std::uintmax_t dds_size = std::filesystem::file_size(dds);
    const std::uintmax_t basis_size = std::filesystem::file_size(basis);
    std::atomic<bool> done = false;
    std::thread changer([&] {
        while (!done) {
            for (const std::uintmax_t part : {2U, 1U}) {
                std::filesystem::resize_file(dds, dds_size / part);
                std::filesystem::resize_file(basis, basis_size / part);
            }
        }
    });
    for (int i = 0; i < 10; ++i) {
        for (const char* subcommand : {"check", "inspect"}) {
            const int status = run_pelto({subcommand, dds, basis}).status;
            EXPECT_TRUE(status == 0 || status == 1) << subcommand << ' ' << status;
        }
    }
    done = true;
    changer.join();
}

}  // namespace
