// SPDX-License-Identifier: Apache-2.0
// Preloaded into the command: counts how often it opens the file that OPEN_COUNTED names. Each time is a byte
// in the file that OPEN_COUNT names.
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

template <class Function>
Function* real(const char* name, Function*) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

void count(const char* path) {
    const char* const counted = std::getenv("OPEN_COUNTED");
    const char* const log = std::getenv("OPEN_COUNT");
    if (!counted || !log || !path || std::strcmp(path, counted) != 0) return;
    const int file = real("open64", &::open64)(log, O_WRONLY | O_CREAT | O_APPEND, 0600);
    if (file < 0 || ::write(file, ".", 1) != 1) std::abort();
    ::close(file);
}

}  // namespace

#define PELTO_MODE                            \
    std::va_list rest;                        \
    va_start(rest, flags);                    \
    const mode_t mode = va_arg(rest, mode_t); \
    va_end(rest)

extern "C" {

int open(const char* path, int flags, ...) {
    PELTO_MODE;
    count(path);
    return real("open", &::open)(path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    PELTO_MODE;
    count(path);
    return real("open64", &::open64)(path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...) {
    PELTO_MODE;
    count(path);
    return real("openat", &::openat)(folder, path, flags, mode);
}

int openat64(int folder, const char* path, int flags, ...) {
    PELTO_MODE;
    count(path);
    return real("openat64", &::openat64)(folder, path, flags, mode);
}

FILE* fopen(const char* path, const char* mode) {
    count(path);
    return real("fopen", &::fopen)(path, mode);
}

FILE* fopen64(const char* path, const char* mode) {
    count(path);
    return real("fopen64", &::fopen64)(path, mode);
}

}  // extern "C"
