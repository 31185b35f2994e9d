// SPDX-License-Identifier: Apache-2.0
// A parser of Xerces-C, set up.
#ifndef XERCES_PARSER_H
#define XERCES_PARSER_H

#include <optional>
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>

#include "events/ContentRelay.h"
#include "events/Document.h"
#include "events/ErrorRelay.h"
#include "limits/ParserMemory.h"
#include "parser/SchemaPool.h"

namespace sax {

/// The features of a reader.
struct Features {
    bool validation = false;
    bool namespaces = true;
    bool namespace_prefixes = false;
};

/// Reads one document or loads one schema. It is made in some microseconds, and nothing of one document, nor
/// of how it ended, can reach the next one.
class XercesParser {
public:
    /// With `schemas`, the document is checked against them; without, against its own DTD. All that is passed
    /// outlives the parser.
    XercesParser(Document& document, const Features& features, SchemaPool* schemas,
                 xercesc::XMLEntityResolver& resolver);
    ~XercesParser();
    XercesParser(const XercesParser&) = delete;
    XercesParser& operator=(const XercesParser&) = delete;

    void parse(ContentRelay& content);

    /// Loads the document, a schema, into the pool.
    void load_schema();

private:
    Document& document_;
    ErrorRelay errors_;
    xercesc::SAX2XMLReaderImpl parser_;
    ParserMemory::Counting counting_;
    std::optional<ParserMemory::Counting> counting_schemas_;
};

}  // namespace sax

#endif
