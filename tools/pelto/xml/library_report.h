// SPDX-License-Identifier: Apache-2.0
// A texture of a library loaded, or why it cannot be, in words for a person.
#ifndef PELTO_TOOL_XML_LIBRARY_REPORT_H
#define PELTO_TOOL_XML_LIBRARY_REPORT_H

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "texture/TextureFile.h"
#include "texture/trust.h"
#include "xml/LibraryHandler.h"

struct TextureReport {
    std::string format;
    std::uint32_t width = 0;   // pixels
    std::uint32_t height = 0;  // pixels
    std::uint32_t depth = 0;   // pixels; nothing is known of the file where this is 0
    std::uint32_t faces = 0;
    std::uint32_t levels = 0;
    std::uint64_t bytes = 0;  // of all faces and levels

    /// What is wrong with the file, or with what the library says of it.
    std::optional<std::string> error;
};

/// Reads the texture's file, which is named from `folder`, and holds it against its description. Its levels
/// are checked against the sizes that a renderer reckons with. `file` becomes the file, where it is one.
TextureReport report_texture(const LibraryTexture& texture, const std::filesystem::path& folder, Trust trust,
                             std::shared_ptr<TextureFile>& file);

#endif
