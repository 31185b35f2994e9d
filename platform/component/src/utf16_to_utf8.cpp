// SPDX-License-Identifier: Apache-2.0

#include "utf16_to_utf8.h"

#include <cstdint>
#include <utf8.h>

namespace {

constexpr std::size_t kMostBytesPerUnit = 3;

/// Narrows code units up to the first that is not ASCII, and returns their number.
std::size_t narrow_ascii(const char16_t* text, std::size_t length, char* target) {
    // Blocks of a fixed length become a few vector instructions each.
    constexpr std::size_t block = 32;
    std::size_t i = 0;
    for (; length - i >= block; i += block) {
        unsigned units = 0;
        for (std::size_t k = 0; k < block; ++k) units |= text[i + k];
        if (units >= 0x80) break;
        for (std::size_t k = 0; k < block; ++k) target[i + k] = static_cast<char>(text[i + k]);
    }
    for (; i < length && text[i] < 0x80; ++i) target[i] = static_cast<char>(text[i]);
    return i;
}

bool is_high_surrogate(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool is_low_surrogate(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

/// Reads one character from `i` on, which is below `length`, and moves `i` behind it.
std::uint32_t next_character(const char16_t* text, std::size_t length, std::size_t& i) {
    const char16_t unit = text[i++];
    if (!is_high_surrogate(unit)) return is_low_surrogate(unit) ? 0xFFFD : unit;
    if (i == length || !is_low_surrogate(text[i])) return 0xFFFD;
    return 0x10000U + ((unit - 0xD800U) << 10) + (text[i++] - 0xDC00U);
}

}  // namespace

void utf16_to_utf8(const char16_t* text, std::size_t length, std::string& utf8) {
    if (utf8.size() < length) utf8.resize(length);
    std::size_t i = narrow_ascii(text, length, utf8.data());
    std::size_t written = i;
    if (i < length) {
        utf8.resize(written + kMostBytesPerUnit * (length - i));
        char* end = utf8.data() + written;
        while (i < length) {
            end = utf8::unchecked::append(next_character(text, length, i), end);
            const std::size_t narrowed = narrow_ascii(text + i, length - i, end);
            i += narrowed;
            end += narrowed;
        }
        written = static_cast<std::size_t>(end - utf8.data());
    }
    utf8.resize(written);
}
