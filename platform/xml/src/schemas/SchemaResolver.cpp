#include "schemas/SchemaResolver.h"

#include <utility>
#include <xercesc/util/XMLResourceIdentifier.hpp>

#include "input/InputError.h"
#include "input/external_file.h"
#include "limits/document_limits.h"
#include "schemas/check_schema_document.h"
#include "text/text.h"

namespace sax {

using xercesc::XMLResourceIdentifier;

SchemaResolver::SchemaResolver(std::string document, FileSnapshots& files, ErrorRelay& errors,
                               ParseLocator& locator, DocumentCost& cost, ParserInputs& inputs)
    : document_(std::move(document)),
      files_(files),
      errors_(errors),
      locator_(locator),
      cost_(cost),
      inputs_(inputs) {}

xercesc::InputSource* SchemaResolver::resolveEntity(XMLResourceIdentifier* resource) {
    // An import may name a namespace alone.
    if (!resource->getSystemId()) return nullptr;
    const std::string system_id = to_utf8(resource->getSystemId());
    const bool is_schema = resource->getResourceIdentifierType() != XMLResourceIdentifier::ExternalEntity;
    try {
        const std::string path = path_of(system_id, to_utf8(resource->getBaseURI()));
        auto place = files_.find(path);
        if (place == files_.end()) place = files_.emplace(path, read(path, is_schema)).first;
        return inputs_.add(*place->second.Get());
    } catch (const InputError& error) {
        errors_.warn("the file \"" + system_id + "\" is not read: " + error.what());
        return nullptr;
    }
}

OXAVar<InputSource> SchemaResolver::read(const std::string& path, bool is_schema) {
    std::string bytes = read_file(path_below(document_, path), kExternalBytes);
    if (const char* exceeded = cost_.external_file(bytes.size())) throw InputError(exceeded);
    auto file = InputSource::snapshot(path, std::move(bytes), "");
    if (is_schema) check_schema_document(*file.Get(), errors_, locator_);
    return file;
}

}  // namespace sax
