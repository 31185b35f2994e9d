// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include "support/temporary_folder.h"
#include "xml/parser.h"

namespace {

using namespace xml_tests;

TEST(XmlFactory, IsMadeForTheOneParser) {
    OXAIXMLSAX2Factory_var factory;
    EXPECT_EQ(CreateOXAIXMLSAX2Factory(factory, CLSID_XML4C_SAX), S_OK);
    ASSERT_FALSE(factory.IsNull());
    EXPECT_EQ(factory->IsAKindOf("OXAIXMLSAX2Factory"), 1);
}

TEST(XmlFactory, AnUnknownClassIdentifierGivesNull) {
    OXAIXMLSAX2Factory_var factory = make_factory();
    EXPECT_EQ(CreateOXAIXMLSAX2Factory(factory, GUID{}), E_NOINTERFACE);
    EXPECT_TRUE(factory.IsNull());
}

TEST(XmlFactory, ReadersAndSourcesOutliveIt) {
    OXAISAXXMLReader_var reader;
    OXAISAXInputSource_var source;
    {
        const OXAIXMLSAX2Factory_var factory = make_factory();
        EXPECT_EQ(factory->CreateXMLReader(reader), S_OK);
        EXPECT_EQ(factory->CreateInputSourceFromText("<a/>", "", source), S_OK);
    }
    EXPECT_EQ(reader->Parse(source), S_OK);
    EXPECT_EQ(reader->Parse(source), S_OK);
}

TEST(XmlFactory, SourcesKnowTheirIdentifiers) {
    const support::TemporaryFolder folder;
    const std::string path = folder.write("a.xml", "<a/>");
    const OXAIXMLSAX2Factory_var factory = make_factory();
    OXAISAXInputSource_var source;
    OXAUnicodeString text;
    EXPECT_EQ(factory->CreateInputSourceFromFile(path.c_str(), "public", source), S_OK);
    EXPECT_EQ(source->GetSystemId(text), S_OK);
    EXPECT_EQ(text_of(text), path);
    EXPECT_EQ(source->GetPublicId(text), S_OK);
    EXPECT_EQ(text_of(text), "public");
    EXPECT_EQ(factory->CreateInputSourceFromText("<a/>", "other", source), S_OK);
    EXPECT_EQ(source->GetSystemId(text), S_OK);
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(source->GetPublicId(text), S_OK);
    EXPECT_EQ(text_of(text), "other");
}

TEST(XmlFactory, AFileThatCannotBeOpenedFailsAndStillGivesASource) {
    const support::TemporaryFolder folder;
    const OXAIXMLSAX2Factory_var factory = make_factory();
    for (const std::string& path : {folder.path("absent.xml"), folder.path("."), std::string()}) {
        OXAISAXInputSource_var source;
        EXPECT_EQ(factory->CreateInputSourceFromFile(path.c_str(), "", source), E_FAIL) << path;
        EXPECT_FALSE(source.IsNull()) << path;
    }
}

TEST(XmlReader, HasThreeFeatures) {
    OXAISAXXMLReader_var reader;
    make_factory()->CreateXMLReader(reader);
    const auto feature = [&](const char* name) {
        bool value = false;
        EXPECT_EQ(reader->GetFeature(name, value), S_OK) << name;
        return value;
    };
    EXPECT_FALSE(feature(OXASAXXMLReaderOptions::ValidationFeature));
    EXPECT_TRUE(feature(OXASAXXMLReaderOptions::NamespacesFeature));
    EXPECT_FALSE(feature(OXASAXXMLReaderOptions::NamespacePrefixFeature));
    EXPECT_EQ(reader->SetFeature(OXASAXXMLReaderOptions::ValidationFeature, true), S_OK);
    EXPECT_EQ(reader->SetFeature(OXASAXXMLReaderOptions::NamespacesFeature, false), S_OK);
    EXPECT_EQ(reader->SetFeature(OXASAXXMLReaderOptions::NamespacePrefixFeature, true), S_OK);
    EXPECT_TRUE(feature(OXASAXXMLReaderOptions::ValidationFeature));
    EXPECT_FALSE(feature(OXASAXXMLReaderOptions::NamespacesFeature));
    EXPECT_TRUE(feature(OXASAXXMLReaderOptions::NamespacePrefixFeature));
    bool value = true;
    EXPECT_EQ(reader->SetFeature("no such feature", true), E_NOTIMPL);
    EXPECT_EQ(reader->GetFeature("no such feature", value), E_NOTIMPL);
    EXPECT_TRUE(value);
}

TEST(XmlReader, OffersItsSchemaLoaderByAQuery) {
    OXAISAXXMLReader_var reader;
    make_factory()->CreateXMLReader(reader);
    const OXAIXMLSchemaLoader_var loader(reader);
    ASSERT_FALSE(loader.IsNull());
    EXPECT_EQ(loader->IsEqual(reader.Get()), 1);
    EXPECT_EQ(OXAISAXXMLReader_var(loader), reader);
    auto* by_name = reader->QueryInterface("OXAIXMLSchemaLoader");
    EXPECT_EQ(by_name, loader.Get());
    by_name->Release();
    EXPECT_TRUE(OXAISAXContentHandler_var(reader).IsNull());
    reader.Reset();
    EXPECT_EQ(loader->ClearCache(), S_OK);
}

/// Not one of a factory's.
class ForeignSource final : public OXAISAXInputSource {
public:
    HRESULT GetPublicId(OXAUnicodeString&) override { return S_OK; }
    HRESULT GetSystemId(OXAUnicodeString&) override { return S_OK; }
};

TEST(XmlReader, RefusesANullSourceAndAForeignOne) {
    OXAISAXXMLReader_var reader;
    make_factory()->CreateXMLReader(reader);
    const OXAIXMLSchemaLoader_var loader(reader);
    EXPECT_EQ(reader->Parse(nullptr), E_POINTER);
    EXPECT_EQ(loader->LoadGrammar("k", nullptr), E_POINTER);
    const auto foreign = OXAISAXInputSource_var::Adopt(new ForeignSource);
    EXPECT_EQ(reader->Parse(foreign), E_NOINTERFACE);
    EXPECT_EQ(loader->LoadGrammar("k", foreign), E_NOINTERFACE);
}

TEST(XmlReader, ParsesWithoutHandlers) {
    OXAISAXXMLReader_var reader;
    const OXAIXMLSAX2Factory_var factory = make_factory();
    factory->CreateXMLReader(reader);
    OXAISAXInputSource_var good;
    OXAISAXInputSource_var bad;
    factory->CreateInputSourceFromText("<a>x<b c='d'/></a>", "", good);
    factory->CreateInputSourceFromText("<a>x<b c='d'></a>", "", bad);
    EXPECT_EQ(reader->Parse(good), S_OK);
    EXPECT_EQ(reader->Parse(bad), E_FAIL);
    EXPECT_EQ(reader->Parse(good), S_OK);
}

TEST(XmlReader, ANullHandlerClearsTheHandler) {
    Parser parser;
    EXPECT_EQ(parser.reader->SetContentHandler(nullptr), S_OK);
    EXPECT_EQ(parser.parse_text("<a>"), E_FAIL);
    EXPECT_TRUE(parser.events().empty());
    EXPECT_EQ(parser.count("fatal"), 1);
    EXPECT_EQ(parser.reader->SetErrorHandler(nullptr), S_OK);
    EXPECT_EQ(parser.parse_text("<a>"), E_FAIL);
    EXPECT_TRUE(parser.problems().empty());
}

}  // namespace
