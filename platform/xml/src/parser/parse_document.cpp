// SPDX-License-Identifier: Apache-2.0

#include "parser/parse_document.h"

#include <cstddef>

#include "events/ContentRelay.h"
#include "events/Document.h"
#include "parser/EntityResolver.h"
#include "parser/report_refusals.h"

namespace sax {
namespace {

/// The handler gets the events behind the first `skipped`.
void parse(const InputSource& source, const ParseOptions& options, std::size_t skipped,
           ProblemReport& report) {
    Document document(source, report, kContentModel);
    ContentRelay content(document, options.handler, options.most_depth, options.schemas != nullptr);
    content.skip(skipped);
    EntityResolver resolver(document, options.handler, content);
    XercesParser(document, options.features, options.schemas, resolver).parse(content);
}

}  // namespace

void parse_document(const InputSource& source, const ParseOptions& options, ProblemReport& report) {
    report_refusals(source, report, [&] {
        try {
            parse(source, options, 0, report);
        } catch (const DoctypeFound& found) {
            // A schema without a namespace would take the document over from its DTD.
            ParseOptions without_schemas = options;
            without_schemas.schemas = nullptr;
            parse(source, without_schemas, found.events, report);
        }
    });
}

}  // namespace sax
