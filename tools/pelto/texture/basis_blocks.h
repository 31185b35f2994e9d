// Levels of a .basis file as blocks for the GPU.
#ifndef PELTO_TOOL_TEXTURE_BASIS_BLOCKS_H
#define PELTO_TOOL_TEXTURE_BASIS_BLOCKS_H

#include <cstdint>
#include <memory>
#include <string>
#include <vBasisImage.h>

#include "texture/basis_report.h"

struct BasisBlocks {
    std::unique_ptr<unsigned char[]> data;
    std::size_t size = 0;
};

/// Loads a file that can be transcoded into `report`, which must be new; where that fails, the reason is in
/// the report.
void report_transcodable_basis(const std::string& path, BasisReport& report, Trust trust = Trust::kNo);

/// Transcodes one level. Throws std::runtime_error, which says what went wrong; `usage_name` is what the
/// usage is called in it.
BasisBlocks transcoded(const BasisReport& report, std::uint32_t slice, std::uint32_t level,
                       TOZ::EUsageFormat usage, const std::string& usage_name);

#endif
