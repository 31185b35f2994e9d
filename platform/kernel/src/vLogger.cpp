// SPDX-License-Identifier: Apache-2.0

#include "vLogger.h"

#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include "NeverDestroyed.h"
#include "SinkSlot.h"

namespace TOZ {
namespace {

SinkSlot<vLogRecord>& sink_slot() {
    static NeverDestroyed<SinkSlot<vLogRecord>> slot;
    return slot.value;
}

const char* level_name(vLogger::FLogLevel level) {
    switch (level) {
        case vLogger::eTrace:
            return "trace";
        case vLogger::eDebug:
            return "debug";
        case vLogger::eInfo:
            return "info";
        case vLogger::eNotice:
            return "notice";
        case vLogger::eWarning:
            return "warning";
        case vLogger::eError:
            return "error";
        case vLogger::eFatal:
            return "fatal";
    }
    return "unknown level";
}

/// Writes the line in one piece: standard error is unbuffered, and the pieces of a line could mix with
/// those of other processes. Only without memory for the whole line is it left to fprintf.
void write_to_stderr(const vLogRecord& record) {
    const char* level = level_name(record.level);
    try {
        std::string line = "[";
        line.append(record.channel).append("] ").append(level).append(": ").append(record.text).append("\n");
        std::fwrite(line.data(), 1, line.size(), stderr);
    } catch (const std::bad_alloc&) {
        std::fprintf(stderr, "[%s] %s: %s\n", record.channel, level, record.text);
    }
}

/// A formatted text of any length, which takes memory only when it is long and never throws.
class FormattedText {
public:
    /// A null `format` reads as an empty one. It must outlive the object: it is the text when the
    /// arguments cannot be formatted.
    FormattedText(const char* format, std::va_list arguments) : text_(fixed_) {
        if (!format) format = "";
        std::va_list again;
        va_copy(again, arguments);
        // The analyzer does not follow a list of arguments into a constructor.
        // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized)
        const int length = std::vsnprintf(fixed_, sizeof fixed_, format, arguments);
        if (length < 0) {
            text_ = format;
        } else if (static_cast<std::size_t>(length) >= sizeof fixed_) {
            format_on_heap(static_cast<std::size_t>(length) + 1, format, again);
        }
        va_end(again);
    }

    FormattedText(const FormattedText&) = delete;
    FormattedText& operator=(const FormattedText&) = delete;

    const char* c_str() const { return text_; }

private:
    void format_on_heap(std::size_t size, const char* format, std::va_list arguments) {
        heap_.reset(new (std::nothrow) char[size]);
        if (heap_) {
            std::vsnprintf(heap_.get(), size, format, arguments);
            text_ = heap_.get();
        } else {
            static constexpr char ellipsis[] = "...";
            std::memcpy(fixed_ + sizeof fixed_ - sizeof ellipsis, ellipsis, sizeof ellipsis);
        }
    }

    char fixed_[1024];
    std::unique_ptr<char[]> heap_;
    const char* text_;
};

void deliver(const char* channel, vLogger::FLogLevel level, const FormattedText& text) {
    sink_slot().deliver({channel, level, text.c_str()}, &write_to_stderr);
}

}  // namespace

vLogger::Sink vLogger::SetSink(Sink sink) { return sink_slot().exchange(std::move(sink)); }

void LogDefault(vLogger::FLogLevel level, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const FormattedText text(format, arguments);
    va_end(arguments);
    deliver("Default", level, text);
}

void LogMefx(vLogger::FLogLevel level, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const FormattedText text(format, arguments);
    va_end(arguments);
    deliver("Mefx", level, text);
}

}  // namespace TOZ
