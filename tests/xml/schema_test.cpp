// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include "support/temporary_folder.h"
#include "xml/parser.h"

namespace {

using namespace xml_tests;

/// A schema for a root element with integer children of one name, without or with a namespace.
std::string schema_of(const std::string& root, const std::string& child, const std::string& target = "") {
    const std::string namespaces =
        target.empty() ? "" : " targetNamespace='" + target + "' elementFormDefault='qualified'";
    return "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'" + namespaces + "><xs:element name='" +
           root + "'><xs:complexType><xs:sequence><xs:element name='" + child +
           "' type='xs:int' maxOccurs='unbounded'/></xs:sequence></xs:complexType></xs:element></xs:schema>";
}

class XmlSchema : public testing::Test {
protected:
    support::TemporaryFolder folder;
    Parser parser;

    HRESULT load(const std::string& key, const std::string& text) {
        return parser.load_schema(key, folder.write(key + ".xsd", text));
    }
    bool is_valid(const std::string& document) {
        EXPECT_EQ(parser.parse_text(document), S_OK) << parser.said();
        return parser.count("error") == 0;
    }
};

TEST_F(XmlSchema, WithoutOneNothingIsChecked) {
    EXPECT_TRUE(is_valid("<a><b>x</b></a>"));
    EXPECT_TRUE(parser.problems().empty()) << parser.said();
}

TEST_F(XmlSchema, ChecksEveryFollowingDocument) {
    ASSERT_EQ(load("k", schema_of("a", "b")), S_OK) << parser.said();
    EXPECT_TRUE(parser.problems().empty()) << parser.said();
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(is_valid("<a><b>1</b><b>2</b></a>"));
        EXPECT_FALSE(is_valid("<a><b>one</b></a>"));
        EXPECT_FALSE(is_valid("<a><c/></a>"));
        EXPECT_FALSE(is_valid("<a/>"));
        EXPECT_FALSE(is_valid("<unknown/>"));
    }
}

TEST_F(XmlSchema, AValidityErrorHasItsPlaceAndDoesNotEndTheParse) {
    ASSERT_EQ(load("k", schema_of("a", "b")), S_OK);
    EXPECT_FALSE(is_valid("<a>\n<b>x</b><b>2</b></a>"));
    EXPECT_EQ(parser.problems().at(0).severity, "error");
    EXPECT_EQ(parser.problems().at(0).line, 2);
    EXPECT_EQ(parser.events().back(), "end document");
}

TEST_F(XmlSchema, WithoutValidationNothingIsChecked) {
    ASSERT_EQ(load("k", schema_of("a", "b")), S_OK);
    parser.reader->SetFeature(OXASAXXMLReaderOptions::ValidationFeature, false);
    EXPECT_TRUE(is_valid("<a><b>x</b></a>"));
    parser.reader->SetFeature(OXASAXXMLReaderOptions::ValidationFeature, true);
    EXPECT_FALSE(is_valid("<a><b>x</b></a>"));
}

TEST_F(XmlSchema, WhiteSpaceBetweenElementsIsIgnorable) {
    ASSERT_EQ(load("k", schema_of("a", "b")), S_OK);
    EXPECT_TRUE(is_valid("<a>  <b>1</b></a>"));
    EXPECT_EQ(parser.events().at(3), "space 2");
}

TEST_F(XmlSchema, ClearingUndoesTheLoading) {
    ASSERT_EQ(load("k", schema_of("a", "b")), S_OK);
    EXPECT_FALSE(is_valid("<a><b>x</b></a>"));
    EXPECT_EQ(OXAIXMLSchemaLoader_var(parser.reader)->ClearCache(), S_OK);
    EXPECT_TRUE(is_valid("<a><b>x</b></a>"));
    EXPECT_TRUE(is_valid("<unknown/>"));
    EXPECT_EQ(OXAIXMLSchemaLoader_var(parser.reader)->ClearCache(), S_OK);
    ASSERT_EQ(load("k", schema_of("a", "c")), S_OK);
    EXPECT_TRUE(is_valid("<a><c>1</c></a>"));
    EXPECT_FALSE(is_valid("<a><b>1</b></a>"));
}

