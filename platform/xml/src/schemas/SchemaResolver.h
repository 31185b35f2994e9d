// What a schema may read beside itself.
#ifndef SCHEMA_RESOLVER_H
#define SCHEMA_RESOLVER_H

#include <map>
#include <string>
#include <xercesc/util/XMLEntityResolver.hpp>

#include "events/ErrorRelay.h"
#include "input/InputSource.h"
#include "input/ParserInputs.h"
#include "limits/DocumentCost.h"
#include "limits/ParseLocator.h"

namespace sax {

/// Files by path, as they were when they were read.
using FileSnapshots = std::map<std::string, OXAVar<InputSource>>;

/// Gives files in the folder of the schema. A missing or refused one is a warning: what of it is needed is
/// an error of its own.
class SchemaResolver final : public xercesc::XMLEntityResolver {
public:
    /// `document` is the path of the schema; empty for a text. Reads each file once and for all into
    /// `files`, which outlives the resolver, as do the others.
    SchemaResolver(std::string document, FileSnapshots& files, ErrorRelay& errors, ParseLocator& locator,
                   DocumentCost& cost, ParserInputs& inputs);

    xercesc::InputSource* resolveEntity(xercesc::XMLResourceIdentifier* resource) override;

private:
    OXAVar<InputSource> read(const std::string& path, bool is_schema);

    std::string document_;
    FileSnapshots& files_;
    ErrorRelay& errors_;
    ParseLocator& locator_;
    DocumentCost& cost_;
    ParserInputs& inputs_;
};

}  // namespace sax

#endif
