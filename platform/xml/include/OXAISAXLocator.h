// Where the parser is.
#ifndef OXA_I_SAX_LOCATOR_H
#define OXA_I_SAX_LOCATOR_H

#include "OXABaseUnknown.h"
#include "OXAMetaClass.h"
#include "OXAUnicodeString.h"
#include "OXAVar.h"
#include "OXAXMLExport.h"

/// The position of a parse: within a callback, behind the text that the callback reports.
///
/// A reference may be kept for any time. Outside a parse the locator answers with the last position of its
/// reader's last parse, as long as the reader lives and after, and with 0 where there has been none.
class PELTO_XML_API OXAISAXLocator : public OXABaseUnknown {
public:
    /// Lines count from 1; 0 when no position is known.
    virtual HRESULT GetLineNumber(int& line) = 0;

    /// Columns count from 1, in UTF-16 code units; 0 when no position is known.
    virtual HRESULT GetColumnNumber(int& column) = 0;

    /// The public identifier of the file that the position is in; empty where there is none.
    virtual HRESULT GetPublicId(OXAUnicodeString& publicId) = 0;

    /// The path of the file that the position is in; empty for a text in memory.
    virtual HRESULT GetSystemId(OXAUnicodeString& systemId) = 0;

    OXA_META_CLASS_MEMBERS

protected:
    ~OXAISAXLocator() override;
};

using OXAISAXLocator_var = OXAVar<OXAISAXLocator>;

#endif
