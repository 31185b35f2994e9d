// SPDX-License-Identifier: Apache-2.0
// Allocators for the tests of the kernel's containers.
#ifndef TESTS_KERNEL_COUNTING_ALLOCATOR_H
#define TESTS_KERNEL_COUNTING_ALLOCATOR_H

#include <cstddef>
#include <gtest/gtest.h>
#include <mutex>
#include <new>
#include <unordered_set>

#include "vAllocator.h"

namespace kernel_tests {

/// Knows its blocks: the test fails when a block of another allocator is given back to it, or when one of
/// its own is still out at its end. Any thread may use it.
class CountingAllocator : public TOZ::vAllocator {
public:
    ~CountingAllocator() override { EXPECT_EQ(live(), 0U) << "blocks have not come back"; }

    void* Allocate(std::size_t bytes) override {
        const std::lock_guard lock(mutex_);
        if (until_failure_ != kNever && until_failure_-- == 0) {
            until_failure_ = kNever;
            throw std::bad_alloc();
        }
        void* block = ::operator new(bytes);
        blocks_.insert(block);
        ++allocations_;
        return block;
    }

    void Release(void* block) override {
        const std::lock_guard lock(mutex_);
        EXPECT_EQ(blocks_.erase(block), 1U) << "a block has come back to another allocator";
        ::operator delete(block);
    }

    /// Makes allocation number `index` (0 is the next one) throw, once.
    void fail_at(std::size_t index) {
        const std::lock_guard lock(mutex_);
        until_failure_ = index;
    }

    /// Ends fail_at; whether the failure has happened.
    bool failed() {
        const std::lock_guard lock(mutex_);
        const bool happened = until_failure_ == kNever;
        until_failure_ = kNever;
        return happened;
    }

    /// Blocks taken so far.
    std::size_t allocations() const {
        const std::lock_guard lock(mutex_);
        return allocations_;
    }

    /// Blocks that have not come back.
    std::size_t live() const {
        const std::lock_guard lock(mutex_);
        return blocks_.size();
    }

private:
    static constexpr std::size_t kNever = static_cast<std::size_t>(-1);

    mutable std::mutex mutex_;
    std::unordered_set<void*> blocks_;
    std::size_t until_failure_ = kNever;
    std::size_t allocations_ = 0;
};

/// Installs a default allocator for its lifetime.
class DefaultAllocatorScope {
public:
    explicit DefaultAllocatorScope(TOZ::vAllocator& allocator)
        : before_(TOZ::SetDefaultAllocator(&allocator)) {}
    ~DefaultAllocatorScope() { TOZ::SetDefaultAllocator(before_); }
    DefaultAllocatorScope(const DefaultAllocatorScope&) = delete;
    DefaultAllocatorScope& operator=(const DefaultAllocatorScope&) = delete;

private:
    TOZ::vAllocator* before_;
};

}  // namespace kernel_tests

#endif
