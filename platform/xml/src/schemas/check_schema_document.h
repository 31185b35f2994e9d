// What a schema must be before it is loaded.
#ifndef CHECK_SCHEMA_DOCUMENT_H
#define CHECK_SCHEMA_DOCUMENT_H

#include "events/ErrorRelay.h"
#include "input/InputSource.h"
#include "limits/ParseLocator.h"

namespace sax {

/// Reads a schema as a document, and reports a rule that it breaks as a fatal error. Loading it asks for no
/// rules, and walks through it recursively.
void check_schema_document(const InputSource& schema, ErrorRelay& errors, ParseLocator& locator);

}  // namespace sax

#endif
