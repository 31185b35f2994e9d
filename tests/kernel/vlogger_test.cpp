// SPDX-License-Identifier: Apache-2.0

#include "vLogger.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/allocation.h"
#include "support/log_capture.h"

namespace {

using support::LogCapture;
using support::LogRecord;
using TOZ::LogDefault;
using TOZ::LogMefx;
using TOZ::vLogger;
using TOZ::vLogRecord;

class LoggerTest : public testing::Test {
protected:
    void TearDown() override { vLogger::SetSink(nullptr); }
};

std::string logged_text(const std::string& text) {
    const LogCapture log;
    LogDefault(vLogger::eInfo, "%s", text.c_str());
    return log.records().at(0).text;
}

std::string standard_error_of(void (*action)()) {
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}

TEST_F(LoggerTest, HandsOverChannelLevelAndFormattedText) {
    const LogCapture log;
    LogDefault(vLogger::eWarning, "%s has %d levels", "a.dds", 7);
    LogMefx(vLogger::eError, "%5.2f|%-3c|%%", 1.5, 'x');
    EXPECT_EQ(log.records(),
              (std::vector<LogRecord>{{"Default", 4, "a.dds has 7 levels"}, {"Mefx", 5, " 1.50|x  |%"}}));
}

TEST_F(LoggerTest, TextsOfEveryLengthAreWhole) {
    for (const std::size_t length : {0U, 1U, 1022U, 1023U, 1024U, 1025U, 4096U, 1000000U}) {
        const std::string text(length, 'a');
        EXPECT_EQ(logged_text(text), text) << length;
    }
}

TEST_F(LoggerTest, ANullFormatReadsAsAnEmptyOne) {
    const LogCapture log;
    const char* volatile none = nullptr;
    LogDefault(vLogger::eInfo, none, 1);
    LogMefx(vLogger::eInfo, none, 1);
    EXPECT_EQ(log.records(), (std::vector<LogRecord>{{"Default", 2, ""}, {"Mefx", 2, ""}}));
}

TEST_F(LoggerTest, AnEmptyFormatIsAnEmptyText) {
    const LogCapture log;
    const char* volatile empty = "";
    LogDefault(vLogger::eInfo, empty, 1);
    EXPECT_EQ(log.records(), (std::vector<LogRecord>{{"Default", 2, ""}}));
}

TEST_F(LoggerTest, ArgumentsThatCannotBeFormattedLeaveTheFormat) {
    const LogCapture log;
    LogDefault(vLogger::eError, "name: %ls", L"\x2603");  // no such character in the "C" locale
    EXPECT_EQ(log.records(), (std::vector<LogRecord>{{"Default", 5, "name: %ls"}}));
}

TEST_F(LoggerTest, AShortMessageTakesNoMemory) {
    int count = 0;
    vLogger::SetSink([&count](const vLogRecord&) { ++count; });
    const support::AllocationRecorder recorder;
    LogDefault(vLogger::eInfo, "%d", 1);
    EXPECT_EQ(recorder.allocations(), 0U);
    EXPECT_EQ(count, 1);
}

TEST_F(LoggerTest, WithoutMemoryALongMessageIsCut) {
    const LogCapture log;
    const std::string text(5000, 'a');
    {
        const support::FailAllocation failure(0);
        LogDefault(vLogger::eError, "%s", text.c_str());
        ASSERT_TRUE(failure.fired());
    }
    ASSERT_EQ(log.records().size(), 1U);
    EXPECT_EQ(log.records()[0].text, std::string(1020, 'a') + "...");
}

TEST_F(LoggerTest, TheDefaultSinkWritesOneLineToStandardError) {
    EXPECT_EQ(standard_error_of([] {
                  LogDefault(vLogger::eError, "cannot open %s", "a.dds");
                  LogMefx(vLogger::eInfo, "%d%%", 5);
              }),
              "[Default] error: cannot open a.dds\n[Mefx] info: 5%\n");
}

TEST_F(LoggerTest, TheDefaultSinkNamesEveryLevel) {
    EXPECT_EQ(standard_error_of([] {
                  for (int level = 0; level < 8; ++level) {
                      LogDefault(static_cast<vLogger::FLogLevel>(level), "%d", level);
                  }
              }),
              "[Default] trace: 0\n[Default] debug: 1\n[Default] info: 2\n[Default] notice: 3\n"
              "[Default] warning: 4\n[Default] error: 5\n[Default] fatal: 6\n[Default] unknown level: 7\n");
}

TEST_F(LoggerTest, TheDefaultSinkWritesALongLineWhole) {
    EXPECT_EQ(standard_error_of([] { LogDefault(vLogger::eInfo, "%s", std::string(20000, 'a').c_str()); }),
              "[Default] info: " + std::string(20000, 'a') + "\n");
}

TEST_F(LoggerTest, TheDefaultSinkNeedsNoMemory) {
    EXPECT_EQ(standard_error_of([] {
                  const support::FailAllocation failure(0);
                  LogDefault(vLogger::eFatal, "%0100d", 0);
                  EXPECT_TRUE(failure.fired());
              }),
              "[Default] fatal: " + std::string(100, '0') + "\n");
}

}  // namespace
