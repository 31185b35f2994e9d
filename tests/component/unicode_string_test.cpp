// SPDX-License-Identifier: Apache-2.0

#include <array>
#include <gtest/gtest.h>
#include <iconv.h>
#include <new>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include "OXAUnicodeString.h"
#include "support/allocation.h"
#include "support/taken.h"

namespace {

std::string text_of(const OXAUnicodeString& text) { return {text.ConvertToChar(), text.Length()}; }

TEST(UnicodeString, IsEmptyByDefaultAndFromNull) {
    const char* none = nullptr;
    for (const OXAUnicodeString& text : {OXAUnicodeString(), OXAUnicodeString(none), OXAUnicodeString("")}) {
        EXPECT_STREQ(text.ConvertToChar(), "");
        EXPECT_EQ(text.Length(), 0U);
        EXPECT_TRUE(text.IsEmpty());
    }
}

TEST(UnicodeString, CopiesTheTextThatItIsMadeFrom) {
    char source[] = "h\xc3\xa9llo";
    const OXAUnicodeString text(source);
    source[0] = 'x';
    EXPECT_STREQ(text.ConvertToChar(), "h\xc3\xa9llo");
    EXPECT_EQ(text.Length(), 6U);
    EXPECT_FALSE(text.IsEmpty());
}

TEST(UnicodeString, ALengthCountsZeroBytesToo) {
    const OXAUnicodeString text("a\0b", 3);
    EXPECT_EQ(text_of(text), std::string("a\0b", 3));
    EXPECT_EQ(OXAUnicodeString("abc", 2), OXAUnicodeString("ab"));
    const char* none = nullptr;
    EXPECT_TRUE(OXAUnicodeString(none, 0).IsEmpty());
}

TEST(UnicodeString, KeepsMalformedBytesAsTheyAre) {
    EXPECT_STREQ(OXAUnicodeString("a\xff\xc3").ConvertToChar(), "a\xff\xc3");
}

TEST(UnicodeString, CopiesAreIndependentAndMovesLeaveAnEmptyText) {
    const std::string long_text(1000, 'x');
    for (const std::string& content : {std::string("short"), long_text}) {
        OXAUnicodeString original(content.c_str());
        OXAUnicodeString copy(original);
        original = "other";
        EXPECT_EQ(text_of(copy), content);
        OXAUnicodeString moved(std::move(copy));
        EXPECT_EQ(text_of(moved), content);
        EXPECT_TRUE(copy.IsEmpty());  // NOLINT(bugprone-use-after-move): the state that a move promises
        OXAUnicodeString assigned("before");
        assigned = std::move(moved);
        EXPECT_EQ(text_of(assigned), content);
        EXPECT_TRUE(moved.IsEmpty());  // NOLINT(bugprone-use-after-move): the state that a move promises
        copy = assigned;
        EXPECT_EQ(copy, assigned);
    }
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<OXAUnicodeString>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<OXAUnicodeString>);
}

TEST(UnicodeString, SurvivesAssignmentAndAppendingOfItself) {
    OXAUnicodeString text("ab");
    OXAUnicodeString& same = text;
    text = same;
    text = std::move(same);
    EXPECT_STREQ(text.ConvertToChar(), "ab");
    for (int i = 0; i < 6; ++i) text.Append(text);
    std::string expected;
    for (int i = 0; i < 64; ++i) expected += "ab";
    EXPECT_EQ(text_of(text), expected);
    text = text.ConvertToChar() + 126;
    EXPECT_STREQ(text.ConvertToChar(), "ab");
}

TEST(UnicodeString, AppendsAtTheEnd) {
    OXAUnicodeString text;
    text.Append(OXAUnicodeString("one"));
    text.Append(OXAUnicodeString());
    text.Append(OXAUnicodeString(", \xe4\xba\x8c"));
    EXPECT_STREQ(text.ConvertToChar(), "one, \xe4\xba\x8c");
}

TEST(UnicodeString, AssignsTheEmptyTextAndAgainWithoutTakingMemory) {
    OXAUnicodeString text(std::string(1000, 'x').c_str());
    const OXAUnicodeString other(std::string(900, 'y').c_str());
    const std::u16string wide(800, u'z');
    const support::Taken taken = support::taken_by([&] {
        text = "";
        text.Append(other);
        text.AssignUtf16(wide.data(), wide.size());
        text = other;
    });
    EXPECT_TRUE(taken.sizes.empty());
    EXPECT_EQ(text, other);
    const char* none = nullptr;
    text = none;
    EXPECT_TRUE(text.IsEmpty());
}

