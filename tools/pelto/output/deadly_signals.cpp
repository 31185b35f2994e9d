// SPDX-License-Identifier: Apache-2.0

#include "output/deadly_signals.h"

#include <atomic>
#include <csignal>
#include <poll.h>
#include <unistd.h>

namespace {

constexpr int kDeadly[] = {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGXCPU};

std::atomic_flag taken = ATOMIC_FLAG_INIT;
sigset_t mask_before_hold;  // of the thread that has taken its turn
void (*clean_up_files)() = nullptr;

// The turn's owner cannot be interrupted by the handler, so that waiting in the handler ends.
void take_turn() {
    while (taken.test_and_set(std::memory_order_acquire)) ::poll(nullptr, 0, 1);
}

sigset_t deadly_signals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : kDeadly) sigaddset(&signals, signal);
    return signals;
}

// The turn is not given back: no other thread makes a file between the cleaning and the end.
extern "C" void clean_up_and_die(int number) {
    take_turn();
    clean_up_files();
    std::signal(number, SIG_DFL);
    sigset_t this_one;
    sigemptyset(&this_one);
    sigaddset(&this_one, number);
    std::raise(number);
    ::pthread_sigmask(SIG_UNBLOCK, &this_one, nullptr);
    // The first process of a container outlives its own signals.
    ::_exit(128 + number);
}

}  // namespace

SignalHold::SignalHold() {
    const sigset_t signals = deadly_signals();
    sigset_t before;
    ::pthread_sigmask(SIG_BLOCK, &signals, &before);
    take_turn();
    mask_before_hold = before;
}

SignalHold::~SignalHold() {
    const sigset_t before = mask_before_hold;
    taken.clear(std::memory_order_release);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

void before_deadly_signals(void (*clean_up)(), const SignalHold&) {
    clean_up_files = clean_up;
    struct sigaction action = {};
    action.sa_handler = clean_up_and_die;
    action.sa_mask = deadly_signals();
    for (const int signal : kDeadly) {
        struct sigaction before = {};
        ::sigaction(signal, nullptr, &before);
        if (before.sa_handler == SIG_DFL) ::sigaction(signal, &action, nullptr);
    }
}
