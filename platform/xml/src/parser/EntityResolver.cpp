// SPDX-License-Identifier: Apache-2.0

#include "parser/EntityResolver.h"

#include <memory>
#include <utility>
#include <xercesc/util/XMLResourceIdentifier.hpp>

#include "input/InputError.h"
#include "input/InputSource.h"
#include "input/external_file.h"
#include "text/text.h"

namespace sax {

EntityResolver::EntityResolver(Document& document, OXAISAXContentHandler_var handler,
                               const ContentRelay& content)
    : document_(document), handler_(std::move(handler)), content_(content) {}

xercesc::InputSource* EntityResolver::resolveEntity(xercesc::XMLResourceIdentifier* resource) {
    const std::string public_id = to_utf8(resource->getPublicId());
    const std::string system_id = to_utf8(resource->getSystemId());
    try {
        if (xercesc::InputSource* source = from_handler(public_id, system_id)) return source;
        return from_folder(public_id, system_id, to_utf8(resource->getBaseURI()));
    } catch (const InputError& error) {
        document_.refuse("the external entity \"" + system_id + "\" is not read: " + error.what());
    }
}

xercesc::InputSource* EntityResolver::from_handler(const std::string& public_id,
                                                   const std::string& system_id) const {
    OXAISAXInputSource_var found;
    if (!handler_.IsNull()) {
        document_.locator().around(
            [&] { handler_->ResolveEntity(to_unicode(public_id), to_unicode(system_id), found); });
    }
    if (found.IsNull()) return nullptr;
    const auto* source = dynamic_cast<const InputSource*>(found.Get());
    if (!source) throw InputError("the handler's source is not one of a factory's");
    StreamName name = source->name();
    name.public_id = public_id;
    if (name.system_id.empty()) name.system_id = system_id;
    return document_.inputs().add(source->open(), std::move(name));
}

xercesc::InputSource* EntityResolver::from_folder(const std::string& public_id, const std::string& system_id,
                                                  const std::string& base) const {
    if (!content_.is_in_dtd()) throw InputError("only a DTD is read from another file");
    const std::string path = path_below(document_.path(), path_of(system_id, base));
    auto bytes = std::make_shared<const std::string>(document_.read_external_file(path));
    return document_.inputs().add(open_memory(std::move(bytes)), {public_id, path, std::nullopt});
}

}  // namespace sax
