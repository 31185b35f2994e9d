// SPDX-License-Identifier: Apache-2.0

#include "events/ElementNames.h"

#include <xercesc/util/XMLString.hpp>

namespace sax {

std::size_t ElementNames::add(const XMLCh* uri, const XMLCh* local_name) {
    std::size_t& length = lengths_[xercesc::XMLString::hash(local_name, kLists)];
    name_.assign(uri).append(1, u' ').append(local_name);
    if (names_.insert(name_).second) ++length;
    return length;
}

}  // namespace sax