TEST_F(XmlSchema, TheSameKeyReplaces) {
    ASSERT_EQ(load("k", schema_of("a", "b", "u")), S_OK);
    EXPECT_TRUE(is_valid("<a xmlns='u'><b>1</b></a>"));
    ASSERT_EQ(load("k", schema_of("a", "c", "u")), S_OK);
    EXPECT_FALSE(is_valid("<a xmlns='u'><b>1</b></a>"));
    EXPECT_TRUE(is_valid("<a xmlns='u'><c>1</c></a>"));
    // Another namespace under the key: nothing of the first is left.
    ASSERT_EQ(load("k", schema_of("r", "b", "v")), S_OK);
    EXPECT_TRUE(is_valid("<r xmlns='v'><b>1</b></r>"));
    EXPECT_FALSE(is_valid("<a xmlns='u'><c>1</c></a>"));
}

TEST_F(XmlSchema, AnotherKeyAddsOfAnotherNamespace) {
    ASSERT_EQ(load("u", schema_of("a", "b", "u")), S_OK);
    ASSERT_EQ(load("v", schema_of("a", "c", "v")), S_OK);
    EXPECT_TRUE(is_valid("<a xmlns='u'><b>1</b></a>"));
    EXPECT_TRUE(is_valid("<a xmlns='v'><c>1</c></a>"));
    EXPECT_FALSE(is_valid("<a xmlns='u'><c>1</c></a>"));
}

TEST_F(XmlSchema, AnotherKeyAddsOfTheSameNamespace) {
    ASSERT_EQ(load("one", schema_of("a", "b", "u")), S_OK);
    ASSERT_EQ(load("two", schema_of("r", "c", "u")), S_OK) << parser.said();
    EXPECT_TRUE(is_valid("<a xmlns='u'><b>1</b></a>"));
    EXPECT_TRUE(is_valid("<r xmlns='u'><c>1</c></r>"));
    EXPECT_FALSE(is_valid("<r xmlns='u'><b>1</b></r>"));
    // Of two that share a namespace one is replaced alone.
    ASSERT_EQ(load("two", schema_of("s", "d", "u")), S_OK) << parser.said();
    EXPECT_TRUE(is_valid("<a xmlns='u'><b>1</b></a>"));
    EXPECT_TRUE(is_valid("<s xmlns='u'><d>1</d></s>"));
    EXPECT_FALSE(is_valid("<r xmlns='u'><c>1</c></r>"));
}

TEST_F(XmlSchema, AnotherKeyAddsWithoutANamespace) {
    ASSERT_EQ(load("one", schema_of("a", "b")), S_OK);
    ASSERT_EQ(load("two", schema_of("r", "c")), S_OK) << parser.said();
    EXPECT_TRUE(is_valid("<a><b>1</b></a>"));
    EXPECT_TRUE(is_valid("<r><c>1</c></r>"));
    EXPECT_FALSE(is_valid("<r><b>1</b></r>"));
}

TEST_F(XmlSchema, OfANameThatTwoKeysDeclareTheFirstDeclarationHolds) {
    ASSERT_EQ(load("one", schema_of("a", "b", "u")), S_OK);
    ASSERT_EQ(load("two", schema_of("a", "c", "u")), S_OK);
    EXPECT_TRUE(is_valid("<a xmlns='u'><b>1</b></a>"));
    EXPECT_FALSE(is_valid("<a xmlns='u'><c>1</c></a>"));
}

