// SPDX-License-Identifier: Apache-2.0
#include "arguments/argument_checks.h"

#include <charconv>
#include <system_error>

#include "arguments/choices.h"
#include "arguments/lower_case.h"

namespace {

// The whole text as a number.
template <class Number>
bool read(const std::string& text, Number& number) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end;
}

template <class Number>
std::string not_in_range(const std::string& text, const char* what, Number first, Number last) {
    return "'" + text + "' is not a " + what + " from " + std::to_string(first) + " to " +
           std::to_string(last);
}

}  // namespace

CLI::Validator whole_number(std::uint64_t first, std::uint64_t last) {
    const auto check = [first, last](std::string& text) -> std::string {
        std::uint64_t value = 0;
        if (!read(text, value) || value < first || value > last) {
            return not_in_range(text, "whole number", first, last);
        }
        text = std::to_string(value);
        return "";
    };
    return {check, ""};
}

CLI::Validator number(int first, int last) {
    const auto check = [first, last](const std::string& text) -> std::string {
        double value = 0;
        const std::string unsigned_text = text.substr(text.starts_with('+') ? 1 : 0);
        if (read(unsigned_text, value) && value >= first && value <= last) return "";
        return not_in_range(text, "number", first, last);
    };
    return {check, ""};
}

CLI::Validator one_of(const std::vector<std::string>& names) {
    const auto check = [names](std::string& text) -> std::string {
        for (const std::string& name : names) {
            if (lower_case(name) != lower_case(text)) continue;
            text = name;
            return "";
        }
        return "'" + text + "' is not " + any_of(names) + suggestion(text, names);
    };
    return {check, ""};
}
