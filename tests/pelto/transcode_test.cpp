// SPDX-License-Identifier: Apache-2.0
// pelto transcode, run as a user runs it, and pelto inspect on .basis files.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <sys/stat.h>
#include <vBasisImage.h>
#include <vDDSImage.h>
#include <vector>

#include "support/basis_file.h"
#include "support/command.h"
#include "support/temporary_folder.h"

namespace {

using namespace support;
using nlohmann::json;

std::string fixture(const std::string& name) { return PELTO_BASIS_FIXTURES "/" + name + ".basis"; }

std::string blocks_of(const std::string& path, unsigned int slice, unsigned int level,
                      TOZ::EUsageFormat usage) {
    TOZ::vBasisImage basis;
    EXPECT_TRUE(basis.load(path.c_str()));
    unsigned char* blocks = nullptr;
    unsigned int size = 0;
    EXPECT_TRUE(basis.getImage(level, slice, blocks, size, usage));
    const std::unique_ptr<unsigned char[]> owned(blocks);
    return {reinterpret_cast<const char*>(blocks), size};
}

std::string pixels_of(vDDSImage& image, int level) {
    if (level == 0) return {static_cast<char*>(image), image.get_size()};
    const vDDSSurface& mip = image.get_mipmap(level - 1);
    return {static_cast<char*>(mip), mip.get_size()};
}

std::string bytes_of(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

class Transcode : public testing::Test {
protected:
    std::string output(const std::string& name = "out.dds") const { return folder_.path(name); }

    std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.path("."))) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    const TemporaryFolder folder_;
};

struct Usage {
    const char* name;
    TOZ::EUsageFormat usage;
    TOZ::SUPPORTED_FORMAT::Type format;
};

constexpr Usage kUsages[] = {{"bc1", TOZ::eUsageFormatBC1, TOZ::SUPPORTED_FORMAT::DXT1},
                             {"bc3", TOZ::eUsageFormatBC3, TOZ::SUPPORTED_FORMAT::DXT5},
                             {"bc4", TOZ::eUsageFormatBC4, TOZ::SUPPORTED_FORMAT::BC4U},
                             {"bc5", TOZ::eUsageFormatBC5, TOZ::SUPPORTED_FORMAT::BC5U}};

TEST_F(Transcode, WritesEveryLevelInEveryUsage) {
    for (const char* const name : {"etc1s_alpha_mips", "uastc_mips", "etc1s_257x129", "uastc_1x37"}) {
        for (const Usage& usage : kUsages) {
            SCOPED_TRACE(std::string(name) + " " + usage.name);
            const CommandResult result =
                run_pelto({"transcode", fixture(name), "--usage", usage.name, "-o", output()});
            ASSERT_EQ(result.status, 0) << result.err;
            EXPECT_EQ(result.out + result.err, "");

            TOZ::vBasisImage basis;
            ASSERT_TRUE(basis.load(fixture(name).c_str()));
            vDDSImage image;
            ASSERT_TRUE(image.load(output(), false, false));
            EXPECT_EQ(image.get_format(), usage.format);
            ASSERT_EQ(image.get_num_mipmaps() + 1, basis.getNumMipLevels());
            for (int level = 0; level < basis.getNumMipLevels(); ++level) {
                EXPECT_EQ(pixels_of(image, level),
                          blocks_of(fixture(name), 0, static_cast<unsigned int>(level), usage.usage));
            }
        }
    }
}

TEST_F(Transcode, KeepsTheExtentInPixels) {
    run_pelto({"transcode", fixture("etc1s_30x10"), "--usage", "bc1", "-o", output()});
    vDDSImage image;
    ASSERT_TRUE(image.load(output(), false, false));
    EXPECT_EQ(image.get_width(), 30);
    EXPECT_EQ(image.get_height(), 10);
}

TEST_F(Transcode, TakesOneLevelWithItsOwnExtent) {
    run_pelto({"transcode", fixture("etc1s_mips"), "--usage", "bc1", "--level", "2", "-o", output()});
    vDDSImage image;
    ASSERT_TRUE(image.load(output(), false, false));
    EXPECT_EQ(image.get_width(), 61 / 4);
    EXPECT_EQ(image.get_height(), 18 / 4);
    EXPECT_EQ(image.get_num_mipmaps(), 0);
    EXPECT_EQ(pixels_of(image, 0), blocks_of(fixture("etc1s_mips"), 0, 2, TOZ::eUsageFormatBC1));
}