TEST_F(XmlSchema, TextsInMemoryLoadAsFilesDo) {
    ASSERT_EQ(parser.load_schema_text("one", schema_of("a", "b", "u")), S_OK) << parser.said();
    ASSERT_EQ(parser.load_schema_text("two", schema_of("r", "c", "u")), S_OK) << parser.said();
    EXPECT_TRUE(is_valid("<a xmlns='u'><b>1</b></a>"));
    EXPECT_TRUE(is_valid("<r xmlns='u'><c>1</c></r>"));
    EXPECT_FALSE(is_valid("<r xmlns='u'><b>1</b></r>"));
}

TEST_F(XmlSchema, AWrongSchemaFailsAndLeavesTheOthersAsTheyWere) {
    ASSERT_EQ(load("k", schema_of("a", "b")), S_OK);
    for (const std::string& wrong :
         {std::string(
              "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element name='z' type='none'/>"
              "</xs:schema>"),
          std::string("<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element"),
          std::string("<a/>"), std::string(), std::string("\xff")}) {
        for (const char* key : {"k", "other"}) {
            EXPECT_EQ(load(key, wrong), E_FAIL) << wrong;
            EXPECT_GT(parser.count("error") + parser.count("fatal"), 0) << wrong;
            EXPECT_TRUE(is_valid("<a><b>1</b></a>"));
            EXPECT_FALSE(is_valid("<a><b>x</b></a>"));
        }
    }
}

TEST_F(XmlSchema, AMissingSchemaIsAFatalErrorThatNamesThePath) {
    const std::string path = folder.path("absent.xsd");
    EXPECT_EQ(parser.load_schema("k", path), E_FAIL);
    EXPECT_NE(parser.fatal_error().message.find(path), std::string::npos);
    EXPECT_TRUE(is_valid("<a><b>x</b></a>"));
}

TEST_F(XmlSchema, AProblemOfASchemaNamesItsFile) {
    const std::string path =
        folder.write("k.xsd",
                     "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>\n<xs:element name='a' "
                     "type='none'/></xs:schema>");
    EXPECT_EQ(parser.load_schema("k", path), E_FAIL);
    ASSERT_FALSE(parser.problems().empty());
    EXPECT_EQ(parser.problems()[0].line, 2);
    EXPECT_EQ(parser.problems()[0].system_id, path);
}

TEST_F(XmlSchema, IncludesFilesOfItsFolder) {
    folder.write("types.xsd",
                 "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:simpleType name='t'>"
                 "<xs:restriction base='xs:int'/></xs:simpleType></xs:schema>");
    const std::string including =
        "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:include schemaLocation='types.xsd'/>"
        "<xs:element name='a' type='t'/></xs:schema>";
    ASSERT_EQ(load("k", including), S_OK) << parser.said();
    EXPECT_TRUE(is_valid("<a>1</a>"));
    EXPECT_FALSE(is_valid("<a>x</a>"));

    // What was loaded stays as it was, whatever becomes of the files, while others come and go.
    folder.write("types.xsd", "gone");
    folder.write("k.xsd", "gone");
    ASSERT_EQ(load("other", schema_of("r", "b", "v")), S_OK) << parser.said();
    EXPECT_TRUE(is_valid("<a>1</a>"));
    EXPECT_FALSE(is_valid("<a>x</a>"));
    EXPECT_TRUE(is_valid("<r xmlns='v'><b>1</b></r>"));
}

TEST_F(XmlSchema, IncludesAThousandFilesAtMost) {
    const std::string begin = "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>";
    const auto including = [&](int files) {
        std::string schema = begin;
        for (int i = 0; i < files; ++i) {
            const std::string name = "s" + std::to_string(i) + ".xsd";
            folder.write(name, begin + "</xs:schema>");
            schema += "<xs:include schemaLocation='" + name + "'/>";
        }
        return schema + "<xs:element name='a'/></xs:schema>";
    };
    EXPECT_EQ(load("k", including(1000)), S_OK) << parser.said();
    EXPECT_TRUE(parser.problems().empty()) << parser.said();
    // Each file that is left out has its warning.
    EXPECT_EQ(load("k", including(1002)), S_OK) << parser.said();
    ASSERT_EQ(parser.problems().size(), 2U) << parser.said();
    for (const int left_out : {0, 1}) {
        const Problem& warning = parser.problems().at(static_cast<std::size_t>(left_out));
        EXPECT_EQ(warning.severity, "warning");
        EXPECT_EQ(warning.message, "the file \"s" + std::to_string(1000 + left_out) +
                                       ".xsd\" is not read: more than 1000 external files are read");
    }
}

