// SPDX-License-Identifier: Apache-2.0
// The parse of one document.
#ifndef PARSE_DOCUMENT_H
#define PARSE_DOCUMENT_H

#include "OXAISAXContentHandler.h"
#include "events/ProblemReport.h"
#include "input/InputSource.h"
#include "limits/document_limits.h"
#include "parser/SchemaPool.h"
#include "parser/XercesParser.h"

namespace sax {

/// How a document is read, and for whom.
struct ParseOptions {
    Features features{};
    OXAISAXContentHandler_var handler{};  ///< null for none
    SchemaPool* schemas = nullptr;        ///< null for the document's own DTD
    unsigned most_depth = kElementDepth;  ///< of elements
};

/// Parses `source`. Every problem goes to `report`, those of reading included.
///
/// Throws what a handler throws, and std::bad_alloc.
void parse_document(const InputSource& source, const ParseOptions& options, ProblemReport& report);

}  // namespace sax

#endif
