#include "xml/library_report.h"

#include <new>
#include <stdexcept>

#include "texture/basis_blocks.h"
#include "texture/basis_usage.h"
#include "texture/dds_report.h"
#include "texture/level_sizes.h"

namespace {

const char* kind_of(const vDDSImage& image) {
    if (image.is_cubemap()) return "cube";
    return image.is_volume() ? "volume" : "2d";
}

std::string last_of(const std::string& what, std::uint32_t count) {
    return "the last " + what + " is " + std::to_string(count - 1);
}

// What the library says of a file that has been read.
void check_description(const LibraryTexture& texture, const std::string& kind, std::uint32_t levels) {
    if (!texture.kind.empty() && texture.kind != kind) {
        throw std::runtime_error("its kind is " + kind + ", not " + texture.kind);
    }
    if (texture.levels.empty()) return;
    const int first = texture.levels.front();
    const int last = texture.levels.back();
    const std::string range = "levels " + std::to_string(first) + " to " + std::to_string(last);
    if (last < first) throw std::runtime_error(range + " are none");
    if (static_cast<std::uint32_t>(last) >= levels) {
        throw std::runtime_error("has no " + range + ": " + last_of("one", levels));
    }
}

void load_dds(const std::string& path, const LibraryTexture& texture, Trust trust, TextureReport& report) {
    const DDSReport dds = report_dds(path, texture.flip, false, trust);
    if (dds.error) throw std::runtime_error(*dds.error);
    const vDDSImage& image = dds.image;
    report.format = format_name(image.get_format());
    report.width = static_cast<std::uint32_t>(image.get_width());
    report.height = static_cast<std::uint32_t>(image.get_height());
    report.depth = static_cast<std::uint32_t>(image.get_depth());
    report.faces = static_cast<std::uint32_t>(face_count(image));
    report.levels = static_cast<std::uint32_t>(image.get_num_mipmaps() + 1);
    report.bytes = image.compute_full_size(-1);
    if (dds.missing_bytes > 0) throw std::runtime_error(cut_short_text(dds.missing_bytes));
    check_levels(image);
    check_description(texture, kind_of(image), report.levels);
}

void load_basis(const std::string& path, const LibraryTexture& texture, Trust trust, TextureReport& report) {
    const BasisUsage& usage = kBasisUsages.at(texture.usage);
    BasisReport basis;
    report_transcodable_basis(path, basis, trust);
    if (basis.error) throw std::runtime_error(*basis.error);
    if (texture.slice >= basis.file.slices) {
        throw std::runtime_error("has no slice " + std::to_string(texture.slice) + ": " +
                                 last_of("one", basis.file.slices));
    }
    const BasisLevel* const base = basis.file.find(texture.slice, 0);
    if (!base) throw std::runtime_error("its table has no level 0 of slice " + std::to_string(texture.slice));
    report.format = basis.file.codec + " as " + texture.usage;
    report.width = base->width;
    report.height = base->height;
    report.depth = 1;
    report.faces = 1;
    report.levels = basis.file.level_count(texture.slice);
    for (std::uint32_t level = 0; level < report.levels; ++level) {
        const BasisBlocks blocks = transcoded(basis, texture.slice, level, usage.usage, texture.usage);
        report.bytes += blocks.size;
        check_level(level, blocks.size, expected_bytes(base->width, base->height, 1, level, usage.format));
    }
    check_description(texture, "2d", report.levels);
    if (texture.flip) throw std::runtime_error("is a .basis file, which is not flipped when it is loaded");
}

}  // namespace

TextureReport report_texture(const LibraryTexture& texture, const std::filesystem::path& folder,
                             Trust trust) {
    TextureReport report;
    try {
        if (texture.file.empty()) throw std::runtime_error("names no file");
        const std::string path = (folder / texture.file).string();
        if (is_basis(path)) {
            load_basis(path, texture, trust, report);
        } else {
            load_dds(path, texture, trust, report);
        }
    } catch (const std::runtime_error& error) {
        report.error = error.what();
    } catch (const std::bad_alloc&) {
        report.error = "does not fit into memory";
    }
    return report;
}
