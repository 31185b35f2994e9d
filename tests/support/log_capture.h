// SPDX-License-Identifier: Apache-2.0
// Takes the kernel log's sink for its lifetime and keeps the messages.
#ifndef TESTS_SUPPORT_LOG_CAPTURE_H
#define TESTS_SUPPORT_LOG_CAPTURE_H

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "vLogger.h"

namespace support {

struct LogRecord {
    std::string channel;
    int level;
    std::string text;

    bool operator==(const LogRecord&) const = default;
};

/// Captures nest; the end of one restores the sink before it. Messages may come from any thread.
class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// The messages since construction, in order.
    std::vector<LogRecord> records() const;

private:
    struct Kept {
        std::mutex mutex;
        std::vector<LogRecord> records;
    };

    std::shared_ptr<Kept> kept_;
    TOZ::vLogger::Sink before_;
};

}  // namespace support

#endif
