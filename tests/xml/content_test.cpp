// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include "support/temporary_folder.h"
#include "xml/parser.h"

namespace {

using namespace xml_tests;
using Events = std::vector<std::string>;

TEST(XmlContent, ComesInDocumentOrder) {
    Parser parser;
    EXPECT_EQ(parser.parse_text("<?xml version='1.0'?><?p1 x?><a><b/>t<c>u</c></a><?p2?>"), S_OK);
    const Events expected = {"locator", "start document", "<?p1 x?>",    "<a a>",  "<b b>",
                             "</b b>",  "text t",         "<c c>",       "text u", "</c c>",
                             "</a a>",  "<?p2 ?>",        "end document"};
    EXPECT_EQ(parser.events(), expected);
    EXPECT_TRUE(parser.problems().empty()) << parser.said();
}

TEST(XmlContent, NamespacesGiveUriAndLocalName) {
    Parser parser;
    EXPECT_EQ(parser.parse_text("<a xmlns='d' xmlns:p='u'><p:b p:c='1' e='2'/></a>"), S_OK);
    const Events expected = {"locator",
                             "start document",
                             "prefix =d",
                             "prefix p=u",
                             "<{d}a a xmlns=d xmlns:p=u>",
                             "<{u}b p:b p:c=1 e=2>",
                             "</{u}b p:b>",
                             "</{d}a a>",
                             "end prefix p",
                             "end prefix ",
                             "end document"};
    EXPECT_EQ(parser.events(), expected);
}

TEST(XmlContent, WithoutTheFeatureDeclarationsAreNoAttributes) {
    Parser parser;
    parser.reader->SetFeature(OXASAXXMLReaderOptions::NamespacePrefixFeature, false);
    EXPECT_EQ(parser.parse_text("<p:a xmlns:p='u' b='1'/>"), S_OK);
    EXPECT_EQ(parser.events()[3], "<{u}a p:a b=1>");
}

TEST(XmlContent, WithoutNamespacesTheNameOfTheDocumentIsAllThereIs) {
    Parser parser;
    parser.reader->SetFeature(OXASAXXMLReaderOptions::NamespacesFeature, false);
    EXPECT_EQ(parser.parse_text("<p:a b='1'/>"), S_OK) << parser.said();
    const Events expected = {"locator", "start document", "< p:a b=1>", "</ p:a>", "end document"};
    EXPECT_EQ(parser.events(), expected);
}

TEST(XmlContent, ReferencesAndSectionsAreText) {
    Parser parser;
    EXPECT_EQ(parser.parse_text("<!DOCTYPE a [<!ELEMENT a (#PCDATA)><!ENTITY e 'E&#38;#38;'>]>"
                                "<a>&lt;&#65;&#x1F600;<![CDATA[<&]]>&e;\r\n<!-- no -->.</a>"),
              S_OK)
        << parser.said();
    const Events expected = {"locator", "start document", "<a a>", "text <A\xf0\x9f\x98\x80<&E&\n.",
                             "</a a>",  "end document"};
    EXPECT_EQ(parser.events(), expected);
}

/// Hears every piece of text.
class PieceHandler final : public OXASAXDefaultHandler {
public:
    std::string all;
    int pieces = 0;
    bool every_piece_is_valid = true;

