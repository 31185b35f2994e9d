// SPDX-License-Identifier: Apache-2.0
// Makes readers and input sources.
#ifndef OXA_I_XML_SAX2_FACTORY_H
#define OXA_I_XML_SAX2_FACTORY_H

#include "OXABaseUnknown.h"
#include "OXAISAXInputSource.h"
#include "OXAISAXXMLReader.h"
#include "OXAMetaClass.h"
#include "OXAUnicodeString.h"
#include "OXAVar.h"
#include "OXAXMLExport.h"

/// Its readers and sources are independent of it and may outlive it. Several threads may use one factory at
/// once.
class PELTO_XML_API OXAIXMLSAX2Factory : public OXABaseUnknown {
public:
    /// A new reader. E_FAIL, and null, if the parser cannot start.
    virtual HRESULT CreateXMLReader(OXAISAXXMLReader_var& reader) = 0;

    /// A source for the file at `path`. E_FAIL if there is no such regular file or it cannot be opened; it
    /// makes the source even then, so that parsing it reports a fatal error with the path.
    virtual HRESULT CreateInputSourceFromFile(const OXAUnicodeString& path, const OXAUnicodeString& publicId,
                                              OXAISAXInputSource_var& source) = 0;

    /// A source for a copy of `text`, in UTF-8. Always S_OK.
    virtual HRESULT CreateInputSourceFromText(const OXAUnicodeString& text, const OXAUnicodeString& publicId,
                                              OXAISAXInputSource_var& source) = 0;

    OXA_META_CLASS_MEMBERS

protected:
    ~OXAIXMLSAX2Factory() override;
};

using OXAIXMLSAX2Factory_var = OXAVar<OXAIXMLSAX2Factory>;

/// The class identifier of the only parser.
extern PELTO_XML_API const GUID CLSID_XML4C_SAX;

/// A factory for the parser `clsid`. E_NOINTERFACE, and null, if there is no such parser.
PELTO_XML_API HRESULT CreateOXAIXMLSAX2Factory(OXAIXMLSAX2Factory_var& factory, const GUID& clsid);

#endif
