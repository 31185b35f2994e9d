// SPDX-License-Identifier: Apache-2.0

#include <climits>
#include <gtest/gtest.h>

#include "support/temporary_folder.h"
#include "xml/parser.h"

namespace {

using namespace xml_tests;

TEST(XmlErrors, AMalformedDocumentIsOneFatalErrorWithItsPlace) {
    struct Case {
        const char* text;
        int line;
        int from;  // the column where the wrong construct begins
        int to;    // the column behind it
    };
    for (const Case& c :
         {Case{"<a>\n  <b></c>\n</a>", 2, 6, 10}, Case{"<a>", 1, 4, 4}, Case{"", 1, 1, 1},
          Case{"<a b='1' b='2'/>", 1, 10, 17}, Case{"<a>&nope;</a>", 1, 4, 10}, Case{"<a/><b/>", 1, 5, 9},
          Case{"<a>\n\n<p:b/></a>", 3, 1, 7}, Case{"<a><![CDATA[x</a>", 1, 4, 18}}) {
        Parser parser;
        EXPECT_EQ(parser.parse_text(c.text), E_FAIL) << c.text;
        const Problem fatal = parser.fatal_error();
        EXPECT_EQ(fatal.line, c.line) << c.text << ": " << parser.said();
        EXPECT_GE(fatal.column, c.from) << c.text << ": " << parser.said();
        EXPECT_LE(fatal.column, c.to) << c.text << ": " << parser.said();
        EXPECT_FALSE(fatal.message.empty());
        EXPECT_EQ(fatal.system_id, "");
        EXPECT_NE(parser.events().back(), "end document") << c.text;
    }
}

TEST(XmlErrors, TheContentBeforeAFatalErrorIsReported) {
    Parser parser;
    EXPECT_EQ(parser.parse_text("<a><b/>text<c></a>"), E_FAIL);
    const std::vector<std::string> expected = {"locator", "start document", "<a a>", "<b b>",
                                               "</b b>",  "text text",      "<c c>"};
    EXPECT_EQ(parser.events(), expected);
}

TEST(XmlErrors, AMissingDocumentIsAFatalErrorThatNamesThePath) {
    const support::TemporaryFolder folder;
    for (const std::string& path :
         {folder.path("absent.xml"), folder.path("."), folder.path("no/such/folder.xml")}) {
        Parser parser;
        EXPECT_EQ(parser.parse_file(path), E_FAIL);
        const Problem fatal = parser.fatal_error();
        EXPECT_NE(fatal.message.find(path), std::string::npos) << fatal.message;
        EXPECT_EQ(fatal.system_id, path);
        EXPECT_EQ(fatal.line, 0);
        EXPECT_EQ(fatal.column, 0);
        EXPECT_EQ(parser.events(), std::vector<std::string>{"locator"});
    }
}

TEST(XmlErrors, AReadThatFailsIsAFatalErrorThatNamesThePath) {
    // A regular file that opens, but has nothing at its beginning.
    const std::string path = "/proc/self/mem";
    Parser parser;
    EXPECT_EQ(parser.parse_file(path), E_FAIL);
    const Problem fatal = parser.fatal_error();
    EXPECT_EQ(fatal.message, "cannot read \"" + path + "\": Input/output error");
    EXPECT_EQ(fatal.system_id, path);
}

TEST(XmlErrors, APathWithAZeroByteNamesNoFile) {
    const support::TemporaryFolder folder;
    const std::string path = folder.write("a.xml", "<a/>") + std::string("\0.xml", 5);
    const OXAIXMLSAX2Factory_var factory = make_factory();
    OXAISAXInputSource_var source;
    EXPECT_EQ(factory->CreateInputSourceFromFile(OXAUnicodeString(path.data(), path.size()), "", source),
              E_FAIL);
    Parser parser;
    EXPECT_EQ(parser.reader->Parse(source), E_FAIL);
    parser.fatal_error();
}

TEST(XmlErrors, AFileIsNamedInItsErrors) {
    const support::TemporaryFolder folder;
    const std::string path = folder.write("bad.xml", "<a>");
    Parser parser;
    EXPECT_EQ(parser.parse_file(path), E_FAIL);
    EXPECT_EQ(parser.fatal_error().system_id, path);
}

TEST(XmlErrors, TheReaderReadsTheNextDocument) {
    Parser parser;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(parser.parse_text("<a><b></a>"), E_FAIL);
        EXPECT_EQ(parser.parse_text("<a/>"), S_OK);
        EXPECT_TRUE(parser.problems().empty()) << parser.said();
    }
}

TEST(XmlErrors, AnUnknownEncodingIsAFatalError) {
    const support::TemporaryFolder folder;
    Parser parser;
    EXPECT_EQ(parser.parse_file(folder.write("a.xml", "<?xml version='1.0' encoding='no-such'?><a/>")),
              E_FAIL);
    EXPECT_NE(parser.fatal_error().message.find("no-such"), std::string::npos) << parser.said();
}

/// Asks the locator in each callback.
class PlaceHandler final : public RecordingHandler {
public:
    std::vector<std::string> places;

