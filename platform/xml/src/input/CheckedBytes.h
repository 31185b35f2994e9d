// SPDX-License-Identifier: Apache-2.0
// The bytes of a document, checked.
#ifndef CHECKED_BYTES_H
#define CHECKED_BYTES_H

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "input/ByteSource.h"
#include "input/InputSource.h"
#include "limits/DocumentCost.h"
#include "limits/Refusal.h"
#include "text/text_defect.h"

namespace sax {

/// Hands over the bytes before the first defect, and throws Refusal with the defect's place when asked for
/// more: the parser itself would accept some defects, and place others wrongly.
class CheckedBytes {
public:
    /// `cost` outlives the bytes.
    CheckedBytes(std::unique_ptr<ByteSource> source, StreamName name, DocumentCost& cost);

    /// Puts up to `capacity` bytes, which is 4 at least, into `target` and returns their number; 0 at the
    /// end.
    std::size_t read(unsigned char* target, std::size_t capacity);

    std::uint64_t handed_over() const { return handed_over_; }
    const StreamName& name() const { return name_; }

private:
    void check_declaration(std::string_view text);
    [[noreturn]] void refuse();
    Position position_of_defect();

    std::unique_ptr<ByteSource> source_;
    StreamName name_;
    DocumentCost& cost_;
    std::uint64_t handed_over_ = 0;
    std::string held_back_;         // the beginning of a character
    const char* defect_ = nullptr;  // follows what was handed over
};

}  // namespace sax

#endif
