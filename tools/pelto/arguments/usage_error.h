// SPDX-License-Identifier: Apache-2.0
// Wrong arguments, told in a line, with a second line that says where the help is.
#ifndef PELTO_TOOL_ARGUMENTS_USAGE_ERROR_H
#define PELTO_TOOL_ARGUMENTS_USAGE_ERROR_H

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

/// Both lines about `error`, which parsing the arguments of `app` has thrown.
std::string usage_error(CLI::App& app, const CLI::ParseError& error);

/// "there is no subcommand 'X'", and the one that was probably meant.
std::string no_subcommand(const CLI::App& app, const std::string& name);

#endif
