#include "sheet/sheet_dds.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "sheet/sheet_limits.h"
#include "texture/dds_report.h"
#include "texture/file_start.h"

namespace {

// Offsets in bytes.
constexpr std::size_t kMipMapCount = 28;
constexpr std::size_t kPixelFormatFlags = 80;
constexpr std::size_t kAlphaMask = 104;

constexpr std::uint32_t kHasAlphaPixels = 0x1;

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

bool is_bc6h(TOZ::SUPPORTED_FORMAT::Type format) {
    return format == TOZ::SUPPORTED_FORMAT::BC6H_SF16 || format == TOZ::SUPPORTED_FORMAT::BC6H_UF16;
}

// Uncompressed pixels of four bytes need not have alpha in the fourth.
bool is_opaque(TOZ::SUPPORTED_FORMAT::Type format, const FileStart& start) {
    if (format != TOZ::SUPPORTED_FORMAT::RGBA8) return false;
    return !(start.number(kPixelFormatFlags) & kHasAlphaPixels) || start.number(kAlphaMask) == 0;
}

vDDSImage load(const std::string& path, const SheetChoice& choice, bool header_only,
               std::uint64_t& missing_bytes) {
    DDSReport report = report_dds(path, choice.flip, header_only, choice.trust);
    if (report.error) throw std::runtime_error(*report.error);
    missing_bytes = report.missing_bytes;
    return std::move(report.image);
}

// What the headers promise. The loader takes memory for all of it, whatever the file holds.
void check_promise(const vDDSImage& header, const std::string& path, int max_extent) {
    SheetLimits limits(max_extent);
    const auto faces = static_cast<std::uint64_t>(face_count(header));
    std::uint64_t promised = 0;
    for (int level = 0; level <= header.get_num_mipmaps(); ++level) {
        const Extent extent = extent_of_level(header, level);
        const std::uint64_t images = faces * static_cast<std::uint64_t>(extent.depth);
        limits.add_images(images);
        limits.add_pixels(extent.width, extent.height, images);
        promised += images * bytes_of(header.get_format(), extent.width, extent.height);
    }
    constexpr std::uint64_t kMostMissing = std::uint64_t{1} << 28;
    std::error_code error;
    const std::uintmax_t length = std::filesystem::file_size(path, error);
    if (!error && promised > length + kMostMissing) {
        throw std::runtime_error("its header promises " + std::to_string(promised) +
                                 " bytes of pixels, and the file has " + std::to_string(length));
    }
}

std::string caption_of(const SheetImage& image, const vDDSImage& dds) {
    constexpr const char* kFaces[] = {"+X", "\u2212X", "+Y", "\u2212Y", "+Z", "\u2212Z"};
    std::string caption;
    if (dds.is_cubemap()) caption.append(kFaces[image.face]).append(", ");
    if (dds.get_depth() > 1) caption.append("slice ").append(std::to_string(image.slice)).append(", ");
    return caption + "level " + std::to_string(image.level);
}

std::string description_of(const vDDSImage& image) {
    const int levels = image.get_num_mipmaps() + 1;
    std::string text = format_name(image.get_format());
    if (image.is_cubemap()) text += ", cube map";
    if (image.get_depth() > 1) text += ", " + std::to_string(image.get_depth()) + " slices";
    return text + ", " + std::to_string(levels) + (levels == 1 ? " level" : " levels");
}

// The levels of one slice of one face. A slice has no part in the smaller levels of a volume.
void add_images(SheetFile& file, const vDDSImage& dds, std::uint32_t face, std::uint32_t slice,
                const SheetChoice& choice, bool opaque) {
    const vDDSTexture& texture = dds[static_cast<int>(face)];
    for (int level = 0; level <= texture.get_num_mipmaps(); ++level) {
        const vDDSSurface& surface = level == 0 ? texture : texture.get_mipmap(level - 1);
        SheetImage image{face, static_cast<std::uint32_t>(level), slice, "", {}};
        if (choice.level && *choice.level != image.level) continue;
        if (slice >= static_cast<std::uint32_t>(surface.get_depth())) continue;
        image.caption = caption_of(image, dds);
        image.pixels = {dds.get_format(), surface.get_width(), surface.get_height(), nullptr, opaque};
        const std::uint64_t bytes = bytes_of(image.pixels.format, image.pixels.width, image.pixels.height);
        image.pixels.bytes = static_cast<char*>(surface) + slice * bytes;
        file.images.push_back(std::move(image));
    }
}

}  // namespace

SheetFile read_sheet_dds(const std::string& path, const SheetChoice& choice, int max_extent) {
    const std::optional<FileStart> start = read_start(path);
    // Even reading the headers alone takes memory for each level.
    if (start) SheetLimits(max_extent).add_images(start->number(kMipMapCount));
    std::uint64_t missing_bytes = 0;
    {
        const vDDSImage header = load(path, choice, true, missing_bytes);
        check_choice("face", choice.face, static_cast<std::uint32_t>(face_count(header)));
        check_choice("level", choice.level, static_cast<std::uint32_t>(header.get_num_mipmaps() + 1));
        check_promise(header, path, max_extent);
    }
    const auto dds = std::make_shared<const vDDSImage>(load(path, choice, false, missing_bytes));
    SheetFile file{path, path, description_of(*dds), {}, {}, {dds}};
    if (missing_bytes > 0) file.warnings.push_back("warning: " + cut_short_text(missing_bytes));
    if (choice.flip && is_bc6h(dds->get_format())) {
        file.warnings.emplace_back("warning: is shown as it lies in the file: BC6H is never flipped");
    }
    const bool opaque = start && is_opaque(dds->get_format(), *start);
    for (std::uint32_t face = 0; face < static_cast<std::uint32_t>(face_count(*dds)); ++face) {
        if (choice.face && *choice.face != face) continue;
        for (std::uint32_t slice = 0; slice < static_cast<std::uint32_t>(dds->get_depth()); ++slice) {
            add_images(file, *dds, face, slice, choice, opaque);
        }
    }
    return file;
}