TEST_F(XmlSchema, MayHaveADtdBesideIt) {
    folder.write("k.dtd", "<!ATTLIST xs:element id ID #IMPLIED>");
    EXPECT_EQ(load("k",
                   "<!DOCTYPE xs:schema SYSTEM 'k.dtd'><xs:schema "
                   "xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element name='a'/></xs:schema>"),
              S_OK)
        << parser.said();
    EXPECT_TRUE(parser.problems().empty()) << parser.said();
    EXPECT_TRUE(is_valid("<a/>"));
    EXPECT_FALSE(is_valid("<b/>"));
}

TEST_F(XmlSchema, AnIncludeOutsideTheFolderIsRefused) {
    std::filesystem::create_directory(folder.path("inside"));
    folder.write("types.xsd",
                 "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:simpleType name='t'>"
                 "<xs:restriction base='xs:int'/></xs:simpleType></xs:schema>");
    std::filesystem::create_symlink(folder.path("types.xsd"), folder.path("inside/link.xsd"));
    for (const std::string& location :
         {std::string("../types.xsd"), folder.path("types.xsd"), std::string("link.xsd"),
          "file://" + folder.path("types.xsd"), std::string("absent.xsd"),
          std::string("http://localhost:9/types.xsd")}) {
        const std::string path = folder.write(
            "inside/k.xsd",
            "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:include schemaLocation='" + location +
                "'/><xs:element name='a' type='t'/></xs:schema>");
        EXPECT_EQ(parser.load_schema("k", path), E_FAIL) << location;
        EXPECT_GT(parser.count("warning"), 0) << location;
        EXPECT_NE(parser.said().find(location), std::string::npos) << parser.said();
    }
}

TEST_F(XmlSchema, AnImportFromTheWebIsAWarningWhereNothingNeedsIt) {
    EXPECT_EQ(load("k",
                   "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:import namespace='w' "
                   "schemaLocation='http://localhost:9/w.xsd'/><xs:element name='a'/></xs:schema>"),
              S_OK)
        << parser.said();
    EXPECT_EQ(parser.count("warning"), 1) << parser.said();
    EXPECT_TRUE(is_valid("<a/>"));
    EXPECT_FALSE(is_valid("<b/>"));
}

TEST_F(XmlSchema, WarningsAreReportedOnce) {
    ASSERT_EQ(load("k",
                   "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:import namespace='w' "
                   "schemaLocation='absent.xsd'/><xs:element name='a'/></xs:schema>"),
              S_OK)
        << parser.said();
    EXPECT_EQ(parser.count("warning"), 1) << parser.said();
    ASSERT_EQ(load("other", schema_of("r", "b", "v")), S_OK) << parser.said();
    EXPECT_TRUE(parser.problems().empty()) << parser.said();
}

TEST_F(XmlSchema, ARefusalAfterAFatalErrorIsNoSecondOne) {
    folder.write("malformed.xsd", "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>");
    std::string schema =
        "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:include "
        "schemaLocation='malformed.xsd'/><xs:element name='a'><xs:complexType><xs:sequence>";
    for (int i = 0; i < 100000; ++i) schema += "<xs:element name='b" + std::to_string(i) + "'/>";
    schema += "</xs:sequence></xs:complexType></xs:element></xs:schema>";
    EXPECT_EQ(load("k", schema), E_FAIL);
    EXPECT_EQ(parser.fatal_error().system_id, folder.path("malformed.xsd"));
}

