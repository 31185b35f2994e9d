// SPDX-License-Identifier: Apache-2.0
// Between the parser's UTF-16 and the strings of the interface.
#ifndef TEXT_H
#define TEXT_H

#include <string>
#include <type_traits>
#include <xercesc/util/XercesDefs.hpp>

#include "OXAUnicodeString.h"

namespace sax {

static_assert(std::is_same_v<XMLCh, char16_t>, "Xerces-C must be built with char16_t as its character type");

/// Length of a zero-terminated text; 0 for null.
inline std::size_t length_of(const XMLCh* text) {
    return text ? std::char_traits<char16_t>::length(text) : 0;
}

/// Puts the zero-terminated `text` into `target`; null gives the empty text.
inline void assign(OXAUnicodeString& target, const XMLCh* text) { target.AssignUtf16(text, length_of(text)); }

inline std::string to_utf8(const XMLCh* text) {
    OXAUnicodeString converted;
    assign(converted, text);
    return {converted.ConvertToChar(), converted.Length()};
}

inline OXAUnicodeString to_unicode(const std::string& text) { return {text.data(), text.size()}; }

inline std::string to_string(const OXAUnicodeString& text) { return {text.ConvertToChar(), text.Length()}; }

/// Malformed sequences become U+FFFD.
std::u16string to_utf16(const std::string& text);

}  // namespace sax

#endif
