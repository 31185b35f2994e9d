// SPDX-License-Identifier: Apache-2.0

#include "info/basis_table.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "basis/basis_header.h"
#include "info/check_words.h"

namespace pelto::info {

namespace {

using Result = vTextureCheck::Result;
using basis::Codec;
using basis::Field;
using basis::Header;
using basis::Section;
using basis::Slice;
namespace header_field = basis::header_field;
namespace slice_field = basis::slice_field;

constexpr std::uint32_t kMostLevels = 16;

// Of a level transcoded to BC3 or BC5. The loader counts them in 31 bits.
constexpr std::uint64_t kBytesPerBlock = 16;
constexpr std::uint64_t kMostLevelBytes = INT32_MAX;

Result malformed(std::uint64_t offset, std::string sentence) {
    sentence += ", says byte " + std::to_string(offset);
    return failure(vTextureCheck::eMalformedTable, offset, std::move(sentence));
}

Result unsupported(Field field, const char* what, std::uint32_t value) {
    return failure(vTextureCheck::eUnsupportedFormat, field.offset,
                   std::string("the ").append(what) + " " + std::to_string(value) + " at byte " +
                       std::to_string(field.offset) + " is not supported");
}

// Whether the bytes start a .basis file, and there are enough for its header.
std::optional<Result> start_fault(const unsigned char* data, std::uint64_t length) {
    const std::string_view start(reinterpret_cast<const char*>(data),
                                 std::min<std::uint64_t>(length, basis::kSignature.size()));
    if (start.empty()) return failure(vTextureCheck::eNotThisKind, 0, "is empty");
    if (start != basis::kSignature.substr(0, start.size())) {
        return failure(vTextureCheck::eNotThisKind, 0,
                       "is not a .basis file: it starts with " + in_quotes(start) + " instead of " +
                           in_quotes(basis::kSignature));
    }
    if (length < basis::kHeaderSize) return cut_short("its header", basis::kHeaderSize, length);
    if (length > UINT32_MAX) {
        return failure(vTextureCheck::eAbsurdSize, 0, "has 4 GiB or more, which no .basis file has");
    }
    return std::nullopt;
}

std::optional<Result> format_fault(const Header& header) {
    if (header.version != basis::kSupportedVersion) {
        return unsupported(header_field::kVersion, "version", header.version);
    }
    if (header.header_size != basis::kHeaderSize) {
        return malformed(header_field::kHeaderSize.offset,
                         "its header has " + std::to_string(header.header_size) + " bytes instead of " +
                             std::to_string(basis::kHeaderSize));
    }
    if (!basis::find_codec(header.codec)) return unsupported(header_field::kCodec, "codec", header.codec);
    if (header.texture_type >= basis::kTextureTypeNames.size()) {
        return malformed(header_field::kTextureType.offset, "it has no known texture type");
    }
    if (header.has_etc1s_flag() != header.is_etc1s()) {
        return malformed(header_field::kFlags.offset, "its flags contradict its codec");
    }
    if (header.is_etc1s() && header.shares_codebooks()) {
        return failure(vTextureCheck::eUnsupportedFormat, header_field::kFlags.offset,
                       "shares its codebooks with another file, which is not supported");
    }
    return std::nullopt;
}

std::optional<Result> counts_fault(const Header& header) {
    if (header.total_slices == 0) return malformed(header_field::kTotalSlices.offset, "it has no slices");
    if (header.total_images == 0) return malformed(header_field::kTotalImages.offset, "it has no images");
    if (header.total_images > header.total_slices) {
        return malformed(header_field::kTotalImages.offset, "it has more images than slices");
    }
    if (header.has_alpha_entries() && header.total_slices % 2 != 0) {
        return malformed(header_field::kTotalSlices.offset, "one of its slices lacks its alpha");
    }
    return std::nullopt;
}

// Of a file that passes otherwise.
std::optional<Result> texture_type_fault(const Header& header) {
    if (header.holds_2d_images()) return std::nullopt;
    return failure(vTextureCheck::eUnsupportedFormat, header_field::kTextureType.offset,
                   std::string("is a ").append(basis::kTextureTypeNames[header.texture_type]) +
                       ": only 2D textures and arrays of them are transcoded");
}

std::uint64_t level_bytes(const Slice& slice) { return kBytesPerBlock * slice.blocks(); }

std::uint32_t rounded_up(std::uint32_t pixels, std::uint32_t block) { return (pixels + block - 1) / block; }

// Everything behind a header that is in order.
class TableCheck {
public:
    TableCheck(const unsigned char* data, std::uint64_t size, const vTextureLimits& limits)
        : data_(data),
          size_(size),
          limits_(limits),
          header_(basis::read_header(data)),
          codec_(*basis::find_codec(header_.codec)) {}

