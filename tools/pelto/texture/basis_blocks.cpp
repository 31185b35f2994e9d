#include "texture/basis_blocks.h"

#include <stdexcept>

void report_transcodable_basis(const std::string& path, BasisReport& report, Trust trust) {
    report_basis(path, report, trust);
    if (!report.error && !report.transcodable) {
        report.error =
            "is a " + report.file.texture_type + ": only 2D textures and arrays of them are transcoded";
    }
}

BasisBlocks transcoded(const BasisReport& report, std::uint32_t slice, std::uint32_t level,
                       TOZ::EUsageFormat usage, const std::string& usage_name) {
    unsigned char* blocks = nullptr;
    unsigned int size = 0;
    if (!report.image.getImage(level, slice, blocks, size, usage)) {
        throw std::runtime_error("level " + std::to_string(level) + " of slice " + std::to_string(slice) +
                                 " cannot be transcoded to " + usage_name + ": its " + report.file.codec +
                                 " data is damaged, or has no such form");
    }
    return {std::unique_ptr<unsigned char[]>(blocks), size};
}
