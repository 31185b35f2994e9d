// SPDX-License-Identifier: Apache-2.0

#include "vSAXDefaultBuffer.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <utility>

#include "sax/number_tokens.h"

using namespace pelto::sax;

namespace {

bool is_space(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && is_space(text.front())) text.remove_prefix(1);
    while (!text.empty() && is_space(text.back())) text.remove_suffix(1);
    return text;
}

template <class Number>
void fill_with_zero(Number* values, int count) {
    if (count > 0) std::fill_n(values, count, Number{});
}

}  // namespace

// The line has no value before someone sets it.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
vSAXDefaultBuffer::vSAXDefaultBuffer() {}

vSAXDefaultBuffer::vSAXDefaultBuffer(const vSAXDefaultBuffer& other) : line(0), buffer(other.buffer) {}

vSAXDefaultBuffer::~vSAXDefaultBuffer() = default;

void vSAXDefaultBuffer::AppendToBuffer(const OXAUnicodeString& text) { buffer.Append(text); }

void vSAXDefaultBuffer::ClearBuffer() { buffer = ""; }

void vSAXDefaultBuffer::SetBuffer(const OXAUnicodeString& text) {
    OXAUnicodeString copy(text);
    std::swap(buffer, copy);
}

void vSAXDefaultBuffer::SetLine(int newLine) { line = newLine; }

int vSAXDefaultBuffer::GetBoolean(bool& value) const {
    const char* const text = buffer.ConvertToChar();
    if (std::strcmp(text, "true") == 0) {
        value = true;
        return 1;
    }
    if (std::strcmp(text, "false") == 0) {
        value = false;
        return 1;
    }
    LogError(text, "boolean");
    return 0;
}

int vSAXDefaultBuffer::GetInt32(int& value) const {
    const int result = buffer.ConvertToNum(&value, "%d");
    if (result == 0) LogError(buffer.ConvertToChar(), "int32");
    return result;
}

int vSAXDefaultBuffer::GetUint32(unsigned int& value) const {
    const int result = buffer.ConvertToNum(&value, "%u");
    if (result == 0) LogError(buffer.ConvertToChar(), "int32");
    return result;
}

int vSAXDefaultBuffer::GetUint8(unsigned char& value) const {
    unsigned int number = 0;
    const int result = buffer.ConvertToNum(&number, "%u");
    value = static_cast<unsigned char>(number);
    if (result == 0) LogError(buffer.ConvertToChar(), "uint8");
    return result;
}

int vSAXDefaultBuffer::GetFloat(float& value) const {
    double number = 0;
    const int result = buffer.ConvertToNum(&number, "%le");
    if (result == 0) {
        LogError(buffer.ConvertToChar(), "float");
    } else {
        value = static_cast<float>(number);
    }
    return result;
}

int vSAXDefaultBuffer::GetString(std::string& value) const {
    value = trimmed(buffer.ConvertToChar());
    return 1;
}

int vSAXDefaultBuffer::GetVString(TOZ::vString& value) const {
    const std::string text(trimmed(buffer.ConvertToChar()));
    value = TOZ::vString(text.c_str());
    return 1;
}

int vSAXDefaultBuffer::GetIntArray(int* values, int count) const {
    fill_with_zero(values, count);
    std::string_view rest = from_first_token(buffer.ConvertToChar());
    for (unsigned int stored = 0; !rest.empty() && stored < static_cast<unsigned int>(count); ++stored) {
        values[stored] = take_int(rest);
    }
    return 1;
}

int vSAXDefaultBuffer::GetFloatArray(float* values, int count) const {
    fill_with_zero(values, count);
    const bool plain = c_locale_reads_plain_numbers();
    std::string_view rest = from_first_token(buffer.ConvertToChar());
    while (!rest.empty()) *values++ = take_float(rest, plain);
    return 1;
}

int vSAXDefaultBuffer::GetDoubleArray(double* values, int count) const {
    fill_with_zero(values, count);
    const bool plain = c_locale_reads_plain_numbers();
    std::string_view rest = from_first_token(buffer.ConvertToChar());
    while (!rest.empty()) *values++ = take_double(rest, plain);
    return 1;
}

int vSAXDefaultBuffer::GetVStringArray(vArray<TOZ::vString>& values) const {
    std::string_view rest(buffer.ConvertToChar());
    std::string token;
    for (;;) {
        const auto start = std::find_if_not(rest.begin(), rest.end(), is_space);
        if (start == rest.end()) return 1;
        const auto end = std::find_if(start, rest.end(), is_space);
        token.assign(start, end);
        values.Append(TOZ::vString(token.c_str()));
        rest.remove_prefix(static_cast<std::size_t>(end - rest.begin()));
    }
}

void vSAXDefaultBuffer::Log(const char*) const {}

void vSAXDefaultBuffer::LogError(const char*, const char*) const {}
