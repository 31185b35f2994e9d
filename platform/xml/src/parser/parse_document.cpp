#include "parser/parse_document.h"

#include "events/ContentRelay.h"
#include "input/ParserInputs.h"
#include "parser/EntityResolver.h"
#include "parser/report_refusals.h"

namespace sax {

void parse_document(const InputSource& source, const Features& features,
                    const OXAISAXContentHandler_var& handler, SchemaPool* schemas, ErrorRelay& errors,
                    ParseLocator& locator, unsigned most_depth) {
    DocumentCost cost(kContentModel);
    ContentRelay content(handler, most_depth, locator, cost);
    const auto parse = [&](SchemaPool* used_schemas) {
        ParserInputs inputs(cost);
        const xercesc::InputSource* input = inputs.add(source);
        EntityResolver resolver(source.path(), handler, content, locator, cost, inputs);
        XercesParser parser(features, used_schemas, inputs.memory(), errors, resolver, locator, cost);
        parser.parse(*input, content);
    };
    report_refusals(source, errors, [&] {
        try {
            parse(schemas);
        } catch (const DoctypeFound&) {
            // A schema without a namespace would take the document over from its DTD.
            cost = DocumentCost(kContentModel);
            parse(nullptr);
        }
    });
}

}  // namespace sax
