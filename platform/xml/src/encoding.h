// What encoding a document or entity is in.
#ifndef ENCODING_H
#define ENCODING_H

#include <string_view>

#include "text_defect.h"

namespace sax {

/// Judges by the first bytes: a byte-order mark, the zero bytes of UTF-16, or the encoding that the XML or
/// text declaration names. UTF-8 where nothing speaks for another.
Encoding detect_encoding(std::string_view first_bytes);

/// Bytes of the byte-order mark that the text begins with; 0 when there is none.
std::size_t byte_order_mark(std::string_view first_bytes, Encoding encoding);

}  // namespace sax

#endif
