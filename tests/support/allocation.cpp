// SPDX-License-Identifier: Apache-2.0

#include "support/allocation.h"

#include <cstdlib>
#include <new>

namespace {

constexpr std::size_t kRecordedSizes = 4096;
constexpr std::size_t kNever = static_cast<std::size_t>(-1);

struct ThreadState {
    std::ptrdiff_t live = 0;
    std::size_t until_failure = kNever;
    bool fired = false;
    bool recording = false;
    std::size_t allocations = 0;
    std::size_t releases = 0;
    std::size_t sizes[kRecordedSizes] = {};
    void* addresses[kRecordedSizes] = {};  // null where given back
};

thread_local ThreadState state;

void* allocate(std::size_t size, std::size_t alignment) {
    if (state.until_failure != kNever && state.until_failure-- == 0) {
        state.until_failure = kNever;
        state.fired = true;
        throw std::bad_alloc();
    }
    if (size > support::kLargestBlock) throw std::bad_alloc();
    const std::size_t rounded = (size + alignment) / alignment * alignment;
    void* block = alignment <= alignof(std::max_align_t) ? std::malloc(size == 0 ? 1 : size)
                                                         : std::aligned_alloc(alignment, rounded);
    if (block == nullptr) throw std::bad_alloc();
    ++state.live;
    if (state.recording) {
        if (state.allocations < kRecordedSizes) {
            state.sizes[state.allocations] = size;
            state.addresses[state.allocations] = block;
        }
        ++state.allocations;
    }
    return block;
}

std::size_t recorded() { return state.allocations < kRecordedSizes ? state.allocations : kRecordedSizes; }

void release(void* block) noexcept {
    if (block == nullptr) return;
    --state.live;
    if (state.recording) {
        ++state.releases;
        for (std::size_t i = 0; i < recorded(); ++i) {
            if (state.addresses[i] == block) state.addresses[i] = nullptr;
        }
    }
    std::free(block);
}

void* allocate_or_null(std::size_t size, std::size_t alignment) noexcept {
    try {
        return allocate(size, alignment);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

constexpr std::size_t kPlain = alignof(std::max_align_t);

}  // namespace

void* operator new(std::size_t size) { return allocate(size, kPlain); }
void* operator new[](std::size_t size) { return allocate(size, kPlain); }
void* operator new(std::size_t size, std::align_val_t a) { return allocate(size, std::size_t(a)); }
void* operator new[](std::size_t size, std::align_val_t a) { return allocate(size, std::size_t(a)); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocate_or_null(size, kPlain);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return allocate_or_null(size, kPlain);
}
void operator delete(void* block) noexcept { release(block); }
void operator delete[](void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t) noexcept { release(block); }
void operator delete[](void* block, std::size_t) noexcept { release(block); }
void operator delete(void* block, std::align_val_t) noexcept { release(block); }
void operator delete[](void* block, std::align_val_t) noexcept { release(block); }
void operator delete(void* block, std::size_t, std::align_val_t) noexcept { release(block); }
void operator delete[](void* block, std::size_t, std::align_val_t) noexcept { release(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { release(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { release(block); }

namespace support {

AllocationRecorder::AllocationRecorder() {
    state.recording = true;
    state.allocations = 0;
    state.releases = 0;
}

AllocationRecorder::~AllocationRecorder() { state.recording = false; }

std::size_t AllocationRecorder::allocations() const { return state.allocations; }

std::size_t AllocationRecorder::releases() const { return state.releases; }

std::vector<std::size_t> AllocationRecorder::sizes() const {
    const std::size_t count = recorded();
    std::vector<std::size_t> copy(count);
    for (std::size_t i = 0; i < count; ++i) copy[i] = state.sizes[i];
    return copy;
}

std::vector<Block> AllocationRecorder::left() const {
    const std::size_t count = recorded();
    std::vector<Block> blocks;
    blocks.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        if (state.addresses[i] != nullptr) blocks.push_back({state.addresses[i], state.sizes[i]});
    }
    return blocks;
}

FailAllocation::FailAllocation(std::size_t index) {
    state.until_failure = index;
    state.fired = false;
}

FailAllocation::~FailAllocation() { state.until_failure = kNever; }

bool FailAllocation::fired() const { return state.fired; }

std::ptrdiff_t live_blocks() { return state.live; }

}  // namespace support
