// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include "sax/element_reader.h"
#include "support/log_capture.h"
#include "support/temporary_folder.h"
#include "vSAXReader.h"

namespace {

using namespace sax;

std::string schema_of(const std::string& root, const std::string& child) {
    return "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element name='" + root +
           "'><xs:complexType><xs:sequence><xs:element name='" + child +
           "' type='xs:int'/></xs:sequence></xs:complexType></xs:element></xs:schema>";
}

class SaxReaderSchema : public testing::Test {
protected:
    support::TemporaryFolder folder;
    support::LogCapture log;
    ElementReader_var handler = make_reader();
    vSAXReader reader;

    void SetUp() override { ASSERT_EQ(reader.SetDocumentHandler(handler.Get()), S_OK); }

    HRESULT load(const char* key, const std::string& text) {
        return reader.SetXSDSchema(folder.write("s.xsd", text).c_str(), key);
    }
    bool is_valid(const char* document) {
        const unsigned int before = handler->GetNbErrors();
        EXPECT_EQ(reader.LoadBuffer(document), S_OK);
        return handler->GetNbErrors() == before;
    }
};

TEST_F(SaxReaderSchema, AnInvalidDocumentIsAnErrorCallbackAndASuccess) {
    ASSERT_EQ(load("k", schema_of("a", "b")), S_OK);
    EXPECT_TRUE(is_valid("<a><b>1</b></a>"));
    EXPECT_TRUE(log.records().empty());
    EXPECT_FALSE(is_valid("<a>\n<b>one</b></a>"));
    ASSERT_FALSE(log.records().empty());
    EXPECT_EQ(log.records()[0].level, 5);
    EXPECT_EQ(log.records()[0].text.find("Error : line 2 column "), 0U) << log.records()[0].text;
    EXPECT_FALSE(is_valid("<unknown/>"));
}

TEST_F(SaxReaderSchema, TheSameKeyReplacesAndAnotherAdds) {
    ASSERT_EQ(load("k", schema_of("a", "b")), S_OK);
    ASSERT_EQ(load("other", schema_of("c", "d")), S_OK);
    EXPECT_TRUE(is_valid("<a><b>1</b></a>"));
    EXPECT_TRUE(is_valid("<c><d>1</d></c>"));
    ASSERT_EQ(load("k", schema_of("a", "e")), S_OK);
    EXPECT_FALSE(is_valid("<a><b>1</b></a>"));
    EXPECT_TRUE(is_valid("<a><e>1</e></a>"));
    EXPECT_TRUE(is_valid("<c><d>1</d></c>"));
}

TEST_F(SaxReaderSchema, ClearingForgetsIt) {
    EXPECT_EQ(reader.ClearSchemaCache(), S_OK);
    ASSERT_EQ(load("k", schema_of("a", "b")), S_OK);
    EXPECT_FALSE(is_valid("<a/>"));
    EXPECT_EQ(reader.ClearSchemaCache(), S_OK);
    EXPECT_TRUE(is_valid("<a/>"));
}

TEST_F(SaxReaderSchema, AMissingFileFailsAndIsLogged) {
    const std::string path = folder.path("missing%s.xsd");
    EXPECT_EQ(reader.SetXSDSchema(path.c_str(), "k"), E_FAIL);
    const std::vector<support::LogRecord> expected = {
        {"Default", 4, "Could not create input source from xsd file " + path}};
    EXPECT_EQ(log.records(), expected);
    EXPECT_TRUE(is_valid("<a/>"));
}

TEST_F(SaxReaderSchema, ABrokenSchemaFailsAndLeavesTheOneBefore) {
    ASSERT_EQ(load("k", schema_of("a", "b")), S_OK);
    EXPECT_LT(load("k", "<xs:schema"), 0);
    EXPECT_GT(handler->GetNbErrors(), 0U);
    for (const auto& record : log.records()) EXPECT_EQ(record.level, 5) << record.text;
    EXPECT_TRUE(is_valid("<a><b>1</b></a>"));
    EXPECT_FALSE(is_valid("<a><b>x</b></a>"));
}

}  // namespace
