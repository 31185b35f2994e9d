// SPDX-License-Identifier: Apache-2.0
// The text as a list of words: GetVStringArray.
#include <cctype>
#include <gtest/gtest.h>
#include <new>
#include <random>
#include <string>
#include <vector>

#include "sax/recording_buffer.h"
#include "support/allocation.h"

namespace {

using sax::RecordingBuffer;
using Words = std::vector<std::string>;

Words words(const vArray<TOZ::vString>& values) {
    Words result;
    for (const TOZ::vString& value : values) {
        result.emplace_back(value.CStr());
        EXPECT_EQ(value.Length(), result.back().size());
    }
    return result;
}

Words words_of(const OXAUnicodeString& text) {
    const RecordingBuffer buffer(text);
    vArray<TOZ::vString> values;
    EXPECT_EQ(buffer.GetVStringArray(values), 1);
    EXPECT_TRUE(buffer.errors.empty());
    return words(values);
}

TEST(SaxBufferStringArray, SplitsAtWhitespace) {
    EXPECT_EQ(words_of("one"), (Words{"one"}));
    EXPECT_EQ(words_of("one two three"), (Words{"one", "two", "three"}));
    EXPECT_EQ(words_of("  one \n\n two\n"), (Words{"one", "two"}));
    EXPECT_EQ(words_of("a,b;c d.e"), (Words{"a,b;c", "d.e"}));
}

TEST(SaxBufferStringArray, EveryWhitespaceCharacterSeparates) {
    for (const char space : {' ', '\t', '\n', '\v', '\f', '\r'}) {
        const std::string text = std::string("1") + space + "2" + space;
        EXPECT_EQ(words_of(text.c_str()), (Words{"1", "2"})) << int{space};
    }
}

TEST(SaxBufferStringArray, NoOtherByteSeparates) {
    for (int byte = 1; byte < 256; ++byte) {
        if (byte == ' ' || (byte >= '\t' && byte <= '\r')) continue;
        const std::string text = std::string("a") + static_cast<char>(byte) + "b";
        EXPECT_EQ(words_of(text.c_str()), (Words{text})) << byte;
    }
}

TEST(SaxBufferStringArray, EmptyAndBlankTextsGiveNothing) {
    EXPECT_EQ(words_of(""), Words{});
    EXPECT_EQ(words_of(" \t\n\v\f\r"), Words{});
}

TEST(SaxBufferStringArray, AddsAfterWhatTheArrayHolds) {
    const RecordingBuffer buffer("two three");
    vArray<TOZ::vString> values;
    values.Append(TOZ::vString("one"));
    EXPECT_EQ(buffer.GetVStringArray(values), 1);
    EXPECT_EQ(words(values), (Words{"one", "two", "three"}));
    EXPECT_EQ(buffer.GetVStringArray(values), 1);
    EXPECT_EQ(words(values), (Words{"one", "two", "three", "two", "three"}));

    const RecordingBuffer empty;
    EXPECT_EQ(empty.GetVStringArray(values), 1);
    EXPECT_EQ(values.Size(), 5U);
}

TEST(SaxBufferStringArray, TheTextEndsAtItsFirstZero) {
    EXPECT_EQ(words_of(OXAUnicodeString("a b\0c d", 7)), (Words{"a", "b"}));
    EXPECT_EQ(words_of(OXAUnicodeString("a \0b", 4)), (Words{"a"}));
}

TEST(SaxBufferStringArray, LongWordsAndManyWords) {
    const std::string word(100000, 'w');
    EXPECT_EQ(words_of((" " + word + " x").c_str()), (Words{word, "x"}));

    std::string text;
    Words expected;
    for (int i = 0; i < 10000; ++i) {
        expected.push_back(std::to_string(i));
        text += expected.back() + '\n';
    }
    EXPECT_EQ(words_of(text.c_str()), expected);
}

TEST(SaxBufferStringArray, AllocationFailureThrows) {
    const RecordingBuffer buffer((std::string(100, 'a') + ' ' + std::string(100, 'b')).c_str());
    std::size_t failures = 0;
    for (;; ++failures) {
        vArray<TOZ::vString> values;
        const support::FailAllocation failure(failures);
        try {
            EXPECT_EQ(buffer.GetVStringArray(values), 1);
            EXPECT_EQ(values.Size(), 2U);
            break;
        } catch (const std::bad_alloc&) {
            EXPECT_LE(values.Size(), 1U);
        }
    }
    // At least the array's block and the two strings' can be refused.
    EXPECT_GE(failures, 3U);
}

// The words of a text and what is left when it is trimmed, byte by byte.
Words expected_words(const std::string& text) {
    Words result;
    bool open = false;
    for (const char c : text) {
        if (std::isspace(static_cast<unsigned char>(c))) {
            open = false;
        } else {
            if (!open) result.emplace_back();
            open = true;
            result.back() += c;
        }
    }
    return result;
}

std::string expected_trimmed(std::string text) {
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front()))) text.erase(0, 1);
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back()))) text.pop_back();
    return text;
}

TEST(SaxBufferStringArray, RandomTextsAreSplitAndTrimmedAsByAPlainWalk) {
    std::mt19937 random(41);
    const std::string pool = " \t\n\v\f\rab\x01\x1f\x7f\x85\xa0\xff,";
    for (int i = 0; i < 20000; ++i) {
        std::string text;
        for (auto n = random() % 20; n > 0; --n) text += pool[random() % pool.size()];
        ASSERT_EQ(words_of(text.c_str()), expected_words(text)) << testing::PrintToString(text);
        const RecordingBuffer buffer(text.c_str());
        std::string value;
        ASSERT_EQ(buffer.GetString(value), 1);
        ASSERT_EQ(value, expected_trimmed(text)) << testing::PrintToString(text);
    }
}

}  // namespace
