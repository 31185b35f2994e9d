// SPDX-License-Identifier: Apache-2.0

#include "sheet/sheet_dds.h"

#include <memory>
#include <stdexcept>
#include <utility>
#include <vDDSLevels.h>
#include <vector>

#include "sheet/SheetLimits.h"
#include "texture/texture_words.h"

namespace {

void check_choice_of_images(const vTextureInfo& info, const SheetChoice& choice) {
    check_choice("layer", choice.layer, info.layers);
    check_choice("level", choice.level, info.levels);
    const bool partial = info.faceMask != 1 && info.faces < 6;
    if (!partial) check_choice("face", choice.face, info.faces);
    if (partial && choice.face && info.GetLevel(0, *choice.face, 0).bytes == 0) {
        throw std::runtime_error("there is no face " + std::to_string(*choice.face) + ": it is a" +
                                 description_words(info).substr(info.format.size() + 1));
    }
}

void check_promise(const TextureFile& file, const SheetChoice& choice, int max_extent) {
    const vTextureInfo& info = file.promise();
    if (!info.Described()) throw std::runtime_error(info.problem.sentence);
    check_choice_of_images(info, choice);
    SheetLimits limits(max_extent);
    for (std::uint32_t level = 0; level < info.levels; ++level) {
        // Any face that it has.
        const vTextureLevel image = info.GetImage(level);
        limits.add_images(image.width, image.height, std::uint64_t{info.layers} * info.faces * image.depth);
    }
    check_missing_bytes(info.bytes, file.length());
}

// Missing bytes are zero.
TextureBytes whole_bytes(TextureFile& file, const SheetChoice& choice, SheetFile& sheet) {
    TextureBytes bytes = file.bytes();
    const vTextureInfo info = vTextureInfo::ReadBuffer(bytes->data(), bytes->size());
    if (info.missingBytes == 0) return bytes;
    if (choice.trust == Trust::kNo) throw std::runtime_error(info.WhatIsMissing().sentence);
    sheet.warnings.push_back("warning: " + cut_short_words(info.missingBytes));
    std::vector<unsigned char> whole = *bytes;
    whole.resize(whole.size() + static_cast<std::size_t>(info.missingBytes));
    return std::make_shared<const std::vector<unsigned char>>(std::move(whole));
}

std::string caption_of(const SheetImage& image, const vTextureInfo& info) {
    std::string caption;
    if (info.layers > 1) caption += "layer " + std::to_string(image.layer) + ", ";
    if (info.faceMask != 1) caption.append(face_name(image.face)).append(", ");
    if (info.depth > 1) caption += "slice " + std::to_string(image.slice) + ", ";
    return caption + "level " + std::to_string(image.level);
}

// The levels of one slice of one face. A slice has no part in the smaller levels of a volume.
void add_images(SheetFile& sheet, const vDDSLevels& levels, const SheetChoice& choice, SheetImage image) {
    const vTextureInfo& info = levels.GetInfo();
    for (image.level = 0; image.level < info.levels; ++image.level) {
        if (!choice.takes(image)) continue;
        const vTextureLevel place = info.GetLevel(image.layer, image.face, image.level);
        if (image.slice >= place.depth) continue;
        const vDDSLevel level = levels.GetLevel(static_cast<int>(image.face), static_cast<int>(image.level),
                                                static_cast<int>(image.layer));
        image.caption = caption_of(image, info);
        image.pixels.format = info.pixels;
        image.pixels.width = static_cast<int>(place.width);
        image.pixels.height = static_cast<int>(place.height);
        image.pixels.bytes = level.data + image.slice * (place.bytes / place.depth);
        image.pixels.row_bytes = place.rowBytes;
        sheet.images.push_back(image);
    }
}

}  // namespace

SheetFile read_sheet_dds(TextureFile& file, const SheetChoice& choice, int max_extent) {
    check_promise(file, choice, max_extent);
    SheetFile sheet;
    const TextureBytes bytes = whole_bytes(file, choice, sheet);
    vDDSLevels levels;
    if (!levels.Read(bytes->data(), bytes->size()).ok()) {
        throw std::runtime_error(levels.GetResult().sentence);
    }
    const vTextureInfo& info = levels.GetInfo();
    sheet.description = description_words(info);
    sheet.reason = why_no_picture(info.pixels);
    for (const vTextureNote& note : info.notes) {
        if (concerns_loader(note)) sheet.notes.push_back(note);
    }
    if (!sheet.reason.empty()) return sheet;
    SheetImage image;
    for (image.layer = 0; image.layer < info.layers; ++image.layer) {
        for (image.face = 0; image.face < 6; ++image.face) {
            if ((info.faceMask >> image.face & 1) == 0) continue;
            for (image.slice = 0; image.slice < info.depth; ++image.slice) {
                add_images(sheet, levels, choice, image);
            }
        }
    }
    sheet.owners.push_back(bytes);
    return sheet;
}
