// SPDX-License-Identifier: Apache-2.0
// Tokens that are numbers, nearly numbers or neither.
#ifndef TESTS_SAX_RANDOM_TOKENS_H
#define TESTS_SAX_RANDOM_TOKENS_H

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <random>
#include <string>

namespace sax {

inline constexpr const char* kHostileTokens[] = {"0x10",
                                                 "0X1p3",
                                                 "0x",
                                                 "0x.",
                                                 "0x1.8p",
                                                 "0x1p-149",
                                                 "0x1p-150",
                                                 "0x1.8p-1074",
                                                 "inf",
                                                 "-INF",
                                                 "infinity",
                                                 "infinit",
                                                 "in",
                                                 "nan",
                                                 "-nan",
                                                 "NaN",
                                                 "nan()",
                                                 "nan(123)",
                                                 "nan(tag)",
                                                 "nan(",
                                                 "nan(a-b)",
                                                 "na",
                                                 "+1",
                                                 "-1",
                                                 "+-1",
                                                 "-+1",
                                                 "--1",
                                                 "+",
                                                 "-",
                                                 "\t1",
                                                 "\t+1",
                                                 "\r",
                                                 "\t",
                                                 "1\r",
                                                 "1\r2",
                                                 "1\t2",
                                                 "1e",
                                                 "1e+",
                                                 "1e-",
                                                 "1e+x",
                                                 "1e5",
                                                 "1E-5",
                                                 "e5",
                                                 ".",
                                                 "-.",
                                                 ".e5",
                                                 "-.5",
                                                 ".5",
                                                 "1.",
                                                 "+1.e2",
                                                 "1..2",
                                                 "1.2.3",
                                                 "1,5",
                                                 ",5",
                                                 "1e400",
                                                 "-1e400",
                                                 "1e-400",
                                                 "1e39",
                                                 "1e-40",
                                                 "1e-46",
                                                 "1e-310",
                                                 "1e-324",
                                                 "2.4703282292062327e-324",
                                                 "2.4703282292062328e-324",
                                                 "2.2250738585072011e-308",
                                                 "2.2250738585072014e-308",
                                                 "1.17549435e-38",
                                                 "1.17549429e-38",
                                                 "1.1754943157898258e-38",
                                                 "1.4e-45",
                                                 "7e-46",
                                                 "7.1e-46",
                                                 "3.4028235e38",
                                                 "3.40282356e38",
                                                 "3.4028235677973366e38",
                                                 "3.4028235677973365e38",
                                                 "1.7976931348623157e308",
                                                 "1.7976931348623158e308",
                                                 "1.7976931348623159e308",
                                                 "2147483647",
                                                 "2147483648",
                                                 "-2147483648",
                                                 "-2147483649",
                                                 "4294967296",
                                                 "9223372036854775807",
                                                 "9223372036854775808",
                                                 "-9223372036854775809",
                                                 "18446744073709551616",
                                                 "0e999999999999",
                                                 "0.0e-99999",
                                                 "1e99999999999999999999",
                                                 "-0",
                                                 "-0.0",
                                                 "00",
                                                 "1_000",
                                                 "1'000",
                                                 "1f",
                                                 "1L",
                                                 "1d5",
                                                 "\xef\xbc\x91",
                                                 ("\xc2\xa0"
                                                  "1"),
                                                 "true"};

class RandomTokens {
public:
    explicit RandomTokens(unsigned seed) : random_(seed) {}

    unsigned below(unsigned n) { return static_cast<unsigned>(random_() % n); }

    std::string next() {
        std::string token = plain();
        if (below(8) == 0) change(token);
        const char point = below(4) == 0 ? ',' : '.';
        std::replace(token.begin(), token.end(), below(2) == 0 ? '.' : ',', point);
        if (token.empty()) token.push_back('0');
        return token;
    }

private:
    template <class Value>
    static std::string printed(const char* format, Value value) {
        char text[1200];
        std::snprintf(text, sizeof text, format, value);
        return text;
    }

    std::string digits(unsigned most) {
        std::string text;
        for (unsigned n = below(most); n > 0; --n) text += static_cast<char>('0' + below(10));
        return text;
    }

    template <class Real, class Bits>
    Real real() {
        const Bits bits = static_cast<Bits>(random_());
        Real value;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }

    std::string plain() {
        const float single = real<float, std::uint32_t>();
        const double wide = real<double, std::uint64_t>();
        switch (below(12)) {
            case 0:
                return std::to_string(static_cast<std::int64_t>(random_()) >> below(64));
            case 1:
                return printed("%.9g", static_cast<double>(single));
            case 2:
                return printed("%.17g", wide);
            case 3:
                return printed("%a", wide);
            case 4:
                return printed("%.3f", std::ldexp(static_cast<double>(below(1 << 30)), -15));
            case 5:
                return std::next(std::begin(kHostileTokens), below(std::size(kHostileTokens)))[0];
            case 6: {
                const std::string pool = "0123456789+-.,eExXnNaAiIfFpP()\t\r_";
                std::string text;
                for (unsigned n = 1 + below(10); n > 0; --n)
                    text += pool[below(static_cast<unsigned>(pool.size()))];
                return text;
            }
            case 7:
                return digits(30)
                    .append(1, '.')
                    .append(digits(30))
                    .append(1, 'e')
                    .append(std::to_string(static_cast<int>(below(800)) - 400));
            case 8: {  // halfway between two floats
                const double next = static_cast<double>(std::nextafter(single, 0.0F));
                std::string half = printed("%.250g", (static_cast<double>(single) + next) / 2);
                if (below(2)) half.push_back('1');
                return half;
            }
            case 9: {  // close to halfway between two floats, in few digits
                const double half = 1 + static_cast<double>(2 * below(1 << 23) + 1) * 0x1p-24;
                return printed("%.16g", std::ldexp(half, static_cast<int>(below(140)) - 40));
            }
            case 10: {  // halfway between two doubles
                const long double next = std::nextafter(wide, 0.0);
                return printed("%.800Lg", (static_cast<long double>(wide) + next) / 2);
            }
            default:
                return printed("%.9g", std::ldexp(static_cast<double>(below(1 << 24)), -149));
        }
    }

    void change(std::string& token) {
        const std::string pool = "09+-.eExp,\t\rn";
        const std::size_t place = below(static_cast<unsigned>(token.size() + 1));
        const char byte = pool[below(static_cast<unsigned>(pool.size()))];
        if (place < token.size() && below(2) == 0) {
            token[place] = byte;
        } else {
            token.insert(place, 1, byte);
        }
    }

    std::mt19937_64 random_;
};

}  // namespace sax

#endif
