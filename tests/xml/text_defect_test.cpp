// SPDX-License-Identifier: Apache-2.0

#include "text/text_defect.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>
#include <utf8.h>
#include <vector>

#include "support/temporary_folder.h"
#include "xml/parser.h"

namespace {

using namespace std::string_view_literals;
using namespace xml_tests;
using sax::Encoding;
using sax::TextDefect;

TextDefect defect_of(std::string_view text, Encoding encoding) {
    // A block of just this size lets a sanitizer see a read beyond it.
    const std::vector<unsigned char> bytes(text.begin(), text.end());
    return find_defect(bytes.data(), bytes.size(), encoding);
}

TEST(TextDefect, FindsTheFirstDefectOfUtf8) {
    struct Case {
        std::string_view text;
        std::size_t offset;
        bool cut;
    };
    for (const Case& c : {Case{"a\x80", 1, false},             // a continuation byte alone
                          Case{"ab\xc0\xaf", 2, false},        // overlong, two bytes
                          Case{"\xc1\xbf", 0, false},          //
                          Case{"\xe0\x9f\xbf", 0, false},      // overlong, three bytes
                          Case{"\xf0\x8f\xbf\xbf", 0, false},  // overlong, four bytes
                          Case{"a\xed\xa0\x80", 1, false},     // a surrogate
                          Case{"\xed\xbf\xbf", 0, false},      //
                          Case{"\xf4\x90\x80\x80", 0, false},  // beyond U+10FFFF
                          Case{"\xf5\x80\x80\x80", 0, false},  //
                          Case{"a\xff", 1, false},             //
                          Case{"\xc3(", 0, false},             // broken off by another character
                          Case{"\xe4\xba(", 0, false},         //
                          Case{"\xf0\x9f\x98(", 0, false},     //
                          Case{"a\xc3", 1, true},              // broken off by the end
                          Case{"\xe4\xba", 0, true},           //
                          Case{"\xf0\x9f\x98", 0, true},       //
                          Case{"\xf0", 0, true},               //
                          Case{"a\0b"sv, 1, false},            // a zero character
                          Case{"ab\0"sv, 2, false}}) {
        // Also behind more than a block of text, and at every place in a block.
        for (std::size_t shift = 0; shift < 140; ++shift) {
            const TextDefect found = defect_of(std::string(shift, 'x').append(c.text), Encoding::kUtf8);
            EXPECT_EQ(found.offset, shift + c.offset) << c.text;
            EXPECT_NE(found.message, nullptr) << c.text;
            EXPECT_EQ(found.cut, c.cut) << c.text;
        }
    }
}

TEST(TextDefect, PassesEveryCharacterOfUtf8) {
    std::string all;
    for (std::uint32_t c = 1; c <= 0x10FFFF; ++c) {
        if (c < 0xD800 || c > 0xDFFF) utf8::append(static_cast<char32_t>(c), std::back_inserter(all));
    }
    const TextDefect found = defect_of(all, Encoding::kUtf8);
    EXPECT_EQ(found.offset, all.size());
    EXPECT_EQ(found.message, nullptr);
    EXPECT_FALSE(found.cut);
}

TEST(TextDefect, AgreesWithAnotherDecoderOnRandomBytes) {
    std::mt19937 random(7);
    const char pool[] = "a\x80\xa0\xbf\xc0\xc2\xdf\xe0\xe4\xed\xf0\xf4\xf5\xff";
    for (int round = 0; round < 100000; ++round) {
        std::string text(random() % 80, 'x');
        for (unsigned n = random() % 8; n > 0; --n) text += pool[random() % (sizeof pool - 1)];
        const auto expected =
            static_cast<std::size_t>(utf8::find_invalid(text.begin(), text.end()) - text.begin());
        ASSERT_EQ(defect_of(text, Encoding::kUtf8).offset, expected) << round;
    }
}

TEST(TextDefect, FindsTheFirstDefectOfUtf16) {
    struct Case {
        std::vector<unsigned> units;
        std::size_t offset;
        bool cut;
    };
    for (const Case& c :
         {Case{{'a', 0, 'b'}, 2, false}, Case{{'a', 0xDC00}, 2, false}, Case{{0xD800, 'a'}, 0, false},
          Case{{0xD800, 0xD800}, 0, false}, Case{{'a', 0xDBFF}, 2, true},
          Case{{0xD83D, 0xDE00, 'a'}, 6, false}, Case{{0x0100, 0x0001}, 4, false}}) {
        std::string big;
        std::string little;
        for (const unsigned unit : c.units) {
            big += {static_cast<char>(unit >> 8), static_cast<char>(unit)};
            little += {static_cast<char>(unit), static_cast<char>(unit >> 8)};
        }
        for (const auto& [text, encoding] :
             {std::pair(big, Encoding::kUtf16BigEndian), std::pair(little, Encoding::kUtf16LittleEndian)}) {
            const TextDefect found = defect_of(text, encoding);
            EXPECT_EQ(found.offset, c.offset);
            EXPECT_EQ(found.cut, c.cut);
            EXPECT_EQ(found.message == nullptr, c.offset == text.size());
        }
    }
    EXPECT_TRUE(defect_of("a\0b"sv, Encoding::kUtf16LittleEndian).cut);
}

TEST(TextDefect, InAnEightBitEncodingOnlyZeroIsADefect) {
    std::string text;
    for (int c = 1; c < 256; ++c) text += static_cast<char>(c);
    EXPECT_EQ(defect_of(text, Encoding::kEightBit).message, nullptr);
    for (const std::size_t place : {std::size_t{0}, std::size_t{70}, text.size() - 1}) {
        std::string with_zero = text;
        with_zero[place] = '\0';
        EXPECT_EQ(defect_of(with_zero, Encoding::kEightBit).offset, place);
    }
}

// The parser itself takes some of these for the end of the document.
TEST(XmlDefects, EndInAFatalErrorAtTheirPlace) {
    struct Case {
        std::string text;
        int line;
        int column;
        const char* word;
    };
    const std::string long_text(100000, 'x');
    const support::TemporaryFolder folder;
    for (const Case& c :
         {Case{"<a>\n\xc3\xa9\xf0\x9f\x98\x80\xff</a>", 2, 4, "UTF-8"}, Case{"<a/>\xc3", 1, 5, "UTF-8"},
          Case{"<a>\xe4\xba", 1, 4, "UTF-8"}, Case{"<a>\xed\xa0\x80</a>", 1, 4, "UTF-8"},
          Case{"<a>\xc0\xaf</a>", 1, 4, "UTF-8"}, Case{std::string("<a>\0</a>", 8), 1, 4, "zero"},
          Case{std::string("<a/>\0", 5), 1, 5, "zero"}, Case{std::string("<a/>\n\0<b/>", 10), 2, 1, "zero"},
          Case{std::string("\0<a/>", 5), 1, 1, "zero"}, Case{std::string("<a b='\0'/>", 10), 1, 7, "zero"},
          Case{"<a>\r\nx\ry\n\xff", 4, 1, "UTF-8"},
          Case{"<a>" + long_text + "\n" + long_text + "\xff", 2, 100001, "UTF-8"},
          Case{"<a>" + long_text + "\n" + long_text + "</a>\xe4", 2, 100005, "UTF-8"}}) {
        for (const bool in_memory : {true, false}) {
            Parser parser;
            const std::string path = folder.write("a.xml", c.text);
            EXPECT_EQ(in_memory ? parser.parse_text(c.text) : parser.parse_file(path), E_FAIL);
            const Problem fatal = parser.fatal_error();
            EXPECT_EQ(fatal.line, c.line) << parser.said();
            EXPECT_EQ(fatal.column, c.column) << parser.said();
            EXPECT_NE(fatal.message.find(c.word), std::string::npos) << fatal.message;
            EXPECT_EQ(fatal.system_id, in_memory ? "" : path);
            EXPECT_EQ(parser.parse_text("<a/>"), S_OK);
        }
    }
}

TEST(XmlDefects, InADeclarationHaveTheirPlace) {
    struct Case {
        std::string text;
        int line;
        int column;
    };
    const std::string spaces(4096, ' ');
    const support::TemporaryFolder folder;
    for (const Case& c : {Case{"<?xml version='1.0' encoding='U\xffTF-8'?><a/>", 1, 32},
                          Case{"<?xml version='1.\xc3\xa9'?><a/>", 1, 18},
                          Case{"<?xml\nversion='1.0'\xed\xa0\x80?><a/>", 2, 14},
                          Case{"\xef\xbb\xbf<?xml version='1.0' encoding='\xc3\xa9'?><a/>", 1, 31},
                          Case{"<?xml version='1.0' encoding='ISO-8859-1\xe9'?><a/>", 1, 41},
                          Case{"<?xml version='1.0'" + spaces + "?><a/>", 1, 1},
                          Case{"<?xml version='1.0'" + spaces + "\xff?><a/>", 1, 4116}}) {
        for (const bool in_memory : {true, false}) {
            Parser parser;
            const std::string path = folder.write("a.xml", c.text);
            EXPECT_EQ(in_memory ? parser.parse_text(c.text) : parser.parse_file(path), E_FAIL) << c.text;
            EXPECT_EQ(parser.fatal_error().line, c.line) << c.text << parser.said();
            EXPECT_EQ(parser.fatal_error().column, c.column) << c.text << parser.said();
            EXPECT_EQ(parser.fatal_error().system_id, in_memory ? "" : path);
        }
    }
    Parser parser;
    EXPECT_EQ(parser.parse_text("<?xml version='1.0'" + spaces.substr(100) + "?><a/>"), S_OK)
        << parser.said();
    EXPECT_EQ(parser.parse_text("<?xml-stylesheet h\xc3\xa9?><a/>"), S_OK) << parser.said();
}

TEST(XmlDefects, AnXmlDeclarationIsShorterThan4096Bytes) {
    const support::TemporaryFolder folder;
    Parser parser;
    const auto parse = [&](std::size_t length) {
        const std::string begin = "<?xml version='1.0'";
        const std::string end = "?>";
        const std::string spaces(length - begin.size() - end.size(), ' ');
        return parser.parse_file(folder.write("a.xml", begin + spaces + end + "<a/>"));
    };
    EXPECT_EQ(parse(4095), S_OK) << parser.said();
    EXPECT_EQ(parse(4097), E_FAIL);
    EXPECT_EQ(parser.fatal_error().message, "the XML declaration is too long");
}

TEST(XmlDefects, ACharacterAcrossAnyBoundaryOfReadsIsWhole) {
    // Reads have a size that this test does not know: characters of every length lie at every place of three
    // neighbouring bytes over more than it.
    const support::TemporaryFolder folder;
    for (const std::string& letter :
         {std::string("\xc3\xa9"), std::string("\xe4\xba\x8c"), std::string("\xf0\x9f\x98\x80")}) {
        for (std::size_t shift = 0; shift < letter.size(); ++shift) {
            std::string text(shift, 'x');
            while (text.size() < 300000) text += letter;
            Parser parser;
            EXPECT_EQ(parser.parse_file(folder.write("a.xml", "<a>" + text + "</a>")), S_OK) << parser.said();
            EXPECT_TRUE(parser.events().at(3) == "text " + text);
        }
    }
}

std::string as_utf16(std::u16string_view text, bool big_endian) {
    std::string bytes;
    for (const char16_t unit : text) {
        const char high = static_cast<char>(unit >> 8);
        const char low = static_cast<char>(unit & 0xFF);
        bytes += big_endian ? high : low;
        bytes += big_endian ? low : high;
    }
    return bytes;
}

TEST(XmlEncodings, ReadsUtf16InBothOrders) {
    const support::TemporaryFolder folder;
    for (const bool big_endian : {false, true}) {
        for (const char16_t* text : {u"\ufeff<?xml version='1.0' encoding='UTF-16'?><a>\u00e9\U0001F600</a>",
                                     u"\ufeff<a>\u00e9\U0001F600</a>"}) {
            Parser parser;
            EXPECT_EQ(parser.parse_file(folder.write("a.xml", as_utf16(text, big_endian))), S_OK)
                << parser.said();
            EXPECT_EQ(parser.events().at(3), "text \xc3\xa9\xf0\x9f\x98\x80");
        }
    }
}

TEST(XmlEncodings, ADefectOfUtf16HasItsPlace) {
    const support::TemporaryFolder folder;
    for (const bool big_endian : {false, true}) {
        std::u16string text = u"\ufeff<a>\n\u00e9\U0001F600?</a>";
        text[text.find(u'?')] = 0xDC00;
        Parser parser;
        EXPECT_EQ(parser.parse_file(folder.write("a.xml", as_utf16(text, big_endian))), E_FAIL);
        EXPECT_EQ(parser.fatal_error().line, 2);
        EXPECT_EQ(parser.fatal_error().column, 4);
        const std::string odd = as_utf16(u"\ufeff<a/>", big_endian) + ' ';
        EXPECT_EQ(parser.parse_file(folder.write("b.xml", odd)), E_FAIL);
        EXPECT_EQ(parser.fatal_error().column, 5);
        std::u16string zero = u"\ufeff<a/>?";
        zero.back() = 0;
        EXPECT_EQ(parser.parse_file(folder.write("c.xml", as_utf16(zero, big_endian))), E_FAIL);
        EXPECT_NE(parser.fatal_error().message.find("zero"), std::string::npos);
    }
}

TEST(XmlEncodings, ReadsADeclaredEightBitEncoding) {
    const support::TemporaryFolder folder;
    for (const char* declaration : {"<?xml version='1.0' encoding='ISO-8859-1'?>",
                                    "<?xml version=\"1.0\" encoding = \"iso-8859-1\"?>"}) {
        Parser parser;
        const std::string start = declaration;
        EXPECT_EQ(parser.parse_file(folder.write("a.xml", start + "<a>\xe9</a>")), S_OK) << parser.said();
        EXPECT_EQ(parser.events().at(3), "text \xc3\xa9");
        EXPECT_EQ(parser.parse_file(folder.write("a.xml", start + std::string("<a>\xe9\0</a>", 9))), E_FAIL);
        EXPECT_EQ(parser.fatal_error().column, static_cast<int>(start.size()) + 5);
    }
}

// Else the parser reads some of them as UTF-8, and takes the rest of a sequence behind the root for the end.
TEST(XmlEncodings, RefusesOthersOfSeveralBytes) {
    const support::TemporaryFolder folder;
    for (const char* name : {"UTF-16", "utf-32", "ISO-10646-UCS-4", "UTF_8", "cp1208", "windows-65001",
                             "CESU-8", "Big5", "EUC-JP", "GB18030", "no-such"}) {
        for (const char* end : {"", "\xc3"}) {
            Parser parser;
            const std::string text = "<?xml version='1.0' encoding='" + std::string(name) + "'?><a/>";
            EXPECT_EQ(parser.parse_file(folder.write("a.xml", text + end)), E_FAIL) << name;
            EXPECT_EQ(parser.fatal_error().line, 1) << name;
            EXPECT_EQ(parser.fatal_error().column, 31) << name;
            EXPECT_NE(parser.fatal_error().message.find("encoding"), std::string::npos) << parser.said();
        }
    }
}

TEST(XmlEncodings, ReadsEightBitEncodingsByTheirUsualNames) {
    const support::TemporaryFolder folder;
    for (const char* name : {"ISO-8859-15", "latin1", "windows-1252", "CP1252", "koi8-r", "IBM850", "cp437",
                             "TIS-620", "macintosh"}) {
        Parser parser;
        const std::string text = "<?xml version='1.0' encoding='" + std::string(name) + "'?><a>\xe1</a>";
        EXPECT_EQ(parser.parse_file(folder.write("a.xml", text)), S_OK) << parser.said();
        EXPECT_EQ(parser.events().at(3).substr(0, 5), "text ") << name;
        EXPECT_GT(parser.events().at(3).size(), 6U) << name;
    }
}

TEST(XmlEncodings, OnlyTheXmlDeclarationDeclaresOne) {
    const support::TemporaryFolder folder;
    for (const char* instruction :
         {"<?xml-stylesheet encoding='iso-8859-1'?>", "<?xmlx encoding='latin1'?>"}) {
        for (const char* defect : {"\xff", "\xe2\x82"}) {
            Parser parser;
            const std::string text = std::string(instruction) + "<a/>" + defect;
            EXPECT_EQ(parser.parse_file(folder.write("a.xml", text)), E_FAIL) << text;
            EXPECT_NE(parser.fatal_error().message.find("UTF-8"), std::string::npos) << parser.said();
        }
    }
}

TEST(XmlEncodings, AByteOrderMarkOfUtf8IsNotContent) {
    const support::TemporaryFolder folder;
    Parser parser;
    const std::string text = "\xef\xbb\xbf<a>x</a>";
    EXPECT_EQ(parser.parse_file(folder.write("a.xml", text)), S_OK) << parser.said();
    EXPECT_EQ(parser.parse_text(text), S_OK) << parser.said();
    EXPECT_EQ(parser.events().at(3), "text x");
    EXPECT_EQ(parser.parse_file(folder.write("a.xml", "\xef\xbb\xbf<a>\xff</a>")), E_FAIL);
    EXPECT_EQ(parser.fatal_error().column, 4);
}

TEST(XmlEncodings, ATextInMemoryIsUtf8WhateverItDeclares) {
    for (const char* name : {"ISO-8859-1", "UTF-16", "no-such"}) {
        Parser parser;
        EXPECT_EQ(
            parser.parse_text("<?xml version='1.0' encoding='" + std::string(name) + "'?><a>\xc3\xa9</a>"),
            S_OK)
            << parser.said();
        EXPECT_EQ(parser.events().at(3), "text \xc3\xa9");
        EXPECT_EQ(parser.parse_text("<?xml version='1.0' encoding='" + std::string(name) + "'?><a>\xe9</a>"),
                  E_FAIL);
    }
}

}  // namespace
