// SPDX-License-Identifier: Apache-2.0
#include "vTextureInfo.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string_view>

#include "info/ByteSource.h"
#include "info/RegularFile.h"
#include "info/check_words.h"
#include "info/other_kinds.h"

using pelto::info::ByteSource;
using pelto::info::count_of;
using pelto::info::sum;

namespace {

constexpr const char* kCodeNames[] = {
    "layersDropped",        "partialCube",        "cubeFlagOnlyInExtension",
    "channelMasks",         "floatWithMasks",     "signLost",
    "threeBytePixels",      "paddedRows",         "palette",
    "leftoverBytes",        "staleFourCC",        "truncated",
    "inexactFlip",          "noTargetForm",       "lfsPointer",
    "cubeFlagOnlyInHeader", "depthWithoutVolume",
};
static_assert(std::size(kCodeNames) == vTextureNote::eDepthWithoutVolume + 1);

// The number of faces below `face` that a cube map has: its place among them.
std::uint32_t place_of_face(std::uint32_t mask, std::uint32_t face) {
    std::uint32_t place = 0;
    for (std::uint32_t i = 0; i < face; ++i) place += mask >> i & 1;
    return place;
}

std::uint32_t face_at_place(std::uint32_t mask, std::uint32_t place) {
    std::uint32_t face = 0;
    while (place_of_face(mask, face + 1) <= place) ++face;
    return face;
}

}  // namespace

namespace pelto::info {

ByteSource byte_source(const void* data, std::uint64_t size) {
    const auto* const bytes = static_cast<const unsigned char*>(data);
    const auto read = [=](std::uint64_t offset, void* to, std::size_t n) -> std::size_t {
        if (offset >= size) return 0;
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(n, size - offset));
        std::memcpy(to, bytes + offset, count);
        return count;
    };
    return {size, read, bytes};
}

}  // namespace pelto::info

const char* vTextureNote::CodeName() const { return kCodeNames[code]; }

vTextureInfo vTextureInfo::ReadFile(const std::string& path, const vTextureLimits& limits) {
    return _ReadFile(path, limits, false);
}

vTextureInfo vTextureInfo::CheckFile(const std::string& path, const vTextureLimits& limits) {
    return _ReadFile(path, limits, true);
}

vTextureInfo vTextureInfo::ReadBuffer(const void* data, std::uint64_t size, const vTextureLimits& limits) {
    return _Read(pelto::info::byte_source(data, size), limits, false);
}

vTextureInfo vTextureInfo::_ReadFile(const std::string& path, const vTextureLimits& limits, bool codebooks) {
    pelto::info::RegularFile file(path);
    vTextureInfo info;
    if (file.fault().empty()) info = _Read(file.source(), limits, codebooks);
    if (!file.fault().empty()) {
        info = vTextureInfo();
        info.problem = info.check = pelto::info::failure(vTextureCheck::eUnreadable, 0, file.fault());
    }
    return info;
}

vTextureInfo vTextureInfo::_Read(const ByteSource& source, const vTextureLimits& limits, bool codebooks) {
    using namespace pelto::info;
    vTextureInfo info;
    info.fileBytes = source.size;
    if (const auto fault = length_fault(source.size, limits)) {
        info.problem = info.check = *fault;
        return info;
    }
    const std::string start = source.start(kStartSize);
    const auto starts_with = [&](std::string_view magic) {
        return !start.empty() &&
               std::string_view(start).substr(0, magic.size()) == magic.substr(0, start.size());
    };
    if (starts_with(kDDSMagic)) {
        info.container = eDDS;
        info._DescribeDDS(source, limits);
    } else if (starts_with(kKTX2Magic)) {
        info.container = eKTX2;
        info._DescribeKTX2(source, limits);
    } else if (starts_with(kBasisMagic)) {
        info.container = eBasis;
        info._DescribeBasis(source, limits, codebooks);
    } else {
        info.problem = info.check = other_kind(start, "a DDS, .basis or KTX2 file", {});
        if (is_lfs_pointer(start)) info._Note(vTextureNote::eLFSPointer, info.problem.sentence);
    }
    if (!info.Described()) {
        info._spans.clear();
        info._images.clear();
    }
    return info;
}

bool vTextureInfo::HasNote(vTextureNote::ECode code) const {
    return std::any_of(notes.begin(), notes.end(),
                       [&](const vTextureNote& note) { return note.code == code; });
}

