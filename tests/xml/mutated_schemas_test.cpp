// SPDX-License-Identifier: Apache-2.0

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>

#include "support/temporary_folder.h"
#include "xml/parser.h"

namespace {

using namespace xml_tests;

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

TEST(MutatedSchemas, AreLoadedOrHaveErrors) {
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