TEST_F(Transcode, TakesOneSlice) {
    run_pelto({"transcode", fixture("uastc_alpha_array"), "--usage", "bc3", "--slice", "2", "-o", output()});
    vDDSImage image;
    ASSERT_TRUE(image.load(output(), false, false));
    EXPECT_EQ(pixels_of(image, 0), blocks_of(fixture("uastc_alpha_array"), 2, 0, TOZ::eUsageFormatBC3));
}

TEST_F(Transcode, WritesAFileForEachOfAllSlices) {
    const CommandResult result = run_pelto(
        {"transcode", fixture("etc1s_different_sizes"), "--usage", "bc4", "--slice", "all", "-o", output()});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(files(), (std::vector<std::string>{"out.0.dds", "out.1.dds", "out.2.dds"}));
    for (unsigned int slice = 0; slice < 3; ++slice) {
        vDDSImage image;
        ASSERT_TRUE(image.load(output("out." + std::to_string(slice) + ".dds"), false, false));
        EXPECT_EQ(image.get_width(), 40 >> slice);
        EXPECT_EQ(pixels_of(image, 1),
                  blocks_of(fixture("etc1s_different_sizes"), slice, 1, TOZ::eUsageFormatBC4));
    }
}

TEST_F(Transcode, WritesTheNamedFileForTheOnlySlice) {
    run_pelto({"transcode", fixture("etc1s_4x4"), "--usage", "bc1", "--slice", "all", "-o", output()});
    EXPECT_EQ(files(), std::vector<std::string>{"out.dds"});
}

TEST_F(Transcode, SaysWhichLevelsAndSlicesThereAre) {
    const CommandResult level =
        run_pelto({"transcode", fixture("etc1s_4x4"), "--usage", "bc1", "--level", "1", "-o", output()});
    EXPECT_EQ(level.status, 1);
    EXPECT_NE(level.err.find("there is no level 1: the last one is 0"), std::string::npos) << level.err;
    const CommandResult slice =
        run_pelto({"transcode", fixture("etc1s_array"), "--usage", "bc1", "--slice", "3", "-o", output()});
    EXPECT_EQ(slice.status, 1);
    EXPECT_NE(slice.err.find("there is no slice 3: the last one is 2"), std::string::npos) << slice.err;
    EXPECT_TRUE(files().empty());
}

TEST_F(Transcode, RefusesWhatIsNot2D) {
    const CommandResult result =
        run_pelto({"transcode", fixture("etc1s_video"), "--usage", "bc1", "-o", output()});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("is a video"), std::string::npos) << result.err;
    EXPECT_TRUE(files().empty());
}

TEST_F(Transcode, ExplainsWhatIsNoBasisFile) {
    const std::string other = folder_.write("other.basis", "hello");
    const CommandResult result = run_pelto({"transcode", other, "--usage", "bc1", "-o", output()});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("is not a .basis file: it starts with \"he\" instead of \"sB\""),
              std::string::npos)
        << result.err;
}

TEST_F(Transcode, ExplainsAFileThatIsCutShort) {
    const std::string whole = bytes_of(fixture("etc1s_30x10"));
    const std::string cut = folder_.write("cut.basis", whole.substr(0, whole.size() - 1));
    const CommandResult result = run_pelto({"transcode", cut, "--usage", "bc1", "-o", output()});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("cut short"), std::string::npos) << result.err;
}

TEST_F(Transcode, ExplainsFilesThatCannotBeRead) {
    const std::string pipe = output("pipe.basis");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path :
         {output("missing.basis"), folder_.path("."), pipe, folder_.write("empty.basis", "")}) {
        const CommandResult result = run_pelto({"transcode", path, "--usage", "bc1", "-o", output()});
        EXPECT_EQ(result.status, 1) << path;
        EXPECT_NE(result.err.find(path), std::string::npos) << result.err;
    }
    EXPECT_FALSE(std::filesystem::exists(output()));
}

TEST_F(Transcode, ReplacesAFileOnlyByAWholeOne) {
    folder_.write("out.dds", "before");
    run_pelto({"transcode", fixture("etc1s_video"), "--usage", "bc1", "-o", output()});
    EXPECT_EQ(bytes_of(output()), "before");
    run_pelto({"transcode", fixture("etc1s_4x4"), "--usage", "bc1", "-o", output()});
    EXPECT_EQ(bytes_of(output()).size(), 128u + 8u);
    EXPECT_EQ(files(), std::vector<std::string>{"out.dds"});
}

