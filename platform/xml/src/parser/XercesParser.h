// A parser of Xerces-C, set up.
#ifndef XERCES_PARSER_H
#define XERCES_PARSER_H

#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>

#include "events/ContentRelay.h"
#include "events/ErrorRelay.h"
#include "limits/DocumentCost.h"
#include "limits/ParseLocator.h"
#include "limits/ParserMemory.h"
#include "parser/SchemaPool.h"

namespace sax {

/// The features of a reader.
struct Features {
    bool validation = false;
    bool namespaces = true;
    bool namespace_prefixes = false;
};

/// Lives for one document, or for the loading of one set of schemas: it is made in some microseconds, and
/// nothing of one document, nor of how it ended, can reach the next one. The locator does not follow it
/// beyond its life.
class XercesParser {
public:
    /// With `schemas`, documents are checked against them; without, against their own DTD. They and all
    /// references outlive the parser.
    XercesParser(const Features& features, SchemaPool* schemas, ParserMemory& memory, ErrorRelay& errors,
                 xercesc::XMLEntityResolver& resolver, ParseLocator& locator, DocumentCost& cost);
    ~XercesParser();
    XercesParser(const XercesParser&) = delete;
    XercesParser& operator=(const XercesParser&) = delete;

    void parse(const xercesc::InputSource& source, ContentRelay& content);

    /// Loads a schema into the pool.
    void load_schema(const xercesc::InputSource& source);

private:
    ParserMemory& memory_;
    ErrorRelay& errors_;
    DocumentCost* cost_before_;  // of a schema that includes the one that is parsed
    SchemaPool* schemas_;
    ParseLocator& locator_;
    xercesc::SAX2XMLReaderImpl parser_;
};

}  // namespace sax

#endif
