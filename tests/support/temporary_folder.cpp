// SPDX-License-Identifier: Apache-2.0

#include "support/temporary_folder.h"

#include <fstream>
#include <random>
#include <stdexcept>
#include <system_error>

namespace support {

TemporaryFolder::TemporaryFolder() {
    std::random_device random;
    do {
        folder_ = std::filesystem::temp_directory_path() / ("pelto-test-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(folder_));
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

std::string TemporaryFolder::path(std::string_view name) const { return (folder_ / name).string(); }

std::string TemporaryFolder::write(std::string_view name, std::string_view bytes) const {
    const std::string file_path = path(name);
    std::ofstream file(file_path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) throw std::runtime_error("cannot write " + file_path);
    return file_path;
}

}  // namespace support
