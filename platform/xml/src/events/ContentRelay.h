// SPDX-License-Identifier: Apache-2.0
// From the parser's content to the interface's.
#ifndef CONTENT_RELAY_H
#define CONTENT_RELAY_H

#include <cstddef>
#include <string>
#include <unordered_map>
#include <xercesc/sax2/DefaultHandler.hpp>

#include "OXAISAXContentHandler.h"
#include "events/Document.h"
#include "events/ElementAttributes.h"
#include "events/ElementNames.h"

namespace sax {

/// Thrown at the DOCTYPE of a document that schemas were to check.
struct DoctypeFound {
    std::size_t events;  ///< that were passed on before
};

/// Converts each event for a content handler, or for none, and charges the document for what it costs.
class ContentRelay final : public xercesc::DefaultHandler {
public:
    /// Elements may nest `most_depth` deep. With schemas a DOCTYPE throws DoctypeFound. The document outlives
    /// the relay.
    ContentRelay(Document& document, OXAISAXContentHandler_var handler, unsigned most_depth,
                 bool with_schemas);

    /// Keeps the first `events` events back: another parse of the document has passed them on.
    void skip(std::size_t events) { skipped_ = events; }

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
    void enter_element(const XMLCh* uri, const XMLCh* local_name, const XMLCh* q_name,
                       const xercesc::Attributes& attributes);
    void charge_declared_attributes(const XMLCh* element, std::size_t attributes);
    void charge_attributes(const xercesc::Attributes& attributes);

    /// By a DTD, for one element.
    struct DeclaredAttributes {
        std::size_t number = 0;
        std::size_t longest_type = 0;  // in code units
    };

    Document& document_;
    DocumentCost& cost_;  // the document's
    OXAISAXContentHandler_var handler_;
    OXAVar<ElementAttributes> shown_attributes_;
    OXAISAXAttributes_var attributes_;
    unsigned most_depth_;
    unsigned depth_ = 0;
    std::size_t prefixes_ = 0;  // declarations in scope
    bool with_schemas_;
    bool in_dtd_ = false;
    bool attributes_cost_;  // a DTD or schema may add some
    ElementNames names_;
    std::unordered_map<std::u16string, DeclaredAttributes> declared_;
    std::size_t events_ = 0;   // so far
    std::size_t skipped_ = 0;  // of them

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
