// SPDX-License-Identifier: Apache-2.0
// Whether an XML document can be read, told before a parser opens it.
#ifndef PELTO_TOOL_XML_READABLE_DOCUMENT_H
#define PELTO_TOOL_XML_READABLE_DOCUMENT_H

#include <optional>
#include <string>

/// Why no bytes can be had from the file: it is a folder or a device, may not be opened, or is empty. The
/// file is not opened.
std::optional<std::string> why_unreadable(const std::string& path);

#endif
