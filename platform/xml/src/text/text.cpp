// SPDX-License-Identifier: Apache-2.0

#include "text/text.h"

#include <iterator>
#include <utf8.h>

namespace sax {

std::u16string to_utf16(const std::string& text) {
    std::string valid;
    utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(valid));
    return utf8::utf8to16(valid);
}

}  // namespace sax
