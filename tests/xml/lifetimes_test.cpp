// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

#include "support/temporary_folder.h"
#include "xml/parser.h"

namespace {

using namespace xml_tests;

unsigned int references_of(OXABaseUnknown& object) {
    object.AddRef();
    return object.Release();
}

TEST(XmlLifetimes, TheReaderHoldsItsHandlers) {
    const int before = RecordingHandler::live;
    {
        Parser parser;
        RecordingHandler* handler = parser.handler.Get();
        EXPECT_EQ(references_of(*handler), 3U);
        parser.handler.Reset();
        EXPECT_EQ(RecordingHandler::live, before + 1);
        parser.reader->SetContentHandler(nullptr);
        EXPECT_EQ(RecordingHandler::live, before + 1);
        parser.reader->SetErrorHandler(nullptr);
        EXPECT_EQ(RecordingHandler::live, before);
    }
}

TEST(XmlLifetimes, NothingCyclesThroughTheLocator) {
    const int before = RecordingHandler::live;
    OXAISAXLocator_var locator;
    {
        Parser parser;
        EXPECT_EQ(parser.parse_text("<a/>"), S_OK);
        EXPECT_FALSE(parser.handler->locator.IsNull());
        locator = parser.handler->locator;
        EXPECT_EQ(references_of(*locator.Get()), 3U);
        EXPECT_EQ(references_of(*parser.handler.Get()), 3U);
    }
    EXPECT_EQ(RecordingHandler::live, before);
    EXPECT_EQ(references_of(*locator.Get()), 1U);
    int line = 0;
    EXPECT_EQ(locator->GetLineNumber(line), S_OK);
    EXPECT_EQ(line, 1);
}

TEST(XmlLifetimes, AParseKeepsNoReferences) {
    Parser parser;
    OXAISAXInputSource_var source;
    make_factory()->CreateInputSourceFromText("<a>x</a>", "", source);
    const unsigned int reader_references = references_of(*parser.reader.Get());
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(parser.reader->Parse(source), S_OK);
        EXPECT_EQ(references_of(*source.Get()), 1U);
        EXPECT_EQ(references_of(*parser.reader.Get()), reader_references);
        EXPECT_EQ(references_of(*parser.handler.Get()), 3U);
    }
}

/// Releases the reader, the source and itself from within the parse.
class SuicidalHandler final : public RecordingHandler {
public:
    OXAISAXXMLReader_var* reader = nullptr;
    OXAISAXInputSource_var* source = nullptr;
    OXAVar<SuicidalHandler>* self = nullptr;

    HRESULT StartElement(const OXAUnicodeString&, const OXAUnicodeString&, const OXAUnicodeString&,
                         const OXAISAXAttributes_var&) override {
        if (reader && !reader->IsNull()) {
            (*reader)->SetContentHandler(nullptr);
            (*reader)->SetErrorHandler(nullptr);
            reader->Reset();
            source->Reset();
            self->Reset();
        }
        return S_OK;
    }
    HRESULT EndDocument() override {
        ++ended;
        return S_OK;
    }

    static inline int ended = 0;
};

TEST(XmlLifetimes, AParseEndsWellWhenACallbackReleasesEverything) {
    const int before = RecordingHandler::live;
    OXAISAXXMLReader_var reader;
    OXAISAXInputSource_var source;
    {
        const OXAIXMLSAX2Factory_var factory = make_factory();
        factory->CreateXMLReader(reader);
        factory->CreateInputSourceFromText("<a><b/>text</a>", "", source);
    }
    auto handler = OXAVar<SuicidalHandler>::Adopt(new SuicidalHandler);
    handler->reader = &reader;
    handler->source = &source;
    handler->self = &handler;
    reader->SetContentHandler(OXAISAXContentHandler_var(handler));
    SuicidalHandler::ended = 0;
    EXPECT_EQ(reader.Get()->Parse(source), S_OK);
    EXPECT_TRUE(reader.IsNull());
    EXPECT_EQ(SuicidalHandler::ended, 1);
    EXPECT_EQ(RecordingHandler::live, before);
}

TEST(XmlLifetimes, AReaderReadsNothingElseWithinItsCallbacks) {
    class ReentrantHandler final : public RecordingHandler {
    public:
        OXAISAXXMLReader* reader = nullptr;
        int refusals = 0;

        HRESULT StartElement(const OXAUnicodeString&, const OXAUnicodeString&, const OXAUnicodeString&,
                             const OXAISAXAttributes_var&) override {
            OXAISAXInputSource_var source;
            make_factory()->CreateInputSourceFromText("<c/>", "", source);
            const OXAIXMLSchemaLoader_var loader(reader);
            if (reader->Parse(source) == E_FAIL) ++refusals;
            if (loader->LoadGrammar("k", source) == E_FAIL) ++refusals;
            if (loader->ClearCache() == E_FAIL) ++refusals;
            // Another reader is free to.
            Parser other;
            EXPECT_EQ(other.parse_text("<d/>"), S_OK);
            return S_OK;
        }
    };
    Parser parser;
    const auto handler = OXAVar<ReentrantHandler>::Adopt(new ReentrantHandler);
    handler->reader = parser.reader.Get();
    parser.reader->SetContentHandler(OXAISAXContentHandler_var(handler));
    EXPECT_EQ(parser.parse_text("<a/>"), S_OK) << parser.said();
    EXPECT_EQ(handler->refusals, 3);
}

struct ThrownByTheTest {
    std::string where;
};

/// Throws at one of its callbacks.
class ThrowingHandler final : public RecordingHandler {
public:
    std::string at;

