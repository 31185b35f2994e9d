// SPDX-License-Identifier: Apache-2.0
// pelto validate, run as a user runs it.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>

#include "support/command.h"
#include "support/temporary_folder.h"

namespace {

using namespace support;
using nlohmann::json;

constexpr const char* kLibrary = PELTO_SAMPLES "/library/library.xml";
constexpr const char* kLibrarySchema = PELTO_SCHEMAS "/texture-library.xsd";

constexpr const char* kSchema = R"(<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema">
<xs:element name="size" type="xs:int"/>
</xs:schema>
)";

class Validate : public testing::Test {
protected:
    const TemporaryFolder folder_;
    const std::string schema_ = folder_.write("size.xsd", kSchema);
};

TEST_F(Validate, SaysThatAWellFormedDocumentHasNoErrors) {
    const std::string document = folder_.write("a.xml", "<a>1</a>");
    const CommandResult result = run_pelto({"validate", document});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, document + ": no errors\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(Validate, FindsTheSampleLibraryValid) {
    const CommandResult result = run_pelto({"validate", kLibrary, "--xsd", kLibrarySchema});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, std::string(kLibrary).append(": no errors\n"));
    EXPECT_EQ(result.err, "");
}

TEST_F(Validate, PlacesAnErrorByPathLineAndColumn) {
    const std::string document = folder_.write("a.xml", "<a>\n  <b></c>\n</a>\n");
    const CommandResult result = run_pelto({"validate", document});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out.rfind(document + ":2:", 0), 0U) << result.out;
    EXPECT_NE(result.out.find(": fatal error: "), std::string::npos) << result.out;
    EXPECT_EQ(result.out.find("no errors"), std::string::npos);
}

TEST_F(Validate, HoldsADocumentAgainstTheSchema) {
    const std::string good = folder_.write("good.xml", "<size>12</size>");
    const std::string bad = folder_.write("bad.xml", "<size>\n12 px</size>");
    const std::string unknown = folder_.write("unknown.xml", "<extent/>");
    const CommandResult result = run_pelto({"validate", "--xsd", schema_, good, bad, unknown});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.out.find(good + ": no errors\n"), std::string::npos) << result.out;
    EXPECT_NE(result.out.find(bad + ":2:"), std::string::npos) << result.out;
    EXPECT_NE(result.out.find(unknown + ":1:"), std::string::npos) << result.out;
    EXPECT_EQ(result.out.find("fatal"), std::string::npos) << result.out;
}

TEST_F(Validate, ReportsEveryErrorOfADocument) {
    const std::string document = folder_.write("a.xml", R"(<!DOCTYPE a [<!ELEMENT a (b*)> <!ELEMENT b EMPTY>]>
<a>
  <c/>
  <d/>
</a>)");
    const CommandResult result = run_pelto({"validate", document});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.out.find(document + ":3:"), std::string::npos) << result.out;
    EXPECT_NE(result.out.find(document + ":4:"), std::string::npos) << result.out;
}

TEST_F(Validate, NamesTheDTDFileWithTheError) {
    folder_.write("a.dtd", "<!ELEMENT a ANY>\n<!ELEMANT b ANY>\n");
    const std::string document = folder_.write("a.xml", "<!DOCTYPE a SYSTEM 'a.dtd'><a/>");
    const CommandResult result = run_pelto({"validate", document});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.out.find("a.dtd:2:"), std::string::npos) << result.out;
}

TEST_F(Validate, GoesOnAfterADocumentThatBreaksOff) {
    const std::string broken = folder_.write("broken.xml", "<size><size>");
    const std::string good = folder_.write("good.xml", "<size>12</size>");
    const CommandResult result = run_pelto({"validate", "--xsd", schema_, broken, good});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.out.find(good + ": no errors\n"), std::string::npos) << result.out;
}

TEST_F(Validate, NamesWhatCannotBeRead) {
    const std::string missing = folder_.path("missing.xml");
    const std::string empty = folder_.write("empty.xml", "");
    const CommandResult result = run_pelto({"validate", missing, folder_.path("."), empty});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find("pelto: " + missing + ": cannot be opened: No such file or directory\n"),
              std::string::npos)
        << result.err;
    EXPECT_NE(result.err.find(": is a directory\n"), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("pelto: " + empty + ": is empty\n"), std::string::npos) << result.err;
}

TEST_F(Validate, ABadSchemaIsReportedAndNoDocumentJudged) {
    const std::string document = folder_.write("a.xml", "<a/>");
    const std::string bad = folder_.write(
        "bad.xsd", "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>\n<xs:elephant/></xs:schema>");
    const CommandResult result = run_pelto({"validate", "--xsd", bad, document});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.out.find(bad + ":2:"), std::string::npos) << result.out;
    EXPECT_EQ(result.out.find(document), std::string::npos) << result.out;

    const std::string missing = folder_.path("missing.xsd");
    const CommandResult without = run_pelto({"validate", "--xsd", missing, document});
    EXPECT_EQ(without.status, 1);
    EXPECT_EQ(without.out, "");
    EXPECT_EQ(without.err, "pelto: " + missing + ": cannot be opened: No such file or directory\n");
}

TEST_F(Validate, PrintsJson) {
    const std::string good = folder_.write("good.xml", "<size>12</size>");
    const std::string bad = folder_.write("bad.xml", "<size>\n12 px</size>");
    const std::string missing = folder_.path("missing.xml");
    const CommandResult result = run_pelto({"validate", "--json", "--xsd", schema_, good, bad, missing});
    EXPECT_EQ(result.status, 1);
    const json array = json::parse(result.out);
    ASSERT_EQ(array.size(), 3U);
    EXPECT_EQ(array[0], json({{"path", good}, {"valid", true}, {"problems", json::array()}}));
    EXPECT_EQ(array[1]["path"], bad);
    EXPECT_EQ(array[1]["valid"], false);
    ASSERT_EQ(array[1]["problems"].size(), 1U);
    const json& problem = array[1]["problems"][0];
    EXPECT_EQ(problem["path"], bad);
    EXPECT_EQ(problem["line"], 2);
    EXPECT_GT(problem["column"], 0);
    EXPECT_EQ(problem["severity"], "error");
    EXPECT_FALSE(problem["message"].get<std::string>().empty());
    EXPECT_EQ(array[2], json({{"path", missing}, {"error", "cannot be opened: No such file or directory"}}));
}

TEST_F(Validate, AMissingArgumentIsWrongUsage) {
    EXPECT_EQ(run_pelto({"validate"}).status, 2);
    EXPECT_EQ(run_pelto({"validate", "--xsd", schema_}).status, 2);
    EXPECT_EQ(run_pelto({"validate", "--colour", "a.xml"}).status, 2);
}

}  // namespace