TEST_F(Transcode, SaysWhyTheOutputCannotBeWritten) {
    for (const std::string& path : {output("no/such/folder/out.dds"), folder_.path(".")}) {
        const CommandResult result =
            run_pelto({"transcode", fixture("etc1s_4x4"), "--usage", "bc1", "-o", path});
        EXPECT_EQ(result.status, 1);
        EXPECT_NE(result.err.find(path + " cannot be written: "), std::string::npos) << result.err;
    }
    EXPECT_TRUE(files().empty());
}

// Their number is the file's to say.
TEST_F(Transcode, WritesMoreSlicesThanItMayOpenFiles) {
    namespace basis = support::basis;
    constexpr std::size_t kSlices = 100;
    support::Bytes file = basis::with_table_at_the_end(basis::file_of({.data = support::Bytes(16)}), 0);
    const support::Bytes entry(file.end() - basis::slice::kSize, file.end());
    for (std::size_t i = 1; i < kSlices; ++i) file.insert(file.end(), entry.begin(), entry.end());
    basis::put(file, basis::header::kDataSize,
               static_cast<std::uint32_t>(file.size() - basis::header::kSize));
    basis::put(file, basis::header::kTotalSlices, kSlices);
    basis::put(file, basis::header::kTotalImages, kSlices);
    for (std::uint32_t i = 0; i < kSlices; ++i) {
        basis::put(file, basis::of_slice(file, i, basis::slice::kImage), i);
    }
    folder_.write("many.basis", std::string(file.begin(), file.end()));
    const CommandResult result = run_pelto(
        {"transcode", folder_.path("many.basis"), "--usage", "bc1", "--slice", "all", "-o", output()},
        "ulimit -n 32");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(files().size(), kSlices + 1);
}

// Sanitizers take more addresses than this leaves them.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST_F(Transcode, SaysWhenTheBlocksOfALevelDoNotFitIntoMemory) {
    namespace basis = support::basis;
    const std::string small = bytes_of(fixture("etc1s_4x4"));
    Bytes file(small.begin(), small.end());
    // Of 16 bytes each: 1.8 GiB, where 1 GiB of addresses is left.
    for (const basis::Field pixels : {basis::slice::kWidth, basis::slice::kHeight}) {
        basis::put(file, basis::of_slice(file, 0, pixels), 44000);
    }
    for (const basis::Field blocks : {basis::slice::kBlocksAcross, basis::slice::kBlocksDown}) {
        basis::put(file, basis::of_slice(file, 0, blocks), 11000);
    }
    const std::string path = folder_.write("large.basis", std::string(file.begin(), file.end()));
    const CommandResult result =
        run_pelto({"transcode", path, "--usage", "bc3", "-o", output()}, "ulimit -v 1048576");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "pelto: " + path + ": its blocks do not fit into memory\n");
    EXPECT_EQ(files(), std::vector<std::string>{"large.basis"});
}
#endif

TEST_F(Transcode, WritesNoSliceWhereAnotherCannotBeWritten) {
    std::filesystem::create_directory(output("out.2.dds"));
    folder_.write("out.0.dds", "before");
    const CommandResult result = run_pelto({"transcode", fixture("etc1s_different_sizes"), "--usage", "bc1",
                                            "--slice", "all", "--json", "-o", output()});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find(output("out.2.dds") + " cannot be written: "), std::string::npos) << result.err;
    EXPECT_EQ(json::parse(result.out), json::array());
    EXPECT_EQ(bytes_of(output("out.0.dds")), "before");
    EXPECT_EQ(files(), (std::vector<std::string>{"out.0.dds", "out.2.dds"}));
}

TEST_F(Transcode, PrintsWhatWasWrittenAsJson) {
    const CommandResult result = run_pelto({"transcode", "--json", fixture("uastc_array_mips"), "--usage",
                                            "bc1", "--level", "0", "--slice", "all", "-o", output()});
    EXPECT_EQ(result.status, 0) << result.err;
    // 30 x 10 pixels are 8 x 3 blocks of 8 bytes, behind a header of 128.
    const json expected = {{{"path", output("out.0.dds")}, {"slice", 0}, {"bytes", 320}},
                           {{"path", output("out.1.dds")}, {"slice", 1}, {"bytes", 320}},
                           {{"path", output("out.2.dds")}, {"slice", 2}, {"bytes", 320}}};
    EXPECT_EQ(json::parse(result.out), expected);
}

TEST_F(Transcode, TakesTheUsageInEitherCase) {
    const std::string file = fixture("etc1s_4x4");
    ASSERT_EQ(run_pelto({"transcode", file, "--usage", "bc3", "-o", output("lower.dds")}).status, 0);
    const CommandResult upper = run_pelto({"transcode", file, "--usage", "BC3", "-o", output("upper.dds")});
    EXPECT_EQ(upper.status, 0) << upper.err;
    EXPECT_EQ(bytes_of(output("upper.dds")), bytes_of(output("lower.dds")));
}

