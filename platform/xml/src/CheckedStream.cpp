#include "CheckedStream.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>
#include <vector>

#include "encoding.h"

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

CheckedStream::CheckedStream(std::unique_ptr<ByteSource> source, std::optional<Encoding> encoding,
                             std::string public_id, std::string system_id, DocumentCost& cost)
    : source_(std::move(source)),
      encoding_(encoding),
      public_id_(std::move(public_id)),
      system_id_(std::move(system_id)),
      cost_(cost) {}

XMLFilePos CheckedStream::curPos() const { return handed_over_; }

const XMLCh* CheckedStream::getContentType() const { return nullptr; }

XMLSize_t CheckedStream::readBytes(XMLByte* to_fill, XMLSize_t max_to_read) {
    if (defect_) refuse();
    const std::size_t held = std::min(held_back_.size(), max_to_read);
    std::memcpy(to_fill, held_back_.data(), held);
    held_back_.erase(0, held);
    const std::size_t length = held + source_->read(to_fill + held, max_to_read - held);
    if (!encoding_) encoding_ = detect_encoding(as_text(to_fill, length));

    const TextDefect defect = find_defect(to_fill, length, *encoding_);
    if (defect.cut && length == max_to_read) {
        held_back_.assign(as_text(to_fill + defect.offset, length - defect.offset));
    } else {
        defect_ = defect.message;
    }
    handed_over_ += defect.offset;
    cost_.read(defect.offset);
    if (defect.offset == 0 && defect_) refuse();
    return defect.offset;
}

void CheckedStream::refuse() { throw Refusal{defect_, position_of_defect()}; }

Position CheckedStream::position_of_defect() {
    LineCounter counter(*encoding_);
    std::vector<unsigned char> piece(65'536);
    XMLFilePos left = handed_over_;
    source_->rewind();
    for (bool first = true; left > 0; first = false) {
        const std::size_t wanted = static_cast<std::size_t>(std::min<XMLFilePos>(left, piece.size()));
        const std::size_t length = source_->read(piece.data(), wanted);
        if (length == 0) break;
        const std::size_t mark = first ? byte_order_mark(as_text(piece.data(), length), *encoding_) : 0;
        counter.count(piece.data() + mark, length - mark);
        left -= length;
    }
    return {counter.line(), counter.column(), public_id_, system_id_};
}

}  // namespace sax
