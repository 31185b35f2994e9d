// SPDX-License-Identifier: Apache-2.0
#include "arguments/choices.h"

#include <algorithm>
#include <cstddef>

#include "arguments/lower_case.h"

namespace {

constexpr std::size_t kLongestWord = 64;

// The fewest changes that make one word of the other.
std::size_t distance(const std::string& a, const std::string& b) {
    std::vector<std::vector<std::size_t>> changes(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i) {
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                changes[i][j] = i + j;
                continue;
            }
            const std::size_t replaced = changes[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            changes[i][j] = std::min({changes[i - 1][j] + 1, changes[i][j - 1] + 1, replaced});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                changes[i][j] = std::min(changes[i][j], changes[i - 2][j - 2] + 1);
            }
        }
    }
    return changes[a.size()][b.size()];
}

}  // namespace

std::optional<std::string> nearest(const std::string& given, const std::vector<std::string>& known) {
    if (given.size() > kLongestWord) return std::nullopt;
    std::size_t least = std::max<std::size_t>(given.size() / 3, 1);
    std::vector<std::string> found;
    for (const std::string& word : known) {
        const std::size_t changes = distance(lower_case(given), lower_case(word));
        if (changes > least) continue;
        if (changes < least) found.clear();
        found.push_back(word);
        least = changes;
    }
    return found.size() == 1 ? std::optional(found.front()) : std::nullopt;
}

std::string any_of(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i > 0) text += i + 1 == names.size() ? " or " : ", ";
        text += names[i];
    }
    return text;
}

std::string suggestion(const std::string& given, const std::vector<std::string>& known) {
    const std::optional<std::string> word = nearest(given, known);
    return word ? "; did you mean '" + *word + "'?" : "";
}
