// SPDX-License-Identifier: Apache-2.0
// What a schema may read beside itself.
#ifndef SCHEMA_RESOLVER_H
#define SCHEMA_RESOLVER_H

#include <map>
#include <string>
#include <xercesc/util/XMLEntityResolver.hpp>

#include "events/Document.h"
#include "input/InputSource.h"

namespace sax {

/// Files by path, as they were when they were read.
using FileSnapshots = std::map<std::string, OXAVar<InputSource>>;

/// Gives files in the folder of the schema. A missing or refused one is a warning: what of it is needed is
/// an error of its own.
class SchemaResolver final : public xercesc::XMLEntityResolver {
public:
    /// Reads each file once and for all into `files`, which outlives the resolver, as does the schema.
    SchemaResolver(Document& schema, FileSnapshots& files);

    xercesc::InputSource* resolveEntity(xercesc::XMLResourceIdentifier* resource) override;

private:
    OXAVar<InputSource> read(const std::string& path, bool is_schema);

    Document& schema_;
    FileSnapshots& files_;
};

}  // namespace sax

#endif
