// SPDX-License-Identifier: Apache-2.0
// The fields of a .basis file: a header of 77 bytes, a table of slices, the data. All numbers are
// little-endian.
#ifndef TESTS_SUPPORT_BASIS_FILE_H
#define TESTS_SUPPORT_BASIS_FILE_H

#include <cstddef>
#include <cstdint>

#include "support/bytes.h"

namespace support::basis {

/// A number of `width` bytes at `offset`.
struct Field {
    std::size_t offset;
    std::size_t width;
};

namespace header {
constexpr std::size_t kSize = 77;
constexpr Field kSignature{0, 2};
constexpr Field kVersion{2, 2};
constexpr Field kHeaderSize{4, 2};
constexpr Field kHeaderCrc{6, 2};
constexpr Field kDataSize{8, 4};
constexpr Field kDataCrc{12, 2};
constexpr Field kTotalSlices{14, 3};
constexpr Field kTotalImages{17, 3};
constexpr Field kFormat{20, 1};
constexpr Field kFlags{21, 2};
constexpr Field kTextureType{23, 1};
constexpr Field kEndpointsCount{39, 2};
constexpr Field kEndpointsOffset{41, 4};
constexpr Field kEndpointsSize{45, 3};
constexpr Field kSelectorsCount{48, 2};
constexpr Field kSelectorsOffset{50, 4};
constexpr Field kSelectorsSize{54, 3};
constexpr Field kTablesOffset{57, 4};
constexpr Field kTablesSize{61, 4};
constexpr Field kTableOffset{65, 4};
}  // namespace header

namespace slice {
constexpr std::size_t kSize = 23;
constexpr Field kImage{0, 3};
constexpr Field kLevel{3, 1};
constexpr Field kFlags{4, 1};
constexpr Field kWidth{5, 2};
constexpr Field kHeight{7, 2};
constexpr Field kBlocksAcross{9, 2};
constexpr Field kBlocksDown{11, 2};
constexpr Field kDataOffset{13, 4};
constexpr Field kDataSize{17, 4};
constexpr Field kDataCrc{21, 2};
}  // namespace slice

constexpr std::uint32_t kFormatEtc1s = 0;
constexpr std::uint32_t kFormatUastc = 1;
constexpr std::uint32_t kFormatXuastc4x4 = 5;
constexpr std::uint32_t kFormatXuastc5x4 = 6;
constexpr std::uint32_t kFormatAstc4x4 = 19;
constexpr std::uint32_t kFormatAstc6x6 = 23;
constexpr std::uint32_t kFormatAstc12x12 = 32;

constexpr std::uint32_t kFlagEtc1s = 1;
constexpr std::uint32_t kFlagAlphaSlices = 4;
constexpr std::uint32_t kSliceFlagAlpha = 1;

constexpr std::uint32_t kType2D = 0;
constexpr std::uint32_t kType2DArray = 1;
constexpr std::uint32_t kTypeCubeMapArray = 2;
constexpr std::uint32_t kTypeVideo = 3;
constexpr std::uint32_t kTypeVolume = 4;

std::uint32_t get(const Bytes& file, Field field);
void put(Bytes& file, Field field, std::uint32_t value);

/// The field of entry `index` of the file's slice table.
Field of_slice(const Bytes& file, std::size_t index, Field field);

std::uint32_t total_slices(const Bytes& file);
std::uint32_t total_images(const Bytes& file);

/// A copy of the file with one header field changed.
Bytes with(Bytes file, Field field, std::uint32_t value);

/// A copy of the file with one field of one slice changed.
Bytes with_slice(Bytes file, std::size_t index, Field field, std::uint32_t value);

/// A copy of the file whose slice table lies at its end, `trailing` zero bytes before the end.
Bytes with_table_at_the_end(Bytes file, std::size_t trailing);

/// A file of one image and one level whose slice holds `data`.
struct SingleSlice {
    std::uint32_t format = kFormatUastc;
    std::uint32_t width = 4;
    std::uint32_t height = 4;
    std::uint32_t blocks_across = 1;
    std::uint32_t blocks_down = 1;
    Bytes data;
};
Bytes file_of(const SingleSlice& slice);

/// A Huffman table of `symbols` symbols, of which only the last has a code: `length` zero bits.
struct HuffmanTable {
    std::uint32_t symbols = 1;
    std::uint32_t length = 1;
};

/// The Huffman tables of an ETC1S file, in the order in which they are stored: those that its codebooks are
/// decoded with, then those for its slices.
enum Etc1sTable {
    kColour0Table,
    kColour1Table,
    kColour2Table,
    kIntensityTable,
    kSelectorCodebookTable,
    kPredictionTable,
    kEndpointTable,
    kSelectorTable,
    kRunTable,
    kEtc1sTables,
};

/// An ETC1S file of one block. Behind its tables all bits are zero, so that its decoder meets just the codes
/// that the tables have.
struct Etc1sFile {
    HuffmanTable tables[kEtc1sTables];
    bool raw_selectors = false;  ///< the selectors' table is there, but belongs to their raw bytes

    Etc1sFile() { tables[kPredictionTable].symbols = 4; }  // symbol 3: the block is not predicted
};
Bytes file_of(const Etc1sFile& file);

}  // namespace support::basis

#endif
