// SPDX-License-Identifier: Apache-2.0
// What a .basis file says of itself: a header of 77 bytes, and a table with an entry for each slice, as the
// "Basis Universal supercompressed GPU texture codec" specification gives them. All numbers are
// little-endian.
//
// Everything here is safe on any bytes, and believes none of them: to hold the numbers against the file's
// true length is the caller's part.
#ifndef PELTO_BASIS_BASIS_HEADER_H
#define PELTO_BASIS_BASIS_HEADER_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace pelto::basis {

/// A number: where it lies, from the start of the header or of its table entry, and how many bytes it has.
struct Field {
    std::size_t offset;
    std::size_t bytes;

    constexpr std::size_t end() const { return offset + bytes; }
};

constexpr std::string_view kSignature = "sB";  ///< the first bytes of the file
constexpr std::size_t kHeaderSize = 77;
constexpr std::uint32_t kSupportedVersion = 0x13;

namespace header_field {
constexpr Field kVersion = {2, 2};
constexpr Field kHeaderSize = {4, 2};
constexpr Field kDataSize = {8, 4};
constexpr Field kTotalSlices = {14, 3};
constexpr Field kTotalImages = {17, 3};
constexpr Field kCodec = {20, 1};
constexpr Field kFlags = {21, 2};
constexpr Field kTextureType = {23, 1};
constexpr Field kEndpointsOffset = {41, 4};
constexpr Field kEndpointsSize = {45, 3};
constexpr Field kSelectorsOffset = {50, 4};
constexpr Field kSelectorsSize = {54, 3};
constexpr Field kTablesOffset = {57, 4};
constexpr Field kTablesSize = {61, 4};
constexpr Field kSliceTableOffset = {65, 4};
}  // namespace header_field

constexpr std::size_t kSliceEntrySize = 23;

namespace slice_field {
constexpr Field kImage = {0, 3};
constexpr Field kLevel = {3, 1};
constexpr Field kFlags = {4, 1};
constexpr Field kWidth = {5, 2};
constexpr Field kHeight = {7, 2};
constexpr Field kBlocksAcross = {9, 2};
constexpr Field kBlocksDown = {11, 2};
constexpr Field kDataOffset = {13, 4};
constexpr Field kDataSize = {17, 4};
}  // namespace slice_field

/// How the pixels of a file are compressed.
struct Codec {
    const char* name;
    std::uint32_t block_width;  ///< pixels
    std::uint32_t block_height;
    std::uint32_t stored_block_bytes;  ///< of a block as it lies in the file; 0 where blocks are packed
};

/// By the codec's number in the header.
constexpr std::array<Codec, 33> kCodecs = {{
    {"ETC1S", 4, 4, 0},
    {"UASTC LDR 4x4", 4, 4, 16},
    {"UASTC HDR 4x4", 4, 4, 16},
    {"ASTC HDR 6x6", 6, 6, 16},
    {"UASTC HDR 6x6", 6, 6, 0},
    {"XUASTC LDR 4x4", 4, 4, 0},
    {"XUASTC LDR 5x4", 5, 4, 0},
    {"XUASTC LDR 5x5", 5, 5, 0},
    {"XUASTC LDR 6x5", 6, 5, 0},
    {"XUASTC LDR 6x6", 6, 6, 0},
    {"XUASTC LDR 8x5", 8, 5, 0},
    {"XUASTC LDR 8x6", 8, 6, 0},
    {"XUASTC LDR 10x5", 10, 5, 0},
    {"XUASTC LDR 10x6", 10, 6, 0},
    {"XUASTC LDR 8x8", 8, 8, 0},
    {"XUASTC LDR 10x8", 10, 8, 0},
    {"XUASTC LDR 10x10", 10, 10, 0},
    {"XUASTC LDR 12x10", 12, 10, 0},
    {"XUASTC LDR 12x12", 12, 12, 0},
    {"ASTC LDR 4x4", 4, 4, 16},
    {"ASTC LDR 5x4", 5, 4, 16},
    {"ASTC LDR 5x5", 5, 5, 16},
    {"ASTC LDR 6x5", 6, 5, 16},
    {"ASTC LDR 6x6", 6, 6, 16},
    {"ASTC LDR 8x5", 8, 5, 16},
    {"ASTC LDR 8x6", 8, 6, 16},
    {"ASTC LDR 10x5", 10, 5, 16},
    {"ASTC LDR 10x6", 10, 6, 16},
    {"ASTC LDR 8x8", 8, 8, 16},
    {"ASTC LDR 10x8", 10, 8, 16},
    {"ASTC LDR 10x10", 10, 10, 16},
    {"ASTC LDR 12x10", 12, 10, 16},
    {"ASTC LDR 12x12", 12, 12, 16},
}};

