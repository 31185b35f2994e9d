#include "texture/basis_file.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <optional>

#include "texture/file_start.h"

namespace {

// Offsets in bytes, as the format's specification gives them. All numbers are little-endian.
constexpr std::size_t kTotalImages = 17;
constexpr std::size_t kTexFormat = 20;
constexpr std::size_t kFlags = 21;
constexpr std::size_t kSliceTableOffset = 65;
constexpr std::size_t kTotalSlices = 14;
constexpr std::size_t kHeaderSize = 77;

constexpr std::size_t kSliceEntrySize = 23;
constexpr std::uint32_t kSliceHoldsAlpha = 1;

constexpr std::uint32_t kFileYFlipped = 2;
constexpr std::uint32_t kFileHasAlpha = 4;
constexpr std::uint32_t kFileSRGB = 16;

constexpr std::array kCodecs = {
    "ETC1S",           "UASTC LDR 4x4",    "UASTC HDR 4x4",    "ASTC HDR 6x6",     "UASTC HDR 6x6",
    "XUASTC LDR 4x4",  "XUASTC LDR 5x4",   "XUASTC LDR 5x5",   "XUASTC LDR 6x5",   "XUASTC LDR 6x6",
    "XUASTC LDR 8x5",  "XUASTC LDR 8x6",   "XUASTC LDR 10x5",  "XUASTC LDR 10x6",  "XUASTC LDR 8x8",
    "XUASTC LDR 10x8", "XUASTC LDR 10x10", "XUASTC LDR 12x10", "XUASTC LDR 12x12", "ASTC LDR 4x4",
    "ASTC LDR 5x4",    "ASTC LDR 5x5",     "ASTC LDR 6x5",     "ASTC LDR 6x6",     "ASTC LDR 8x5",
    "ASTC LDR 8x6",    "ASTC LDR 10x5",    "ASTC LDR 10x6",    "ASTC LDR 8x8",     "ASTC LDR 10x8",
    "ASTC LDR 10x10",  "ASTC LDR 12x10",   "ASTC LDR 12x12"};
constexpr std::array kTextureTypes = {"2D", "2D array", "cube map", "video", "volume"};

template <std::size_t N>
std::string name_of(const std::array<const char*, N>& names, std::uint32_t number) {
    return number < N ? names[number] : "unknown (" + std::to_string(number) + ")";
}

std::uint32_t number_at(const unsigned char* data, std::size_t bytes) {
    std::uint32_t number = 0;
    for (std::size_t i = bytes; i-- > 0;) number = number << 8 | data[i];
    return number;
}

}  // namespace

std::uint32_t BasisFile::level_count(std::uint32_t slice) const {
    return static_cast<std::uint32_t>(std::count_if(
        levels.begin(), levels.end(), [&](const BasisLevel& level) { return level.slice == slice; }));
}

const BasisLevel* BasisFile::find(std::uint32_t slice, std::uint32_t level) const {
    const auto found = std::find_if(levels.begin(), levels.end(), [&](const BasisLevel& candidate) {
        return candidate.slice == slice && candidate.level == level;
    });
    return found != levels.end() ? &*found : nullptr;
}

bool is_basis(const std::string& path) {
    const std::optional<FileStart> start = read_start(path);
    if (start && start->text(0, 2) == "sB") return true;
    if (start && start->text(0, 4) == "DDS ") return false;
    return std::filesystem::path(path).extension() == ".basis";
}

BasisFile describe_basis(const unsigned char* data, std::size_t size) {
    BasisFile file;
    if (size < kHeaderSize) return file;
    const std::uint32_t flags = number_at(data + kFlags, 2);
    file.codec = name_of(kCodecs, data[kTexFormat]);
    file.texture_type = name_of(kTextureTypes, data[kBasisTextureType]);
    file.alpha = flags & kFileHasAlpha;
    file.y_flipped = flags & kFileYFlipped;
    file.srgb = flags & kFileSRGB;
    file.slices = number_at(data + kTotalImages, 3);

    const std::size_t table = number_at(data + kSliceTableOffset, 4);
    const std::uint32_t entries = number_at(data + kTotalSlices, 3);
    for (std::size_t i = 0; i < entries; ++i) {
        const std::size_t offset = table + i * kSliceEntrySize;
        if (offset + kSliceEntrySize > size) break;
        const unsigned char* const entry = data + offset;
        // ETC1S keeps colour and alpha of a level in two entries.
        const bool etc1s = data[kTexFormat] == 0;
        if (etc1s && (entry[4] & kSliceHoldsAlpha)) continue;
        file.levels.push_back(
            {number_at(entry, 3), entry[3], number_at(entry + 5, 2), number_at(entry + 7, 2)});
    }
    return file;
}
