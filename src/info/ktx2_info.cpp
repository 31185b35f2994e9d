// SPDX-License-Identifier: Apache-2.0
// What a KTX2 file is: the header, the index of levels, and the data format descriptor tell all of it.
#include <algorithm>
#include <climits>
#include <optional>
#include <string>
#include <string_view>

#include "basis/basis_header.h"
#include "info/ByteSource.h"
#include "info/LevelExtent.h"
#include "info/check_words.h"
#include "info/other_kinds.h"
#include "vTextureInfo.h"

namespace {

using namespace pelto::info;
using pelto::basis::Field;
using std::to_string;
using Result = vTextureCheck::Result;

// Of the header.
constexpr Field kVkFormat = {12, 4};
constexpr Field kWidth = {20, 4};
constexpr Field kHeight = {24, 4};
constexpr Field kDepth = {28, 4};
constexpr Field kLayers = {32, 4};
constexpr Field kFaces = {36, 4};
constexpr Field kLevels = {40, 4};
constexpr Field kScheme = {44, 4};
constexpr Field kDescriptorOffset = {48, 4};
constexpr Field kDescriptorLength = {52, 4};
constexpr Field kValuesOffset = {56, 4};
constexpr Field kValuesLength = {60, 4};
constexpr Field kGlobalOffset = {64, 8};
constexpr Field kGlobalLength = {72, 8};
constexpr std::size_t kHeaderEnd = 80;

// Of an entry of the index.
constexpr Field kLevelOffset = {0, 8};
constexpr Field kLevelLength = {8, 8};
constexpr Field kLevelUncompressed = {16, 8};
constexpr std::size_t kIndexEntry = 24;

// Of the data format descriptor, whose first block begins behind its own length.
constexpr Field kColourModel = {12, 1};
constexpr Field kTransfer = {14, 1};
constexpr Field kDescriptorFlags = {15, 1};
constexpr Field kBlockWidth = {16, 1};   // less 1
constexpr Field kBlockHeight = {17, 1};  // less 1
constexpr std::size_t kFirstSample = 28;
constexpr std::size_t kSampleSize = 16;
constexpr Field kSampleChannel = {3, 1};
constexpr std::size_t kDescriptorMost = kFirstSample + 16 * kSampleSize;
constexpr std::uint64_t kTransferSRGB = 2;
constexpr std::uint64_t kAlphaIsPremultiplied = 1;

// Supercompression schemes.
constexpr std::uint64_t kNone = 0;
constexpr std::uint64_t kBasisLZ = 1;
constexpr std::uint64_t kZstandard = 2;
constexpr std::uint64_t kBasis = 3;

// Colour models of the codecs.
constexpr std::uint64_t kASTC = 162;
constexpr std::uint64_t kETC1S = 163;
constexpr std::uint64_t kUASTC = 166;
constexpr std::uint64_t kUASTCHDR = 167;
constexpr std::uint64_t kUASTCHDR6x6 = 168;
constexpr std::uint64_t kXUASTC = 169;
constexpr std::uint64_t kVkASTC6x6Float = 1000066004;

constexpr std::uint64_t kValuesMost = 65'536;
constexpr std::uint32_t kCubeFaces = 6;
constexpr std::uint64_t kMostLevels = 32;
constexpr std::uint64_t kMostLayers = 65'536;

class Bytes {
public:
    explicit Bytes(std::string bytes) : bytes_(std::move(bytes)) {}

    std::size_t size() const { return bytes_.size(); }

