// SPDX-License-Identifier: Apache-2.0
#include "info/BasisReading.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string>

#include "basis/Transcoder.h"
#include "info/basis_table.h"
#include "info/check_words.h"
#include "info/other_kinds.h"

namespace pelto::info {

namespace {

using Result = vTextureCheck::Result;
using Bytes = std::unique_ptr<unsigned char[]>;

void copy_part(const ByteSource& source, std::uint64_t offset, std::uint64_t bytes, unsigned char* to) {
    if (offset >= source.size) return;
    source.read(offset, to + offset, static_cast<std::size_t>(std::min(bytes, source.size - offset)));
}

// The file in memory, of which the parts that are needed are read: the system lends the other pages without
// filling them.
Bytes needed_parts(const ByteSource& source, const basis::Header& header, bool codebooks) {
    Bytes bytes = std::make_unique_for_overwrite<unsigned char[]>(static_cast<std::size_t>(source.size));
    copy_part(source, 0, basis::kHeaderSize, bytes.get());
    copy_part(source, header.slice_table, std::uint64_t{header.total_slices} * basis::kSliceEntrySize,
              bytes.get());
    if (!codebooks) return bytes;
    for (const basis::Section& section : {header.endpoints, header.selectors, header.tables}) {
        copy_part(source, section.offset, section.bytes, bytes.get());
    }
    return bytes;
}

bool table_is_readable(const Result& result, const basis::Header& header, std::uint64_t size) {
    const bool complete = header.slice_entry(header.total_slices) <= size;
    const bool only_its_type =
        result.status == vTextureCheck::eUnsupportedFormat && !header.holds_2d_images();
    return complete && (result.ok() || result.status == vTextureCheck::eTruncated || only_its_type);
}

}  // namespace

BasisReading read_basis(const ByteSource& source, const vTextureLimits& limits, bool codebooks) {
    BasisReading reading;
    if (const auto fault = length_fault(source.size, limits)) {
        reading.result = *fault;
        return reading;
    }
    const std::string start = source.start(kStartSize);
    if (start.empty() || start.substr(0, kBasisMagic.size()) != kBasisMagic.substr(0, start.size())) {
        reading.result = other_kind(start, "a .basis file", kBasisMagic);
        return reading;
    }
    std::array<unsigned char, basis::kHeaderSize> header{};
    std::copy_n(start.begin(), std::min(start.size(), header.size()), header.begin());
    const std::uint64_t size = start.size() < header.size() ? start.size() : source.size;
    if (const auto fault = basis_header_fault(header.data(), size)) {
        reading.result = *fault;
        return reading;
    }
    reading.header = basis::read_header(header.data());

    Bytes parts;
    if (!source.data) parts = needed_parts(source, reading.header, codebooks);
    const unsigned char* const data = source.data ? source.data : parts.get();
    reading.result = check_basis_table(data, size, limits);
    if (table_is_readable(reading.result, reading.header, size)) {
        for (std::uint64_t i = 0; i < reading.header.total_slices; ++i) {
            reading.slices.push_back(basis::read_slice(data + reading.header.slice_entry(i)));
        }
    }
    if (codebooks && reading.result.ok() &&
        !basis::Transcoder({data, static_cast<std::uint32_t>(size)}).start()) {
        reading.result.status = vTextureCheck::eMalformedTable;
        reading.result.sentence = "is damaged: its codebooks cannot be decoded";
    }
    return reading;
}

}  // namespace pelto::info
