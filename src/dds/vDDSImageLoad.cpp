// SPDX-License-Identifier: Apache-2.0
// Reading DDS files: format, level sizes, faces and levels.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>
#include <utility>

#include "dds/dds_file.h"
#include "dds/file_length.h"
#include "dds/pixel_layout.h"
#include "pixels/ChannelReorder.h"
#include "vDDSImage.h"
#include "vLogger.h"

namespace {

using namespace TOZ::SUPPORTED_FORMAT;
using pelto::dds::block_size;
using pelto::dds::FileBytes;
using pelto::dds::find_pixel_layout;
using pelto::dds::format_code;
using pelto::dds::FormatCode;
using pelto::dds::kCubeFaces;
using pelto::dds::kFourCCDX10;
using pelto::dds::LoaderLayout;
using pelto::pixels::ChannelReorder;

std::optional<LoaderLayout> decide_layout(const TOZ::DDS_PIXELFORMAT& pixel_format,
                                          std::uint32_t dxgi_format) {
    const std::optional<LoaderLayout> layout = find_pixel_layout(pixel_format, dxgi_format);
    if (layout) return layout;
    switch (format_code(pixel_format)) {
        case FormatCode::kPixelFormat:
            TOZ::LogDefault(TOZ::vLogger::eWarning, "DDS Format not supported.");
            break;
        case FormatCode::kDXGI:
            TOZ::LogDefault(TOZ::vLogger::eWarning, "The DXGI type %d for the DDS file : is not supported.",
                            static_cast<int>(dxgi_format));
            break;
        case FormatCode::kFourCC:
            break;
    }
    return layout;
}

// Channels are reordered when all three colours have a mask, by the masks, the compression and the component
// count alone: a float format with masks is rewritten too.
std::optional<ChannelReorder> channel_reorder(const TOZ::DDS_PIXELFORMAT& pixel_format,
                                              const LoaderLayout& layout) {
    const bool has_masks =
        pixel_format.dwRBitMask != 0 && pixel_format.dwGBitMask != 0 && pixel_format.dwBBitMask != 0;
    if (!has_masks || layout.compressed || layout.components == 1) return std::nullopt;
    const ChannelReorder reorder(
        {pixel_format.dwRBitMask, pixel_format.dwGBitMask, pixel_format.dwBBitMask, pixel_format.dwABitMask},
        layout.components);
    if (reorder.keeps_pixels()) return std::nullopt;
    return reorder;
}

// Reads the bytes of one level after the other, with its channels reordered and flipped as the image asks.
class LevelReader {
public:
    LevelReader(FileBytes& file, const LoaderLayout& layout, std::optional<ChannelReorder> reorder, bool flip)
        : file_(file), layout_(layout), reorder_(reorder), flip_(flip) {}

    void read(vDDSSurface& level) {
        if (reorder_ && slices_hold_pixels(level)) {
            read_reordered(level);
        } else {
            file_.read(level, level.get_size());
        }
        if (flip_ && (layout_.compressed ? slices_hold_blocks(level) : slices_hold_lines(level))) {
            vDDSImage::flip(level, level.get_width(), level.get_height(), level.get_depth(), level.get_size(),
                            layout_.format, layout_.compressed);
        }
    }

private:
    // Copies and cuts the channels out by the masks in one pass. A slice of a float format is larger than
    // the pixels taken this way; its rest is copied as it is.
    void read_reordered(vDDSSurface& level) {
        const std::size_t pixels = area(level.get_width(), level.get_height());
        const std::size_t reordered = pixels * static_cast<std::size_t>(layout_.components);
        const std::size_t rest = slice_size(level) - reordered;
        auto* to = reinterpret_cast<unsigned char*>(static_cast<char*>(level));
        for (int slice = 0; slice < level.get_depth(); ++slice, to += reordered + rest) {
            const auto* from = reinterpret_cast<const unsigned char*>(file_.take(reordered));
            if (from == nullptr) {
                file_.read(to, reordered);
                from = to;
            }
            reorder_->apply(from, to, pixels);
            if (rest > 0) file_.read(to + reordered, rest);
        }
    }

