// SPDX-License-Identifier: Apache-2.0
// What a schema must be before it is loaded.
#ifndef CHECK_SCHEMA_DOCUMENT_H
#define CHECK_SCHEMA_DOCUMENT_H

#include "events/ProblemReport.h"
#include "input/InputSource.h"

namespace sax {

/// Reads a schema as a document, and reports a rule that it breaks as a fatal error. Loading checks no rules,
/// and walks through the schema recursively.
void check_schema_document(const InputSource& schema, ProblemReport& report);

}  // namespace sax

#endif
