// SPDX-License-Identifier: Apache-2.0
// The array reads against a plain model that calls strtol, strtof and strtod, bit for bit.
#include <gtest/gtest.h>
#include <string>

#include "sax/array_read.h"
#include "sax/decimal_comma.h"
#include "sax/random_tokens.h"

namespace {

constexpr int kTokens = 1000000;
constexpr int kTexts = 50000;

template <class T>
class SaxBufferComparison : public testing::Test {
public:
    static bool same(vSAXDefaultBuffer& buffer, const std::string& text, int count, std::size_t room) {
        buffer.SetBuffer(text.c_str());
        return sax::read<T>(buffer, count, room) == sax::expected_read<T>(text, count, room);
    }

    static void compare_tokens() {
        sax::RandomTokens tokens(11);
        vSAXDefaultBuffer buffer;
        for (int i = 0; i < kTokens; ++i) {
            const std::string token = tokens.next();
            ASSERT_TRUE(same(buffer, token, 1, 2)) << testing::PrintToString(token);
        }
    }

    static void compare_texts() {
        sax::RandomTokens tokens(12);
        vSAXDefaultBuffer buffer;
        for (int i = 0; i < kTexts; ++i) {
            std::string text;
            for (unsigned n = tokens.below(8); n > 0; --n) {
                text += tokens.below(4) ? std::to_string(tokens.below(100)) : tokens.next();
                if (tokens.below(3) == 0) text += '\n';
                text += ' ';
            }
            const int count = static_cast<int>(tokens.below(10)) - 1;
            ASSERT_TRUE(same(buffer, text, count, text.size() + 10)) << testing::PrintToString(text) << count;
        }
    }
};

using Numbers = testing::Types<int, float, double>;
TYPED_TEST_SUITE(SaxBufferComparison, Numbers);

TYPED_TEST(SaxBufferComparison, HostileTokens) {
    vSAXDefaultBuffer buffer;
    for (const char* token : sax::kHostileTokens)
        EXPECT_TRUE(this->same(buffer, token, 1, 2)) << testing::PrintToString(token);
}

TYPED_TEST(SaxBufferComparison, AMillionTokens) { this->compare_tokens(); }

TYPED_TEST(SaxBufferComparison, TextsOfSeveralTokens) { this->compare_texts(); }

TYPED_TEST(SaxBufferComparison, AMillionTokensUnderADecimalComma) {
    const sax::DecimalComma comma;
    if (!comma.set()) GTEST_SKIP() << "the locale " << sax::kDecimalComma << " is not on this machine";
    this->compare_tokens();
}

TYPED_TEST(SaxBufferComparison, TextsOfSeveralTokensUnderADecimalComma) {
    const sax::DecimalComma comma;
    if (!comma.set()) GTEST_SKIP() << "the locale " << sax::kDecimalComma << " is not on this machine";
    this->compare_texts();
}

}  // namespace
