// SPDX-License-Identifier: Apache-2.0

#include "text/encoding.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <string>

namespace sax {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kSpace = " \t\r\n";

// The parser looks for a declaration's end in its first read alone, which is much longer.
constexpr std::size_t kLongestDeclaration = 4096;

std::string lower_case(std::string_view text) {
    std::string lowered(text);
    std::transform(lowered.begin(), lowered.end(), lowered.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lowered;
}

void skip_space(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(kSpace), text.size()));
}

/// Without its end; empty where the text begins with none.
std::string_view declaration(std::string_view text) {
    constexpr std::string_view begin = "<?xml";
    const bool is_declared = text.starts_with(begin) && kSpace.find(text.substr(0, 6).back()) != kSpace.npos;
    return is_declared ? text.substr(0, text.find('>')) : std::string_view();
}

/// The encoding that a declaration names; empty where it names none.
std::string_view declared_encoding(std::string_view text) {
    constexpr std::string_view keyword = "encoding";
    const std::size_t place = text.find(keyword);
    if (place == std::string_view::npos) return {};
    text.remove_prefix(place + keyword.size());
    skip_space(text);
    if (!text.starts_with('=')) return {};
    text.remove_prefix(1);
    skip_space(text);
    if (!text.starts_with('"') && !text.starts_with('\'')) return {};
    const char quote = text.front();
    text.remove_prefix(1);
    return text.substr(0, text.find(quote));
}

bool is_utf8(std::string_view name) {
    const std::string lower = lower_case(name);
    return lower.empty() || lower == "utf-8" || lower == "utf8" || lower == "us-ascii" || lower == "ascii";
}

bool is_eight_bit(std::string_view name) {
    constexpr std::string_view families[] = {
        "iso-8859-", "iso8859-", "iso_8859-", "latin", "windows-125", "cp125",     "koi8-",
        "ibm8",      "ibm437",   "cp8",       "cp437", "tis-620",     "macintosh", "windows-874"};
    const std::string lower = lower_case(name);
    return std::any_of(std::begin(families), std::end(families),
                       [&](std::string_view family) { return lower.starts_with(family); });
}

}  // namespace

Encoding detect_encoding(std::string_view first_bytes) {
    using namespace std::string_view_literals;
    if (first_bytes.starts_with("\xFF\xFE") || first_bytes.starts_with("<\0?\0"sv)) {
        return Encoding::kUtf16LittleEndian;
    }
    if (first_bytes.starts_with("\xFE\xFF") || first_bytes.starts_with("\0<\0?"sv)) {
        return Encoding::kUtf16BigEndian;
    }
    if (first_bytes.starts_with(kUtf8Mark)) return Encoding::kUtf8;
    return is_utf8(declared_encoding(declaration(first_bytes))) ? Encoding::kUtf8 : Encoding::kEightBit;
}

std::optional<DeclarationDefect> find_declaration_defect(std::string_view first_bytes,
                                                         bool ignores_encoding) {
    const std::size_t mark = byte_order_mark(first_bytes, Encoding::kUtf8);
    const std::string_view text = declaration(first_bytes.substr(mark));
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == 0) return DeclarationDefect{mark + i, "a zero character is not allowed"};
        if (static_cast<unsigned char>(text[i]) >= 0x80) {
            return DeclarationDefect{mark + i, "the XML declaration has a character that is not ASCII"};
        }
    }
    if (text.size() >= kLongestDeclaration) return DeclarationDefect{0, "the XML declaration is too long"};
    const std::string_view name = declared_encoding(text);
    if (ignores_encoding || is_utf8(name) || is_eight_bit(name)) return std::nullopt;
    return DeclarationDefect{mark + static_cast<std::size_t>(name.data() - text.data()),
                             "the encoding \"" + std::string(name) + "\" is neither UTF-8 nor one of 8 bits"};
}

std::size_t byte_order_mark(std::string_view first_bytes, Encoding encoding) {
    if (encoding == Encoding::kUtf8) return first_bytes.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0;
    if (encoding == Encoding::kEightBit) return 0;
    return first_bytes.starts_with("\xFF\xFE") || first_bytes.starts_with("\xFE\xFF") ? 2 : 0;
}

}  // namespace sax
