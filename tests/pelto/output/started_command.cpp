// SPDX-License-Identifier: Apache-2.0

#include "pelto/output/started_command.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "pelto/output/folder_content.h"

namespace {

std::vector<char*> pointers_to(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

void prepare(const Surroundings& surroundings) {
    for (const int signal : surroundings.ignored_signals) std::signal(signal, SIG_IGN);
    // SIGQUIT and SIGXCPU would leave a file that is not the command's.
    const rlimit no_core = {0, 0};
    ::setrlimit(RLIMIT_CORE, &no_core);
    if (surroundings.faults.empty()) return;
    for (const auto& [name, value] : surroundings.faults) ::setenv(name.c_str(), value.c_str(), 1);
    ::setenv("LD_PRELOAD", PELTO_FAULT_INJECTOR, 1);
    // The address sanitizer wants to be the first library.
    ::setenv("ASAN_OPTIONS", "verify_asan_link_order=0", 1);
}

}  // namespace

StartedCommand::StartedCommand(const std::vector<std::string>& arguments, const Surroundings& surroundings) {
    std::vector<std::string> line = {PELTO_COMMAND};
    line.insert(line.end(), arguments.begin(), arguments.end());
    const std::vector<char*> argv = pointers_to(line);
    const std::string err = folder_.path("err");
    process_ = ::fork();
    if (process_ < 0) throw std::runtime_error("no process can be started");
    if (process_ > 0) return;
    prepare(surroundings);
    ::dup2(::open("/dev/null", O_WRONLY), STDOUT_FILENO);
    ::dup2(::open(err.c_str(), O_WRONLY | O_CREAT, 0600), STDERR_FILENO);
    if (surroundings.closed_standard_error) ::close(STDERR_FILENO);
    ::execv(argv[0], argv.data());
    ::_exit(127);
}

StartedCommand::~StartedCommand() {
    if (process_ < 0) return;
    send(SIGKILL);
    end();
}

// To -1 it would go to every process there is.
void StartedCommand::send(int signal) const {
    if (process_ > 0) ::kill(process_, signal);
}

bool StartedCommand::wait_until_stopped() {
    while (::waitpid(process_, &result_, WUNTRACED) < 0 && errno == EINTR) continue;
    if (WIFSTOPPED(result_)) return true;
    process_ = -1;
    return false;
}

Ending StartedCommand::end() {
    while (process_ > 0 && ::waitpid(process_, &result_, 0) < 0 && errno == EINTR) continue;
    process_ = -1;
    return {WIFEXITED(result_) ? WEXITSTATUS(result_) : -1, WIFSIGNALED(result_) ? WTERMSIG(result_) : 0,
            bytes_of(folder_.path("err"))};
}

Ending run(const std::vector<std::string>& arguments, const Surroundings& surroundings) {
    return StartedCommand(arguments, surroundings).end();
}
