// SPDX-License-Identifier: Apache-2.0

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/allocation.h"
#include "vLogger.h"

namespace {

using TOZ::LogDefault;
using TOZ::LogMefx;
using TOZ::vLogger;
using TOZ::vLogRecord;

class LoggerSinkTest : public testing::Test {
protected:
    void TearDown() override { vLogger::SetSink(nullptr); }
};

std::string standard_error_of_a_message() {
    testing::internal::CaptureStderr();
    LogDefault(vLogger::eInfo, "text");
    return testing::internal::GetCapturedStderr();
}

TEST_F(LoggerSinkTest, InstallingReturnsTheSinkBefore) {
    int first = 0;
    EXPECT_FALSE(vLogger::SetSink([&first](const vLogRecord&) { ++first; }));
    const vLogger::Sink before = vLogger::SetSink([](const vLogRecord&) {});
    ASSERT_TRUE(before);
    before({"Default", vLogger::eInfo, "text"});
    EXPECT_EQ(first, 1);
}

TEST_F(LoggerSinkTest, AnEmptySinkRestoresTheDefault) {
    vLogger::SetSink([](const vLogRecord&) { ADD_FAILURE() << "the sink has been replaced"; });
    vLogger::SetSink(vLogger::Sink());
    EXPECT_EQ(standard_error_of_a_message(), "[Default] info: text\n");
    EXPECT_FALSE(vLogger::SetSink(nullptr));
}

TEST_F(LoggerSinkTest, PuttingBackTheSinkBeforeChangesNothing) {
    const vLogger::Sink other = [](const vLogRecord&) { ADD_FAILURE() << "the sink has been replaced"; };
    vLogger::SetSink(vLogger::SetSink(other));
    EXPECT_EQ(standard_error_of_a_message(), "[Default] info: text\n");

    int count = 0;
    vLogger::SetSink([&count](const vLogRecord&) { ++count; });
    vLogger::SetSink(vLogger::SetSink(other));
    LogDefault(vLogger::eInfo, "text");
    EXPECT_EQ(count, 1);
}

TEST_F(LoggerSinkTest, AFailedInstallationChangesNothing) {
    int first = 0;
    int second = 0;
    const std::array<char, 64> large{};  // so that copying the sink takes memory
    vLogger::SetSink([&first, large](const vLogRecord&) { first += 1 + large[0]; });
    std::size_t failures = 0;
    for (bool installed = false; !installed;) {
        vLogger::Sink next = [&second, large](const vLogRecord&) { second += 1 + large[0]; };
        const support::FailAllocation failure(failures);
        try {
            vLogger::SetSink(std::move(next));
            installed = true;
        } catch (const std::bad_alloc&) {
            ++failures;
            LogDefault(vLogger::eInfo, "text");
        }
    }
    EXPECT_GE(failures, 2U);
    EXPECT_EQ(first, static_cast<int>(failures));
    EXPECT_EQ(second, 0);
}

TEST_F(LoggerSinkTest, AnExceptionOfTheSinkReachesTheCaller) {
    vLogger::SetSink([](const vLogRecord&) { throw std::runtime_error("stop"); });
    EXPECT_THROW(LogDefault(vLogger::eInfo, "text"), std::runtime_error);
    EXPECT_THROW(LogMefx(vLogger::eInfo, "%s", std::string(5000, 'a').c_str()), std::runtime_error);
    int count = 0;
    vLogger::SetSink([&count](const vLogRecord&) { ++count; });
    LogDefault(vLogger::eInfo, "text");
    EXPECT_EQ(count, 1);
}

TEST_F(LoggerSinkTest, ASinkMayLog) {
    std::vector<std::string> texts;
    vLogger::SetSink([&texts](const vLogRecord& record) {
        texts.emplace_back(record.text);
        if (texts.size() < 3) LogDefault(record.level, "about: %s", record.text);
    });
    LogDefault(vLogger::eInfo, "text");
    EXPECT_EQ(texts, (std::vector<std::string>{"text", "about: text", "about: about: text"}));
}

TEST_F(LoggerSinkTest, ASinkMayReplaceItself) {
    std::string seen;
    const auto word = std::make_shared<std::string>("alive");
    vLogger::SetSink([&seen, word](const vLogRecord&) {
        vLogger::SetSink([&seen](const vLogRecord& record) { seen += record.text; });
        seen += *word + ',';
    });
    LogDefault(vLogger::eInfo, "first");
    LogDefault(vLogger::eInfo, "second");
    EXPECT_EQ(seen, "alive,second");
    EXPECT_EQ(word.use_count(), 1);
}

TEST_F(LoggerSinkTest, AReplacedSinkLivesUntilItIsDone) {
    std::promise<void> entered;
    std::promise<void> may_return;
    auto word = std::make_shared<const int>(42);
    const std::weak_ptr<const int> watch = word;
    int seen = 0;
    vLogger::SetSink([&, word = std::move(word), gate = may_return.get_future().share()](const vLogRecord&) {
        entered.set_value();
        gate.wait();
        seen = *word;
    });
    std::thread logging([] { LogDefault(vLogger::eInfo, "text"); });
    entered.get_future().wait();
    vLogger::SetSink(nullptr);
    EXPECT_FALSE(watch.expired());
    may_return.set_value();
    logging.join();
    EXPECT_EQ(seen, 42);
    EXPECT_TRUE(watch.expired());
}

TEST_F(LoggerSinkTest, EveryMessageOfSeveralThreadsReachesOneSink) {
    std::atomic<int> first{0};
    std::atomic<int> second{0};
    vLogger::SetSink([&first](const vLogRecord&) { ++first; });
    std::atomic<bool> done{false};
    std::thread swapper([&] {
        while (!done) {
            const vLogger::Sink before = vLogger::SetSink([&second](const vLogRecord&) { ++second; });
            vLogger::SetSink(before);
        }
    });
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 3; ++thread) {
        threads.emplace_back([] {
            for (int i = 0; i < 1000; ++i) LogDefault(vLogger::eInfo, "message %d", i);
        });
    }
    for (auto& thread : threads) thread.join();
    done = true;
    swapper.join();
    EXPECT_EQ(first + second, 3000);
}

