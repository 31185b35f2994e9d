// A .basis file loaded, or why it cannot be, in words for a person.
#ifndef PELTO_TOOL_TEXTURE_BASIS_REPORT_H
#define PELTO_TOOL_TEXTURE_BASIS_REPORT_H

#include <cstdint>
#include <optional>
#include <string>
#include <vBasisImage.h>

#include "texture/basis_file.h"
#include "texture/texture_check.h"

struct BasisReport {
    std::string path;

    /// Why the file could not be read; the rest is then meaningless.
    std::optional<std::string> error;

    BasisFile file;
    std::uint64_t bytes = 0;  // of the file

    /// Whether there is an image to transcode: of cube maps, videos and volumes there is none.
    bool transcodable = false;
    TOZ::vBasisImage image;

    std::uint32_t width() const { return file.levels.empty() ? 0 : file.levels.front().width; }
    std::uint32_t height() const { return file.levels.empty() ? 0 : file.levels.front().height; }
    std::uint32_t level_count() const { return file.level_count(0); }
};

/// Loads the file into `report`, which must be new, and finds the reason when that fails: what a check of it
/// says, where it is not trusted.
void report_basis(const std::string& path, BasisReport& report, Trust trust = Trust::kNo);

#endif
