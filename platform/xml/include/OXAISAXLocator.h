// SPDX-License-Identifier: Apache-2.0
// Where the parser is.
#ifndef OXA_I_SAX_LOCATOR_H
#define OXA_I_SAX_LOCATOR_H

#include "OXABaseUnknown.h"
#include "OXAMetaClass.h"
#include "OXAUnicodeString.h"
#include "OXAVar.h"
#include "OXAXMLExport.h"

/// The position of a parse: within a callback, just after the text that the callback reports.
///
/// You may keep a reference for any time. Outside a parse the locator gives the last position of its reader's
/// last parse, even after the reader is gone, and 0 if there was no parse.
class PELTO_XML_API OXAISAXLocator : public OXABaseUnknown {
public:
    /// Lines count from 1; 0 if the position is unknown.
    virtual HRESULT GetLineNumber(int& line) = 0;

    /// Columns count from 1, in UTF-16 code units; 0 if the position is unknown.
    virtual HRESULT GetColumnNumber(int& column) = 0;

    /// The public identifier of the file at the position; empty if it has none.
    virtual HRESULT GetPublicId(OXAUnicodeString& publicId) = 0;

    /// The path of the file at the position; empty for a text in memory.
    virtual HRESULT GetSystemId(OXAUnicodeString& systemId) = 0;

    OXA_META_CLASS_MEMBERS

protected:
    ~OXAISAXLocator() override;
};

using OXAISAXLocator_var = OXAVar<OXAISAXLocator>;

#endif
