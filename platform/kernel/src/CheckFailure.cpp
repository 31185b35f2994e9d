// SPDX-License-Identifier: Apache-2.0

#include "CheckFailure.h"

#include <utility>

#include "NeverDestroyed.h"
#include "SinkSlot.h"
#include "vLogger.h"

namespace {

using ReportSlot = TOZ::SinkSlot<vCheckFailureRecord>;

ReportSlot& report_slot() {
    static TOZ::NeverDestroyed<ReportSlot> slot;
    return slot.value;
}

void log_report(const vCheckFailureRecord& record) {
    const char* kind = record.isPointer ? "null pointer" : "check failed";
    TOZ::LogDefault(TOZ::vLogger::eError, "%s:%d: %s: %s", record.sourcePath, record.line, kind, record.text);
}

const char* or_empty(const char* text) { return text ? text : ""; }

void report(bool is_pointer, const char* text, const char* source_path, int line) {
    report_slot().deliver({is_pointer, or_empty(text), or_empty(source_path), line}, &log_report);
}

}  // namespace

vCheckFailureSink vSetCheckFailureSink(vCheckFailureSink sink) {
    return report_slot().exchange(std::move(sink));
}

void CheckFailure__(const char* message, const char* sourcePath, int line, void* /*context*/) {
    report(false, message, sourcePath, line);
}

void Check_Pointer_Failed__(const char* expression, const char* sourcePath, int line, void* /*context*/) {
    report(true, expression, sourcePath, line);
}
