// SPDX-License-Identifier: Apache-2.0

#include <cstring>
#include <new>

#include "vDDSImage.h"

vDDSSurface::vDDSSurface() : width(0), height(0), depth(0), size(0), pixels(nullptr) {}

vDDSSurface::vDDSSurface(int width, int height, int depth, std::size_t size) : vDDSSurface() {
    create(width, height, depth, size);
}

vDDSSurface::vDDSSurface(const vDDSSurface& other) : vDDSSurface() {
    if (other.pixels == nullptr) return;
    create(other.width, other.height, other.depth, other.size);
    std::memcpy(pixels, other.pixels, size);
}

vDDSSurface::vDDSSurface(vDDSSurface&& other) noexcept
    : width(other.width), height(other.height), depth(other.depth), size(other.size), pixels(other.pixels) {
    other.pixels = nullptr;
}

vDDSSurface& vDDSSurface::operator=(const vDDSSurface& other) {
    if (this == &other) return *this;
    clear();
    if (other.pixels == nullptr) return *this;
    create(other.width, other.height, other.depth, other.size);
    std::memcpy(pixels, other.pixels, size);
    return *this;
}

vDDSSurface::~vDDSSurface() { clear(); }

void vDDSSurface::create(int newWidth, int newHeight, int newDepth, std::size_t newSize) {
    clear();
    width = newWidth;
    height = newHeight;
    depth = newDepth;
    size = newSize;
    pixels = static_cast<char*>(::operator new(size));
}

void vDDSSurface::clear() {
    ::operator delete(pixels);
    pixels = nullptr;
}

vDDSSurface::operator char*() const { return pixels; }

int vDDSSurface::get_width() const { return width; }

int vDDSSurface::get_height() const { return height; }

int vDDSSurface::get_depth() const { return depth; }

std::size_t vDDSSurface::get_size() const { return size; }
