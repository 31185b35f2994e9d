// The kernel log: printf-style messages on two channels, handed to one replaceable sink.
//
// Without a sink of the user's, each message is one line on the standard error stream:
//     [Default] error: cannot open "a.dds"
//
// Threads: every function here may be called from any thread. The sink runs on the thread that logs,
// under no lock: it may be running several times at once, and it may itself log or install a sink.
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

/// Severities of the log, and the sink that all messages go to.
class PELTO_KERNEL_API vLogger {
public:
    enum FLogLevel { eTrace = 0, eDebug = 1, eInfo = 2, eNotice = 3, eWarning = 4, eError = 5, eFatal = 6 };

    /// Receives each message. An exception that it throws leaves the log call that made the message.
    using Sink = std::function<void(const vLogRecord&)>;

    /// Installs `sink` for both channels and returns the one before; an empty sink stands for the
    /// standard error stream, in both directions, so that SetSink(SetSink(x)) changes nothing.
    ///
    /// The sink before may still be running on another thread when this returns, and lives until it is
    /// done there. Throws std::bad_alloc, and what copying a sink throws: then nothing has changed.
    static Sink SetSink(Sink sink);
};

/// One message. The texts are never null and belong to the log: they end with the sink's call.
struct vLogRecord {
    const char* channel;       ///< "Default" or "Mefx"
    vLogger::FLogLevel level;  ///< as given to the log call
    const char* text;          ///< the formatted message, of any length, without a line feed of the log's own
};

/// Formats a message as printf does and hands it to the sink, on the channel "Default".
///
/// A null `format` reads as an empty one. Arguments that cannot be formatted leave the format itself as
/// the text. Logging throws nothing of its own: without memory for a long message, a text of about a
/// thousand bytes is logged that ends in "...".
PELTO_KERNEL_API void LogDefault(vLogger::FLogLevel level, const char* format, ...) PELTO_KERNEL_PRINTF(2, 3);

/// As LogDefault, on the channel "Mefx".
PELTO_KERNEL_API void LogMefx(vLogger::FLogLevel level, const char* format, ...) PELTO_KERNEL_PRINTF(2, 3);

}  // namespace TOZ

#undef PELTO_KERNEL_PRINTF

#endif
