// A .basis file loaded, or why it cannot be, in words for a person.
#ifndef PELTO_TOOL_BASIS_REPORT_H
#define PELTO_TOOL_BASIS_REPORT_H

#include <optional>
#include <string>
#include <vBasisImage.h>

#include "basis_file.h"

struct BasisReport {
    std::string path;

    /// Why the file could not be read; the rest is then meaningless.
    std::optional<std::string> error;

    TOZ::vBasisImage image;
    BasisFile file;

    /// Whether the image transcodes: cube maps, videos and volumes are read, and do not.
    bool transcodable = false;

    std::uint32_t width() const { return file.levels.empty() ? 0 : file.levels.front().width; }
    std::uint32_t height() const { return file.levels.empty() ? 0 : file.levels.front().height; }
    std::uint32_t level_count() const { return file.level_count(0); }
};

/// Loads the file into `report`, which must be new, and finds the reason when that fails.
void report_basis(const std::string& path, BasisReport& report);

#endif