    Result run() {
        if (const auto fault = counts_fault(header_)) return *fault;
        if (const auto fault = slice_table_fault()) return *fault;
        if (const auto fault = codebooks_fault()) return *fault;
        if (const auto fault = slices_fault()) return *fault;
        if (lost_) return *lost_;
        if (const auto fault = texture_type_fault(header_)) return *fault;
        Result result;
        result.totalBytes = total_;
        return result;
    }

private:
    // A section that ends where no promise of the header reaches is a contradiction; one that the promise
    // reaches, and the file does not, is cut short.
    bool lies_within(std::uint64_t end) const { return end <= std::max(header_.promised_length(), size_); }

    Result missing(const std::string& what, std::uint64_t end) const {
        Result result = cut_short(what, end, size_);
        result.missingBytes = header_.promised_length() - size_;
        return result;
    }

    // What the file lacks first, and the first level that is not whole without it.
    void lose(const std::string& what, std::uint64_t end, std::int64_t image, std::int64_t level) {
        if (lost_) return;
        lost_ = missing(what, end);
        lost_->face = static_cast<int>(image);
        lost_->level = static_cast<int>(level);
    }

    std::optional<Result> slice_table_fault() const {
        const std::uint64_t end = header_.slice_entry(header_.total_slices);
        if (header_.slice_table < basis::kHeaderSize || !lies_within(end)) {
            return malformed(header_field::kSliceTableOffset.offset,
                             "its table of slices lies outside the file");
        }
        if (end > size_) return missing("its table of slices", end);
        return std::nullopt;
    }

    std::optional<Result> codebooks_fault() {
        if (!header_.is_etc1s()) return std::nullopt;
        const struct {
            const char* name;
            Section section;
            Field offset;
            Field bytes;
        } sections[] = {{"its section of endpoints", header_.endpoints, header_field::kEndpointsOffset,
                         header_field::kEndpointsSize},
                        {"its section of selectors", header_.selectors, header_field::kSelectorsOffset,
                         header_field::kSelectorsSize},
                        {"its section of Huffman tables", header_.tables, header_field::kTablesOffset,
                         header_field::kTablesSize}};
        for (const auto& [name, section, offset, bytes] : sections) {
            if (section.bytes == 0) return malformed(bytes.offset, std::string(name) + " is empty");
            if (!lies_within(section.end())) {
                return malformed(offset.offset, std::string(name) + " lies outside the file");
            }
            if (section.end() > size_) lose(name, section.end(), 0, 0);
        }
        return std::nullopt;
    }

    std::optional<Result> slices_fault() {
        for (std::uint64_t i = 0; i < header_.total_slices; ++i) {
            const std::uint64_t entry = header_.slice_entry(i);
            const Slice slice = basis::read_slice(data_ + entry);
            const bool alpha = header_.has_alpha_entries() && i % 2 != 0;
            if (const auto fault = order_fault(slice, entry, alpha)) return fault;
            if (const auto fault = extent_fault(slice, entry)) return fault;
            if (const auto fault = data_fault(slice, entry)) return fault;
            if (!alpha) total_ += level_bytes(slice);
        }
        if (image_ + 1 != header_.total_images) {
            return malformed(header_field::kTotalImages.offset,
                             "its table of slices has another number of images");
        }
        if (total_ > limits_.maxBytes) return too_many_bytes(total_, header_.slice_table, limits_.maxBytes);
        const std::uint64_t promised = header_.promised_length();
        if (promised > size_) lose("its last section", promised, -1, -1);
        if (lost_) lost_->totalBytes = total_;
        return std::nullopt;
    }

