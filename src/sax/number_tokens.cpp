#include "sax/number_tokens.h"

#include <cerrno>
#include <cfenv>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>

namespace pelto::sax {
namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }

// The C functions need a terminating zero, and must not read on behind the token.
template <class Number>
Number converted(std::string_view token, Number (*convert)(const char*, char**), const char* name) {
    const std::string text(token);
    char* end = nullptr;
    errno = 0;
    const Number number = convert(text.c_str(), &end);
    if (end == text.c_str()) throw std::invalid_argument(std::string("invalid ") + name + " argument");
    if (errno == ERANGE) throw std::out_of_range(std::string(name) + " argument out of range");
    return number;
}

// A decimal number that std::from_chars and the C functions read alike. Nothing for other tokens: signs and
// spellings that only the C functions know, and numbers at the ends of the range, where these report errors.
template <class Float>
std::optional<Float> plain_number(std::string_view token) {
    const char* const first = token.data();
    const char* const last = first + token.size();
    const char* const digits = first + (first != last && *first == '-');
    if (digits == last || !(is_digit(*digits) || *digits == '.')) return std::nullopt;
    Float number;
    const auto [end, error] = std::from_chars(first, last, number);
    if (error != std::errc()) return std::nullopt;
    const bool hexadecimal = end != last && (*end == 'x' || *end == 'X');
    const bool in_range = std::isnormal(number) && std::abs(number) > std::numeric_limits<Float>::min();
    const bool zero = token.find_first_not_of("0.-") == std::string_view::npos;
    if (hexadecimal || !(in_range || zero)) return std::nullopt;
    return number;
}

long to_long(const char* text, char** end) { return std::strtol(text, end, 10); }

}  // namespace

bool c_locale_reads_plain_numbers() {
    const char* const point = std::localeconv()->decimal_point;
    return point[0] == '.' && point[1] == '\0' && std::fegetround() == FE_TONEAREST;
}

int int_of(std::string_view token) {
    int number;
    if (std::from_chars(token.data(), token.data() + token.size(), number).ec == std::errc()) return number;
    const long wide = converted(token, to_long, "stoi");
    if (wide < std::numeric_limits<int>::min() || wide > std::numeric_limits<int>::max()) {
        throw std::out_of_range("stoi argument out of range");
    }
    return static_cast<int>(wide);
}

float float_of(std::string_view token, bool plain) {
    const std::optional<float> number = plain ? plain_number<float>(token) : std::nullopt;
    return number ? *number : converted(token, std::strtof, "stof");
}

double double_of(std::string_view token, bool plain) {
    const std::optional<double> number = plain ? plain_number<double>(token) : std::nullopt;
    return number ? *number : converted(token, std::strtod, "stod");
}

}  // namespace pelto::sax