vTextureCheck::Result vTextureInfo::WhatIsMissing() const {
    vTextureCheck::Result result;
    if (missingBytes > 0) {
        const std::uint64_t images = GetNumImages();
        std::uint64_t first = 0;
        while (first < images && GetImage(first).whole) first += _ImagesStoredTogether(first);
        result = first < images ? _Lacks(GetImage(first))
                                : pelto::info::cut_short("its data", sum(fileBytes, missingBytes), fileBytes);
    }
    result.missingBytes = missingBytes;
    result.totalBytes = bytes;
    return result;
}

// All images of a packed level, of which image `index` is the first; else one.
std::uint64_t vTextureInfo::_ImagesStoredTogether(std::uint64_t index) const {
    const bool packed = _images.empty() && _spans[GetImage(index).level].stride == 0;
    return packed ? std::uint64_t{layers} * faces : 1;
}

vTextureCheck::Result vTextureInfo::_Lacks(const vTextureLevel& lost) const {
    std::string words = "level " + std::to_string(lost.level);
    if (faces > 1) words += " of face " + std::to_string(lost.face);
    if (layers > 1) words += " of layer " + std::to_string(lost.layer);
    const std::uint64_t end = sum(lost.offset, _images.empty() ? _spans[lost.level].stored : lost.bytes);
    vTextureCheck::Result result = pelto::info::cut_short(words, end, fileBytes);
    result.face = static_cast<int>(lost.face);
    result.level = static_cast<int>(lost.level);
    if (end - fileBytes < missingBytes) {
        result.sentence += "; " + std::to_string(missingBytes) + " bytes are missing in all";
    }
    return result;
}

std::uint64_t vTextureInfo::GetNumImages() const {
    if (!_images.empty()) return _images.size();
    return std::uint64_t{layers} * faces * _spans.size();
}

vTextureLevel vTextureInfo::GetImage(std::uint64_t index) const {
    if (!_images.empty()) return _images[static_cast<std::size_t>(index)];
    const std::uint64_t images = std::uint64_t{layers} * faces;
    const std::uint64_t image = _levelMajor ? index % images : index / _spans.size();
    // A KTX2 file holds its smallest level first.
    const std::uint64_t level = _levelMajor ? _spans.size() - 1 - index / images : index % _spans.size();
    return _Image(static_cast<std::uint32_t>(image / faces), static_cast<std::uint32_t>(image % faces),
                  static_cast<std::uint32_t>(level));
}

vTextureLevel vTextureInfo::GetLevel(std::uint32_t layer, std::uint32_t face, std::uint32_t level) const {
    const auto found = std::find_if(_images.begin(), _images.end(), [&](const vTextureLevel& image) {
        return image.layer == layer && image.face == face && image.level == level;
    });
    if (found != _images.end()) return *found;
    if (layer >= layers || face >= 6 || (faceMask >> face & 1) == 0 || level >= _spans.size()) return {};
    return _Image(layer, place_of_face(faceMask, face), level);
}

vTextureLevel vTextureInfo::_Image(std::uint32_t layer, std::uint32_t facePlace, std::uint32_t level) const {
    const LevelSpan& span = _spans[level];
    vTextureLevel image;
    image.layer = layer;
    image.face = face_at_place(faceMask, facePlace);
    image.level = level;
    image.width = span.width;
    image.height = span.height;
    image.depth = span.depth;
    image.offset =
        sum(span.offset, pelto::info::product(std::uint64_t{layer} * faces + facePlace, span.stride));
    image.bytes = span.bytes;
    image.rowBytes = span.rowBytes;
    image.whole = sum(image.offset, span.stored) <= fileBytes;
    return image;
}

void vTextureInfo::_Note(vTextureNote::ECode code, std::string text) {
    notes.push_back({code, std::move(text)});
}

// What the file lacks or has too much, measured at the end of its last level.
void vTextureInfo::_CompareLength(std::uint64_t end) {
    if (end > fileBytes) {
        missingBytes = end - fileBytes;
        _Note(vTextureNote::eTruncated,
              "ends " + count_of(missingBytes, "byte") + " before the end of its last level");
    } else if (end < fileBytes) {
        const std::uint64_t left = fileBytes - end;
        _Note(vTextureNote::eLeftoverBytes, count_of(left, "byte") + (left == 1 ? " follows" : " follow") +
                                                " its last level, which ends at byte " + std::to_string(end));
    }
}
