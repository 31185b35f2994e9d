// The bytes of a document on their way to the parser.
#ifndef CHECKED_STREAM_H
#define CHECKED_STREAM_H

#include <memory>
#include <optional>
#include <string>
#include <xercesc/util/BinInputStream.hpp>

#include "ByteSource.h"
#include "DocumentCost.h"
#include "Refusal.h"
#include "text_defect.h"

namespace sax {

/// Hands over the bytes before the first defect, and throws Refusal with the defect's place when asked for
/// more: the parser itself would accept some defects, and place others wrongly.
class CheckedStream final : public xercesc::BinInputStream {
public:
    /// `encoding` where it is known; otherwise the first bytes tell. `cost` outlives the stream.
    CheckedStream(std::unique_ptr<ByteSource> source, std::optional<Encoding> encoding, std::string public_id,
                  std::string system_id, DocumentCost& cost);

    XMLFilePos curPos() const override;
    XMLSize_t readBytes(XMLByte* to_fill, XMLSize_t max_to_read) override;
    const XMLCh* getContentType() const override;

private:
    [[noreturn]] void refuse();
    Position position_of_defect();

    std::unique_ptr<ByteSource> source_;
    std::optional<Encoding> encoding_;
    std::string public_id_;
    std::string system_id_;
    DocumentCost& cost_;
    XMLFilePos handed_over_ = 0;
    std::string held_back_;         // the beginning of a character
    const char* defect_ = nullptr;  // follows what was handed over
};

}  // namespace sax

#endif
