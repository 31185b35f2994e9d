// SPDX-License-Identifier: Apache-2.0
// Which entry of its class's virtual table a member function is, where the Itanium C++ ABI holds.
#ifndef TESTS_SUPPORT_VTABLE_SLOT_H
#define TESTS_SUPPORT_VTABLE_SLOT_H

#include <cstddef>
#include <cstring>

namespace support {

/// `member` must be virtual. Entries count from 0; a destructor has two.
template <class Member>
std::size_t vtable_slot(Member member) {
    std::ptrdiff_t parts[2];
    static_assert(sizeof parts == sizeof member);
    std::memcpy(parts, &member, sizeof parts);
    // For a virtual function the first part is the entry's offset in the table, plus one.
    return static_cast<std::size_t>(parts[0] - 1) / sizeof(void*);
}

}  // namespace support

#endif