TEST_F(XmlSchema, HintsOfADocumentAreNeitherFollowedNorFailures) {
    const std::string hints =
        "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
        "xsi:noNamespaceSchemaLocation='http://localhost:9/a.xsd' "
        "xsi:schemaLocation='u http://localhost:9/u.xsd v absent.xsd'";
    EXPECT_TRUE(is_valid("<a " + hints + "><b>x</b></a>"));
    EXPECT_TRUE(parser.problems().empty()) << parser.said();
    ASSERT_EQ(load("k", schema_of("a", "b")), S_OK);
    EXPECT_TRUE(is_valid("<a " + hints + "><b>1</b></a>")) << parser.said();
    EXPECT_TRUE(parser.problems().empty()) << parser.said();
    EXPECT_FALSE(is_valid("<a " + hints + "><b>x</b></a>"));
}

TEST_F(XmlSchema, ADocumentWithADtdIsCheckedAgainstThat) {
    ASSERT_EQ(load("k", schema_of("a", "b")), S_OK);
    EXPECT_TRUE(is_valid("<?p?><!DOCTYPE a [<!ELEMENT a (c)><!ELEMENT c EMPTY>]><a><c/></a>"))
        << parser.said();
    const std::vector<std::string> expected = {"locator", "start document", "<?p ?>", "<a a>",
                                               "<c c>",   "</c c>",         "</a a>", "end document"};
    EXPECT_EQ(parser.events(), expected);
    EXPECT_FALSE(is_valid("<!DOCTYPE a [<!ELEMENT a (c)><!ELEMENT c EMPTY>]><a><b>1</b></a>"));
    EXPECT_TRUE(is_valid("<a><b>1</b></a>"));
}

TEST_F(XmlSchema, AContentModelThatADocumentBuildsIsNotTooLarge) {
    std::string choice = "<xs:choice>";
    for (int i = 0; i < 10000; ++i) choice += "<xs:element name='b" + std::to_string(i) + "'/>";
    const std::string repeated =
        "<xs:sequence maxOccurs='10000'><xs:element name='b'/><xs:element name='c' "
        "minOccurs='0'/></xs:sequence>";
    for (const std::string& model : {choice + "</xs:choice>", repeated}) {
        ASSERT_EQ(load("k",
                       "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element name='a'>"
                       "<xs:complexType>" +
                           model +
                           "</xs:complexType></xs:element><xs:element name='s' type='xs:int'/></xs:schema>"),
                  S_OK)
            << parser.said();
        EXPECT_EQ(parser.parse_text("<a><b/></a>"), E_FAIL);
        EXPECT_EQ(parser.fatal_error().message, "a content model is too large");
        EXPECT_TRUE(is_valid("<s>1</s>"));
    }
}

TEST_F(XmlSchema, ADocumentOfManyUndeclaredNamesIsRefused) {
    ASSERT_EQ(load("k", schema_of("a", "b")), S_OK);
    std::string namespaces = "<a>";
    std::string names = "<a>";
    std::string few = "<a>";
    for (int i = 0; i < 100000; ++i) {
        namespaces += "<e xmlns='u" + std::to_string(i) + "'/>";
        names += "<e" + std::to_string(i) + "/>";
        few += "<e" + std::to_string(i % 1000) + "/>";
    }
    const std::string too_many = "too many elements have too many different names";
    for (const std::string& hostile : {namespaces, names}) {
        EXPECT_EQ(parser.parse_text(hostile + "</a>"), E_FAIL);
        EXPECT_EQ(parser.fatal_error().message, too_many);
        EXPECT_TRUE(is_valid("<a><b>1</b></a>"));
    }
    EXPECT_EQ(parser.parse_text(few + "</a>"), S_OK) << parser.problems().back().message;
}

