// SPDX-License-Identifier: Apache-2.0
// The source of the memory of the kernel's containers.
//
// vString and vArray take their blocks from DefaultAllocator(), and give each block back to the allocator
// that it came from, even if the default has changed since.
#ifndef V_ALLOCATOR_H
#define V_ALLOCATOR_H

#include <cstddef>

#include "vKernelExport.h"

namespace TOZ {

/// A source of memory blocks. Every thread that uses the kernel's containers calls the default allocator,
/// several of them at once.
class PELTO_KERNEL_API vAllocator {
public:
    virtual ~vAllocator();

    /// A new block of at least `bytes` bytes, aligned as std::max_align_t and never null, even for 0 bytes.
    /// Its content is undefined. Throws std::bad_alloc if there is no memory.
    virtual void* Allocate(std::size_t bytes) = 0;

    /// Takes back a block from this allocator; ignores null. Must not throw.
    virtual void Release(void* block) = 0;
};

/// The allocator of new blocks: the one installed last, or at first the built-in one, which uses the global
/// ::operator new and ::operator delete. Any thread may call this.
PELTO_KERNEL_API vAllocator& DefaultAllocator();

/// Installs `allocator`, or the built-in one for null, and returns the previous one. That is never null, so
/// you can always install it again. Any thread may call this.
///
/// The allocator stays the caller's, who must keep it alive while it is the default and while any container
/// holds one of its blocks.
PELTO_KERNEL_API vAllocator* SetDefaultAllocator(vAllocator* allocator);

}  // namespace TOZ

#endif
