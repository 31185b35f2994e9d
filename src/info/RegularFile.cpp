// SPDX-License-Identifier: Apache-2.0

#include "info/RegularFile.h"

#include <cerrno>
#include <cstring>

#if defined(_WIN32)
#include <io.h>
#include <sys/stat.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace pelto::info {

namespace {

#if defined(_WIN32)

using Status = struct _stat64;

std::FILE* open_file(const char* path) { return std::fopen(path, "rb"); }
bool seek(std::FILE* file, std::uint64_t offset) {
    return offset <= INT64_MAX && _fseeki64(file, static_cast<std::int64_t>(offset), SEEK_SET) == 0;
}
bool read_status(const char* path, Status& status) { return _stat64(path, &status) == 0; }
bool read_status(std::FILE* file, Status& status) { return _fstat64(_fileno(file), &status) == 0; }
bool is_directory(const Status& status) { return (status.st_mode & _S_IFMT) == _S_IFDIR; }
bool is_regular(const Status& status) { return (status.st_mode & _S_IFMT) == _S_IFREG; }

#else

using Status = struct stat;

// Opening a pipe, which may have come since, must not wait for its other end.
std::FILE* open_file(const char* path) {
    const int descriptor = open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) return nullptr;
    std::FILE* const file = fdopen(descriptor, "rb");
    if (!file) close(descriptor);
    return file;
}
bool seek(std::FILE* file, std::uint64_t offset) {
    return offset <= INT64_MAX && fseeko(file, static_cast<off_t>(offset), SEEK_SET) == 0;
}
bool read_status(const char* path, Status& status) { return stat(path, &status) == 0; }
bool read_status(std::FILE* file, Status& status) { return fstat(fileno(file), &status) == 0; }
bool is_directory(const Status& status) { return S_ISDIR(status.st_mode); }
bool is_regular(const Status& status) { return S_ISREG(status.st_mode); }

#endif

std::string why_not_regular(const Status& status) {
    if (is_directory(status)) return "is a directory";
    return is_regular(status) ? "" : "is not a regular file: its length cannot be told";
}

std::string with_reason(const char* what) {
    return std::string(what).append(": ").append(std::strerror(errno));
}

}  // namespace

RegularFile::RegularFile(const std::string& path) {
    Status status{};
    if (read_status(path.c_str(), status)) fault_ = why_not_regular(status);
    if (!fault_.empty()) return;
    file_.reset(open_file(path.c_str()));
    if (!file_ || !read_status(file_.get(), status)) {
        fault_ = with_reason("cannot be opened");
        return;
    }
    fault_ = why_not_regular(status);
    length_ = static_cast<std::uint64_t>(status.st_size);
}

ByteSource RegularFile::source() {
    return {length_,
            [this](std::uint64_t offset, void* to, std::size_t n) { return read_at(offset, to, n); }};
}

std::size_t RegularFile::read(void* to, std::size_t n) { return read_at(0, to, n); }

std::size_t RegularFile::read_at(std::uint64_t offset, void* to, std::size_t n) {
    if (!seek(file_.get(), offset)) return 0;
    const std::size_t count = std::fread(to, 1, n, file_.get());
    if (std::ferror(file_.get())) fault_ = with_reason("cannot be read");
    return count;
}

#if defined(_WIN32)

const void* RegularFile::map() {
    const auto file = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file_.get())));
    const HANDLE mapping = CreateFileMappingA(file, nullptr, PAGE_READONLY, 0, 0, nullptr);
    if (!mapping) return nullptr;
    const void* const view = MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 0);
    CloseHandle(mapping);
    return view;
}

void RegularFile::unmap(const void* mapping, std::uint64_t /*length*/) {
    if (mapping) UnmapViewOfFile(mapping);
}

#else

const void* RegularFile::map() {
    if (length_ == 0) return nullptr;
    void* const mapping = mmap(nullptr, length_, PROT_READ, MAP_PRIVATE, fileno(file_.get()), 0);
    return mapping != MAP_FAILED ? mapping : nullptr;
}

void RegularFile::unmap(const void* mapping, std::uint64_t length) {
    if (mapping) munmap(const_cast<void*>(mapping), length);
}

#endif

}  // namespace pelto::info
