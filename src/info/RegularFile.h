// SPDX-License-Identifier: Apache-2.0
// A file that has a length: no folder, pipe or device, which could block or never end.
#ifndef PELTO_INFO_REGULAR_FILE_H
#define PELTO_INFO_REGULAR_FILE_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

#include "info/ByteSource.h"

namespace pelto::info {

/// Opens a file for reading. Links are followed. What is no file is not opened: to open some devices is to
/// set them off, and a pipe's writer would find a reader that leaves.
class RegularFile {
public:
    explicit RegularFile(const std::string& path);

    /// Why no bytes can be had, for a person; empty when they can. Also when the last read failed.
    const std::string& fault() const { return fault_; }

    /// Bytes, as of the time when it was opened.
    std::uint64_t length() const { return length_; }

    /// Copies up to `n` bytes from the start, and returns how many there were: fewer when the file has
    /// shrunk, and when reading fails.
    std::size_t read(void* to, std::size_t n);

    /// Reads anywhere in the file, which must outlive the source.
    ByteSource source();

    /// Maps the whole file for reading; null when that cannot be done, and for an empty file. Whoever holds
    /// the mapping ends it with `unmap`.
    const void* map();
    static void unmap(const void* mapping, std::uint64_t length);

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::size_t read_at(std::uint64_t offset, void* to, std::size_t n);

    std::unique_ptr<std::FILE, Close> file_;
    std::uint64_t length_ = 0;
    std::string fault_;
};

}  // namespace pelto::info

#endif