    HRESULT StartDocument() override { return reach("start document"); }
    HRESULT EndDocument() override { return reach("end document"); }
    HRESULT StartElement(const OXAUnicodeString&, const OXAUnicodeString&, const OXAUnicodeString&,
                         const OXAISAXAttributes_var&) override {
        return reach("start element");
    }
    HRESULT EndElement(const OXAUnicodeString&, const OXAUnicodeString&, const OXAUnicodeString&) override {
        return reach("end element");
    }
    HRESULT Characters(const OXAUnicodeString&) override { return reach("characters"); }
    HRESULT IgnorableWhiteSpace(const OXAUnicodeString&) override { return reach("space"); }
    HRESULT ProcessingInstruction(const OXAUnicodeString&, const OXAUnicodeString&) override {
        return reach("pi");
    }
    HRESULT SetDocumentLocator(const OXAISAXLocator_var& given) override {
        locator = given;
        return reach("locator");
    }
    HRESULT StartPrefixMapping(const OXAUnicodeString&, const OXAUnicodeString&) override {
        return reach("prefix");
    }
    HRESULT EndPrefixMapping(const OXAUnicodeString&) override { return reach("end prefix"); }
    HRESULT NotationDecl(const OXAUnicodeString&, const OXAUnicodeString&, const OXAUnicodeString&) override {
        return reach("notation");
    }
    HRESULT UnparsedEntityDecl(const OXAUnicodeString&, const OXAUnicodeString&, const OXAUnicodeString&,
                               const OXAUnicodeString&) override {
        return reach("unparsed");
    }
    HRESULT ResolveEntity(const OXAUnicodeString&, const OXAUnicodeString&,
                          OXAISAXInputSource_var&) override {
        return reach("resolve");
    }
    HRESULT Error(OXASAXParseException*) override { return reach("error"); }
    HRESULT FatalError(OXASAXParseException*) override { return reach("fatal"); }
    HRESULT Warning(OXASAXParseException*) override { return reach("warning"); }

private:
    HRESULT reach(const char* where) {
        if (at == where) throw ThrownByTheTest{where};
        return S_OK;
    }
};

class XmlExceptions : public testing::TestWithParam<const char*> {};

TEST_P(XmlExceptions, LeaveTheParseAndTheReaderReadsOn) {
    const support::TemporaryFolder folder;
    folder.write("a.dtd", "<!ELEMENT a (b*)>");
    const std::string path = folder.write("a.xml",
                                          "<!DOCTYPE a SYSTEM 'a.dtd' [<!NOTATION n SYSTEM 'n'><!ENTITY u "
                                          "SYSTEM 'u' NDATA n><!ELEMENT b (#PCDATA)>"
                                          "<!ATTLIST b><!ATTLIST c d CDATA ''>]>\n<a> <b "
                                          "xmlns:p='u'>x</b><?p?><undeclared/></a><!-- fatal: --><b/>");
    const std::string good_path = folder.write("good.xml", "<a> <b xmlns:p='u'>x</b></a>");
    const int before = RecordingHandler::live;
    {
        Parser parser;
        const auto handler = OXAVar<ThrowingHandler>::Adopt(new ThrowingHandler);
        handler->at = GetParam();
        parser.reader->SetContentHandler(OXAISAXContentHandler_var(handler));
        parser.reader->SetErrorHandler(OXAISAXErrorHandler_var(handler));
        const std::string where = handler->at;
        const std::string& bad = where == "end document" ? good_path : path;
        for (int i = 0; i < 3; ++i) {
            try {
                parser.parse_file(bad);
                ADD_FAILURE() << "nothing was thrown";
            } catch (const ThrownByTheTest& thrown) {
                EXPECT_EQ(thrown.where, where);
            }
            // The locator knows where that was, and touches no parser.
            int line = -1;
            EXPECT_EQ(handler->locator->GetLineNumber(line), S_OK);
            EXPECT_GE(line, where == "locator" ? 0 : 1);
            EXPECT_EQ(references_of(*handler.Get()), 3U);
            handler->at.clear();
            EXPECT_EQ(parser.parse_file(good_path), S_OK);
            handler->at = where;
        }
    }
    EXPECT_EQ(RecordingHandler::live, before);
}

INSTANTIATE_TEST_SUITE_P(Callbacks, XmlExceptions,
                         testing::Values("locator", "start document", "end document", "start element",
                                         "end element", "characters", "space", "pi", "prefix", "end prefix",
                                         "notation", "unparsed", "resolve", "error", "fatal", "warning"),
                         [](const auto& info) {
                             std::string name = info.param;
                             for (char& c : name) {
                                 if (c == ' ') c = '_';
                             }
                             return name;
                         });

TEST(XmlExceptions, OfTheLoadingOfASchemaLeaveTheSchemasAsTheyWere) {
    const support::TemporaryFolder folder;
    const std::string begin = "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>";
    Parser parser;
    ASSERT_EQ(parser.load_schema_text("k", begin + "<xs:element name='a' type='xs:int'/></xs:schema>"), S_OK);
    const auto handler = OXAVar<ThrowingHandler>::Adopt(new ThrowingHandler);
    handler->at = "error";
    parser.reader->SetErrorHandler(OXAISAXErrorHandler_var(handler));
    EXPECT_THROW(parser.load_schema_text("k", begin + "<xs:element name='a' type='none'/></xs:schema>"),
                 ThrownByTheTest);
    parser.reader->SetErrorHandler(OXAISAXErrorHandler_var(parser.handler));
    EXPECT_EQ(parser.parse_text("<a>x</a>"), S_OK);
    EXPECT_EQ(parser.count("error"), 1) << parser.said();
    EXPECT_EQ(parser.parse_text("<a>1</a>"), S_OK);
    EXPECT_EQ(parser.count("error"), 0) << parser.said();
}

}  // namespace
