// pelto inspect, run as a user runs it.
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
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

    std::string cube() const {
        return file("cube.dds", dxgi_header(95).sized(4, 4).with_caps2(kCubeMap), 6 * 16);
    }

    const TemporaryFolder folder_;
};

// The cells of each line; no cell of these tables has spaces of its own but the extent.
std::vector<std::vector<std::string>> cells(const std::string& text) {
    std::vector<std::vector<std::string>> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line);
        lines.emplace_back(std::istream_iterator<std::string>(words), std::istream_iterator<std::string>());
    }
    return lines;
}

std::size_t line_count(const std::string& text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

using Words = std::vector<std::string>;

TEST_F(Inspect, PrintsARowForEachFile) {
    const CommandResult result = run_pelto({"inspect", bc1_with_mips(), cube()});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    const auto lines = cells(result.out);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0], (Words{"path", "format", "width", "x", "height", "x", "depth", "faces", "levels",
                               "bytes", "flags"}));
    EXPECT_EQ(lines[1], (Words{folder_.path("bc1.dds"), "DXT1", "16", "x", "8", "x", "1", "1", "3", "88",
                               "compressed"}));
    EXPECT_EQ(lines[2], (Words{folder_.path("cube.dds"), "BC6H_UF16", "4", "x", "4", "x", "1", "6", "1", "96",
                               "compressed,cubemap"}));
}

TEST(InspectSamples, TheProjectsTexturesAreWholeAndOfEveryFormat) {
    std::vector<std::string> arguments = {"inspect", "--json"};
    for (const auto& entry : std::filesystem::directory_iterator(PELTO_SAMPLES "/textures")) {
        if (entry.path().extension() == ".dds") arguments.push_back(entry.path().string());
    }
    const CommandResult result = run_pelto(arguments);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    std::set<std::string> formats;
    for (const json& object : json::parse(result.out)) {
        EXPECT_EQ(object.at("missingBytes"), 0) << object;
        const std::uintmax_t length = std::filesystem::file_size(object.at("path").get<std::string>());
        const auto headers = length - object.at("bytes").get<std::uintmax_t>();
        EXPECT_TRUE(headers == 128 || headers == 148) << object;
        formats.insert(object.at("format"));
    }
    EXPECT_EQ(formats, (std::set<std::string>{"LUMINANCE8", "RGB8", "RGBA8", "BGRA8", "RGBA16F", "R32F",
                                              "RGB32F", "RGBA32F", "DXT1", "DXT3", "DXT5", "BC4U", "BC4S",
                                              "BC5U", "BC5S", "BC6H_UF16", "BC6H_SF16"}));
}

TEST_F(Inspect, PrintsJsonForMachines) {
    const CommandResult result = run_pelto({"inspect", "--json", cube()});
    EXPECT_EQ(result.status, 0);
    const json expected = {{{"path", folder_.path("cube.dds")},
                            {"format", "BC6H_UF16"},
                            {"width", 4},
                            {"height", 4},
                            {"depth", 1},
                            {"faces", 6},
                            {"levels", 1},
                            {"bytes", 96},
                            {"missingBytes", 0},
                            {"compressed", true},
                            {"cubemap", true},
                            {"volume", false},
                            {"valid", true}}};
    EXPECT_EQ(json::parse(result.out), expected);
}

TEST_F(Inspect, HeaderOnlyKnowsNoByteCounts) {
    const std::string path =
        file("header.dds", fourcc_header(four_cc("DXT5")).sized(256, 128).with_mips(9), 0);
    const CommandResult table = run_pelto({"inspect", "--header-only", path});
    EXPECT_EQ(table.status, 0);
    EXPECT_EQ(cells(table.out).at(1),
              (Words{path, "DXT5", "256", "x", "128", "x", "1", "1", "9", "-", "compressed,header-only"}));
    const json object = json::parse(run_pelto({"inspect", "--header-only", "--json", path}).out).at(0);
    EXPECT_FALSE(object.contains("bytes"));
    EXPECT_EQ(object.at("valid"), false);
}

TEST_F(Inspect, FlipLoadsTheImageUpsideDown) {
    const CommandResult result = run_pelto({"inspect", "--flip", bc1_with_mips()});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(cells(result.out).at(1).back(), "compressed,flipped");
}

TEST_F(Inspect, WarnsOfATruncatedFileThatIsTrusted) {
    const std::string path = file("short.dds", fourcc_header(four_cc("DXT1")).sized(16, 16), 100);
    const CommandResult result = run_pelto({"inspect", "--trust", path});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(cells(result.out).at(1).back(), "compressed,truncated");
    EXPECT_EQ(
        result.err,
        "pelto: " + path + ": warning: ends 28 bytes before what its header promises; they read as zero\n");
    EXPECT_EQ(json::parse(run_pelto({"inspect", "--json", "--trust", path}).out).at(0).at("missingBytes"),
              28);
}

TEST_F(Inspect, RefusesATruncatedFile) {
    const std::string path = file("short.dds", fourcc_header(four_cc("DXT1")).sized(16, 16), 100);
    const CommandResult result = run_pelto({"inspect", path});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err,
              "pelto: " + path + ": is cut short: level 0 ends at byte 256, the file at byte 228\n");
}

