// A numeric locale with a decimal comma, where the machine has one.
#ifndef TESTS_SAX_COMMA_LOCALE_H
#define TESTS_SAX_COMMA_LOCALE_H

#include <clocale>
#include <cstring>
#include <string>

namespace sax_tests {

inline std::string numeric_locale() { return std::setlocale(LC_NUMERIC, nullptr); }

/// Sets the numeric locale, where possible, and the one before at its end.
class CommaLocale {
public:
    CommaLocale() : before_(numeric_locale()) {
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "fr_FR.UTF-8", "German_Germany"}) {
            if (std::setlocale(LC_NUMERIC, name) != nullptr &&
                std::strcmp(std::localeconv()->decimal_point, ",") == 0) {
                name_ = numeric_locale();
                return;
            }
        }
        std::setlocale(LC_NUMERIC, before_.c_str());
    }
    ~CommaLocale() { std::setlocale(LC_NUMERIC, before_.c_str()); }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    /// Empty where there is none.
    const std::string& name() const { return name_; }

private:
    std::string before_;
    std::string name_;
};

}  // namespace sax_tests

#endif
