#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>

#include "support/temporary_folder.h"
#include "xml/parser.h"

namespace {

using namespace xml_tests;

const std::string kDocument =
    "<?xml version='1.0' encoding='UTF-8'?>\n"
    "<!DOCTYPE a SYSTEM 'a.dtd' [<!ENTITY e 'x&#38;lt;'><!ENTITY % p '<!ELEMENT c (#PCDATA|b)*>'>%p;\n"
    "<!ATTLIST a d CDATA #FIXED '1' i ID #IMPLIED><!NOTATION n PUBLIC 'n'>]>\n"
    "<a xmlns:p='u' i='one'>\n  <b p:q='\xc3\xa9'>1 2.5 -3e4</b><!-- note --><?t data?>\n"
    "  <p:c>&e;&amp;&#x1F600;<![CDATA[<&]]>\xe4\xba\x8c</p:c>\n</a>\n";

const std::string kSchema =
    "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' xmlns='u' targetNamespace='u'>\n"
    "<xs:include schemaLocation='more.xsd'/><xs:element name='a'><xs:complexType><xs:sequence "
    "maxOccurs='3'>\n"
    "<xs:element name='b' type='t' minOccurs='0'/><xs:any processContents='lax'/></xs:sequence>\n"
    "<xs:attribute name='i' type='xs:token' default='x'/></xs:complexType>\n"
    "<xs:unique name='k'><xs:selector xpath='b'/><xs:field xpath='@i'/></xs:unique></xs:element>\n"
    "<xs:simpleType name='t'><xs:restriction base='xs:string'><xs:pattern value='[a-z]+(b|c)?'/>\n"
    "<xs:enumeration value='x'/></xs:restriction></xs:simpleType></xs:schema>\n";

/// The text with one to four changes: bytes replaced, inserted, removed, repeated or cut off.
std::string mutated(const std::string& text, std::mt19937& random) {
    constexpr std::string_view telling = "<>&;'\"!?-[]()%#/=:|*+, \n\0\xff\xc3x0";
    std::string result = text;
    for (unsigned changes = 1 + random() % 4; changes > 0 && !result.empty(); --changes) {
        const std::size_t place = random() % result.size();
        const std::size_t length = std::min<std::size_t>(1 + random() % 30, result.size() - place);
        const char byte = telling[random() % telling.size()];
        switch (random() % 6) {
            case 0:
                result[place] = byte;
                break;
            case 1:
                result.insert(place, 1, byte);
                break;
            case 2:
                result.erase(place, length);
                break;
            case 3:
                result.insert(random() % result.size(), result.substr(place, length));
                break;
            case 4:
                result[place] = static_cast<char>(random());
                break;
            default:
                if (random() % 8 == 0) result.resize(place);
        }
    }
    return result;
}

TEST(MutatedDocuments, AreReadOrEndInOneFatalError) {
    const support::TemporaryFolder folder;
    folder.write("a.dtd", "<!ELEMENT a (b|c)*><!ELEMENT b (#PCDATA)>");
    Parser parser;
    ASSERT_EQ(parser.parse_file(folder.write("a.xml", kDocument)), S_OK) << parser.said();
    std::mt19937 random(5);
    int read = 0;
    for (int i = 0; i < 2000; ++i) {
        const std::string text = mutated(kDocument, random);
        const HRESULT result = parser.parse_file(folder.write("a.xml", text));
        ASSERT_TRUE(result == S_OK || result == E_FAIL) << text;
        ASSERT_EQ(parser.count("fatal"), result == S_OK ? 0 : 1) << text;
        ASSERT_EQ(parser.events().back() == "end document", result == S_OK) << text;
        if (result == S_OK) ++read;
    }
    // Some changes do no harm to the form, most do.
    EXPECT_GT(read, 100);
    EXPECT_LT(read, 1500);
}

TEST(MutatedDocuments, AsSchemasAreLoadedOrHaveErrors) {
    const support::TemporaryFolder folder;
    folder.write("more.xsd",
                 "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element name='z'/></xs:schema>");
    Parser parser;
    ASSERT_EQ(parser.load_schema("k", folder.write("a.xsd", kSchema)), S_OK) << parser.said();
    std::mt19937 random(6);
    int loaded = 0;
    for (int i = 0; i < 1000; ++i) {
        const std::string text = mutated(kSchema, random);
        const HRESULT result = parser.load_schema("k", folder.write("a.xsd", text));
        ASSERT_EQ(result == S_OK, parser.count("fatal") + parser.count("error") == 0) << text;
        if (result == S_OK) ++loaded;
        ASSERT_EQ(parser.parse_text("<a xmlns='u' i='one'><b xmlns=''>x</b><z/></a>"), S_OK);
    }
    EXPECT_GT(loaded, 20);
    EXPECT_LT(loaded, 750);
}

}  // namespace
