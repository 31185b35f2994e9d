// SPDX-License-Identifier: Apache-2.0
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
/// Documents may be hostile. A reader never uses the network, and limits what a document can cost. A document
/// that breaks one of these rules ends in a fatal error that names the rule and the place; the reader can
/// then read the next one:
///
/// - The encoding is UTF-8, UTF-16, or an 8-bit one that the document declares (ISO 8859, Windows, DOS, KOI8,
///   TIS-620, Macintosh); a text in memory is UTF-8 whatever it declares. Every byte is checked: no malformed
///   or truncated sequence, no zero character. An XML declaration is ASCII, and shorter than 4096 bytes.
/// - External general entities are not read. A DTD and what it includes is read from regular files in the
///   document's own folder or below, symbolic links resolved; a text in memory has no folder.
/// - Elements nest at most 10,000 deep. Only few may lie so deep, or among so many namespace declarations,
///   that looking those up takes long. With schemas loaded, only few may have thousands of different names.
/// - An entity has at most 65,536 characters. Entities are expanded at most 100,000 times, and fewer times if
///   they are long. Entities and defaults add at most 64 Mi characters, and 4 for each byte of the document.
/// - A content model has some thousand names at most, those of a DTD some ten thousand together. The values
///   of an enumeration have at most 16,384 characters, and an element for which a DTD declares thousands of
///   attributes may not occur often.
/// - The parser reads at most 1,000 further files, and at most 64 MiB of them.
/// - It reports at most 100,000 errors and warnings, and one more for each byte of the document.
/// - The parser holds at most 256 MiB of memory for one document.
class PELTO_XML_API OXAISAXXMLReader : public OXABaseUnknown {
public:
    /// Sets a feature of OXASAXXMLReaderOptions for the following parses; E_NOTIMPL for an unknown name.
    virtual HRESULT SetFeature(const OXAUnicodeString& name, bool value) = 0;
    virtual HRESULT GetFeature(const OXAUnicodeString& name, bool& value) = 0;

    /// The reader holds a reference to the handler; null clears it. A running parse keeps the handlers that
    /// it began with. Always S_OK.
    virtual HRESULT SetContentHandler(const OXAISAXContentHandler_var& handler) = 0;
    virtual HRESULT SetErrorHandler(const OXAISAXErrorHandler_var& handler) = 0;

    /// Reads a document and calls the handlers.
    ///
    /// S_OK if it reached the end without a fatal error, even if the document is invalid: the error handler
    /// reports that. Otherwise E_FAIL, after one FatalError, which names the path of a document that cannot
    /// be opened. E_POINTER for a null source, and E_FAIL within a callback of this reader.
    ///
    /// If loaded schemas and a DTD could both apply, the document's DTD does. Ignores schemas that the
    /// document itself names.
    ///
    /// Passes on what a handler throws, and std::bad_alloc; the reader can be used again.
    virtual HRESULT Parse(const OXAISAXInputSource_var& source) = 0;

    OXA_META_CLASS_MEMBERS

protected:
    ~OXAISAXXMLReader() override;
};

using OXAISAXXMLReader_var = OXAVar<OXAISAXXMLReader>;

#endif
