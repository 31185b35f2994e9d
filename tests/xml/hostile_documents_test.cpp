// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include "support/temporary_folder.h"
#include "xml/in_limited_process.h"
#include "xml/parser.h"

namespace {

using namespace xml_tests;

constexpr std::size_t kGibibyte = std::size_t{1} << 30;

std::string repeated(std::string_view piece, std::size_t count) {
    std::string text;
    text.reserve(piece.size() * count);
    for (; count > 0; --count) text += piece;
    return text;
}

std::string numbered(const char* before, int number, const char* after) {
    return std::string(before).append(std::to_string(number)).append(after);
}

/// Keeps fatal errors only: a recording of these documents would be larger than they are.
class ProblemHandler final : public OXASAXDefaultHandler {
public:
    std::string fatal;
    int line = 0;

    HRESULT FatalError(OXASAXParseException* exception) override {
        fatal = text_of(exception->GetMessageW());
        line = exception->GetLineNumber();
        return S_OK;
    }
};

/// Parses the file and says how that ended: "ok", or the fatal error. In any case the reader must read the
/// next document.
std::string outcome_of(const std::string& path) {
    OXAISAXXMLReader_var reader;
    OXAISAXInputSource_var source;
    OXAISAXInputSource_var next;
    const OXAIXMLSAX2Factory_var factory = make_factory();
    factory->CreateXMLReader(reader);
    reader->SetFeature(OXASAXXMLReaderOptions::ValidationFeature, true);
    const auto handler = OXAVar<ProblemHandler>::Adopt(new ProblemHandler);
    reader->SetContentHandler(OXAISAXContentHandler_var(handler));
    reader->SetErrorHandler(OXAISAXErrorHandler_var(handler));
    factory->CreateInputSourceFromFile(path.c_str(), "", source);
    factory->CreateInputSourceFromText("<a/>", "", next);
    const HRESULT result = reader->Parse(source);
    const std::string fatal = handler->fatal;
    if (reader->Parse(next) != S_OK) return "the reader cannot be used again";
    if (result == S_OK) return fatal.empty() ? "ok" : "a fatal error, but success";
    if (handler->line < 1) return "no line";
    return fatal.empty() ? "a failure, but no fatal error" : fatal;
}

std::string outcome(const std::string& document) {
    const support::TemporaryFolder folder;
    const std::string path = folder.write("a.xml", document);
    return in_limited_process(kGibibyte, [&] { return outcome_of(path); });
}

/// Entities of which each is ten times the one before.
std::string nested_entities(const std::string& innermost) {
    std::string dtd = "<!DOCTYPE a [<!ELEMENT a ANY><!ENTITY e0 \"" + innermost + "\">";
    for (int i = 1; i < 10; ++i) {
        const std::string before = numbered("&e", i - 1, ";");
        dtd += numbered("<!ENTITY e", i, " \"") + repeated(before, 10) + "\">";
    }
    return dtd;
}

const char* const kTooOften = "entities are expanded more than 100000 times";

TEST(HostileDocuments, ABillionLaughsAreRefused) {
    for (const char* innermost : {"lol", ""}) {
        EXPECT_EQ(outcome(nested_entities(innermost) + "]><a>&e9;</a>"), kTooOften);
        EXPECT_EQ(outcome(nested_entities(innermost) + "]><a b='&e9;'/>"), kTooOften);
        EXPECT_EQ(outcome(nested_entities(innermost) + "<!ATTLIST a b CDATA '&e9;'>]><a/>"), kTooOften);
    }
    EXPECT_EQ(outcome("<!DOCTYPE a [<!ENTITY % p0 '<!--x-->'>" + repeated("%p0;", 100001) + "]><a/>"),
              kTooOften);
}

TEST(HostileDocuments, AnEntityIsNotOverlong) {
    EXPECT_EQ(
        outcome("<!DOCTYPE a [<!ELEMENT a ANY><!ENTITY e '" + std::string(65536, 'x') + "'>]><a>&e;</a>"),
        "ok");
    EXPECT_EQ(
        outcome("<!DOCTYPE a [<!ELEMENT a ANY><!ENTITY e '" + std::string(65537, 'x') + "'>]><a>&e;</a>"),
        "an entity is longer than 65536 characters");
    EXPECT_EQ(outcome("<!DOCTYPE a [<!ENTITY % e '" + std::string(65537, ' ') + "'>]><a/>"),
              "an entity is longer than 65536 characters");
}

TEST(HostileDocuments, ALongEntityIsNotExpandedWithoutEnd) {
    const std::string text(60000, 'x');
    const std::string dtd = "<!DOCTYPE a [<!ENTITY e '" + text + "'>";
    const std::string too_long = "entities and defaults make the document too long";
    EXPECT_EQ(outcome(dtd + "]><a>" + repeated("&e;", 50000) + "</a>"), too_long);
    EXPECT_EQ(outcome(dtd + "]><a>" + repeated("<b c='&e;'/>", 50000) + "</a>"), too_long);
    EXPECT_EQ(outcome(dtd + "]><a b='" + repeated("&e;", 50000) + "'/>"),
              "the document needs more memory than is allowed");
    EXPECT_EQ(outcome(dtd + "<!ATTLIST a b CDATA '" + repeated("&e;", 50000) + "'>]><a/>"),
              "the document needs more memory than is allowed");
    EXPECT_EQ(outcome("<!DOCTYPE a [<!ENTITY e '" + repeated("<!---->", 8000) + "'>]><a>" +
                      repeated("&e;", 50000) + "</a>"),
              "the expanded entities are too long together");
    EXPECT_EQ(outcome("<!DOCTYPE a [<!ENTITY % e '" + std::string(60000, ' ') + "'>" +
                      repeated("%e;", 50000) + "]><a/>"),
              "the expanded entities are too long together");
    const std::string elements =
        "<!ENTITY e '" + repeated("<b/>", 15000) + "'>]><a>" + repeated("&e;", 50000) + "</a>";
    EXPECT_EQ(outcome("<!DOCTYPE a [<!ELEMENT a ANY><!ELEMENT b EMPTY>" + elements), too_long);
    EXPECT_EQ(outcome("<!DOCTYPE a [" + elements), "the document has too many errors");
}

TEST(HostileDocuments, EntitiesMayAdd64MebibytesAndFourForEachByteOfTheDocument) {
    constexpr std::size_t added = std::size_t{64} << 20;
    constexpr std::size_t entity = 65536;
    constexpr std::size_t expansions = 1088;
    constexpr std::size_t element = 16;
    const std::size_t least = (expansions * entity + element - added + 3) / 4;
    const auto document_of = [&](std::size_t length) {
        const std::string begin =
            "<!DOCTYPE a [<!ELEMENT a ANY><!ENTITY e '" + std::string(entity, 'x') + "'><!--";
        const std::string end = "-->]><a>" + repeated("&e;", expansions) + "</a>";
        return begin + std::string(length - begin.size() - end.size(), '.') + end;
    };
    EXPECT_EQ(outcome(document_of(least)), "ok");
    EXPECT_EQ(outcome(document_of(least - 1)), "entities and defaults make the document too long");
}

TEST(HostileDocuments, DefaultsDoNotMakeADocumentLongWithoutEnd) {
    EXPECT_EQ(outcome("<!DOCTYPE a [<!ATTLIST b c CDATA '" + std::string(60000, 'x') + "'>]><a>" +
                      repeated("<b/>", 100000) + "</a>"),
              "entities and defaults make the document too long");
    std::string many = "<!DOCTYPE a [<!ATTLIST b";
    for (int i = 0; i < 10000; ++i) many += numbered(" c", i, " CDATA ''");
    EXPECT_EQ(outcome(many + ">]><a>" + repeated("<b/>", 100000) + "</a>"),
              "entities and defaults make the document too long");
}

TEST(HostileDocuments, EntitiesThatNestOrTurnInCirclesEnd) {
    std::string chain = "<!DOCTYPE a [<!ENTITY e0 'x'>";
    for (int i = 1; i < 20000; ++i) {
        chain += numbered("<!ENTITY e", i, " '") + numbered("&e", i - 1, ";'>");
    }
    EXPECT_EQ(outcome(chain + "]><a>&e19999;</a>"), "the document needs more memory than is allowed");
    const std::string circle = outcome("<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f '&e;'>]><a>&e;</a>");
    EXPECT_NE(circle.find("recursive"), std::string::npos) << circle;
}

TEST(HostileDocuments, OrdinaryEntitiesAreExpandedAsOftenAsTheyOccur) {
    EXPECT_EQ(outcome("<!DOCTYPE a [<!ENTITY e 'x'>]><a>" + repeated("&e;&lt;&#65;", 50000) + "</a>"), "ok");
}

TEST(HostileDocuments, ElementsNestTenThousandDeepAtMost) {
    EXPECT_EQ(outcome(repeated("<a>", 10000) + repeated("</a>", 10000)), "ok");
    EXPECT_EQ(outcome(repeated("<a>", 10001) + repeated("</a>", 10001)),
              "elements are nested more than 10000 deep");
    EXPECT_EQ(outcome(repeated("<a>", 100000) + repeated("</a>", 100000)),
              "elements are nested more than 10000 deep");
    // Wide is not deep.
    EXPECT_EQ(outcome("<a>" + repeated("<b></b>", 20000) + "</a>"), "ok");
}

TEST(HostileDocuments, ManyElementsDoNotLieDeepOrAmongManyNamespaces) {
    const std::string too_many = "too many elements lie too deep or among too many namespace declarations";
    EXPECT_EQ(outcome(repeated("<a>", 9000) + repeated("<b/>", 1000000) + repeated("</a>", 9000)), too_many);
    std::string prefixes = "<a";
    for (int i = 0; i < 50000; ++i) prefixes += numbered(" xmlns:p", i, "='u'");
    EXPECT_EQ(outcome(prefixes + ">" + repeated("<b/>", 1000000) + "</a>"), too_many);
}

TEST(HostileDocuments, APrefixIsInScopeInItsElementAlone) {
    EXPECT_EQ(outcome("<a>" + repeated("<b xmlns:p='u'/>", 200000) + "</a>"), "ok");
}

TEST(HostileDocuments, FiftyMegabytesInOnePieceHaveAResult) {
    const std::string text(50'000'000, 'x');
    EXPECT_EQ(outcome("<a b='" + text + "'/>"), "the document needs more memory than is allowed");
    EXPECT_EQ(outcome("<a><![CDATA[" + text + "]]></a>"), "ok");
    EXPECT_EQ(outcome("<a><!--" + text + "--><?p " + text.substr(0, 1000000) + "?></a>"), "ok");
    EXPECT_FALSE(outcome("<" + text + "/>").empty());
}

TEST(HostileDocuments, MillionsOfAttributesHaveAResult) {
    std::string element = "<a";
    for (int i = 0; i < 3'000'000; ++i) element += numbered(" a", i, "=''");
    EXPECT_EQ(outcome(element + "/>"), "the document needs more memory than is allowed");
}

TEST(HostileDocuments, AContentModelIsNotTooLarge) {
    const auto model = [](int names, const char* separator) {
        std::string text = "<!DOCTYPE a [<!ELEMENT a (b0";
        for (int i = 1; i < names; ++i) text += separator + numbered("b", i, "");
        return text + ")>]><a><b0/></a>";
    };
    for (const char* separator : {",", "|"}) {
        EXPECT_EQ(outcome(model(1000, separator)), "ok");
        EXPECT_EQ(outcome(model(100000, separator)), "a content model is too large");
    }
    EXPECT_EQ(
        outcome("<!DOCTYPE a [<!ELEMENT a " + repeated("(", 60000) + "b" + repeated(")?", 60000) + ">]><a/>"),
        "a content model is too large");
    // Two to the twenty-fourth states.
    EXPECT_EQ(outcome("<!DOCTYPE a [<!ELEMENT a ((a|b)*,a" + repeated(",(a|b)", 24) + ")>]><a><b/></a>"),
              "the document needs more memory than is allowed");
}

TEST(HostileDocuments, AContentModelHasTenThousandNamesAndOperatorsAtMost) {
    const auto declared = [](int elements, int names) {
        std::string model = "(b0";
        for (int i = 1; i < names; ++i) model += numbered(",b", i, "");
        std::string dtd = "<!DOCTYPE a [";
        for (int i = 0; i < elements; ++i) dtd += numbered("<!ELEMENT e", i, " ") + model + ")>";
        return dtd + "]><a/>";
    };
    const std::string too_large = "a content model is too large";
    // The parser makes one or two nodes of its own beside these.
    EXPECT_EQ(outcome(declared(1, 4990)), "ok");
    EXPECT_EQ(outcome(declared(1, 5001)), too_large);
    // All together have 65,536.
    EXPECT_EQ(outcome(declared(6, 4990)), "ok");
    EXPECT_EQ(outcome(declared(7, 4990)), too_large);
}

TEST(HostileDocuments, TextsOfNoLengthPassForAContentModel) {
    for (int length = 24; length <= 38; ++length) {
        const auto padded = [&](int number) {
            std::string name = numbered("n", number, "");
            name.resize(static_cast<std::size_t>(length), 'x');
            return name;
        };
        std::string elements = "<a>";
        std::string dtd = "<!DOCTYPE a [<!ELEMENT a EMPTY>";
        for (int i = 0; i < 10'001; ++i) {
            elements.append("<").append(padded(i)).append(" xmlns='").append(padded(i)).append("'/>");
            dtd += numbered("<!ENTITY e", i, " '") + padded(i) + numbered("'><!NOTATION n", i, " SYSTEM ''>");
            dtd += numbered("<!ATTLIST b", i / 100, " ") + padded(i) + " CDATA #IMPLIED>";
        }
        EXPECT_EQ(outcome(elements + "</a>"), "ok") << length;
        EXPECT_EQ(outcome(dtd + "]><a/>"), "ok") << length;
    }
}

TEST(HostileDocuments, DeclaredAttributesAreNotLookedThroughWithoutEnd) {
    const std::string begin = "<!DOCTYPE a [<!ELEMENT a ANY><!ELEMENT b EMPTY><!ATTLIST b";
    const std::string too_many =
        "too many elements have too many declared attributes or values of attributes";
    std::string implied = begin;
    for (int i = 0; i < 10000; ++i) implied += numbered(" c", i, " CDATA #IMPLIED");
    EXPECT_EQ(outcome(implied + ">]><a>" + repeated("<b/>", 100000) + "</a>"), too_many);
    EXPECT_EQ(outcome(implied + ">]><a>" + repeated("<b/>", 1000) + repeated("<a/>", 100000) + "</a>"), "ok");

    const auto enumeration = [&](int values) {
        std::string dtd = begin + " c (v0";
        for (int i = 1; i < values; ++i) dtd += numbered("|v", i, "");
        return dtd + ") #IMPLIED>]><a>";
    };
    EXPECT_EQ(outcome(enumeration(2000) + repeated("<b c='v1999'/>", 100000) + "</a>"), too_many);
    EXPECT_EQ(outcome(enumeration(100) + repeated("<b c='v99'/>", 100000) + "</a>"), "ok");
    const auto value = [](std::size_t length) {
        return "<!DOCTYPE a [<!ATTLIST a b (" + std::string(length, 'x') + ") #IMPLIED>]><a/>";
    };
    EXPECT_EQ(outcome(value(16382)), "ok");
    EXPECT_EQ(outcome(value(16383)), "an enumeration of values is longer than 16384 characters");
    EXPECT_EQ(outcome(enumeration(100000) + "<b c='v1'/></a>"),
              "an enumeration of values is longer than 16384 characters");
}

TEST(HostileDocuments, ErrorsAreNotReportedWithoutEnd) {
    std::string required = "<!DOCTYPE a [<!ELEMENT a ANY><!ELEMENT b EMPTY><!ATTLIST b";
    for (int i = 0; i < 1000; ++i) required += numbered(" c", i, " CDATA #REQUIRED");
    EXPECT_EQ(outcome(required + ">]><a>" + repeated("<b/>", 10000) + "</a>"),
              "the document has too many errors");
    EXPECT_EQ(outcome(required + ">]><a>" + repeated("<b/>", 50) + repeated("<x/>", 100000) + "</a>"), "ok");
}

}  // namespace
