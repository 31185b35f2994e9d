// SPDX-License-Identifier: Apache-2.0

#include "events/ElementAttributes.h"

#include "text/text.h"

namespace sax {

using xercesc::Attributes;

HRESULT ElementAttributes::get(Getter getter, unsigned int i, OXAUnicodeString& s) const {
    if (!attributes_ || i >= attributes_->getLength()) return E_FAIL;
    assign(s, (attributes_->*getter)(i));
    return S_OK;
}

HRESULT ElementAttributes::GetLength(unsigned int& n) {
    n = attributes_ ? static_cast<unsigned int>(attributes_->getLength()) : 0;
    return S_OK;
}

HRESULT ElementAttributes::GetLocalName(unsigned int i, OXAUnicodeString& s) {
    return get(&Attributes::getLocalName, i, s);
}

HRESULT ElementAttributes::GetQName(unsigned int i, OXAUnicodeString& s) {
    return get(&Attributes::getQName, i, s);
}

HRESULT ElementAttributes::GetURI(unsigned int i, OXAUnicodeString& s) {
    return get(&Attributes::getURI, i, s);
}

HRESULT ElementAttributes::GetType(unsigned int i, OXAUnicodeString& s) {
    return get(&Attributes::getType, i, s);
}

HRESULT ElementAttributes::GetValue(unsigned int i, OXAUnicodeString& s) {
    return get(&Attributes::getValue, i, s);
}

HRESULT ElementAttributes::GetValue(const OXAUnicodeString& qName, OXAUnicodeString& s) {
    const XMLSize_t length = attributes_ ? attributes_->getLength() : 0;
    for (XMLSize_t i = 0; i < length; ++i) {
        assign(name_, attributes_->getQName(i));
        if (name_ != qName) continue;
        assign(s, attributes_->getValue(i));
        return S_OK;
    }
    return E_FAIL;
}

}  // namespace sax
