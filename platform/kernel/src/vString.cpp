// SPDX-License-Identifier: Apache-2.0

#include "vString.h"

#include <cstring>
#include <utility>

namespace TOZ {

vString::vString() noexcept : _allocator(nullptr), _text(nullptr), _length(0) {}

vString::vString(const char* text) : vString(text, text ? std::strlen(text) : 0) {}

vString::vString(const vString& other) : vString(other._text, other._length) {}

vString::vString(vString&& other) noexcept : vString() { _Swap(other); }

vString::vString(const char* text, std::size_t length) : vString() {
    if (length == 0) return;
    _allocator = &DefaultAllocator();
    _text = static_cast<char*>(_allocator->Allocate(length + 1));
    _length = length;
    std::memcpy(_text, text, length);
    _text[length] = '\0';
}

vString& vString::operator=(const vString& other) {
    vString(other)._Swap(*this);
    return *this;
}

vString& vString::operator=(vString&& other) noexcept {
    vString(std::move(other))._Swap(*this);
    return *this;
}

vString::~vString() {
    if (_text) _allocator->Release(_text);
}

const char* vString::CStr() const noexcept { return _text ? _text : ""; }

std::size_t vString::Length() const noexcept { return _length; }

void vString::_Swap(vString& other) noexcept {
    std::swap(_allocator, other._allocator);
    std::swap(_text, other._text);
    std::swap(_length, other._length);
}

bool operator==(const vString& a, const vString& b) noexcept {
    return a.Length() == b.Length() && std::memcmp(a.CStr(), b.CStr(), a.Length()) == 0;
}

bool operator!=(const vString& a, const vString& b) noexcept { return !(a == b); }

bool operator<(const vString& a, const vString& b) noexcept { return std::strcmp(a.CStr(), b.CStr()) < 0; }

}  // namespace TOZ
