// SPDX-License-Identifier: Apache-2.0
#include "texture/texture_words.h"

#include <algorithm>
#include <iterator>
#include <vTexturePixels.h>

namespace {

// By the number of the format.
constexpr const char* kLoaderFormats[] = {
    "LUMINANCE8", "RGB8", "RGBA8", "BGRA8", "RGBA16F", "R32F", "RGB32F",    "RGBA32F",   "DXT1",
    "DXT3",       "DXT5", "BC4U",  "BC4S",  "BC5U",    "BC5S", "BC6H_SF16", "BC6H_UF16",
};
static_assert(std::size(kLoaderFormats) == TOZ::SUPPORTED_FORMAT::BC6H_UF16 + 1);

// U+2212 is as wide as the plus sign.
constexpr const char* kFaces[] = {"+X", "\u2212X", "+Y", "\u2212Y", "+Z", "\u2212Z"};

bool has(const vPixelFormat& format, vPixelFormat::EKind kind) {
    return std::any_of(format.channels.begin(), format.channels.end(),
                       [&](const vPixelFormat::Channel& channel) { return channel.kind == kind; });
}

std::string cube_words(const vTextureInfo& info) {
    constexpr std::uint32_t kAllFaces = 0x3F;
    if (info.faceMask == 1) return "";
    if (info.faceMask == kAllFaces) return ", cube map";
    std::string words = ", cube map of";
    for (std::uint32_t face = 0; face < std::size(kFaces); ++face) {
        if (info.faceMask >> face & 1) words.append(" ").append(kFaces[face]);
    }
    return words;
}

}  // namespace

const char* container_name(vTextureInfo::EContainer container) {
    switch (container) {
        case vTextureInfo::eDDS:
            return "dds";
        case vTextureInfo::eBasis:
            return "basis";
        case vTextureInfo::eKTX2:
            return "ktx2";
        case vTextureInfo::eNoContainer:
            break;
    }
    return "";
}

const char* alpha_mode_name(vTextureInfo::EAlphaMode mode) {
    switch (mode) {
        case vTextureInfo::eAlphaStraight:
            return "straight";
        case vTextureInfo::eAlphaPremultiplied:
            return "premultiplied";
        case vTextureInfo::eAlphaOpaque:
            return "opaque";
        case vTextureInfo::eAlphaCustom:
            return "custom";
        case vTextureInfo::eAlphaUnknown:
            break;
    }
    return "unknown";
}

const char* status_name(vTextureCheck::EStatus status) {
    switch (status) {
        case vTextureCheck::eOk:
            return "ok";
        case vTextureCheck::eNotThisKind:
            return "not-this-kind";
        case vTextureCheck::eUnsupportedFormat:
            return "unsupported-format";
        case vTextureCheck::eTruncated:
            return "truncated";
        case vTextureCheck::eAbsurdSize:
            return "absurd-size";
        case vTextureCheck::eMalformedTable:
            return "malformed-table";
        case vTextureCheck::eUnreadable:
            break;
    }
    return "unreadable";
}

const char* loader_format_name(const vTextureInfo& info) {
    return info.loaderFormat != vPixelFormat::kRefused ? kLoaderFormats[info.loaderFormat] : nullptr;
}

const char* loader_format_name(TOZ::SUPPORTED_FORMAT::Type format) { return kLoaderFormats[format]; }

const char* face_name(std::uint32_t face) { return kFaces[face]; }

std::string counted_words(std::uint64_t count, const char* one) {
    return std::to_string(count).append(" ").append(one).append(count == 1 ? "" : "s");
}

std::string description_words(const vTextureInfo& info) {
    std::string words = info.format + cube_words(info);
    if (info.layers > 1) words += ", " + counted_words(info.layers, "layer");
    if (info.depth > 1) words += ", " + counted_words(info.depth, "slice");
    return words + ", " + counted_words(info.levels, "level");
}

std::string why_no_picture(const vPixelFormat& format) {
    switch (format.layout) {
        case vPixelFormat::eYUV:
        case vPixelFormat::eYUVHalf:
            return "YUV is not shown";
        case vPixelFormat::ePalette:
            return "palettes are not shown";
        case vPixelFormat::eASTC:
            return "ASTC is not shown";
        case vPixelFormat::ePlain:
        case vPixelFormat::eSubsampled:
        case vPixelFormat::eBlocks:
            break;
    }
    if (format.channels.Find('D') || format.channels.Find('S')) return "depth and stencil are not shown";
    if (has(format, vPixelFormat::eTypeless))
        return "typeless data are not shown: any reader may take them otherwise";
    if (has(format, vPixelFormat::eXRBias)) return "XR bias is not shown";
    if (format.layout == vPixelFormat::eBlocks || vTexturePixels::CanDecode(format)) return "";
    return std::string(format.name) + " is not shown";
}

std::string cut_short_words(std::uint64_t missing_bytes) {
    return "ends " + std::to_string(missing_bytes) +
           " bytes before what its header promises; they read as zero";
}

bool concerns_loader(const vTextureNote& note) {
    switch (note.code) {
        case vTextureNote::eLeftoverBytes:
        case vTextureNote::eTruncated:
        case vTextureNote::eInexactFlip:
        case vTextureNote::eNoTargetForm:
        case vTextureNote::eLFSPointer:
            return false;
        default:
            return true;
    }
}

std::string extent_words(std::uint32_t width, std::uint32_t height, std::uint32_t depth) {
    std::string words = std::to_string(width) + " x " + std::to_string(height);
    if (depth > 1) words += " x " + std::to_string(depth);
    return words;
}

std::string extent_words(const vTextureInfo& info) {
    return extent_words(info.width, info.height, info.depth);
}
