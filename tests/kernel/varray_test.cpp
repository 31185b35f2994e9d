// SPDX-License-Identifier: Apache-2.0

#include "vArray.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <numeric>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "kernel/array_values.h"
#include "kernel/counting_allocator.h"
#include "vString.h"

namespace {

using kernel_tests::array_of;
using kernel_tests::content;
using kernel_tests::CountingAllocator;
using kernel_tests::DefaultAllocatorScope;
using TOZ::vString;

TEST(Array, IsEmptyWithoutMemoryByDefault) {
    CountingAllocator allocator;
    const DefaultAllocatorScope scope(allocator);
    vArray<int> array;
    EXPECT_EQ(array.Size(), 0U);
    EXPECT_EQ(array.begin(), array.end());
    array.Clear();
    const vArray<int> copy(array);
    EXPECT_EQ(copy.Size(), 0U);
    EXPECT_EQ(allocator.allocations(), 0U);
}

TEST(Array, KeepsAppendedElementsInOrder) {
    vArray<int> array;
    std::vector<int> expected(1000);
    std::iota(expected.begin(), expected.end(), 0);
    for (const int number : expected) array.Append(number);
    EXPECT_EQ(array.Size(), 1000U);
    EXPECT_EQ(content(array), expected);
    EXPECT_EQ(array[999], 999);
}

TEST(Array, ElementsCanBeWritten) {
    vArray<int> array = array_of({1, 2, 3});
    array[1] = 20;
    for (int& number : array) ++number;
    EXPECT_EQ(content(array), (std::vector<int>{2, 21, 4}));
}

TEST(Array, AnElementOfItsOwnCanBeAppendedAtEverySize) {
    for (int size = 1; size < 40; ++size) {
        vArray<vString> array;
        for (int i = 0; i < size; ++i) array.Append(vString(std::to_string(i).c_str()));
        array.Append(array[0]);
        EXPECT_EQ(array[array.Size() - 1], array[0]) << size;
        array.Append(std::move(array[0]));
        EXPECT_STREQ(array[array.Size() - 1].CStr(), "0") << size;
        EXPECT_EQ(array.Size(), static_cast<std::size_t>(size) + 2);
    }
}

TEST(Array, HoldsElementsThatCanOnlyBeMoved) {
    vArray<std::unique_ptr<int>> array;
    for (int i = 0; i < 20; ++i) array.Append(std::make_unique<int>(i));
    const vArray<std::unique_ptr<int>> moved(std::move(array));
    EXPECT_EQ(*moved[19], 19);
}

TEST(Array, HoldsArraysOfItsOwnElementType) {
    struct Node {
        vArray<Node> children;
    };
    Node root;
    root.children.Append(Node());
    root.children[0].children.Append(Node());
    const Node copy = root;
    EXPECT_EQ(copy.children[0].children.Size(), 1U);
}

TEST(Array, MovesElementsWhenItGrows) {
    vArray<vString> array = array_of<vString>({"text"});
    const char* bytes = array[0].CStr();
    for (int i = 0; i < 100; ++i) array.Append(vString());
    EXPECT_EQ(array[0].CStr(), bytes);
}

TEST(Array, GrowsByAFactor) {
    CountingAllocator allocator;
    const DefaultAllocatorScope scope(allocator);
    vArray<int> array;
    for (int i = 0; i < 100000; ++i) array.Append(i);
    EXPECT_LE(allocator.allocations(), 20U);
    EXPECT_EQ(allocator.live(), 1U);
}

TEST(Array, ACopyIsIndependentAndDeep) {
    vArray<vString> original = array_of<vString>({"a", "b"});
    const vArray<vString> copy(original);
    original[0] = "x";
    original.Append("c");
    EXPECT_EQ(content(copy), (std::vector<vString>{"a", "b"}));
    EXPECT_EQ(content(original), (std::vector<vString>{"x", "b", "c"}));
}

TEST(Array, AssignmentReplacesTheElements) {
    vArray<vString> array = array_of<vString>({"a", "b", "c"});
    const vArray<vString> other = array_of<vString>({"d"});
    array = other;
    EXPECT_EQ(content(array), content(other));
    array = vArray<vString>();
    EXPECT_EQ(array.Size(), 0U);
}

TEST(Array, AMoveTakesTheMemoryAndLeavesAUsableEmptyArray) {
    vArray<int> source = array_of({1, 2, 3});
    const int* elements = source.begin();
    vArray<int> target(std::move(source));
    EXPECT_EQ(target.begin(), elements);
    EXPECT_EQ(source.Size(), 0U);  // NOLINT(bugprone-use-after-move): the state that a move promises
    source.Append(4);
    target = std::move(source);
    EXPECT_EQ(content(target), std::vector<int>{4});
    EXPECT_EQ(source.Size(), 0U);  // NOLINT(bugprone-use-after-move): the state that a move promises
    source.Append(5);
    EXPECT_EQ(content(source), std::vector<int>{5});
}

TEST(Array, SurvivesAssignmentToItself) {
    vArray<vString> array = array_of<vString>({"a", "b"});
    vArray<vString>& same = array;
    array = same;
    EXPECT_EQ(content(array), (std::vector<vString>{"a", "b"}));
    array = std::move(same);
    EXPECT_EQ(content(array), (std::vector<vString>{"a", "b"}));
}

TEST(Array, MovesDoNotThrow) {
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<vArray<int>>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<vArray<int>>);
}

