// The parse of one document.
#ifndef PARSE_DOCUMENT_H
#define PARSE_DOCUMENT_H

#include "OXAISAXContentHandler.h"
#include "events/ErrorRelay.h"
#include "input/InputSource.h"
#include "limits/ParseLocator.h"
#include "limits/document_limits.h"
#include "parser/SchemaPool.h"
#include "parser/XercesParser.h"

namespace sax {

/// Parses `source` for a content handler, or for none, against `schemas` or, where that is null, the
/// document's own DTD. Every problem goes to `errors`, those of reading included.
///
/// Throws what a handler throws, and std::bad_alloc.
void parse_document(const InputSource& source, const Features& features,
                    const OXAISAXContentHandler_var& handler, SchemaPool* schemas, ErrorRelay& errors,
                    ParseLocator& locator, unsigned most_depth = kElementDepth);

}  // namespace sax

#endif
