// Reports of failed checks: a caller broke a rule of an interface. The functions that report return to
// the check, which goes on with a harmless result.
//
// Without a sink of the user's, each report is one message of TOZ::LogDefault at eError:
//     vTextureUtils.cpp:125: check failed: Not a compressed format
//     vTextureUtils.cpp:356: null pointer: iData
//
// Threads: as in the log. Every function here may be called from any thread; the sink runs on the thread
// that reports, under no lock.
#ifndef CHECK_FAILURE_H
#define CHECK_FAILURE_H

#include <functional>

#include "vKernelExport.h"

/// One report. The texts are never null and belong to the reporting code: they end with the sink's call.
struct vCheckFailureRecord {
    bool isPointer;          ///< a pointer was null; else another condition did not hold
    const char* text;        ///< the null expression, or the message
    const char* sourcePath;  ///< the source file of the check
    int line;                ///< the line in that file
};

/// Receives each report. An exception that it throws leaves the reporting function.
using vCheckFailureSink = std::function<void(const vCheckFailureRecord&)>;

/// Installs `sink` and returns the one before; an empty sink stands for the log, in both directions, so
/// that vSetCheckFailureSink(vSetCheckFailureSink(x)) changes nothing.
///
/// The sink before may still be running on another thread when this returns, and lives until it is done
/// there. Throws std::bad_alloc, and what copying a sink throws: then nothing has changed.
PELTO_KERNEL_API vCheckFailureSink vSetCheckFailureSink(vCheckFailureSink sink);

/// Reports that a condition did not hold. Null texts read as empty ones; `context` is not used.
PELTO_KERNEL_API void CheckFailure__(const char* message, const char* sourcePath, int line, void* context);

/// Reports that the pointer `expression` was null. Null texts read as empty ones; `context` is not used.
PELTO_KERNEL_API void Check_Pointer_Failed__(const char* expression, const char* sourcePath, int line,
                                             void* context);

#endif
