// SPDX-License-Identifier: Apache-2.0
// What a .basis file is.
#include <algorithm>
#include <string_view>

#include "info/BasisReading.h"
#include "vTextureInfo.h"

namespace {

using pelto::basis::Header;
using pelto::basis::Slice;

bool is_hdr(const pelto::basis::Codec& codec) {
    return std::string_view(codec.name).find("HDR") != std::string_view::npos;
}

}  // namespace

void vTextureInfo::_DescribeBasis(const pelto::info::ByteSource& source, const vTextureLimits& limits,
                                  bool codebooks) {
    const pelto::info::BasisReading reading = pelto::info::read_basis(source, limits, codebooks);
    check = reading.result;
    if (reading.slices.empty()) {
        problem = reading.result;
        return;
    }
    const Header& header = reading.header;
    const pelto::basis::Codec& codec = *pelto::basis::find_codec(header.codec);
    const bool volume = header.texture_type == pelto::basis::kVolume;
    const bool cube = header.texture_type == pelto::basis::kCubeMap;
    format = codec.name;
    dimension = volume ? 3 : 2;
    width = reading.slices.front().width;
    height = reading.slices.front().height;
    depth = volume ? header.total_images : 1;
    faces = cube ? 6 : 1;
    faceMask = cube ? 0x3F : 1;
    layers = volume ? 1 : std::max(header.total_images / faces, 1u);
    srgb = header.is_srgb();
    yFlipped = header.is_y_flipped();
    hasAlpha =
        header.has_alpha_entries() || std::any_of(reading.slices.begin(), reading.slices.end(),
                                                  [](const Slice& slice) { return slice.has_alpha(); });
    for (std::size_t i = 0; i < reading.slices.size(); ++i) {
        const Slice& slice = reading.slices[i];
        const bool whole = slice.data.end() <= source.size;
        bytes += slice.data.bytes;
        if (slice.image == 0) levels = std::max(levels, slice.level + 1);
        // The alpha of a level follows its colour, and the slices of a volume's level are one.
        const bool alpha = header.has_alpha_entries() && i % 2 != 0;
        const auto same = std::find_if(_images.begin(), _images.end(), [&](const vTextureLevel& image) {
            return image.level == slice.level;
        });
        vTextureLevel* const known = alpha                             ? &_images.back()
                                     : volume && same != _images.end() ? &*same
                                                                       : nullptr;
        if (known) {
            known->bytes += slice.data.bytes;
            known->whole = known->whole && whole;
            continue;
        }
        vTextureLevel image;
        image.layer = volume ? 0 : slice.image / faces;
        image.face = cube ? slice.image % faces : 0;
        image.level = slice.level;
        image.width = slice.width;
        image.height = slice.height;
        image.depth = depth;
        image.offset = slice.data.offset;
        image.bytes = slice.data.bytes;
        image.rowBytes = std::uint64_t{slice.blocks_across} * codec.stored_block_bytes;
        image.whole = whole;
        _images.push_back(image);
    }
    loads = check.ok();
    faithful = loads;
    if (is_hdr(codec)) {
        _Note(vTextureNote::eNoTargetForm, "is of an HDR codec, which has no BC1, BC3, BC4 or BC5 form");
    }
    _CompareLength(header.promised_length());
}
