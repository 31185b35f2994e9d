// SPDX-License-Identifier: Apache-2.0
// A progress bar for work that a person waits for.
#ifndef PELTO_TOOL_OUTPUT_PROGRESS_H
#define PELTO_TOOL_OUTPUT_PROGRESS_H

#include <cstddef>
#include <string>

/// Draws on standard error where that is a terminal, else nothing. The destructor wipes the bar away.
class Progress {
public:
    Progress(std::string label, std::size_t steps);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void step();

private:
    void draw() const;

    std::string label_;
    std::size_t steps_;
    std::size_t done_ = 0;
    bool shown_;
};

#endif
