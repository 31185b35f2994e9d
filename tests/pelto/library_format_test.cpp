// SPDX-License-Identifier: Apache-2.0
// The format of a library document: what pelto library refuses without a schema beside it, and in which
// words.
#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "support/command.h"
#include "support/temporary_folder.h"

namespace {

using namespace support;
using nlohmann::json;

constexpr const char* kSample = PELTO_SAMPLES "/textures/bc4.dds";

std::string content(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string element(const std::string& name, const std::string& text) {
    return "<" + name + ">" + text + "</" + name + ">";
}

class LibraryFormat : public testing::Test {
protected:
    CommandResult run(const std::string& text, const std::vector<std::string>& more = {}) const {
        folder_.write("library.xml", text);
        std::vector<std::string> arguments = {"library", path()};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run_pelto(arguments);
    }

    // The children of a texture's element, which ends with line 2.
    CommandResult run_texture(const std::string& children, const std::vector<std::string>& more = {}) const {
        return run("<library xmlns='urn:pelto:texture-library'><material name='m'>\n<texture name='a'>" +
                       children + "</texture>\n</material></library>\n",
                   more);
    }

    // One problem, whose column is that behind `before` in line 2.
    void expect_problem(const std::string& before, const std::string& after,
                        const std::string& problem) const {
        const CommandResult result = run_texture(before + after);
        const std::size_t column = std::string("<texture name='a'>").append(before).size() + 1;
        EXPECT_EQ(result.err, path() + ":2:" + std::to_string(column) + ": error: " + problem + "\n");
        EXPECT_EQ(result.status, 1) << problem;
    }

    void expect_no_library(const std::string& text, const std::string& place,
                           const std::string& found) const {
        const CommandResult result = run(text);
        EXPECT_EQ(result.err, path() + place + ": error: is no library: its root element is " + found +
                                  ", not <library xmlns=\"urn:pelto:texture-library\">\n");
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, "");
    }

    std::string path() const { return folder_.path("library.xml"); }
    std::string good() const { return element("file", kSample) + element("kind", "2d"); }

    const TemporaryFolder folder_;
};

TEST_F(LibraryFormat, ADocumentWithAnotherRootIsToldWhatItIs) {
    expect_no_library("<materials><texture/><b/></materials>", ":1:12", "<materials> in no namespace");
    expect_no_library("<library><material/></library>", ":1:10", "<library> in no namespace");
    expect_no_library("\n<library xmlns='urn:other'/>", ":2:29", "<library> in the namespace urn:other");
    expect_no_library("<!DOCTYPE a [<!ELEMENT a EMPTY>]><a/>", ":1:38", "<a> in no namespace");
    expect_no_library("<texture xmlns='urn:pelto:texture-library'/>", ":1:45",
                      "<texture> in the namespace urn:pelto:texture-library");
    const json object = json::parse(run("<materials/>", {"--json"}).out);
    EXPECT_EQ(object["textures"], json::array());
    EXPECT_EQ(object["problems"].size(), 1U);
}

TEST_F(LibraryFormat, APrefixIsAsGoodAsADefaultNamespace) {
    const CommandResult result = run(
        "<l:library xmlns:l='urn:pelto:texture-library'><l:material name='m'><l:texture name='a'><l:file>" +
        std::string(kSample) + "</l:file><l:kind>2d</l:kind></l:texture></l:material></l:library>");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
}

TEST_F(LibraryFormat, TellsEachValueThatIsRefusedOnce) {
    struct Case {
        const char* name;
        const char* text;
        const char* expected;
    };
    const char* const slice = "a whole number from 0 to 4294967295";
    const char* const tint = "three finite numbers";
    const char* const levels = "two whole numbers from 0 to 255";
    const char* const usage = "bc1, bc3, bc4 or bc5";
    for (const auto& [name, text, expected] : {
             Case{"slice", "4294967296", slice},
             Case{"slice", "-1", slice},
             Case{"slice", "1 2", slice},
             Case{"slice", "1.0", slice},
             Case{"slice", "", slice},
             Case{"flip", "1", "true or false"},
             Case{"flip", "True", "true or false"},
             Case{"usage", "bc7", usage},
             Case{"usage", "BC3", usage},
             Case{"tint", "1 red 1", tint},
             Case{"tint", "1 1", tint},
             Case{"tint", "1 1 1 1", tint},
             Case{"tint", "NaN 1 1", tint},
             Case{"tint", "1 1 -INF", tint},
             Case{"tint", "1 3.5e38 1", tint},
             Case{"levels", "0", levels},
             Case{"levels", "0 1 2", levels},
             Case{"levels", "0 256", levels},
             Case{"levels", "-1 2", levels},
         }) {
        expect_problem(good() + element(name, text), "",
                       std::string(name) + " is '" + text + "', not " + expected);
    }
    expect_problem(element("file", kSample) + element("kind", "flat"), "",
                   "kind is 'flat', not 2d, cube or volume");
    expect_problem(element("file", kSample) + element("kind", ""), "", "kind is '', not 2d, cube or volume");
    expect_problem(element("file", ""), element("kind", "2d"), "file is empty");
}

TEST_F(LibraryFormat, TakesValuesUpToTheirBounds) {
    const std::string tint = "-3.4028235E38&#9;+.5\n1e-40";
    const CommandResult result =
        run_texture(good() + element("tint", tint) + element("levels", " +0 0 ") +
                        element("slice", "4294967295") + element("flip", "false") + element("tags", "a\tb c"),
                    {"--json"});
    EXPECT_EQ(result.err, "");
    const json texture = json::parse(result.out).at("textures").at(0);
    EXPECT_EQ(texture["tint"], json::array({-3.4028235E38F, 0.5F, 1e-40F}));
    EXPECT_EQ(texture["levelLimits"], json::array({0, 0}));
    EXPECT_EQ(texture["tags"], json::array({"a", "b", "c"}));
}

TEST_F(LibraryFormat, TellsWhatATextureLacks) {
    const CommandResult file = run_texture(element("kind", "2d"));
    EXPECT_EQ(file.err, path() + ":2:44: error: m/a has no <file>\n");
    EXPECT_NE(file.out.find("1 texture, 0 bytes, 1 failed\n"), std::string::npos) << file.out;
    const std::string line = "<texture name='a'>" + element("file", kSample) + "</texture>";
    EXPECT_EQ(run_texture(element("file", kSample)).err,
              path() + ":2:" + std::to_string(line.size() + 1) +
                  ": error: m/a has no <kind>: 2d, cube or volume\n");
}

TEST_F(LibraryFormat, TellsAnUnknownElementOnce) {
    expect_problem(good() + "<gloss>", "1</gloss>", "no declaration found for element 'gloss'");
    const CommandResult two = run_texture(good() + "<gloss/><shine/>");
    EXPECT_EQ(std::count(two.err.begin(), two.err.end(), '\n'), 2) << two.err;
    const CommandResult both = run_texture("<gloss/>" + element("kind", "2d"));
    EXPECT_NE(both.err.find("'gloss'"), std::string::npos) << both.err;
    EXPECT_NE(both.err.find("m/a has no <file>"), std::string::npos) << both.err;
    EXPECT_EQ(std::count(both.err.begin(), both.err.end(), '\n'), 2) << both.err;
}

// The schema alone knows that names differ.
TEST_F(LibraryFormat, HoldsTheDocumentAgainstItsSchemaWithoutAFileBesideIt) {
    const std::string texture = "<texture name='a'>" + good() + "</texture></material>";
    const CommandResult twice = run("<library xmlns='urn:pelto:texture-library'><material name='m'>" +
                                    texture + "<material name='m'>" + texture + "</library>");
    EXPECT_EQ(twice.status, 1);
    EXPECT_NE(twice.err.find("unique"), std::string::npos) << twice.err;
    const CommandResult none = run("<library xmlns='urn:pelto:texture-library'/>");
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.out, "");
}

