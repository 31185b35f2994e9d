// SPDX-License-Identifier: Apache-2.0

#include "sax/number_tokens.h"

#include <bit>
#include <cerrno>
#include <cfenv>
#include <cfloat>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <string>
#include <system_error>
#include <type_traits>

namespace pelto::sax {
namespace {

bool is_separator(char c) { return c == ' ' || c == '\n'; }

bool is_digit(char c) { return c >= '0' && c <= '9'; }

std::string_view first_token(std::string_view text) {
    std::size_t length = 0;
    while (length < text.size() && !is_separator(text[length])) ++length;
    return text.substr(0, length);
}

/// The text from the next token on, when `place` is within one or at its end.
std::string_view from_next_token(const char* place, const char* last) {
    while (place != last && !is_separator(*place)) ++place;
    while (place != last && is_separator(*place)) ++place;
    return {place, last};
}

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

/// Appends the digits at `place` to `number`, modulo 2^64, and returns their end.
const char* read_digits(const char* place, const char* last, std::uint64_t& number) {
    for (; place != last; ++place) {
        const unsigned digit = static_cast<unsigned char>(*place) - unsigned{'0'};
        if (digit > 9) break;
        number = number * 10 + digit;
    }
    return place;
}

/// Reads the power of ten behind an 'e', and returns its end, or null where it has no digits or many.
const char* read_power(const char* place, const char* last, std::ptrdiff_t& power) {
    const bool negative = place != last && *place == '-';
    if (place != last && (*place == '-' || *place == '+')) ++place;
    std::uint64_t number = 0;
    const char* const end = read_digits(place, last, number);
    if (end == place || end - place > 3) return nullptr;
    power += negative ? -static_cast<std::ptrdiff_t>(number) : static_cast<std::ptrdiff_t>(number);
    return end;
}

constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                   1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr std::ptrdiff_t kMostPower = std::size(kPowersOfTen) - 1;

/// Whether a double lies halfway between two floats.
bool is_halfway(double number) {
    constexpr int dropped_bits = std::numeric_limits<double>::digits - std::numeric_limits<float>::digits;
    constexpr std::uint64_t half = std::uint64_t{1} << (dropped_bits - 1);
    return (std::bit_cast<std::uint64_t>(number) & (2 * half - 1)) == half;
}

/// Reads a token that is a decimal number of few digits, and returns its length; 0 for any other token. The
/// digits and the power of ten are doubles, so that one operation gives the nearest double. The float that is
/// nearest to it is the nearest one to the token too, unless the double lies halfway between two.
template <class Float>
std::size_t read_short(std::string_view text, Float& number) {
    if constexpr (FLT_EVAL_METHOD != 0) return 0;
    constexpr std::uint64_t largest_exact = std::uint64_t{1} << 53;
    constexpr std::ptrdiff_t most_places = std::numeric_limits<std::uint64_t>::digits10;
    const char* const first = text.data();
    const char* const last = first + text.size();
    const bool negative = *first == '-';

    std::uint64_t digits = 0;
    const char* end = read_digits(first + negative, last, digits);
    std::ptrdiff_t places = end - first - negative;
    std::ptrdiff_t power = 0;
    if (end != last && *end == '.') {
        const char* const fraction = end + 1;
        end = read_digits(fraction, last, digits);
        places += end - fraction;
        power = fraction - end;
    }
    if (end != last && (*end == 'e' || *end == 'E')) end = read_power(end + 1, last, power);

    if (!end || (end != last && !is_separator(*end))) return 0;
    if (places == 0 || places > most_places || digits > largest_exact) return 0;
    if (power < -kMostPower || power > kMostPower) return 0;
    const double value = static_cast<double>(digits);
    const double size = power < 0 ? value / kPowersOfTen[-power] : value * kPowersOfTen[power];
    if (std::is_same_v<Float, float> && is_halfway(size)) return 0;
    number = static_cast<Float>(negative ? -size : size);
    return static_cast<std::size_t>(end - first);
}

/// Reads a decimal number that std::from_chars and the C functions read alike, and returns its length. 0 for
/// other tokens: signs and spellings that only the C functions know, and numbers at the ends of the range,
/// where these report errors.
template <class Float>
std::size_t read_plain(std::string_view text, Float& number) {
    const char* const first = text.data();
    const char* const last = first + text.size();
    const char* const digits = first + (*first == '-');
    if (digits == last || !(is_digit(*digits) || *digits == '.')) return 0;
    const auto [end, error] = std::from_chars(first, last, number);
    if (error != std::errc()) return 0;
    const bool hexadecimal = end != last && (*end == 'x' || *end == 'X');
    const bool in_range = std::isnormal(number) && std::abs(number) > std::numeric_limits<Float>::min();
    const std::string_view read(first, end);
    const bool zero = read.find_first_not_of("0.-") == std::string_view::npos;
    return hexadecimal || !(in_range || zero) ? 0 : read.size();
}

template <class Float>
Float take(std::string_view& rest, bool plain, Float (*convert)(const char*, char**), const char* name) {
    Float number = 0;
    std::size_t length = plain ? read_short(rest, number) : 0;
    if (plain && length == 0) length = read_plain(rest, number);
    if (length == 0) number = converted(first_token(rest), convert, name);
    rest = from_next_token(rest.data() + length, rest.data() + rest.size());
    return number;
}

long to_long(const char* text, char** end) { return std::strtol(text, end, 10); }

}  // namespace

bool c_locale_reads_plain_numbers() {
    const char* const point = std::localeconv()->decimal_point;
    return point[0] == '.' && point[1] == '\0' && std::fegetround() == FE_TONEAREST;
}

std::string_view from_first_token(std::string_view text) {
    while (!text.empty() && is_separator(text.front())) text.remove_prefix(1);
    return text;
}

int take_int(std::string_view& rest) {
    int number = 0;
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
    if (error != std::errc()) {
        const long wide = converted(first_token(rest), to_long, "stoi");
        if (wide < std::numeric_limits<int>::min() || wide > std::numeric_limits<int>::max()) {
            throw std::out_of_range("stoi argument out of range");
        }
        number = static_cast<int>(wide);
    }
    rest = from_next_token(end, rest.data() + rest.size());
    return number;
}

float take_float(std::string_view& rest, bool plain) { return take(rest, plain, std::strtof, "stof"); }

double take_double(std::string_view& rest, bool plain) { return take(rest, plain, std::strtod, "stod"); }

}  // namespace pelto::sax
