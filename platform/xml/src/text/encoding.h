// SPDX-License-Identifier: Apache-2.0
// What encoding a document or entity is in.
#ifndef ENCODING_H
#define ENCODING_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "text/text_defect.h"

namespace sax {

/// Judges by the first bytes: a byte-order mark, the zero bytes of UTF-16, or the encoding that the XML or
/// text declaration names. UTF-8 where nothing speaks for another.
Encoding detect_encoding(std::string_view first_bytes);

struct DeclarationDefect {
    std::size_t offset;
    std::string message;
};

/// The first defect of the XML or text declaration that a text not in UTF-16 begins with: a byte that is not
/// ASCII, an encoding that is neither UTF-8 nor one of 8 bits (unless it is ignored), or no end in sight.
std::optional<DeclarationDefect> find_declaration_defect(std::string_view first_bytes, bool ignores_encoding);

/// Bytes of the byte-order mark that the text begins with; 0 when there is none.
std::size_t byte_order_mark(std::string_view first_bytes, Encoding encoding);

}  // namespace sax

#endif