    // 0 beyond the end.
    std::uint64_t number(Field field, std::size_t base = 0) const {
        if (base + field.offset + field.bytes > bytes_.size()) return 0;
        std::uint64_t value = 0;
        for (std::size_t i = field.bytes; i-- > 0;) {
            value = value << 8 | static_cast<unsigned char>(bytes_[base + field.offset + i]);
        }
        return value;
    }
    std::uint32_t number32(Field field) const { return static_cast<std::uint32_t>(number(field)); }
    std::string_view all() const { return bytes_; }

private:
    std::string bytes_;
};

Bytes read(const ByteSource& source, std::uint64_t offset, std::uint64_t length) {
    if (offset >= source.size) return Bytes({});
    std::string bytes(static_cast<std::size_t>(std::min(length, source.size - offset)), '\0');
    bytes.resize(source.read(offset, bytes.data(), bytes.size()));
    return Bytes(std::move(bytes));
}

Result malformed(Field field, const std::string& what) {
    return failure(vTextureCheck::eMalformedTable, field.offset,
                   what + ", says byte " + to_string(field.offset));
}

Result unknown(const Bytes& header, Field field, const char* what) {
    return failure(vTextureCheck::eUnsupportedFormat, field.offset,
                   std::string("the ").append(what) + " " + to_string(header.number(field)) + " at byte " +
                       to_string(field.offset) + " is not known");
}

struct KTX2Codec {
    std::string name;
    std::uint32_t block_width = 4;
    std::uint32_t block_height = 4;
    bool stores_blocks = false;  // of 16 bytes each
    bool hdr = false;
};

// Empty name: none that is known.
KTX2Codec codec_of(const Bytes& header, const Bytes& descriptor) {
    const std::string extent =
        to_string(descriptor.number(kBlockWidth) + 1) + "x" + to_string(descriptor.number(kBlockHeight) + 1);
    switch (descriptor.number(kColourModel)) {
        case kETC1S:
            return {"ETC1S"};
        case kUASTC:
            return {"UASTC LDR 4x4", 4, 4, true};
        case kUASTCHDR:
            return {"UASTC HDR 4x4", 4, 4, true, true};
        case kUASTCHDR6x6:
            return {"UASTC HDR 6x6", 6, 6, false, true};
        case kXUASTC:
            return {"XUASTC LDR " + extent, static_cast<std::uint32_t>(descriptor.number(kBlockWidth)) + 1,
                    static_cast<std::uint32_t>(descriptor.number(kBlockHeight)) + 1};
        case kASTC:
            if (header.number(kVkFormat) == kVkASTC6x6Float) return {"ASTC HDR 6x6", 6, 6, true, true};
            break;
        default:
            break;
    }
    return {};
}

bool codec_has_alpha(const Bytes& descriptor) {
    constexpr std::uint64_t kETC1SAlpha = 15;
    constexpr std::uint64_t kUASTCWithAlpha = 3;
    const std::uint64_t model = descriptor.number(kColourModel);
    for (std::size_t at = kFirstSample; at + kSampleSize <= descriptor.size(); at += kSampleSize) {
        const std::uint64_t channel = descriptor.number(kSampleChannel, at) & 0xF;
        if (channel == (model == kETC1S ? kETC1SAlpha : kUASTCWithAlpha)) return true;
    }
    return false;
}

// Key/value data: entries of a length, a key, a zero and a value, padded to 4 bytes. Empty where the key is
// not among them.
std::string_view value_of(const Bytes& values, std::string_view key) {
    constexpr Field kLength = {0, 4};
    for (std::size_t at = 0; at + kLength.bytes <= values.size();) {
        const std::uint64_t length = values.number(kLength, at);
        at += kLength.bytes;
        if (length > values.size() - at) break;
        const std::string_view entry = values.all().substr(at, static_cast<std::size_t>(length));
        if (entry.substr(0, key.size()) == key && entry.substr(key.size(), 1) == std::string_view("\0", 1)) {
            return entry.substr(key.size() + 1);
        }
        at += static_cast<std::size_t>((length + 3) / 4 * 4);
    }
    return {};
}

// "rd": x grows to the right and y down; "ru": up.
bool rows_lie_bottom_first(const ByteSource& source, const Bytes& header) {
    const Bytes values = read(source, header.number(kValuesOffset),
                              std::min<std::uint64_t>(header.number(kValuesLength), kValuesMost));
    const std::string_view orientation = value_of(values, "KTXorientation");
    return orientation.size() > 1 && orientation[1] == 'u';
}

// What the header says beyond sense.
std::optional<Result> header_fault(const Bytes& header, const vTextureLimits& limits) {
    if (header.number(kScheme) > kBasis) return unknown(header, kScheme, "supercompression scheme");
    if (header.number(kLevels) > kMostLevels) {
        return failure(vTextureCheck::eAbsurdSize, kLevels.offset,
                       "has more than " + to_string(kMostLevels) + " levels");
    }
    if (header.number(kLayers) > kMostLayers) {
        return failure(vTextureCheck::eAbsurdSize, kLayers.offset,
                       "has more than " + to_string(kMostLayers) + " layers");
    }
    const std::uint64_t faces = header.number(kFaces);
    if (faces != 1 && faces != kCubeFaces) {
        return malformed(kFaces, "it has " + to_string(faces) + " faces instead of 1 or 6");
    }
    const struct {
        const char* name;
        Field field;
        std::uint32_t least;  // images of fewer dimensions have a height or depth of 0
    } extents[] = {{"width", kWidth, 1}, {"height", kHeight, 0}, {"depth", kDepth, 0}};
    const std::uint32_t limit = std::min<std::uint32_t>(limits.maxExtent, INT_MAX);
    for (const auto& extent : extents) {
        const std::uint32_t pixels = header.number32(extent.field);
        if (pixels < extent.least || pixels > limit) {
            return absurd_extent(extent.name, pixels, extent.field.offset, limit);
        }
    }
    return std::nullopt;
}

// Bytes of a level's image as the format or codec has them; 0 where the codec packs its blocks.
struct ImageBytes {
    std::uint64_t row;
    std::uint64_t all;
};

ImageBytes image_bytes(const vPixelFormat& pixels, const KTX2Codec& codec, const LevelExtent& extent) {
    if (pixels.blockBytes != 0) {
        return {pixels.RowBytes(extent.width),
                product(pixels.SliceBytes(extent.width, extent.height), extent.depth)};
    }
    if (!codec.stores_blocks) return {0, 0};
    constexpr std::uint64_t kBlockBytes = 16;
    const std::uint64_t row =
        (std::uint64_t{extent.width} + codec.block_width - 1) / codec.block_width * kBlockBytes;
    const std::uint64_t rows = (std::uint64_t{extent.height} + codec.block_height - 1) / codec.block_height;
    return {row, product(product(row, rows), extent.depth)};
}

}  // namespace

