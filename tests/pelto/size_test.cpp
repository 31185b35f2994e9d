// SPDX-License-Identifier: Apache-2.0
// pelto size, run as a user runs it.
#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "support/command.h"

namespace {

using nlohmann::json;
using support::CommandResult;
using support::run_pelto;

TEST(Size, PrintsExtentAndBytesOfTheImage) {
    const CommandResult result = run_pelto({"size", "5", "5", "--format", "51"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out,
              "level  width x height x depth  bytes\n"
              "    0               5 x 5 x 1     32\n");
}

TEST(Size, PrintsEveryLevelAndTheirSum) {
    const CommandResult result = run_pelto({"size", "4", "2", "4", "--client-type", "5", "--levels"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out,
              "level  width x height x depth  bytes\n"
              "    0               4 x 2 x 4    128\n"
              "    1               2 x 1 x 2     16\n"
              "    2               1 x 1 x 1      4\n"
              "  all                            148\n");
}

TEST(Size, TheLevelsOfAVolumeGoDownToASinglePixel) {
    const CommandResult result =
        run_pelto({"size", "1", "1", "8", "--client-type", "1", "--levels", "--json"});
    EXPECT_EQ(json::parse(result.out).at("levels").size(), 4U);
}

TEST(Size, PrintsJsonForMachines) {
    const CommandResult result = run_pelto({"size", "8", "4", "--format", "53", "--levels", "--json"});
    EXPECT_EQ(result.status, 0);
    const json expected = {
        {"format", 53},
        {"levels",
         {{{"level", 0}, {"width", 8}, {"height", 4}, {"depth", 1}, {"bytes", 32}},
          {{"level", 1}, {"width", 4}, {"height", 2}, {"depth", 1}, {"bytes", 16}},
          {{"level", 2}, {"width", 2}, {"height", 1}, {"depth", 1}, {"bytes", 16}},
          {{"level", 3}, {"width", 1}, {"height", 1}, {"depth", 1}, {"bytes", 16}}}},
        {"bytes", 80},
    };
    EXPECT_EQ(json::parse(result.out), expected);
    const json client = json::parse(run_pelto({"size", "2", "2", "--client-type", "17", "--json"}).out);
    EXPECT_EQ(client.at("clientType"), 17);
    EXPECT_EQ(client.at("bytes"), 64);
}

TEST(Size, RefusesToPrintANumberThatHasWrappedAround) {
    const CommandResult result = run_pelto({"size", "65536", "65536", "--format", "5"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "pelto: 65536 x 65536 x 1 pixels take more bytes than a 32-bit number counts\n");
}

TEST(Size, CountsUpToTheLargestNumber) {
    // 1 byte a pixel; 65535 * 65537 = 2^32 - 1.
    EXPECT_EQ(json::parse(run_pelto({"size", "65535", "65537", "--format", "1", "--json"}).out).at("bytes"),
              4294967295U);
    EXPECT_EQ(run_pelto({"size", "65536", "65536", "--format", "1"}).status, 1);
    // 8 bytes a block: 2^29 - 1 blocks fit, 2^29 do not.
    EXPECT_EQ(json::parse(run_pelto({"size", "2147483644", "4", "--format", "51", "--json"}).out).at("bytes"),
              4294967288U);
    EXPECT_EQ(run_pelto({"size", "2147483645", "4", "--format", "51"}).status, 1);
    EXPECT_EQ(run_pelto({"size", "4", "4", "1000000000", "--format", "51"}).status, 0);
}

int format_of(const std::string& name) {
    const CommandResult result = run_pelto({"size", "4", "4", "--format", name, "--json"});
    EXPECT_EQ(result.err, "");
    return json::parse(result.out).at("format");
}

TEST(Size, TakesNamesOfBlockFormatsInEitherCase) {
    const std::map<std::string, int> names = {
        {"BC1", 51},       {"DXT1", 51}, {"BC2", 53},  {"DXT3", 53},      {"BC3", 55},
        {"DXT5", 55},      {"BC4", 57},  {"BC4U", 57}, {"BC4S", 58},      {"BC5", 59},
        {"BC5U", 59},      {"BC5S", 60}, {"BC6H", 61}, {"BC6", 61},       {"BC7", 63},
        {"BC6H_UF16", 61}, {"bc1", 51},  {"dXt5", 55}, {"bc6h_sf16", 61},
    };
    for (const auto& [name, number] : names) EXPECT_EQ(format_of(name), number) << name;
}

TEST(Size, TakesTheBytesOfAPixelAsAName) {
    const std::map<std::string, int> formats = {{"1B", 1},  {"2B", 3},   {"3B", 4},   {"4B", 5},
                                                {"8B", 17}, {"12B", 32}, {"16B", 33}, {"4b", 5}};
    for (const auto& [name, number] : formats) EXPECT_EQ(format_of(name), number) << name;
    for (const unsigned int bytes : {1U, 2U, 3U, 4U, 6U, 8U, 12U, 16U}) {
        const CommandResult result =
            run_pelto({"size", "3", "5", "--client-type", std::to_string(bytes) + "B", "--json"});
        EXPECT_EQ(json::parse(result.out).at("bytes"), 15 * bytes);
    }
}

TEST(Size, TakesNumbersUpToTheLastWithLeadingZeros) {
    EXPECT_EQ(format_of("64"), 64);
    EXPECT_EQ(format_of("010"), 10);
    const CommandResult result = run_pelto({"size", "010", "1", "--client-type", "36", "--json"});
    EXPECT_EQ(json::parse(result.out).at("levels").at(0).at("width"), 10);
}

// Each line of the tables is held against the sizes that the command computes.
TEST(Size, HelpListsEveryFormatWithItsSize) {
    const std::string help = run_pelto({"size", "--help"}).out;
    std::map<std::string, std::set<int>> numbers;
    std::string option;
    std::istringstream lines(help);
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("FORMAT ", 0) == 0) option = "--format";
        if (line.rfind("LAYOUT ", 0) == 0) option = "--client-type";
        std::smatch parts;
        const std::regex row("([A-Z0-9_, ]+[A-Z0-9]) +([0-9]+) a (pixel|4 x 4 block) +([0-9, ]+)");
        if (!std::regex_match(line, parts, row)) continue;
        const std::string list = parts[4];
        const std::regex word("[0-9]+");
        for (std::sregex_iterator i(list.begin(), list.end(), word), end; i != end; ++i) {
            const std::string extent = parts[3] == "pixel" ? "1" : "4";
            const CommandResult result = run_pelto({"size", extent, extent, option, i->str(), "--json"});
            EXPECT_EQ(json::parse(result.out).at("bytes"), std::stoi(parts[2])) << line;
            EXPECT_TRUE(numbers[option].insert(std::stoi(i->str())).second) << line;
        }
    }
    EXPECT_EQ(numbers["--format"].size(), 64U);
    EXPECT_EQ(numbers["--client-type"].size(), 36U);
}

TEST(Size, SaysInALineWhatAnArgumentMustBe) {
    const std::string formats =
        "is no format: give a number from 1 to 64, BC1, BC2, BC3, BC4, BC5, BC6H or BC7, or the bytes of a "
        "pixel as 1B, 2B, 3B, 4B, 8B, 12B or 16B";
    const std::string layouts =
        "is no layout: give a number from 1 to 36, or the bytes of a pixel as 1B, 2B, 3B, 4B, 6B, 8B, 12B or "
        "16B";
    const std::string range = "is not a whole number from 1 to 4294967295";
    const std::vector<std::pair<std::vector<std::string>, std::string>> wrong = {
        {{}, "WIDTH is missing"},
        {{"4"}, "HEIGHT is missing"},
        {{"4", "4"}, "--format or --client-type is missing"},
        {{"4", "4", "--format", "1", "--client-type", "1"}, "--format and --client-type exclude each other"},
        {{"0", "0"}, "WIDTH: '0' " + range},
        {{"4", "-4", "--format", "1"}, "HEIGHT: '-4' " + range},
        {{"4", "4", "4294967296", "--format", "1"}, "DEPTH: '4294967296' " + range},
        {{"4x", "4", "--format", "1"}, "WIDTH: '4x' " + range},
        {{"99999999999999999999", "4", "--format", "1"}, "WIDTH: '99999999999999999999' " + range},
        {{"4", "4", "--format", "0"}, "--format: '0' " + formats},
        {{"4", "4", "--format", "65"}, "--format: '65' " + formats},
        {{"4", "4", "--format", "BC8"}, "--format: 'BC8' " + formats},
        {{"4", "4", "--format", "6B"}, "--format: '6B' " + formats},
        {{"4", "4", "--format", "DTX1"}, "--format: 'DTX1' " + formats + "; did you mean 'DXT1'?"},
        {{"4", "4", "--format", ""}, "--format: '' " + formats},
        {{"4", "4", "--client-type", "0"}, "--client-type: '0' " + layouts},
        {{"4", "4", "--client-type", "37"}, "--client-type: '37' " + layouts},
        {{"4", "4", "--client-type", "BC1"}, "--client-type: 'BC1' " + layouts},
    };
    for (const auto& [arguments, said] : wrong) {
        std::vector<std::string> words = {"size"};
        words.insert(words.end(), arguments.begin(), arguments.end());
        const CommandResult result = run_pelto(words);
        EXPECT_EQ(result.status, 2) << said;
        EXPECT_EQ(result.err, "pelto size: " + said + "\nSee 'pelto size --help'\n");
        EXPECT_EQ(result.out, "");
    }
}

}  // namespace
