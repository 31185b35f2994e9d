// SPDX-License-Identifier: Apache-2.0
// What people are told of the command: help, manual page, completion. They agree.
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "support/command.h"
#include "support/temporary_folder.h"

namespace {

using namespace support;
using Names = std::set<std::string>;

std::string content(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// The first groups of all matches.
Names matches(const std::string& text, const std::string& pattern) {
    const std::regex regex(pattern);
    Names names;
    for (std::sregex_iterator i(text.begin(), text.end(), regex), end; i != end; ++i) names.insert((*i)[1]);
    return names;
}

Names subcommands() {
    const std::string help = run_pelto({"--help"}).out;
    return matches(help.substr(help.find("Subcommands:")), "\n  ([a-z]+) ");
}

// Those with two hyphens, but for --help.
Names options(const std::string& subcommand) {
    Names names = matches(run_pelto({subcommand, "--help"}).out, "\n *(?:-[a-z],)?(--[a-z-]+)");
    names.erase("--help");
    return names;
}

Names expected_subcommands() {
    return {"check", "inspect", "library", "outline", "sheet", "size", "transcode", "validate"};
}

Names with_help(Names names) {
    names.insert("help");
    return names;
}

TEST(Manual, HelpNamesEverySubcommand) { EXPECT_EQ(subcommands(), with_help(expected_subcommands())); }

TEST(Manual, EverySubcommandHasHelpJsonAndItsExitStatus) {
    for (const std::string& subcommand : expected_subcommands()) {
        const CommandResult help = run_pelto({subcommand, "--help"});
        EXPECT_EQ(help.status, 0);
        EXPECT_EQ(help.err, "");
        EXPECT_NE(help.out.find("Exit status: 0 "), std::string::npos) << help.out;
        EXPECT_TRUE(options(subcommand).count("--json")) << subcommand;
    }
}

TEST(Manual, HelpCallsWhatOptionsTakeByNoNameOfAType) {
    for (const std::string& subcommand : expected_subcommands()) {
        const std::string help = run_pelto({subcommand, "--help"}).out;
        EXPECT_EQ(matches(help, "\\b(TEXT|U?INT|FLOAT)\\b"), Names()) << subcommand;
    }
}

TEST(Manual, VersionIsTold) {
    const CommandResult result = run_pelto({"--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(std::regex_match(result.out, std::regex("pelto [0-9]+\\.[0-9]+\\.[0-9]+\n"))) << result.out;
}

TEST(Manual, ThePageHasEveryOptionOfEverySubcommandAndNoOther) {
    const std::string page = content(PELTO_COMMAND_SOURCES "/pelto.1.in");
    EXPECT_EQ(matches(page, "\n\\.SS \"pelto ([a-z]+) "), with_help(expected_subcommands()));
    for (const std::string& subcommand : expected_subcommands()) {
        const std::size_t begin = page.find(".SS \"pelto " + subcommand);
        ASSERT_NE(begin, std::string::npos) << subcommand;
        const std::size_t end = std::min(page.find("\n.SS", begin), page.find("\n.SH", begin));
        const std::string section =
            std::regex_replace(page.substr(begin, end - begin), std::regex("\\\\-"), "-");
        EXPECT_EQ(matches(section, "\n\\.BI? [^\n]*?(--[a-z-]+)"), options(subcommand)) << subcommand;
    }
}

TEST(Manual, ThePageHasTheTablesOfFormats) {
    const std::string help = run_pelto({"size", "--help"}).out;
    const std::size_t begin = help.find("\nFORMAT ");
    const std::size_t end = help.find("\nFormats of one line");
    ASSERT_LT(begin, end);
    const std::string tables =
        std::regex_replace(help.substr(begin, end - begin), std::regex("\n\n"), "\n.sp\n");
    EXPECT_NE(content(PELTO_COMMAND_SOURCES "/pelto.1.in").find(tables), std::string::npos) << tables;
}

// What bash offers for the last of the words.
Names offers(const std::vector<std::string>& words) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink(PELTO_COMMAND, folder.path("pelto"));
    std::string script = "export PATH='" + folder.path("") +
                         "':\"$PATH\"\nsource '" PELTO_COMMAND_SOURCES "/pelto.bash'\nCOMP_WORDS=(";
    for (const std::string& word : words) script.append("'").append(word).append("' ");
    script += ")\nCOMP_CWORD=" + std::to_string(words.size() - 1) +
              "\n_pelto\nprintf '%s\\n' \"${COMPREPLY[@]}\"\n";
    const std::string out = folder.path("out");
    EXPECT_EQ(std::system(("bash '" + folder.write("script", script) + "' >'" + out + "'").c_str()), 0);
    return matches(content(out), "([^\n]+)\n");
}

TEST(Completion, OffersSubcommands) {
    EXPECT_EQ(offers({"pelto", ""}), with_help(expected_subcommands()));
    EXPECT_EQ(offers({"pelto", "help", "s"}), (Names{"sheet", "size"}));
    EXPECT_EQ(offers({"pelto", "s"}), (Names{"sheet", "size"}));
}

TEST(Completion, OffersTheOptionsOfTheSubcommand) {
    for (const std::string& subcommand : expected_subcommands()) {
        Names expected = options(subcommand);
        expected.insert("--help");
        EXPECT_EQ(offers({"pelto", subcommand, "--"}), expected) << subcommand;
    }
    EXPECT_EQ(offers({"pelto", "--v"}), Names{"--version"});
}

TEST(Completion, OffersBlocksAndFiles) {
    EXPECT_EQ(offers({"pelto", "transcode", "--usage", "bc"}), (Names{"bc1", "bc3", "bc4", "bc5"}));
    EXPECT_EQ(offers({"pelto", "size", "--format", "BC6"}), (Names{"BC6", "BC6H", "BC6H_SF16", "BC6H_UF16"}));
    EXPECT_EQ(offers({"pelto", "size", "--format", "1"}), (Names{"1B", "12B", "16B"}));
    EXPECT_EQ(offers({"pelto", "size", "--client-type", ""}),
              (Names{"1B", "2B", "3B", "4B", "6B", "8B", "12B", "16B"}));
    const TemporaryFolder folder;
    const std::string file = folder.write("wall.dds", "");
    EXPECT_EQ(offers({"pelto", "inspect", folder.path("wa")}), Names{file});
}

}  // namespace
