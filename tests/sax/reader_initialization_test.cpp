// SPDX-License-Identifier: Apache-2.0
// The entry of the XML framework is defined here, in the place of the framework's own.
#include <functional>
#include <gtest/gtest.h>

#include "sax/decimal_comma.h"
#include "sax/element_reader.h"
#include "support/log_capture.h"
#include "support/private_access.h"
#include "vSAXReader.h"

PELTO_PRIVATE_MEMBER(reader_field, &vSAXReader::reader, OXAISAXXMLReader_var vSAXReader::*)
PELTO_PRIVATE_MEMBER(factory_field, &vSAXReader::factory, OXAIXMLSAX2Factory_var vSAXReader::*)

namespace {

using namespace sax;
using Records = std::vector<support::LogRecord>;

const std::string kValidationOn = std::string(OXASAXXMLReaderOptions::ValidationFeature) + " on";

/// What the fakes' destructors note, and the numeric locale then.
std::vector<std::string> destructions;

void note_destruction(const char* what) {
    destructions.push_back(std::string(what).append(" ").append(numeric_locale()));
}

class FakeSource : public OXAISAXInputSource {
public:
    HRESULT GetPublicId(OXAUnicodeString&) override { return E_NOTIMPL; }
    HRESULT GetSystemId(OXAUnicodeString&) override { return E_NOTIMPL; }

protected:
    ~FakeSource() override { note_destruction("source"); }
};

/// Notes its calls.
class FakeLoader : public OXAIXMLSchemaLoader {
public:
    std::vector<std::string> calls;
    HRESULT load_result = S_OK;
    HRESULT clear_result = S_OK;

    HRESULT LoadGrammar(const OXAUnicodeString& key, const OXAISAXInputSource_var& source) override {
        calls.push_back(std::string("load ") + key.ConvertToChar() + (source.IsNull() ? " nothing" : "") +
                        " " + numeric_locale());
        return load_result;
    }
    HRESULT ClearCache() override {
        calls.emplace_back("clear");
        return clear_result;
    }
};

/// Has schema support where it is given a loader, and notes its calls.
class FakeParser : public OXAISAXXMLReader {
public:
    OXAVar<FakeLoader> loader;
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
    HRESULT QueryInterface(const GUID& classId, void** object) override {
        if (classId != OXAIXMLSchemaLoader::ClassId() || loader.IsNull()) {
            return OXABaseUnknown::QueryInterface(classId, object);
        }
        return loader->QueryInterface(classId, object);
    }
    using OXAISAXXMLReader::QueryInterface;

protected:
    ~FakeParser() override { note_destruction("parser"); }
};

class FakeFactory : public OXAIXMLSAX2Factory {
public:
    OXAVar<FakeParser> parser;
    HRESULT parser_result = S_OK;
    HRESULT source_result = S_OK;
    bool makes_sources = false;
    std::vector<std::string> calls;

