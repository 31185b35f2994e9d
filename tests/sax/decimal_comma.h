// A numeric locale whose decimal point is a comma.
#ifndef TESTS_SAX_DECIMAL_COMMA_H
#define TESTS_SAX_DECIMAL_COMMA_H

#include <clocale>
#include <string>

namespace sax {

constexpr const char* kDecimalComma = "de_DE.UTF-8";

/// Sets LC_NUMERIC for its lifetime.
class NumericLocale {
public:
    explicit NumericLocale(const char* name)
        : before_(std::setlocale(LC_NUMERIC, nullptr)), set_(std::setlocale(LC_NUMERIC, name) != nullptr) {}
    ~NumericLocale() { std::setlocale(LC_NUMERIC, before_.c_str()); }
    NumericLocale(const NumericLocale&) = delete;
    NumericLocale& operator=(const NumericLocale&) = delete;

    /// Whether this machine has the locale.
    bool set() const { return set_; }

private:
    std::string before_;
    bool set_;
};

}  // namespace sax

#endif
