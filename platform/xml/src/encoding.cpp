#include "encoding.h"

#include <algorithm>
#include <cctype>
#include <string>

namespace sax {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kSpace = " \t\r\n";

std::string lower_case(std::string_view text) {
    std::string lowered(text);
    std::transform(lowered.begin(), lowered.end(), lowered.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lowered;
}

void skip_space(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(kSpace), text.size()));
}

/// The encoding that a declaration at the start names; empty where there is none.
std::string_view declared_encoding(std::string_view text) {
    constexpr std::string_view begin = "<?xml";
    constexpr std::string_view keyword = "encoding";
    if (!text.starts_with(begin)) return {};
    text = text.substr(0, text.find("?>"));
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
    const std::string declared = lower_case(declared_encoding(first_bytes));
    const bool utf8 = declared.empty() || declared == "utf-8" || declared == "utf8" || declared == "us-ascii";
    return utf8 ? Encoding::kUtf8 : Encoding::kEightBit;
}

std::size_t byte_order_mark(std::string_view first_bytes, Encoding encoding) {
    if (encoding == Encoding::kUtf8) return first_bytes.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0;
    if (encoding == Encoding::kEightBit) return 0;
    return first_bytes.starts_with("\xFF\xFE") || first_bytes.starts_with("\xFE\xFF") ? 2 : 0;
}

}  // namespace sax
