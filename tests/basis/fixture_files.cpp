// SPDX-License-Identifier: Apache-2.0

#include "basis/fixture_files.h"

#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace basis_fixtures {

namespace {

support::Bytes content(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

std::string made_path(const std::string& file_name) { return PELTO_BASIS_FIXTURES "/" + file_name; }

support::Bytes made(const std::string& name) { return content(made_path(name + ".basis")); }

support::Bytes seed(const std::string& name) { return content(PELTO_FUZZ_SEEDS "/basis/" + name + ".basis"); }

bool have_samples() { return std::filesystem::is_directory(PELTO_BASIS_SAMPLES); }

support::Bytes sample(const std::string& path) { return content(PELTO_BASIS_SAMPLES "/" + path); }

std::string test_name(std::string text) {
    for (char& c : text) {
        if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
    }
    return text;
}

}  // namespace basis_fixtures
