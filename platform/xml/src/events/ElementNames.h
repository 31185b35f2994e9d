// SPDX-License-Identifier: Apache-2.0
// The names of a document's elements, as the parser keeps those that no schema declares.
#ifndef ELEMENT_NAMES_H
#define ELEMENT_NAMES_H

#include <array>
#include <cstddef>
#include <string>
#include <unordered_set>
#include <xercesc/util/XercesDefs.hpp>

namespace sax {

/// With schemas, the parser keeps undeclared elements in a fixed number of lists, one of which it goes
/// through at each such element. This keeps account of all elements: which are declared is not known here.
class ElementNames {
public:
    /// Adds the name unless it is there, and returns how many names are in its list.
    std::size_t add(const XMLCh* uri, const XMLCh* local_name);

private:
    static constexpr std::size_t kLists = 29;

    std::unordered_set<std::u16string> names_;
    std::array<std::size_t, kLists> lengths_{};
    std::u16string name_;  // keeps its memory
};

}  // namespace sax

#endif
