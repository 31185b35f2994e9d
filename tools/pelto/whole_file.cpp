#include "whole_file.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "printable.h"

namespace {

[[noreturn]] void fail(const std::string& path, int error) {
    throw std::runtime_error(printable(path) + " cannot be written: " + std::strerror(error));
}

// All of the bytes, or the error number.
int write_all(int file, const std::string& bytes) {
    std::size_t written = 0;
    while (written < bytes.size()) {
        const ssize_t count = ::write(file, bytes.data() + written, bytes.size() - written);
        if (count < 0 && errno != EINTR) return errno;
        if (count > 0) written += static_cast<std::size_t>(count);
    }
    return 0;
}

// mkstemp's files are for their owner alone; these are to be like any other file of the user.
mode_t usual_mode() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

}  // namespace

void write_whole_file(const std::string& path, const std::string& bytes) {
    if (std::filesystem::is_directory(path)) fail(path, EISDIR);
    std::string temporary = path + ".XXXXXX";
    const int file = ::mkstemp(temporary.data());
    if (file < 0) fail(path, errno);
    int error = write_all(file, bytes);
    if (error == 0 && ::fchmod(file, usual_mode()) != 0) error = errno;
    if (::close(file) != 0 && error == 0) error = errno;
    if (error == 0 && std::rename(temporary.c_str(), path.c_str()) != 0) error = errno;
    if (error != 0) {
        std::remove(temporary.c_str());
        fail(path, error);
    }
}