TEST(UnicodeString, ComparesByCodePoint) {
    const std::array<OXAUnicodeString, 8> ascending{
        "", "A", "a", "ab", "b", "\xc3\xa9", "\xef\xbf\xbd", "\xf0\x9f\x98\x80"};
    for (std::size_t i = 0; i < ascending.size(); ++i) {
        for (std::size_t j = 0; j < ascending.size(); ++j) {
            const auto& a = ascending[i];
            const auto& b = ascending[j];
            EXPECT_EQ(a == b, i == j) << a.ConvertToChar() << ", " << b.ConvertToChar();
            EXPECT_EQ(a != b, i != j) << a.ConvertToChar() << ", " << b.ConvertToChar();
            EXPECT_EQ(a < b, i < j) << a.ConvertToChar() << ", " << b.ConvertToChar();
        }
    }
    EXPECT_TRUE(OXAUnicodeString("a\0a", 3) != OXAUnicodeString("a\0b", 3));
    EXPECT_TRUE(OXAUnicodeString("a\0a", 3) < OXAUnicodeString("a\0b", 3));
}

TEST(UnicodeString, ConvertsUtf16) {
    const auto converted = [](std::u16string_view wide) {
        OXAUnicodeString text("before");
        text.AssignUtf16(wide.data(), wide.size());
        return text_of(text);
    };
    EXPECT_EQ(converted(u""), "");
    EXPECT_EQ(converted(u"ascii"), "ascii");
    EXPECT_EQ(converted(u"\u007f\u0080\u07ff\u0800\ud7ff\ue000\uffff"),
              "\x7f\xc2\x80\xdf\xbf\xe0\xa0\x80\xed\x9f\xbf\xee\x80\x80\xef\xbf\xbf");
    EXPECT_EQ(converted(u"\U00010000-\U0010ffff"), "\xf0\x90\x80\x80-\xf4\x8f\xbf\xbf");
    EXPECT_EQ(converted(std::u16string_view(u"a\0b", 3)), std::string("a\0b", 3));
    OXAUnicodeString text("before");
    text.AssignUtf16(nullptr, 0);
    EXPECT_TRUE(text.IsEmpty());
}

TEST(UnicodeString, ASurrogateWithoutItsOtherHalfBecomesTheReplacementCharacter) {
    const std::string replacement = "\xef\xbf\xbd";
    const auto converted = [](std::vector<char16_t> wide) {
        OXAUnicodeString text;
        text.AssignUtf16(wide.data(), wide.size());
        return text_of(text);
    };
    EXPECT_EQ(converted({0xD800}), replacement);
    EXPECT_EQ(converted({0xDBFF, 'a'}), replacement + "a");
    EXPECT_EQ(converted({'a', 0xDC00}), "a" + replacement);
    EXPECT_EQ(converted({0xD800, 0xD800, 0xDC00}), replacement + "\xf0\x90\x80\x80");
    EXPECT_EQ(converted({0xDFFF, 0xDBFF}), replacement + replacement);
}

TEST(UnicodeString, ConvertsNoUnitBehindTheLength) {
    OXAUnicodeString text;
    text.AssignUtf16(u"a\U0001F600", 2);
    EXPECT_STREQ(text.ConvertToChar(), "a\xef\xbf\xbd");
}

TEST(UnicodeString, ConvertsWholeBlocksOfTheCharactersBesideAscii) {
    for (const auto& [unit, bytes] : {std::pair(u'\u007f', "\x7f"), std::pair(u'\u0080', "\xc2\x80")}) {
        for (const std::size_t length : {31U, 32U, 33U, 64U}) {
            OXAUnicodeString text;
            text.AssignUtf16(std::u16string(length, unit).data(), length);
            std::string expected;
            for (std::size_t i = 0; i < length; ++i) expected += bytes;
            EXPECT_EQ(text_of(text), expected) << length;
        }
    }
}

