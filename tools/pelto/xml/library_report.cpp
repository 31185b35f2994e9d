// SPDX-License-Identifier: Apache-2.0

#include "xml/library_report.h"

#include <new>
#include <stdexcept>

#include "texture/BasisTexture.h"
#include "texture/BasisUsage.h"
#include "texture/level_sizes.h"
#include "texture/texture_words.h"

namespace {

const char* kind_of(const vTextureInfo& info) {
    if (info.faces > 1) return "cube";
    return info.dimension == 3 ? "volume" : "2d";
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

void load_dds(TextureFile& file, const LibraryTexture& texture, Trust trust, TextureReport& report) {
    const TextureBytes bytes = file.bytes();
    const vTextureInfo info = vTextureInfo::ReadBuffer(bytes->data(), bytes->size());
    if (!info.Described()) throw std::runtime_error(info.problem.sentence);
    if (info.container != vTextureInfo::eDDS) throw std::runtime_error(info.check.sentence);
    const bool truncated = info.check.status == vTextureCheck::eTruncated;
    if (truncated && trust == Trust::kNo) throw std::runtime_error(info.check.sentence);
    const char* const format = loader_format_name(info);
    report.format = format ? format : info.format;
    report.width = info.width;
    report.height = info.height;
    report.depth = info.depth;
    report.faces = info.faces;
    report.levels = info.levels;
    report.bytes = info.bytes;
    if (truncated) throw std::runtime_error(cut_short_words(info.check.missingBytes));
    if (!info.check.ok()) throw std::runtime_error(info.check.sentence);
    if (info.faithful) check_levels(info);
    check_description(texture, kind_of(info), report.levels);
}

void load_basis(TextureFile& file, const LibraryTexture& texture, Trust trust, TextureReport& report) {
    const BasisUsage& usage = kBasisUsages.at(texture.usage);
    const BasisTexture basis(*file.bytes(), trust);
    const vTextureInfo& info = basis.info();
    if (texture.slice >= info.layers) {
        throw std::runtime_error("has no slice " + std::to_string(texture.slice) + ": " +
                                 last_of("one", info.layers));
    }
    const std::optional<vTextureLevel> base = basis.find(texture.slice, 0);
    if (!base) throw std::runtime_error("its table has no level 0 of slice " + std::to_string(texture.slice));
    report.format = info.format + " as " + texture.usage;
    report.width = base->width;
    report.height = base->height;
    report.depth = 1;
    report.faces = 1;
    report.levels = basis.level_count(texture.slice);
    for (std::uint32_t level = 0; level < report.levels; ++level) {
        const BasisBlocks blocks = basis.transcoded(texture.slice, level, usage.usage, texture.usage);
        report.bytes += blocks.size;
        check_level(level, blocks.size, expected_bytes(base->width, base->height, 1, level, usage.format));
    }
    check_description(texture, "2d", report.levels);
    if (texture.flip) throw std::runtime_error("is a .basis file, which is not flipped when it is loaded");
}

}  // namespace

TextureReport report_texture(const LibraryTexture& texture, const std::filesystem::path& folder, Trust trust,
                             std::shared_ptr<TextureFile>& file) {
    TextureReport report;
    try {
        if (texture.file.empty()) throw std::runtime_error("names no file");
        file = std::make_shared<TextureFile>((folder / texture.file).string());
        if (file->promise().container == vTextureInfo::eBasis) {
            load_basis(*file, texture, trust, report);
        } else {
            load_dds(*file, texture, trust, report);
        }
    } catch (const std::runtime_error& error) {
        report.error = error.what();
    } catch (const std::bad_alloc&) {
        report.error = "does not fit into memory";
    }
    return report;
}