void vTextureInfo::_DescribeKTX2(const ByteSource& source, const vTextureLimits& limits) {
    _ReadKTX2(source, limits);
    check = problem;
    if (!problem.ok()) return;
    check = missingBytes > 0 ? WhatIsMissing()
                             : failure(vTextureCheck::eUnsupportedFormat, 0,
                                       "is a KTX2 file, which neither vDDSImage nor TOZ::vBasisImage takes");
}

void vTextureInfo::_ReadKTX2(const ByteSource& source, const vTextureLimits& limits) {
    const auto refuse = [&](const Result& result) { problem = result; };
    const Bytes header = read(source, 0, kHeaderEnd);
    if (header.size() < kHeaderEnd) return refuse(cut_short("its header", kHeaderEnd, header.size()));
    if (const auto fault = header_fault(header, limits)) return refuse(*fault);
    levels = std::max(header.number32(kLevels), 1u);
    const std::uint64_t index_end = kHeaderEnd + levels * kIndexEntry;
    const Bytes index = read(source, kHeaderEnd, index_end - kHeaderEnd);
    if (index.size() < index_end - kHeaderEnd) {
        return refuse(cut_short("its index of levels", index_end, kHeaderEnd + index.size()));
    }
    const Bytes descriptor = read(source, header.number(kDescriptorOffset),
                                  std::min<std::uint64_t>(header.number(kDescriptorLength), kDescriptorMost));

    const std::uint64_t descriptor_end =
        sum(header.number(kDescriptorOffset), header.number(kDescriptorLength));
    if (descriptor_end > source.size) {
        return refuse(cut_short("its data format descriptor", descriptor_end, source.size));
    }

    const KTX2Codec codec = codec_of(header, descriptor);
    if (!codec.name.empty()) {
        format = codec.name;
        hasAlpha = codec_has_alpha(descriptor);
    } else if (const vPixelFormat* const found = vTextureFormats::FindVulkan(header.number32(kVkFormat))) {
        pixels = *found;
        format = pixels.name;
        dxgi = pixels.dxgi;
        hasAlpha = pixels.channels.Find('A') != nullptr;
    } else {
        return refuse(unknown(header, kVkFormat, "Vulkan format"));
    }
    srgb = descriptor.number(kTransfer) == kTransferSRGB || pixels.srgb;
    if (hasAlpha) {
        const bool premultiplied = (descriptor.number(kDescriptorFlags) & kAlphaIsPremultiplied) != 0;
        alphaMode = premultiplied ? eAlphaPremultiplied : eAlphaStraight;
    }
    yFlipped = rows_lie_bottom_first(source, header);
    dimension = header.number(kDepth) > 0 ? 3 : header.number(kHeight) > 0 ? 2 : 1;
    width = header.number32(kWidth);
    height = std::max(header.number32(kHeight), 1u);
    depth = std::max(header.number32(kDepth), 1u);
    layers = std::max(header.number32(kLayers), 1u);
    faces = header.number32(kFaces);
    faceMask = faces == kCubeFaces ? 0x3F : 1;
    if (codec.hdr)
        _Note(vTextureNote::eNoTargetForm, "is of an HDR codec, which has no BC1, BC3, BC4 or BC5 form");

    const std::uint64_t scheme = header.number(kScheme);
    const std::uint64_t images = std::uint64_t{layers} * faces;
    std::uint64_t end =
        std::max({index_end, descriptor_end, sum(header.number(kValuesOffset), header.number(kValuesLength)),
                  sum(header.number(kGlobalOffset), header.number(kGlobalLength))});
    _levelMajor = true;
    LevelExtent extent = {width, height, depth};
    for (std::uint32_t level = 0; level < levels; ++level, extent = extent.next()) {
        const std::size_t entry = level * kIndexEntry;
        const std::uint64_t stored = index.number(kLevelLength, entry);
        const std::uint64_t held = scheme == kZstandard ? index.number(kLevelUncompressed, entry) : stored;
        const bool packed = scheme == kBasisLZ || scheme == kBasis;
        const ImageBytes promised = packed ? ImageBytes{0, 0} : image_bytes(pixels, codec, extent);
        if (promised.all != 0 && product(promised.all, images) != held) {
            return refuse(malformed({kHeaderEnd + entry, kIndexEntry},
                                    "level " + to_string(level) + " has " + to_string(held) +
                                        " bytes instead of " + to_string(product(promised.all, images))));
        }
        LevelSpan span{};
        span.width = extent.width;
        span.height = extent.height;
        span.depth = extent.depth;
        span.offset = index.number(kLevelOffset, entry);
        span.rowBytes = promised.row;
        span.bytes = held / images;
        span.stride = scheme == kNone ? span.bytes : 0;
        span.stored = scheme == kNone ? span.bytes : stored;
        _spans.push_back(span);
        bytes = sum(bytes, held);
        end = std::max(end, sum(span.offset, stored));
    }
    if (bytes > limits.maxBytes || bytes == kUncountable) {
        return refuse(too_many_bytes(bytes, kWidth.offset, limits.maxBytes));
    }
    _CompareLength(end);
}
