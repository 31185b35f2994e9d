// SPDX-License-Identifier: Apache-2.0
// What a reader reads.
#ifndef OXA_I_SAX_INPUT_SOURCE_H
#define OXA_I_SAX_INPUT_SOURCE_H

#include "OXABaseUnknown.h"
#include "OXAMetaClass.h"
#include "OXAUnicodeString.h"
#include "OXAVar.h"
#include "OXAXMLExport.h"

/// A document, schema or entity: a file, which each parse opens anew, or a text in memory. A factory makes
/// sources; they never change, and you may parse them any number of times.
class PELTO_XML_API OXAISAXInputSource : public OXABaseUnknown {
public:
    virtual HRESULT GetPublicId(OXAUnicodeString& publicId) = 0;

    /// The path of a file source, as given to the factory; empty for a text in memory.
    virtual HRESULT GetSystemId(OXAUnicodeString& systemId) = 0;

    OXA_META_CLASS_MEMBERS

protected:
    ~OXAISAXInputSource() override;
};

using OXAISAXInputSource_var = OXAVar<OXAISAXInputSource>;

#endif
