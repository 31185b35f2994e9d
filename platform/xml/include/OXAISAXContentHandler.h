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

/// Called on the thread of the parse, in document order. All strings are UTF-8, and valid until the call
/// returns.
///
/// Results do not stop the parse. An exception does: it leaves the reader's Parse, and the reader can be used
/// again.
class PELTO_XML_API OXAISAXContentHandler : public OXABaseUnknown {
public:
    virtual HRESULT StartDocument() = 0;

    /// Does not come after a fatal error.
    virtual HRESULT EndDocument() = 0;

    /// `uri` is empty where the element has no namespace; `localName` is the name without its prefix, `qName`
    /// the name as in the document. When the reader does not process namespaces, `qName` is all there is.
    virtual HRESULT StartElement(const OXAUnicodeString& uri, const OXAUnicodeString& localName,
                                 const OXAUnicodeString& qName, const OXAISAXAttributes_var& attributes) = 0;

    virtual HRESULT EndElement(const OXAUnicodeString& uri, const OXAUnicodeString& localName,
                               const OXAUnicodeString& qName) = 0;

    /// A piece of an element's text; a text may come in several pieces. No character is split.
    virtual HRESULT Characters(const OXAUnicodeString& chars) = 0;

    /// A piece of white space where, by DTD or schema, only elements may stand.
    virtual HRESULT IgnorableWhiteSpace(const OXAUnicodeString& chars) = 0;

    virtual HRESULT ProcessingInstruction(const OXAUnicodeString& target, const OXAUnicodeString& data) = 0;

    /// Comes first in each parse. The locator, never null, may be kept for any time.
    virtual HRESULT SetDocumentLocator(const OXAISAXLocator_var& locator) = 0;

    /// Comes before the StartElement of the element that declares the prefix.
    virtual HRESULT StartPrefixMapping(const OXAUnicodeString& prefix, const OXAUnicodeString& uri) = 0;
    virtual HRESULT EndPrefixMapping(const OXAUnicodeString& prefix) = 0;

    virtual HRESULT SkippedEntity(const OXAUnicodeString& name) = 0;

    // Declarations of the document's DTD.
    virtual HRESULT NotationDecl(const OXAUnicodeString& name, const OXAUnicodeString& publicId,
                                 const OXAUnicodeString& systemId) = 0;
    virtual HRESULT UnparsedEntityDecl(const OXAUnicodeString& name, const OXAUnicodeString& publicId,
                                       const OXAUnicodeString& systemId,
                                       const OXAUnicodeString& notationName) = 0;

    /// The document asks for an external DTD or entity. `source` is null; put a source into it to have that
    /// read instead, wherever it is from. Otherwise the reader's rules decide, which refuse the web and
    /// whatever lies outside the document's folder.
    virtual HRESULT ResolveEntity(const OXAUnicodeString& publicId, const OXAUnicodeString& systemId,
                                  OXAISAXInputSource_var& source) = 0;

    OXA_META_CLASS_MEMBERS

protected:
    ~OXAISAXContentHandler() override;
};

using OXAISAXContentHandler_var = OXAVar<OXAISAXContentHandler>;

#endif
