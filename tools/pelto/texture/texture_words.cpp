// SPDX-License-Identifier: Apache-2.0
#include "texture/texture_words.h"

#include <iterator>

namespace {

// By the number of the format.
constexpr const char* kLoaderFormats[] = {
    "LUMINANCE8", "RGB8", "RGBA8", "BGRA8", "RGBA16F", "R32F", "RGB32F",    "RGBA32F",   "DXT1",
    "DXT3",       "DXT5", "BC4U",  "BC4S",  "BC5U",    "BC5S", "BC6H_SF16", "BC6H_UF16",
};
static_assert(std::size(kLoaderFormats) == TOZ::SUPPORTED_FORMAT::BC6H_UF16 + 1);

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

std::string extent_words(std::uint32_t width, std::uint32_t height, std::uint32_t depth) {
    std::string words = std::to_string(width) + " x " + std::to_string(height);
    if (depth > 1) words += " x " + std::to_string(depth);
    return words;
}

std::string extent_words(const vTextureInfo& info) {
    return extent_words(info.width, info.height, info.depth);
}
