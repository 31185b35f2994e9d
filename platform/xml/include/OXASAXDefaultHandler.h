// SPDX-License-Identifier: Apache-2.0
// A handler of content and errors that does nothing: the base class for your handlers.
#ifndef OXA_SAX_DEFAULT_HANDLER_H
#define OXA_SAX_DEFAULT_HANDLER_H

#include <memory>

#include "OXABaseUnknown.h"
#include "OXAISAXAttributes.h"
#include "OXAISAXContentHandler.h"
#include "OXAISAXErrorHandler.h"
#include "OXAISAXInputSource.h"
#include "OXAISAXLocator.h"
#include "OXAMetaClass.h"
#include "OXASAXParseException.h"
#include "OXAUnicodeString.h"
#include "OXAXMLExport.h"

/// Each operation is one of OXAISAXContentHandler or OXAISAXErrorHandler, with its contract; here it changes
/// nothing and returns S_OK. Query it for either interface: both are this component, and a reference to one
/// is a reference to the handler.
class PELTO_XML_API OXASAXDefaultHandler : public OXABaseUnknown {
public:
    HRESULT QueryInterface(const GUID& classId, void** object) override;
    OXABaseUnknown* QueryInterface(const char* className) override;

    // The order of the virtual operations is part of the binary interface.

    virtual HRESULT StartDocument();
    virtual HRESULT EndDocument();
    virtual HRESULT StartElement(const OXAUnicodeString& uri, const OXAUnicodeString& localName,
                                 const OXAUnicodeString& qName, const OXAISAXAttributes_var& attributes);
    virtual HRESULT EndElement(const OXAUnicodeString& uri, const OXAUnicodeString& localName,
                               const OXAUnicodeString& qName);
    virtual HRESULT Characters(const OXAUnicodeString& chars);
    virtual HRESULT IgnorableWhiteSpace(const OXAUnicodeString& chars);
    virtual HRESULT ProcessingInstruction(const OXAUnicodeString& target, const OXAUnicodeString& data);
    virtual HRESULT SetDocumentLocator(const OXAISAXLocator_var& locator);
    virtual HRESULT StartPrefixMapping(const OXAUnicodeString& prefix, const OXAUnicodeString& uri);
    virtual HRESULT EndPrefixMapping(const OXAUnicodeString& prefix);
    virtual HRESULT SkippedEntity(const OXAUnicodeString& name);
    virtual HRESULT NotationDecl(const OXAUnicodeString& name, const OXAUnicodeString& publicId,
                                 const OXAUnicodeString& systemId);
    virtual HRESULT UnparsedEntityDecl(const OXAUnicodeString& name, const OXAUnicodeString& publicId,
                                       const OXAUnicodeString& systemId,
                                       const OXAUnicodeString& notationName);
    virtual HRESULT ResolveEntity(const OXAUnicodeString& publicId, const OXAUnicodeString& systemId,
                                  OXAISAXInputSource_var& source);
    virtual HRESULT Error(OXASAXParseException* exception);
    virtual HRESULT FatalError(OXASAXParseException* exception);
    virtual HRESULT Warning(OXASAXParseException* exception);

    OXA_META_CLASS_MEMBERS

protected:
    OXASAXDefaultHandler();
    ~OXASAXDefaultHandler() override;

private:
    struct _Interfaces;
    std::unique_ptr<_Interfaces> _interfaces;
};

using OXASAXDefaultHandler_var = OXAVar<OXASAXDefaultHandler>;

#endif
