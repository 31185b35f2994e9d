// SPDX-License-Identifier: Apache-2.0
// The numbers of a text, with the results and errors of strtol, strtof and strtod.
//
// Spaces and line feeds separate tokens, nothing else does.
#ifndef PELTO_SAX_NUMBER_TOKENS_H
#define PELTO_SAX_NUMBER_TOKENS_H

#include <string_view>

namespace pelto::sax {

/// Whether the C functions read decimal numbers as std::from_chars does: the locale's decimal point is a dot,
/// and floats round to nearest.
bool c_locale_reads_plain_numbers();

/// `text` without the separators that it begins with.
std::string_view from_first_token(std::string_view text);

// The number that the first token of `rest` begins with; `rest` begins with a token, and after it with the
// next one. `plain` is what c_locale_reads_plain_numbers() says: then most tokens take a path that is several
// times as fast. Throw std::invalid_argument and std::out_of_range as std::stoi, std::stof and std::stod do,
// with the messages of vSAXDefaultBuffer.h.

int take_int(std::string_view& rest);
float take_float(std::string_view& rest, bool plain);
double take_double(std::string_view& rest, bool plain);

}  // namespace pelto::sax

#endif
