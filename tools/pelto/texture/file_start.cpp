#include "texture/file_start.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <sstream>
#include <system_error>

std::uint32_t FileStart::number(std::size_t offset) const {
    std::uint32_t number = 0;
    for (std::size_t i = 4; i-- > 0;) number = number << 8 | static_cast<unsigned char>(bytes[offset + i]);
    return number;
}

std::optional<FileStart> read_start(const std::string& path) {
    // Opening a pipe would wait for its other end.
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    FileStart start;
    file.read(start.bytes.data(), static_cast<std::streamsize>(start.bytes.size()));
    start.length = static_cast<std::size_t>(file.gcount());
    return start;
}

std::optional<std::string> why_unreadable(const std::string& path) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (std::filesystem::is_directory(status)) return "is a directory";
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        return "is not a regular file: its length cannot be told";
    }
    errno = 0;
    const std::optional<FileStart> start = read_start(path);
    if (!start) {
        return errno != 0 ? std::string("cannot be opened: ") + std::strerror(errno) : "cannot be opened";
    }
    if (start->length == 0) return "is empty";
    return std::nullopt;
}

std::string in_quotes(std::string_view bytes) {
    std::ostringstream out;
    out << '"';
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte < 0x7F) {
            out << c;
        } else {
            out << "\\x" << std::hex << std::setw(2) << std::setfill('0') << unsigned{byte};
        }
    }
    out << '"';
    return out.str();
}
