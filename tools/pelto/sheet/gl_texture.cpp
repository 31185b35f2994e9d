#include "sheet/gl_texture.h"

#include <array>
#include <epoxy/gl.h>
#include <string>

#include "sheet/gl_context.h"
#include "texture/dds_report.h"

namespace {

using Swizzle = std::array<GLint, 4>;

constexpr Swizzle kAsItIs = {GL_RED, GL_GREEN, GL_BLUE, GL_ALPHA};
constexpr Swizzle kGrey = {GL_RED, GL_RED, GL_RED, GL_ONE};

struct Format {
    TOZ::SUPPORTED_FORMAT::Type format;
    GLint internal;
    GLenum layout;  // 0: blocks of 4 x 4 pixels
    GLenum type;
    int bytes;  // of a pixel or a block
    Swizzle swizzle;
    View view;
};

constexpr Format kFormats[] = {
    {TOZ::SUPPORTED_FORMAT::LUMINANCE8, GL_R8, GL_RED, GL_UNSIGNED_BYTE, 1, kGrey, View::kColour},
    {TOZ::SUPPORTED_FORMAT::RGB8, GL_RGB8, GL_RGB, GL_UNSIGNED_BYTE, 3, kAsItIs, View::kColour},
    {TOZ::SUPPORTED_FORMAT::RGBA8, GL_RGBA8, GL_RGBA, GL_UNSIGNED_BYTE, 4, kAsItIs, View::kColour},
    {TOZ::SUPPORTED_FORMAT::BGRA8, GL_RGB8, GL_BGR, GL_UNSIGNED_BYTE, 3, kAsItIs, View::kColour},
    {TOZ::SUPPORTED_FORMAT::RGBA16F, GL_RGBA16F, GL_RGBA, GL_HALF_FLOAT, 8, kAsItIs, View::kHDR},
    {TOZ::SUPPORTED_FORMAT::R32F, GL_R32F, GL_RED, GL_FLOAT, 4, kGrey, View::kHDR},
    {TOZ::SUPPORTED_FORMAT::RGB32F, GL_RGB32F, GL_RGB, GL_FLOAT, 12, kAsItIs, View::kHDR},
    {TOZ::SUPPORTED_FORMAT::RGBA32F, GL_RGBA32F, GL_RGBA, GL_FLOAT, 16, kAsItIs, View::kHDR},
    {TOZ::SUPPORTED_FORMAT::DXT1, GL_COMPRESSED_RGBA_S3TC_DXT1_EXT, 0, 0, 8, kAsItIs, View::kColour},
    {TOZ::SUPPORTED_FORMAT::DXT3, GL_COMPRESSED_RGBA_S3TC_DXT3_EXT, 0, 0, 16, kAsItIs, View::kColour},
    {TOZ::SUPPORTED_FORMAT::DXT5, GL_COMPRESSED_RGBA_S3TC_DXT5_EXT, 0, 0, 16, kAsItIs, View::kColour},
    {TOZ::SUPPORTED_FORMAT::BC4U, GL_COMPRESSED_RED_RGTC1, 0, 0, 8, kGrey, View::kColour},
    {TOZ::SUPPORTED_FORMAT::BC4S, GL_COMPRESSED_SIGNED_RED_RGTC1, 0, 0, 8, kGrey, View::kSigned},
    {TOZ::SUPPORTED_FORMAT::BC5U, GL_COMPRESSED_RG_RGTC2, 0, 0, 16, kAsItIs, View::kColour},
    {TOZ::SUPPORTED_FORMAT::BC5S, GL_COMPRESSED_SIGNED_RG_RGTC2, 0, 0, 16, kAsItIs, View::kSigned},
    {TOZ::SUPPORTED_FORMAT::BC6H_SF16, GL_COMPRESSED_RGB_BPTC_SIGNED_FLOAT, 0, 0, 16, kAsItIs, View::kHDR},
    {TOZ::SUPPORTED_FORMAT::BC6H_UF16, GL_COMPRESSED_RGB_BPTC_UNSIGNED_FLOAT, 0, 0, 16, kAsItIs, View::kHDR},
};

// Every format has its row, in the order of their numbers.
constexpr const Format& row_of(TOZ::SUPPORTED_FORMAT::Type format) { return kFormats[format]; }

constexpr bool rows_lie_at_their_numbers() {
    for (int i = 0; i <= TOZ::SUPPORTED_FORMAT::BC6H_UF16; ++i) {
        if (kFormats[i].format != i) return false;
    }
    return true;
}
static_assert(rows_lie_at_their_numbers());

void upload(const PixelData& pixels) {
    const Format& format = row_of(pixels.format);
    if (format.layout == 0) {
        const auto size = static_cast<GLsizei>(bytes_of(pixels.format, pixels.width, pixels.height));
        glCompressedTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLenum>(format.internal), pixels.width,
                               pixels.height, 0, size, pixels.bytes);
    } else {
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
        glTexImage2D(GL_TEXTURE_2D, 0, format.internal, pixels.width, pixels.height, 0, format.layout,
                     format.type, pixels.bytes);
    }
}

}  // namespace

std::uint64_t bytes_of(TOZ::SUPPORTED_FORMAT::Type format, int width, int height) {
    const Format& row = row_of(format);
    const int block = row.layout == 0 ? 4 : 1;
    const auto units = [&](int pixels) { return static_cast<std::uint64_t>((pixels + block - 1) / block); };
    return units(width) * units(height) * static_cast<std::uint64_t>(row.bytes);
}

View view_of(TOZ::SUPPORTED_FORMAT::Type format) { return row_of(format).view; }

GLTexture::GLTexture(const PixelData& pixels) {
    glGenTextures(1, &name_);
    glBindTexture(GL_TEXTURE_2D, name_);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, 0);
    Swizzle swizzle = row_of(pixels.format).swizzle;
    if (pixels.opaque) swizzle[3] = GL_ONE;
    glTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_SWIZZLE_RGBA, swizzle.data());
    upload(pixels);
    try {
        check_gl("a " + std::string(format_name(pixels.format)) + " texture of " +
                 std::to_string(pixels.width) + " x " + std::to_string(pixels.height) +
                 " cannot be uploaded");
    } catch (...) {
        glDeleteTextures(1, &name_);
        throw;
    }
}

GLTexture::~GLTexture() { glDeleteTextures(1, &name_); }
