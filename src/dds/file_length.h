// SPDX-License-Identifier: Apache-2.0
// Where reading files depends on the system.
#ifndef PELTO_DDS_FILE_LENGTH_H
#define PELTO_DDS_FILE_LENGTH_H

#include <cstddef>
#include <cstdio>
#include <optional>

namespace pelto {

/// Whether opening the file would wait for another process: a pipe without a writer.
bool is_pipe(const char* path);

/// The length of an open file in bytes, beyond 2 GiB too, and the position set to its start.
/// Nothing when it cannot be told (a pipe) or is no length that memory could hold (a directory's).
std::optional<std::size_t> file_length(std::FILE* file);

}  // namespace pelto

#endif
