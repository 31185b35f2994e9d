// SPDX-License-Identifier: Apache-2.0

#include "basis/basis_header.h"

namespace pelto::basis {

std::uint32_t number_at(const unsigned char* start, Field field) {
    std::uint32_t number = 0;
    for (std::size_t i = field.bytes; i-- > 0;) number = number << 8 | start[field.offset + i];
    return number;
}

Header read_header(const unsigned char* start) {
    const auto number = [&](Field field) { return number_at(start, field); };
    Header header;
    header.version = number(header_field::kVersion);
    header.header_size = number(header_field::kHeaderSize);
    header.data_size = number(header_field::kDataSize);
    header.total_slices = number(header_field::kTotalSlices);
    header.total_images = number(header_field::kTotalImages);
    header.codec = number(header_field::kCodec);
    header.flags = number(header_field::kFlags);
    header.texture_type = number(header_field::kTextureType);
    header.endpoints = {number(header_field::kEndpointsOffset), number(header_field::kEndpointsSize)};
    header.selectors = {number(header_field::kSelectorsOffset), number(header_field::kSelectorsSize)};
    header.tables = {number(header_field::kTablesOffset), number(header_field::kTablesSize)};
    header.slice_table = number(header_field::kSliceTableOffset);
    return header;
}

Slice read_slice(const unsigned char* start) {
    const auto number = [&](Field field) { return number_at(start, field); };
    Slice slice;
    slice.image = number(slice_field::kImage);
    slice.level = number(slice_field::kLevel);
    slice.flags = number(slice_field::kFlags);
    slice.width = number(slice_field::kWidth);
    slice.height = number(slice_field::kHeight);
    slice.blocks_across = number(slice_field::kBlocksAcross);
    slice.blocks_down = number(slice_field::kBlocksDown);
    slice.data = {number(slice_field::kDataOffset), number(slice_field::kDataSize)};
    return slice;
}

}  // namespace pelto::basis
