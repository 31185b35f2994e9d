// SPDX-License-Identifier: Apache-2.0
// vTextureInfo on any bytes: what it tells agrees with itself, with the table of levels, and with the check.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vDDSLevels.h>
#include <vTextureCheck.h>
#include <vTextureInfo.h>

#include "fuzz_input.h"

namespace {

// Of millions of images, these many are looked at.
constexpr std::uint64_t kMostImages = 2000;

void look_at_refused(const vTextureInfo& info) {
    require(!info.problem.sentence.empty(), "a refusal has a reason");
    require(info.GetNumImages() == 0, "what is refused has no levels");
    require(!info.loads && !info.faithful, "what is refused is not loaded");
}

void look_at_levels(const vTextureInfo& info) {
    const std::uint64_t count = info.GetNumImages();
    require(count == std::uint64_t{info.layers} * info.faces * info.levels, "levels are counted");
    std::uint64_t sum = 0;
    bool whole = true;
    for (std::uint64_t i = 0; i < std::min(count, kMostImages); ++i) {
        const vTextureLevel level = info.GetImage(i);
        const vTextureLevel same = info.GetLevel(level.layer, level.face, level.level);
        require(same.offset == level.offset && same.bytes == level.bytes, "a level is found by its numbers");
        require(level.width > 0 && level.height > 0 && level.depth > 0, "a level has pixels");
        sum += level.bytes;
        whole &= level.whole;
        if (!level.whole) continue;
        require(level.offset <= info.fileBytes, "a whole level lies in the file");
        if (info.container == vTextureInfo::eDDS) {
            require(level.bytes <= info.fileBytes - level.offset, "all of a whole level lies in the file");
        }
    }
    if (info.container != vTextureInfo::eDDS || count > kMostImages) return;
    require(sum == info.bytes, "levels have the bytes of all");
    require(whole == (info.missingBytes == 0), "something is missing where a level is not whole");
}

void look_at_table(const vTextureInfo& info, const unsigned char* data, std::size_t size) {
    const vTextureCheck::Result check = vTextureCheck::CheckDDSBuffer(data, size);
    vDDSLevels levels;
    levels.Read(data, size);
    const bool described = info.container == vTextureInfo::eDDS && info.Described();
    require(described == (levels.GetNumLevels() > 0), "what is described has a table");
    if (!described) return;
    require(info.loads == check.ok(), "check and description agree");
    require(levels.GetResult().ok() == (info.missingBytes == 0), "table and description agree");
    for (std::uint64_t i = 0; i < std::min(info.GetNumImages(), kMostImages); ++i) {
        const vTextureLevel image = info.GetImage(i);
        const vDDSLevel level = levels.GetLevel(static_cast<int>(image.face), static_cast<int>(image.level),
                                                static_cast<int>(image.layer));
        require(level.offset == image.offset && level.bytes == image.bytes, "a level lies where it is told");
        require((level.data != nullptr) == image.whole, "a whole level has data");
        require(!level.data || level.data == data + level.offset, "data lie at their offset");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // A block of exactly the file's size: a sanitizer sees a read beyond it.
    const std::unique_ptr<unsigned char[]> file(new unsigned char[size]);
    if (size > 0) std::memcpy(file.get(), data, size);
    const vTextureInfo info = vTextureInfo::ReadBuffer(file.get(), size);
    require(info.fileBytes == size, "the length is the file's");
    require(!info.faithful || info.loads, "what is faithful is loaded");
    require(info.WhatIsMissing().ok() == (info.missingBytes == 0), "what is missing has a place");
    for (const vTextureNote& note : info.notes) require(!note.text.empty(), "a note has a text");
    if (info.Described()) {
        look_at_levels(info);
    } else {
        look_at_refused(info);
    }
    look_at_table(info, file.get(), size);
    return 0;
}
