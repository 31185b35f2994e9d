#include "info/basis_table.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "info/check_words.h"

namespace pelto::info {

namespace {

using Result = vTextureCheck::Result;

// A number of the file: where it lies, and how many bytes it has. All are little-endian.
struct Field {
    std::size_t offset;
    std::size_t bytes;
};

// Of the header.
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
constexpr std::size_t kHeaderEnd = kBasisHeaderSize;

// Of an entry in the table of slices.
constexpr Field kImage = {0, 3};
constexpr Field kLevel = {3, 1};
constexpr Field kSliceFlags = {4, 1};
constexpr Field kWidth = {5, 2};
constexpr Field kHeight = {7, 2};
constexpr Field kBlocksAcross = {9, 2};
constexpr Field kBlocksDown = {11, 2};
constexpr Field kDataOffset = {13, 4};
constexpr Field kSliceDataSize = {17, 4};
constexpr std::size_t kEntrySize = 23;

constexpr std::uint32_t kSupportedVersion = 0x13;
constexpr std::uint32_t kETC1S = 0;
constexpr std::uint32_t kMostLevels = 16;

constexpr std::uint32_t kFlagETC1S = 1;
constexpr std::uint32_t kFlagAlpha = 4;
constexpr std::uint32_t kFlagGlobalCodebook = 8;
constexpr std::uint32_t kSliceFlagAlpha = 1;

// Of blocks in the file, in codecs that store each whole.
constexpr std::uint64_t kBytesPerStoredBlock = 16;
constexpr std::uint32_t kUASTC = 1;
constexpr std::uint32_t kASTCHDR6x6 = 3;
constexpr std::uint32_t kFirstASTC = 19;

// Of a level transcoded to BC3 or BC5. The loader counts them in 31 bits.
constexpr std::uint64_t kBytesPerBlock = 16;
constexpr std::uint64_t kMostLevelBytes = INT32_MAX;

// Pixels across and down the blocks of each codec: ETC1S, UASTC LDR, UASTC HDR, ASTC HDR 6x6, UASTC HDR 6x6,
// and twice the blocks of ASTC LDR, for XUASTC and ASTC.
struct BlockExtent {
    std::uint32_t width;
    std::uint32_t height;
};
constexpr std::array<BlockExtent, 5> kOwnBlocks = {{{4, 4}, {4, 4}, {4, 4}, {6, 6}, {6, 6}}};
constexpr std::array<BlockExtent, 14> kASTCBlocks = {{{4, 4},
                                                      {5, 4},
                                                      {5, 5},
                                                      {6, 5},
                                                      {6, 6},
                                                      {8, 5},
                                                      {8, 6},
                                                      {10, 5},
                                                      {10, 6},
                                                      {8, 8},
                                                      {10, 8},
                                                      {10, 10},
                                                      {12, 10},
                                                      {12, 12}}};
constexpr std::uint32_t kCodecs = kOwnBlocks.size() + 2 * kASTCBlocks.size();

BlockExtent block_extent(std::uint32_t codec) {
    if (codec < kOwnBlocks.size()) return kOwnBlocks[codec];
    return kASTCBlocks[(codec - kOwnBlocks.size()) % kASTCBlocks.size()];
}

constexpr std::array<const char*, 5> kTextureTypes = {"2D texture", "2D array", "cube map", "video",
                                                      "volume"};
constexpr std::uint32_t k2DTypes = 2;

class BasisCheck {
public:
    BasisCheck(const unsigned char* data, std::uint64_t size, const vTextureLimits& limits)
        : data_(data), size_(size), limits_(limits) {}

    Result run() {
        if (const auto fault = length_fault(size_, limits_)) return *fault;
        if (const auto fault = header_fault()) return *fault;
        if (const auto fault = slice_table_fault()) return *fault;
        if (const auto fault = codebooks_fault()) return *fault;
        if (const auto fault = slices_fault()) return *fault;
        if (lost_) return *lost_;
        if (const auto fault = texture_type_fault()) return *fault;
        Result result;
        result.totalBytes = total_;
        return result;
    }

    std::optional<Result> header_fault() const {
        const std::string_view start(reinterpret_cast<const char*>(data_), std::min(size_, std::uint64_t{2}));
        if (start.empty()) return failure(vTextureCheck::eNotThisKind, 0, "is empty");
        if (start != std::string_view("sB").substr(0, start.size())) {
            return failure(vTextureCheck::eNotThisKind, 0,
                           "is not a .basis file: it starts with " + in_quotes(start) + " instead of \"sB\"");
        }
        if (size_ < kHeaderEnd) return cut_short("its header", kHeaderEnd, size_);
        if (size_ > UINT32_MAX) {
            return failure(vTextureCheck::eAbsurdSize, 0, "has 4 GiB or more, which no .basis file has");
        }
        if (number(kVersion) != kSupportedVersion) return unsupported(kVersion, "version", number(kVersion));
        if (number(kHeaderSize) != kHeaderEnd) {
            return malformed(kHeaderSize.offset, "its header has " + std::to_string(number(kHeaderSize)) +
                                                     " bytes instead of " + std::to_string(kHeaderEnd));
        }
        if (number(kCodec) >= kCodecs) return unsupported(kCodec, "codec", number(kCodec));
        if (number(kTextureType) >= kTextureTypes.size()) {
            return malformed(kTextureType.offset, "it has no known texture type");
        }
        if (has_flag(kFlagETC1S) != etc1s()) {
            return malformed(kFlags.offset, "its flags contradict its codec");
        }
        if (etc1s() && has_flag(kFlagGlobalCodebook)) {
            return failure(vTextureCheck::eUnsupportedFormat, kFlags.offset,
                           "shares its codebooks with another file, which is not supported");
        }
        return std::nullopt;
    }

private:
    std::uint32_t number(Field field, std::uint64_t entry = 0) const {
        std::uint32_t value = 0;
        for (std::size_t i = field.bytes; i-- > 0;) value = value << 8 | data_[entry + field.offset + i];
        return value;
    }

