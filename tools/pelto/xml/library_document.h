// SPDX-License-Identifier: Apache-2.0
// A library document and its schema, which the command knows.
#ifndef PELTO_TOOL_XML_LIBRARY_DOCUMENT_H
#define PELTO_TOOL_XML_LIBRARY_DOCUMENT_H

#include <string>

#include "xml/LibraryHandler.h"

/// What the file `document` holds, with its problems. It is held against the schema in the file `schema`;
/// where that is empty or no good, against the one that is part of the command.
OXAVar<LibraryHandler> read_library_document(const std::string& document, const std::string& schema);

#endif
