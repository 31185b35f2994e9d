// SPDX-License-Identifier: Apache-2.0

#include "output/printable.h"

#include <cstdint>
#include <utf8.h>

namespace {

bool gives_orders(std::uint32_t code_point) {
    const auto within = [&](std::uint32_t first, std::uint32_t last) {
        return code_point >= first && code_point <= last;
    };
    const bool control = code_point < 0x20 || within(0x7F, 0x9F);
    const bool bidirectional =
        code_point == 0x61C || within(0x200E, 0x200F) || within(0x202A, 0x202E) || within(0x2066, 0x2069);
    return control || bidirectional;
}

// The code point that begins at `at`, which moves behind it; a byte that is not UTF-8 counts as its value.
std::uint32_t next_code_point(const char*& at, const char* end) {
    const char* const begin = at;
    try {
        return utf8::next(at, end);
    } catch (const utf8::exception&) {
        at = begin + 1;
        return static_cast<unsigned char>(*begin);
    }
}

}  // namespace

std::string printable(std::string_view text) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string shown;
    const char* const end = text.data() + text.size();
    for (const char* at = text.data(); at != end;) {
        const char* const begin = at;
        const bool escaped = gives_orders(next_code_point(at, end));
        for (const char* byte = begin; byte != at; ++byte) {
            const auto value = static_cast<unsigned char>(*byte);
            if (escaped) {
                shown += {'\\', 'x', kDigits[value >> 4], kDigits[value & 0xF]};
            } else {
                shown += *byte;
            }
        }
    }
    return shown;
}
