// SPDX-License-Identifier: Apache-2.0
// One contiguous buffer of all faces and levels, and conversion of pixels by channel masks.
#include <cstring>

#include "dds/dds_file.h"
#include "pixels/ChannelReorder.h"
#include "vDDSImage.h"

namespace {

// Calls visit(surface) for the base level and `mipmapCount` mip levels of each face, in the order of the
// assembled buffer, until a call returns false. Returns whether all calls returned true.
template <class Visit>
bool for_each_piece(const vDDSImage& image, int mipmapCount, Visit visit) {
    const int levels = mipmapCount < 0 ? image.get_num_mipmaps() : mipmapCount;
    const int faces = image.is_cubemap() ? pelto::dds::kCubeFaces : 1;
    for (int face = 0; face < faces; ++face) {
        const vDDSTexture& texture = image[face];
        if (!visit(texture)) return false;
        for (int level = 0; level < levels; ++level) {
            if (!visit(texture.get_mipmap(level))) return false;
        }
    }
    return true;
}

}  // namespace

std::size_t vDDSImage::compute_full_size(int mipmapCount) const {
    std::size_t total = 0;
    for_each_piece(*this, mipmapCount, [&](const vDDSSurface& piece) {
        total += piece.get_size();
        return true;
    });
    return total;
}

bool vDDSImage::compute_full_buffer(char* buffer, std::size_t bufferSize, int mipmapCount) const {
    std::size_t offset = 0;
    return for_each_piece(*this, mipmapCount, [&](const vDDSSurface& piece) {
        const std::size_t size = piece.get_size();
        if (size > bufferSize - offset) return false;
        if (size > 0) std::memcpy(buffer + offset, piece, size);
        offset += size;
        return true;
    });
}

void vDDSImage::convertTexturePixel(char* data, int width, int height, int depth, std::size_t size,
                                    TOZ::DDS_PIXELFORMAT& format, int components) {
    if (components != 3 && components != 4) return;
    if (width <= 0 || height <= 0 || depth <= 0) return;
    const pelto::pixels::ChannelReorder reorder(
        {format.dwRBitMask, format.dwGBitMask, format.dwBBitMask, format.dwABitMask}, components);
    const std::size_t slice_size = size / static_cast<std::size_t>(depth);
    const std::size_t pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    auto* slice = reinterpret_cast<unsigned char*>(data);
    for (; depth > 0; --depth, slice += slice_size) {
        reorder.apply(slice, slice, pixels);
    }
}