TEST_F(LibraryFormat, ASchemaBesideTheDocumentIsNotLookedFor) {
    folder_.write("library.xsd", "<none/>");
    EXPECT_EQ(run_texture(good()).err, "");
}

TEST_F(LibraryFormat, AnotherSchemaMayAllowMoreButNoOtherValues) {
    std::string schema = content(PELTO_SCHEMAS "/texture-library.xsd");
    schema = std::regex_replace(schema, std::regex("type=\"(xs:unsignedInt|Tint|Levels|Usage|Kind|Flag)\""),
                                "type=\"xs:string\"");
    schema = std::regex_replace(schema, std::regex("<xs:element name=\"tags\""),
                                "<xs:element name=\"gloss\" type=\"xs:float\" minOccurs=\"0\"/>$&");
    const std::vector<std::string> more = {"--xsd", folder_.write("own.xsd", schema)};
    EXPECT_EQ(run_texture(good() + element("gloss", "1"), more).err, "");
    const CommandResult result = run_texture(
        element("file", kSample) + "\n" + element("kind", "flat") + "\n" + element("slice", "4294967296") +
            "\n" + element("tint", "1 1 x") + "\n" + element("levels", "0 256") + "\n" +
            element("usage", "x") + "\n" + element("flip", "1") + "\n" + element("gloss", "x"),
        more);
    const std::regex expected(
        "[^\n]*:3:18: error: kind is 'flat', not [^\n]*\n[^\n]*:4:26: error: slice is '4294967296', not "
        "[^\n]*\n[^\n]*:5:19: error: tint is '1 1 x', not [^\n]*\n[^\n]*:6:23: error: levels is '0 256', not "
        "[^\n]*\n[^\n]*:7:17: error: usage is 'x', not [^\n]*\n[^\n]*:8:15: error: flip is '1', not "
        "[^\n]*\n[^\n]*:9:17: error: [^\n]*\n");
    EXPECT_TRUE(std::regex_match(result.err, expected)) << result.err;
}

