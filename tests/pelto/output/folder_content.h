// SPDX-License-Identifier: Apache-2.0
// What a folder holds, for comparison with what it should.
#ifndef TESTS_PELTO_OUTPUT_FOLDER_CONTENT_H
#define TESTS_PELTO_OUTPUT_FOLDER_CONTENT_H

#include <string>
#include <vector>

/// Nothing where it is no file.
std::string bytes_of(const std::string& path);

/// The names in a folder, hidden ones too, sorted.
std::vector<std::string> names_in(const std::string& folder);

/// Those that pelto gives to what is not complete.
std::vector<std::string> hidden_in(const std::string& folder);

/// Whether the file system of the temporary folder has files without a name.
bool has_unnamed_files();

#endif
