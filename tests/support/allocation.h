// SPDX-License-Identifier: Apache-2.0
// Watches and fails allocations of the global allocation functions, which allocation.cpp replaces for
// the whole test program, shared libraries included. State is per thread.
#ifndef TESTS_SUPPORT_ALLOCATION_H
#define TESTS_SUPPORT_ALLOCATION_H

#include <cstddef>
#include <vector>

namespace support {

/// Blocks above this size are refused with std::bad_alloc in every test: a size that no test machine
/// can serve must end in the exception, also under a sanitizer that would abort instead.
constexpr std::size_t kLargestBlock = std::size_t{1} << 36;

struct Block {
    void* address;
    std::size_t size;
};

/// Records the allocations of this thread during its lifetime. Recorders do not nest.
class AllocationRecorder {
public:
    AllocationRecorder();
    ~AllocationRecorder();
    AllocationRecorder(const AllocationRecorder&) = delete;
    AllocationRecorder& operator=(const AllocationRecorder&) = delete;

    /// Number of blocks taken since construction.
    std::size_t allocations() const;

    /// Number of blocks given back since construction.
    std::size_t releases() const;

    /// Sizes of the blocks taken, in order; the first 4096 of them.
    std::vector<std::size_t> sizes() const;

    /// The blocks taken and not given back, in order; among the first 4096.
    std::vector<Block> left() const;
};

/// Makes allocation number `index` (0 is the next one) of this thread throw std::bad_alloc, once.
class FailAllocation {
public:
    explicit FailAllocation(std::size_t index);
    ~FailAllocation();
    FailAllocation(const FailAllocation&) = delete;
    FailAllocation& operator=(const FailAllocation&) = delete;

    /// Whether the failure has happened.
    bool fired() const;
};

/// Blocks of the global allocation functions that this thread has taken and not given back
/// (meaningful as a difference).
std::ptrdiff_t live_blocks();

}  // namespace support

#endif
