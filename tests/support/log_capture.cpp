// SPDX-License-Identifier: Apache-2.0

#include "support/log_capture.h"

#include <utility>

namespace support {

LogCapture::LogCapture() : kept_(std::make_shared<Kept>()) {
    before_ = TOZ::vLogger::SetSink([kept = kept_](const TOZ::vLogRecord& record) {
        const std::lock_guard lock(kept->mutex);
        kept->records.push_back({record.channel, static_cast<int>(record.level), record.text});
    });
}

LogCapture::~LogCapture() { TOZ::vLogger::SetSink(std::move(before_)); }

std::vector<LogRecord> LogCapture::records() const {
    const std::lock_guard lock(kept_->mutex);
    return kept_->records;
}

}  // namespace support
