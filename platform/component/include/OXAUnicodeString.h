// SPDX-License-Identifier: Apache-2.0
// The platform's Unicode string.
#ifndef OXA_UNICODE_STRING_H
#define OXA_UNICODE_STRING_H

#include <cstddef>
#include <string>

#include "OXAComponentExport.h"

/// A Unicode text, held as UTF-8.
///
/// 8-bit text counts as UTF-8 and stays as it is, valid or not: nothing here fails on bad text. Assigning and
/// appending reuse the string's memory. The only exceptions are std::bad_alloc and, at the limit of
/// std::string, std::length_error; the string is then unchanged, except by AssignUtf16, which leaves an
/// unspecified text.
///
/// Threads: distinct strings are independent; several threads may read one string while none changes it.
class PELTO_COMPONENT_API OXAUnicodeString {
public:
    /// The empty text.
    OXAUnicodeString() noexcept;

    /// A copy of the zero-terminated UTF-8 `text`; null gives the empty text.
    OXAUnicodeString(const char* text);

    /// A copy of `length` bytes of UTF-8, zero bytes included; `text` may be null if `length` is 0.
    OXAUnicodeString(const char* text, std::size_t length);

    OXAUnicodeString(const OXAUnicodeString& other);
    OXAUnicodeString(OXAUnicodeString&& other) noexcept;  ///< leaves `other` empty
    ~OXAUnicodeString();

    OXAUnicodeString& operator=(const OXAUnicodeString& other);
    OXAUnicodeString& operator=(OXAUnicodeString&& other) noexcept;  ///< leaves `other` empty

    /// As the constructor; `text` may lie within this string.
    OXAUnicodeString& operator=(const char* text);

    /// Adds a copy of `other`, which may be this string itself, at the end.
    void Append(const OXAUnicodeString& other);

    /// Becomes the text of `length` UTF-16 code units, zeros included. A surrogate without its other half
    /// becomes U+FFFD. `text` may be null if `length` is 0.
    void AssignUtf16(const char16_t* text, std::size_t length);

    /// The zero-terminated UTF-8 text, never null; owned by the string and valid until it changes.
    const char* ConvertToChar() const noexcept;

    /// Reads the text by the scanf-style `format`, which converts one value of the type that `dest` points
    /// to, under the current locale. Returns the number of converted values: 0 on failure, including the end
    /// of the input, and if `dest` or `format` is null. Ignores what follows the value.
    int ConvertToNum(void* dest, const char* format) const;

    /// Bytes in the text, without the terminating zero.
    std::size_t Length() const noexcept;

    bool IsEmpty() const noexcept;

private:
    std::string _text;
};

// Texts compare by code point, which for UTF-8 is byte by byte, as unsigned numbers.
PELTO_COMPONENT_API bool operator==(const OXAUnicodeString& a, const OXAUnicodeString& b) noexcept;
PELTO_COMPONENT_API bool operator!=(const OXAUnicodeString& a, const OXAUnicodeString& b) noexcept;
PELTO_COMPONENT_API bool operator<(const OXAUnicodeString& a, const OXAUnicodeString& b) noexcept;

#endif
