// SPDX-License-Identifier: Apache-2.0
// The kernel log: printf-style messages on two channels, handed to one replaceable sink.
//
// Unless you install a sink, each message is one line on the standard error stream:
//     [Default] error: cannot open "a.dds"
//
// Threads: any thread may call every function here. The sink runs on the thread that logs, under no lock: it
// may run several times at once, and it may itself log or install a sink.
#ifndef V_LOGGER_H
#define V_LOGGER_H

#include <functional>

#include "vKernelExport.h"

#if defined(__GNUC__) || defined(__clang__)
#define PELTO_KERNEL_PRINTF(formatIndex, argumentIndex) \
    __attribute__((__format__(__printf__, formatIndex, argumentIndex)))
#else
#define PELTO_KERNEL_PRINTF(formatIndex, argumentIndex)
#endif

namespace TOZ {

struct vLogRecord;

/// Severities of the log, and the sink of all messages.
class PELTO_KERNEL_API vLogger {
public:
    enum FLogLevel { eTrace = 0, eDebug = 1, eInfo = 2, eNotice = 3, eWarning = 4, eError = 5, eFatal = 6 };

    /// Receives each message. If it throws, the exception leaves the log call that made the message.
    using Sink = std::function<void(const vLogRecord&)>;

    /// Installs `sink` for both channels and returns the previous one; an empty sink stands for the
    /// standard error stream, in both directions, so that SetSink(SetSink(x)) changes nothing.
    ///
    /// The previous sink may still be running on another thread when this returns, and lives until it is
    /// done there. Throws std::bad_alloc, and what copying a sink throws, and then changes nothing.
    static Sink SetSink(Sink sink);
};

/// One message. The texts are never null, belong to the log, and are valid until the sink returns.
struct vLogRecord {
    const char* channel;       ///< "Default" or "Mefx"
    vLogger::FLogLevel level;  ///< as given to the log call
    const char* text;          ///< the formatted message, of any length; the log adds no line feed
};

/// Formats a message as printf does and hands it to the sink, on the channel "Default".
///
/// A null `format` reads as an empty one. Arguments that cannot be formatted leave the format itself as
/// the text. Logging itself never throws: without memory for a long message, it logs about a thousand bytes
/// that end in "...".
PELTO_KERNEL_API void LogDefault(vLogger::FLogLevel level, const char* format, ...) PELTO_KERNEL_PRINTF(2, 3);

/// As LogDefault, on the channel "Mefx".
PELTO_KERNEL_API void LogMefx(vLogger::FLogLevel level, const char* format, ...) PELTO_KERNEL_PRINTF(2, 3);

}  // namespace TOZ

#undef PELTO_KERNEL_PRINTF

#endif
