// SPDX-License-Identifier: Apache-2.0

#include "dds/file_length.h"

#include <cstddef>
#include <cstdint>
#include <utility>

#if !defined(_WIN32)
#include <sys/stat.h>
#include <sys/types.h>
#endif

namespace pelto {

namespace {

#if defined(_WIN32)
int seek(std::FILE* file, int whence) { return _fseeki64(file, 0, whence); }
std::int64_t tell(std::FILE* file) { return _ftelli64(file); }
#else
static_assert(sizeof(off_t) == 8, "build with _FILE_OFFSET_BITS=64");
int seek(std::FILE* file, int whence) { return fseeko(file, 0, whence); }
std::int64_t tell(std::FILE* file) { return ftello(file); }
#endif

}  // namespace

#if defined(_WIN32)
bool is_pipe(const char* /*path*/) { return false; }
#else
bool is_pipe(const char* path) {
    struct stat status;
    return stat(path, &status) == 0 && S_ISFIFO(status.st_mode);
}
#endif

std::optional<std::size_t> file_length(std::FILE* file) {
    if (seek(file, SEEK_END) != 0) return std::nullopt;
    const std::int64_t length = tell(file);
    if (length < 0 || seek(file, SEEK_SET) != 0) return std::nullopt;
    if (std::cmp_greater_equal(length, PTRDIFF_MAX)) return std::nullopt;
    return static_cast<std::size_t>(length);
}

}  // namespace pelto
