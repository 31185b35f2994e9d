// SPDX-License-Identifier: Apache-2.0

#include "support/check_failure_capture.h"

#include <ostream>
#include <utility>

namespace support {

namespace {

std::string last_part(const std::string& path) {
    const std::size_t separator = path.find_last_of("/\\");
    return separator == std::string::npos ? path : path.substr(separator + 1);
}

}  // namespace

CheckFailureCapture::CheckFailureCapture() : kept_(std::make_shared<Kept>()) {
    before_ = vSetCheckFailureSink([kept = kept_](const vCheckFailureRecord& record) {
        const std::lock_guard lock(kept->mutex);
        kept->reports.push_back({record.isPointer, record.text, last_part(record.sourcePath), record.line});
    });
}

CheckFailureCapture::~CheckFailureCapture() { vSetCheckFailureSink(std::move(before_)); }

std::vector<CheckFailureReport> CheckFailureCapture::take() {
    const std::lock_guard lock(kept_->mutex);
    return std::exchange(kept_->reports, {});
}

void PrintTo(const CheckFailureReport& report, std::ostream* out) {
    *out << report.source_file << ':' << report.line << (report.is_pointer ? ": null pointer: " : ": ")
         << report.text;
}

}  // namespace support
