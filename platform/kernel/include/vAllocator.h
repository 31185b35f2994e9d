// Where the kernel's containers take their memory from.
//
// vString and vArray take their blocks from DefaultAllocator(), and give each block back to the allocator
// that it came from, also when another one has become the default since.
#ifndef V_ALLOCATOR_H
#define V_ALLOCATOR_H

#include <cstddef>

#include "vKernelExport.h"

namespace TOZ {

/// A source of memory blocks. An allocator that is installed as the default is called from every thread
/// that uses the kernel's containers, several at once.
class PELTO_KERNEL_API vAllocator {
public:
    virtual ~vAllocator();

    /// A new block of at least `bytes` bytes, aligned as std::max_align_t and never null, also for 0 bytes.
    /// Its content is undefined. Throws std::bad_alloc when there is no memory.
    virtual void* Allocate(std::size_t bytes) = 0;

    /// Takes back a block of this allocator's; null is ignored. Must not throw.
    virtual void Release(void* block) = 0;
};

/// The allocator that new blocks come from: the one installed last, at first the built-in one, which uses
/// the global ::operator new and ::operator delete. May be called from any thread.
PELTO_KERNEL_API vAllocator& DefaultAllocator();

/// Installs `allocator`, or the built-in one for null, and returns the one before. That is never null, so
/// that it can always be installed again. May be called from any thread.
///
/// The allocator stays the caller's, who keeps it alive for as long as it is the default and as long as a
/// container holds a block of it.
PELTO_KERNEL_API vAllocator* SetDefaultAllocator(vAllocator* allocator);

}  // namespace TOZ

#endif
