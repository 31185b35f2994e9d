// The grammars of loaded schemas.
#ifndef SCHEMA_POOL_H
#define SCHEMA_POOL_H

#include <xercesc/framework/XMLGrammarPoolImpl.hpp>

#include "ParserMemory.h"

namespace sax {

/// Grammars of Xerces-C and the memory that they are in.
class SchemaPool {
public:
    SchemaPool() : grammars_(&memory_) {}
    SchemaPool(const SchemaPool&) = delete;
    SchemaPool& operator=(const SchemaPool&) = delete;

    ParserMemory& memory() { return memory_; }
    xercesc::XMLGrammarPool& grammars() { return grammars_; }

private:
    ParserMemory memory_;
    xercesc::XMLGrammarPoolImpl grammars_;
};

}  // namespace sax

#endif
