// SPDX-License-Identifier: Apache-2.0
// What a DDS file is, and where vDDSImage makes something else of it.
#include <algorithm>
#include <bit>
#include <climits>
#include <cmath>
#include <string>

#include "dds/pixel_layout.h"
#include "info/ByteSource.h"
#include "info/DDSHeaders.h"
#include "info/DDSTable.h"
#include "info/LevelExtent.h"
#include "info/check_words.h"
#include "info/other_kinds.h"
#include "vTextureInfo.h"

namespace {

using namespace pelto::info;
using pelto::dds::kCubeFaces;
using std::to_string;
using Format = vPixelFormat;

constexpr std::uint32_t kDepthFlag = 0x800000;  // DDSD_DEPTH
constexpr std::uint32_t kCubeFaceShift = 10;    // DDSCAPS2_CUBEMAP_POSITIVEX is bit 10
constexpr std::uint32_t kCubeFaceBits = 0x3F;
constexpr std::uint32_t kMiscTextureCube = 0x4;  // of the DX10 header
constexpr std::uint32_t kMiscAlphaMode = 0x7;
constexpr std::uint32_t kDimension1D = 2;
constexpr std::uint32_t kDimension3D = 4;
constexpr std::uint32_t kMostLayers = 65'536;  // Direct3D 11 allows 2,048
constexpr std::uint64_t kPaletteBytes = 1024;
constexpr const char* kFaceNames[] = {"+X", "-X", "+Y", "-Y", "+Z", "-Z"};

bool is_volume(const DDSHeaders& headers) {
    if (headers.has_extension()) return headers.extension.resourceDimension == kDimension3D;
    return (headers.header.caps2 & pelto::dds::kCaps2Volume) != 0 ||
           ((headers.header.flags & kDepthFlag) != 0 && headers.header.depth > 1);
}

// Bit 0 for +X to bit 5 for -Z.
std::uint32_t cube_faces(const DDSHeaders& headers) {
    constexpr std::uint32_t kOneFace = 1;
    if (is_volume(headers)) return kOneFace;
    if (headers.has_extension()) {
        return (headers.extension.miscFlag & kMiscTextureCube) != 0 ? kCubeFaceBits : kOneFace;
    }
    if ((headers.header.caps2 & pelto::dds::kCaps2Cubemap) == 0) return kOneFace;
    const std::uint32_t faces = headers.header.caps2 >> kCubeFaceShift & kCubeFaceBits;
    return faces != 0 ? faces : kCubeFaceBits;
}

bool has_palette(const DDSHeaders& headers, const Format& format) {
    return format.layout == Format::ePalette && !headers.has_extension();
}

vTextureInfo::EAlphaMode alpha_mode(const DDSHeaders& headers) {
    if (headers.has_extension()) {
        const std::uint32_t mode = headers.extension.miscFlags2 & kMiscAlphaMode;
        return mode <= vTextureInfo::eAlphaCustom ? static_cast<vTextureInfo::EAlphaMode>(mode)
                                                  : vTextureInfo::eAlphaUnknown;
    }
    const vLegacyFormat* const legacy =
        headers.has_fourcc() ? vTextureFormats::FindFourCC(headers.header.pixelFormat.dwFourCC) : nullptr;
    return legacy && legacy->premultiplied ? vTextureInfo::eAlphaPremultiplied : vTextureInfo::eAlphaUnknown;
}

std::uint64_t padded(std::uint64_t row_bytes) { return (row_bytes + 3) / 4 * 4; }

// The masks that the loader applies, and whether its channels are then what the masks mean: it moves each
// channel down to the lowest bit and keeps 8 bits, where all three colours have a mask.
bool masks_are_kept(const TOZ::DDS_PIXELFORMAT& record, const Format& format,
                    TOZ::SUPPORTED_FORMAT::Type loaded) {
    if (loaded == TOZ::SUPPORTED_FORMAT::LUMINANCE8) {
        const std::string name = format.name;
        return name == "L8_UNORM" || name == "R8_UNORM";
    }
    const auto whole = [](std::uint32_t mask) { return mask != 0 && mask >> std::countr_zero(mask) == 0xFF; };
    const bool colours = whole(record.dwRBitMask) && whole(record.dwGBitMask) && whole(record.dwBBitMask);
    return colours && (loaded == TOZ::SUPPORTED_FORMAT::RGB8 || whole(record.dwABitMask));
}

// vDDSImage reorders pixels where all colours have masks; these may name the bytes as they lie.
bool masks_move_bytes(const TOZ::DDS_PIXELFORMAT& record, bool has_alpha) {
    if (record.dwRBitMask == 0 || record.dwGBitMask == 0 || record.dwBBitMask == 0) return false;
    const bool colours_lie_so =
        record.dwRBitMask == 0xFF && record.dwGBitMask == 0xFF00 && record.dwBBitMask == 0xFF0000;
    return !colours_lie_so || (has_alpha && record.dwABitMask != 0xFF000000);
}

std::string face_names(std::uint32_t mask) {
    std::string names;
    for (int face = 0; face < kCubeFaces; ++face) {
        if ((mask >> face & 1) == 0) continue;
        if (!names.empty()) names += ", ";
        names += kFaceNames[face];
    }
    return names;
}

// vDDSImage::flip leaves blocks of a partial row or column, a middle row of blocks, and all slices but the
// first.
bool flip_is_exact(const vTextureInfo& info) {
    if (info.pixels.layout != Format::eBlocks || info.height == 1) return true;
    const bool mirrored = info.loaderFormat <= TOZ::SUPPORTED_FORMAT::BC5S;
    return mirrored && info.depth == 1 && info.width % 4 == 0 && info.height % 8 == 0;
}

bool lies_alike(const vTextureInfo& info, const DDSTable& loaded) {
    if (loaded.levels.size() != info.GetNumImages() || loaded.faces != static_cast<int>(info.faces))
        return false;
    for (std::size_t i = 0; i < loaded.levels.size(); ++i) {
        const vTextureLevel meant = info.GetImage(i);
        if (loaded.levels[i].offset != meant.offset || loaded.levels[i].bytes != meant.bytes) return false;
    }
    return true;
}

}  // namespace

