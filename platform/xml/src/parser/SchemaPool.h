// SPDX-License-Identifier: Apache-2.0
// The grammars of loaded schemas.
#ifndef SCHEMA_POOL_H
#define SCHEMA_POOL_H

#include <cstddef>
#include <xercesc/framework/XMLGrammarPoolImpl.hpp>

#include "limits/ParserMemory.h"
#include "limits/document_limits.h"

namespace sax {

/// Grammars of Xerces-C and the memory that they are in.
class SchemaPool {
public:
    SchemaPool() : grammars_(&memory_) {}
    SchemaPool(const SchemaPool&) = delete;
    SchemaPool& operator=(const SchemaPool&) = delete;

    ParserMemory& memory() { return memory_; }
    xercesc::XMLGrammarPool& grammars() { return grammars_; }

    /// All schemas are in.
    void end_loading() { loaded_ = memory_.held(); }

    /// Whether documents have left much in it: their namespaces, and content models that were built for them.
    bool has_grown() const { return memory_.held() > loaded_ + kSchemaGrowth; }

private:
    ParserMemory memory_;
    xercesc::XMLGrammarPoolImpl grammars_;
    std::size_t loaded_ = 0;  // bytes held then
};

}  // namespace sax

#endif