TEST_F(Inspect, WarnsOfTruncatedHeadersThatAreTrustedWhenThoseAloneAreRead) {
    const Bytes header = header_bytes(fourcc_header(four_cc("DXT1")).sized(4, 4));
    const std::string path = folder_.write("cut.dds", std::string(header.begin(), header.begin() + 100));
    const CommandResult result = run_pelto({"inspect", "--header-only", "--trust", path});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(cells(result.out).at(1).back(), "compressed,header-only,truncated");
    EXPECT_EQ(run_pelto({"inspect", "--header-only", path}).err,
              "pelto: " + path + ": is cut short: its header ends at byte 128, the file at byte 100\n");
    EXPECT_EQ(
        result.err,
        "pelto: " + path + ": warning: ends 28 bytes before what its header promises; they read as zero\n");
}

TEST_F(Inspect, ANameWithALineFeedStaysOnOneLine) {
    const CommandResult failure = run_pelto({"inspect", folder_.path("no\nsuch")});
    EXPECT_EQ(failure.err,
              "pelto: " + folder_.path("no\\x0asuch") + ": cannot be opened: No such file or directory\n");
    const CommandResult success =
        run_pelto({"inspect", file("a\x1b.dds", fourcc_header(four_cc("DXT1")), 8)});
    EXPECT_EQ(cells(success.out).at(1).at(0), folder_.path("a\\x1b.dds"));
}

TEST_F(Inspect, APipeIsNotReadFrom) {
    const std::string path = folder_.path("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const CommandResult result = run_pelto({"inspect", path});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "pelto: " + path + ": is not a regular file: its length cannot be told\n");
}

TEST_F(Inspect, AFailureIsOneLineWithTheReasonAndTheOtherFilesAreStillShown) {
    const std::string path = file("dxgi2.dds", dxgi_header(2).sized(4, 4), 64);
    const CommandResult result = run_pelto({"inspect", path, bc1_with_mips()});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "pelto: " + path + ": the DXGI format 2 at byte 128 is not supported\n");
    EXPECT_EQ(run_pelto({"inspect", "--trust", path}).err,
              "pelto: " + path + ": The DXGI type 2 for the DDS file : is not supported.\n");
    EXPECT_EQ(cells(result.out).size(), 2U);
}

TEST_F(Inspect, SaysWhyAFileCannotBeRead) {
    const auto error_of = [](std::vector<std::string> arguments) {
        const std::string path = arguments.back();
        const CommandResult result = run_pelto(arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(line_count(result.err), 1U);
        return result.err.substr(std::string("pelto: " + path + ": ").size());
    };
    const auto error = [&](const std::string& path) {
        const std::string checked = error_of({"inspect", path});
        EXPECT_EQ(checked, error_of({"inspect", "--trust", path}));
        return checked;
    };
    EXPECT_EQ(error(folder_.path("absent.dds")), "cannot be opened: No such file or directory\n");
    EXPECT_EQ(error(folder_.path("")), "is a directory\n");
    EXPECT_EQ(error(folder_.write("empty.dds", "")), "is empty\n");
    EXPECT_EQ(error(folder_.write("text.dds", "text")),
              "is not a DDS file: it starts with \"text\" instead of \"DDS \"\n");
    EXPECT_EQ(error(folder_.write("short.dds", "D\n")),
              "is not a DDS file: it starts with \"D\\x0a\" instead of \"DDS \"\n");
    EXPECT_EQ(error(file("fourcc.dds", fourcc_header(four_cc("WHAT")), 0)),
              "the FourCC \"WHAT\" at byte 84 is not supported\n");
    const std::string bits = file("bits.dds", plain_header(kRgb, 16), 0);
    EXPECT_EQ(error_of({"inspect", bits}),
              "the pixel format at byte 80 (flags 64, 16 bits a pixel) is not supported\n");
    EXPECT_EQ(error_of({"inspect", "--trust", bits}), "DDS Format not supported.\n");
}

// These sanitizers end a process that asks for too much memory.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST_F(Inspect, SaysWhenTheLevelsOfATrustedFileDoNotFitIntoMemory) {
    const std::string path = file("huge.dds", fourcc_header(116).sized(1U << 24, 1U << 24), 0);
    const CommandResult result = run_pelto({"inspect", "--trust", path});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "pelto: " + path + ": does not fit into memory\n");
}
#endif

TEST_F(Inspect, JsonHoldsTheErrorsToo) {
    const CommandResult result = run_pelto({"inspect", "--json", folder_.path("absent.dds")});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(json::parse(result.out).at(0).at("error"), "cannot be opened: No such file or directory");
    EXPECT_EQ(line_count(result.err), 1U);
}

TEST_F(Inspect, JsonTakesFileNamesThatAreNotUtf8) {
    const std::string path = file("\xFF.dds", fourcc_header(four_cc("DXT1")).sized(4, 4), 8);
    const CommandResult result = run_pelto({"inspect", "--json", path});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(json::parse(result.out).at(0).at("format"), "DXT1");
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
    for (const char* option : {"--json", "--header-only", "--flip"}) {
        EXPECT_NE(inspect_help.out.find(option), std::string::npos) << option;
    }
}

}  // namespace
