// SPDX-License-Identifier: Apache-2.0
#include "info/other_kinds.h"

#include <algorithm>
#include <iterator>

#include "info/check_words.h"

namespace pelto::info {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kLFSPointer = "version https://git-lfs";

struct Kind {
    std::string_view magic;
    std::string_view name;
    std::size_t offset = 0;
};

// The more exact one first, where several fit.
constexpr Kind kKinds[] = {
    {kLFSPointer, "a Git LFS pointer"},
    {kDDSMagic, "a DDS file"},
    {kKTX2Magic, "a KTX2 file"},
    {"\xABKTX 11\xBB"sv, "a KTX file of version 1"},
    {"\x89PNG"sv, "a PNG image"},
    {"\xFF\xD8\xFF"sv, "a JPEG image"},
    {"GIF8"sv, "a GIF image"},
    {"RIFF"sv, "a RIFF file, such as WebP"},
    {"II*\0"sv, "a TIFF image"},
    {"MM\0*"sv, "a TIFF image"},
    {"\x76\x2F\x31\x01"sv, "an OpenEXR image"},
    {"#?RADIANCE"sv, "a Radiance HDR image"},
    {"8BPS"sv, "a Photoshop document"},
    {"gimp xcf"sv, "a GIMP image"},
    {"VTF\0"sv, "a Valve texture (VTF)"},
    {"PVR\3"sv, "a PVR texture"},
    {"\x13\xAB\xA1\x5C"sv, "an ASTC file"},
    {"PK\3\4"sv, "a ZIP archive"},
    {"\x1F\x8B"sv, "a gzip file"},
    {"\x28\xB5\x2F\xFD"sv, "a Zstandard file"},
    {"7z\xBC\xAF\x27\x1C"sv, "a 7z archive"},
    {"\xFD\x37zXZ\0"sv, "an xz file"},
    {"%PDF"sv, "a PDF document"},
    {"glTF"sv, "a binary glTF model"},
    {"ftyp"sv, "a video or HEIF image", 4},
};

bool is_text_byte(char c) {
    return (c >= 0x20 && c < 0x7F) || c == '\n' || c == '\r' || c == '\t' || c == '\f';
}

// Long enough not to be text by accident.
bool is_text(std::string_view start) {
    constexpr std::size_t kLeast = 8;
    constexpr std::string_view kUTF8Mark = "\xEF\xBB\xBF";
    if (start.substr(0, kUTF8Mark.size()) == kUTF8Mark) return true;
    return start.size() >= kLeast && std::all_of(start.begin(), start.end(), is_text_byte);
}

bool is_bmp(std::string_view start) {
    return start.size() >= 10 && start.substr(0, 2) == "BM" && start.substr(6, 4) == "\0\0\0\0"sv;
}

std::string_view name_of(std::string_view start) {
    const auto* const found = std::find_if(std::begin(kKinds), std::end(kKinds), [&](const Kind& kind) {
        return start.size() >= kind.offset && start.substr(kind.offset, kind.magic.size()) == kind.magic;
    });
    if (found != std::end(kKinds)) return found->name;
    if (is_bmp(start)) return "a BMP image";
    if (start.substr(0, 5) == "<?xml" || start.substr(0, 4) == "<svg") return "an XML document";
    if (start.substr(0, 5) == "<html" || start.substr(0, 9) == "<!DOCTYPE") return "a web page";
    if (is_text(start)) return "a text file";
    return {};
}

}  // namespace

bool is_lfs_pointer(std::string_view start) { return start.substr(0, kLFSPointer.size()) == kLFSPointer; }

vTextureCheck::Result other_kind(std::string_view start, const char* wanted, std::string_view magic) {
    if (start.empty()) return failure(vTextureCheck::eNotThisKind, 0, "is empty");
    const std::string_view name = name_of(start);
    if (is_lfs_pointer(start)) {
        return failure(vTextureCheck::eNotThisKind, 0,
                       std::string("is a Git LFS pointer, not ").append(wanted) +
                           ": run 'git lfs pull' to fetch the file itself");
    }
    if (!name.empty()) {
        return failure(vTextureCheck::eNotThisKind, 0,
                       std::string("is ").append(name).append(", not ").append(wanted));
    }
    constexpr std::size_t kTelling = 4;
    std::string sentence = std::string("is not ").append(wanted) + ": it starts with " +
                           in_quotes(start.substr(0, magic.empty() ? kTelling : magic.size()));
    if (!magic.empty()) sentence += " instead of " + in_quotes(magic);
    return failure(vTextureCheck::eNotThisKind, 0, std::move(sentence));
}

}  // namespace pelto::info