    static Result malformed(std::uint64_t offset, std::string sentence) {
        sentence += ", says byte " + std::to_string(offset);
        return failure(vTextureCheck::eMalformedTable, offset, std::move(sentence));
    }

    bool etc1s() const { return number(kCodec) == kETC1S; }
    bool has_flag(std::uint32_t flag) const { return (number(kFlags) & flag) != 0; }
    bool stores_whole_blocks() const {
        const std::uint32_t codec = number(kCodec);
        return (codec >= kUASTC && codec <= kASTCHDR6x6) || codec >= kFirstASTC;
    }
    bool has_alpha_entries() const { return etc1s() && has_flag(kFlagAlpha); }

    static Result unsupported(Field field, const char* what, std::uint32_t value) {
        return failure(vTextureCheck::eUnsupportedFormat, field.offset,
                       std::string("the ").append(what) + " " + std::to_string(value) + " at byte " +
                           std::to_string(field.offset) + " is not supported");
    }

    // A section that ends where no promise of the header reaches is a contradiction; one that the promise
    // reaches, and the file does not, is cut short.
    std::uint64_t promised_length() const { return kHeaderEnd + std::uint64_t{number(kDataSize)}; }

    bool lies_within(std::uint64_t offset, std::uint64_t bytes) const {
        return offset + bytes <= std::max(promised_length(), size_);
    }

    std::optional<Result> slice_table_fault() const {
        if (number(kTotalSlices) == 0) return malformed(kTotalSlices.offset, "it has no slices");
        if (number(kTotalImages) == 0) return malformed(kTotalImages.offset, "it has no images");
        if (number(kTotalImages) > number(kTotalSlices)) {
            return malformed(kTotalImages.offset, "it has more images than slices");
        }
        if (has_alpha_entries() && number(kTotalSlices) % 2 != 0) {
            return malformed(kTotalSlices.offset, "one of its slices lacks its alpha");
        }
        const std::uint64_t table = number(kSliceTableOffset);
        const std::uint64_t table_size = std::uint64_t{number(kTotalSlices)} * kEntrySize;
        if (table < kHeaderEnd || !lies_within(table, table_size)) {
            return malformed(kSliceTableOffset.offset, "its table of slices lies outside the file");
        }
        if (table + table_size > size_) return missing("its table of slices", table + table_size);
        return std::nullopt;
    }

    std::optional<Result> codebooks_fault() {
        if (!etc1s()) return std::nullopt;
        if (const auto fault = codebook_fault("endpoints", kEndpointsOffset, kEndpointsSize)) return fault;
        if (const auto fault = codebook_fault("selectors", kSelectorsOffset, kSelectorsSize)) return fault;
        return codebook_fault("Huffman tables", kTablesOffset, kTablesSize);
    }

    std::optional<Result> codebook_fault(const char* what, Field offset, Field size) {
        const std::string name = std::string("its section of ").append(what);
        const std::uint64_t start = number(offset);
        const std::uint64_t bytes = number(size);
        if (bytes == 0) return malformed(size.offset, name + " is empty");
        if (!lies_within(start, bytes)) return malformed(offset.offset, name + " lies outside the file");
        if (start + bytes > size_) lose(name, start + bytes, 0, 0);
        return std::nullopt;
    }

    Result missing(const std::string& what, std::uint64_t end) const {
        Result result = cut_short(what, end, size_);
        result.missingBytes = promised_length() - size_;
        return result;
    }

    // What the file lacks first, and the first level that is not whole without it.
    void lose(const std::string& what, std::uint64_t end, std::int64_t image, std::int64_t level) {
        if (lost_) return;
        lost_ = missing(what, end);
        lost_->face = static_cast<int>(image);
        lost_->level = static_cast<int>(level);
    }

