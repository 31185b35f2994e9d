// SPDX-License-Identifier: Apache-2.0
// Wrong arguments and the subcommand help, as a user meets them.
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "support/command.h"
#include "support/temporary_folder.h"

namespace {

using namespace support;
using Words = std::vector<std::string>;

void expect_usage_error(const Words& arguments, const std::string& err) {
    const CommandResult result = run_pelto(arguments);
    EXPECT_EQ(result.status, 2) << err;
    EXPECT_EQ(result.err, err);
    EXPECT_EQ(result.out, "");
}

TEST(Usage, WithoutASubcommandSaysSo) {
    expect_usage_error({}, "pelto: a subcommand is missing\nSee 'pelto --help'\n");
}

TEST(Usage, NamesAnUnknownSubcommandAndTheNearest) {
    expect_usage_error({"frobnicate"}, "pelto: there is no subcommand 'frobnicate'\nSee 'pelto --help'\n");
    expect_usage_error(
        {"inspekt", "--header-only", "a.dds"},
        "pelto: there is no subcommand 'inspekt'; did you mean 'inspect'?\nSee 'pelto --help'\n");
    expect_usage_error({"szie"},
                       "pelto: there is no subcommand 'szie'; did you mean 'size'?\nSee 'pelto --help'\n");
}

TEST(Usage, NamesAnUnknownOptionAndTheNearest) {
    expect_usage_error({"--colour", "size"}, "pelto: there is no option '--colour'\nSee 'pelto --help'\n");
    expect_usage_error(
        {"--versoin"},
        "pelto: there is no option '--versoin'; did you mean '--version'?\nSee 'pelto --help'\n");
    expect_usage_error({"size", "--frmat", "BC1", "4", "4"},
                       "pelto size: there is no option '--frmat'; did you mean '--format'?\nSee 'pelto size "
                       "--help'\n");
    expect_usage_error({"size", "--frmat=BC1", "4", "4"},
                       "pelto size: there is no option '--frmat'; did you mean '--format'?\nSee 'pelto size "
                       "--help'\n");
    expect_usage_error({"inspect", "-x", "a.dds"},
                       "pelto inspect: there is no option '-x'\nSee 'pelto inspect --help'\n");
}

TEST(Usage, NamesWhatIsMissing) {
    expect_usage_error({"inspect"}, "pelto inspect: FILE is missing\nSee 'pelto inspect --help'\n");
    expect_usage_error({"transcode", "a.basis", "-o", "a.dds"},
                       "pelto transcode: --usage is missing\nSee 'pelto transcode --help'\n");
    expect_usage_error({"sheet", "a.dds"}, "pelto sheet: --output is missing\nSee 'pelto sheet --help'\n");
    expect_usage_error({"library"}, "pelto library: FILE.xml is missing\nSee 'pelto library --help'\n");
    expect_usage_error({"sheet", "a.dds", "-o"},
                       "pelto sheet: --output takes a value\nSee 'pelto sheet --help'\n");
}

TEST(Usage, NamesWhatIsTooMuch) {
    expect_usage_error(
        {"outline", "a.xml", "b.xml"},
        "pelto outline: there is one argument too many: 'b.xml'\nSee 'pelto outline --help'\n");
    expect_usage_error({"sheet", "a.dds", "-o", "b.png", "-o", "c.png"},
                       "pelto sheet: --output is given more than once\nSee 'pelto sheet --help'\n");
}

TEST(Usage, SaysWhatAValueMustBe) {
    const std::vector<std::pair<Words, std::string>> wrong = {
        {{"check", "-j", "0", "a"}, "--jobs: '0' is not a whole number from 1 to 256"},
        {{"check", "-j", "257", "a"}, "--jobs: '257' is not a whole number from 1 to 256"},
        {{"check", "--max-bytes", "-1", "a"},
         "--max-bytes: '-1' is not a whole number from 0 to 18446744073709551615"},
        {{"check", "--max-bytes", "18446744073709551616", "a"},
         "--max-bytes: '18446744073709551616' is not a whole number from 0 to 18446744073709551615"},
        {{"check", "--max-extent", "4294967296", "a"},
         "--max-extent: '4294967296' is not a whole number from 0 to 4294967295"},
        {{"sheet", "a", "-o", "b.png", "--face", "front"},
         "--face: 'front' is not a whole number from 0 to 4294967295"},
        {{"sheet", "a", "-o", "b.png", "--level", "-1"},
         "--level: '-1' is not a whole number from 0 to 4294967295"},
        {{"sheet", "a", "-o", "b.png", "--exposure", "32.5"},
         "--exposure: '32.5' is not a number from -32 to 32"},
        {{"sheet", "a", "-o", "b.png", "--exposure=nan"}, "--exposure: 'nan' is not a number from -32 to 32"},
        {{"sheet", "a", "-o", "b.png", "--exposure=1x"}, "--exposure: '1x' is not a number from -32 to 32"},
        {{"transcode", "a", "-o", "b.dds", "--usage", "bc7"}, "--usage: 'bc7' is not bc1, bc3, bc4 or bc5"},
        {{"transcode", "a", "-o", "b.dds", "--usage", "bc1", "--level", "1x"},
         "--level: '1x' is neither a number nor \"all\""},
    };
    for (const auto& [arguments, said] : wrong) {
        const std::string name = "pelto " + arguments.front();
        expect_usage_error(arguments, name + ": " + said + "\nSee '" + name + " --help'\n");
    }
}

TEST(Usage, TakesNumbersAtTheirBounds) {
    const TemporaryFolder folder;
    const std::string none = folder.path("none.dds");
    for (const Words& more :
         {Words{"check", "-j", "1"}, Words{"check", "-j", "256"}, Words{"check", "--max-bytes", "0"},
          Words{"check", "--max-bytes", "18446744073709551615"}, Words{"check", "--max-extent", "4294967295"},
          Words{"sheet", "-o", folder.path("a.png"), "--exposure", "-32"},
          Words{"sheet", "-o", folder.path("a.png"), "--exposure", "+3.2e1"}}) {
        Words arguments = more;
        arguments.push_back(none);
        EXPECT_EQ(run_pelto(arguments).status, 1) << more[1] << ' ' << more.back();
    }
}

TEST(Usage, NoArgumentGivesTheTerminalOrders) {
    expect_usage_error({"\x1B[2J"}, "pelto: there is no subcommand '\\x1b[2J'\nSee 'pelto --help'\n");
    expect_usage_error({"inspect", "--\xC2\x9B"},
                       "pelto inspect: there is no option '--\\xc2\\x9b'\nSee 'pelto inspect --help'\n");
    expect_usage_error(
        {"size", "4\n4", "4", "--format", "1"},
        "pelto size: WIDTH: '4\\x0a4' is not a whole number from 1 to 4294967295\nSee 'pelto size "
        "--help'\n");
}

TEST(Help, IsThatOfTheOption) {
    EXPECT_EQ(run_pelto({"help"}).out, run_pelto({"--help"}).out);
    for (const char* const subcommand :
         {"check", "help", "inspect", "library", "outline", "sheet", "size", "transcode", "validate"}) {
        const CommandResult result = run_pelto({"help", subcommand});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.out, run_pelto({subcommand, "--help"}).out);
        EXPECT_NE(result.out.find(std::string("Usage: pelto ") + subcommand + " "), std::string::npos)
            << result.out;
    }
}

TEST(Help, OfAnUnknownSubcommandIsWrongUsage) {
    expect_usage_error(
        {"help", "inspekt"},
        "pelto help: there is no subcommand 'inspekt'; did you mean 'inspect'?\nSee 'pelto --help'\n");
    expect_usage_error({"help", "frobnicate"},
                       "pelto help: there is no subcommand 'frobnicate'\nSee 'pelto --help'\n");
    expect_usage_error({"help", "size", "sheet"},
                       "pelto help: there is one argument too many: 'sheet'\nSee 'pelto --help'\n");
}

}  // namespace
