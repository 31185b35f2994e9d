// SPDX-License-Identifier: Apache-2.0
// Process-wide objects that outlive every static destructor.
#ifndef NEVER_DESTROYED_H
#define NEVER_DESTROYED_H

namespace TOZ {

/// Holds a T that is constructed and never destroyed. As a function's static variable it gives an object
/// that is made on first use, without the heap, and may be used from the destructors of other statics.
template <class T>
union NeverDestroyed {
    NeverDestroyed() : value() {}
    ~NeverDestroyed() {}

    T value;
};

}  // namespace TOZ

#endif
