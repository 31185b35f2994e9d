// From the parser's content to the interface's.
#ifndef CONTENT_RELAY_H
#define CONTENT_RELAY_H

#include <cstddef>
#include <string>
#include <unordered_map>
#include <xercesc/sax2/DefaultHandler.hpp>

#include "OXAISAXContentHandler.h"
#include "events/ElementAttributes.h"
#include "events/ElementNames.h"
#include "limits/DocumentCost.h"
#include "limits/ParseLocator.h"

namespace sax {

/// Thrown at a DOCTYPE by a relay that was told to.
struct DoctypeFound {};

/// Converts each event for a content handler, or for none, and keeps account of what the document costs:
/// over a limit it throws Refusal.
class ContentRelay final : public xercesc::DefaultHandler {
public:
    /// Elements may nest `most_depth` deep. The references outlive the relay.
    ContentRelay(OXAISAXContentHandler_var handler, unsigned most_depth, ParseLocator& locator,
                 DocumentCost& cost);

    /// Before a parse. With schemas a DOCTYPE throws DoctypeFound, for another parse without; that one
    /// passes on the events that follow the last one passed on.
    void begin(bool with_schemas);

    bool is_in_dtd() const { return in_dtd_; }

    void setDocumentLocator(const xercesc::Locator* locator) override;
    void startDocument() override;
    void endDocument() override;
    void startElement(const XMLCh* uri, const XMLCh* local_name, const XMLCh* q_name,
                      const xercesc::Attributes& attributes) override;
    void endElement(const XMLCh* uri, const XMLCh* local_name, const XMLCh* q_name) override;
    void characters(const XMLCh* chars, XMLSize_t length) override;
    void ignorableWhitespace(const XMLCh* chars, XMLSize_t length) override;
    void processingInstruction(const XMLCh* target, const XMLCh* data) override;
    void startPrefixMapping(const XMLCh* prefix, const XMLCh* uri) override;
    void endPrefixMapping(const XMLCh* prefix) override;
    void skippedEntity(const XMLCh* name) override;
    void startDTD(const XMLCh* name, const XMLCh* public_id, const XMLCh* system_id) override;
    void endDTD() override;
    void notationDecl(const XMLCh* name, const XMLCh* public_id, const XMLCh* system_id) override;
    void unparsedEntityDecl(const XMLCh* name, const XMLCh* public_id, const XMLCh* system_id,
                            const XMLCh* notation_name) override;
    void elementDecl(const XMLCh* name, const XMLCh* model) override;
    void attributeDecl(const XMLCh* element, const XMLCh* name, const XMLCh* type, const XMLCh* mode,
                       const XMLCh* value) override;
    void internalEntityDecl(const XMLCh* name, const XMLCh* value) override;

private:
    template <class Event>
    void pass(Event event);
    void charge(const char* exceeded) const;
    void enter_element(const XMLCh* uri, const XMLCh* local_name, const XMLCh* q_name,
                       const xercesc::Attributes& attributes);
    void charge_declared_attributes(const XMLCh* element, std::size_t attributes);
    void charge_attributes(const xercesc::Attributes& attributes);

    /// By a DTD, for one element.
    struct DeclaredAttributes {
        std::size_t number = 0;
        std::size_t longest_type = 0;  // in code units
    };

    OXAISAXContentHandler_var handler_;
    ParseLocator& locator_;
    DocumentCost& cost_;
    OXAVar<ElementAttributes> shown_attributes_;
    OXAISAXAttributes_var attributes_;
    unsigned most_depth_;
    unsigned depth_ = 0;
    std::size_t prefixes_ = 0;  // declarations in scope
    bool with_schemas_ = false;
    bool in_dtd_ = false;
    bool attributes_cost_ = false;  // a DTD or schema may add some
    ElementNames names_;
    std::unordered_map<std::u16string, DeclaredAttributes> declared_;
    std::size_t events_ = 0;
    std::size_t passed_on_ = 0;

    // Converted texts, whose memory serves again; and the first half of a character whose second half comes
    // with the next piece of text.
    OXAUnicodeString uri_;
    OXAUnicodeString local_name_;
    OXAUnicodeString q_name_;
    OXAUnicodeString text_;
    std::u16string joined_;
    char16_t held_back_ = 0;
};

}  // namespace sax

#endif
