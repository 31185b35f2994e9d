// SPDX-License-Identifier: Apache-2.0

#include "sheet/GLTexture.h"

#include <algorithm>
#include <array>
#include <epoxy/gl.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vTexturePixels.h>
#include <vector>

#include "sheet/GLContext.h"

namespace {

using Swizzle = std::array<GLint, 4>;

bool has_kind(const vPixelFormat& format, vPixelFormat::EKind kind) {
    return std::any_of(format.channels.begin(), format.channels.end(),
                       [&](const vPixelFormat::Channel& channel) { return channel.kind == kind; });
}

bool has(const vPixelFormat& format, char letter) { return format.channels.Find(letter) != nullptr; }

// A single channel is grey.
Swizzle swizzle_of(const PixelData& pixels) {
    const vPixelFormat& format = pixels.format;
    Swizzle swizzle = {GL_RED, GL_GREEN, GL_BLUE, GL_ALPHA};
    const bool other_colours = has(format, 'G') || has(format, 'B') || has(format, 'L');
    if (has(format, 'R') && !other_colours) swizzle = {GL_RED, GL_RED, GL_RED, GL_ALPHA};
    if (!has(format, 'R') && !other_colours) swizzle = {GL_ALPHA, GL_ALPHA, GL_ALPHA, GL_ONE};
    if (pixels.opaque) swizzle[3] = GL_ONE;
    return swizzle;
}

// Numbers of sRGB formats are shown as they are stored, which the driver would make light of.
GLenum blocks_as_stored(const vPixelFormat& format) {
    constexpr std::string_view kSRGB = "_SRGB";
    if (!format.srgb) return format.openGL;
    const std::string name = format.name;
    return vTextureFormats::FindName(name.substr(0, name.size() - kSRGB.size()).c_str())->openGL;
}

vTexturePixels::EElement element_of(const vPixelFormat& format) {
    const bool integers = has_kind(format, vPixelFormat::eUInt) || has_kind(format, vPixelFormat::eSInt);
    const bool small = vTexturePixels::FullElement(format) == vTexturePixels::eRGBA8;
    if (view_of(format) == View::kColour && (integers || small)) return vTexturePixels::eRGBA8;
    return vTexturePixels::eRGBA32F;
}

void upload_blocks(const PixelData& pixels) {
    const std::uint64_t size = pixels.format.SliceBytes(static_cast<std::uint32_t>(pixels.width),
                                                        static_cast<std::uint32_t>(pixels.height));
    glCompressedTexImage2D(GL_TEXTURE_2D, 0, blocks_as_stored(pixels.format), pixels.width, pixels.height, 0,
                           static_cast<GLsizei>(size), pixels.bytes);
}

void upload_decoded(const PixelData& pixels) {
    const auto width = static_cast<std::uint32_t>(pixels.width);
    const auto height = static_cast<std::uint32_t>(pixels.height);
    const vTexturePixels::EElement element = element_of(pixels.format);
    std::vector<unsigned char> decoded(std::size_t{width} * height * vTexturePixels::PixelBytes(element));
    if (!vTexturePixels::Decode(pixels.format, pixels.bytes, pixels.row_bytes, width, height, element,
                                decoded.data())) {
        throw std::runtime_error(std::string(pixels.format.name) + " cannot be shown");
    }
    const bool floats = element == vTexturePixels::eRGBA32F;
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, floats ? GL_RGBA32F : GL_RGBA8, pixels.width, pixels.height, 0, GL_RGBA,
                 floats ? GL_FLOAT : GL_UNSIGNED_BYTE, decoded.data());
}

}  // namespace

View view_of(const vPixelFormat& format) {
    if (has_kind(format, vPixelFormat::eFloat) || has_kind(format, vPixelFormat::eSharedExponent)) {
        return View::kHDR;
    }
    return has_kind(format, vPixelFormat::eSNorm) ? View::kSigned : View::kColour;
}

GLTexture::GLTexture(const PixelData& pixels) {
    glGenTextures(1, &name_);
    try {
        glBindTexture(GL_TEXTURE_2D, name_);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, 0);
        glTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_SWIZZLE_RGBA, swizzle_of(pixels).data());
        if (pixels.format.layout == vPixelFormat::eBlocks) {
            upload_blocks(pixels);
        } else {
            upload_decoded(pixels);
        }
        check_gl("a " + std::string(pixels.format.name) + " texture of " + std::to_string(pixels.width) +
                 " x " + std::to_string(pixels.height) + " cannot be uploaded");
    } catch (...) {
        glDeleteTextures(1, &name_);
        throw;
    }
}

GLTexture::~GLTexture() { glDeleteTextures(1, &name_); }
