// SPDX-License-Identifier: Apache-2.0

#include "output/Progress.h"

#include <cstdio>
#include <unistd.h>
#include <utility>

Progress::Progress(std::string label, std::size_t steps)
    : label_(std::move(label)), steps_(steps), shown_(steps > 1 && ::isatty(STDERR_FILENO)) {
    if (shown_) draw();
}

Progress::~Progress() {
    constexpr char kWipeLine[] = "\r\x1b[K";
    if (shown_) std::fputs(kWipeLine, stderr);
}

void Progress::step() {
    ++done_;
    if (shown_) draw();
}

void Progress::draw() const {
    constexpr std::size_t kWidth = 30;
    const std::size_t filled = kWidth * done_ / steps_;
    const std::string bar = std::string(filled, '#') + std::string(kWidth - filled, '.');
    std::fprintf(stderr, "\r%s [%s] %zu/%zu", label_.c_str(), bar.c_str(), done_, steps_);
    std::fflush(stderr);
}
