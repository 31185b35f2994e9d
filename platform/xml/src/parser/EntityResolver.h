// SPDX-License-Identifier: Apache-2.0
// What a document may read beside itself.
#ifndef ENTITY_RESOLVER_H
#define ENTITY_RESOLVER_H

#include <string>
#include <xercesc/util/XMLEntityResolver.hpp>

#include "OXAISAXContentHandler.h"
#include "events/ContentRelay.h"
#include "events/Document.h"

namespace sax {

/// Gives the source that the content handler puts in the place of an external DTD or entity; without one, a
/// DTD's file in the folder of the document. All else throws Refusal.
class EntityResolver final : public xercesc::XMLEntityResolver {
public:
    /// Document and content outlive the resolver.
    EntityResolver(Document& document, OXAISAXContentHandler_var handler, const ContentRelay& content);

    xercesc::InputSource* resolveEntity(xercesc::XMLResourceIdentifier* resource) override;

private:
    xercesc::InputSource* from_handler(const std::string& public_id, const std::string& system_id) const;
    xercesc::InputSource* from_folder(const std::string& public_id, const std::string& system_id,
                                      const std::string& base) const;

    Document& document_;
    OXAISAXContentHandler_var handler_;
    const ContentRelay& content_;
};

}  // namespace sax

#endif
