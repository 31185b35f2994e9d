// SPDX-License-Identifier: Apache-2.0

#include "output/HiddenFolder.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPrefix = ".pelto-unfinished-";
constexpr std::string_view kRandomPart = "XXXXXX";
constexpr char kLock[] = "lock";

// Those of this process, one after the other; changed during a SignalHold alone.
HiddenFolder* first_folder = nullptr;

bool is_number(std::string_view name) {
    return std::all_of(name.begin(), name.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool may_be_ours(const fs::path& path) {
    const std::string name = path.filename().string();
    if (name.size() != kPrefix.size() + kRandomPart.size() || name.rfind(kPrefix, 0) != 0) return false;
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::geteuid();
}

// The lock goes last: a folder without one is empty, or not one of these.
void remove_leftover(const fs::path& folder) {
    const std::string lock_path = folder.string() + "/" + kLock;
    const int lock = ::open(lock_path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
    if (lock < 0) {
        if (errno == ENOENT) ::rmdir(folder.c_str());
        return;
    }
    if (::flock(lock, LOCK_EX | LOCK_NB) == 0) {
        std::error_code ignored;
        for (fs::directory_iterator entry(folder, ignored), end; entry != end; entry.increment(ignored)) {
            if (is_number(entry->path().filename().string())) ::unlink(entry->path().c_str());
        }
        ::unlink(lock_path.c_str());
        ::rmdir(folder.c_str());
    }
    ::close(lock);
}

void remove_leftovers(const std::string& parent) {
    std::error_code ignored;
    for (fs::directory_iterator entry(parent, ignored), end; entry != end; entry.increment(ignored)) {
        if (may_be_ours(entry->path())) remove_leftover(entry->path());
    }
}

// A locked file, or -1 where another run has removed the folder as one without a lock. A file system without
// locks serves too: there nobody takes a folder for left.
int make_lock(const std::string& folder) {
    const int lock = ::open((folder + "/" + kLock).c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (lock < 0) {
        if (errno == ENOENT) return -1;
        const std::error_code error(errno, std::generic_category());
        ::rmdir(folder.c_str());
        throw std::system_error(error);
    }
    const bool lost = ::flock(lock, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    struct stat status = {};
    if (!lost && ::fstat(lock, &status) == 0 && status.st_nlink > 0) return lock;
    ::close(lock);
    return -1;
}

}  // namespace

HiddenFolder::HiddenFolder(std::string parent) : parent_(std::move(parent)) { remove_leftovers(parent_); }

HiddenFolder::~HiddenFolder() {
    if (path_.empty()) return;
    const SignalHold hold;
    remove();
    HiddenFolder** link = &first_folder;
    while (*link != this) link = &(*link)->next_;
    *link = next_;
    ::close(lock_);
}

std::string HiddenFolder::next_file(const SignalHold& hold) {
    if (path_.empty()) make(hold);
    return path_ + "/" + std::to_string(files_++);
}

void HiddenFolder::make(const SignalHold& hold) {
    while (lock_ < 0) {
        std::string path = (fs::path(parent_) / kPrefix).string().append(kRandomPart);
        if (!::mkdtemp(path.data())) throw std::system_error(errno, std::generic_category());
        lock_ = make_lock(path);
        if (lock_ >= 0) path_ = path;
    }
    next_ = std::exchange(first_folder, this);
    before_deadly_signals(&HiddenFolder::remove_all, hold);
}

void HiddenFolder::remove_all() noexcept {
    for (const HiddenFolder* folder = first_folder; folder; folder = folder->next_) folder->remove();
}

// A signal handler calls this: no memory may be asked for.
void HiddenFolder::remove() const noexcept {
    char path[PATH_MAX + 16];
    path_.copy(path, PATH_MAX);
    char* const name = path + path_.size() + 1;
    name[-1] = '/';
    for (unsigned int file = 0; file < files_; ++file) {
        *std::to_chars(name, std::end(path), file).ptr = '\0';
        ::unlink(path);
    }
    std::strcpy(name, kLock);
    ::unlink(path);
    name[-1] = '\0';
    ::rmdir(path);
}
