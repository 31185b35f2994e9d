// SPDX-License-Identifier: Apache-2.0
// pelto outline, run as a user runs it.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>

#include "support/command.h"
#include "support/temporary_folder.h"

namespace {

using namespace support;
using nlohmann::json;

class Outline : public testing::Test {
protected:
    CommandResult outline(const std::string& text, const std::string& option = "") const {
        const std::string document = folder_.write("a.xml", text);
        return option.empty() ? run_pelto({"outline", document}) : run_pelto({"outline", option, document});
    }

    const TemporaryFolder folder_;
};

TEST_F(Outline, ShowsTheTreeWithParentsAttributesAndText) {
    const CommandResult result =
        outline("<car colour='red' doors='5'>\n <wheel>\n  front left </wheel>\n <seat/>\n</car>");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out,
              "line  element  parent  attributes              text\n"
              "   1  car      -       colour=\"red\" doors=\"5\"\n"
              "   2    wheel  car                             front left\n"
              "   4    seat   car\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(Outline, ShowsTheTextOfALoneRoot) {
    const json array = json::parse(outline("<a> hello </a>", "--json").out);
    ASSERT_EQ(array.size(), 1U);
    EXPECT_EQ(array[0], json({{"line", 1},
                              {"depth", 0},
                              {"name", "a"},
                              {"parent", nullptr},
                              {"attributes", json::object()},
                              {"text", "hello"}}));
}

TEST_F(Outline, TextBesideChildrenIsLeftOut) {
    const json array = json::parse(outline("<a>x<b>y<c>z</c>u</b>v<d/>w</a>", "--json").out);
    ASSERT_EQ(array.size(), 4U);
    EXPECT_EQ(array[0]["text"], "");
    EXPECT_EQ(array[1]["text"], "");
    EXPECT_EQ(array[2]["text"], "z");
    EXPECT_EQ(array[2]["parent"], "b");
    EXPECT_EQ(array[2]["depth"], 2);
    EXPECT_EQ(array[3]["text"], "");
    EXPECT_EQ(array[3]["parent"], "a");
}

TEST_F(Outline, NamesAreLocalAndAttributesQualified) {
    const json array = json::parse(outline("<p:a xmlns:p='urn:x' p:k='1'/>", "--json").out);
    ASSERT_EQ(array.size(), 1U);
    EXPECT_EQ(array[0]["name"], "a");
    EXPECT_EQ(array[0]["attributes"], json({{"xmlns:p", "urn:x"}, {"p:k", "1"}}));
}

TEST_F(Outline, ShowsWhatComesBeforeAnError) {
    const CommandResult result = outline("<a><b>1</b>\n<c>");
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.out.find("    b      a                   1\n"), std::string::npos) << result.out;
    EXPECT_EQ(result.err.rfind(folder_.path("a.xml") + ":2:", 0), 0U) << result.err;
    EXPECT_NE(result.err.find(": fatal error: "), std::string::npos) << result.err;
}

TEST_F(Outline, ControlCharactersStayOffTheTerminal) {
    const CommandResult result = outline("<a>one&#10;two&#9;\xE2\x82\xAC</a>");
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.out.find("one\\x0atwo\\x09\xE2\x82\xAC\n"), std::string::npos) << result.out;
}

TEST_F(Outline, NamesWhatCannotBeRead) {
    const std::string missing = folder_.path("missing.xml");
    const CommandResult result = run_pelto({"outline", missing});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "pelto: " + missing + ": cannot be opened: No such file or directory\n");
}

TEST_F(Outline, AMissingArgumentIsWrongUsage) { EXPECT_EQ(run_pelto({"outline"}).status, 2); }

}  // namespace
