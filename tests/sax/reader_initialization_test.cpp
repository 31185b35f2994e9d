// The entry of the XML framework is defined here, in the place of the framework's own.
#include <functional>
#include <gtest/gtest.h>

#include "sax/decimal_comma.h"
#include "sax/element_reader.h"
#include "support/log_capture.h"
#include "vSAXReader.h"

namespace {

using namespace sax;
using Records = std::vector<support::LogRecord>;

/// Has no schema support, and notes its calls.
class FakeParser : public OXAISAXXMLReader {
public:
    std::vector<std::string> calls;
    HRESULT content_result = S_OK;
    HRESULT error_result = S_OK;
    HRESULT parse_result = S_OK;
    HRESULT feature_result = S_OK;

    HRESULT SetFeature(const OXAUnicodeString& name, bool value) override {
        calls.push_back(std::string(name.ConvertToChar()) + (value ? " on" : " off"));
        return feature_result;
    }
    HRESULT GetFeature(const OXAUnicodeString&, bool&) override { return E_NOTIMPL; }
    HRESULT SetContentHandler(const OXAISAXContentHandler_var& handler) override {
        calls.push_back(handler.IsNull() ? "no content" : "content");
        return content_result;
    }
    HRESULT SetErrorHandler(const OXAISAXErrorHandler_var& handler) override {
        calls.push_back(handler.IsNull() ? "no errors" : "errors");
        return error_result;
    }
    HRESULT Parse(const OXAISAXInputSource_var& source) override {
        calls.push_back(source.IsNull() ? "parse nothing" : "parse");
        return parse_result;
    }
};

class FakeFactory : public OXAIXMLSAX2Factory {
public:
    OXAVar<FakeParser> parser;
    HRESULT parser_result = S_OK;
    HRESULT source_result = S_OK;
    std::vector<std::string> calls;

    HRESULT CreateXMLReader(OXAISAXXMLReader_var& reader) override {
        reader = parser;
        return parser_result;
    }
    HRESULT CreateInputSourceFromFile(const OXAUnicodeString& path, const OXAUnicodeString& publicId,
                                      OXAISAXInputSource_var&) override {
        calls.push_back(std::string("file ") + path.ConvertToChar() + " " + publicId.ConvertToChar());
        return source_result;
    }
    HRESULT CreateInputSourceFromText(const OXAUnicodeString& text, const OXAUnicodeString& publicId,
                                      OXAISAXInputSource_var&) override {
        calls.push_back(std::string("text ") + text.ConvertToChar() + " " + publicId.ConvertToChar());
        return source_result;
    }
};

OXAVar<FakeFactory> the_factory;
HRESULT factory_result = S_OK;
bool right_parser_asked = false;

class SaxReaderInitialization : public testing::Test {
protected:
    OXAVar<FakeFactory> factory = OXAVar<FakeFactory>::Adopt(new FakeFactory);
    OXAVar<FakeParser> parser = OXAVar<FakeParser>::Adopt(new FakeParser);
    ElementReader_var handler = make_reader();
    support::LogCapture log;

    void SetUp() override {
        factory->parser = parser;
        the_factory = factory;
        factory_result = S_OK;
    }
    void TearDown() override { the_factory.Reset(); }

