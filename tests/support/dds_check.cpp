// SPDX-License-Identifier: Apache-2.0

#include "support/dds_check.h"

#include <algorithm>
#include <memory>
#include <sstream>

#include "support/dds_private.h"
#include "support/log_capture.h"

namespace support {
namespace {

using testing::AssertionFailure;
using testing::AssertionResult;
using testing::AssertionSuccess;

template <class T>
AssertionResult equal(const char* what, const T& value, const T& expected) {
    if (value == expected) return AssertionSuccess();
    return AssertionFailure() << what << " is " << value << ", expected " << expected << "; ";
}

AssertionResult same_level(const vDDSSurface& surface, const plain::Level& level) {
    if (surface.get_width() != level.width || surface.get_height() != level.height ||
        surface.get_depth() != level.depth || surface.get_size() != level.size)
        return AssertionFailure() << surface.get_width() << "x" << surface.get_height() << "x"
                                  << surface.get_depth() << " in " << surface.get_size()
                                  << " bytes, expected " << level.width << "x" << level.height << "x"
                                  << level.depth << " in " << level.size;
    if (static_cast<char*>(surface) == nullptr) return AssertionFailure() << "no pixels";
    if (level.bytes.empty()) return AssertionSuccess();
    return same_bytes(pixels_of(surface), level.bytes);
}

AssertionResult same_flags(const vDDSImage& image, const plain::Image& expected) {
    AssertionResult all = AssertionSuccess();
    for (const AssertionResult& one : {
             equal("format", static_cast<int>(image.get_format()), expected.format),
             equal("components", image.get_components(), expected.components),
             equal("bits", image.*dds_private::bits_per_component(), expected.bits_per_component),
             equal("compressed", image.is_compressed(), expected.compressed),
             equal("cubemap", image.is_cubemap(), expected.cubemap),
             equal("volume", image.is_volume(), expected.volume),
             equal("valid", image.is_valid(), expected.valid),
             equal("faces", (image.*dds_private::textures()).size(), expected.faces.size()),
         })
        if (!one) all = (all ? AssertionFailure() : all) << one.message();
    return all;
}

}  // namespace

Bytes complete_file(const FileHeader& header, std::uint32_t seed) {
    const Bytes headers = header_bytes(header);
    return dds_file(header, random_bytes(plain::file_size(headers) - headers.size(), seed));
}

bool load(vDDSImage& image, const Bytes& file, Flip flip, Read read) {
    const std::unique_ptr<std::uint8_t[]> block(new std::uint8_t[file.size()]);
    std::copy(file.begin(), file.end(), block.get());
    return image.loadFromBuffer(block.get(), static_cast<int>(file.size()), flip == Flip::yes,
                                read == Read::header_only);
}

vDDSImage loaded(const Bytes& file, Flip flip, Read read) {
    vDDSImage image;
    EXPECT_TRUE(load(image, file, flip, read));
    return image;
}

Bytes pixels_of(const vDDSSurface& surface) {
    const char* pixels = surface;
    const auto* first = reinterpret_cast<const std::uint8_t*>(pixels);
    return Bytes(first, first + surface.get_size());
}

vDDSSurface filled_surface(int width, int height, int depth, std::size_t size, std::uint32_t seed) {
    vDDSSurface surface(width, height, depth, size);
    const Bytes bytes = random_bytes(size, seed);
    std::copy(bytes.begin(), bytes.end(), static_cast<char*>(surface));
    return surface;
}

vDDSTexture filled_texture(std::size_t base_size, const std::vector<std::size_t>& mip_sizes,
                           std::uint32_t seed) {
    vDDSTexture texture(static_cast<int>(base_size), 1, 1, base_size);
    const Bytes bytes = random_bytes(base_size, seed);
    std::copy(bytes.begin(), bytes.end(), static_cast<char*>(texture));
    for (std::size_t size : mip_sizes)
        (texture.*dds_private::mipmaps())
            .push_back(filled_surface(static_cast<int>(size), 1, 1, size, ++seed));
    return texture;
}

AssertionResult same_bytes(const Bytes& bytes, const Bytes& expected) {
    if (bytes.size() != expected.size())
        return AssertionFailure() << bytes.size() << " bytes, expected " << expected.size();
    for (std::size_t i = 0; i < bytes.size(); ++i)
        if (bytes[i] != expected[i])
            return AssertionFailure() << "byte " << i << " of " << bytes.size() << " is " << int(bytes[i])
                                      << ", expected " << int(expected[i]);
    return AssertionSuccess();
}

AssertionResult same_face(const vDDSTexture& texture, const plain::Face& expected) {
    const int mipmaps = static_cast<int>(expected.size()) - 1;
    if (AssertionResult count = equal("mip levels", texture.get_num_mipmaps(), mipmaps); !count) return count;
    for (int i = -1; i < mipmaps; ++i) {
        const vDDSSurface& surface = i < 0 ? texture : texture.get_mipmap(i);
        if (AssertionResult level = same_level(surface, expected[static_cast<std::size_t>(i + 1)]); !level)
            return AssertionFailure() << "level " << i + 1 << ": " << level.message();
    }
    return AssertionSuccess();
}

AssertionResult same(const vDDSImage& image, const plain::Image& expected) {
    if (AssertionResult flags = same_flags(image, expected); !flags) return flags;
    for (std::size_t i = 0; i < expected.faces.size(); ++i)
        if (AssertionResult face = same_face(image[static_cast<int>(i)], expected.faces[i]); !face)
            return AssertionFailure() << "face " << i << ", " << face.message();
    return AssertionSuccess();
}

AssertionResult cleared(const vDDSImage& image, bool cubemap, bool volume) {
    plain::Image expected;
    expected.cubemap = cubemap;
    expected.volume = volume;
    return same_flags(image, expected);
}

AssertionResult loads_as_modelled(const Bytes& file, Flip flip, Read read) {
    const plain::Image expected = plain::load(file, flip == Flip::yes, read == Read::header_only);
    vDDSImage image;
    const LogCapture log;
    const bool result = load(image, file, flip, read);
    if (AssertionResult loads = equal("result", result, expected.loaded); !loads) return loads;
    std::vector<LogRecord> messages;
    for (const std::string& text : expected.messages) messages.push_back({"Default", 4, text});
    if (log.records() != messages) return AssertionFailure() << "other messages than expected";
    return same(image, expected);
}

std::string describe(const FileHeader& header) {
    std::ostringstream text;
    const FilePixelFormat& format = header.pixel_format;
    text << header.width << "x" << header.height << "x" << header.depth << ", mip count " << header.mip_count
         << std::hex << ", caps2 " << header.caps2 << ", flags " << format.flags << ", fourcc "
         << format.fourcc << std::dec << ", bits " << format.bit_count << ", dxgi " << header.dxgi_format
         << std::hex << ", masks " << format.red << " " << format.green << " " << format.blue << " "
         << format.alpha;
    return text.str();
}

}  // namespace support
