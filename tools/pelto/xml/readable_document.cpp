// SPDX-License-Identifier: Apache-2.0
#include "xml/readable_document.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#if defined(_WIN32)
#include <io.h>
#else
#include <unistd.h>
#endif

namespace {

bool may_be_read(const std::string& path) {
#if defined(_WIN32)
    constexpr int kReadable = 4;
    return ::_access(path.c_str(), kReadable) == 0;
#else
    return ::access(path.c_str(), R_OK) == 0;
#endif
}

}  // namespace

std::optional<std::string> why_unreadable(const std::string& path) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (std::filesystem::is_directory(status)) return "is a directory";
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        return "is not a regular file: its length cannot be told";
    }
    if (!may_be_read(path)) return std::string("cannot be opened: ") + std::strerror(errno);
    if (std::filesystem::file_size(path, error) == 0 && !error) return "is empty";
    return std::nullopt;
}
