// SPDX-License-Identifier: Apache-2.0
// Finds what no document may contain: malformed sequences and zero characters.
#ifndef TEXT_DEFECT_H
#define TEXT_DEFECT_H

#include <cstddef>

namespace sax {

/// What bytes are read as. An 8-bit encoding is any in which a zero byte is a zero character.
enum class Encoding { kUtf8, kUtf16LittleEndian, kUtf16BigEndian, kEightBit };

/// The first defect of a text.
struct TextDefect {
    std::size_t offset;   ///< of its first byte; the length of the text when there is none
    const char* message;  ///< null when there is none
    bool cut;             ///< the text ends within a sequence that is right so far
};

/// Looks through `length` bytes that begin between two characters.
TextDefect find_defect(const unsigned char* text, std::size_t length, Encoding encoding);

}  // namespace sax

#endif