void vTextureInfo::_DescribeDDS(const ByteSource& source, const vTextureLimits& limits) {
    const std::string start = source.start(pelto::dds::kHeadersSize);
    DDSHeaders headers;
    if (const auto fault = read_dds_headers(start, headers)) {
        problem = check = *fault;
        return;
    }
    const pelto::dds::Header& header = headers.header;
    const bool known = find_dds_format(headers, pixels);
    const bool volume = is_volume(headers);
    depth = volume && header.depth <= INT_MAX ? std::max(header.depth, 1u) : 1;
    layers = headers.has_extension() ? std::max(headers.extension.arraySize, 1u) : 1;
    faceMask = cube_faces(headers);
    if (!known) {
        problem = failure(vTextureCheck::eUnsupportedFormat, dds_format_offset(headers),
                          dds_format_words(headers) + " is not known");
    } else if (const auto fault = dds_extent_fault(header, depth, limits)) {
        problem = *fault;
    } else if (layers > kMostLayers) {
        problem = failure(vTextureCheck::eAbsurdSize, kDDSArraySize,
                          "its " + to_string(layers) + " layers at byte " + to_string(kDDSArraySize) +
                              " are more than " + to_string(kMostLayers));
    }
    const DDSTable loaded =
        read_dds_table(reinterpret_cast<const unsigned char*>(start.data()), start.size(), fileBytes, limits);
    check = loaded.result;
    _NoteHabitsOfTheLoader(headers, loaded.has_format ? static_cast<int>(loaded.format) : Format::kRefused);
    if (!problem.ok()) return;

    format = pixels.name;
    dxgi = pixels.dxgi;
    srgb = pixels.srgb;
    hasAlpha = pixels.channels.Find('A') != nullptr;
    dimension = volume                                                                           ? 3
                : headers.has_extension() && headers.extension.resourceDimension == kDimension1D ? 1
                                                                                                 : 2;
    width = header.width;
    height = dimension == 1 ? 1 : header.height;
    faces = static_cast<std::uint32_t>(std::popcount(faceMask));
    levels = std::max(header.mipMapCount, 1u);
    alphaMode = alpha_mode(headers);

    const std::uint64_t data = (headers.has_extension() ? pelto::dds::kHeadersSize : kDDSHeaderEnd) +
                               (has_palette(headers, pixels) ? kPaletteBytes : 0);
    _LayOutChain(data, false);
    if (!headers.has_fourcc() && levels == 1 && data + bytes != fileBytes) {
        const std::uint64_t tight = bytes;
        _LayOutChain(data, true);
        if (bytes == tight || data + bytes != fileBytes) {
            _LayOutChain(data, false);
        } else {
            _Note(vTextureNote::ePaddedRows, "its rows are padded to " + to_string(_spans[0].rowBytes) +
                                                 " bytes, which vDDSImage takes for pixels");
        }
    }
    if (bytes == kUncountable || bytes > limits.maxBytes) {
        problem = too_many_bytes(bytes, kDDSWidth, limits.maxBytes);
        return;
    }
    loads = check.ok();
    if (loaderFormat != Format::kRefused && header.depth > 1 && header.depth <= INT_MAX && !volume) {
        _Note(vTextureNote::eDepthWithoutVolume,
              "its header gives a depth of " + to_string(header.depth) +
                  " without being a volume's: vDDSImage reads that many slices");
    }
    _CompareLength(data + bytes);
    if (loaderFormat != Format::kRefused && !flip_is_exact(*this)) {
        _Note(vTextureNote::eInexactFlip, "vDDSImage::flip does not mirror its base level of " +
                                              to_string(width) + " x " + to_string(height) +
                                              " pixels exactly");
    }
    const auto harmless = [](const vTextureNote& note) {
        return note.code == vTextureNote::eLeftoverBytes || note.code == vTextureNote::eInexactFlip;
    };
    faithful = loads && lies_alike(*this, loaded) && std::all_of(notes.begin(), notes.end(), harmless);
}