    // The size of a level with absurd extents can have wrapped around to less than its pixels, blocks or
    // lines take; such a level is read but not walked by its extents.
    bool slices_hold_pixels(const vDDSSurface& level) const {
        const std::size_t pixels = area(level.get_width(), level.get_height());
        return pixels > 0 && pixels * static_cast<std::size_t>(layout_.components) <= slice_size(level);
    }

    bool slices_hold_blocks(const vDDSSurface& level) const {
        const std::size_t blocks = area((level.get_width() + 3LL) / 4, (level.get_height() + 3LL) / 4);
        return blocks > 0 && blocks * block_size(layout_.format) <= slice_size(level);
    }

    static bool slices_hold_lines(const vDDSSurface& level) {
        const int height = level.get_height();
        return height > 0 && static_cast<std::size_t>(height) <= slice_size(level);
    }

    // 0 for extents that are not positive; otherwise below 2^62, which leaves room for a factor of 4.
    static std::size_t area(std::int64_t width, std::int64_t height) {
        if (width <= 0 || height <= 0) return 0;
        return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    }

    // Most levels have one slice, and a division takes as long as copying a small level.
    static std::size_t slice_size(const vDDSSurface& level) {
        const int depth = level.get_depth();
        return depth == 1 ? level.get_size() : level.get_size() / static_cast<std::size_t>(depth);
    }

    FileBytes& file_;
    const LoaderLayout layout_;
    const std::optional<ChannelReorder> reorder_;
    const bool flip_;
};

}  // namespace

bool vDDSImage::load(std::string fileName, bool flipImage, bool headerOnly) {
    struct CloseFile {
        void operator()(std::FILE* open) const { std::fclose(open); }
    };
    if (pelto::is_pipe(fileName.c_str())) return false;
    std::unique_ptr<std::FILE, CloseFile> file(std::fopen(fileName.c_str(), "rb"));
    if (!file) return false;
    const std::optional<std::size_t> length = pelto::file_length(file.get());
    if (!length) return false;

    const std::size_t wanted = headerOnly ? std::min(*length, pelto::dds::kHeadersSize) : *length;
    const auto bytes = std::make_unique_for_overwrite<char[]>(wanted);
    const std::size_t available = std::fread(bytes.get(), 1, wanted, file.get());
    file.reset();
    return _load(bytes.get(), available, flipImage, headerOnly);
}

bool vDDSImage::loadFromBuffer(const void* buffer, int /*size*/, bool flipImage, bool headerOnly) {
    return _load(static_cast<const char*>(buffer), FileBytes::kComplete, flipImage, headerOnly);
}

bool vDDSImage::_load(const char* bytes, std::size_t available, bool flipImage, bool headerOnly) {
    clear();
    FileBytes file(bytes, available);

    const char* const magic = file.take(sizeof pelto::dds::kMagic);
    if (magic == nullptr || std::strncmp(magic, pelto::dds::kMagic, sizeof pelto::dds::kMagic) != 0)
        return false;

    pelto::dds::Header header;
    file.read(&header, sizeof header);
    pelto::dds::HeaderDX10 extension{};
    if (header.pixelFormat.dwFourCC == kFourCCDX10) file.read(&extension, sizeof extension);

    cubemap = (header.caps2 & pelto::dds::kCaps2Cubemap) != 0;
    volume = (header.caps2 & pelto::dds::kCaps2Volume) != 0 && header.depth != 0;

    const std::optional<LoaderLayout> layout = decide_layout(header.pixelFormat, extension.dxgiFormat);
    if (!layout) return false;
    format = layout->format;
    components = layout->components;
    bitsPerComponent = layout->bits_per_component;
    compressed = layout->compressed;

    const int width = static_cast<int>(header.width);
    const int height = static_cast<int>(header.height);
    const int depth = clamp_size(static_cast<int>(header.depth));
    const int extraLevels = header.mipMapCount == 0 ? 0 : static_cast<int>(header.mipMapCount - 1);
    if (headerOnly) {
        textures.push_back(_outline(width, height, depth, extraLevels));
        return true;
    }
    LevelReader reader(file, *layout, channel_reorder(header.pixelFormat, *layout), flipImage);
    const int faces = cubemap ? kCubeFaces : 1;
    textures.reserve(static_cast<std::size_t>(faces));
    for (int face = 0; face < faces; ++face) {
        textures.push_back(_read_face(reader, width, height, depth, extraLevels));
    }
    // Upside down, up is down: the +Y and -Y faces change places, except where nothing was flipped.
    if (cubemap && flipImage && format != BC6H_SF16 && format != BC6H_UF16)
        std::swap(textures[2], textures[3]);
    valid = true;
    return true;
}

