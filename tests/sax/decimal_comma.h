// SPDX-License-Identifier: Apache-2.0
// A numeric locale whose decimal point is a comma.
#ifndef TESTS_SAX_DECIMAL_COMMA_H
#define TESTS_SAX_DECIMAL_COMMA_H

#include <clocale>
#include <string>

namespace sax {

constexpr const char* kDecimalComma = "de_DE.UTF-8";

inline std::string numeric_locale() { return std::setlocale(LC_NUMERIC, nullptr); }

/// Sets the numeric locale to kDecimalComma, and the one before at its end.
class DecimalComma {
public:
    DecimalComma() : before_(numeric_locale()), set_(std::setlocale(LC_NUMERIC, kDecimalComma) != nullptr) {}
    ~DecimalComma() { std::setlocale(LC_NUMERIC, before_.c_str()); }
    DecimalComma(const DecimalComma&) = delete;
    DecimalComma& operator=(const DecimalComma&) = delete;

    /// Whether this machine has the locale.
    bool set() const { return set_; }

private:
    std::string before_;
    bool set_;
};

}  // namespace sax

#endif
