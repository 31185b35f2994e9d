// SPDX-License-Identifier: Apache-2.0

#include "schemas/check_schema_document.h"

#include "limits/document_limits.h"
#include "parser/parse_document.h"

namespace sax {

void check_schema_document(const InputSource& schema, ProblemReport& report) {
    parse_document(schema, {.most_depth = kSchemaDepth}, report);
}

}  // namespace sax
