// SPDX-License-Identifier: Apache-2.0

#include "OXAUnicodeString.h"

#include <cstdio>
#include <string_view>
#include <utility>

#include "utf16_to_utf8.h"

OXAUnicodeString::OXAUnicodeString() noexcept = default;

OXAUnicodeString::OXAUnicodeString(const char* text) : _text(text ? text : "") {}

OXAUnicodeString::OXAUnicodeString(const char* text, std::size_t length) {
    if (length != 0) _text.assign(text, length);
}

OXAUnicodeString::OXAUnicodeString(const OXAUnicodeString& other) = default;

OXAUnicodeString::OXAUnicodeString(OXAUnicodeString&& other) noexcept : _text(std::move(other._text)) {
    other._text.clear();
}

OXAUnicodeString::~OXAUnicodeString() = default;

OXAUnicodeString& OXAUnicodeString::operator=(const OXAUnicodeString& other) = default;

OXAUnicodeString& OXAUnicodeString::operator=(OXAUnicodeString&& other) noexcept {
    if (this != &other) {
        _text = std::move(other._text);
        other._text.clear();
    }
    return *this;
}

OXAUnicodeString& OXAUnicodeString::operator=(const char* text) {
    _text.assign(text ? text : "");
    return *this;
}

void OXAUnicodeString::Append(const OXAUnicodeString& other) { _text.append(other._text); }

void OXAUnicodeString::AssignUtf16(const char16_t* text, std::size_t length) {
    utf16_to_utf8(text, length, _text);
}

const char* OXAUnicodeString::ConvertToChar() const noexcept { return _text.c_str(); }

int OXAUnicodeString::ConvertToNum(void* dest, const char* format) const {
    if (!dest || !format) return 0;
    const int converted = std::sscanf(_text.c_str(), format, dest);
    return converted > 0 ? converted : 0;
}

std::size_t OXAUnicodeString::Length() const noexcept { return _text.size(); }

bool OXAUnicodeString::IsEmpty() const noexcept { return _text.empty(); }

bool operator==(const OXAUnicodeString& a, const OXAUnicodeString& b) noexcept {
    return a.Length() == b.Length() &&
           std::char_traits<char>::compare(a.ConvertToChar(), b.ConvertToChar(), a.Length()) == 0;
}

bool operator!=(const OXAUnicodeString& a, const OXAUnicodeString& b) noexcept { return !(a == b); }

bool operator<(const OXAUnicodeString& a, const OXAUnicodeString& b) noexcept {
    return std::string_view(a.ConvertToChar(), a.Length()) < std::string_view(b.ConvertToChar(), b.Length());
}
