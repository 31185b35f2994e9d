// SPDX-License-Identifier: Apache-2.0

#include "pelto/output/folder_content.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <unistd.h>

#include "support/temporary_folder.h"

std::string bytes_of(const std::string& path) {
    if (!std::filesystem::is_regular_file(path)) return "";
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<std::string> names_in(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::string> hidden_in(const std::string& folder) {
    std::vector<std::string> names = names_in(folder);
    const std::regex hidden("\\.pelto-unfinished-[A-Za-z0-9]{6}");
    std::erase_if(names, [&](const std::string& name) { return !std::regex_match(name, hidden); });
    return names;
}

bool has_unnamed_files() {
    const support::TemporaryFolder folder;
    const int file = open(folder.path(".").c_str(), O_TMPFILE | O_WRONLY, 0600);
    if (file < 0) return false;
    close(file);
    return true;
}