/// The codec of this number; null where there is none.
constexpr const Codec* find_codec(std::uint32_t number) {
    return number < kCodecs.size() ? &kCodecs[number] : nullptr;
}

/// By the texture type's number in the header.
enum TextureType : std::uint32_t { k2D, k2DArray, kCubeMap, kVideo, kVolume };
constexpr std::array<const char*, 5> kTextureTypeNames = {"2D", "2D array", "cube map", "video", "volume"};

/// Bytes of the file.
struct Section {
    std::uint32_t offset;
    std::uint32_t bytes;

    std::uint64_t end() const { return std::uint64_t{offset} + bytes; }
};

struct Header {
    std::uint32_t version;
    std::uint32_t header_size;
    std::uint32_t data_size;     ///< bytes that are promised behind the header
    std::uint32_t total_slices;  ///< entries in the table
    std::uint32_t total_images;  ///< a cube map has six, a volume and a video one for each layer or frame
    std::uint32_t codec;
    std::uint32_t flags;
    std::uint32_t texture_type;
    Section endpoints;  ///< of ETC1S: its codebooks, and the tables that slices are decoded with
    Section selectors;
    Section tables;
    std::uint32_t slice_table;  ///< the offset of its first entry

    std::uint64_t promised_length() const { return std::uint64_t{kHeaderSize} + data_size; }

    bool is_etc1s() const { return codec == 0; }
    bool has_etc1s_flag() const { return (flags & 1) != 0; }
    bool is_y_flipped() const { return (flags & 2) != 0; }
    bool shares_codebooks() const { return (flags & 8) != 0; }  ///< with another file
    bool is_srgb() const { return (flags & 16) != 0; }

    /// ETC1S stores alpha apart: every level has two entries, its colour's and its alpha's.
    bool has_alpha_entries() const { return is_etc1s() && (flags & 4) != 0; }

    bool holds_2d_images() const { return texture_type == k2D || texture_type == k2DArray; }

    /// Bytes from the start of the file to an entry of the table.
    std::uint64_t slice_entry(std::uint64_t index) const { return slice_table + index * kSliceEntrySize; }
};

/// One level of one image, or in ETC1S its colour or alpha alone.
struct Slice {
    std::uint32_t image;
    std::uint32_t level;
    std::uint32_t flags;
    std::uint32_t width;  ///< pixels
    std::uint32_t height;
    std::uint32_t blocks_across;
    std::uint32_t blocks_down;
    Section data;

    /// Of ETC1S: whether this is alpha alone. Of other codecs: whether its pixels have alpha.
    bool has_alpha() const { return (flags & 1) != 0; }

    std::uint64_t blocks() const { return std::uint64_t{blocks_across} * blocks_down; }
};

/// The number that lies at its field in the header or entry at `start`.
std::uint32_t number_at(const unsigned char* start, Field field);

/// Reads the kHeaderSize bytes at `start`.
Header read_header(const unsigned char* start);

/// Reads the kSliceEntrySize bytes at `start`.
Slice read_slice(const unsigned char* start);

}  // namespace pelto::basis

#endif
