// SPDX-License-Identifier: Apache-2.0
// The text as a string, trimmed: GetString and GetVString.
#include <gtest/gtest.h>
#include <new>
#include <string>

#include "sax/recording_buffer.h"
#include "support/allocation.h"

namespace {

using sax::RecordingBuffer;

struct Case {
    const char* text;
    const char* trimmed;
};

class SaxBufferTrimmed : public testing::TestWithParam<Case> {};

TEST_P(SaxBufferTrimmed, IsWhatGetStringGives) {
    RecordingBuffer buffer(GetParam().text);
    std::string value = "content from before";
    EXPECT_EQ(buffer.GetString(value), 1);
    EXPECT_EQ(value, GetParam().trimmed);
    EXPECT_TRUE(buffer.errors.empty());
    EXPECT_EQ(text_of(buffer), GetParam().text);
}

TEST_P(SaxBufferTrimmed, IsWhatGetVStringGives) {
    RecordingBuffer buffer(GetParam().text);
    TOZ::vString value("content from before");
    EXPECT_EQ(buffer.GetVString(value), 1);
    EXPECT_STREQ(value.CStr(), GetParam().trimmed);
    EXPECT_EQ(value.Length(), std::string(GetParam().trimmed).size());
    EXPECT_TRUE(buffer.errors.empty());
    EXPECT_EQ(text_of(buffer), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, SaxBufferTrimmed,
    testing::Values(Case{"", ""}, Case{" ", ""}, Case{" \t\n\v\f\r", ""}, Case{"a", "a"}, Case{" a", "a"},
                    Case{"a ", "a"}, Case{" \t\n\v\f\ra\r\f\v\n\t ", "a"}, Case{"a \t\n b", "a \t\n b"},
                    Case{"\n  two words \n", "two words"}, Case{"\x01 a \x7f", "\x01 a \x7f"},
                    Case{"\xc2\xa0 a \xc2\xa0", "\xc2\xa0 a \xc2\xa0"}, Case{" h\xc3\xa9 ", "h\xc3\xa9"},
                    Case{" \x85 ", "\x85"}, Case{" \xa0\xff ", "\xa0\xff"}, Case{" 1 2 ", "1 2"}));

TEST(SaxBufferString, EveryByteButWhitespaceIsKept) {
    for (int byte = 1; byte < 256; ++byte) {
        const std::string text(3, static_cast<char>(byte));
        const bool space = byte == ' ' || (byte >= '\t' && byte <= '\r');
        const RecordingBuffer buffer(text.c_str());
        std::string value;
        EXPECT_EQ(buffer.GetString(value), 1);
        EXPECT_EQ(value, space ? "" : text) << byte;
        TOZ::vString kernel_value;
        EXPECT_EQ(buffer.GetVString(kernel_value), 1);
        EXPECT_STREQ(kernel_value.CStr(), value.c_str()) << byte;
    }
}

TEST(SaxBufferString, LongTextsComeWhole) {
    const std::string content(100000, 'x');
    const RecordingBuffer buffer((std::string(100000, '\n') + content + std::string(100000, ' ')).c_str());
    std::string value;
    EXPECT_EQ(buffer.GetString(value), 1);
    EXPECT_EQ(value, content);
    TOZ::vString kernel_value;
    EXPECT_EQ(buffer.GetVString(kernel_value), 1);
    EXPECT_EQ(kernel_value.CStr(), content);
}

TEST(SaxBufferString, TheTextEndsAtItsFirstZero) {
    const RecordingBuffer buffer(OXAUnicodeString(" a \0b", 5));
    std::string value;
    EXPECT_EQ(buffer.GetString(value), 1);
    EXPECT_EQ(value, "a");
    TOZ::vString kernel_value;
    EXPECT_EQ(buffer.GetVString(kernel_value), 1);
    EXPECT_STREQ(kernel_value.CStr(), "a");
}

TEST(SaxBufferString, AllocationFailureThrows) {
    const RecordingBuffer buffer(std::string(1000, 'x').c_str());
    std::string value;
    {
        const support::FailAllocation failure(0);
        EXPECT_THROW(buffer.GetString(value), std::bad_alloc);
    }
    TOZ::vString kernel_value("before");
    std::size_t failures = 0;
    for (;; ++failures) {
        const support::FailAllocation failure(failures);
        try {
            EXPECT_EQ(buffer.GetVString(kernel_value), 1);
            break;
        } catch (const std::bad_alloc&) {
            EXPECT_STREQ(kernel_value.CStr(), "before");
        }
    }
    // At least the string's own block can be refused.
    EXPECT_GE(failures, 1U);
    EXPECT_EQ(kernel_value.Length(), 1000U);
}

}  // namespace
