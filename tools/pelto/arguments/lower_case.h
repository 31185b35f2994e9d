// SPDX-License-Identifier: Apache-2.0
// Names that people may write in either case.
#ifndef PELTO_TOOL_ARGUMENTS_LOWER_CASE_H
#define PELTO_TOOL_ARGUMENTS_LOWER_CASE_H

#include <string>

/// The text with A to Z as a to z; other bytes are kept, whatever the locale.
inline std::string lower_case(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

#endif