TEST_F(LibraryFormat, ADocumentTypeDoesNotLetValuesPass) {
    const CommandResult result = run(
        "<!DOCTYPE library [<!ELEMENT library (material)><!ATTLIST library xmlns CDATA #IMPLIED>"
        "<!ELEMENT material (texture)><!ATTLIST material name CDATA #IMPLIED><!ELEMENT texture (file, slice)>"
        "<!ATTLIST texture name CDATA #IMPLIED><!ELEMENT file (#PCDATA)><!ELEMENT slice (#PCDATA)>]>\n"
        "<library xmlns='urn:pelto:texture-library'><material name='m'><texture name='a'><file>" +
        std::string(kSample) + "</file>\n<slice>4294967296</slice></texture></material></library>");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err,
              path() + ":3:26: error: slice is '4294967296', not a whole number from 0 to 4294967295\n");
}

// The page describes what the schema has, and its example is the sample.
TEST(LibraryPage, NamesEveryElementAndValueOfTheSchema) {
    const std::string schema = content(PELTO_SCHEMAS "/texture-library.xsd");
    const std::string page = content(PELTO_DOCS "/library.md");
    const std::regex name("(?:xs:element name|xs:enumeration value)=\"([^\"]+)\"");
    std::set<std::string> names;
    for (std::sregex_iterator i(schema.begin(), schema.end(), name), end; i != end; ++i) {
        names.insert((*i)[1]);
        EXPECT_NE(page.find("`" + i->str(1) + "`"), std::string::npos) << i->str(1);
    }
    EXPECT_GT(names.size(), 15U);
    EXPECT_NE(page.find("urn:pelto:texture-library"), std::string::npos);
}

TEST(LibraryPage, ShowsAnExampleOfTheSample) {
    const std::string page = content(PELTO_DOCS "/library.md");
    const std::string sample = content(PELTO_SAMPLES "/library/library.xml");
    const std::string fence = "```xml\n";
    const std::size_t begin = page.find(fence) + fence.size();
    const std::string example = page.substr(begin, page.find("```", begin) - begin);
    const std::string end = "</library>\n";
    ASSERT_GT(example.size(), 500U);
    ASSERT_EQ(example.substr(example.size() - end.size()), end);
    EXPECT_EQ(sample.rfind(example.substr(0, example.size() - end.size()), 0), 0U) << example;
}

}  // namespace
