// SPDX-License-Identifier: Apache-2.0

#include "support/plain_model.h"

#include <algorithm>

#include "support/dds_file.h"
#include "support/plain_formats.h"

namespace plain {
namespace {

/// A file that ends in endless zeros, read from front to back or at an offset.
class EndlessFile {
public:
    explicit EndlessFile(const Bytes& file) : file_(file) {}

    std::uint8_t byte_at(std::size_t offset) const { return offset < file_.size() ? file_[offset] : 0; }

    std::uint32_t number_at(std::size_t offset) const {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < 4; ++i)
            value += static_cast<std::uint32_t>(byte_at(offset + i)) << (8 * i);
        return value;
    }

    Bytes bytes_at(std::size_t offset, std::size_t count) const {
        Bytes bytes(count);
        for (std::size_t i = 0; i < count; ++i) bytes[i] = byte_at(offset + i);
        return bytes;
    }

private:
    const Bytes& file_;
};

struct Header {
    int width;
    int height;
    int depth;
    int extra_levels;
    bool has_depth;
    std::uint32_t caps2;
    PixelFormat pixel_format;
    Masks masks;
    std::size_t data_offset;
};

Header read_header(const EndlessFile& file) {
    Header header;
    header.height = static_cast<int>(file.number_at(12));
    header.width = static_cast<int>(file.number_at(16));
    const int depth = static_cast<int>(file.number_at(24));
    header.has_depth = depth != 0;
    header.depth = depth > 0 ? depth : 1;
    const std::uint32_t count = file.number_at(28);
    header.extra_levels = count == 0 ? 0 : static_cast<int>(count - 1);
    header.pixel_format = {file.number_at(80), file.number_at(84), file.number_at(88), file.number_at(128)};
    header.masks = {file.number_at(92), file.number_at(96), file.number_at(100), file.number_at(104)};
    header.caps2 = file.number_at(112);
    header.data_offset = header.pixel_format.fourcc == support::four_cc("DX10") ? 148 : 128;
    return header;
}

int half(int extent) { return extent / 2 < 1 ? 1 : extent / 2; }

bool reorders(const Image& image, const Masks& masks) {
    return masks.red != 0 && masks.green != 0 && masks.blue != 0 && !image.compressed &&
           image.components != 1;
}

/// The extents of a face's levels, the base level first, and their sizes; without bytes.
Face levels_of_face(const Image& image, const Header& header) {
    int width = header.width;
    int height = header.height;
    int depth = header.depth;
    Face face;
    for (int i = 0; i <= std::max(header.extra_levels, 0); ++i) {
        const std::size_t size = slice_size(image, width, height) * static_cast<std::size_t>(depth);
        face.push_back({width, height, depth, size, {}});
        width = half(width);
        height = half(height);
        depth = half(depth);
    }
    return face;
}

int face_count(const Image& image) { return image.cubemap ? 6 : 1; }

/// Fills a level with the bytes at `offset` and gives it the form that it has in memory.
void read_level(Level& level, const EndlessFile& file, std::size_t offset, const Image& image,
                const Masks& masks, bool flip_image) {
    level.bytes = file.bytes_at(offset, level.size);
    if (reorders(image, masks))
        reorder(level.bytes, level.width, level.height, level.depth, image.components, masks);
    if (flip_image) flip(level.bytes, level.width, level.height, level.depth, image.format, image.compressed);
}

void describe(Image& image, const Header& header) {
    Face face;
    face.push_back({header.width, header.height, header.depth, 1, {}});
    for (int i = 0; i < header.extra_levels; ++i) face.push_back({1, 1, header.depth, 1, {}});
    image.faces.push_back(face);
}

void read_pixels(Image& image, const EndlessFile& file, const Header& header, bool flip_image) {
    std::size_t offset = header.data_offset;
    for (int i = 0; i < face_count(image); ++i) {
        Face face = levels_of_face(image, header);
        for (Level& level : face) {
            read_level(level, file, offset, image, header.masks, flip_image);
            offset += level.size;
        }
        image.faces.push_back(face);
    }
    const bool bc6h = image.format == 15 || image.format == 16;
    if (image.cubemap && flip_image && !bc6h) std::swap(image.faces[2], image.faces[3]);
    image.valid = true;
}

/// All fields but the faces.
Image read_format(const Header& header) {
    Image image;
    image.cubemap = (header.caps2 & support::kCubeMap) != 0;
    image.volume = (header.caps2 & support::kVolume) != 0 && header.has_depth;
    const FormatDecision decision = decide_format(header.pixel_format);
    image.messages = decision.messages;
    image.loaded = decision.supported;
    if (!decision.supported) return image;
    image.format = decision.format;
    image.components = decision.components;
    image.bits_per_component = decision.bits;
    image.compressed = decision.format >= 8;
    return image;
}

}  // namespace

Image load(const Bytes& bytes, bool flip_image, bool header_only) {
    const EndlessFile file(bytes);
    if (file.number_at(0) != support::four_cc("DDS ")) return {};
    const Header header = read_header(file);
    Image image = read_format(header);
    if (!image.loaded) return image;
    if (header_only)
        describe(image, header);
    else
        read_pixels(image, file, header, flip_image);
    return image;
}

std::size_t file_size(const Bytes& headers) {
    const EndlessFile file(headers);
    const Header header = read_header(file);
    const Image image = read_format(header);
    std::size_t size = header.data_offset;
    if (!image.loaded) return size;
    for (const Level& level : levels_of_face(image, header))
        size += level.size * static_cast<std::size_t>(face_count(image));
    return size;
}

std::size_t slice_size(const Image& image, int width, int height) {
    const auto w = static_cast<std::size_t>(width);
    const auto h = static_cast<std::size_t>(height);
    if (!image.compressed) {
        const auto bytes = static_cast<std::size_t>(image.bits_per_component / 8 * image.components);
        return w * h * bytes;
    }
    const bool small_block = image.format == 8 || image.format == 11 || image.format == 12;
    const std::size_t columns = w / 4 + (w % 4 != 0 ? 1 : 0);
    const std::size_t rows = h / 4 + (h % 4 != 0 ? 1 : 0);
    return columns * rows * (small_block ? 8 : 16);
}

Bytes full_buffer(const Image& image, int mipmaps) {
    const std::size_t count = mipmaps < 0 ? image.faces[0].size() - 1 : static_cast<std::size_t>(mipmaps);
    Bytes buffer;
    for (std::size_t face = 0; face < (image.cubemap ? 6u : 1u); ++face)
        for (std::size_t level = 0; level <= count; ++level) {
            const Bytes& bytes = image.faces[face][level].bytes;
            buffer.insert(buffer.end(), bytes.begin(), bytes.end());
        }
    return buffer;
}

}  // namespace plain
