// SPDX-License-Identifier: Apache-2.0
// The numeric locale "C" for a while.
#ifndef PELTO_SAX_NUMERIC_LOCALE_H
#define PELTO_SAX_NUMERIC_LOCALE_H

#include <optional>
#include <string>

namespace pelto::sax {

/// Sets the process's LC_NUMERIC to "C", and on destruction back to what it was. Changes nothing where it is
/// "C" already.
class NumericLocale {
public:
    NumericLocale();
    ~NumericLocale();
    NumericLocale(const NumericLocale&) = delete;
    NumericLocale& operator=(const NumericLocale&) = delete;

private:
    std::optional<std::string> before_;
};

}  // namespace pelto::sax

#endif
