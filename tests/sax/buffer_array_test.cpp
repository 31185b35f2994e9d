// SPDX-License-Identifier: Apache-2.0
// Arrays of numbers: where a text is split, what is filled, how many values are stored.
#include <cerrno>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "sax/array_read.h"
#include "sax/recording_buffer.h"

namespace {

using sax::invalid;
using sax::Outcome;
using sax::read;

template <class T>
class SaxBufferArray : public testing::Test {
public:
    /// Elements that a read has not written.
    static constexpr int kUntouched = -999;

    static std::vector<T> list(std::initializer_list<int> values) {
        std::vector<T> result;
        for (const int value : values)
            result.push_back(value == kUntouched ? sax::untouched<T>() : static_cast<T>(value));
        return result;
    }

    static void expect(const Outcome<T>& outcome, std::initializer_list<int> values, int result,
                       const std::string& exception) {
        EXPECT_TRUE(outcome == (Outcome<T>{list(values), result, exception}))
            << testing::PrintToString(outcome.values) << ' ' << outcome.result << ' ' << outcome.exception;
    }

    static void expect_values(const Outcome<T>& outcome, std::initializer_list<int> values) {
        expect(outcome, values, 1, "");
    }

    static constexpr int u = kUntouched;
};

using Numbers = testing::Types<int, float, double>;
TYPED_TEST_SUITE(SaxBufferArray, Numbers);

TYPED_TEST(SaxBufferArray, ReadsEveryToken) {
    this->expect_values(read<TypeParam>("1 2 3", 3, 4), {1, 2, 3, this->u});
    this->expect_values(read<TypeParam>("-7", 1, 2), {-7, this->u});
}

TYPED_TEST(SaxBufferArray, SpacesAndLineFeedsSeparate) {
    this->expect_values(read<TypeParam>("1 2\n3", 3, 3), {1, 2, 3});
    this->expect_values(read<TypeParam>("  \n 1 \n\n  2 \n", 2, 3), {1, 2, this->u});
}

TYPED_TEST(SaxBufferArray, NothingElseSeparates) {
    for (const char* text : {"1\t2", "1\r2", "1\v2", "1\f2", "1,2", "1;2", "1\r\t2",
                             "1\xc2\xa0"
                             "2"})
        this->expect_values(read<TypeParam>(text, 2, 3), {1, 0, this->u});
    this->expect_values(read<TypeParam>("1\r\n2\r\n", 2, 3), {1, 2, this->u});
}

TYPED_TEST(SaxBufferArray, EmptyAndBlankTextsZeroCountElements) {
    for (const char* text : {"", " ", "\n", " \n \n"}) {
        this->expect_values(read<TypeParam>(text, 3, 5), {0, 0, 0, this->u, this->u});
        this->expect_values(read<TypeParam>(text, 0, 1), {this->u});
    }
}

TYPED_TEST(SaxBufferArray, ElementsBeyondTheTokensAreZero) {
    this->expect_values(read<TypeParam>("1 2", 5, 6), {1, 2, 0, 0, 0, this->u});
}

TYPED_TEST(SaxBufferArray, ANegativeCountFillsNothing) {
    this->expect_values(read<TypeParam>("", -1, 2), {this->u, this->u});
    this->expect_values(read<TypeParam>(" \n", -1000000, 2), {this->u, this->u});
}

TYPED_TEST(SaxBufferArray, ANegativeCountBoundsNothing) {
    this->expect_values(read<TypeParam>("1 2 3", -1, 4), {1, 2, 3, this->u});
    this->expect_values(read<TypeParam>("1 2 3", -2147483647 - 1, 4), {1, 2, 3, this->u});
}

TYPED_TEST(SaxBufferArray, AnInvalidTokenThrowsAfterTheValuesBeforeIt) {
    this->expect(read<TypeParam>("1 x 3", 4, 5), {1, 0, 0, 0, this->u}, 0, invalid<TypeParam>());
    this->expect(read<TypeParam>("x", 2, 3), {0, 0, this->u}, 0, invalid<TypeParam>());
    this->expect(read<TypeParam>("1 2 -", 1 + 2, 3), {1, 2, 0}, 0, invalid<TypeParam>());
}

TYPED_TEST(SaxBufferArray, ATokenOutOfRangeThrowsAfterTheValuesBeforeIt) {
    const std::string text = "1 2 1" + std::string(400, '0') + " 4";
    this->expect(read<TypeParam>(text.c_str(), 4, 5), {1, 2, 0, 0, this->u}, 0,
                 sax::out_of_range<TypeParam>());
}

TYPED_TEST(SaxBufferArray, WhitespaceTokensAreNotNumbers) {
    // The tab is a token of its own, although a conversion would skip it before a number.
    this->expect(read<TypeParam>("\t 1", 2, 2), {0, 0}, 0, invalid<TypeParam>());
    this->expect(read<TypeParam>("1 \r\n 2", 2, 2), {1, 0}, 0, invalid<TypeParam>());
    this->expect(read<TypeParam>("1\n\t\n2", 2, 2), {1, 0}, 0, invalid<TypeParam>());
    this->expect(read<TypeParam>("+ 1", 2, 2), {0, 0}, 0, invalid<TypeParam>());
    this->expect(read<TypeParam>("- 1", 2, 2), {0, 0}, 0, invalid<TypeParam>());
}

TYPED_TEST(SaxBufferArray, WhitespaceWithinATokenIsSkippedBeforeItsNumber) {
    this->expect_values(read<TypeParam>("\t1 \r2 \v\f3", 3, 3), {1, 2, 3});
}

TYPED_TEST(SaxBufferArray, WhatFollowsANumberIsIgnored) {
    this->expect_values(read<TypeParam>("12abc 3x 4,5 5-6", 4, 4), {12, 3, 4, 5});
}

TYPED_TEST(SaxBufferArray, LongDigitStringsWithLeadingZerosAreNumbers) {
    const std::string text = std::string(10000, '0') + "17 -" + std::string(10000, '0') + "18";
    this->expect_values(read<TypeParam>(text.c_str(), 2, 2), {17, -18});
}

TYPED_TEST(SaxBufferArray, TheTextEndsAtItsFirstZero) {
    vSAXDefaultBuffer buffer;
    buffer.SetBuffer(OXAUnicodeString("1 2\0003 x", 7));
    this->expect_values(read<TypeParam>(buffer, 2, 3), {1, 2, this->u});
}

TYPED_TEST(SaxBufferArray, AnEarlierRangeErrorDoesNotMatter) {
    vSAXDefaultBuffer buffer;
    buffer.SetBuffer("1 2");
    errno = ERANGE;
    this->expect_values(read<TypeParam>(buffer, 2, 2), {1, 2});
}

TYPED_TEST(SaxBufferArray, FailuresAreNotLogged) {
    const sax::RecordingBuffer buffer("1 x");
    this->expect(read<TypeParam>(buffer, 2, 2), {1, 0}, 0, invalid<TypeParam>());
    EXPECT_TRUE(buffer.errors.empty());
    EXPECT_TRUE(buffer.messages.empty());
}

TYPED_TEST(SaxBufferArray, ReadsAgainAndAgain) {
    vSAXDefaultBuffer buffer;
    buffer.SetBuffer("1 2");
    for (int i = 0; i < 3; ++i) this->expect_values(read<TypeParam>(buffer, 2, 2), {1, 2});
}

TYPED_TEST(SaxBufferArray, ManyTokensAreReadInOrder) {
    constexpr int kTokens = 100000;
    std::string text;
    std::vector<TypeParam> expected;
    for (int i = 0; i < kTokens; ++i) {
        text += std::to_string(i) + (i % 7 == 0 ? " \n" : " ");
        expected.push_back(static_cast<TypeParam>(i));
    }
    const Outcome<TypeParam> outcome = read<TypeParam>(text.c_str(), kTokens, kTokens);
    EXPECT_EQ(outcome.exception, "");
    EXPECT_EQ(outcome.result, 1);
    EXPECT_EQ(outcome.values, expected);
}

TEST(SaxBufferArrayBound, IntegersStopAtTheCount) {
    using Test = SaxBufferArray<int>;
    Test::expect_values(read<int>("1 2 3", 2, 3), {1, 2, Test::u});
    Test::expect_values(read<int>("1 2 3", 0, 3), {Test::u, Test::u, Test::u});
}

TEST(SaxBufferArrayBound, IntegersBeyondTheCountAreNeverParsed) {
    using Test = SaxBufferArray<int>;
    Test::expect_values(read<int>("1 2 x", 2, 3), {1, 2, Test::u});
    Test::expect_values(read<int>("1 2 99999999999999999999", 2, 3), {1, 2, Test::u});
    Test::expect_values(read<int>("x", 0, 1), {Test::u});
}

template <class T>
class SaxBufferUnboundedArray : public SaxBufferArray<T> {};
using Reals = testing::Types<float, double>;
TYPED_TEST_SUITE(SaxBufferUnboundedArray, Reals);

TYPED_TEST(SaxBufferUnboundedArray, EveryTokenIsStoredPastTheCount) {
    this->expect_values(read<TypeParam>("1 2 3", 2, 4), {1, 2, 3, this->u});
    this->expect_values(read<TypeParam>("1 2 3", 0, 4), {1, 2, 3, this->u});
}

TYPED_TEST(SaxBufferUnboundedArray, TokensPastTheCountAreParsed) {
    this->expect(read<TypeParam>("1 2 3 x", 1, 4), {1, 2, 3, this->u}, 0, invalid<TypeParam>());
}

}  // namespace
