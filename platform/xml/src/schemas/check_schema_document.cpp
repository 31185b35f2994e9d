#include "schemas/check_schema_document.h"

#include "limits/document_limits.h"
#include "parser/parse_document.h"

namespace sax {

void check_schema_document(const InputSource& schema, ErrorRelay& errors, ParseLocator& locator) {
    parse_document(schema, Features(), OXAISAXContentHandler_var(), nullptr, errors, locator, kSchemaDepth);
}

}  // namespace sax
