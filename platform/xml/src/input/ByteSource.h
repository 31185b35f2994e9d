// SPDX-License-Identifier: Apache-2.0
// Where the bytes of a document come from.
#ifndef BYTE_SOURCE_H
#define BYTE_SOURCE_H

#include <cstddef>
#include <memory>
#include <string>

namespace sax {

class ByteSource {
public:
    ByteSource() = default;
    virtual ~ByteSource() = default;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;

    /// Puts up to `capacity` bytes into `target` and returns their number, which is smaller only at the end.
    virtual std::size_t read(unsigned char* target, std::size_t capacity) = 0;

    /// The next read begins at the first byte again.
    virtual void rewind() = 0;
};

/// Opens a regular file. Throws InputError, which names the path, when it cannot; so does a read that fails.
std::unique_ptr<ByteSource> open_file(const std::string& path);

/// Reads bytes in memory, which live as long as somebody holds them.
std::unique_ptr<ByteSource> open_memory(std::shared_ptr<const std::string> bytes);

/// All bytes of the file; InputError also when they are more than `most`.
std::string read_file(const std::string& path, std::size_t most);

}  // namespace sax

#endif
