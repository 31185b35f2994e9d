// SPDX-License-Identifier: Apache-2.0

#include "xml/OutlineHandler.h"

void OutlineHandler::Reset() {
    elements_.clear();
    elementStack.clear();  // a document that broke off leaves its open elements
    nbErrors = 0;
}

HRESULT OutlineHandler::OnStartElement(const OXAUnicodeString& name, const OXAUnicodeString& parentName,
                                       const OXAISAXAttributes_var& attributes) {
    OutlineElement element;
    if (locator) locator->GetLineNumber(element.line);
    element.depth = elementStack.size();
    element.name = name.ConvertToChar();
    if (element.depth > 0) element.parent = parentName.ConvertToChar();

    unsigned int count = 0;
    attributes->GetLength(count);
    for (unsigned int i = 0; i < count; ++i) {
        OXAUnicodeString key;
        OXAUnicodeString value;
        attributes->GetQName(i, key);
        attributes->GetValue(i, value);
        element.attributes.emplace_back(key.ConvertToChar(), value.ConvertToChar());
    }
    elements_.push_back(std::move(element));
    at_leaf_ = true;
    return S_OK;
}

// The buffer goes on from a child's text to its parent's: of elements with children it is not theirs alone.
HRESULT OutlineHandler::OnEndElement(const OXAUnicodeString&, const OXAUnicodeString&,
                                     const OXAUnicodeString&) {
    if (at_leaf_) buffer->GetString(elements_.back().text);
    at_leaf_ = false;
    return S_OK;
}

// The root's end is not reported.
HRESULT OutlineHandler::EndDocument() {
    if (at_leaf_) buffer->GetString(elements_.back().text);
    at_leaf_ = false;
    return S_OK;
}
