// SPDX-License-Identifier: Apache-2.0
// Reaches private members by name: access checks do not apply to the arguments of an explicit
// instantiation. One line per member:
//
//   PELTO_PRIVATE_MEMBER(swap_bytes, &vDDSImage::_Swap, void (*)(void*, void*, std::size_t))
//   swap_bytes()(a, b, n);                     // a static member
//   (image.*clamp_size())(0);                  // a non-static one
#ifndef TESTS_SUPPORT_PRIVATE_ACCESS_H
#define TESTS_SUPPORT_PRIVATE_ACCESS_H

#define PELTO_PRIVATE_MEMBER(name, member, ...)        \
    using name##_pointer = __VA_ARGS__;                \
    name##_pointer name();                             \
    template <name##_pointer value>                    \
    struct name##_opener {                             \
        friend name##_pointer name() { return value; } \
    };                                                 \
    template struct name##_opener<member>;

#endif