    HRESULT CreateXMLReader(OXAISAXXMLReader_var& reader) override {
        reader = parser;
        return parser_result;
    }
    HRESULT CreateInputSourceFromFile(const OXAUnicodeString& path, const OXAUnicodeString& publicId,
                                      OXAISAXInputSource_var& source) override {
        make(source);
        calls.push_back(std::string("file ") + path.ConvertToChar() + " " + publicId.ConvertToChar());
        return source_result;
    }
    HRESULT CreateInputSourceFromText(const OXAUnicodeString& text, const OXAUnicodeString& publicId,
                                      OXAISAXInputSource_var& source) override {
        make(source);
        calls.push_back(std::string("text ") + text.ConvertToChar() + " " + publicId.ConvertToChar());
        return source_result;
    }

protected:
    ~FakeFactory() override { note_destruction("factory"); }

private:
    void make(OXAISAXInputSource_var& source) const {
        if (makes_sources) source = OXAISAXInputSource_var::Adopt(new FakeSource);
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
        destructions.clear();
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

TEST_F(SaxReaderInitialization, DestructionReleasesTheFactoryFirst) {
    {
        vSAXReader reader;
        the_factory.Reset();
        factory->parser.Reset();
        factory.Reset();
        parser.Reset();
        EXPECT_TRUE(destructions.empty());
    }
    ASSERT_EQ(destructions.size(), 2U);
    EXPECT_EQ(destructions[0].find("factory"), 0U);
    EXPECT_EQ(destructions[1].find("parser"), 0U);
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
    EXPECT_EQ(parser->calls, (std::vector<std::string>{kValidationOn}));
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

TEST_F(SaxReaderInitialization, ASchemaWithoutSchemaSupportIsASuccess) {
    vSAXReader reader;
    parser->calls.clear();
    factory->makes_sources = true;
    factory->source_result = HRESULT{3};
    EXPECT_EQ(reader.SetXSDSchema("a.xsd", "k"), HRESULT{3});
    EXPECT_EQ(parser->calls, (std::vector<std::string>{kValidationOn}));
    EXPECT_TRUE(log.records().empty());
}

TEST_F(SaxReaderInitialization, ASchemaGoesToTheLoaderUnderItsKey) {
    parser->loader = OXAVar<FakeLoader>::Adopt(new FakeLoader);
    parser->loader->load_result = HRESULT{3};
    factory->makes_sources = true;
    vSAXReader reader;
    parser->calls.clear();
    EXPECT_EQ(reader.SetXSDSchema("a.xsd", " the key "), HRESULT{3});
    EXPECT_EQ(parser->loader->calls, (std::vector<std::string>{"load  the key  C"}));
    EXPECT_EQ(parser->calls, (std::vector<std::string>{kValidationOn}));
    EXPECT_TRUE(log.records().empty());
    EXPECT_EQ(reader.SetXSDSchema(nullptr, nullptr), HRESULT{3});
    EXPECT_EQ(parser->loader->calls.back(), "load  C");
    EXPECT_EQ(factory->calls.back(), "file  myPublicId");
}

TEST_F(SaxReaderInitialization, ASchemaThatTheLoaderRefusesDoesNotSwitchValidationOn) {
    parser->loader = OXAVar<FakeLoader>::Adopt(new FakeLoader);
    parser->loader->load_result = E_NOTIMPL;
    factory->makes_sources = true;
    vSAXReader reader;
    parser->calls.clear();
    EXPECT_EQ(reader.SetXSDSchema("a.xsd", "k"), E_NOTIMPL);
    EXPECT_TRUE(parser->calls.empty());
    EXPECT_TRUE(log.records().empty());
}

TEST_F(SaxReaderInitialization, ASourceThatComesWithAFailureIsNotLoaded) {
    parser->loader = OXAVar<FakeLoader>::Adopt(new FakeLoader);
    factory->makes_sources = true;
    factory->source_result = E_NOTIMPL;
    vSAXReader reader;
    parser->calls.clear();
    EXPECT_EQ(reader.SetXSDSchema("a.xsd", "k"), E_NOTIMPL);
    EXPECT_TRUE(parser->loader->calls.empty());
    EXPECT_TRUE(parser->calls.empty());
    EXPECT_EQ(log.records(), (Records{{"Default", 4, "Could not create input source from xsd file a.xsd"}}));
    // A document's is parsed all the same.
    EXPECT_EQ(reader.LoadFile("a.xml"), S_OK);
    EXPECT_EQ(parser->calls, (std::vector<std::string>{"parse"}));
}

TEST_F(SaxReaderInitialization, ClearingGivesTheLoadersResultWhateverTheStatus) {
    parser->loader = OXAVar<FakeLoader>::Adopt(new FakeLoader);
    parser->loader->clear_result = E_NOTIMPL;
    vSAXReader good;
    EXPECT_EQ(good.ClearSchemaCache(), E_NOTIMPL);
    factory->parser_result = E_FAIL;
    vSAXReader failed;
    EXPECT_EQ(failed.ClearSchemaCache(), E_NOTIMPL);
    EXPECT_EQ(parser->loader->calls, (std::vector<std::string>{"clear", "clear"}));
}

TEST_F(SaxReaderInitialization, TheLocaleIsBackBeforeTheSourceIsReleased) {
    const DecimalComma comma;
    if (!comma.set()) GTEST_SKIP() << "the locale " << kDecimalComma << " is not on this machine";
    parser->loader = OXAVar<FakeLoader>::Adopt(new FakeLoader);
    factory->makes_sources = true;
    vSAXReader reader;
    EXPECT_EQ(reader.LoadFile("a.xml"), S_OK);
    EXPECT_EQ(reader.LoadBuffer("<a/>"), S_OK);
    EXPECT_EQ(reader.SetXSDSchema("a.xsd", "k"), S_OK);
    EXPECT_EQ(parser->loader->calls, (std::vector<std::string>{"load k C"}));
    const std::string released = std::string("source ").append(kDecimalComma);
    EXPECT_EQ(destructions, (std::vector<std::string>{released, released, released}));
}

TEST_F(SaxReaderInitialization, AParserOrFactoryThatDisappearsIsANullReference) {
    const DecimalComma comma;
    const std::string locale = numeric_locale();
    {
        vSAXReader reader;
        (reader.*reader_field()).Reset();
        EXPECT_THROW(reader.LoadBuffer("<a/>"), OXANullVarError);
        EXPECT_THROW(reader.LoadFile("a.xml"), OXANullVarError);
        EXPECT_THROW(reader.SetDocumentHandler(handler.Get()), OXANullVarError);
        EXPECT_EQ(reader.ClearSchemaCache(), S_OK);
    }
    vSAXReader reader;
    (reader.*factory_field()).Reset();
    EXPECT_THROW(reader.LoadBuffer("<a/>"), OXANullVarError);
    EXPECT_THROW(reader.LoadFile("a.xml"), OXANullVarError);
    EXPECT_THROW(reader.SetXSDSchema("a.xsd", "k"), OXANullVarError);
    EXPECT_EQ(numeric_locale(), locale);
    EXPECT_EQ(references_of(*handler.Get()), 1U);
}

}  // namespace

HRESULT CreateOXAIXMLSAX2Factory(OXAIXMLSAX2Factory_var& factory, const GUID& clsid) {
    right_parser_asked = clsid == CLSID_XML4C_SAX;
    factory = the_factory;
    return factory_result;
}
