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

WholeFile::WholeFile(std::string path) : path_(std::move(path)), temporary_(path_ + ".XXXXXX") {
    // A file that takes the name of a pipe or a device ends it for everyone.
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path_, error);
    if (std::filesystem::is_directory(status)) fail(path_, EISDIR);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        fail(path_, "it is not a regular file");
    }
    file_ = ::mkstemp(temporary_.data());
    if (file_ < 0) fail(path_, errno);
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
    if (std::rename(temporary_.c_str(), path_.c_str()) != 0) fail(path_, errno);
    temporary_.clear();
}
