// SPDX-License-Identifier: Apache-2.0

#include "text/text_defect.h"

namespace sax {
namespace {

constexpr const char* kZero = "a zero character is not allowed";
constexpr const char* kBadUtf8 = "the text is not valid UTF-8";
constexpr const char* kCutUtf8 = "the text ends within a UTF-8 sequence";
constexpr const char* kBadUtf16 = "the text is not valid UTF-16";
constexpr const char* kCutUtf16 = "the text ends within a UTF-16 character";

// Blocks of a fixed length become a few vector instructions each.
constexpr std::size_t kBlock = 64;

/// Bytes from the start that are neither zero nor have one of the bits `odd`; possibly fewer.
std::size_t plain_blocks(const unsigned char* text, std::size_t length, unsigned char odd) {
    std::size_t i = 0;
    for (; length - i >= kBlock; i += kBlock) {
        unsigned char bits = 0;
        unsigned char zeros = 0;
        for (std::size_t k = 0; k < kBlock; ++k) {
            bits = static_cast<unsigned char>(bits | text[i + k]);
            zeros = static_cast<unsigned char>(zeros | (text[i + k] == 0));
        }
        if (zeros || (bits & odd)) break;
    }
    return i;
}

struct Utf8Lead {
    std::size_t length;  // 0: no sequence begins so
    unsigned char second_least;
    unsigned char second_most;
};

/// The bounds of the second byte keep out overlong forms, surrogates, and what is beyond U+10FFFF.
Utf8Lead utf8_lead(unsigned char byte) {
    if (byte < 0xC2) return {0, 0, 0};
    if (byte < 0xE0) return {2, 0x80, 0xBF};
    if (byte == 0xE0) return {3, 0xA0, 0xBF};
    if (byte == 0xED) return {3, 0x80, 0x9F};
    if (byte < 0xF0) return {3, 0x80, 0xBF};
    if (byte == 0xF0) return {4, 0x90, 0xBF};
    if (byte < 0xF4) return {4, 0x80, 0xBF};
    if (byte == 0xF4) return {4, 0x80, 0x8F};
    return {0, 0, 0};
}

TextDefect find_in_utf8(const unsigned char* text, std::size_t length) {
    std::size_t i = 0;
    while (i < length) {
        i += plain_blocks(text + i, length - i, 0x80);
        // A stretch of other text is looked at byte by byte before blocks are tried again.
        const std::size_t stretch = length - i < kBlock ? length : i + kBlock;
        while (i < stretch) {
            if (text[i] == 0) return {i, kZero, false};
            if (text[i] < 0x80) {
                ++i;
                continue;
            }
            const Utf8Lead lead = utf8_lead(text[i]);
            if (lead.length == 0) return {i, kBadUtf8, false};
            for (std::size_t k = 1; k < lead.length; ++k) {
                if (i + k == length) return {i, kCutUtf8, true};
                const unsigned char least = k == 1 ? lead.second_least : 0x80;
                const unsigned char most = k == 1 ? lead.second_most : 0xBF;
                if (text[i + k] < least || text[i + k] > most) return {i, kBadUtf8, false};
            }
            i += lead.length;
        }
    }
    return {length, nullptr, false};
}

TextDefect find_in_utf16(const unsigned char* text, std::size_t length, bool big_endian) {
    const std::size_t high = big_endian ? 0 : 1;
    for (std::size_t i = 0; i < length; i += 2) {
        if (length - i == 1) return {i, kCutUtf16, true};
        const unsigned char top = text[i + high];
        if (top == 0 && text[i + 1 - high] == 0) return {i, kZero, false};
        if ((top & 0xF8) != 0xD8) continue;
        if ((top & 0x04) != 0) return {i, kBadUtf16, false};
        if (length - i < 4) return {i, kCutUtf16, true};
        if ((text[i + 2 + high] & 0xFC) != 0xDC) return {i, kBadUtf16, false};
        i += 2;
    }
    return {length, nullptr, false};
}

TextDefect find_in_eight_bit(const unsigned char* text, std::size_t length) {
    for (std::size_t i = plain_blocks(text, length, 0); i < length; ++i) {
        if (text[i] == 0) return {i, kZero, false};
    }
    return {length, nullptr, false};
}

}  // namespace

TextDefect find_defect(const unsigned char* text, std::size_t length, Encoding encoding) {
    switch (encoding) {
        case Encoding::kUtf8:
            return find_in_utf8(text, length);
        case Encoding::kUtf16LittleEndian:
            return find_in_utf16(text, length, false);
        case Encoding::kUtf16BigEndian:
            return find_in_utf16(text, length, true);
        case Encoding::kEightBit:
            return find_in_eight_bit(text, length);
    }
    return {length, nullptr, false};
}

}  // namespace sax
