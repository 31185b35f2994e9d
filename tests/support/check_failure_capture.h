// SPDX-License-Identifier: Apache-2.0
// Takes the sink of the check failure reports for its lifetime and keeps the reports.
#ifndef TESTS_SUPPORT_CHECK_FAILURE_CAPTURE_H
#define TESTS_SUPPORT_CHECK_FAILURE_CAPTURE_H

#include <iosfwd>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "CheckFailure.h"

namespace support {

struct CheckFailureReport {
    bool is_pointer;
    std::string text;
    std::string source_file;  // the last part of the source path
    int line;

    bool operator==(const CheckFailureReport&) const = default;
};

/// Captures nest; the end of one restores the sink before it. Reports may come from any thread.
class CheckFailureCapture {
public:
    CheckFailureCapture();
    ~CheckFailureCapture();
    CheckFailureCapture(const CheckFailureCapture&) = delete;
    CheckFailureCapture& operator=(const CheckFailureCapture&) = delete;

    /// The reports since construction or the last call, in order.
    std::vector<CheckFailureReport> take();

private:
    struct Kept {
        std::mutex mutex;
        std::vector<CheckFailureReport> reports;
    };

    std::shared_ptr<Kept> kept_;
    vCheckFailureSink before_;
};

/// For failure messages.
void PrintTo(const CheckFailureReport& report, std::ostream* out);

}  // namespace support

#endif
