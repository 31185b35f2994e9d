// SPDX-License-Identifier: Apache-2.0

#include "events/ContentRelay.h"

#include <algorithm>
#include <utility>

#include "text/text.h"

namespace sax {
namespace {

bool is_high_surrogate(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }

}  // namespace

ContentRelay::ContentRelay(Document& document, OXAISAXContentHandler_var handler, unsigned most_depth,
                           bool with_schemas)
    : document_(document),
      cost_(document.cost()),
      handler_(std::move(handler)),
      shown_attributes_(OXAVar<ElementAttributes>::Adopt(new ElementAttributes)),
      attributes_(shown_attributes_),
      most_depth_(most_depth),
      with_schemas_(with_schemas),
      attributes_cost_(with_schemas) {}

/// Calls the handler with `event`, unless it is one to skip.
template <class Event>
void ContentRelay::pass(Event event) {
    if (handler_.IsNull() || ++events_ <= skipped_) return;
    document_.locator().around([&] { event(*handler_.Get()); });
}

void ContentRelay::enter_element(const XMLCh* uri, const XMLCh* local_name, const XMLCh* q_name,
                                 const xercesc::Attributes& attributes) {
    cost_.drop_content_model();
    if (++depth_ > most_depth_) {
        document_.refuse("elements are nested more than " + std::to_string(most_depth_) + " deep");
    }
    document_.charge(cost_.lookup(depth_ + prefixes_, 1 + attributes.getLength()));
    if (with_schemas_) document_.charge(cost_.element_lookup(names_.add(uri, local_name)));
    if (!declared_.empty()) charge_declared_attributes(q_name, attributes.getLength());
    if (attributes_cost_) charge_attributes(attributes);
}

void ContentRelay::charge_declared_attributes(const XMLCh* element, std::size_t attributes) {
    const auto declared = declared_.find(element);
    if (declared == declared_.end()) return;
    document_.charge(
        cost_.declared_attributes(attributes, declared->second.number, declared->second.longest_type));
}

void ContentRelay::charge_attributes(const xercesc::Attributes& attributes) {
    std::uint64_t length = kMarkupCost;
    for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
        length += kMarkupCost + length_of(attributes.getValue(i));
    }
    document_.charge(cost_.content(length));
}

void ContentRelay::setDocumentLocator(const xercesc::Locator* locator) {
    document_.locator().follow(*locator);
}

void ContentRelay::startDocument() {
    pass([](auto& handler) { handler.StartDocument(); });
}

void ContentRelay::endDocument() {
    pass([](auto& handler) { handler.EndDocument(); });
    document_.locator().remember();
}

void ContentRelay::startElement(const XMLCh* uri, const XMLCh* local_name, const XMLCh* q_name,
                                const xercesc::Attributes& attributes) {
    enter_element(uri, local_name, q_name, attributes);
    pass([&](auto& handler) {
        assign(uri_, uri);
        assign(local_name_, local_name);
        assign(q_name_, q_name);
        const ElementAttributes::Scope scope(*shown_attributes_.Get(), attributes);
        handler.StartElement(uri_, local_name_, q_name_, attributes_);
    });
}

void ContentRelay::endElement(const XMLCh* uri, const XMLCh* local_name, const XMLCh* q_name) {
    --depth_;
    pass([&](auto& handler) {
        assign(uri_, uri);
        assign(local_name_, local_name);
        assign(q_name_, q_name);
        handler.EndElement(uri_, local_name_, q_name_);
    });
}

void ContentRelay::characters(const XMLCh* chars, XMLSize_t length) {
    document_.charge(cost_.content(length));
    if (length == 0) return;
    const bool cut = is_high_surrogate(chars[length - 1]);
    if (!cut && !held_back_) {
        text_.AssignUtf16(chars, length);
    } else {
        joined_.assign(held_back_ ? 1 : 0, held_back_);
        joined_.append(chars, cut ? length - 1 : length);
        held_back_ = cut ? chars[length - 1] : u'\0';
        if (joined_.empty()) return;
        text_.AssignUtf16(joined_.data(), joined_.size());
    }
    pass([&](auto& handler) { handler.Characters(text_); });
}

void ContentRelay::ignorableWhitespace(const XMLCh* chars, XMLSize_t length) {
    document_.charge(cost_.content(length));
    pass([&](auto& handler) {
        text_.AssignUtf16(chars, length);
        handler.IgnorableWhiteSpace(text_);
    });
}

void ContentRelay::processingInstruction(const XMLCh* target, const XMLCh* data) {
    pass([&](auto& handler) {
        assign(q_name_, target);
        assign(text_, data);
        handler.ProcessingInstruction(q_name_, text_);
    });
}

void ContentRelay::startPrefixMapping(const XMLCh* prefix, const XMLCh* uri) {
    ++prefixes_;
    pass([&](auto& handler) {
        assign(q_name_, prefix);
        assign(uri_, uri);
        handler.StartPrefixMapping(q_name_, uri_);
    });
}

void ContentRelay::endPrefixMapping(const XMLCh* prefix) {
    --prefixes_;
    pass([&](auto& handler) {
        assign(q_name_, prefix);
        handler.EndPrefixMapping(q_name_);
    });
}

void ContentRelay::skippedEntity(const XMLCh* name) {
    pass([&](auto& handler) {
        assign(q_name_, name);
        handler.SkippedEntity(q_name_);
    });
}

void ContentRelay::startDTD(const XMLCh* /*name*/, const XMLCh* /*public_id*/, const XMLCh* /*system_id*/) {
    if (with_schemas_) throw DoctypeFound{events_};
    in_dtd_ = attributes_cost_ = true;
}

void ContentRelay::endDTD() { in_dtd_ = false; }

void ContentRelay::notationDecl(const XMLCh* name, const XMLCh* public_id, const XMLCh* system_id) {
    cost_.drop_content_model();
    pass([&](auto& handler) {
        assign(q_name_, name);
        assign(local_name_, public_id);
        assign(uri_, system_id);
        handler.NotationDecl(q_name_, local_name_, uri_);
    });
}

void ContentRelay::unparsedEntityDecl(const XMLCh* name, const XMLCh* public_id, const XMLCh* system_id,
                                      const XMLCh* notation_name) {
    pass([&](auto& handler) {
        assign(q_name_, name);
        assign(local_name_, public_id);
        assign(uri_, system_id);
        assign(text_, notation_name);
        handler.UnparsedEntityDecl(q_name_, local_name_, uri_, text_);
    });
}

void ContentRelay::elementDecl(const XMLCh* /*name*/, const XMLCh* /*model*/) { cost_.end_content_model(); }

void ContentRelay::attributeDecl(const XMLCh* element, const XMLCh* /*name*/, const XMLCh* type,
                                 const XMLCh* /*mode*/, const XMLCh* /*value*/) {
    cost_.drop_content_model();
    document_.charge(cost_.attribute_type(length_of(type)));
    DeclaredAttributes& declared = declared_[element];
    ++declared.number;
    declared.longest_type = std::max(declared.longest_type, length_of(type));
}

void ContentRelay::internalEntityDecl(const XMLCh* /*name*/, const XMLCh* value) {
    cost_.drop_content_model();
    document_.charge(cost_.entity(length_of(value)));
}

}  // namespace sax