    HRESULT Characters(const OXAUnicodeString& chars) override {
        const std::string piece = text_of(chars);
        all += piece;
        ++pieces;
        // A character that was split would begin, or end, within its bytes.
        if (piece.empty() || piece.find("\xef\xbf\xbd") != std::string::npos) every_piece_is_valid = false;
        return S_OK;
    }
};

TEST(XmlContent, LongTextsComeInPiecesThatSplitNoCharacter) {
    // Characters of two UTF-16 code units, at even and at odd places of whatever pieces there are.
    for (const std::string& start : {std::string(), std::string("x")}) {
        std::string text = start;
        while (text.size() < (std::size_t{9} << 20)) text += "\xf0\x9f\x98\x80";
        OXAISAXXMLReader_var reader;
        OXAISAXInputSource_var source;
        const OXAIXMLSAX2Factory_var factory = make_factory();
        factory->CreateXMLReader(reader);
        factory->CreateInputSourceFromText(("<a>" + text + "</a>").c_str(), "", source);
        const auto handler = OXAVar<PieceHandler>::Adopt(new PieceHandler);
        reader->SetContentHandler(OXAISAXContentHandler_var(handler));
        EXPECT_EQ(reader->Parse(source), S_OK);
        EXPECT_TRUE(handler->all == text);
        EXPECT_GT(handler->pieces, 1);
        EXPECT_TRUE(handler->every_piece_is_valid);
    }
}

TEST(XmlContent, ResultsOfTheHandlerDoNotStopTheParse) {
    class FailingHandler final : public RecordingHandler {
    public:
        HRESULT StartElement(const OXAUnicodeString& uri, const OXAUnicodeString& localName,
                             const OXAUnicodeString& qName,
                             const OXAISAXAttributes_var& attributes) override {
            RecordingHandler::StartElement(uri, localName, qName, attributes);
            return E_FAIL;
        }
        HRESULT Characters(const OXAUnicodeString&) override { return E_FAIL; }
    };
    Parser parser;
    const auto handler = OXAVar<FailingHandler>::Adopt(new FailingHandler);
    parser.reader->SetContentHandler(OXAISAXContentHandler_var(handler));
    EXPECT_EQ(parser.parse_text("<a>x<b/></a>"), S_OK);
    const Events expected = {"locator", "start document", "<a a>",       "<b b>",
                             "</b b>",  "</a a>",         "end document"};
    EXPECT_EQ(handler->events, expected);
}

TEST(XmlContent, AFileReadsAsTheSameTextInMemory) {
    const support::TemporaryFolder folder;
    const std::string text = "<a b='\xc3\xa9'>" + std::string(200000, 'x') + "\xe4\xba\x8c</a>";
    Parser memory;
    Parser file;
    EXPECT_EQ(memory.parse_text(text), S_OK);
    EXPECT_EQ(file.parse_file(folder.write("a.xml", text)), S_OK);
    EXPECT_EQ(memory.events(), file.events());
}

TEST(XmlAttributes, AnswerByIndexAndByName) {
    class AttributeHandler final : public OXASAXDefaultHandler {
    public:
        OXAISAXAttributes_var kept;

        HRESULT StartElement(const OXAUnicodeString&, const OXAUnicodeString&, const OXAUnicodeString&,
                             const OXAISAXAttributes_var& attributes) override {
            kept = attributes;
            unsigned int length = 0;
            EXPECT_EQ(attributes->GetLength(length), S_OK);
            EXPECT_EQ(length, 2U);
            OXAUnicodeString text("before");
            EXPECT_EQ(attributes->GetLocalName(0, text), S_OK);
            EXPECT_EQ(text_of(text), "b");
            EXPECT_EQ(attributes->GetQName(0, text), S_OK);
            EXPECT_EQ(text_of(text), "p:b");
            EXPECT_EQ(attributes->GetURI(0, text), S_OK);
            EXPECT_EQ(text_of(text), "u");
            EXPECT_EQ(attributes->GetValue(0, text), S_OK);
            EXPECT_EQ(text_of(text), "1 <");
            EXPECT_EQ(attributes->GetURI(1, text), S_OK);
            EXPECT_EQ(text_of(text), "");
            EXPECT_EQ(attributes->GetType(1, text), S_OK);
            EXPECT_EQ(text_of(text), "CDATA");
            EXPECT_EQ(attributes->GetValue("p:b", text), S_OK);
            EXPECT_EQ(text_of(text), "1 <");
            EXPECT_EQ(attributes->GetValue("\xc3\xa9", text), S_OK);
            EXPECT_EQ(text_of(text), "2");
            text = "kept";
            EXPECT_EQ(attributes->GetValue("b", text), E_FAIL);
            EXPECT_EQ(attributes->GetValue(2, text), E_FAIL);
            EXPECT_EQ(attributes->GetLocalName(2, text), E_FAIL);
            EXPECT_EQ(attributes->GetQName(2, text), E_FAIL);
            EXPECT_EQ(attributes->GetURI(2, text), E_FAIL);
            EXPECT_EQ(attributes->GetType(~0U, text), E_FAIL);
            EXPECT_EQ(text_of(text), "kept");
            return S_OK;
        }
    };
    OXAISAXXMLReader_var reader;
    OXAISAXInputSource_var source;
    const OXAIXMLSAX2Factory_var factory = make_factory();
    factory->CreateXMLReader(reader);
    factory->CreateInputSourceFromText("<a xmlns:p='u' p:b='1 &lt;' \xc3\xa9='2'>x</a>", "", source);
    const auto handler = OXAVar<AttributeHandler>::Adopt(new AttributeHandler);
    reader->SetContentHandler(OXAISAXContentHandler_var(handler));
    EXPECT_EQ(reader->Parse(source), S_OK);

    // Past the callback there are none.
    reader.Reset();
    unsigned int length = 7;
    OXAUnicodeString text;
    ASSERT_FALSE(handler->kept.IsNull());
    EXPECT_EQ(handler->kept->GetLength(length), S_OK);
    EXPECT_EQ(length, 0U);
    EXPECT_EQ(handler->kept->GetValue(0, text), E_FAIL);
    EXPECT_EQ(handler->kept->GetValue("p:b", text), E_FAIL);
}

TEST(XmlAttributes, DefaultsAndTypesComeFromTheDtd) {
    Parser parser;
    EXPECT_EQ(
        parser.parse_text("<!DOCTYPE a [<!ELEMENT a EMPTY><!ATTLIST a i ID #REQUIRED d CDATA 'x&#10;y'>]>"
                          "<a i='  one '/>"),
        S_OK)
        << parser.said();
    EXPECT_EQ(parser.events()[2], "<a a i=one d=x\ny>");
    EXPECT_TRUE(parser.problems().empty()) << parser.said();
}

}  // namespace
