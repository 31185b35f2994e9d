// SPDX-License-Identifier: Apache-2.0

#include "input/external_file.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "input/InputError.h"

namespace sax {
namespace {

namespace fs = std::filesystem;

/// The scheme of a URL, in lower case; empty for a path. One letter is a drive.
std::string scheme_of(std::string_view id) {
    const std::size_t length = std::min(id.find(':'), id.size());
    if (length == id.size() || length < 2 || !std::isalpha(static_cast<unsigned char>(id[0]))) return {};
    std::string scheme;
    for (const char c : id.substr(0, length)) {
        const auto byte = static_cast<unsigned char>(c);
        if (!std::isalnum(byte) && c != '+' && c != '-' && c != '.') return {};
        scheme += static_cast<char>(std::tolower(byte));
    }
    return scheme;
}

/// Replaces each percent sign before two hexadecimal digits by the byte that they mean.
std::string decode_percents(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto digit = [&](std::size_t at) {
            return at < text.size() && std::isxdigit(static_cast<unsigned char>(text[at]));
        };
        if (text[i] == '%' && digit(i + 1) && digit(i + 2)) {
            const char digits[] = {text[i + 1], text[i + 2], '\0'};
            decoded += static_cast<char>(std::strtol(digits, nullptr, 16));
            i += 2;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

}  // namespace

std::string path_of(const std::string& system_id, const std::string& base) {
    std::string_view id = system_id;
    const std::string scheme = scheme_of(id);
    if (!scheme.empty() && scheme != "file") throw InputError("only local files are read");
    if (!scheme.empty()) {
        id.remove_prefix(scheme.size() + 1);
        if (id.starts_with("//localhost/")) id.remove_prefix(std::string_view("//localhost").size());
        if (id.starts_with("///")) id.remove_prefix(2);
    }
    if (id.starts_with("//")) throw InputError("only local files are read");
    const std::string path = decode_percents(id);
    if (path.find('\0') != std::string::npos) throw InputError("the path is not valid");
    return (fs::path(base).parent_path() / path).lexically_normal().string();
}

std::string path_below(const std::string& document, const std::string& path) {
    if (document.empty()) throw InputError("a text in memory has no folder to read files from");
    std::error_code error;
    const fs::path folder = fs::canonical(fs::absolute(document).parent_path(), error);
    if (error) throw InputError(error.message());
    const fs::path file = fs::canonical(path, error);
    if (error) throw InputError(error.message());
    const auto [end_of_folder, rest] = std::mismatch(folder.begin(), folder.end(), file.begin(), file.end());
    if (end_of_folder != folder.end() || rest == file.end()) {
        throw InputError("it is not in the folder of the document");
    }
    return file.string();
}

}  // namespace sax
