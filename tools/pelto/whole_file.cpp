#include "whole_file.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "printable.h"

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const std::string& path, const char* why) {
    throw std::runtime_error(printable(path) + " cannot be written: " + why);
}

[[noreturn]] void fail(const std::string& path, int error) { fail(path, std::strerror(error)); }

// mkstemp's files are for their owner alone; these are to be like any other file of the user.
mode_t usual_mode() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

}  // namespace

WholeFile::WholeFile(const std::string& path) : path_(path), target_(path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::none) fail(path, error.message().c_str());
    if (fs::is_directory(status)) fail(path, EISDIR);
    // A file that takes the name of a pipe or a device ends it for everyone.
    if (fs::exists(status) && !fs::is_regular_file(status)) fail(path, "it is not a regular file");
    if (fs::exists(status) && ::access(path.c_str(), W_OK) != 0) fail(path, errno);
    // A link stays; the file that it leads to is replaced.
    if (fs::is_symlink(fs::symlink_status(path, error))) {
        if (!fs::exists(status)) fail(path, "it is a link that leads to no file");
        target_ = fs::canonical(path, error).string();
        if (error) fail(path, error.message().c_str());
    }
    // Its name is short, so that there is room for it wherever there is for the file's own.
    temporary_ = (fs::path(target_).parent_path() / ".pelto.XXXXXX").string();
    file_ = ::mkstemp(temporary_.data());
    if (file_ < 0) fail(path, errno);
}

WholeFile::~WholeFile() {
    if (file_ >= 0) ::close(file_);
    if (!temporary_.empty()) std::remove(temporary_.c_str());
}

void WholeFile::append(const void* data, std::size_t size) noexcept {
    std::size_t written = 0;
    while (error_ == 0 && written < size) {
        const ssize_t count = ::write(file_, static_cast<const char*>(data) + written, size - written);
        if (count > 0) written += static_cast<std::size_t>(count);
        if (count < 0 && errno != EINTR) error_ = errno;
    }
}

void WholeFile::close() {
    if (error_ == 0 && ::fchmod(file_, usual_mode()) != 0) error_ = errno;
    if (::close(std::exchange(file_, -1)) != 0 && error_ == 0) error_ = errno;
    if (error_ != 0) fail(path_, error_);
}

void WholeFile::complete() {
    if (std::rename(temporary_.c_str(), target_.c_str()) != 0) fail(path_, errno);
    temporary_.clear();
}
