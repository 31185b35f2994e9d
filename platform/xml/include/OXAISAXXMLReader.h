// The parser.
#ifndef OXA_I_SAX_XML_READER_H
#define OXA_I_SAX_XML_READER_H

#include "OXABaseUnknown.h"
#include "OXAISAXContentHandler.h"
#include "OXAISAXErrorHandler.h"
#include "OXAISAXInputSource.h"
#include "OXAMetaClass.h"
#include "OXAUnicodeString.h"
#include "OXAVar.h"
#include "OXAXMLExport.h"

/// Reads one document after the other. An interface query gives its OXAIXMLSchemaLoader.
///
/// Documents may be hostile. A reader never uses the network and bounds what a document can cost. A
/// document that breaks one of these rules ends in a fatal error that says which, with the place, and the
/// reader reads the next document as if nothing had been:
///
/// - The encoding is UTF-8, UTF-16, or an 8-bit one that the document declares (ISO 8859, Windows, DOS, KOI8,
///   TIS-620, Macintosh); a text in memory is UTF-8 whatever it declares. Every byte is checked: no malformed
///   or truncated sequence, no zero character. An XML declaration is ASCII, and shorter than 4096 bytes.
/// - External general entities are not read. A DTD and what it includes is read from regular files in the
///   document's own folder or below, symbolic links resolved; a text in memory has no folder.
/// - Elements nest 10,000 deep at most, and few of them so deep, or among so many namespace declarations,
///   that looking those up takes long; nor do many have thousands of different names where schemas are
///   loaded.
/// - The text of an entity has 65,536 characters at most. Entities are expanded 100,000 times at most, less
///   often when they are long, and what comes of entities and defaults may make a large document about four
///   times as long, a small one longer.
/// - A content model has some thousand names at most, those of a DTD some ten thousand together. The values
///   of an enumeration have 16,384 characters at most, and an element of which a DTD declares thousands of
///   attributes does not occur often.
/// - Errors and warnings are 100,000, and one for each byte of the document, at most.
/// - The memory that the parser takes for one document is limited: 256 MiB at one time.
class PELTO_XML_API OXAISAXXMLReader : public OXABaseUnknown {
public:
    /// Sets a feature of OXASAXXMLReaderOptions for the following parses; E_NOTIMPL for an unknown name.
    virtual HRESULT SetFeature(const OXAUnicodeString& name, bool value) = 0;
    virtual HRESULT GetFeature(const OXAUnicodeString& name, bool& value) = 0;

    /// The reader holds a reference of the handler; null clears it. A parse that is running keeps the
    /// handlers that it began with. Always S_OK.
    virtual HRESULT SetContentHandler(const OXAISAXContentHandler_var& handler) = 0;
    virtual HRESULT SetErrorHandler(const OXAISAXErrorHandler_var& handler) = 0;

    /// Reads a document and calls the handlers.
    ///
    /// S_OK when it was read to its end without a fatal error, also when it is not valid: that is for the
    /// error handler to know. Otherwise E_FAIL, after one FatalError: for a document that cannot be opened
    /// it names the path. E_POINTER for a null source, and E_FAIL within a callback of this reader's.
    ///
    /// Where loaded schemas and a DTD could both apply, the document's DTD does. Schemas that the document
    /// itself points to are not looked for.
    ///
    /// What a handler throws is passed on, as is std::bad_alloc; the reader can be used again.
    virtual HRESULT Parse(const OXAISAXInputSource_var& source) = 0;

    OXA_META_CLASS_MEMBERS

protected:
    ~OXAISAXXMLReader() override;
};

using OXAISAXXMLReader_var = OXAVar<OXAISAXXMLReader>;

#endif
