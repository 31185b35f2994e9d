#include "sheet_basis.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "basis_blocks.h"
#include "sheet_limits.h"

namespace {

struct Target {
    TOZ::EUsageFormat usage;
    TOZ::SUPPORTED_FORMAT::Type format;
    const char* name;
    bool opaque;
};

constexpr Target kOpaque = {TOZ::eUsageFormatBC1, TOZ::SUPPORTED_FORMAT::DXT1, "BC1", true};
constexpr Target kWithAlpha = {TOZ::eUsageFormatBC3, TOZ::SUPPORTED_FORMAT::DXT5, "BC3", false};

// What the file's table promises. The transcoder takes memory for all of a level, whatever the file holds.
void check_promise(const BasisFile& file, const SheetChoice& choice, int max_extent) {
    SheetLimits limits(max_extent);
    limits.add_images(file.levels.size());
    std::uint32_t levels = 0;
    for (const BasisLevel& level : file.levels) {
        limits.add_pixels(level.width, level.height, 1);
        levels = std::max(levels, level.level + 1);
    }
    if (levels == 0) throw std::runtime_error("has no levels");
    check_choice("face", choice.face, 1);
    check_choice("level", choice.level, levels);
}

std::string description_of(const BasisFile& file, const Target& target) {
    const auto levels = file.level_count(0);
    std::string text = file.codec + " as " + target.name;
    if (file.slices > 1) text += ", " + std::to_string(file.slices) + " slices";
    return text + ", " + std::to_string(levels) + (levels == 1 ? " level" : " levels");
}

void add_image(SheetFile& file, const BasisReport& report, const BasisLevel& level, const Target& target) {
    BasisBlocks blocks = transcoded(report, level.slice, level.level, target.usage, target.name);
    SheetImage image{0, level.level, level.slice, "", {}};
    if (report.file.slices > 1) image.caption = "slice " + std::to_string(level.slice) + ", ";
    image.caption += "level " + std::to_string(level.level);
    image.pixels = {target.format, static_cast<int>(level.width), static_cast<int>(level.height),
                    blocks.data.get(), target.opaque};
    if (blocks.size != bytes_of(target.format, image.pixels.width, image.pixels.height)) {
        throw std::runtime_error("is damaged: level " + std::to_string(level.level) + " of slice " +
                                 std::to_string(level.slice) + " is not as large as its table says");
    }
    file.images.push_back(std::move(image));
    file.owners.push_back(std::shared_ptr<const unsigned char[]>(std::move(blocks.data)));
}

}  // namespace

SheetFile read_sheet_basis(const std::string& path, const SheetChoice& choice, int max_extent) {
    BasisReport report;
    report_transcodable_basis(path, report, choice.trust);
    if (report.error) throw std::runtime_error(*report.error);
    check_promise(report.file, choice, max_extent);
    const Target& target = report.file.alpha ? kWithAlpha : kOpaque;
    SheetFile file{path, path, description_of(report.file, target), {}, {}, {}};
    for (const BasisLevel& level : report.file.levels) {
        if (!choice.level || *choice.level == level.level) add_image(file, report, level, target);
    }
    const auto place = [](const SheetImage& image) { return std::pair(image.slice, image.level); };
    std::stable_sort(file.images.begin(), file.images.end(),
                     [&](const SheetImage& a, const SheetImage& b) { return place(a) < place(b); });
    return file;
}
