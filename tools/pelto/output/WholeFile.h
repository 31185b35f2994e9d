// SPDX-License-Identifier: Apache-2.0
// Files that appear whole or not at all.
#ifndef PELTO_TOOL_OUTPUT_WHOLE_FILE_H
#define PELTO_TOOL_OUTPUT_WHOLE_FILE_H

#include <cstddef>
#include <deque>
#include <map>
#include <string>

#include "output/HiddenFolder.h"

/// To be called before anything is opened. A file that grows past the limit of its size (ulimit -f) becomes
/// an error to report, and no file takes the place of a standard stream that is closed.
void prepare_for_output();

/// An output while it is written: a file without a name where the file system has such, else one in a hidden
/// folder beside its path; of a pipe, a device or standard output, that itself.
class WholeFile {
public:
    /// `folder` is the one beside `target`, the file to write. Of a pipe or a device both are left out.
    /// Throws std::runtime_error, which says what went wrong.
    explicit WholeFile(const std::string& path, const std::string& target = "",
                       HiddenFolder* folder = nullptr);
    ~WholeFile();
    WholeFile(const WholeFile&) = delete;
    WholeFile& operator=(const WholeFile&) = delete;

    /// What cannot be written is reported by close(); whatever comes after it is dropped.
    void append(const void* data, std::size_t size) noexcept;

    /// Ends the writing, so that a program may hold more files than the system lets it open.
    /// Throws std::runtime_error, which says what went wrong.
    void close();

private:
    friend class OutputFiles;

    void keep_old(const SignalHold& hold);
    void take_name(const SignalHold& hold);
    void give_name_back() noexcept;
    void hide(const SignalHold& hold);
    void close_descriptor() noexcept;

    std::string path_;    // as the user gave it
    std::string target_;  // empty for a pipe or a device
    HiddenFolder* folder_;
    std::string hidden_;  // where it lies; empty while it has no name
    std::string old_;     // where the file that it replaces is kept
    bool is_new_ = false;
    int file_ = -1;
    int error_ = 0;
};

/// The files that one call writes. They take their names together, once all are complete; files of those
/// names are then replaced, or where one is a link, the file that it leads to. Where they never are
/// completed, nothing remains of them, and the files of those names are as they were.
class OutputFiles {
public:
    /// "-" is standard output. Throws std::runtime_error, which says what went wrong.
    WholeFile& add(const std::string& path);

    /// To be called when every file is closed. Where one cannot have its name, the others give theirs back,
    /// as far as the file system lets them. Throws std::runtime_error, which says what went wrong.
    void complete();

private:
    std::map<std::string, HiddenFolder> folders_;  // by the folders that they lie in
    std::deque<WholeFile> files_;
};

#endif