    std::optional<Result> slices_fault() {
        for (std::uint64_t i = 0; i < number(kTotalSlices); ++i) {
            const std::uint64_t entry = number(kSliceTableOffset) + i * kEntrySize;
            const bool alpha = has_alpha_entries() && i % 2 != 0;
            if (const auto fault = order_fault(entry, alpha)) return fault;
            if (const auto fault = extent_fault(entry)) return fault;
            if (const auto fault = data_fault(entry)) return fault;
            if (!alpha) total_ += level_bytes(entry);
        }
        if (image_ + 1 != number(kTotalImages)) {
            return malformed(kTotalImages.offset, "its table of slices has another number of images");
        }
        if (total_ > limits_.maxBytes) {
            return too_many_bytes(total_, number(kSliceTableOffset), limits_.maxBytes);
        }
        if (promised_length() > size_) lose("its last section", promised_length(), -1, -1);
        if (lost_) lost_->totalBytes = total_;
        return std::nullopt;
    }

    // Entries follow one another by image and level; in an ETC1S file with alpha, each in two.
    std::optional<Result> order_fault(std::uint64_t entry, bool alpha) {
        const std::uint32_t image = number(kImage, entry);
        const std::uint32_t level = number(kLevel, entry);
        if (alpha && (image != image_ || level != level_)) {
            return malformed(entry, "the alpha of a slice is not that of its colour");
        }
        const bool next_image = image == image_ + 1 && level == 0;
        const bool next_level = image == image_ && level == level_ + 1;
        if (!alpha && !next_image && !next_level) return malformed(entry, "its slices are not in order");
        if (etc1s() && ((number(kSliceFlags, entry) & kSliceFlagAlpha) != 0) != alpha) {
            return malformed(entry + kSliceFlags.offset,
                             "a slice is not what its place says: colour or alpha");
        }
        image_ = image;
        level_ = level;
        return std::nullopt;
    }

    std::optional<Result> data_fault(std::uint64_t entry) {
        const std::uint64_t bytes = number(kSliceDataSize, entry);
        const std::uint64_t end = number(kDataOffset, entry) + bytes;
        if (!lies_within(end, 0)) {
            return malformed(entry + kDataOffset.offset, "the data of a slice lie outside the file");
        }
        if (stores_whole_blocks() && bytes < kBytesPerStoredBlock * blocks(entry)) {
            return malformed(entry + kSliceDataSize.offset, "a slice has fewer bytes than its blocks");
        }
        if (end > size_) {
            lose("level " + std::to_string(level_) + " of slice " + std::to_string(image_), end, image_,
                 level_);
        }
        return std::nullopt;
    }

    // The last thing to look at: of a file that passes otherwise, it is all that is wrong.
    std::optional<Result> texture_type_fault() const {
        const std::uint32_t type = number(kTextureType);
        if (type < k2DTypes) return std::nullopt;
        return failure(vTextureCheck::eUnsupportedFormat, kTextureType.offset,
                       std::string("is a ").append(kTextureTypes[type]) +
                           ": only 2D textures and arrays of them are transcoded");
    }

    std::uint64_t blocks(std::uint64_t entry) const {
        return std::uint64_t{number(kBlocksAcross, entry)} * number(kBlocksDown, entry);
    }

    std::uint64_t level_bytes(std::uint64_t entry) const { return kBytesPerBlock * blocks(entry); }

    std::optional<Result> extent_fault(std::uint64_t entry) const {
        const BlockExtent block = block_extent(number(kCodec));
        const std::uint32_t width = number(kWidth, entry);
        const std::uint32_t height = number(kHeight, entry);
        if (width == 0 || width > limits_.maxExtent) {
            return absurd_extent("width", width, entry + kWidth.offset, limits_.maxExtent);
        }
        if (height == 0 || height > limits_.maxExtent) {
            return absurd_extent("height", height, entry + kHeight.offset, limits_.maxExtent);
        }
        if (number(kLevel, entry) >= kMostLevels) {
            return failure(vTextureCheck::eAbsurdSize, entry + kLevel.offset,
                           "has more than " + std::to_string(kMostLevels) + " levels");
        }
        if (number(kBlocksAcross, entry) != (width + block.width - 1) / block.width ||
            number(kBlocksDown, entry) != (height + block.height - 1) / block.height) {
            return malformed(entry + kBlocksAcross.offset, "the blocks of a slice do not fit its extent");
        }
        if (level_bytes(entry) > kMostLevelBytes) {
            return failure(vTextureCheck::eAbsurdSize, entry + kWidth.offset,
                           "has a level of 2 GiB or more: " + std::to_string(width) + " x " +
                               std::to_string(height) + " pixels");
        }
        return std::nullopt;
    }

    const unsigned char* data_;
    std::uint64_t size_;
    vTextureLimits limits_;

    // Of the entries seen so far.
    std::int64_t image_ = -1;
    std::int64_t level_ = -1;
    std::uint64_t total_ = 0;
    std::optional<Result> lost_;
};

}  // namespace

std::optional<Result> basis_header_fault(const unsigned char* header, std::uint64_t length) {
    return BasisCheck(header, length, vTextureLimits()).header_fault();
}

Result check_basis_table(const unsigned char* data, std::uint64_t size, const vTextureLimits& limits) {
    return BasisCheck(data, size, limits).run();
}

}  // namespace pelto::info
