// SPDX-License-Identifier: Apache-2.0
// vTextureCheck and vDDSLevels on files given by their paths.
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <vDDSLevels.h>
#include <vTextureCheck.h>

#include "support/dds_check.h"
#include "support/temporary_folder.h"

namespace {

using namespace support;
using Check = vTextureCheck;

std::string text_of(const Bytes& bytes) { return {bytes.begin(), bytes.end()}; }

class CheckFile : public testing::Test {
protected:
    const TemporaryFolder folder_;
    const Bytes whole_ = complete_file(plain_header(0x20000, 8).sized(100, 100));

    static void expect_unreadable(const std::string& path, const std::string& sentence) {
        for (const Check::Result& result :
             {Check::CheckDDSFile(path), Check::CheckBasisFile(path), vDDSLevels().Map(path)}) {
            EXPECT_EQ(result.status, Check::eUnreadable);
            EXPECT_EQ(result.sentence, sentence);
            EXPECT_EQ(result.totalBytes, 0U);
        }
    }
};

TEST_F(CheckFile, PassesAWholeFile) {
    const std::string path = folder_.write("a.dds", text_of(whole_));
    const Check::Result result = Check::CheckDDSFile(path);
    EXPECT_TRUE(result.ok()) << result.sentence;
    EXPECT_EQ(result.totalBytes, 10000U);
}

TEST_F(CheckFile, FollowsASymbolicLink) {
    folder_.write("a.dds", text_of(whole_));
    std::filesystem::create_symlink("a.dds", folder_.path("link.dds"));
    EXPECT_TRUE(Check::CheckDDSFile(folder_.path("link.dds")).ok());
    std::filesystem::create_symlink("none.dds", folder_.path("dangling.dds"));
    expect_unreadable(folder_.path("dangling.dds"), "cannot be opened: No such file or directory");
}

TEST_F(CheckFile, CountsTheFilesTrueLength) {
    const std::string path = folder_.write("a.dds", text_of(whole_).substr(0, 5000));
    const Check::Result result = Check::CheckDDSFile(path);
    EXPECT_EQ(result.status, Check::eTruncated);
    EXPECT_EQ(result.missingBytes, 10128U - 5000);
}

TEST_F(CheckFile, SaysThatAFileIsMissing) {
    expect_unreadable(folder_.path("none.dds"), "cannot be opened: No such file or directory");
}

TEST_F(CheckFile, RefusesAFolder) { expect_unreadable(folder_.path("."), "is a directory"); }

TEST_F(CheckFile, RefusesAPipeWithoutWaitingForIt) {
    const std::string path = folder_.path("pipe.dds");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    expect_unreadable(path, "is not a regular file: its length cannot be told");
}

TEST_F(CheckFile, RefusesADevice) {
    expect_unreadable("/dev/zero", "is not a regular file: its length cannot be told");
}

TEST_F(CheckFile, RefusesASocket) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = folder_.path("socket.dds");
    ASSERT_LT(path.size(), sizeof address.sun_path);
    path.copy(address.sun_path, path.size());
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    expect_unreadable(path, "is not a regular file: its length cannot be told");
    close(listener);
}

#if defined(__linux__)
// The process's own memory, of which nothing lies at address 0.
TEST_F(CheckFile, SaysThatReadingFailed) {
    const Check::Result result = Check::CheckDDSFile("/proc/self/mem");
    EXPECT_EQ(result.status, Check::eUnreadable);
    EXPECT_EQ(result.sentence, "cannot be read: Input/output error");
}
#endif

TEST_F(CheckFile, SaysThatAFileIsEmpty) {
    const std::string path = folder_.write("a.dds", "");
    EXPECT_EQ(Check::CheckDDSFile(path).sentence, "is empty");
    EXPECT_EQ(Check::CheckBasisFile(path).sentence, "is empty");
    EXPECT_EQ(vDDSLevels().Map(path).sentence, "is empty");
}

// A file with a hole of a tebibyte takes no room on the disk. Memory for it could not be had.
TEST_F(CheckFile, ReadsNoMoreThanTheHeaderOfWhatIsNoBasisFile) {
    const std::string path = folder_.write("a.basis", text_of(whole_));
    std::filesystem::resize_file(path, std::uintmax_t{1} << 40);
    EXPECT_EQ(Check::CheckBasisFile(path).status, Check::eNotThisKind);
    folder_.write("a.basis", std::string("sB").append(100, '\0'));
    std::filesystem::resize_file(path, std::uintmax_t{1} << 40);
    const Check::Result result = Check::CheckBasisFile(path);
    EXPECT_EQ(result.status, Check::eAbsurdSize);
    EXPECT_EQ(result.sentence, "has 4 GiB or more, which no .basis file has");
}

TEST_F(CheckFile, ReadsNoFileThatIsLongerThanItsCallerTakes) {
    vTextureLimits limits;
    limits.maxFileBytes = 1 << 20;
    for (const char* const name : {"a.basis", "a.dds"}) {
        const std::string path = folder_.write(name, "");
        std::filesystem::resize_file(path, std::uintmax_t{1} << 40);
        for (const Check::Result& result :
             {Check::CheckBasisFile(path, limits), Check::CheckDDSFile(path, limits),
              vDDSLevels().Map(path, limits)}) {
            EXPECT_EQ(result.status, Check::eAbsurdSize);
            EXPECT_EQ(result.sentence, "is 1099511627776 bytes long, beyond the limit of 1048576");
        }
    }
}

TEST_F(CheckFile, MapsAFileWhoseLevelsOutliveItsName) {
    const std::string path = folder_.write("a.dds", text_of(whole_));
    vDDSLevels levels;
    ASSERT_TRUE(levels.Map(path).ok());
    std::filesystem::remove(path);
    const vDDSLevel level = levels.GetLevel(0, 0);
    EXPECT_EQ(Bytes(level.data, level.data + level.bytes), Bytes(whole_.begin() + 128, whole_.end()));
}

}  // namespace
