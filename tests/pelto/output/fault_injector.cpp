// SPDX-License-Identifier: Apache-2.0
// Preloaded into the command: what a file system may refuse, and signals between two of its calls. What is
// to happen is told by environment variables:
//   FAULT_NO_UNNAMED     the file system has no files without a name
//   FAULT_FULL_AFTER=N   the disk is full after N bytes
//   FAULT_NO_NAME=N      the N-th name of an output is refused
//   FAULT_NAME=PREFIX    names of outputs begin so
//   FAULT_NOISE          a library writes to standard error, at every call
//   FAULT_SIGNAL=S       this signal arrives before
//   FAULT_AT=N           the N-th call once the first output is opened
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

// Of the process itself: the arguments of dlsym's functions are the compiler's affair.
template <class Function>
Function* real(const char* name, Function*) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

long number_of(const char* variable) {
    const char* const text = std::getenv(variable);
    return text ? std::strtol(text, nullptr, 10) : 0;
}

bool is_output(const char* path) {
    const char* const prefix = std::getenv("FAULT_NAME");
    return prefix && std::strncmp(path, prefix, std::strlen(prefix)) == 0;
}

bool opened = false;
long calls = 0;

void call() {
    if (std::getenv("FAULT_NOISE")) ::syscall(SYS_write, STDERR_FILENO, "noise", 5);
    if (opened && ++calls == number_of("FAULT_AT")) {
        ::kill(::getpid(), static_cast<int>(number_of("FAULT_SIGNAL")));
    }
}

bool refuses_name(const char* path) {
    static long names = 0;
    if (!is_output(path) || ++names != number_of("FAULT_NO_NAME")) return false;
    errno = ENOSPC;
    return true;
}

}  // namespace

extern "C" {

int open64(const char* path, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    const mode_t mode = va_arg(rest, mode_t);
    va_end(rest);
    if ((flags & O_ACCMODE) != O_RDONLY && (flags & (O_CREAT | __O_TMPFILE)) != 0) opened = true;
    call();
    if ((flags & __O_TMPFILE) != 0 && number_of("FAULT_NO_UNNAMED") != 0) {
        errno = EOPNOTSUPP;
        return -1;
    }
    return real("open64", &::open64)(path, flags, mode);
}

ssize_t write(int file, const void* bytes, size_t size) {
    call();
    static long written = 0;
    if (opened && file > STDERR_FILENO && std::getenv("FAULT_FULL_AFTER")) {
        const long left = number_of("FAULT_FULL_AFTER") - written;
        if (left <= 0) {
            errno = ENOSPC;
            return -1;
        }
        if (size > static_cast<size_t>(left)) size = static_cast<size_t>(left);
        written += static_cast<long>(size);
    }
    return real("write", &::write)(file, bytes, size);
}

int close(int file) {
    call();
    return real("close", &::close)(file);
}

int rename(const char* from, const char* to) {
    call();
    return refuses_name(to) ? -1 : real("rename", &::rename)(from, to);
}

int linkat(int from_folder, const char* from, int to_folder, const char* to, int flags) {
    call();
    return refuses_name(to) ? -1 : real("linkat", &::linkat)(from_folder, from, to_folder, to, flags);
}

int link(const char* from, const char* to) {
    call();
    return real("link", &::link)(from, to);
}

int unlink(const char* path) {
    call();
    return real("unlink", &::unlink)(path);
}

int rmdir(const char* path) {
    call();
    return real("rmdir", &::rmdir)(path);
}

int flock(int file, int operation) {
    call();
    return real("flock", static_cast<int (*)(int, int)>(nullptr))(file, operation);
}

char* mkdtemp(char* path) {
    opened = true;
    call();
    return real("mkdtemp", &::mkdtemp)(path);
}

}  // extern "C"
