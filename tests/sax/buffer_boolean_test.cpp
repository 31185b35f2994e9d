// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <string>

#include "sax/recording_buffer.h"

namespace {

using sax::Errors;
using sax::RecordingBuffer;

TEST(SaxBufferBoolean, ReadsTrueAndFalse) {
    const RecordingBuffer yes("true");
    bool value = false;
    EXPECT_EQ(yes.GetBoolean(value), 1);
    EXPECT_TRUE(value);

    const RecordingBuffer no("false");
    EXPECT_EQ(no.GetBoolean(value), 1);
    EXPECT_FALSE(value);

    EXPECT_TRUE(yes.errors.empty());
    EXPECT_TRUE(no.errors.empty());
}

class SaxBufferNoBoolean : public testing::TestWithParam<const char*> {};

TEST_P(SaxBufferNoBoolean, FailsLogsTheTextAndKeepsTheValue) {
    for (const bool before : {false, true}) {
        const RecordingBuffer buffer(GetParam());
        bool value = before;
        EXPECT_EQ(buffer.GetBoolean(value), 0);
        EXPECT_EQ(value, before);
        EXPECT_EQ(buffer.errors, (Errors{{GetParam(), "boolean"}}));
        EXPECT_TRUE(buffer.messages.empty());
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, SaxBufferNoBoolean,
                         testing::Values("", " ", "1", "0", "yes", "no", "True", "TRUE", "tRue", "False",
                                         "FALSE", "true ", " true", "\ntrue", "true\n", "\ttrue", "false ",
                                         " false", "\nfalse", "false\r", "tru", "truee", "t", "fals",
                                         "falsee", "true false", "truefalse"));

TEST(SaxBufferBoolean, TheTextEndsAtItsFirstZero) {
    const RecordingBuffer buffer(OXAUnicodeString("true\0x", 6));
    bool value = false;
    EXPECT_EQ(buffer.GetBoolean(value), 1);
    EXPECT_TRUE(value);
}

TEST(SaxBufferBoolean, AFailureWithoutAHookIsSilent) {
    vSAXDefaultBuffer buffer;
    buffer.SetBuffer("maybe");
    bool value = true;
    EXPECT_EQ(buffer.GetBoolean(value), 0);
    EXPECT_TRUE(value);
}

TEST(SaxBufferBoolean, EveryFailureIsLogged) {
    const RecordingBuffer buffer("maybe");
    bool value = true;
    for (int i = 0; i < 3; ++i) EXPECT_EQ(buffer.GetBoolean(value), 0);
    EXPECT_EQ(buffer.errors, (Errors{{"maybe", "boolean"}, {"maybe", "boolean"}, {"maybe", "boolean"}}));
}

}  // namespace
