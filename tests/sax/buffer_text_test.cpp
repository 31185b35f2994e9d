// SPDX-License-Identifier: Apache-2.0
// Collecting the text: AppendToBuffer, ClearBuffer, SetBuffer and SetLine.
#include <climits>
#include <gtest/gtest.h>
#include <new>
#include <string>

#include "sax/buffer_private.h"
#include "sax/recording_buffer.h"
#include "support/allocation.h"

namespace {

using sax::RecordingBuffer;
using sax::text_of;

TEST(SaxBufferText, AppendAddsAtTheEnd) {
    RecordingBuffer buffer;
    buffer.AppendToBuffer("one ");
    EXPECT_EQ(text_of(buffer), "one ");
    buffer.AppendToBuffer("");
    buffer.AppendToBuffer(" two\n");
    EXPECT_EQ(text_of(buffer), "one  two\n");
}

TEST(SaxBufferText, ManyRunsOfCharactersMakeOneText) {
    RecordingBuffer buffer;
    std::string expected;
    for (int i = 0; i < 1000; ++i) {
        const std::string run = std::to_string(i) + '|';
        buffer.AppendToBuffer(run.c_str());
        expected += run;
    }
    EXPECT_EQ(text_of(buffer), expected);
}

TEST(SaxBufferText, ANumberSplitOverRunsIsOneNumber) {
    RecordingBuffer buffer;
    buffer.AppendToBuffer("1");
    buffer.AppendToBuffer("2");
    int value = 0;
    EXPECT_EQ(buffer.GetInt32(value), 1);
    EXPECT_EQ(value, 12);
}

TEST(SaxBufferText, AppendTakesTheBuffersOwnText) {
    RecordingBuffer buffer("abcdefghijklmnopqrst");
    buffer.AppendToBuffer(buffer.*buffer_private::buffer());
    EXPECT_EQ(text_of(buffer), "abcdefghijklmnopqrstabcdefghijklmnopqrst");
}

TEST(SaxBufferText, AppendingWithinWhatItHeldTakesNoMemory) {
    const OXAUnicodeString run(std::string(100, 'x').c_str());
    vSAXDefaultBuffer buffer;
    for (int i = 0; i < 10; ++i) buffer.AppendToBuffer(run);
    buffer.ClearBuffer();
    const support::AllocationRecorder recorder;
    for (int i = 0; i < 10; ++i) buffer.AppendToBuffer(run);
    EXPECT_EQ(recorder.allocations(), 0U);
}

TEST(SaxBufferText, ClearEmptiesTheText) {
    RecordingBuffer buffer("text");
    buffer.ClearBuffer();
    EXPECT_EQ(text_of(buffer), "");
    buffer.ClearBuffer();
    EXPECT_EQ(text_of(buffer), "");
    buffer.AppendToBuffer("new");
    EXPECT_EQ(text_of(buffer), "new");
}

TEST(SaxBufferText, SetReplacesTheText) {
    RecordingBuffer buffer;
    buffer.SetBuffer("first");
    EXPECT_EQ(text_of(buffer), "first");
    buffer.SetBuffer("second, longer than the first one");
    EXPECT_EQ(text_of(buffer), "second, longer than the first one");
    buffer.SetBuffer("");
    EXPECT_EQ(text_of(buffer), "");
}

TEST(SaxBufferText, SetCopies) {
    OXAUnicodeString text("given");
    RecordingBuffer buffer;
    buffer.SetBuffer(text);
    EXPECT_EQ(text, OXAUnicodeString("given"));
    text = "changed";
    EXPECT_EQ(text_of(buffer), "given");
}

TEST(SaxBufferText, SetTakesTheBuffersOwnText) {
    const std::string content(1000, 'x');
    RecordingBuffer buffer(content.c_str());
    buffer.SetBuffer(buffer.*buffer_private::buffer());
    EXPECT_EQ(text_of(buffer), content);
}

TEST(SaxBufferText, SetReleasesTheOldText) {
    const OXAUnicodeString none;
    vSAXDefaultBuffer buffer;
    const std::ptrdiff_t before = support::live_blocks();
    {
        const OXAUnicodeString large(std::string(1000, 'x').c_str());
        buffer.SetBuffer(large);
    }
    EXPECT_EQ(support::live_blocks(), before + 1);
    buffer.SetBuffer(none);
    EXPECT_EQ(support::live_blocks(), before);
}

TEST(SaxBufferText, AFailedSetChangesNothing) {
    const std::string old(500, 'o');
    const OXAUnicodeString large(std::string(1000, 'x').c_str());
    RecordingBuffer buffer(old.c_str());
    {
        const support::FailAllocation failure(0);
        EXPECT_THROW(buffer.SetBuffer(large), std::bad_alloc);
        EXPECT_TRUE(failure.fired());
    }
    EXPECT_EQ(text_of(buffer), old);
}

TEST(SaxBufferText, AFailedAppendChangesNothing) {
    const OXAUnicodeString large(std::string(1000, 'x').c_str());
    RecordingBuffer buffer("old");
    {
        const support::FailAllocation failure(0);
        EXPECT_THROW(buffer.AppendToBuffer(large), std::bad_alloc);
        EXPECT_TRUE(failure.fired());
    }
    EXPECT_EQ(text_of(buffer), "old");
}

TEST(SaxBufferText, SetLineStoresTheLine) {
    vSAXDefaultBuffer buffer;
    for (const int line : {1, 0, -1, INT_MAX, INT_MIN}) {
        buffer.SetLine(line);
        EXPECT_EQ(buffer.*buffer_private::line(), line);
    }
}

TEST(SaxBufferText, TheTextLeavesTheLineAlone) {
    vSAXDefaultBuffer buffer;
    buffer.SetLine(17);
    buffer.SetBuffer("12");
    buffer.AppendToBuffer("3");
    int value = 0;
    EXPECT_EQ(buffer.GetInt32(value), 1);
    buffer.ClearBuffer();
    EXPECT_EQ(buffer.GetInt32(value), 0);
    EXPECT_EQ(buffer.*buffer_private::line(), 17);
}

}  // namespace
