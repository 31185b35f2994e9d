// SPDX-License-Identifier: Apache-2.0
// pelto sheet, run as a user runs it: files and machines that stand in its way.
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "pelto/sheet_check.h"
#include "support/command.h"
#include "support/dds_file.h"
#include "support/temporary_folder.h"

namespace {

using namespace support;

FileHeader grey_header() { return plain_header(kRgb, 8).with_masks(0xFF, 0, 0, 0); }

class SheetErrors : public testing::Test {
protected:
    std::string write(const std::string& name, const Bytes& file) const {
        return folder_.write(name, {reinterpret_cast<const char*>(file.data()), file.size()});
    }

    std::string good_file() const {
        return write("good.dds", dds_file(grey_header().sized(2, 2), {1, 2, 3, 4}));
    }

    CommandResult run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "sheet");
        arguments.insert(arguments.end(), {"-o", output()});
        return run_pelto(arguments);
    }

    std::string output() const { return folder_.path("sheet.png"); }

    // Also where the file is not checked before it is loaded.
    void expect_refused(const std::string& path, const std::string& why_if_trusted) const {
        expect_error(path, {path}, "");
        expect_error(path, {path, "--trust"}, why_if_trusted);
    }

    void expect_error(const std::string& path, const std::vector<std::string>& arguments,
                      const std::string& why) const {
        const CommandResult result = run(arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err.find("pelto: " + path + ": "), 0u) << result.err;
        EXPECT_NE(result.err.find(why), std::string::npos) << result.err;
        EXPECT_FALSE(std::filesystem::exists(output()));
    }

    const TemporaryFolder folder_;
};

TEST_F(SheetErrors, SaysWhatIsWrongWithAFile) {
    expect_refused(folder_.path("none.dds"), "cannot be opened");
    expect_refused(folder_.path("."), "is a directory");
    expect_refused(folder_.write("empty.dds", ""), "is empty");
    expect_refused(folder_.write("text.dds", "Hello, world"),
                   "is a text file, not a DDS, .basis or KTX2 file");
    expect_refused(write("fourcc.dds", dds_file(fourcc_header(four_cc("ETC1")).sized(4, 4), Bytes(16))),
                   "the FourCC \"ETC1\" at byte 84 is not known");
    expect_refused(folder_.write("bad.basis", "sB and nothing more"), "");
}

TEST_F(SheetErrors, RefusesAHeaderThatPromisesFarMoreThanTheFileHas) {
    expect_refused(write("wide.dds", dds_file(grey_header().sized(1'000'000, 1), {})), "OpenGL takes");
    expect_refused(write("negative.dds", dds_file(grey_header().sized(0xFFFFFFFF, 4), {})),
                   "is 4294967295 pixels, beyond the limit");
    expect_refused(write("nothing.dds", dds_file(grey_header().sized(0, 4), {})), "is 0 pixels");
    expect_refused(write("levels.dds", dds_file(grey_header().sized(4, 4).with_mips(0x7FFFFFFF), {})),
                   "its 2147483647 levels at byte 28 are more than the 32");
    expect_refused(
        write("deep.dds", dds_file(grey_header().sized(4, 4).with_depth(0x7FFFFFFF).with_caps2(kVolume), {})),
        "more images than a sheet takes");
    expect_refused(write("large.dds", dds_file(fourcc_header(116).sized(8192, 8192), {})),
                   "its header promises 1073741824 bytes of pixels, and the file has 128");
    expect_refused(
        write("many.dds", dds_file(grey_header().sized(8192, 8192).with_depth(17).with_caps2(kVolume), {})),
        "more pixels than a sheet takes");
    // Just as many pixels as a sheet takes.
    expect_refused(
        write("most.dds", dds_file(grey_header().sized(8192, 8192).with_depth(16).with_caps2(kVolume), {})),
        "its header promises 1073741824 bytes of pixels, and the file has 128");
}

