// SPDX-License-Identifier: Apache-2.0
// What might have been meant instead of a word that is not known.
#ifndef PELTO_TOOL_ARGUMENTS_CHOICES_H
#define PELTO_TOOL_ARGUMENTS_CHOICES_H

#include <optional>
#include <string>
#include <vector>

/// The one of `known` that `given` looks most like: with few letters added, left out, replaced, or two
/// neighbours exchanged. Letters count the same in either case. Nothing where none is near, or several are.
std::optional<std::string> nearest(const std::string& given, const std::vector<std::string>& known);

/// "a, b or c".
std::string any_of(const std::vector<std::string>& names);

/// "; did you mean 'X'?" of the nearest, or nothing.
std::string suggestion(const std::string& given, const std::vector<std::string>& known);

#endif
