// What a DDS file holds, or why it cannot be read, in words for a person.
#ifndef PELTO_TOOL_TEXTURE_DDS_REPORT_H
#define PELTO_TOOL_TEXTURE_DDS_REPORT_H

#include <cstdint>
#include <optional>
#include <string>
#include <vDDSImage.h>

#include "texture/texture_check.h"

struct DDSReport {
    std::string path;

    /// Why the file could not be read; the rest is then meaningless.
    std::optional<std::string> error;

    vDDSImage image;

    /// Bytes that the headers promise beyond the end of the file (header-only: bytes of the headers
    /// themselves); they were read as zero.
    std::uint64_t missing_bytes = 0;
};

/// Loads the file and finds the reason when that fails: what a check of it says, where it is not trusted, or
/// else what the library logs meanwhile, which does not go to the log.
DDSReport report_dds(const std::string& path, bool flip, bool header_only, Trust trust = Trust::kNo);

/// What there is to say of bytes that are missing.
std::string cut_short_text(std::uint64_t missing_bytes);

/// The name of a format, as the enumeration spells it.
const char* format_name(TOZ::SUPPORTED_FORMAT::Type format);

int face_count(const vDDSImage& image);

#endif