    // Entries follow one another by image and level; in an ETC1S file with alpha, each in two.
    std::optional<Result> order_fault(const Slice& slice, std::uint64_t entry, bool alpha) {
        if (alpha && (slice.image != image_ || slice.level != level_)) {
            return malformed(entry, "the alpha of a slice is not that of its colour");
        }
        const bool next_image = slice.image == image_ + 1 && slice.level == 0;
        const bool next_level = slice.image == image_ && slice.level == level_ + 1;
        if (!alpha && !next_image && !next_level) return malformed(entry, "its slices are not in order");
        if (header_.is_etc1s() && slice.has_alpha() != alpha) {
            return malformed(entry + slice_field::kFlags.offset,
                             "a slice is not what its place says: colour or alpha");
        }
        image_ = slice.image;
        level_ = slice.level;
        return std::nullopt;
    }

    std::optional<Result> extent_fault(const Slice& slice, std::uint64_t entry) const {
        if (slice.width == 0 || slice.width > limits_.maxExtent) {
            return absurd_extent("width", slice.width, entry + slice_field::kWidth.offset, limits_.maxExtent);
        }
        if (slice.height == 0 || slice.height > limits_.maxExtent) {
            return absurd_extent("height", slice.height, entry + slice_field::kHeight.offset,
                                 limits_.maxExtent);
        }
        if (slice.level >= kMostLevels) {
            return failure(vTextureCheck::eAbsurdSize, entry + slice_field::kLevel.offset,
                           "has more than " + std::to_string(kMostLevels) + " levels");
        }
        if (slice.blocks_across != rounded_up(slice.width, codec_.block_width) ||
            slice.blocks_down != rounded_up(slice.height, codec_.block_height)) {
            return malformed(entry + slice_field::kBlocksAcross.offset,
                             "the blocks of a slice do not fit its extent");
        }
        if (level_bytes(slice) > kMostLevelBytes) {
            return failure(vTextureCheck::eAbsurdSize, entry + slice_field::kWidth.offset,
                           "has a level of 2 GiB or more: " + std::to_string(slice.width) + " x " +
                               std::to_string(slice.height) + " pixels");
        }
        return std::nullopt;
    }

    std::optional<Result> data_fault(const Slice& slice, std::uint64_t entry) {
        if (!lies_within(slice.data.end())) {
            return malformed(entry + slice_field::kDataOffset.offset,
                             "the data of a slice lie outside the file");
        }
        if (slice.data.bytes < codec_.stored_block_bytes * slice.blocks()) {
            return malformed(entry + slice_field::kDataSize.offset,
                             "a slice has fewer bytes than its blocks");
        }
        if (slice.data.end() > size_) {
            lose("level " + std::to_string(level_) + " of slice " + std::to_string(image_), slice.data.end(),
                 image_, level_);
        }
        return std::nullopt;
    }

    const unsigned char* data_;
    std::uint64_t size_;
    vTextureLimits limits_;
    Header header_;
    const Codec& codec_;

    // Of the entries seen so far.
    std::int64_t image_ = -1;
    std::int64_t level_ = -1;
    std::uint64_t total_ = 0;
    std::optional<Result> lost_;
};

}  // namespace

std::optional<Result> basis_header_fault(const unsigned char* header, std::uint64_t length) {
    if (const auto fault = start_fault(header, length)) return fault;
    return format_fault(basis::read_header(header));
}

Result check_basis_table(const unsigned char* data, std::uint64_t size, const vTextureLimits& limits) {
    if (const auto fault = length_fault(size, limits)) return *fault;
    if (const auto fault = basis_header_fault(data, size)) return *fault;
    return TableCheck(data, size, limits).run();
}

}  // namespace pelto::info
