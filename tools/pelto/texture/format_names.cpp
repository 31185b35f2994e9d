// SPDX-License-Identifier: Apache-2.0
#include "texture/format_names.h"

#include <array>
#include <charconv>
#include <map>
#include <sstream>
#include <system_error>
#include <vTextureUtils.h>
#include <vector>

#include "arguments/choices.h"
#include "arguments/lower_case.h"
#include "output/table.h"

namespace {

constexpr int kLastPixelFormat = 50;
constexpr int kLastFormat = 64;
constexpr int kLastClientType = 36;

// Two formats each.
struct BlockFormat {
    const char* name;
    int number;  // of the first
    std::map<std::string, int> other_names;
};

const std::array<BlockFormat, 7> kBlockFormats = {{
    {"BC1", 51, {{"DXT1", 51}}},
    {"BC2", 53, {{"DXT3", 53}}},
    {"BC3", 55, {{"DXT5", 55}}},
    {"BC4", 57, {{"BC4U", 57}, {"BC4S", 58}}},
    {"BC5", 59, {{"BC5U", 59}, {"BC5S", 60}}},
    {"BC6H", 61, {{"BC6", 61}, {"BC6H_SF16", 61}, {"BC6H_UF16", 61}}},
    {"BC7", 63, {}},
}};

// The size of a single pixel, or of a block.
template <class Format>
unsigned int unit_bytes(int number) {
    return vTextureUtils::ComputeImageSizeInBytes(1, 1, 1, 0, static_cast<Format>(number));
}

std::string bytes_name(unsigned int bytes) { return std::to_string(bytes) + "B"; }

// The numbers whose pixels take as many bytes, smallest first.
template <class Format>
std::map<unsigned int, std::vector<int>> by_bytes(int last) {
    std::map<unsigned int, std::vector<int>> numbers;
    for (int number = 1; number <= last; ++number) numbers[unit_bytes<Format>(number)].push_back(number);
    return numbers;
}

const auto& pixel_formats() {
    static const auto formats = by_bytes<vTextureFormat::Type>(kLastPixelFormat);
    return formats;
}

const auto& client_types() {
    static const auto types = by_bytes<vTextureClientDataType>(kLastClientType);
    return types;
}

// In lower case; the first number of each size.
std::map<std::string, int> names_of(const std::map<unsigned int, std::vector<int>>& by_bytes) {
    std::map<std::string, int> names;
    for (const auto& [bytes, numbers] : by_bytes) names[lower_case(bytes_name(bytes))] = numbers.front();
    return names;
}

std::map<std::string, int> format_names() {
    std::map<std::string, int> names = names_of(pixel_formats());
    for (const BlockFormat& format : kBlockFormats) {
        names[lower_case(format.name)] = format.number;
        for (const auto& [name, number] : format.other_names) names[lower_case(name)] = number;
    }
    return names;
}

std::optional<int> number_of(const std::string& text, int last, const std::map<std::string, int>& names) {
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error == std::errc() && stop == end && number >= 1 && number <= last) return number;
    const auto named = names.find(lower_case(text));
    return named == names.end() ? std::nullopt : std::optional(named->second);
}

std::string sizes_text(const std::map<unsigned int, std::vector<int>>& by_bytes) {
    std::vector<std::string> names;
    for (const auto& [bytes, numbers] : by_bytes) names.push_back(bytes_name(bytes));
    return any_of(names);
}

std::string list_of(const std::vector<int>& numbers) {
    std::string text;
    for (const int number : numbers) text += (text.empty() ? "" : ", ") + std::to_string(number);
    return text;
}

using Rows = std::vector<std::vector<std::string>>;

Rows size_rows(const std::map<unsigned int, std::vector<int>>& by_bytes) {
    Rows rows;
    for (const auto& [bytes, numbers] : by_bytes) {
        rows.push_back({bytes_name(bytes), std::to_string(bytes) + " a pixel", list_of(numbers)});
    }
    return rows;
}

Rows block_rows() {
    Rows rows;
    for (const BlockFormat& format : kBlockFormats) {
        std::string names = format.name;
        for (const auto& [name, number] : format.other_names) names += ", " + name;
        rows.push_back({names,
                        std::to_string(unit_bytes<vTextureFormat::Type>(format.number)) + " a 4 x 4 block",
                        list_of({format.number, format.number + 1})});
    }
    return rows;
}

}  // namespace

std::optional<int> format_number(const std::string& text) {
    static const std::map<std::string, int> names = format_names();
    return number_of(text, kLastFormat, names);
}

std::optional<int> client_type_number(const std::string& text) {
    static const std::map<std::string, int> names = names_of(client_types());
    return number_of(text, kLastClientType, names);
}

std::string no_format(const std::string& text) {
    std::vector<std::string> names;
    std::vector<std::string> all_names;
    for (const BlockFormat& format : kBlockFormats) {
        names.emplace_back(format.name);
        all_names.emplace_back(format.name);
        for (const auto& [name, number] : format.other_names) all_names.push_back(name);
    }
    return "'" + text + "' is no format: give a number from 1 to " + std::to_string(kLastFormat) + ", " +
           any_of(names) + ", or the bytes of a pixel as " + sizes_text(pixel_formats()) +
           suggestion(text, all_names);
}

std::string no_client_type(const std::string& text) {
    return "'" + text + "' is no layout: give a number from 1 to " + std::to_string(kLastClientType) +
           ", or the bytes of a pixel as " + sizes_text(client_types());
}

std::string format_tables() {
    std::ostringstream tables;
    Rows formats = size_rows(pixel_formats());
    const Rows blocks = block_rows();
    formats.insert(formats.end(), blocks.begin(), blocks.end());
    print_table(tables, {{"FORMAT"}, {"bytes"}, {"numbers"}}, formats);
    tables << '\n';
    print_table(tables, {{"LAYOUT"}, {"bytes"}, {"numbers"}}, size_rows(client_types()));
    return tables.str();
}
