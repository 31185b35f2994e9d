// Textures on the GPU.
#ifndef PELTO_TOOL_SHEET_GL_TEXTURE_H
#define PELTO_TOOL_SHEET_GL_TEXTURE_H

#include <cstddef>
#include <cstdint>
#include <vDDSImage.h>

/// One level of one face, and one slice of it, as the library holds it.
struct PixelData {
    TOZ::SUPPORTED_FORMAT::Type format = TOZ::SUPPORTED_FORMAT::RGBA8;
    int width = 0;
    int height = 0;
    const void* bytes = nullptr;  // bytes_of(format, width, height) of them; not owned
    bool opaque = false;          // what the format has for alpha means nothing
};

/// Bytes of pixels without padding, in whole blocks where the format has blocks.
std::uint64_t bytes_of(TOZ::SUPPORTED_FORMAT::Type format, int width, int height);

/// What a texture's numbers are to be made visible as.
enum class View : int {
    kColour,  // 0 to 1, as they are
    kSigned,  // -1 to 1
    kHDR,     // light, without an upper bound
};

View view_of(TOZ::SUPPORTED_FORMAT::Type format);

/// A 2D texture in GPU memory, its bytes uploaded as they are.
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
