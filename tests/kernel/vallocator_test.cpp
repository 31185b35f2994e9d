// SPDX-License-Identifier: Apache-2.0

#include "vAllocator.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <new>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include "kernel/counting_allocator.h"
#include "support/allocation.h"
#include "vArray.h"
#include "vString.h"

namespace {

using kernel_tests::CountingAllocator;
using kernel_tests::DefaultAllocatorScope;

TEST(Allocator, CanBeDeletedThroughTheBaseClass) {
    EXPECT_TRUE(std::has_virtual_destructor_v<TOZ::vAllocator>);
}

TEST(BuiltInAllocator, GivesAlignedBlocksOfEverySize) {
    TOZ::vAllocator& allocator = TOZ::DefaultAllocator();
    for (const std::size_t bytes : {0U, 1U, 2U, 7U, 8U, 15U, 16U, 17U, 4096U, 1000000U}) {
        void* block = allocator.Allocate(bytes);
        ASSERT_NE(block, nullptr) << bytes;
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignof(std::max_align_t), 0U) << bytes;
        std::memset(block, 0xa5, bytes);
        allocator.Release(block);
    }
}

TEST(BuiltInAllocator, UsesTheGlobalAllocationFunctions) {
    TOZ::vAllocator& allocator = TOZ::DefaultAllocator();
    const support::AllocationRecorder recorder;
    void* block = allocator.Allocate(123);
    const auto taken = recorder.sizes();
    allocator.Release(block);
    EXPECT_EQ(taken, std::vector<std::size_t>{123});
    EXPECT_EQ(recorder.releases(), 2U);
}

TEST(BuiltInAllocator, IgnoresTheReleaseOfNull) {
    TOZ::vAllocator& allocator = TOZ::DefaultAllocator();
    const support::AllocationRecorder recorder;
    allocator.Release(nullptr);
    EXPECT_EQ(recorder.releases(), 0U);
}

TEST(BuiltInAllocator, ThrowsWhenThereIsNoMemory) {
    TOZ::vAllocator& allocator = TOZ::DefaultAllocator();
    EXPECT_THROW(allocator.Allocate(support::kLargestBlock + 1), std::bad_alloc);
    const support::FailAllocation failure(0);
    EXPECT_THROW(allocator.Allocate(1), std::bad_alloc);
}

TEST(DefaultAllocator, IsTheOneInstalledLast) {
    CountingAllocator first;
    CountingAllocator second;
    const DefaultAllocatorScope first_scope(first);
    EXPECT_EQ(&TOZ::DefaultAllocator(), &first);
    const DefaultAllocatorScope second_scope(second);
    EXPECT_EQ(&TOZ::DefaultAllocator(), &second);
}

TEST(DefaultAllocator, InstallingReturnsTheOneBefore) {
    CountingAllocator first;
    CountingAllocator second;
    TOZ::vAllocator* built_in = TOZ::SetDefaultAllocator(&first);
    EXPECT_NE(built_in, nullptr);
    EXPECT_EQ(TOZ::SetDefaultAllocator(&second), &first);
    EXPECT_EQ(TOZ::SetDefaultAllocator(built_in), &second);
    EXPECT_EQ(&TOZ::DefaultAllocator(), built_in);
}

TEST(DefaultAllocator, NullRestoresTheBuiltInOne) {
    TOZ::vAllocator* built_in = &TOZ::DefaultAllocator();
    CountingAllocator other;
    TOZ::SetDefaultAllocator(&other);
    EXPECT_EQ(TOZ::SetDefaultAllocator(nullptr), &other);
    EXPECT_EQ(&TOZ::DefaultAllocator(), built_in);
    EXPECT_EQ(TOZ::SetDefaultAllocator(nullptr), built_in);
}

TEST(DefaultAllocator, MayChangeWhileOtherThreadsUseContainers) {
    CountingAllocator first;
    CountingAllocator second;
    const DefaultAllocatorScope scope(first);
    std::atomic<bool> done{false};
    std::thread swapper([&] {
        while (!done) {
            TOZ::SetDefaultAllocator(&second);
            TOZ::SetDefaultAllocator(&first);
        }
    });

    constexpr int users = 3;
    std::vector<std::string> last_text(users);
    std::vector<std::thread> threads;
    for (auto& text : last_text) {
        threads.emplace_back([&text] {
            vArray<TOZ::vString> array;
            for (int i = 0; i < 500; ++i) array.Append(TOZ::vString(std::to_string(i).c_str()));
            const vArray<TOZ::vString> copy(array);
            array = copy;
            text = array[499].CStr();
        });
    }
    for (auto& thread : threads) thread.join();
    done = true;
    swapper.join();

    EXPECT_EQ(last_text, std::vector<std::string>(users, "499"));
    EXPECT_GE(first.allocations() + second.allocations(), users * 1500U);
}

}  // namespace
