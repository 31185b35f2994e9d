// SPDX-License-Identifier: Apache-2.0
// Where files lie until they take their names.
#ifndef PELTO_TOOL_OUTPUT_HIDDEN_FOLDER_H
#define PELTO_TOOL_OUTPUT_HIDDEN_FOLDER_H

#include <string>

#include "output/deadly_signals.h"

/// A folder .pelto-unfinished-XXXXXX in the folder of the outputs, which is there from its first file on. The
/// destructor removes it with all that is in it, and so does a signal that ends the process. What SIGKILL
/// leaves, the next run that writes into the same folder removes: it tells a live run's by a locked file.
class HiddenFolder {
public:
    /// Removes what killed runs have left in `parent`.
    explicit HiddenFolder(std::string parent);
    ~HiddenFolder();
    HiddenFolder(const HiddenFolder&) = delete;
    HiddenFolder& operator=(const HiddenFolder&) = delete;

    /// The path for one more file. The caller makes the file before the hold ends, so that a signal finds it.
    /// Throws std::system_error.
    std::string next_file(const SignalHold& hold);

private:
    static void remove_all() noexcept;

    void make(const SignalHold& hold);
    void remove() const noexcept;

    std::string parent_;
    std::string path_;  // empty until it is there
    int lock_ = -1;
    unsigned int files_ = 0;
    HiddenFolder* next_ = nullptr;
};

#endif
