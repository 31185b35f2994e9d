// pelto size, run as a user runs it.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

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

TEST(Size, WrongUsageNamesTheCommandsHelp) {
    const std::vector<std::vector<std::string>> wrong = {
        {"size"},
        {"size", "4"},
        {"size", "4", "4"},
        {"size", "4", "4", "--format", "65"},
        {"size", "4", "4", "--client-type", "37"},
        {"size", "4", "4", "--format", "1", "--client-type", "1"},
        {"size", "0", "4", "--format", "1"},
        {"size", "-4", "4", "--format", "1"},
        {"size", "4294967296", "4", "--format", "1"},
        {"size", "x", "4", "--format", "1"},
    };
    for (const auto& arguments : wrong) {
        const CommandResult result = run_pelto(arguments);
        EXPECT_EQ(result.status, 2) << testing::PrintToString(arguments);
        EXPECT_NE(result.err.find("Usage: pelto size"), std::string::npos) << result.err;
        EXPECT_EQ(result.out, "");
    }
}

}  // namespace
