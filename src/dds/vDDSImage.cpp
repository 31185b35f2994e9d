// SPDX-License-Identifier: Apache-2.0

#include "vDDSImage.h"

#include <utility>

vDDSImage::vDDSImage() { clear(); }

vDDSImage::vDDSImage(const vDDSImage& other) = default;

vDDSImage::vDDSImage(vDDSImage&& other) noexcept : vDDSImage() { *this = std::move(other); }

vDDSImage& vDDSImage::operator=(const vDDSImage& other) {
    format = other.format;
    components = other.components;
    bitsPerComponent = other.bitsPerComponent;
    compressed = other.compressed;
    cubemap = other.cubemap;
    volume = other.volume;
    valid = other.valid;
    if (this == &other) return *this;
    textures.clear();
    textures.insert(textures.end(), other.textures.begin(), other.textures.end());
    return *this;
}

vDDSImage& vDDSImage::operator=(vDDSImage&& other) noexcept {
    if (this == &other) return *this;
    std::vector<vDDSTexture> taken = std::move(other.textures);
    other.textures.clear();
    *this = std::as_const(other);
    textures = std::move(taken);
    other.clear();
    return *this;
}

vDDSImage::~vDDSImage() = default;

void vDDSImage::clear() {
    format = TOZ::SUPPORTED_FORMAT::RGBA8;
    components = 0;
    bitsPerComponent = 8;
    compressed = false;
    cubemap = false;
    volume = false;
    valid = false;
    textures.clear();
}

vDDSTexture& vDDSImage::operator[](int index) { return textures[static_cast<std::size_t>(index)]; }

const vDDSTexture& vDDSImage::operator[](int index) const {
    return textures[static_cast<std::size_t>(index)];
}

vDDSImage::operator char*() const { return textures[0]; }

int vDDSImage::get_width() const { return textures[0].get_width(); }

int vDDSImage::get_height() const { return textures[0].get_height(); }

int vDDSImage::get_depth() const { return textures[0].get_depth(); }

std::size_t vDDSImage::get_size() const { return textures[0].get_size(); }

int vDDSImage::get_num_mipmaps() const { return textures[0].get_num_mipmaps(); }

vDDSSurface& vDDSImage::get_mipmap(int index) { return textures[0].get_mipmap(index); }

const vDDSSurface& vDDSImage::get_mipmap(int index) const { return textures[0].get_mipmap(index); }

TOZ::SUPPORTED_FORMAT::Type vDDSImage::get_format() const { return format; }

int vDDSImage::get_components() const { return components; }

bool vDDSImage::is_compressed() const { return compressed; }

bool vDDSImage::is_cubemap() const { return cubemap; }

bool vDDSImage::is_volume() const { return volume; }

bool vDDSImage::is_valid() const { return valid; }
