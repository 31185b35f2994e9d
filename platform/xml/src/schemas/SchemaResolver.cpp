// SPDX-License-Identifier: Apache-2.0

#include "schemas/SchemaResolver.h"

#include <xercesc/util/XMLResourceIdentifier.hpp>

#include "input/InputError.h"
#include "input/external_file.h"
#include "schemas/check_schema_document.h"
#include "text/text.h"

namespace sax {

using xercesc::XMLResourceIdentifier;

SchemaResolver::SchemaResolver(Document& schema, FileSnapshots& files) : schema_(schema), files_(files) {}

xercesc::InputSource* SchemaResolver::resolveEntity(XMLResourceIdentifier* resource) {
    // An import may name a namespace alone.
    if (!resource->getSystemId()) return nullptr;
    const std::string system_id = to_utf8(resource->getSystemId());
    const bool is_schema = resource->getResourceIdentifierType() != XMLResourceIdentifier::ExternalEntity;
    try {
        const std::string path = path_of(system_id, to_utf8(resource->getBaseURI()));
        auto place = files_.find(path);
        if (place == files_.end()) place = files_.emplace(path, read(path, is_schema)).first;
        const InputSource& file = *place->second.Get();
        return schema_.inputs().add(file.open(), file.name());
    } catch (const InputError& error) {
        schema_.report().warn("the file \"" + system_id + "\" is not read: " + error.what());
        return nullptr;
    }
}

OXAVar<InputSource> SchemaResolver::read(const std::string& path, bool is_schema) {
    auto file = InputSource::snapshot(path, schema_.read_external_file(path_below(schema_.path(), path)), "");
    if (is_schema) check_schema_document(*file.Get(), schema_.report());
    return file;
}

}  // namespace sax
