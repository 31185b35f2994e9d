#include "sheet/sheet_basis.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "sheet/sheet_limits.h"
#include "texture/basis_blocks.h"
#include "texture/basis_usage.h"

namespace {

struct Target {
    BasisUsage usage;
    std::string name;
    bool opaque;
};

// Where nothing is asked for, blocks that keep all that the file has.
Target target_of(const BasisFile& file, const SheetChoice& choice) {
    const std::string name = choice.usage.value_or(file.alpha ? "bc3" : "bc1");
    return {kBasisUsages.at(name), name, name != "bc3"};
}

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
    check_choice("slice", choice.slice, file.slices);
}

std::string description_of(const BasisFile& file, const Target& target) {
    const auto levels = file.level_count(0);
    std::string text = file.codec + " as " + target.name;
    if (file.slices > 1) text += ", " + std::to_string(file.slices) + " slices";
    return text + ", " + std::to_string(levels) + (levels == 1 ? " level" : " levels");
}

void add_image(SheetFile& file, const BasisReport& report, const BasisLevel& level, const Target& target) {
    BasisBlocks blocks = transcoded(report, level.slice, level.level, target.usage.usage, target.name);
    SheetImage image{0, level.level, level.slice, "", {}};
    if (report.file.slices > 1) image.caption = "slice " + std::to_string(level.slice) + ", ";
    image.caption += "level " + std::to_string(level.level);
    image.pixels = {target.usage.dds_format, static_cast<int>(level.width), static_cast<int>(level.height),
                    blocks.data.get(), target.opaque};
    if (blocks.size != bytes_of(target.usage.dds_format, image.pixels.width, image.pixels.height)) {
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
    const Target target = target_of(report.file, choice);
    SheetFile file{path, path, description_of(report.file, target), {}, {}, {}};
    for (const BasisLevel& level : report.file.levels) {
        if (choice.level && *choice.level != level.level) continue;
        if (choice.slice && *choice.slice != level.slice) continue;
        add_image(file, report, level, target);
    }
    const auto place = [](const SheetImage& image) { return std::pair(image.slice, image.level); };
    std::stable_sort(file.images.begin(), file.images.end(),
                     [&](const SheetImage& a, const SheetImage& b) { return place(a) < place(b); });
    return file;
}
