// SPDX-License-Identifier: Apache-2.0
// The signals that end the command, and what must be done before they do.
#ifndef PELTO_TOOL_OUTPUT_DEADLY_SIGNALS_H
#define PELTO_TOOL_OUTPUT_DEADLY_SIGNALS_H

/// While one lives, a signal waits for its end, and other threads that ask for one wait too. Not recursive.
class SignalHold {
public:
    SignalHold();
    ~SignalHold();
    SignalHold(const SignalHold&) = delete;
    SignalHold& operator=(const SignalHold&) = delete;
};

/// From now on, a signal that would end the process calls `clean_up` first, which may do only what a signal
/// handler may. It is never called during a SignalHold, and none begins after it. A signal that the process
/// was started to ignore, as nohup does, stays ignored.
void before_deadly_signals(void (*clean_up)(), const SignalHold&);

#endif
