// SPDX-License-Identifier: Apache-2.0
// Receives the content of a document.
#ifndef OXA_I_SAX_CONTENT_HANDLER_H
#define OXA_I_SAX_CONTENT_HANDLER_H

#include "OXABaseUnknown.h"
#include "OXAISAXAttributes.h"
#include "OXAISAXInputSource.h"
#include "OXAISAXLocator.h"
#include "OXAMetaClass.h"
#include "OXAUnicodeString.h"
#include "OXAVar.h"
#include "OXAXMLExport.h"

/// The reader calls it on the thread of the parse, in document order. All strings are UTF-8, and valid until
/// the call returns.
///
/// Results do not stop the parse. An exception does: it leaves the reader's Parse, and the reader can be used
/// again.
class PELTO_XML_API OXAISAXContentHandler : public OXABaseUnknown {
public:
    virtual HRESULT StartDocument() = 0;

    /// Not called after a fatal error.
    virtual HRESULT EndDocument() = 0;

    /// `uri` is empty if the element has no namespace; `localName` is the name without its prefix, `qName`
    /// the name as in the document. If the reader does not process namespaces, only `qName` is set.
    virtual HRESULT StartElement(const OXAUnicodeString& uri, const OXAUnicodeString& localName,
                                 const OXAUnicodeString& qName, const OXAISAXAttributes_var& attributes) = 0;

    virtual HRESULT EndElement(const OXAUnicodeString& uri, const OXAUnicodeString& localName,
                               const OXAUnicodeString& qName) = 0;

    /// A piece of an element's text; a text may come in several pieces. No character is split.
    virtual HRESULT Characters(const OXAUnicodeString& chars) = 0;

    /// A piece of white space in a place where the DTD or schema allows only elements.
    virtual HRESULT IgnorableWhiteSpace(const OXAUnicodeString& chars) = 0;

    virtual HRESULT ProcessingInstruction(const OXAUnicodeString& target, const OXAUnicodeString& data) = 0;

    /// The first call of each parse. You may keep the locator, which is never null, for any time.
    virtual HRESULT SetDocumentLocator(const OXAISAXLocator_var& locator) = 0;

    /// Called before the StartElement of the element that declares the prefix.
    virtual HRESULT StartPrefixMapping(const OXAUnicodeString& prefix, const OXAUnicodeString& uri) = 0;
    virtual HRESULT EndPrefixMapping(const OXAUnicodeString& prefix) = 0;

    virtual HRESULT SkippedEntity(const OXAUnicodeString& name) = 0;

    // Declarations of the document's DTD.
    virtual HRESULT NotationDecl(const OXAUnicodeString& name, const OXAUnicodeString& publicId,
                                 const OXAUnicodeString& systemId) = 0;
    virtual HRESULT UnparsedEntityDecl(const OXAUnicodeString& name, const OXAUnicodeString& publicId,
                                       const OXAUnicodeString& systemId,
                                       const OXAUnicodeString& notationName) = 0;

    /// The document asks for an external DTD or entity. `source` is null; set it to make the reader read that
    /// source instead, wherever it is from. Otherwise the reader's rules apply, which refuse the web and
    /// everything outside the document's folder.
    virtual HRESULT ResolveEntity(const OXAUnicodeString& publicId, const OXAUnicodeString& systemId,
                                  OXAISAXInputSource_var& source) = 0;

    OXA_META_CLASS_MEMBERS

protected:
    ~OXAISAXContentHandler() override;
};

using OXAISAXContentHandler_var = OXAVar<OXAISAXContentHandler>;

#endif
