// SPDX-License-Identifier: Apache-2.0
// What the parser reads.
#ifndef PARSER_INPUTS_H
#define PARSER_INPUTS_H

#include <deque>
#include <memory>
#include <xercesc/sax/InputSource.hpp>

#include "input/CheckedBytes.h"
#include "input/InputSource.h"
#include "limits/DocumentCost.h"
#include "limits/ParserMemory.h"

namespace sax {

/// The memory of one parser and all inputs that it gets. They live as long as this object, whether the parser
/// gives them back or, as after an exception, forgets them.
class ParserInputs {
public:
    /// `cost` outlives the inputs.
    explicit ParserInputs(DocumentCost& cost) : cost_(cost) {}

    ParserMemory& memory() { return memory_; }

    /// An input that the parser may adopt.
    xercesc::InputSource* add(std::unique_ptr<ByteSource> source, StreamName name);

private:
    DocumentCost& cost_;
    std::deque<CheckedBytes> bytes_;
    ParserMemory memory_;
};

}  // namespace sax

#endif
