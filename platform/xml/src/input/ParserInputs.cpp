// SPDX-License-Identifier: Apache-2.0

#include "input/ParserInputs.h"

#include <utility>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "text/text.h"

namespace sax {
namespace {

// Both live in the memory of the parser, and own nothing elsewhere.

class Stream final : public xercesc::BinInputStream {
public:
    explicit Stream(CheckedBytes& bytes) : bytes_(bytes) {}

    XMLFilePos curPos() const override { return bytes_.handed_over(); }
    XMLSize_t readBytes(XMLByte* to_fill, XMLSize_t max_to_read) override {
        return bytes_.read(to_fill, max_to_read);
    }
    const XMLCh* getContentType() const override { return nullptr; }

private:
    CheckedBytes& bytes_;
};

class Input final : public xercesc::InputSource {
public:
    Input(CheckedBytes& bytes, xercesc::MemoryManager* memory) : xercesc::InputSource(memory), bytes_(bytes) {
        setPublicId(to_utf16(bytes.name().public_id).c_str());
        setSystemId(to_utf16(bytes.name().system_id).c_str());
        if (bytes.name().encoding) setEncoding(xercesc::XMLUni::fgUTF8EncodingString);
    }

    xercesc::BinInputStream* makeStream() const override { return new (getMemoryManager()) Stream(bytes_); }

private:
    CheckedBytes& bytes_;
};

}  // namespace

xercesc::InputSource* ParserInputs::add(std::unique_ptr<ByteSource> source, StreamName name) {
    CheckedBytes& bytes = bytes_.emplace_back(std::move(source), std::move(name), cost_);
    return new (&memory_) Input(bytes, &memory_);
}

}  // namespace sax
