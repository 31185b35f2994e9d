// SPDX-License-Identifier: Apache-2.0
// The kernel's string: a zero-terminated text of bytes in any encoding.
#ifndef V_STRING_H
#define V_STRING_H

#include <cstddef>

#include "vAllocator.h"
#include "vKernelExport.h"

namespace TOZ {

/// An immutable text; only assignment changes it. Empty strings hold no memory.
///
/// Memory comes from DefaultAllocator() and goes back to the allocator that it came from. Its
/// std::bad_alloc is the only exception of this class; a failed assignment changes nothing.
///
/// Threads: distinct strings are independent; several threads may read one string while none changes it.
class PELTO_KERNEL_API vString {
public:
    /// An empty string.
    vString() noexcept;

    /// A copy of the zero-terminated `text`; null gives an empty string.
    vString(const char* text);

    vString(const vString& other);

    /// Takes the text over and leaves `other` empty.
    vString(vString&& other) noexcept;

    vString& operator=(const vString& other);

    /// Takes the text over and leaves `other` empty.
    vString& operator=(vString&& other) noexcept;

    ~vString();

    /// The zero-terminated text, never null; owned by the string and valid until it changes.
    const char* CStr() const noexcept;

    /// Bytes in the text, without the terminating zero.
    std::size_t Length() const noexcept;

private:
    vString(const char* text, std::size_t length);
    void _Swap(vString& other) noexcept;

    vAllocator* _allocator;
    char* _text;
    std::size_t _length;
};

// Texts compare byte by byte, as unsigned numbers; a prefix of a text is smaller than the text.
PELTO_KERNEL_API bool operator==(const vString& a, const vString& b) noexcept;
PELTO_KERNEL_API bool operator!=(const vString& a, const vString& b) noexcept;
PELTO_KERNEL_API bool operator<(const vString& a, const vString& b) noexcept;

}  // namespace TOZ

#endif
