// SPDX-License-Identifier: Apache-2.0
// The attributes of an element.
#ifndef OXA_I_SAX_ATTRIBUTES_H
#define OXA_I_SAX_ATTRIBUTES_H

#include "OXABaseUnknown.h"
#include "OXAMetaClass.h"
#include "OXAUnicodeString.h"
#include "OXAVar.h"
#include "OXAXMLExport.h"

/// The attributes of the element that starts, in document order, including defaults from a DTD or schema. You
/// may keep a reference past the callback, but there are no attributes then: read the values within it.
///
/// An index that is not below the number of attributes, or an unknown name, gives E_FAIL and leaves the
/// string unchanged.
class PELTO_XML_API OXAISAXAttributes : public OXABaseUnknown {
public:
    virtual HRESULT GetLength(unsigned int& n) = 0;

    /// The name without its prefix.
    virtual HRESULT GetLocalName(unsigned int i, OXAUnicodeString& s) = 0;

    /// The name as in the document.
    virtual HRESULT GetQName(unsigned int i, OXAUnicodeString& s) = 0;

    /// The namespace; empty if there is none.
    virtual HRESULT GetURI(unsigned int i, OXAUnicodeString& s) = 0;

    /// The type by the document's DTD: "CDATA", "ID", "NMTOKEN", ...; "CDATA" if nothing declares one.
    virtual HRESULT GetType(unsigned int i, OXAUnicodeString& s) = 0;

    /// The value with references expanded and white space normalised.
    virtual HRESULT GetValue(unsigned int i, OXAUnicodeString& s) = 0;

    /// The same by the name as in the document.
    virtual HRESULT GetValue(const OXAUnicodeString& qName, OXAUnicodeString& s) = 0;

    OXA_META_CLASS_MEMBERS

protected:
    ~OXAISAXAttributes() override;
};

using OXAISAXAttributes_var = OXAVar<OXAISAXAttributes>;

#endif
