// SPDX-License-Identifier: Apache-2.0
// pelto inspect, run as a user runs it.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "support/command.h"
#include "support/dds_file.h"
#include "support/temporary_folder.h"

namespace {

using namespace support;
using nlohmann::json;

class Inspect : public testing::Test {
protected:
    std::string file(const std::string& name, const FileHeader& header, std::size_t pixel_bytes) const {
        const Bytes bytes = dds_file(header, random_bytes(pixel_bytes, 1));
        return folder_.write(name, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    }

    std::string bc1_with_mips() const {
        return file("bc1.dds", fourcc_header(four_cc("DXT1")).sized(16, 8).with_mips(3), 64 + 16 + 8);
    }

    std::string cube_array() const {
        FileHeader header = dxgi_header(99).sized(8, 8).with_mips(2);
        header.misc_flag = 4;
        header.array_size = 2;
        return file("cubes.dds", header, 12 * (64 + 16));
    }

    const TemporaryFolder folder_;
};

json inspected(const std::string& path) {
    return json::parse(run_pelto({"inspect", "--json", path}).out).at(0);
}

std::vector<std::string> codes_of(const json& object) {
    std::vector<std::string> codes;
    for (const json& note : object.at("notes")) codes.push_back(note.at("code"));
    return codes;
}

std::size_t line_count(const std::string& text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

using Words = std::vector<std::string>;

TEST_F(Inspect, PrintsARowForEachFileAndNotesBelow) {
    const std::string bc1 = bc1_with_mips();
    const std::string cubes = cube_array();
    const std::string codec = PELTO_SAMPLES "/textures/uastc_alpha.basis";
    const CommandResult result = run_pelto({"inspect", bc1, cubes, codec});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out,
              "container  format           extent  layers  faces  levels  bytes  path\n"
              "dds        BC1_UNORM        16 x 8       1      1       3     88  " +
                  bc1 + "\n" + "dds        BC7_UNORM_SRGB    8 x 8       2      6       2    960  " + cubes +
                  "\n" + "basis      UASTC LDR 4x4   61 x 45       1      1       1   3072  " + codec + "\n");
}

TEST_F(Inspect, PrintsNotesBelowTheTable) {
    const std::string path = file("odd.dds", dxgi_header(87).sized(3, 1), 12);
    const CommandResult result = run_pelto({"inspect", path});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out.substr(result.out.find("\n\n")),
              "\n\n" + path + ": note: has four bytes a pixel, which vDDSImage reads as three\n");
}

TEST_F(Inspect, PrintsTheTableOfLevelsWhereAsked) {
    const std::string path = bc1_with_mips();
    const CommandResult result = run_pelto({"inspect", "--levels", path});
    EXPECT_EQ(result.out.substr(result.out.find("\n\n")),
              "\n\n" + path + ":\n" +
                  "layer  face  level  extent  offset  bytes  row bytes  whole\n"
                  "    0     0      0  16 x 8     128     64         32  yes\n"
                  "    0     0      1   8 x 4     192     16         16  yes\n"
                  "    0     0      2   4 x 2     208      8          8  yes\n");
}

TEST(InspectSamples, TheProjectsTexturesAreWholeAndOfEveryFormatThatTheLoaderTakes) {
    std::vector<std::string> arguments = {"inspect", "--json"};
    for (const auto& entry : std::filesystem::directory_iterator(PELTO_SAMPLES "/textures")) {
        if (entry.path().extension() == ".dds") arguments.push_back(entry.path().string());
    }
    const CommandResult result = run_pelto(arguments);
    EXPECT_EQ(result.status, 0) << result.out;
    EXPECT_EQ(result.err, "");
    std::set<std::string> formats;
    for (const json& object : json::parse(result.out)) {
        EXPECT_EQ(object.at("missingBytes"), 0) << object;
        const auto headers =
            object.at("fileBytes").get<std::uintmax_t>() - object.at("bytes").get<std::uintmax_t>();
        EXPECT_TRUE(headers == 128 || headers == 148) << object;
        formats.insert(object.at("loaderFormat"));
    }
    EXPECT_EQ(formats, (std::set<std::string>{"LUMINANCE8", "RGB8", "RGBA8", "BGRA8", "RGBA16F", "R32F",
                                              "RGB32F", "RGBA32F", "DXT1", "DXT3", "DXT5", "BC4U", "BC4S",
                                              "BC5U", "BC5S", "BC6H_UF16", "BC6H_SF16"}));
}

TEST_F(Inspect, PrintsJsonForMachines) {
    const std::string path = cube_array();
    const CommandResult result = run_pelto({"inspect", "--json", path});
    EXPECT_EQ(result.status, 0);
    const json expected = {{{"path", path},
                            {"container", "dds"},
                            {"format", "BC7_UNORM_SRGB"},
                            {"dxgi", 99},
                            {"loaderFormat", nullptr},
                            {"dimension", "2d"},
                            {"width", 8},
                            {"height", 8},
                            {"depth", 1},
                            {"layers", 2},
                            {"faces", 6},
                            {"levels", 2},
                            {"alphaMode", "unknown"},
                            {"bytes", 960},
                            {"fileBytes", 1108},
                            {"missingBytes", 0},
                            {"loads", false},
                            {"faithful", false},
                            {"notes", json::array()}}};
    EXPECT_EQ(json::parse(result.out), expected);
}

TEST_F(Inspect, JsonHoldsTheTableOfLevelsInTheFilesOrder) {
    const json object = json::parse(run_pelto({"inspect", "--json", "--levels", cube_array()}).out).at(0);
    ASSERT_EQ(object.at("table").size(), 24U);
    const json expected = {{"layer", 1}, {"face", 5},      {"level", 1},  {"width", 4},     {"height", 4},
                           {"depth", 1}, {"offset", 1092}, {"bytes", 16}, {"rowBytes", 16}, {"whole", true}};
    EXPECT_EQ(object.at("table").at(23), expected);
    EXPECT_EQ(object.at("table").at(1).at("offset"), 148 + 64);
    EXPECT_EQ(object.at("table").at(2).at("face"), 1);
}

TEST_F(Inspect, JsonDescribesABasisFile) {
    const json object = inspected(PELTO_SAMPLES "/textures/etc1s_mips.basis");
    EXPECT_EQ(object.at("container"), "basis");
    EXPECT_EQ(object.at("format"), "ETC1S");
    EXPECT_EQ(object.at("dxgi"), nullptr);
    EXPECT_EQ(object.at("width"), 96);
    EXPECT_EQ(object.at("height"), 64);
    EXPECT_EQ(object.at("levels"), 7);
    EXPECT_EQ(object.at("loads"), true);
    EXPECT_EQ(object.at("faithful"), true);
}

TEST_F(Inspect, DescribesATruncatedFileAndEndsWith1) {
    const std::string path = file("short.dds", fourcc_header(four_cc("DXT1")).sized(16, 16), 100);
    const CommandResult result = run_pelto({"inspect", path});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "");
    EXPECT_NE(result.out.find(path + ": note: ends 28 bytes before the end of its last level\n"),
              std::string::npos)
        << result.out;
    const json object = inspected(path);
    EXPECT_EQ(object.at("missingBytes"), 28);
    EXPECT_EQ(object.at("loads"), false);
    EXPECT_EQ(codes_of(object), Words{"truncated"});
}

