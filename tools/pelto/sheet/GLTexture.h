// SPDX-License-Identifier: Apache-2.0
// Textures on the GPU.
#ifndef PELTO_TOOL_SHEET_GL_TEXTURE_H
#define PELTO_TOOL_SHEET_GL_TEXTURE_H

#include <cstdint>
#include <vTextureFormats.h>

/// One slice of a level of a face.
struct PixelData {
    vPixelFormat format{};  // one that has a picture
    int width = 0;
    int height = 0;
    const void* bytes = nullptr;  // rows of pixels or blocks; not owned
    std::uint64_t row_bytes = 0;  // from one row of pixels to the next; blocks lie without gaps
    bool opaque = false;          // what the format has for alpha means nothing
};

/// What a texture's numbers are made visible as.
enum class View : int {
    kColour,  // 0 to 1, as they are
    kSigned,  // -1 to 1
    kHDR,     // light, without an upper bound
};

View view_of(const vPixelFormat& format);

/// A 2D texture in GPU memory. Blocks are the driver's to decode; other pixels are decoded first: floats,
/// signed numbers and those of more than 8 bits to floats, all others to 8 bits.
class GLTexture {
public:
    /// Throws std::runtime_error where OpenGL refuses the texture.
    explicit GLTexture(const PixelData& pixels);
    ~GLTexture();
    GLTexture(const GLTexture&) = delete;
    GLTexture& operator=(const GLTexture&) = delete;

    unsigned int name() const { return name_; }

private:
    unsigned int name_ = 0;
};

#endif
