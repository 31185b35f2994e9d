// SPDX-License-Identifier: Apache-2.0
// The formats whose sizes vTextureUtils knows, by names beside their numbers.
#ifndef PELTO_TOOL_TEXTURE_FORMAT_NAMES_H
#define PELTO_TOOL_TEXTURE_FORMAT_NAMES_H

#include <optional>
#include <string>

/// The number of a vTextureFormat: of "1" to "64", of a block format's name such as "BC1", or the first one
/// whose pixels take as many bytes as "4B" says. In either case; nothing for any other text.
std::optional<int> format_number(const std::string& text);

/// The number of a vTextureClientDataType: of "1" to "36", or by its bytes a pixel as above.
std::optional<int> client_type_number(const std::string& text);

/// What the text is not, and what it might be.
std::string no_format(const std::string& text);
std::string no_client_type(const std::string& text);

/// All names with the numbers and sizes that they stand for, as tables.
std::string format_tables();

#endif
