// SPDX-License-Identifier: Apache-2.0

#include "OXASAXParseException.h"

OXASAXParseException::OXASAXParseException(const OXAUnicodeString& message, int line, int column,
                                           const OXAUnicodeString& publicId, const OXAUnicodeString& systemId)
    : _message(message), _publicId(publicId), _systemId(systemId), _line(line), _column(column) {}

OXASAXParseException::OXASAXParseException(const OXASAXParseException& other) = default;

OXASAXParseException& OXASAXParseException::operator=(const OXASAXParseException& other) = default;

OXASAXParseException::~OXASAXParseException() = default;

OXAUnicodeString OXASAXParseException::GetMessageW() const { return _message; }

int OXASAXParseException::GetLineNumber() const { return _line; }

int OXASAXParseException::GetColumnNumber() const { return _column; }

OXAUnicodeString OXASAXParseException::GetPublicId() const { return _publicId; }

OXAUnicodeString OXASAXParseException::GetSystemId() const { return _systemId; }
