// SPDX-License-Identifier: Apache-2.0
// Runs the built command as a process that can be stopped and killed.
#ifndef TESTS_PELTO_OUTPUT_STARTED_COMMAND_H
#define TESTS_PELTO_OUTPUT_STARTED_COMMAND_H

#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

#include "support/temporary_folder.h"

/// What the command finds where it starts.
struct Surroundings {
    std::map<std::string, std::string> faults;  // what fault_injector.cpp is told
    std::vector<int> ignored_signals = {};
    bool closed_standard_error = false;
};

struct Ending {
    int status;  // the exit status; -1 where a signal has ended it
    int signal;  // 0 where it has ended by itself
    std::string err;
};

class StartedCommand {
public:
    explicit StartedCommand(const std::vector<std::string>& arguments, const Surroundings& surroundings = {});
    ~StartedCommand();
    StartedCommand(const StartedCommand&) = delete;
    StartedCommand& operator=(const StartedCommand&) = delete;

    void send(int signal) const;

    /// Waits until a signal has stopped it. Whether it has, instead of ending.
    bool wait_until_stopped();

    /// Waits for its end.
    Ending end();

private:
    const support::TemporaryFolder folder_;
    pid_t process_ = -1;  // -1 once it has ended
    int result_ = 0;
};

/// Runs it to its end.
Ending run(const std::vector<std::string>& arguments, const Surroundings& surroundings = {});

#endif
