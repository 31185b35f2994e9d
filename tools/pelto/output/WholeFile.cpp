// SPDX-License-Identifier: Apache-2.0

#include "output/WholeFile.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "output/output_path.h"
#include "output/printable.h"

namespace {

namespace fs = std::filesystem;

// As for any other file of the user; the umask takes its share.
constexpr mode_t kUsualMode = 0666;

// Left to the rest of the program when many files stay open.
constexpr rlim_t kSpareDescriptors = 16;

[[noreturn]] void fail(const std::string& path, const std::string& why) {
    throw std::runtime_error(printable(path) + " cannot be written: " + why);
}

[[noreturn]] void fail(const std::string& path, int error) { fail(path, std::strerror(error)); }

// The path, or where that is a link, which stays, the file that it leads to.
std::string target_of(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::none) fail(path, error.message());
    if (fs::is_directory(status)) fail(path, EISDIR);
    if (fs::exists(status) && ::access(path.c_str(), W_OK) != 0) fail(path, errno);
    if (!fs::is_symlink(fs::symlink_status(path, error))) return path;
    if (!fs::exists(status)) fail(path, "it is a link that leads to no file");
    const std::string target = fs::canonical(path, error).string();
    if (error) fail(path, error.message());
    return target;
}

std::string folder_of(const std::string& path) {
    const std::string folder = fs::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

std::string descriptor_path(int file) { return "/proc/self/fd/" + std::to_string(file); }

// A file without a name, which goes with its descriptor; -1 where it could never be given one.
int open_unnamed([[maybe_unused]] const std::string& folder) {
#if defined(O_TMPFILE)
    const int file = ::open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, kUsualMode);
    if (file < 0 || ::access(descriptor_path(file).c_str(), F_OK) == 0) return file;
    ::close(file);
#endif
    return -1;
}

bool give_name(int unnamed_file, const std::string& path) {
    return ::linkat(AT_FDCWD, descriptor_path(unnamed_file).c_str(), AT_FDCWD, path.c_str(),
                    AT_SYMLINK_FOLLOW) == 0;
}

rlimit open_file_limit() {
    rlimit limit = {};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    return limit;
}

void raise_open_file_limit() {
    rlimit limit = open_file_limit();
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_NOFILE, &limit);
}

}  // namespace

void prepare_for_output() {
    std::signal(SIGXFSZ, SIG_IGN);
    // Writing to one that is open for reading alone still fails.
    int file = 0;
    while (file >= 0 && file <= STDERR_FILENO) file = ::open("/dev/null", O_RDONLY);
    if (file > STDERR_FILENO) ::close(file);
}

WholeFile::WholeFile(const std::string& path, const std::string& target, HiddenFolder* folder)
    : path_(path == kStandardOutput ? "standard output" : path), target_(target), folder_(folder) {
    if (!folder_) {
        file_ = goes_to_standard_output(path) ? ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0)
                                              : ::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
        if (file_ < 0) fail(path_, errno);
        return;
    }
    file_ = open_unnamed(folder_of(target_));
    if (file_ >= 0) return;
    try {
        const SignalHold hold;
        hidden_ = folder_->next_file(hold);
        file_ = ::open(hidden_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kUsualMode);
        if (file_ < 0) fail(path_, errno);
    } catch (const std::system_error& error) {
        fail(path_, error.code().value());
    }
}

WholeFile::~WholeFile() { close_descriptor(); }

void WholeFile::append(const void* data, std::size_t size) noexcept {
    std::size_t written = 0;
    while (error_ == 0 && written < size) {
        const ssize_t count = ::write(file_, static_cast<const char*>(data) + written, size - written);
        if (count >= 0) {
            written += static_cast<std::size_t>(count);
        } else if (errno == EAGAIN) {
            pollfd ready = {file_, POLLOUT, 0};
            ::poll(&ready, 1, -1);
        } else if (errno != EINTR) {
            error_ = errno;
        }
    }
}

void WholeFile::close() {
    const bool unnamed = folder_ && hidden_.empty();
    if (unnamed && error_ == 0 &&
        static_cast<rlim_t>(file_) + kSpareDescriptors >= open_file_limit().rlim_cur) {
        const SignalHold hold;
        hide(hold);
    }
    if (error_ != 0 || !unnamed || !hidden_.empty()) close_descriptor();
    if (error_ != 0) fail(path_, error_);
}

void WholeFile::close_descriptor() noexcept {
    if (file_ >= 0 && ::close(std::exchange(file_, -1)) != 0 && error_ == 0) error_ = errno;
}

// Gives an unnamed file a name in the hidden folder.
void WholeFile::hide(const SignalHold& hold) {
    try {
        const std::string path = folder_->next_file(hold);
        if (!give_name(file_, path)) fail(path_, errno);
        hidden_ = path;
    } catch (const std::system_error& error) {
        fail(path_, error.code().value());
    }
}

// So that the name can be given back. Some file systems have no second names: there it stays replaced.
void WholeFile::keep_old(const SignalHold& hold) {
    is_new_ = ::access(target_.c_str(), F_OK) != 0;
    if (is_new_) return;
    try {
        const std::string path = folder_->next_file(hold);
        if (::link(target_.c_str(), path.c_str()) == 0) old_ = path;
    } catch (const std::system_error& error) {
        fail(path_, error.code().value());
    }
}

void WholeFile::take_name(const SignalHold& hold) {
    if (hidden_.empty()) {
        if (give_name(file_, target_)) return;
        if (errno != EEXIST) fail(path_, errno);
        hide(hold);
    }
    if (std::rename(hidden_.c_str(), target_.c_str()) != 0) fail(path_, errno);
}

void WholeFile::give_name_back() noexcept {
    if (!old_.empty()) std::rename(old_.c_str(), target_.c_str());
    if (is_new_) ::unlink(target_.c_str());
}

WholeFile& OutputFiles::add(const std::string& path) {
    if (files_.size() == 1) raise_open_file_limit();
    if (goes_to_stream(path)) return files_.emplace_back(path);
    const std::string target = target_of(path);
    const std::string folder = folder_of(target);
    return files_.emplace_back(path, target, &folders_.try_emplace(folder, folder).first->second);
}

void OutputFiles::complete() {
    const SignalHold hold;
    std::size_t named = 0;
    try {
        for (; named < files_.size(); ++named) {
            WholeFile& file = files_[named];
            if (!file.folder_) continue;
            if (files_.size() > 1) file.keep_old(hold);
            file.take_name(hold);
        }
    } catch (...) {
        while (named-- > 0) files_[named].give_name_back();
        throw;
    }
}
