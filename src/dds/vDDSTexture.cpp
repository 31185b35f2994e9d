// SPDX-License-Identifier: Apache-2.0

#include "vDDSImage.h"

vDDSTexture::vDDSTexture() = default;

vDDSTexture::vDDSTexture(int width, int height, int depth, std::size_t size)
    : vDDSSurface(width, height, depth, size) {}

vDDSTexture::vDDSTexture(const vDDSTexture& other) = default;

vDDSTexture::vDDSTexture(vDDSTexture&& other) noexcept = default;

vDDSTexture& vDDSTexture::operator=(const vDDSTexture& other) {
    if (this == &other) return *this;
    vDDSSurface::operator=(other);
    // The levels are copied anew, not assigned one to the other: a level without pixels becomes an
    // all-zero surface instead of keeping the extents of the level that stood there before.
    mipmaps.clear();
    mipmaps.insert(mipmaps.end(), other.mipmaps.begin(), other.mipmaps.end());
    return *this;
}

vDDSTexture::~vDDSTexture() = default;

vDDSSurface& vDDSTexture::get_mipmap(int index) { return mipmaps[static_cast<std::size_t>(index)]; }

const vDDSSurface& vDDSTexture::get_mipmap(int index) const {
    return mipmaps[static_cast<std::size_t>(index)];
}

int vDDSTexture::get_num_mipmaps() const { return static_cast<int>(mipmaps.size()); }
