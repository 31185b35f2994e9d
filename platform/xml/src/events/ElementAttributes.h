// SPDX-License-Identifier: Apache-2.0
// The attributes that a content handler sees.
#ifndef ELEMENT_ATTRIBUTES_H
#define ELEMENT_ATTRIBUTES_H

#include <xercesc/sax2/Attributes.hpp>

#include "OXAISAXAttributes.h"

namespace sax {

class ElementAttributes final : public OXAISAXAttributes {
public:
    HRESULT GetLength(unsigned int& n) override;
    HRESULT GetLocalName(unsigned int i, OXAUnicodeString& s) override;
    HRESULT GetQName(unsigned int i, OXAUnicodeString& s) override;
    HRESULT GetURI(unsigned int i, OXAUnicodeString& s) override;
    HRESULT GetType(unsigned int i, OXAUnicodeString& s) override;
    HRESULT GetValue(unsigned int i, OXAUnicodeString& s) override;
    HRESULT GetValue(const OXAUnicodeString& qName, OXAUnicodeString& s) override;

    /// Shows the parser's attributes during the lifetime of a scope.
    class Scope {
    public:
        Scope(ElementAttributes& shown, const xercesc::Attributes& attributes) : shown_(shown) {
            shown_.attributes_ = &attributes;
        }
        ~Scope() { shown_.attributes_ = nullptr; }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        ElementAttributes& shown_;
    };

private:
    using Getter = const XMLCh* (xercesc::Attributes::*)(XMLSize_t) const;
    HRESULT get(Getter getter, unsigned int i, OXAUnicodeString& s) const;

    const xercesc::Attributes* attributes_ = nullptr;
    OXAUnicodeString name_;  // keeps its memory for the next search
};

}  // namespace sax

#endif
