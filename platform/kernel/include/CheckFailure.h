// SPDX-License-Identifier: Apache-2.0
// Reports of failed checks, which mean that a caller broke a rule of an interface. The reporting functions
// return to the check, which continues with a harmless result.
//
// Unless you install a sink, each report is one message of TOZ::LogDefault at eError:
//     vTextureUtils.cpp:125: check failed: Not a compressed format
//     vTextureUtils.cpp:356: null pointer: iData
//
// Threads: as in the log. Any thread may call every function here; the sink runs on the reporting thread,
// under no lock.
#ifndef CHECK_FAILURE_H
#define CHECK_FAILURE_H

#include <functional>

#include "vKernelExport.h"

/// One report. The texts are never null, belong to the reporting code, and are valid until the sink returns.
struct vCheckFailureRecord {
    bool isPointer;          ///< a pointer was null; else another condition failed
    const char* text;        ///< the null expression, or the message
    const char* sourcePath;  ///< the source file of the check
    int line;                ///< the line in that file
};

/// Receives each report. If it throws, the exception leaves the reporting function.
using vCheckFailureSink = std::function<void(const vCheckFailureRecord&)>;

/// Installs `sink` and returns the previous one; an empty sink stands for the log, in both directions, so
/// that vSetCheckFailureSink(vSetCheckFailureSink(x)) changes nothing.
///
/// The previous sink may still be running on another thread when this returns, and lives until it is done
/// there. Throws std::bad_alloc, and what copying a sink throws, and then changes nothing.
PELTO_KERNEL_API vCheckFailureSink vSetCheckFailureSink(vCheckFailureSink sink);

/// Reports that a condition failed. Null texts read as empty ones; `context` is not used.
PELTO_KERNEL_API void CheckFailure__(const char* message, const char* sourcePath, int line, void* context);

/// Reports that the pointer `expression` was null. Null texts read as empty ones; `context` is not used.
PELTO_KERNEL_API void Check_Pointer_Failed__(const char* expression, const char* sourcePath, int line,
                                             void* context);

#endif
