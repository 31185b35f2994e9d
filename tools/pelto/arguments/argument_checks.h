// SPDX-License-Identifier: Apache-2.0
// What the values of arguments must be, and what is said of those that are not. Those that change a value are
// for CLI::Option::transform: check would drop the change.
#ifndef PELTO_TOOL_ARGUMENTS_ARGUMENT_CHECKS_H
#define PELTO_TOOL_ARGUMENTS_ARGUMENT_CHECKS_H

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>
#include <vector>

/// Decimal digits alone, for a number from `first` to `last`; leading zeros are dropped, which CLI11 would
/// take for octal.
CLI::Validator whole_number(std::uint64_t first, std::uint64_t last);

/// A decimal number from `first` to `last`, with or without a fraction.
CLI::Validator number(int first, int last);

/// One of the names, in either case; the value becomes the name as it stands in the list.
CLI::Validator one_of(const std::vector<std::string>& names);

#endif
