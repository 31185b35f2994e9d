// Files that appear whole or not at all.
#ifndef PELTO_TOOL_WHOLE_FILE_H
#define PELTO_TOOL_WHOLE_FILE_H

#include <cstddef>
#include <string>

/// A file that is written beside its path and takes that name once it is complete; a file of that name is
/// then replaced. Where it never is completed, nothing remains of it, and the file of that name is as it was.
class WholeFile {
public:
    /// Throws std::runtime_error, which says what went wrong.
    explicit WholeFile(std::string path);
    ~WholeFile();
    WholeFile(const WholeFile&) = delete;
    WholeFile& operator=(const WholeFile&) = delete;

    /// What cannot be written is reported by complete(); whatever comes after it is dropped.
    void append(const void* data, std::size_t size) noexcept;

    /// Throws std::runtime_error, which says what went wrong.
    void complete();

private:
    std::string path_;
    std::string temporary_;
    int file_ = -1;
    int error_ = 0;
};

/// Writes `bytes` as a WholeFile. Throws std::runtime_error, which says what went wrong.
void write_whole_file(const std::string& path, const std::string& bytes);

#endif
