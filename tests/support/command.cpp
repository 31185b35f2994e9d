// SPDX-License-Identifier: Apache-2.0

#include "support/command.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "support/temporary_folder.h"

#if !defined(_WIN32)
#include <sys/wait.h>
#endif

namespace support {

namespace {

std::string quoted(const std::string& argument) {
    std::string text = "'";
    for (const char c : argument) {
        if (c == '\'') {
            text += "'\\''";
        } else {
            text += c;
        }
    }
    return text + "'";
}

std::string content(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

int exit_status(int result) {
#if defined(_WIN32)
    return result;
#else
    return WIFEXITED(result) ? WEXITSTATUS(result) : -1;
#endif
}

}  // namespace

CommandResult run_pelto(const std::vector<std::string>& arguments, const std::string& before) {
    const TemporaryFolder folder;
    const std::string out = folder.path("out");
    const std::string err = folder.path("err");
    std::string line = before.empty() ? "" : before + "; ";
    line += quoted(PELTO_COMMAND);
    for (const std::string& argument : arguments) line += ' ' + quoted(argument);
    line += " >" + quoted(out) + " 2>" + quoted(err);
    const int result = std::system(line.c_str());
    return {exit_status(result), content(out), content(err)};
}

}  // namespace support
