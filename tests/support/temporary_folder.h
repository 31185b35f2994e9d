// SPDX-License-Identifier: Apache-2.0
// A folder of one test's own, gone with everything in it at the test's end.
#ifndef TESTS_SUPPORT_TEMPORARY_FOLDER_H
#define TESTS_SUPPORT_TEMPORARY_FOLDER_H

#include <filesystem>
#include <string>
#include <string_view>

namespace support {

class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// The path of an entry in the folder.
    std::string path(std::string_view name) const;

    /// Writes a file into the folder and returns its path.
    std::string write(std::string_view name, std::string_view bytes) const;

private:
    std::filesystem::path folder_;
};

}  // namespace support

#endif