TEST(Array, ClearDestroysTheElementsAndKeepsTheMemory) {
    CountingAllocator allocator;
    const DefaultAllocatorScope scope(allocator);
    vArray<vString> array = array_of<vString>({"a", "b", "c"});
    const std::size_t taken = allocator.allocations();
    array.Clear();
    EXPECT_EQ(array.Size(), 0U);
    EXPECT_EQ(allocator.live(), 1U);
    array.Append(vString());
    EXPECT_EQ(allocator.allocations(), taken);
}

TEST(Array, ABlockGoesBackToTheAllocatorThatItCameFrom) {
    CountingAllocator first;
    CountingAllocator second;
    {
        const DefaultAllocatorScope first_scope(first);
        vArray<int> grown = array_of({1, 2, 3, 4});
        vArray<int> moved_from = array_of({5});
        vArray<int> assigned = array_of({6});
        EXPECT_EQ(first.live(), 3U);
        const DefaultAllocatorScope second_scope(second);
        grown.Append(5);
        assigned = grown;
        const vArray<int> moved_to(std::move(moved_from));
        EXPECT_EQ(first.live(), 1U);
        EXPECT_EQ(second.live(), 2U);
    }
    EXPECT_EQ(first.allocations(), 3U);
    EXPECT_EQ(second.allocations(), 2U);
}

TEST(ArrayCapacity, DoublesUpToTheLargestBlock) {
    using TOZ::vArrayDetail::grown_capacity;
    constexpr auto largest = static_cast<std::size_t>(PTRDIFF_MAX);
    EXPECT_EQ(grown_capacity(0, 1), 4U);
    EXPECT_EQ(grown_capacity(4, 1), 8U);
    EXPECT_EQ(grown_capacity(5, 24), 10U);
    EXPECT_EQ(grown_capacity(largest / 2 + 1, 1), largest);
    EXPECT_EQ(grown_capacity(largest / 16 + 1, 8), largest / 8);
    EXPECT_EQ(grown_capacity(0, largest), 1U);
    EXPECT_EQ(grown_capacity(1, largest / 3), 3U);
}

TEST(ArrayCapacity, ABlockThatNoSizeCanTellIsOutOfMemory) {
    using TOZ::vArrayDetail::grown_capacity;
    constexpr auto largest = static_cast<std::size_t>(PTRDIFF_MAX);
    EXPECT_THROW(grown_capacity(largest, 1), std::bad_alloc);
    EXPECT_THROW(grown_capacity(largest / 8, 8), std::bad_alloc);
    EXPECT_THROW(grown_capacity(1, largest), std::bad_alloc);
}

#ifndef NDEBUG
TEST(ArrayDeathTest, AnIndexOutsideIsAsserted) {
    vArray<int> array = array_of({1, 2});
    EXPECT_DEATH(array[2] = 0, "index");
}
#endif

}  // namespace