    HRESULT StartElement(const OXAUnicodeString&, const OXAUnicodeString& localName, const OXAUnicodeString&,
                         const OXAISAXAttributes_var&) override {
        return note(text_of(localName));
    }
    HRESULT Characters(const OXAUnicodeString& chars) override { return note(text_of(chars)); }
    HRESULT EndElement(const OXAUnicodeString&, const OXAUnicodeString& localName,
                       const OXAUnicodeString&) override {
        return note(std::string("/").append(text_of(localName)));
    }

private:
    HRESULT note(const std::string& what) {
        int line = -1;
        int column = -1;
        EXPECT_EQ(locator->GetLineNumber(line), S_OK);
        EXPECT_EQ(locator->GetColumnNumber(column), S_OK);
        places.push_back(what + " " + std::to_string(line) + ":" + std::to_string(column));
        return S_OK;
    }
};

std::string place_of(const OXAISAXLocator_var& locator) {
    int line = -1;
    int column = -1;
    EXPECT_EQ(locator->GetLineNumber(line), S_OK);
    EXPECT_EQ(locator->GetColumnNumber(column), S_OK);
    return std::to_string(line) + ":" + std::to_string(column);
}

TEST(XmlLocator, StandsBehindWhatACallbackReports) {
    Parser parser;
    const auto handler = OXAVar<PlaceHandler>::Adopt(new PlaceHandler);
    parser.reader->SetContentHandler(OXAISAXContentHandler_var(handler));
    // Columns count UTF-16 code units: one for the first letter, two for the second.
    EXPECT_EQ(parser.parse_text("<a>\n<b\n/>\xc3\xa9\xf0\x9f\x98\x80</a>"), S_OK);
    const std::vector<std::string> expected = {
        "a 1:4", "\n 2:1", "b 3:3", "/b 3:3", "\xc3\xa9\xf0\x9f\x98\x80 3:6", "/a 3:10"};
    EXPECT_EQ(handler->places, expected);
}

TEST(XmlLocator, KeepsItsLastPlaceAfterTheParse) {
    const support::TemporaryFolder folder;
    const std::string path = folder.write("a.xml", "<a>\n</a>\n");
    OXAVar<RecordingHandler> handler;
    {
        Parser parser;
        handler = parser.handler;
        EXPECT_EQ(parser.parse_file(path), S_OK);
        EXPECT_EQ(place_of(handler->locator), "3:1");
    }
    // The parser is gone.
    EXPECT_EQ(place_of(handler->locator), "3:1");
    OXAUnicodeString text;
    EXPECT_EQ(handler->locator->GetSystemId(text), S_OK);
    EXPECT_EQ(text_of(text), path);
    EXPECT_EQ(handler->locator->GetPublicId(text), S_OK);
    EXPECT_EQ(text_of(text), "");
}

TEST(XmlLocator, StandsAtTheFatalError) {
    Parser parser;
    EXPECT_EQ(parser.parse_text("<a>\n</b>"), E_FAIL);
    const Problem malformed = parser.fatal_error();
    EXPECT_EQ(place_of(parser.handler->locator),
              std::to_string(malformed.line) + ":" + std::to_string(malformed.column));
    EXPECT_EQ(parser.parse_text("<a>\n\n\xff</a>"), E_FAIL);
    EXPECT_EQ(place_of(parser.handler->locator), "3:1");
}

/// Asks the locator as soon as it gets it.
class EarlyHandler final : public RecordingHandler {
public:
    std::vector<std::string> places;

    HRESULT SetDocumentLocator(const OXAISAXLocator_var& given) override {
        OXAUnicodeString system_id;
        EXPECT_EQ(given->GetSystemId(system_id), S_OK);
        places.push_back(place_of(given) + text_of(system_id));
        return S_OK;
    }
};

TEST(XmlLocator, IsAtZeroAgainWhenTheNextDocumentBegins) {
    const support::TemporaryFolder folder;
    const std::string path = folder.write("a.xml", "<a>\n</a>\n");
    Parser parser;
    const auto handler = OXAVar<EarlyHandler>::Adopt(new EarlyHandler);
    parser.reader->SetContentHandler(OXAISAXContentHandler_var(handler));
    EXPECT_EQ(parser.parse_file(path), S_OK);
    EXPECT_EQ(parser.parse_file(path), S_OK);
    EXPECT_EQ(parser.parse_text("<a>\n</b>"), E_FAIL);
    EXPECT_EQ(parser.parse_file(path), S_OK);
    EXPECT_EQ(handler->places, (std::vector<std::string>{"0:0", "0:0", "0:0", "0:0"}));
}

TEST(XmlLocator, IsAtZeroBeforeAnythingWasRead) {
    Parser parser;
    EXPECT_EQ(parser.parse_text("<a>\n</a>"), S_OK);
    EXPECT_EQ(parser.parse_file("/no/such/file"), E_FAIL);
    EXPECT_EQ(place_of(parser.handler->locator), "0:0");
}

}  // namespace