TEST_F(Transcode, WrongUsageIsToldFromFailure) {
    const std::string file = fixture("etc1s_4x4");
    EXPECT_EQ(run_pelto({"transcode", file, "-o", output()}).status, 2);
    EXPECT_EQ(run_pelto({"transcode", file, "--usage", "bc7", "-o", output()}).status, 2);
    EXPECT_EQ(run_pelto({"transcode", file, "--usage", "bc1"}).status, 2);
    for (const char* const number : {"-1", "x", "1x", "99999999999"}) {
        EXPECT_EQ(run_pelto({"transcode", file, "--usage", "bc1", "--level", number, "-o", output()}).status,
                  2);
    }
}

json inspected(const std::string& path) {
    return json::parse(run_pelto({"inspect", "--json", path}).out).at(0);
}

TEST(InspectBasis, PrintsAsJSONWhatAFileHolds) {
    const std::string path = fixture("etc1s_alpha_array_mips");
    const json object = inspected(path);
    EXPECT_EQ(object.at("container"), "basis");
    EXPECT_EQ(object.at("format"), "ETC1S");
    EXPECT_EQ(object.at("loaderFormat"), nullptr);
    EXPECT_EQ(object.at("dimension"), "2d");
    EXPECT_EQ(object.at("width"), 30);
    EXPECT_EQ(object.at("height"), 10);
    EXPECT_EQ(object.at("layers"), 3);
    EXPECT_EQ(object.at("faces"), 1);
    EXPECT_EQ(object.at("levels"), 5);
    EXPECT_EQ(object.at("fileBytes"), std::filesystem::file_size(path));
    EXPECT_EQ(object.at("loads"), true);
}

TEST(InspectBasis, DescribesWhatTheLoaderDoesNotTakeToo) {
    const json cube = inspected(fixture("uastc_cube_map"));
    EXPECT_EQ(cube.at("faces"), 6);
    EXPECT_EQ(cube.at("layers"), 1);
    EXPECT_EQ(cube.at("loads"), false);
    const json video = inspected(fixture("etc1s_video"));
    EXPECT_GT(video.at("layers"), 1);
    EXPECT_EQ(video.at("loads"), false);
    const json volume = inspected(fixture("etc1s_volume"));
    EXPECT_EQ(volume.at("dimension"), "3d");
    EXPECT_GT(volume.at("depth"), 1);
    EXPECT_EQ(volume.at("layers"), 1);
    EXPECT_EQ(volume.at("loads"), false);
}

TEST(InspectBasis, GoesByContentNotByName) {
    const TemporaryFolder folder;
    const std::string renamed = folder.write("texture.dds", bytes_of(fixture("uastc_4x4")));
    const CommandResult result = run_pelto({"inspect", renamed});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.out.find("UASTC LDR 4x4"), std::string::npos) << result.out;
}

TEST(InspectBasis, RefusesDamagedTables) {
    const std::string cube = bytes_of(fixture("uastc_cube_map"));
    std::string version = cube;
    version[2] = 0x77;
    std::string table = cube;
    table.replace(65, 4, "\xFF\xFF\xFF\xFF");
    const TemporaryFolder folder;
    const std::string version_path = folder.write("version.basis", version);
    const std::string table_path = folder.write("table.basis", table);
    const std::string cut_path = folder.write("cut.basis", bytes_of(fixture("uastc_4x4")).substr(0, 90));
    const CommandResult result = run_pelto({"inspect", version_path, table_path, cut_path});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err,
              "pelto: " + version_path +
                  ": the version 119 at byte 2 is not supported\npelto: " + table_path +
                  ": its table of slices lies outside the file, says byte 65\npelto: " + cut_path +
                  ": is cut short: its table of slices ends at byte 100, the file at byte 90\n");
}

TEST(InspectBasis, DescribesAFileThatIsCutInItsLevels) {
    const std::string cube = bytes_of(fixture("uastc_cube_map"));
    const TemporaryFolder folder;
    const std::string path = folder.write("cut.basis", cube.substr(0, cube.size() - 1));
    const CommandResult result = run_pelto({"inspect", path, fixture("uastc_4x4")});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.out.find(path + ": note: ends 1 byte before the end of its last level\n"),
              std::string::npos)
        << result.out;
    EXPECT_NE(result.out.find("uastc_4x4.basis"), std::string::npos) << result.out;
    EXPECT_EQ(inspected(path).at("missingBytes"), 1);
}

}  // namespace
