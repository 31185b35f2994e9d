// SPDX-License-Identifier: Apache-2.0
// Conversion of UTF-16, fast on text that is mostly ASCII.
#ifndef UTF16_TO_UTF8_H
#define UTF16_TO_UTF8_H

#include <cstddef>
#include <string>

/// Puts the `length` code units at `text` into `utf8`, in the place of what it holds and in its memory where
/// that suffices. A surrogate without its other half becomes U+FFFD.
void utf16_to_utf8(const char16_t* text, std::size_t length, std::string& utf8);

#endif
