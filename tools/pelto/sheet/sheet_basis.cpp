// SPDX-License-Identifier: Apache-2.0

#include "sheet/sheet_basis.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "sheet/SheetLimits.h"
#include "texture/BasisTexture.h"
#include "texture/BasisUsage.h"
#include "texture/texture_words.h"

namespace {

struct Target {
    BasisUsage usage;
    std::string name;
    bool opaque;
};

// Where nothing is asked for, blocks that keep all that the file has.
Target target_of(const vTextureInfo& info, const SheetChoice& choice) {
    const std::string name = choice.usage.value_or(info.hasAlpha ? "bc3" : "bc1");
    return {kBasisUsages.at(name), name, name != "bc3"};
}

// What the file's table promises. The transcoder takes memory for all of a level, whatever the file holds.
void check_promise(const vTextureInfo& info, const SheetChoice& choice, int max_extent) {
    SheetLimits limits(max_extent);
    std::uint32_t levels = 0;
    const std::uint64_t images = info.GetNumImages();
    for (std::uint64_t i = 0; i < images; ++i) {
        const vTextureLevel level = info.GetImage(i);
        limits.add_images(level.width, level.height, 1);
        levels = std::max(levels, level.level + 1);
    }
    check_choice("layer", choice.layer, info.layers);
    check_choice("face", choice.face, 1);
    check_choice("level", choice.level, levels);
    check_choice("slice", choice.slice, info.layers);
}

std::string description_of(const vTextureInfo& info, const Target& target) {
    std::string text = info.format + " as " + target.name;
    if (info.layers > 1) text += ", " + counted_words(info.layers, "slice");
    return text + ", " + counted_words(info.levels, "level");
}

void add_image(SheetFile& sheet, const BasisTexture& texture, SheetImage image, const Target& target) {
    BasisBlocks blocks = texture.transcoded(image.slice, image.level, target.usage.usage, target.name);
    const auto width = static_cast<std::uint32_t>(image.pixels.width);
    const auto height = static_cast<std::uint32_t>(image.pixels.height);
    image.pixels.format = *vTextureFormats::FindName(target.usage.blocks);
    image.pixels.opaque = target.opaque;
    image.pixels.bytes = blocks.data.get();
    image.pixels.row_bytes = image.pixels.format.RowBytes(width);
    if (blocks.size != image.pixels.format.SliceBytes(width, height)) {
        throw std::runtime_error("is damaged: level " + std::to_string(image.level) + " of slice " +
                                 std::to_string(image.slice) + " is not as large as its table says");
    }
    if (texture.info().layers > 1) image.caption = "slice " + std::to_string(image.slice) + ", ";
    image.caption += "level " + std::to_string(image.level);
    sheet.images.push_back(std::move(image));
    sheet.owners.push_back(std::shared_ptr<const unsigned char[]>(std::move(blocks.data)));
}

}  // namespace

SheetFile read_sheet_basis(TextureFile& file, const SheetChoice& choice, int max_extent) {
    const BasisTexture texture(*file.bytes(), choice.trust);
    const vTextureInfo& info = texture.info();
    check_promise(info, choice, max_extent);
    const Target target = target_of(info, choice);
    SheetFile sheet;
    sheet.description = description_of(info, target);
    const std::uint64_t images = info.GetNumImages();
    for (std::uint64_t i = 0; i < images; ++i) {
        const vTextureLevel level = info.GetImage(i);
        SheetImage image;
        image.layer = image.slice = level.layer;
        image.level = level.level;
        image.pixels.width = static_cast<int>(level.width);
        image.pixels.height = static_cast<int>(level.height);
        if (choice.takes(image)) add_image(sheet, texture, std::move(image), target);
    }
    const auto place = [](const SheetImage& image) { return std::pair(image.slice, image.level); };
    std::stable_sort(sheet.images.begin(), sheet.images.end(),
                     [&](const SheetImage& a, const SheetImage& b) { return place(a) < place(b); });
    return sheet;
}
