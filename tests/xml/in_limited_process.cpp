// SPDX-License-Identifier: Apache-2.0

#include "xml/in_limited_process.h"

#include <cstdio>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace xml_tests {
namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kSanitized = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif
#else
constexpr bool kSanitized = false;
#endif

std::size_t address_space() {
    std::size_t pages = 0;
    if (std::FILE* file = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(file, "%zu", &pages) != 1) pages = 0;
        std::fclose(file);
    }
    return pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

void limit_address_space(std::size_t bytes) {
    if (kSanitized) return;
    const rlim_t limit = address_space() + bytes;
    const rlimit limits = {limit, limit};
    setrlimit(RLIMIT_AS, &limits);
}

std::string read_all(int descriptor) {
    std::string all;
    char piece[4096];
    for (;;) {
        const ssize_t length = read(descriptor, piece, sizeof piece);
        if (length <= 0) return all;
        all.append(piece, static_cast<std::size_t>(length));
    }
}

}  // namespace

std::string in_limited_process(std::size_t bytes, const std::function<std::string()>& action) {
    int ends[2];
    if (pipe(ends) != 0) return {};
    const pid_t child = fork();
    if (child == 0) {
        limit_address_space(bytes);
        const std::string result = action();
        const ssize_t written = write(ends[1], result.data(), result.size());
        _exit(written == static_cast<ssize_t>(result.size()) ? 0 : 1);
    }
    close(ends[1]);
    std::string result = read_all(ends[0]);
    close(ends[0]);
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return {};
    return result;
}

}  // namespace xml_tests
