// SPDX-License-Identifier: Apache-2.0
// Receives the problems of documents and schemas.
#ifndef OXA_I_SAX_ERROR_HANDLER_H
#define OXA_I_SAX_ERROR_HANDLER_H

#include "OXABaseUnknown.h"
#include "OXAMetaClass.h"
#include "OXASAXParseException.h"
#include "OXAVar.h"
#include "OXAXMLExport.h"

/// Each operation gets a problem, never null and valid until the call returns. Results change nothing; an
/// exception leaves the parse or load that made the call.
class PELTO_XML_API OXAISAXErrorHandler : public OXABaseUnknown {
public:
    /// The document is not valid. The parse goes on.
    virtual HRESULT Error(OXASAXParseException* exception) = 0;

    /// The document is not well-formed, cannot be read, or exceeds a limit. The parse ends here.
    virtual HRESULT FatalError(OXASAXParseException* exception) = 0;

    /// Something is doubtful. The parse goes on.
    virtual HRESULT Warning(OXASAXParseException* exception) = 0;

    OXA_META_CLASS_MEMBERS

protected:
    ~OXAISAXErrorHandler() override;
};

using OXAISAXErrorHandler_var = OXAVar<OXAISAXErrorHandler>;

#endif
