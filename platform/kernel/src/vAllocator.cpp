// SPDX-License-Identifier: Apache-2.0

#include "vAllocator.h"

#include <atomic>
#include <new>

#include "NeverDestroyed.h"

namespace TOZ {
namespace {

class BuiltInAllocator final : public vAllocator {
public:
    void* Allocate(std::size_t bytes) override { return ::operator new(bytes); }
    void Release(void* block) override { ::operator delete(block); }
};

/// Outlives the static containers whose blocks come back to it at the end of the process.
vAllocator* built_in_allocator() {
    static NeverDestroyed<BuiltInAllocator> allocator;
    return &allocator.value;
}

std::atomic<vAllocator*>& installed_allocator() {
    static std::atomic<vAllocator*> allocator{built_in_allocator()};
    return allocator;
}

}  // namespace

vAllocator::~vAllocator() = default;

vAllocator& DefaultAllocator() { return *installed_allocator().load(std::memory_order_acquire); }

vAllocator* SetDefaultAllocator(vAllocator* allocator) {
    vAllocator* next = allocator ? allocator : built_in_allocator();
    return installed_allocator().exchange(next, std::memory_order_acq_rel);
}

}  // namespace TOZ