    void expect_failed_initialization() {
        const DecimalComma comma;
        const std::string locale = numeric_locale();
        vSAXReader reader;
        const Records expected = {{"Mefx", 5, "Issue during initialization"}};
        EXPECT_EQ(log.records(), expected);
        parser->calls.clear();
        EXPECT_EQ(reader.SetDocumentHandler(handler.Get()), E_FAIL);
        EXPECT_EQ(reader.SetDocumentHandler(nullptr), E_FAIL);
        EXPECT_EQ(reader.SetXSDSchema("a.xsd", "k"), E_FAIL);
        EXPECT_EQ(reader.LoadFile("a.xml"), E_FAIL);
        EXPECT_EQ(reader.LoadBuffer("<a/>"), E_FAIL);
        EXPECT_EQ(reader.ClearSchemaCache(), S_OK);
        EXPECT_EQ(numeric_locale(), locale);
        EXPECT_TRUE(parser->calls.empty());
        EXPECT_TRUE(factory->calls.empty());
        EXPECT_EQ(references_of(*handler.Get()), 1U);
        EXPECT_EQ(log.records(), expected);
    }
};

TEST_F(SaxReaderInitialization, FailsWithoutAFactory) {
    the_factory.Reset();
    factory_result = E_NOINTERFACE;
    expect_failed_initialization();
}

TEST_F(SaxReaderInitialization, FailsWhenTheFactoryIsNull) {
    the_factory.Reset();
    expect_failed_initialization();
}

TEST_F(SaxReaderInitialization, FailsWhenTheFactoryIsGivenWithAFailure) {
    factory_result = E_FAIL;
    expect_failed_initialization();
}

TEST_F(SaxReaderInitialization, FailsWhenTheParserCannotBeMade) {
    factory->parser_result = E_FAIL;
    expect_failed_initialization();
}

TEST_F(SaxReaderInitialization, FailsWhenTheParserIsNull) {
    factory->parser.Reset();
    expect_failed_initialization();
}

TEST_F(SaxReaderInitialization, SetsThreeFeaturesInOrderWhateverTheyGive) {
    parser->feature_result = E_FAIL;
    vSAXReader reader;
    EXPECT_TRUE(right_parser_asked);
    const std::vector<std::string> expected = {
        std::string(OXASAXXMLReaderOptions::ValidationFeature) + " on",
        std::string(OXASAXXMLReaderOptions::NamespacesFeature) + " on",
        std::string(OXASAXXMLReaderOptions::NamespacePrefixFeature) + " on"};
    EXPECT_EQ(parser->calls, expected);
    EXPECT_TRUE(log.records().empty());
    EXPECT_EQ(reader.LoadBuffer("<a/>"), S_OK);
}

TEST_F(SaxReaderInitialization, DestructionReleasesFactoryAndParser) {
    {
        vSAXReader reader;
        EXPECT_EQ(references_of(*factory.Get()), 3U);
        EXPECT_EQ(references_of(*parser.Get()), 3U);
    }
    EXPECT_EQ(references_of(*factory.Get()), 2U);
    EXPECT_EQ(references_of(*parser.Get()), 2U);
}

TEST_F(SaxReaderInitialization, AHandlerIsClearedAndThenSetContentFirst) {
    vSAXReader reader;
    parser->calls.clear();
    parser->content_result = E_FAIL;
    EXPECT_EQ(reader.SetDocumentHandler(handler.Get()), S_OK);
    EXPECT_EQ(parser->calls, (std::vector<std::string>{"no content", "no errors", "content", "errors"}));
    parser->content_result = S_OK;
    parser->error_result = E_NOTIMPL;
    EXPECT_EQ(reader.SetDocumentHandler(nullptr), E_NOTIMPL);
}

TEST_F(SaxReaderInitialization, LoadingPassesItsArgumentAndTheParsersResult) {
    vSAXReader reader;
    parser->calls.clear();
    factory->source_result = E_NOTIMPL;
    parser->parse_result = HRESULT{5};
    EXPECT_EQ(reader.LoadFile("a.xml"), HRESULT{5});
    EXPECT_EQ(reader.LoadBuffer("<a/>"), HRESULT{5});
    EXPECT_EQ(factory->calls, (std::vector<std::string>{"file a.xml ", "text <a/> "}));
    EXPECT_EQ(parser->calls, (std::vector<std::string>{"parse nothing", "parse nothing"}));
    EXPECT_TRUE(log.records().empty());
}

TEST_F(SaxReaderInitialization, ASchemaWithoutASourceIsLoggedAndYetASuccess) {
    vSAXReader reader;
    parser->calls.clear();
    EXPECT_EQ(reader.SetXSDSchema("a.xsd", "k"), S_OK);
    EXPECT_EQ(factory->calls, (std::vector<std::string>{"file a.xsd myPublicId"}));
    EXPECT_EQ(parser->calls,
              (std::vector<std::string>{std::string(OXASAXXMLReaderOptions::ValidationFeature) + " on"}));
    EXPECT_EQ(log.records(), (Records{{"Default", 4, "Could not create input source from xsd file a.xsd"}}));
}

TEST_F(SaxReaderInitialization, ASchemaWithAFailedSourceGivesItsResult) {
    vSAXReader reader;
    parser->calls.clear();
    factory->source_result = E_NOTIMPL;
    EXPECT_EQ(reader.SetXSDSchema("a.xsd", "k"), E_NOTIMPL);
    EXPECT_TRUE(parser->calls.empty());
    EXPECT_EQ(log.records(), (Records{{"Default", 4, "Could not create input source from xsd file a.xsd"}}));
}

TEST_F(SaxReaderInitialization, WithoutSchemaSupportClearingSucceeds) {
    vSAXReader reader;
    EXPECT_EQ(reader.ClearSchemaCache(), S_OK);
}

}  // namespace

HRESULT CreateOXAIXMLSAX2Factory(OXAIXMLSAX2Factory_var& factory, const GUID& clsid) {
    right_parser_asked = clsid == CLSID_XML4C_SAX;
    factory = the_factory;
    return factory_result;
}
