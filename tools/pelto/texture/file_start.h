// The start of a file: whether it can be read, and what kind of file it is.
#ifndef PELTO_TOOL_TEXTURE_FILE_START_H
#define PELTO_TOOL_TEXTURE_FILE_START_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct FileStart {
    /// How many of `bytes` the file has; the others are zero.
    std::size_t length = 0;
    std::array<char, 128> bytes{};

    std::string_view text(std::size_t offset, std::size_t count) const {
        return {bytes.data() + offset, count};
    }

    /// Four bytes as a little-endian number.
    std::uint32_t number(std::size_t offset) const;
};

/// Nothing when the file cannot be opened, or is no regular file.
std::optional<FileStart> read_start(const std::string& path);

/// Why no bytes can be had from the file: it is a folder or a device, cannot be opened, or is empty.
std::optional<std::string> why_unreadable(const std::string& path);

/// Bytes of a file in quotes. Those that are no ASCII characters are written as \xNN.
std::string in_quotes(std::string_view bytes);

#endif