TEST_F(LoggerSinkTest, ConcurrentInstallationsLoseNoSink) {
    constexpr int per_thread = 300;
    std::vector<int> calls(2 * per_thread + 1, 0);
    std::atomic<int> next{1};
    const auto numbered = [&calls](int number) {
        return [&calls, number](const vLogRecord&) { ++calls[static_cast<std::size_t>(number)]; };
    };
    std::vector<std::vector<vLogger::Sink>> before(2);
    vLogger::SetSink(numbered(0));
    std::vector<std::thread> threads;
    for (auto& sinks : before) {
        threads.emplace_back([&] {
            for (int i = 0; i < per_thread; ++i) sinks.push_back(vLogger::SetSink(numbered(next++)));
        });
    }
    for (auto& thread : threads) thread.join();
    before[0].push_back(vLogger::SetSink(nullptr));
    for (const auto& sinks : before) {
        for (const auto& sink : sinks) sink({"Default", vLogger::eInfo, ""});
    }
    EXPECT_EQ(calls, std::vector<int>(calls.size(), 1));
}

/// Installs another sink when it is copied, once.
struct InstallsAnother {
    explicit InstallsAnother(vLogger::Sink& given) : another(&given) {}
    InstallsAnother(const InstallsAnother& other) : another(other.another) {
        if (*another) vLogger::SetSink(std::exchange(*another, nullptr));
    }
    InstallsAnother& operator=(const InstallsAnother&) = delete;
    ~InstallsAnother() = default;
    void operator()(const vLogRecord& /*record*/) const {}

    vLogger::Sink* another;
};

TEST_F(LoggerSinkTest, ASinkThatIsInstalledDuringAnInstallationIsReturned) {
    int calls = 0;
    vLogger::Sink another;
    vLogger::SetSink(InstallsAnother(another));
    another = [&calls](const vLogRecord&) { ++calls; };
    const vLogger::Sink before = vLogger::SetSink(nullptr);
    ASSERT_TRUE(before);
    before({"Default", vLogger::eInfo, ""});
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(another);
}

TEST(LoggerSinkDeathTest, WorksWhileTheProcessEnds) {
    EXPECT_EXIT(
        {
            // Registered before the log's first use, so it runs after the destructors of later statics.
            std::atexit([] { LogDefault(vLogger::eInfo, "goodbye"); });
            std::shared_ptr<void> witness(nullptr, [](void*) { std::fputs("no sink, ", stderr); });
            vLogger::SetSink([witness = std::move(witness)](const vLogRecord& record) {
                std::fprintf(stderr, "sink: %s", record.text);
            });
            std::exit(0);
        },
        testing::ExitedWithCode(0), "^sink: goodbye$");
}

}  // namespace
