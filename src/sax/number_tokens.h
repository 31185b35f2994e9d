// Numbers as text, with the results and errors of strtol, strtof and strtod.
#ifndef PELTO_SAX_NUMBER_TOKENS_H
#define PELTO_SAX_NUMBER_TOKENS_H

#include <string_view>

namespace pelto::sax {

/// Whether the C functions read decimal numbers as std::from_chars does: the locale's decimal point is a dot,
/// and floats round to nearest.
bool c_locale_reads_plain_numbers();

// The number that `token` begins with. `plain` is what c_locale_reads_plain_numbers() says: then most tokens
// take a path that is several times as fast. Throw std::invalid_argument and std::out_of_range as std::stoi,
// std::stof and std::stod do, with the messages of vSAXDefaultBuffer.h.

int int_of(std::string_view token);
float float_of(std::string_view token, bool plain);
double double_of(std::string_view token, bool plain);

}  // namespace pelto::sax

#endif
