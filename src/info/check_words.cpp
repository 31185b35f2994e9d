// SPDX-License-Identifier: Apache-2.0

#include "info/check_words.h"

#include <utility>

namespace pelto::info {

vTextureCheck::Result failure(vTextureCheck::EStatus status, std::uint64_t offset, std::string sentence) {
    vTextureCheck::Result result;
    result.status = status;
    result.offset = offset;
    result.sentence = std::move(sentence);
    return result;
}

vTextureCheck::Result cut_short(const std::string& what, std::uint64_t promised, std::uint64_t length) {
    vTextureCheck::Result result =
        failure(vTextureCheck::eTruncated, length,
                "is cut short: " + what + " ends at byte " + std::to_string(promised) +
                    ", the file at byte " + std::to_string(length));
    result.missingBytes = promised - length;
    return result;
}

vTextureCheck::Result absurd_extent(const char* what, std::uint32_t pixels, std::uint64_t offset,
                                    std::uint32_t limit) {
    std::string sentence = "its ";
    sentence.append(what).append(" at byte ").append(std::to_string(offset)).append(" is ");
    sentence.append(std::to_string(pixels)).append(" pixels");
    if (pixels != 0) sentence.append(", beyond the limit of ").append(std::to_string(limit));
    return failure(vTextureCheck::eAbsurdSize, offset, std::move(sentence));
}

vTextureCheck::Result too_many_bytes(std::uint64_t bytes, std::uint64_t offset, std::uint64_t limit) {
    std::string sentence = "its levels take ";
    if (bytes == kUncountable) {
        sentence += "more bytes than the loader can count";
    } else {
        sentence += std::to_string(bytes) + " bytes, beyond the limit of " + std::to_string(limit);
    }
    vTextureCheck::Result result = failure(vTextureCheck::eAbsurdSize, offset, std::move(sentence));
    result.totalBytes = bytes;
    return result;
}

std::optional<vTextureCheck::Result> length_fault(std::uint64_t length, const vTextureLimits& limits) {
    if (length <= limits.maxFileBytes) return std::nullopt;
    return failure(vTextureCheck::eAbsurdSize, 0,
                   "is " + std::to_string(length) + " bytes long, beyond the limit of " +
                       std::to_string(limits.maxFileBytes));
}

std::string count_of(std::uint64_t number, const char* what) {
    return std::to_string(number) + " " + what + (number == 1 ? "" : "s");
}

std::string in_quotes(std::string_view bytes) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text = "\"";
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte < 0x7F) {
            text += c;
        } else {
            text.append("\\x").append(1, kDigits[byte >> 4]).append(1, kDigits[byte & 0xF]);
        }
    }
    return text + '"';
}

}  // namespace pelto::info