TEST_F(Inspect, ReadsTheHeadersOfASparseTerabyteAlone) {
    const std::string path = bc1_with_mips();
    std::filesystem::resize_file(path, std::uintmax_t{1} << 40);
    const json object = inspected(path);
    EXPECT_EQ(object.at("fileBytes"), std::uintmax_t{1} << 40);
    EXPECT_EQ(codes_of(object), Words{"leftoverBytes"});
}

TEST_F(Inspect, ANameWithALineFeedStaysOnOneLine) {
    const CommandResult failure = run_pelto({"inspect", folder_.path("no\nsuch")});
    EXPECT_EQ(failure.err,
              "pelto: " + folder_.path("no\\x0asuch") + ": cannot be opened: No such file or directory\n");
    const CommandResult success =
        run_pelto({"inspect", file("a\x1b.dds", fourcc_header(four_cc("DXT1")).sized(4, 4), 8)});
    EXPECT_NE(success.out.find(folder_.path("a\\x1b.dds") + "\n"), std::string::npos) << success.out;
}

TEST_F(Inspect, APipeIsNotReadFrom) {
    const std::string path = folder_.path("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const CommandResult result = run_pelto({"inspect", path});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "pelto: " + path + ": is not a regular file: its length cannot be told\n");
}

TEST_F(Inspect, AFailureIsOneLineWithTheReasonAndTheOtherFilesAreStillShown) {
    const std::string path = file("dxgi300.dds", dxgi_header(300).sized(4, 4), 64);
    const CommandResult result = run_pelto({"inspect", path, bc1_with_mips()});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "pelto: " + path + ": the DXGI format 300 at byte 128 is not known\n");
    EXPECT_EQ(line_count(result.out), 2U);
}