TEST_F(XmlSchema, NamespacesOfDocumentsDoNotFillTheMemoryOfTheSchemas) {
    ASSERT_EQ(load("k", schema_of("a", "b")), S_OK);
    const std::string padding(1'000'000, 'x');
    int number = 0;
    for (int document = 0; document < 6; ++document) {
        // 60 MB in the parser's memory, of 256 MiB.
        std::string text = "<a>";
        for (int i = 0; i < 30; ++i) text += "<e xmlns='u" + std::to_string(number++) + padding + "'/>";
        EXPECT_EQ(parser.parse_text(text + "</a>"), S_OK) << parser.problems().back().message;
    }
    EXPECT_TRUE(is_valid("<a xmlns:new='" + padding + "'><b>1</b></a>"));
    EXPECT_FALSE(is_valid("<a><b>x</b></a>"));
}

TEST_F(XmlSchema, NestsTwoHundredAndFiftySixDeepAtMost) {
    const auto nested = [](int depth) {
        std::string schema =
            "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element name='a'><xs:complexType>";
        for (int i = 3; i < depth; ++i) schema += "<xs:sequence>";
        for (int i = 3; i < depth; ++i) schema += "</xs:sequence>";
        return schema + "</xs:complexType></xs:element></xs:schema>";
    };
    EXPECT_EQ(load("k", nested(256)), S_OK) << parser.said();
    EXPECT_TRUE(is_valid("<a/>"));
    EXPECT_EQ(load("k", nested(257)), E_FAIL);
    EXPECT_EQ(parser.fatal_error().message, "elements are nested more than 256 deep");
    const std::string path = folder.write("included.xsd", nested(257));
    EXPECT_EQ(load("k",
                   "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:include "
                   "schemaLocation='included.xsd'/></xs:schema>"),
              E_FAIL);
    EXPECT_EQ(parser.fatal_error().message, "elements are nested more than 256 deep");
    EXPECT_EQ(parser.fatal_error().system_id, path);
}

TEST_F(XmlSchema, AHostileSchemaIsRefused) {
    const std::string begin = "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>";
    std::string deep = begin + "<xs:element name='a'><xs:complexType>";
    for (int i = 0; i < 50000; ++i) deep += "<xs:sequence>";
    std::string wide = begin + "<xs:element name='a'><xs:complexType><xs:sequence>";
    for (int i = 0; i < 100000; ++i) wide += "<xs:element name='b" + std::to_string(i) + "'/>";
    wide += "</xs:sequence></xs:complexType></xs:element></xs:schema>";
    std::string groups =
        begin + "<xs:group name='g0'><xs:sequence><xs:element name='x'/></xs:sequence></xs:group>";
    for (int i = 1; i < 12; ++i) {
        groups += "<xs:group name='g" + std::to_string(i) + "'><xs:sequence>";
        for (int k = 0; k < 10; ++k) groups += "<xs:group ref='g" + std::to_string(i - 1) + "'/>";
        groups += "</xs:sequence></xs:group>";
    }
    groups +=
        "<xs:element name='a'><xs:complexType><xs:group "
        "ref='g11'/></xs:complexType></xs:element></xs:schema>";
    std::string entities = "<!DOCTYPE xs:schema [<!ENTITY e0 'x'>";
    for (int i = 1; i < 12; ++i) {
        entities += "<!ENTITY e" + std::to_string(i) + " '";
        for (int k = 0; k < 10; ++k) entities += "&e" + std::to_string(i - 1) + ";";
        entities += "'>";
    }
    entities += "]>" + begin +
                "<xs:annotation><xs:documentation>&e11;</xs:documentation></xs:annotation></xs:schema>";
    for (const std::string& hostile : {deep, wide, groups, entities}) {
        EXPECT_EQ(load("k", hostile), E_FAIL);
        parser.fatal_error();
    }
    EXPECT_EQ(load("k", schema_of("a", "b")), S_OK) << parser.said();
}

}  // namespace
