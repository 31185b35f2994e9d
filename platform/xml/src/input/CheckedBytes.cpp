// SPDX-License-Identifier: Apache-2.0

#include "input/CheckedBytes.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>
#include <vector>

#include "text/encoding.h"

namespace sax {
namespace {

std::string_view as_text(const unsigned char* bytes, std::size_t length) {
    return {reinterpret_cast<const char*>(bytes), length};
}

/// Counts lines and columns over the characters of a text that comes in pieces.
class LineCounter {
public:
    explicit LineCounter(Encoding encoding) : encoding_(encoding) {}

    void count(const unsigned char* text, std::size_t length) {
        const bool wide = encoding_ == Encoding::kUtf16LittleEndian || encoding_ == Encoding::kUtf16BigEndian;
        if (!wide) {
            for (std::size_t i = 0; i < length; ++i) count_byte(text[i]);
            return;
        }
        const std::size_t high = encoding_ == Encoding::kUtf16BigEndian ? 0 : 1;
        for (std::size_t i = 0; i + 1 < length; i += 2) {
            count_unit(static_cast<unsigned>(text[i + high] << 8 | text[i + 1 - high]), 1);
        }
    }

    int line() const { return line_; }
    int column() const { return column_; }

private:
    void count_byte(unsigned char byte) {
        if (encoding_ == Encoding::kUtf8 && (byte & 0xC0) == 0x80) return;
        count_unit(byte, encoding_ == Encoding::kUtf8 && byte >= 0xF0 ? 2 : 1);
    }

    /// A carriage return ends a line, as does a line feed, and both together end one.
    void count_unit(unsigned unit, int columns) {
        if (unit == '\r' || (unit == '\n' && !after_return_)) {
            ++line_;
            column_ = 1;
        } else if (unit != '\n') {
            column_ += columns;
        }
        after_return_ = unit == '\r';
    }

    Encoding encoding_;
    int line_ = 1;
    int column_ = 1;
    bool after_return_ = false;
};

}  // namespace

CheckedBytes::CheckedBytes(std::unique_ptr<ByteSource> source, StreamName name, DocumentCost& cost)
    : source_(std::move(source)), name_(std::move(name)), cost_(cost) {}

std::size_t CheckedBytes::read(unsigned char* target, std::size_t capacity) {
    if (defect_) refuse();
    const std::size_t held = std::min(held_back_.size(), capacity);
    std::memcpy(target, held_back_.data(), held);
    held_back_.erase(0, held);
    const std::size_t length = held + source_->read(target + held, capacity - held);
    if (handed_over_ == 0) check_declaration(as_text(target, length));

    const TextDefect defect = find_defect(target, length, *name_.encoding);
    if (defect.cut && length == capacity) {
        held_back_.assign(as_text(target + defect.offset, length - defect.offset));
    } else {
        defect_ = defect.message;
    }
    handed_over_ += defect.offset;
    cost_.read(defect.offset);
    if (defect.offset == 0 && defect_) refuse();
    return defect.offset;
}

/// The parser decodes a declaration by itself, and has no place for what it cannot decode.
void CheckedBytes::check_declaration(std::string_view text) {
    const auto defect = find_declaration_defect(text, name_.encoding.has_value());
    if (!name_.encoding) name_.encoding = detect_encoding(text);
    if (!defect) return;
    handed_over_ = defect->offset;
    throw Refusal{defect->message, position_of_defect()};
}

void CheckedBytes::refuse() { throw Refusal{defect_, position_of_defect()}; }

Position CheckedBytes::position_of_defect() {
    LineCounter counter(*name_.encoding);
    std::vector<unsigned char> piece(65'536);
    std::uint64_t left = handed_over_;
    source_->rewind();
    for (bool first = true; left > 0; first = false) {
        const std::size_t wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left, piece.size()));
        const std::size_t length = source_->read(piece.data(), wanted);
        if (length == 0) break;
        const std::size_t mark = first ? byte_order_mark(as_text(piece.data(), length), *name_.encoding) : 0;
        counter.count(piece.data() + mark, length - mark);
        left -= length;
    }
    return {counter.line(), counter.column(), name_.public_id, name_.system_id};
}

}  // namespace sax
