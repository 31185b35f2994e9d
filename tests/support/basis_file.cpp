// SPDX-License-Identifier: Apache-2.0

#include "support/basis_file.h"

#include <algorithm>
#include <iterator>

namespace support::basis {

std::uint32_t get(const Bytes& file, Field field) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < field.width; ++i)
        value |= static_cast<std::uint32_t>(file.at(field.offset + i)) << (8 * i);
    return value;
}

void put(Bytes& file, Field field, std::uint32_t value) {
    for (std::size_t i = 0; i < field.width; ++i)
        file.at(field.offset + i) = static_cast<std::uint8_t>(value >> (8 * i));
}

Field of_slice(const Bytes& file, std::size_t index, Field field) {
    return {get(file, header::kTableOffset) + index * slice::kSize + field.offset, field.width};
}

std::uint32_t total_slices(const Bytes& file) { return get(file, header::kTotalSlices); }

std::uint32_t total_images(const Bytes& file) { return get(file, header::kTotalImages); }

Bytes with(Bytes file, Field field, std::uint32_t value) {
    put(file, field, value);
    return file;
}

Bytes with_slice(Bytes file, std::size_t index, Field field, std::uint32_t value) {
    put(file, of_slice(file, index, field), value);
    return file;
}

Bytes with_table_at_the_end(Bytes file, std::size_t trailing) {
    const std::size_t table = get(file, header::kTableOffset);
    const std::size_t size = total_slices(file) * slice::kSize;
    put(file, header::kTableOffset, static_cast<std::uint32_t>(file.size()));
    const Bytes entries(file.begin() + static_cast<std::ptrdiff_t>(table),
                        file.begin() + static_cast<std::ptrdiff_t>(table + size));
    file.insert(file.end(), entries.begin(), entries.end());
    file.resize(file.size() + trailing);
    put(file, header::kDataSize, static_cast<std::uint32_t>(file.size() - header::kSize));
    return file;
}

Bytes file_of(const SingleSlice& one) {
    constexpr std::size_t kTable = header::kSize;
    constexpr std::size_t kData = kTable + slice::kSize;
    Bytes file(kData + one.data.size());
    std::copy(one.data.begin(), one.data.end(), file.begin() + kData);
    put(file, header::kSignature, 0x4273);
    put(file, header::kVersion, 0x13);
    put(file, header::kHeaderSize, header::kSize);
    put(file, header::kDataSize, static_cast<std::uint32_t>(slice::kSize + one.data.size()));
    put(file, header::kTotalSlices, 1);
    put(file, header::kTotalImages, 1);
    put(file, header::kFormat, one.format);
    put(file, header::kTableOffset, kTable);
    put(file, of_slice(file, 0, slice::kWidth), one.width);
    put(file, of_slice(file, 0, slice::kHeight), one.height);
    put(file, of_slice(file, 0, slice::kBlocksAcross), one.blocks_across);
    put(file, of_slice(file, 0, slice::kBlocksDown), one.blocks_down);
    put(file, of_slice(file, 0, slice::kDataOffset), kData);
    put(file, of_slice(file, 0, slice::kDataSize), static_cast<std::uint32_t>(one.data.size()));
    return file;
}

namespace {

class BitWriter {
public:
    void put(std::uint32_t value, unsigned int bits) {
        for (unsigned int i = 0; i < bits; ++i, ++count_) {
            if (count_ % 8 == 0) bytes_.push_back(0);
            bytes_.back() = static_cast<std::uint8_t>(bytes_.back() | (value >> i & 1) << count_ % 8);
        }
    }

    // The lengths of the codes are themselves Huffman-coded: 0 and `length` in a bit each.
    void put(const HuffmanTable& table) {
        constexpr std::uint32_t kOrder[] = {17, 18, 19, 20, 0,  8, 7,  9, 6,  10, 5,
                                            11, 4,  12, 3,  13, 2, 14, 1, 15, 16};
        put(table.symbols, 14);
        put(std::size(kOrder), 5);
        const bool zeros = table.symbols > 1;
        for (const std::uint32_t length : kOrder) {
            put(length == table.length || (zeros && length == 0) ? 1 : 0, 3);
        }
        put(0, table.symbols - 1);
        put(zeros ? 1 : 0, 1);
    }

    /// The bytes so far, and some more of zero.
    Bytes bytes() const {
        Bytes all = bytes_;
        all.resize(all.size() + 16);
        return all;
    }

private:
    Bytes bytes_;
    std::size_t count_ = 0;
};

}  // namespace

Bytes file_of(const Etc1sFile& etc1s) {
    BitWriter endpoints;
    for (int i = kColour0Table; i <= kIntensityTable; ++i) endpoints.put(etc1s.tables[i]);
    BitWriter selectors;
    selectors.put(etc1s.raw_selectors ? 4 : 0, 3);
    selectors.put(etc1s.tables[kSelectorCodebookTable]);
    BitWriter tables;
    for (int i = kPredictionTable; i <= kRunTable; ++i) tables.put(etc1s.tables[i]);
    tables.put(64, 13);  // the length of the history of selectors

    SingleSlice one;
    one.format = kFormatEtc1s;
    one.data = Bytes(16);
    Bytes file = file_of(one);
    put(file, header::kFlags, kFlagEtc1s);
    put(file, header::kEndpointsCount, 1);
    put(file, header::kSelectorsCount, 2);
    const struct {
        const BitWriter& bits;
        Field offset;
        Field size;
    } sections[] = {{endpoints, header::kEndpointsOffset, header::kEndpointsSize},
                    {selectors, header::kSelectorsOffset, header::kSelectorsSize},
                    {tables, header::kTablesOffset, header::kTablesSize}};
    for (const auto& section : sections) {
        const Bytes bytes = section.bits.bytes();
        put(file, section.offset, static_cast<std::uint32_t>(file.size()));
        put(file, section.size, static_cast<std::uint32_t>(bytes.size()));
        file.insert(file.end(), bytes.begin(), bytes.end());
    }
    put(file, header::kDataSize, static_cast<std::uint32_t>(file.size() - header::kSize));
    return file;
}

}  // namespace support::basis
