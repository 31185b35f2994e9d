// The attributes of an element.
#ifndef OXA_I_SAX_ATTRIBUTES_H
#define OXA_I_SAX_ATTRIBUTES_H

#include "OXABaseUnknown.h"
#include "OXAMetaClass.h"
#include "OXAUnicodeString.h"
#include "OXAVar.h"
#include "OXAXMLExport.h"

/// The attributes of the element that is being started, defaults of a DTD or schema included, in the order of
/// the document. There are none at any other time: a reference that is kept past the callback is harmless,
/// but the values must be read within it.
///
/// An index that is not below the number of attributes, or a name that none has, gives E_FAIL and leaves the
/// string unchanged.
class PELTO_XML_API OXAISAXAttributes : public OXABaseUnknown {
public:
    virtual HRESULT GetLength(unsigned int& n) = 0;

    /// The name without its prefix.
    virtual HRESULT GetLocalName(unsigned int i, OXAUnicodeString& s) = 0;

    /// The name as in the document.
    virtual HRESULT GetQName(unsigned int i, OXAUnicodeString& s) = 0;

    /// The namespace; empty where there is none.
    virtual HRESULT GetURI(unsigned int i, OXAUnicodeString& s) = 0;

    /// The type by the document's DTD: "CDATA", "ID", "NMTOKEN", ...; "CDATA" where nothing declares one.
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
