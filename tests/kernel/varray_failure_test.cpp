// SPDX-License-Identifier: Apache-2.0

#include <cstddef>
#include <gtest/gtest.h>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "kernel/array_values.h"
#include "kernel/counting_allocator.h"
#include "vArray.h"
#include "vString.h"

namespace {

using kernel_tests::array_of;
using kernel_tests::content;
using kernel_tests::CountingAllocator;
using kernel_tests::DefaultAllocatorScope;
using TOZ::vString;

/// Counts its objects; copying number `until_throw` throws, and so does moving when it is not noexcept.
template <bool kMoveThrows>
struct Tracked {
    explicit Tracked(int number) : value(number) { ++live; }
    Tracked(const Tracked& other) : value(other.value) { enter(); }
    Tracked(Tracked&& other) noexcept(!kMoveThrows) : value(other.value) {
        if constexpr (kMoveThrows) {
            enter();
        } else {
            ++live;
        }
        other.value = -1;
    }
    Tracked& operator=(const Tracked&) = delete;
    ~Tracked() { --live; }

    static void enter() {
        if (until_throw-- == 0) throw std::runtime_error("copy");
        ++live;
    }

    int value;
    inline static int live = 0;
    inline static int until_throw = -1;
};

TEST(ArrayFailure, AFailedAppendChangesNothingAtEveryAllocation) {
    CountingAllocator allocator;
    const DefaultAllocatorScope scope(allocator);
    for (int size = 0; size < 10; ++size) {
        vArray<vString> array;
        for (int i = 0; i < size; ++i) array.Append(vString(std::to_string(i).c_str()));
        const auto before = content(array);
        vString added("added");
        std::size_t failures = 0;
        for (bool appended = false; !appended;) {
            const std::size_t live = allocator.live();
            allocator.fail_at(failures);
            try {
                array.Append(added);
                appended = true;
                EXPECT_FALSE(allocator.failed());
            } catch (const std::bad_alloc&) {
                ++failures;
                EXPECT_EQ(allocator.live(), live);
                EXPECT_EQ(content(array), before);
            }
        }
        EXPECT_EQ(failures, size == 0 || size == 4 || size == 8 ? 2U : 1U) << size;
        EXPECT_EQ(array[array.Size() - 1], added);
    }
}

TEST(ArrayFailure, AFailedAppendLeavesTheElementThatItWouldMove) {
    CountingAllocator allocator;
    const DefaultAllocatorScope scope(allocator);
    vArray<vString> array;
    vString added("added");
    allocator.fail_at(0);
    EXPECT_THROW(array.Append(std::move(added)), std::bad_alloc);
    EXPECT_STREQ(added.CStr(), "added");  // NOLINT(bugprone-use-after-move): the move has not happened
    EXPECT_EQ(array.Size(), 0U);
}

template <class Element>
void expect_failed_copies_change_nothing() {
    for (int size = 0; size < 10; ++size) {
        vArray<Element> array;
        for (int i = 0; i < size; ++i) array.Append(Element(i));
        const Element added(100);
        bool appended = false;
        for (int copies = 0; !appended; ++copies) {
            const int live = Element::live;
            Element::until_throw = copies;
            try {
                array.Append(added);
                appended = true;
            } catch (const std::runtime_error&) {
                EXPECT_EQ(Element::live, live);
                ASSERT_EQ(array.Size(), static_cast<std::size_t>(size));
                for (int i = 0; i < size; ++i) EXPECT_EQ(array[static_cast<std::size_t>(i)].value, i);
            }
            Element::until_throw = -1;
        }
        EXPECT_EQ(array.Size(), static_cast<std::size_t>(size) + 1);
    }
    EXPECT_EQ(Element::live, 0);
}

TEST(ArrayFailure, AnElementThatCannotBeCopiedLeavesTheArrayAsItWas) {
    expect_failed_copies_change_nothing<Tracked<false>>();
}

TEST(ArrayFailure, ElementsWithAThrowingMoveAreCopiedWhenTheArrayGrows) {
    expect_failed_copies_change_nothing<Tracked<true>>();
}

TEST(ArrayFailure, AFailedCopyLeaksNothing) {
    CountingAllocator allocator;
    const DefaultAllocatorScope scope(allocator);
    const vArray<vString> original = array_of<vString>({"a", "b", "c"});
    vArray<vString> target = array_of<vString>({"d"});
    const std::size_t live = allocator.live();
    for (std::size_t failures = 0; failures < 4; ++failures) {
        allocator.fail_at(failures);
        EXPECT_THROW(const vArray<vString> copy(original), std::bad_alloc) << failures;
        allocator.fail_at(failures);
        EXPECT_THROW(target = original, std::bad_alloc) << failures;
        EXPECT_EQ(content(target), std::vector<vString>{"d"});
        EXPECT_EQ(allocator.live(), live) << failures;
    }
}

}  // namespace
