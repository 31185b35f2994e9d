// SPDX-License-Identifier: Apache-2.0
// What the path of an output means, and which ones are refused.
#ifndef PELTO_TOOL_OUTPUT_OUTPUT_PATH_H
#define PELTO_TOOL_OUTPUT_OUTPUT_PATH_H

#include <string>
#include <string_view>
#include <vector>

constexpr char kStandardOutput[] = "-";

/// Whether it is "-", or another name of what standard output goes to.
bool goes_to_standard_output(const std::string& path);

/// Whether it is written as it comes: standard output, a pipe or a device.
bool goes_to_stream(const std::string& path);

/// Refuses a file whose name does not end in `ending` (".png"), in any case.
/// Throws CLI::ValidationError, as the others do.
void check_ending(const std::string& path, std::string_view ending);

/// Refuses what is one of the inputs, by whatever name or link.
void check_is_no_input(const std::string& path, const std::vector<std::string>& inputs);

/// Refuses standard output, where JSON goes there already.
void check_apart_from_json(const std::string& path, bool json);

#endif
