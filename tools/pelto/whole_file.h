// Files that appear whole or not at all.
#ifndef PELTO_TOOL_WHOLE_FILE_H
#define PELTO_TOOL_WHOLE_FILE_H

#include <cstddef>
#include <string>

/// A file that is written beside its path and takes that name once it is complete; a file of that name is
/// then replaced, or where that is a link, the file that it leads to. Where it never is completed, nothing
/// remains of it, and the file of that name is as it was.
class WholeFile {
public:
    /// Throws std::runtime_error, which says what went wrong.
    explicit WholeFile(const std::string& path);
    ~WholeFile();
    WholeFile(const WholeFile&) = delete;
    WholeFile& operator=(const WholeFile&) = delete;

    /// What cannot be written is reported by close(); whatever comes after it is dropped.
    void append(const void* data, std::size_t size) noexcept;

    /// Ends the writing, so that a program may hold more files than the system lets it open.
    /// Throws std::runtime_error, which says what went wrong.
    void close();

    /// Gives the file its name, once it is closed.
    /// Throws std::runtime_error, which says what went wrong.
    void complete();

private:
    std::string path_;
    std::string target_;     // path_, or where that is a link, what it leads to
    std::string temporary_;  // empty once it has the target's name
    int file_ = -1;
    int error_ = 0;
};

#endif
