#include "support/basis_file.h"

#include <algorithm>

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

}  // namespace support::basis
