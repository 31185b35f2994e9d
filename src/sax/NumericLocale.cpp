// SPDX-License-Identifier: Apache-2.0

#include "sax/NumericLocale.h"

#include <clocale>
#include <cstring>

namespace pelto::sax {

NumericLocale::NumericLocale() {
    const char* const name = std::setlocale(LC_NUMERIC, nullptr);
    if (!name || std::strcmp(name, "C") == 0) return;
    before_ = name;
    std::setlocale(LC_NUMERIC, "C");
}

NumericLocale::~NumericLocale() {
    if (before_) std::setlocale(LC_NUMERIC, before_->c_str());
}

}  // namespace pelto::sax
