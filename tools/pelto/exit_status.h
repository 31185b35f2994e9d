// SPDX-License-Identifier: Apache-2.0
// How the command ends.
#ifndef PELTO_TOOL_EXIT_STATUS_H
#define PELTO_TOOL_EXIT_STATUS_H

enum ExitStatus : int {
    kExitSuccess = 0,
    kExitFailure = 1,  // a file could not be read
    kExitUsage = 2,    // wrong arguments
};

#endif
