// What a document may read beside itself.
#ifndef ENTITY_RESOLVER_H
#define ENTITY_RESOLVER_H

#include <string>
#include <xercesc/util/XMLEntityResolver.hpp>

#include "OXAISAXContentHandler.h"
#include "events/ContentRelay.h"
#include "input/ParserInputs.h"
#include "limits/DocumentCost.h"
#include "limits/ParseLocator.h"

namespace sax {

/// Gives the source that the content handler puts in the place of an external DTD or entity; without one, a
/// DTD's file in the folder of the document. All else throws Refusal.
class EntityResolver final : public xercesc::XMLEntityResolver {
public:
    /// `document` is the path of the document; empty for a text. The others outlive the resolver.
    EntityResolver(std::string document, OXAISAXContentHandler_var handler, const ContentRelay& content,
                   ParseLocator& locator, DocumentCost& cost, ParserInputs& inputs);

    xercesc::InputSource* resolveEntity(xercesc::XMLResourceIdentifier* resource) override;

private:
    xercesc::InputSource* from_handler(const std::string& public_id, const std::string& system_id) const;
    xercesc::InputSource* from_folder(const std::string& public_id, const std::string& system_id,
                                      const std::string& base) const;

    std::string document_;
    OXAISAXContentHandler_var handler_;
    const ContentRelay& content_;
    ParseLocator& locator_;
    DocumentCost& cost_;
    ParserInputs& inputs_;
};

}  // namespace sax

#endif