/// The C library's conversion.
std::string convert_with_iconv(std::u16string wide) {
    const iconv_t converter = iconv_open("UTF-8", "UTF-16LE");
    std::string text(3 * wide.size() + 1, '\0');
    char* from = reinterpret_cast<char*>(wide.data());
    std::size_t from_left = 2 * wide.size();
    char* to = text.data();
    std::size_t to_left = text.size();
    const std::size_t result = iconv(converter, &from, &from_left, &to, &to_left);
    iconv_close(converter);
    EXPECT_EQ(result, 0U);
    text.resize(text.size() - to_left);
    return text;
}

TEST(UnicodeString, ConvertsRandomTextsAsTheCLibraryDoes) {
    std::mt19937 random(20);
    const auto below = [&](unsigned n) { return static_cast<unsigned>(random() % n); };
    for (int round = 0; round < 2000; ++round) {
        std::u16string wide;
        // Runs of ASCII of every length up to beyond a block, between characters of every size.
        for (unsigned run = below(6); run > 0; --run) {
            wide.append(below(80), static_cast<char16_t>('a' + below(26)));
            switch (below(3)) {
                case 0:
                    wide += static_cast<char16_t>(0x80 + below(0x780));
                    break;
                case 1:
                    wide += static_cast<char16_t>(0xE000 + below(0x2000));
                    break;
                default:
                    wide += static_cast<char16_t>(0xD800 + below(0x400));
                    wide += static_cast<char16_t>(0xDC00 + below(0x400));
            }
        }
        OXAUnicodeString text;
        text.AssignUtf16(wide.data(), wide.size());
        ASSERT_EQ(text_of(text), convert_with_iconv(wide)) << round;
    }
}

TEST(UnicodeString, ConvertsToNumbersAsScanfDoes) {
    int integer = -1;
    EXPECT_EQ(OXAUnicodeString("42").ConvertToNum(&integer, "%d"), 1);
    EXPECT_EQ(integer, 42);
    EXPECT_EQ(OXAUnicodeString(" \n-7 apples").ConvertToNum(&integer, "%d"), 1);
    EXPECT_EQ(integer, -7);
    unsigned int number = 0;
    EXPECT_EQ(OXAUnicodeString("4294967295").ConvertToNum(&number, "%u"), 1);
    EXPECT_EQ(number, 4294967295U);
    double real = 0;
    EXPECT_EQ(OXAUnicodeString("1.25e2").ConvertToNum(&real, "%le"), 1);
    EXPECT_EQ(real, 125.0);
}

TEST(UnicodeString, AFailedConversionIsZeroAndChangesNothing) {
    int integer = 5;
    for (const char* text : {"abc", "", "   ", "-", ".5"}) {
        EXPECT_EQ(OXAUnicodeString(text).ConvertToNum(&integer, "%d"), 0) << text;
    }
    EXPECT_EQ(OXAUnicodeString("1").ConvertToNum(nullptr, "%d"), 0);
    EXPECT_EQ(OXAUnicodeString("1").ConvertToNum(&integer, nullptr), 0);
    EXPECT_EQ(integer, 5);
}

TEST(UnicodeString, AFailedChangeLeavesTheTextWhole) {
    const std::string long_text(200, 'x');
    OXAUnicodeString text("before");
    const OXAUnicodeString other(long_text.c_str());
    const auto expect_failure = [&](auto change) {
        const support::FailAllocation fail(0);
        EXPECT_THROW(change(), std::bad_alloc);
        EXPECT_STREQ(text.ConvertToChar(), "before");
    };
    expect_failure([&] { text = other; });
    expect_failure([&] { text = long_text.c_str(); });
    expect_failure([&] { text.Append(other); });
    expect_failure([&] { const OXAUnicodeString copy(other); });
}

TEST(UnicodeString, ManyThreadsReadOneText) {
    const OXAUnicodeString text("3.5");
    std::vector<std::thread> threads;
    std::array<double, 4> sums = {};
    for (double& sum : sums) {
        threads.emplace_back([&text, &sum] {
            for (int i = 0; i < 1000; ++i) {
                double value = 0;
                if (text.ConvertToNum(&value, "%le") == 1 && text.ConvertToChar()[1] == '.') sum += value;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    for (const double sum : sums) EXPECT_EQ(sum, 3500.0);
}

}  // namespace
