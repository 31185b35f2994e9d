#include "check/regular_file.h"

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

namespace pelto::check {

namespace {

#if defined(_WIN32)

using Status = struct _stat64;

std::FILE* open_file(const char* path) { return std::fopen(path, "rb"); }
bool read_status(std::FILE* file, Status& status) { return _fstat64(_fileno(file), &status) == 0; }
bool is_directory(const Status& status) { return (status.st_mode & _S_IFMT) == _S_IFDIR; }
bool is_regular(const Status& status) { return (status.st_mode & _S_IFMT) == _S_IFREG; }

#else

using Status = struct stat;

// Opening a pipe must not wait for its other end.
std::FILE* open_file(const char* path) {
    const int descriptor = open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) return nullptr;
    std::FILE* const file = fdopen(descriptor, "rb");
    if (!file) close(descriptor);
    return file;
}
bool read_status(std::FILE* file, Status& status) { return fstat(fileno(file), &status) == 0; }
bool is_directory(const Status& status) { return S_ISDIR(status.st_mode); }
bool is_regular(const Status& status) { return S_ISREG(status.st_mode); }

#endif

}  // namespace

RegularFile::RegularFile(const std::string& path) : file_(open_file(path.c_str())) {
    Status status{};
    if (!file_ || !read_status(file_.get(), status)) {
        fault_ = std::string("cannot be opened: ").append(std::strerror(errno));
    } else if (is_directory(status)) {
        fault_ = "is a directory";
    } else if (!is_regular(status)) {
        fault_ = "is not a regular file: its length cannot be told";
    } else {
        length_ = static_cast<std::uint64_t>(status.st_size);
    }
}

std::size_t RegularFile::read(void* to, std::size_t n) {
    std::rewind(file_.get());
    return std::fread(to, 1, n, file_.get());
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

}  // namespace pelto::check
