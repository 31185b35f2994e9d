// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <type_traits>

#include "sax/element_reader.h"
#include "support/log_capture.h"
#include "support/private_access.h"
#include "support/temporary_folder.h"
#include "vSAXReader.h"

PELTO_PRIVATE_MEMBER(reader_field, &vSAXReader::reader, OXAISAXXMLReader_var vSAXReader::*)
PELTO_PRIVATE_MEMBER(factory_field, &vSAXReader::factory, OXAIXMLSAX2Factory_var vSAXReader::*)
PELTO_PRIVATE_MEMBER(status_field, &vSAXReader::status, HRESULT vSAXReader::*)

namespace {

using namespace sax;
using Calls = std::vector<std::string>;

class SaxReaderLoad : public testing::Test {
protected:
    support::TemporaryFolder folder;
    support::LogCapture log;
    ElementReader_var handler = make_reader();
    vSAXReader reader;

    void SetUp() override { ASSERT_EQ(reader.SetDocumentHandler(handler.Get()), S_OK); }
};

TEST_F(SaxReaderLoad, ABufferIsReadIntoTheHandler) {
    EXPECT_EQ(reader.LoadBuffer("<a k='v'>t<c>x<b>1</b>y</c></a>"), S_OK);
    EXPECT_EQ(handler->calls, (Calls{"<a UNKNOWN k=v", "<c a", "<b c", ">b c b 1", ">c a c 1y"}));
    EXPECT_EQ(handler->GetNbErrors(), 0U);
    EXPECT_TRUE(log.records().empty());
}

TEST_F(SaxReaderLoad, AFileIsReadIntoTheHandler) {
    const std::string path = folder.write("a.xml", "<a><b>1</b></a>");
    EXPECT_EQ(reader.LoadFile(path.c_str()), S_OK);
    EXPECT_EQ(handler->calls, (Calls{"<a UNKNOWN", "<b a", ">b a b 1"}));
}

TEST_F(SaxReaderLoad, NamespacesAreProcessedAndTheirDeclarationsReported) {
    EXPECT_EQ(reader.LoadBuffer("<p:a xmlns:p='u'><p:b>1</p:b></p:a>"), S_OK);
    EXPECT_EQ(handler->calls, (Calls{"<a UNKNOWN xmlns:p=u", "<b a", ">b a p:b 1"}));
}

TEST_F(SaxReaderLoad, ADocumentIsValidatedAgainstItsOwnDtd) {
    EXPECT_EQ(reader.LoadBuffer("<!DOCTYPE a [<!ELEMENT a EMPTY>]><a><b/></a>"), S_OK);
    EXPECT_GT(handler->GetNbErrors(), 0U);
}

TEST_F(SaxReaderLoad, TheTextsLineIsInTheBuffer) {
    int line = 0;
    handler->at_end = [&] { line = handler->watched->current_line(); };
    EXPECT_EQ(reader.LoadBuffer("<a>\n\n<b>x</b>\n</a>"), S_OK);
    EXPECT_EQ(line, 3);
}

TEST_F(SaxReaderLoad, AMalformedDocumentFailsWithItsPlaceLogged) {
    EXPECT_EQ(reader.LoadBuffer("<a>\n<b></a>"), E_FAIL);
    EXPECT_EQ(handler->GetNbErrors(), 1U);
    ASSERT_EQ(log.records().size(), 1U);
    EXPECT_EQ(log.records()[0].channel, "Default");
    EXPECT_EQ(log.records()[0].level, 5);
    EXPECT_EQ(log.records()[0].text.find("FatalError : line 2 column "), 0U) << log.records()[0].text;
}

TEST_F(SaxReaderLoad, AMissingFileFailsWithItsPathLogged) {
    const std::string path = folder.path("missing.xml");
    EXPECT_EQ(reader.LoadFile(path.c_str()), E_FAIL);
    EXPECT_TRUE(handler->calls.empty());
    EXPECT_EQ(handler->GetNbErrors(), 1U);
    ASSERT_EQ(log.records().size(), 1U);
    EXPECT_EQ(log.records()[0].text.find("FatalError : "), 0U) << log.records()[0].text;
    EXPECT_NE(log.records()[0].text.find(path), std::string::npos) << log.records()[0].text;
}

TEST_F(SaxReaderLoad, EmptyAndNullTextsAndPathsFail) {
    EXPECT_EQ(reader.LoadBuffer(""), E_FAIL);
    EXPECT_EQ(reader.LoadBuffer(nullptr), E_FAIL);
    EXPECT_EQ(reader.LoadFile(""), E_FAIL);
    EXPECT_EQ(reader.LoadFile(nullptr), E_FAIL);
    EXPECT_EQ(handler->GetNbErrors(), 4U);
}

TEST_F(SaxReaderLoad, ErrorsAddUpOverDocuments) {
    for (unsigned int i = 1; i <= 3; ++i) {
        EXPECT_EQ(reader.LoadBuffer("<a"), E_FAIL);
        EXPECT_EQ(handler->GetNbErrors(), i);
        EXPECT_EQ(reader.LoadBuffer("<a/>"), S_OK);
        EXPECT_EQ(handler->GetNbErrors(), i);
    }
}

TEST_F(SaxReaderLoad, ElementsThatAFailedParseLeavesOpenStay) {
    EXPECT_EQ(reader.LoadBuffer("<a><b>"), E_FAIL);
    EXPECT_EQ(reader.LoadBuffer("<c/>"), S_OK);
    EXPECT_EQ(handler->calls, (Calls{"<a UNKNOWN", "<b a", "<c b", ">c b c "}));
    handler->elementStack.clear();
    EXPECT_EQ(reader.LoadBuffer("<c/>"), S_OK);
    EXPECT_EQ(handler->calls.back(), "<c UNKNOWN");
}

TEST_F(SaxReaderLoad, ResultsOfTheHooksDoNotStopTheParse) {
    handler->start_result = handler->end_result = E_FAIL;
    EXPECT_EQ(reader.LoadBuffer("<a><b/><c/></a>"), S_OK);
    EXPECT_EQ(handler->calls.size(), 5U);
}

TEST_F(SaxReaderLoad, TextWithoutABufferDoesNotStopTheParse) {
    const auto bare = ElementReader_var::Adopt(new ElementReader);
    reader.SetDocumentHandler(bare.Get());
    EXPECT_EQ(reader.LoadBuffer("<a>x<b>y</b></a>"), S_OK);
    EXPECT_EQ(bare->calls, (Calls{"<a UNKNOWN", "<b a", ">b a b"}));
}

TEST_F(SaxReaderLoad, WhatAHookThrowsIsPassedOnAndTheReaderUsableAfter) {
    handler->at_end = [] { throw 7; };
    EXPECT_THROW(reader.LoadBuffer("<a><b/></a>"), int);
    const auto other = make_reader();
    reader.SetDocumentHandler(other.Get());
    EXPECT_EQ(reader.LoadBuffer("<a><b/></a>"), S_OK);
    EXPECT_EQ(other->calls, (Calls{"<a UNKNOWN", "<b a", ">b a b "}));
}

TEST_F(SaxReaderLoad, TheHandlerIsHeldTwiceUntilReplacedOrCleared) {
    const auto other = make_reader();
    EXPECT_EQ(references_of(*handler.Get()), 3U);
    EXPECT_EQ(reader.SetDocumentHandler(handler.Get()), S_OK);
    EXPECT_EQ(references_of(*handler.Get()), 3U);
    EXPECT_EQ(reader.SetDocumentHandler(other.Get()), S_OK);
    EXPECT_EQ(references_of(*handler.Get()), 1U);
    EXPECT_EQ(references_of(*other.Get()), 3U);
    EXPECT_EQ(reader.SetDocumentHandler(nullptr), S_OK);
    EXPECT_EQ(references_of(*other.Get()), 1U);
}

TEST_F(SaxReaderLoad, AHandlerThatOnlyTheParserHoldsCanBeSetAgain) {
    ElementReader* const alone = handler.Get();
    handler.Reset();
    EXPECT_EQ(references_of(*alone), 2U);
    EXPECT_EQ(reader.SetDocumentHandler(alone), S_OK);
    EXPECT_EQ(references_of(*alone), 2U);
    EXPECT_EQ(reader.LoadBuffer("<a/>"), S_OK);
    EXPECT_EQ(alone->calls, (Calls{"<a UNKNOWN"}));
}

TEST_F(SaxReaderLoad, WithoutAHandlerTheResultIsTheSame) {
    EXPECT_EQ(reader.SetDocumentHandler(nullptr), S_OK);
    EXPECT_EQ(reader.LoadBuffer("<a/>"), S_OK);
    EXPECT_EQ(reader.LoadBuffer("<a"), E_FAIL);
    EXPECT_TRUE(handler->calls.empty());
    EXPECT_EQ(handler->GetNbErrors(), 0U);
}

TEST(SaxReaderObject, NothingCyclesAndTheLocatorSurvives) {
    const int before = ElementReader::live;
    OXAISAXLocator_var locator;
    {
        vSAXReader reader;
        auto handler = make_reader();
        reader.SetDocumentHandler(handler.Get());
        EXPECT_EQ(reader.LoadBuffer("<a>\n</a>"), S_OK);
        locator = handler->locator;
        handler.Reset();
        EXPECT_EQ(ElementReader::live, before + 1);
    }
    EXPECT_EQ(ElementReader::live, before);
    ASSERT_FALSE(locator.IsNull());
    EXPECT_EQ(references_of(*locator.Get()), 1U);
    int line = 0;
    EXPECT_EQ(locator->GetLineNumber(line), S_OK);
    EXPECT_EQ(line, 2);
}

TEST(SaxReaderObject, ItsFieldsAreInOrder) {
    vSAXReader reader;
    const auto* start = reinterpret_cast<const char*>(&reader);
    const auto offset = [&](const auto& field) { return reinterpret_cast<const char*>(&field) - start; };
    EXPECT_EQ(offset(reader.*reader_field()), 8);
    EXPECT_EQ(offset(reader.*factory_field()), 16);
    EXPECT_EQ(offset(reader.*status_field()), 24);
    EXPECT_EQ(sizeof(vSAXReader), 32U);
    EXPECT_TRUE(std::has_virtual_destructor_v<vSAXReader>);
}

TEST(SaxReaderObject, IsInitialised) {
    const support::LogCapture log;
    vSAXReader reader;
    EXPECT_EQ(reader.*status_field(), S_OK);
    ASSERT_FALSE((reader.*reader_field()).IsNull());
    EXPECT_FALSE((reader.*factory_field()).IsNull());
    for (const char* feature :
         {OXASAXXMLReaderOptions::ValidationFeature, OXASAXXMLReaderOptions::NamespacesFeature,
          OXASAXXMLReaderOptions::NamespacePrefixFeature}) {
        bool value = false;
        EXPECT_EQ((reader.*reader_field())->GetFeature(feature, value), S_OK);
        EXPECT_TRUE(value) << feature;
    }
    EXPECT_TRUE(log.records().empty());
}

}  // namespace