TEST_F(Inspect, SaysWhyAFileCannotBeDescribed) {
    const auto error = [](const std::string& path) {
        const CommandResult result = run_pelto({"inspect", path});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(line_count(result.err), 1U);
        return result.err.substr(std::string("pelto: " + path + ": ").size());
    };
    EXPECT_EQ(error(folder_.path("absent.dds")), "cannot be opened: No such file or directory\n");
    EXPECT_EQ(error(folder_.path("")), "is a directory\n");
    EXPECT_EQ(error(folder_.write("empty.dds", "")), "is empty\n");
    EXPECT_EQ(error(folder_.write("few.dds", "text")),
              "is not a DDS, .basis or KTX2 file: it starts with \"text\"\n");
    EXPECT_EQ(error(folder_.write("text.dds", "A text file, renamed.\n")),
              "is a text file, not a DDS, .basis or KTX2 file\n");
    EXPECT_EQ(error(folder_.write("png.dds", "\x89PNG\r\n\x1a\n")),
              "is a PNG image, not a DDS, .basis or KTX2 file\n");
    EXPECT_EQ(error(folder_.write("lfs.dds", "version https://git-lfs.github.com/spec/v1\n")),
              "is a Git LFS pointer, not a DDS, .basis or KTX2 file: run 'git lfs pull' to fetch "
              "the file itself\n");
    EXPECT_EQ(error(file("fourcc.dds", fourcc_header(four_cc("WHAT")), 0)),
              "the FourCC \"WHAT\" at byte 84 is not known\n");
    EXPECT_EQ(error(file("number.dds", fourcc_header(59), 0)),
              "the Direct3D 9 format 59 at byte 84 is not known\n");
    EXPECT_EQ(
        error(file("bits.dds", plain_header(kRgb, 16).with_masks(0xF, 0xFF, 0, 0), 0)),
        "the pixel format at byte 80 (flags 64, 16 bits a pixel, masks 0000000f 000000ff 00000000 00000000) "
        "is not known\n");
}

TEST_F(Inspect, JsonHoldsTheErrorsToo) {
    const std::string path = folder_.path("absent.dds");
    const CommandResult result = run_pelto({"inspect", "--json", path});
    EXPECT_EQ(result.status, 1);
    const json expected = {{{"path", path}, {"error", "cannot be opened: No such file or directory"}}};
    EXPECT_EQ(json::parse(result.out), expected);
    EXPECT_EQ(line_count(result.err), 1U);
}

TEST_F(Inspect, JsonGivesTheBytesOfANameThatIsNotUtf8) {
    const std::string path = file("\xFF.dds", fourcc_header(four_cc("DXT1")).sized(4, 4), 8);
    const json object = inspected(path);
    EXPECT_EQ(object.at("format"), "BC1_UNORM");
    const std::string name = folder_.path("");
    const CommandResult decoded =
        run_pelto({"--version"}, "printf %s '" + object.at("pathBytes").get<std::string>() +
                                     "' | base64 -d > '" + folder_.path("decoded") + "'");
    EXPECT_EQ(decoded.status, 0);
    std::ifstream in(folder_.path("decoded"), std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), path);
    EXPECT_FALSE(inspected(bc1_with_mips()).contains("pathBytes"));
}

TEST(Pelto, HelpAndVersionGoToStandardOutput) {
    const CommandResult help = run_pelto({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.err, "");
    EXPECT_NE(help.out.find("inspect"), std::string::npos);
    const CommandResult version = run_pelto({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out.rfind("pelto ", 0), 0U);
    const CommandResult inspect_help = run_pelto({"inspect", "--help"});
    EXPECT_EQ(inspect_help.status, 0);
    for (const char* option : {"--json", "--levels"}) {
        EXPECT_NE(inspect_help.out.find(option), std::string::npos) << option;
    }
}

}  // namespace
