// SPDX-License-Identifier: Apache-2.0

#include "sheet/sheet_loaded.h"

#include <algorithm>
#include <climits>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vDDSImage.h>
#include <vector>

#include "sheet/SheetLimits.h"
#include "texture/texture_words.h"

namespace {

using namespace TOZ::SUPPORTED_FORMAT;

struct Extent {
    int width;
    int height;
    int depth;
};

Extent extent_of_level(const vDDSImage& image, int level) {
    if (level == 0) return {image.get_width(), image.get_height(), image.get_depth()};
    const auto halved = [&](int pixels) { return level < 31 ? std::max(pixels >> level, 1) : 1; };
    return {halved(image.get_width()), halved(image.get_height()), halved(image.get_depth())};
}

int face_count(const vDDSImage& image) { return image.is_cubemap() ? 6 : 1; }

// What the loader holds: bytes in this order.
const vPixelFormat& pixels_of(Type format) {
    constexpr const char* kNames[] = {
        "L8_UNORM",  "R8G8B8_UNORM",    "R8G8B8A8_UNORM",     "B8G8R8_UNORM", "R16G16B16A16_FLOAT",
        "R32_FLOAT", "R32G32B32_FLOAT", "R32G32B32A32_FLOAT", "BC1_UNORM",    "BC2_UNORM",
        "BC3_UNORM", "BC4_UNORM",       "BC4_SNORM",          "BC5_UNORM",    "BC5_SNORM",
        "BC6H_SF16", "BC6H_UF16",
    };
    static_assert(std::size(kNames) == BC6H_UF16 + 1);
    return *vTextureFormats::FindName(kNames[format]);
}

// The loader believes the headers and reads as many bytes as they promise: a copy has them, the missing ones
// as zero.
vDDSImage loaded(const std::vector<unsigned char>& bytes, std::uint64_t pixels, bool flip, bool header_only) {
    constexpr std::size_t kLongestHeaders = 148;
    std::vector<unsigned char> copy;
    const std::vector<unsigned char>* whole = &bytes;
    const auto promised = kLongestHeaders + static_cast<std::size_t>(pixels);
    if (bytes.size() < promised) {
        copy = bytes;
        copy.resize(promised);
        whole = &copy;
    }
    vDDSImage image;
    const int size = static_cast<int>(std::min<std::size_t>(whole->size(), INT_MAX));
    if (!image.loadFromBuffer(whole->data(), size, flip, header_only)) {
        throw std::runtime_error("is not loaded by vDDSImage");
    }
    return image;
}

// What the headers promise. The loader takes memory for all of it, whatever the file holds.
void check_promise(const vDDSImage& header, const SheetChoice& choice, int max_extent) {
    check_choice("layer", choice.layer, 1);
    check_choice("face", choice.face, static_cast<std::uint32_t>(face_count(header)));
    check_choice("level", choice.level, static_cast<std::uint32_t>(header.get_num_mipmaps() + 1));
    SheetLimits limits(max_extent);
    for (int level = 0; level <= header.get_num_mipmaps(); ++level) {
        const Extent extent = extent_of_level(header, level);
        limits.add_images(
            extent.width, extent.height,
            static_cast<std::uint64_t>(face_count(header)) * static_cast<std::uint64_t>(extent.depth));
    }
}

std::string caption_of(const SheetImage& image, const vDDSImage& dds) {
    std::string caption;
    if (dds.is_cubemap()) caption.append(face_name(image.face)).append(", ");
    if (dds.get_depth() > 1) caption.append("slice ").append(std::to_string(image.slice)).append(", ");
    return caption + "level " + std::to_string(image.level);
}

std::string description_of(const vDDSImage& image) {
    std::string text = std::string(loader_format_name(image.get_format())) + " as loaded";
    if (image.is_cubemap()) text += ", cube map";
    if (image.get_depth() > 1) {
        text += ", " + counted_words(static_cast<std::uint64_t>(image.get_depth()), "slice");
    }
    return text + ", " + counted_words(static_cast<std::uint64_t>(image.get_num_mipmaps()) + 1, "level");
}

// The levels of one slice of one face. A slice has no part in the smaller levels of a volume.
void add_images(SheetFile& sheet, const vDDSImage& dds, const SheetChoice& choice, SheetImage image) {
    const vDDSTexture& texture = dds[static_cast<int>(image.face)];
    for (image.level = 0; image.level <= static_cast<std::uint32_t>(texture.get_num_mipmaps());
         ++image.level) {
        if (!choice.takes(image)) continue;
        const vDDSSurface& surface =
            image.level == 0 ? texture : texture.get_mipmap(static_cast<int>(image.level) - 1);
        if (image.slice >= static_cast<std::uint32_t>(surface.get_depth())) continue;
        image.caption = caption_of(image, dds);
        image.pixels.width = surface.get_width();
        image.pixels.height = surface.get_height();
        const auto width = static_cast<std::uint32_t>(surface.get_width());
        const auto height = static_cast<std::uint32_t>(surface.get_height());
        image.pixels.row_bytes = image.pixels.format.RowBytes(width);
        image.pixels.bytes =
            static_cast<char*>(surface) + image.slice * image.pixels.format.SliceBytes(width, height);
        sheet.images.push_back(image);
    }
}

}  // namespace

SheetFile read_sheet_loaded(TextureFile& file, const SheetChoice& choice, int max_extent) {
    const vTextureCheck::Result& headers = file.promise().check;
    if (!headers.ok() && headers.status != vTextureCheck::eTruncated) {
        throw std::runtime_error(headers.sentence);
    }
    check_missing_bytes(headers.totalBytes, file.length());
    check_promise(loaded(*file.bytes(), 0, false, true), choice, max_extent);

    const TextureBytes bytes = file.bytes();
    const vTextureInfo info = vTextureInfo::ReadBuffer(bytes->data(), bytes->size());
    if (!info.check.ok() && choice.trust == Trust::kNo) throw std::runtime_error(info.check.sentence);
    const auto dds =
        std::make_shared<const vDDSImage>(loaded(*bytes, headers.totalBytes, choice.flip, false));
    SheetFile sheet;
    sheet.description = description_of(*dds);
    sheet.owners.push_back(dds);
    for (const vTextureNote& note : info.notes) {
        if (concerns_loader(note)) sheet.notes.push_back(note);
    }
    if (!info.check.ok()) {
        sheet.warnings.push_back("warning: " + cut_short_words(info.check.missingBytes));
    }
    const Type format = dds->get_format();
    if (choice.flip && (format == BC6H_SF16 || format == BC6H_UF16)) {
        sheet.warnings.emplace_back("warning: is shown as it lies in the file: BC6H is never flipped");
    }
    SheetImage image;
    image.pixels.format = pixels_of(format);
    // Pixels of four bytes need not have alpha in the fourth.
    image.pixels.opaque = format == RGBA8 && !info.hasAlpha;
    for (image.face = 0; image.face < static_cast<std::uint32_t>(face_count(*dds)); ++image.face) {
        for (image.slice = 0; image.slice < static_cast<std::uint32_t>(dds->get_depth()); ++image.slice) {
            add_images(sheet, *dds, choice, image);
        }
    }
    return sheet;
}