// Face after face, layer after layer, each a chain of levels.
void vTextureInfo::_LayOutChain(std::uint64_t data, bool rowsArePadded) {
    _spans.clear();
    std::uint64_t chain = 0;
    LevelExtent extent = {width, height, depth};
    for (std::uint32_t level = 0; level < levels; ++level, extent = extent.next()) {
        const auto [w, h, d] = extent;
        LevelSpan span{};
        span.width = w;
        span.height = h;
        span.depth = d;
        span.rowBytes = rowsArePadded ? padded(pixels.RowBytes(w)) : pixels.RowBytes(w);
        const std::uint64_t slice = rowsArePadded ? product(span.rowBytes, h) : pixels.SliceBytes(w, h);
        span.bytes = span.stored = product(slice, d);
        span.offset = sum(data, chain);
        chain = sum(chain, span.bytes);
        _spans.push_back(span);
    }
    for (LevelSpan& span : _spans) span.stride = chain;
    bytes = product(chain, std::uint64_t{layers} * faces);
    if (sum(bytes, data) == kUncountable) bytes = kUncountable;
}

void vTextureInfo::_NoteHabitsOfTheLoader(const DDSHeaders& headers, int loaded) {
    loaderFormat = loaded;
    const auto type = static_cast<TOZ::SUPPORTED_FORMAT::Type>(loaded);
    const TOZ::DDS_PIXELFORMAT& record = headers.header.pixelFormat;
    const bool loader_sees_cube = (headers.header.caps2 & pelto::dds::kCaps2Cubemap) != 0;
    const int count = std::popcount(faceMask);
    if (count < kCubeFaces && loader_sees_cube && !headers.has_extension() && !is_volume(headers)) {
        _Note(vTextureNote::ePartialCube, std::string("is a cube map with the ") +
                                              (count == 1 ? "face " : "faces ") + face_names(faceMask) +
                                              " alone, where vDDSImage expects six");
    }
    if (loaded == Format::kRefused) return;
    if (layers > 1) {
        _Note(vTextureNote::eLayersDropped,
              "has " + to_string(layers) + " layers, of which vDDSImage reads the first alone");
    }
    if (headers.has_extension() && count == kCubeFaces && !loader_sees_cube) {
        _Note(vTextureNote::eCubeFlagOnlyInExtension,
              "only its DX10 header says that it is a cube map: vDDSImage reads one face");
    }
    if (headers.has_extension() && count < kCubeFaces && loader_sees_cube) {
        _Note(vTextureNote::eCubeFlagOnlyInHeader,
              "its DX10 header does not say that it is a cube map: vDDSImage reads six faces all the same");
    }
    if (headers.has_stale_fourcc()) {
        _Note(vTextureNote::eStaleFourCC,
              "its FourCC is DX10 without the flag for it: vDDSImage skips 20 bytes of the first level");
    }
    const bool has_masks = pixels.blockBytes != 0 && !headers.has_fourcc();
    if (pixels.layout == Format::ePalette) {
        _Note(vTextureNote::ePalette, "holds indices into a palette, which vDDSImage takes for grey");
    } else if (!headers.has_fourcc() && (!has_masks || !masks_are_kept(record, pixels, type))) {
        _Note(vTextureNote::eChannelMasks,
              has_masks ? std::string("is ").append(pixels.name) +
                              ", whose channels vDDSImage does not move as the masks mean"
                        : "its masks name no channels; vDDSImage takes its bytes as they lie");
    }
    if (loaded == TOZ::SUPPORTED_FORMAT::BGRA8) {
        _Note(vTextureNote::eThreeBytePixels, "has four bytes a pixel, which vDDSImage reads as three");
    }
    const bool floats = loaded == TOZ::SUPPORTED_FORMAT::RGBA16F || loaded == TOZ::SUPPORTED_FORMAT::RGB32F ||
                        loaded == TOZ::SUPPORTED_FORMAT::RGBA32F;
    const bool three = loaded == TOZ::SUPPORTED_FORMAT::RGB32F;
    if (headers.has_fourcc() && floats && masks_move_bytes(record, !three)) {
        _Note(vTextureNote::eFloatWithMasks,
              "its header has channel masks, which vDDSImage applies to its floats");
    }
    const bool is_signed = pixels.blockBytes != 0 && pixels.channels.list[0].kind == Format::eSNorm;
    if (is_signed && type != TOZ::SUPPORTED_FORMAT::BC4S && type != TOZ::SUPPORTED_FORMAT::BC5S) {
        _Note(vTextureNote::eSignLost, "holds signed numbers, which vDDSImage takes for unsigned ones");
    }
}
