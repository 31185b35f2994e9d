// SPDX-License-Identifier: Apache-2.0
// A problem of a document, with its place.
#ifndef OXA_SAX_PARSE_EXCEPTION_H
#define OXA_SAX_PARSE_EXCEPTION_H

#include "OXAUnicodeString.h"
#include "OXAXMLExport.h"

/// Reported to an error handler, never thrown. Valid until the callback returns; you may keep a copy.
class PELTO_XML_API OXASAXParseException {
public:
    /// Line and column count from 1, columns in UTF-16 code units; 0 means none.
    explicit OXASAXParseException(const OXAUnicodeString& message, int line = 0, int column = 0,
                                  const OXAUnicodeString& publicId = OXAUnicodeString(),
                                  const OXAUnicodeString& systemId = OXAUnicodeString());
    OXASAXParseException(const OXASAXParseException& other);
    OXASAXParseException& operator=(const OXASAXParseException& other);
    ~OXASAXParseException();

    OXAUnicodeString GetMessageW() const;  ///< the problem, in English, without its place
    int GetLineNumber() const;
    int GetColumnNumber() const;
    OXAUnicodeString GetPublicId() const;  ///< of the file with the problem; empty if it has none
    OXAUnicodeString GetSystemId() const;  ///< the path of that file; empty for a text in memory

private:
    OXAUnicodeString _message;
    OXAUnicodeString _publicId;
    OXAUnicodeString _systemId;
    int _line;
    int _column;
};

#endif