// Levels without pixels, all but the first of one pixel.
vDDSTexture vDDSImage::_outline(int width, int height, int depth, int extraLevels) {
    vDDSTexture outline(width, height, depth, 1);
    if (extraLevels > 0) outline.mipmaps.reserve(static_cast<std::size_t>(extraLevels));
    for (int level = 0; level < extraLevels; ++level) outline.mipmaps.emplace_back(1, 1, depth, 1);
    return outline;
}

template <class Reader>
vDDSTexture vDDSImage::_read_face(Reader& reader, int width, int height, int depth, int extraLevels) const {
    const auto level_size = [&] {
        const std::size_t slice = !compressed                                  ? size_rgb(width, height)
                                  : format == BC6H_SF16 || format == BC6H_UF16 ? size_bc6h(width, height)
                                                                               : size_dxtc(width, height);
        return slice * static_cast<std::size_t>(depth);
    };
    vDDSTexture texture(width, height, depth, level_size());
    reader.read(texture);
    if (extraLevels > 0) texture.mipmaps.reserve(static_cast<std::size_t>(extraLevels));
    for (int i = 0; i < extraLevels; ++i) {
        width = clamp_size(width >> 1);
        height = clamp_size(height >> 1);
        depth = clamp_size(depth >> 1);
        vDDSSurface level(width, height, depth, level_size());
        reader.read(level);
        texture.mipmaps.push_back(std::move(level));
    }
    return texture;
}

// The products below are those of the header's 32-bit numbers with the given widths; absurd extents wrap
// around in them, without ever overflowing a signed type.

std::size_t vDDSImage::size_rgb(int width, int height) const {
    const auto widened = [](int value) { return static_cast<std::uint64_t>(std::int64_t{value}); };
    return widened(bitsPerComponent) * widened(components) * widened(width) * widened(height) >> 3;
}

std::size_t vDDSImage::size_dxtc(int width, int height) const {
    const auto blocks = [](int pixels) { return (static_cast<std::uint32_t>(pixels) + 3) >> 2; };
    return blocks(width) * blocks(height) * static_cast<std::uint32_t>(block_size(format));
}

std::size_t vDDSImage::size_bc6h(int width, int height) const {
    const auto blocks = [](int pixels) { return std::ceil(static_cast<std::uint32_t>(pixels) * 0.25); };
    return static_cast<std::uint32_t>(static_cast<std::uint64_t>(blocks(width) * blocks(height))) * 16;
}

int vDDSImage::clamp_size(int size) const { return std::max(size, 1); }

int vDDSImage::get_line_width(int width, int bitsPerPixel) const {
    const std::uint32_t bits =
        static_cast<std::uint32_t>(width) * static_cast<std::uint32_t>(bitsPerPixel) + 31;
    return (static_cast<std::int32_t>(bits) >> 3) & ~3;
}

// Files and supported machines are both little-endian: there is nothing to swap.
void vDDSImage::swap_endian(void* /*value*/) const {}
