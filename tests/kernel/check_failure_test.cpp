// SPDX-License-Identifier: Apache-2.0

#include <atomic>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "CheckFailure.h"
#include "support/allocation.h"
#include "support/log_capture.h"
#include "vLogger.h"

namespace {

struct Report {
    bool is_pointer;
    std::string text;
    std::string source_path;
    int line;

    bool operator==(const Report&) const = default;
};

class CheckFailureTest : public testing::Test {
protected:
    void TearDown() override { vSetCheckFailureSink(nullptr); }

    vCheckFailureSink keep_reports() {
        return [this](const vCheckFailureRecord& record) {
            reports.push_back({record.isPointer, record.text, record.sourcePath, record.line});
        };
    }

    std::vector<Report> reports;
};

TEST_F(CheckFailureTest, ReachesTheSinkWithItsPlace) {
    vSetCheckFailureSink(keep_reports());
    CheckFailure__("Not a compressed format", "src/a.cpp", 125, nullptr);
    Check_Pointer_Failed__("iData", "src/b.cpp", 356, this);
    EXPECT_EQ(reports, (std::vector<Report>{{false, "Not a compressed format", "src/a.cpp", 125},
                                            {true, "iData", "src/b.cpp", 356}}));
}

TEST_F(CheckFailureTest, NullTextsReadAsEmpty) {
    vSetCheckFailureSink(keep_reports());
    CheckFailure__(nullptr, nullptr, 1, nullptr);
    Check_Pointer_Failed__(nullptr, nullptr, 2, nullptr);
    EXPECT_EQ(reports, (std::vector<Report>{{false, "", "", 1}, {true, "", "", 2}}));
}

TEST_F(CheckFailureTest, IsLoggedAsAnErrorWithoutASink) {
    const support::LogCapture log;
    CheckFailure__("Not a compressed format", "src/a.cpp", 125, nullptr);
    Check_Pointer_Failed__("iData", "src/b.cpp", 356, nullptr);
    EXPECT_EQ(log.records(), (std::vector<support::LogRecord>{
                                 {"Default", 5, "src/a.cpp:125: check failed: Not a compressed format"},
                                 {"Default", 5, "src/b.cpp:356: null pointer: iData"}}));
}

TEST_F(CheckFailureTest, TextsAreNeverTakenForAFormat) {
    const support::LogCapture log;
    CheckFailure__("100%s %n", "50%d.cpp", 3, nullptr);
    ASSERT_EQ(log.records().size(), 1U);
    EXPECT_EQ(log.records()[0].text, "50%d.cpp:3: check failed: 100%s %n");
}

TEST_F(CheckFailureTest, ASinkTakesThePlaceOfTheLog) {
    const support::LogCapture log;
    vSetCheckFailureSink(keep_reports());
    CheckFailure__("message", "a.cpp", 1, nullptr);
    EXPECT_TRUE(log.records().empty());
    vSetCheckFailureSink(nullptr);
    CheckFailure__("message", "a.cpp", 2, nullptr);
    EXPECT_EQ(log.records().size(), 1U);
    EXPECT_EQ(reports.size(), 1U);
}

TEST_F(CheckFailureTest, InstallingReturnsTheSinkBefore) {
    EXPECT_FALSE(vSetCheckFailureSink(keep_reports()));
    const vCheckFailureSink before = vSetCheckFailureSink([](const vCheckFailureRecord&) {});
    ASSERT_TRUE(before);
    before({false, "message", "a.cpp", 1});
    EXPECT_EQ(reports.size(), 1U);
}

TEST_F(CheckFailureTest, AnExceptionOfTheSinkReachesTheReporter) {
    vSetCheckFailureSink([](const vCheckFailureRecord&) { throw std::runtime_error("stop"); });
    EXPECT_THROW(CheckFailure__("message", "a.cpp", 1, nullptr), std::runtime_error);
    EXPECT_THROW(Check_Pointer_Failed__("pointer", "a.cpp", 1, nullptr), std::runtime_error);
}

TEST_F(CheckFailureTest, AReportTakesNoMemory) {
    int count = 0;
    vSetCheckFailureSink([&count](const vCheckFailureRecord&) { ++count; });
    const support::AllocationRecorder recorder;
    CheckFailure__("message", "a.cpp", 1, nullptr);
    EXPECT_EQ(recorder.allocations(), 0U);
    EXPECT_EQ(count, 1);
}

TEST_F(CheckFailureTest, ASinkMayInstallAnother) {
    vSetCheckFailureSink([this](const vCheckFailureRecord& record) {
        vSetCheckFailureSink(keep_reports());
        CheckFailure__(record.text, record.sourcePath, record.line + 1, nullptr);
    });
    CheckFailure__("message", "a.cpp", 1, nullptr);
    EXPECT_EQ(reports, (std::vector<Report>{{false, "message", "a.cpp", 2}}));
}

TEST_F(CheckFailureTest, EveryReportOfSeveralThreadsArrivesOnce) {
    std::atomic<int> count{0};
    const vCheckFailureSink counting = [&count](const vCheckFailureRecord&) { ++count; };
    vSetCheckFailureSink(counting);
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i) {
        threads.emplace_back([] {
            for (int line = 0; line < 500; ++line) CheckFailure__("message", "a.cpp", line, nullptr);
        });
    }
    for (int i = 0; i < 500; ++i) vSetCheckFailureSink(counting);
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(count, 1500);
}

}  // namespace
