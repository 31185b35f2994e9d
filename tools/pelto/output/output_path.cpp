// SPDX-License-Identifier: Apache-2.0

#include "output/output_path.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

#include "output/printable.h"

namespace {

using Status = struct stat;

// Of the file that a link leads to.
std::optional<Status> status_of(const std::string& path) {
    Status status = {};
    if (::stat(path.c_str(), &status) != 0) return std::nullopt;
    return status;
}

std::optional<Status> status_of_standard_output() {
    Status status = {};
    if (::fstat(STDOUT_FILENO, &status) != 0) return std::nullopt;
    return status;
}

bool is_same_file(const std::optional<Status>& a, const std::optional<Status>& b) {
    return a && b && a->st_dev == b->st_dev && a->st_ino == b->st_ino;
}

bool ends_in(const std::string& path, std::string_view ending) {
    const auto is_letter_in_any_case = [](char wanted, char letter) {
        return std::tolower(static_cast<unsigned char>(letter)) == wanted;
    };
    return path.size() >= ending.size() &&
           std::equal(ending.rbegin(), ending.rend(), path.rbegin(), is_letter_in_any_case);
}

}  // namespace

bool goes_to_standard_output(const std::string& path) {
    if (path == kStandardOutput) return true;
    const std::optional<Status> status = status_of(path);
    // A terminal or /dev/null stays what it is by any name.
    return status && !S_ISCHR(status->st_mode) && is_same_file(status, status_of_standard_output());
}

bool goes_to_stream(const std::string& path) {
    if (goes_to_standard_output(path)) return true;
    const std::optional<Status> status = status_of(path);
    return status && !S_ISREG(status->st_mode) && !S_ISDIR(status->st_mode);
}

void check_ending(const std::string& path, std::string_view ending) {
    if (ends_in(path, ending) || goes_to_stream(path)) return;
    // That it cannot be written is told when it is.
    const std::optional<Status> status = status_of(path);
    if (status && S_ISDIR(status->st_mode)) return;
    throw CLI::ValidationError("the output " + printable(path) + " does not end in " + std::string(ending) +
                               ": name the file to write");
}

void check_is_no_input(const std::string& path, const std::vector<std::string>& inputs) {
    const std::optional<Status> output =
        path == kStandardOutput ? status_of_standard_output() : status_of(path);
    if (!output || S_ISCHR(output->st_mode)) return;
    for (const std::string& input : inputs) {
        if (!is_same_file(output, status_of(input))) continue;
        const std::string other = input == path ? "" : " " + printable(input);
        throw CLI::ValidationError("the output " + printable(path) + " is also the input" + other +
                                   ": give the output another name");
    }
}

void check_apart_from_json(const std::string& path, bool json) {
    if (!json || !goes_to_standard_output(path)) return;
    throw CLI::ValidationError("--json prints to standard output, where the output " + printable(path) +
                               " goes too: name a file for it");
}
