// SPDX-License-Identifier: Apache-2.0
// Runs the built command as a user would.
#ifndef TESTS_SUPPORT_COMMAND_H
#define TESTS_SUPPORT_COMMAND_H

#include <string>
#include <vector>

namespace support {

struct CommandResult {
    int status;  // the exit status
    std::string out;
    std::string err;
};

/// Runs `pelto` with the arguments and waits for its end. The shell runs `before` first, in the same process.
CommandResult run_pelto(const std::vector<std::string>& arguments, const std::string& before = "");

}  // namespace support

#endif