TEST_F(SheetErrors, ShowsAFileThatIsCutShortOnlyWhereItIsTrusted) {
    const std::string cut = write("cut.dds", dds_file(grey_header().sized(2, 2), {1, 2}));
    expect_error(cut, {cut}, "is cut short");
    const CommandResult result = run({cut, "--trust"});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.err.find("warning: ends 2 bytes before"), std::string::npos) << result.err;
    EXPECT_TRUE(std::filesystem::exists(output()));
}

TEST_F(SheetErrors, ShowsTheOtherFiles) {
    const std::string bad = folder_.write("bad.dds", "Hello, world");
    const sheet::Sheet sheet = sheet::draw({bad, good_file(), bad});
    EXPECT_EQ(sheet.result.status, 1);
    ASSERT_EQ(sheet.images.size(), 1u);
    EXPECT_EQ(sheet.images[0].pixels, (Bytes{1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4}));
    ASSERT_EQ(sheet.errors.size(), 2u);
    EXPECT_EQ(sheet.errors[0]["path"], bad);
    EXPECT_NE(sheet.result.err.find("is a text file"), std::string::npos) << sheet.result.err;
}

TEST_F(SheetErrors, SaysWhichFacesAndLevelsThereAre) {
    const std::string file = good_file();
    const CommandResult level = run({file, "--level", "1"});
    EXPECT_EQ(level.status, 1);
    EXPECT_NE(level.err.find("there is no level 1: the last one is 0"), std::string::npos) << level.err;
    const CommandResult face = run({file, "--face", "6"});
    EXPECT_EQ(face.status, 1);
    EXPECT_NE(face.err.find("there is no face 6: the last one is 0"), std::string::npos) << face.err;
}

TEST_F(SheetErrors, LeavesNothingBehindWhereTheSheetCannotBeWritten) {
    const std::string folder = folder_.path("folder");
    std::filesystem::create_directory(folder);
    const CommandResult result = run_pelto({"sheet", good_file(), "-o", folder});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("cannot be written"), std::string::npos) << result.err;
    EXPECT_TRUE(std::filesystem::is_empty(folder));
    EXPECT_EQ(run_pelto({"sheet", good_file(), "-o", folder + "/none/sheet.png"}).status, 1);
}

TEST_F(SheetErrors, KeepsAnEarlierSheetWhereThereIsNothingToShow) {
    folder_.write("sheet.png", "earlier");
    EXPECT_EQ(run({folder_.path("none.dds")}).status, 1);
    EXPECT_EQ(std::filesystem::file_size(output()), 7u);
}

TEST_F(SheetErrors, ReplacesAnEarlierSheetAndLeavesNoOtherFile) {
    folder_.write("sheet.png", "earlier");
    EXPECT_EQ(run({good_file()}).status, 0);
    EXPECT_GT(read_png(output()).width, 0u);
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path("."))) {
        files += entry.exists();
    }
    EXPECT_EQ(files, 2u);
}

TEST_F(SheetErrors, TellsWrongUsage) {
    EXPECT_EQ(run_pelto({"sheet", good_file()}).status, 2);
    EXPECT_EQ(run({}).status, 2);
    EXPECT_EQ(run({good_file(), "--level", "-1"}).status, 2);
    EXPECT_EQ(run({good_file(), "--face", "front"}).status, 2);
    EXPECT_EQ(run({good_file(), "--exposure=bright"}).status, 2);
    EXPECT_FALSE(std::filesystem::exists(output()));
}

#if !defined(_WIN32)
TEST_F(SheetErrors, SaysThatThereIsNoOpenGL) {
    const char* const variable = "__EGL_VENDOR_LIBRARY_FILENAMES";
    ::setenv(variable, folder_.path("none.json").c_str(), 1);
    const CommandResult result = run({good_file()});
    ::unsetenv(variable);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err.find("pelto: there is no OpenGL to draw with: "), 0u) << result.err;
    EXPECT_NE(result.err.find("install"), std::string::npos) << result.err;
    EXPECT_FALSE(std::filesystem::exists(output()));
}
#endif

}  // namespace
