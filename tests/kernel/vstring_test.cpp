// SPDX-License-Identifier: Apache-2.0

#include "vString.h"

#include <array>
#include <gtest/gtest.h>
#include <new>
#include <string>
#include <type_traits>
#include <utility>

#include "kernel/counting_allocator.h"

namespace {

using kernel_tests::CountingAllocator;
using kernel_tests::DefaultAllocatorScope;
using TOZ::vString;

TEST(String, IsEmptyByDefault) {
    const vString text;
    EXPECT_STREQ(text.CStr(), "");
    EXPECT_EQ(text.Length(), 0U);
}

TEST(String, NullReadsAsEmpty) {
    const char* none = nullptr;
    const vString text(none);
    EXPECT_STREQ(text.CStr(), "");
    EXPECT_EQ(text.Length(), 0U);
    EXPECT_EQ(text, vString());
}

TEST(String, CopiesTheTextThatItIsMadeFrom) {
    char source[] = "kernel";
    const vString text(source);
    source[0] = 'x';
    EXPECT_STREQ(text.CStr(), "kernel");
}

TEST(String, LengthCountsBytes) {
    EXPECT_EQ(vString("\xc3\xa9t\xc3\xa9").Length(), 5U);
    const std::string long_text(100000, 'a');
    EXPECT_EQ(vString(long_text.c_str()).Length(), long_text.size());
    EXPECT_EQ(vString(long_text.c_str()).CStr(), long_text);
}

TEST(String, ACopyIsIndependent) {
    vString original("one");
    const vString copy(original);
    original = "two";
    EXPECT_STREQ(copy.CStr(), "one");
    EXPECT_STREQ(original.CStr(), "two");
}

TEST(String, AMoveTakesTheMemoryAndLeavesAnEmptyString) {
    vString source("text");
    const char* bytes = source.CStr();
    const vString target(std::move(source));
    EXPECT_EQ(target.CStr(), bytes);
    EXPECT_EQ(target.Length(), 4U);
    EXPECT_EQ(source, vString());  // NOLINT(bugprone-use-after-move): the state that a move promises
    source = "again";
    EXPECT_STREQ(source.CStr(), "again");
}

TEST(String, AMoveAssignmentTakesTheMemoryAndLeavesAnEmptyString) {
    vString source("text");
    vString target("before");
    const char* bytes = source.CStr();
    target = std::move(source);
    EXPECT_EQ(target.CStr(), bytes);
    EXPECT_EQ(source, vString());  // NOLINT(bugprone-use-after-move): the state that a move promises
}

TEST(String, SurvivesAssignmentToItself) {
    vString text("text");
    vString& same = text;
    text = same;
    EXPECT_STREQ(text.CStr(), "text");
    text = std::move(same);
    EXPECT_STREQ(text.CStr(), "text");
    text = text.CStr() + 1;
    EXPECT_STREQ(text.CStr(), "ext");
}

TEST(String, MovesDoNotThrow) {
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<vString>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<vString>);
}

TEST(String, ComparesBytesAsUnsignedNumbers) {
    const std::array<vString, 6> ascending{"", "A", "a", "ab", "b", "\xc3\xa9"};
    for (std::size_t i = 0; i < ascending.size(); ++i) {
        for (std::size_t j = 0; j < ascending.size(); ++j) {
            const auto& a = ascending[i];
            const auto& b = ascending[j];
            EXPECT_EQ(a == b, i == j) << a.CStr() << ", " << b.CStr();
            EXPECT_EQ(a != b, i != j) << a.CStr() << ", " << b.CStr();
            EXPECT_EQ(a < b, i < j) << a.CStr() << ", " << b.CStr();
        }
    }
}

TEST(String, ComparesWithALiteral) {
    EXPECT_TRUE(vString("a") == "a");
    EXPECT_TRUE("b" != vString("a"));
}

TEST(String, EmptyStringsHoldNoMemory) {
    CountingAllocator allocator;
    const DefaultAllocatorScope scope(allocator);
    const vString empty("");
    vString copy(empty);
    copy = empty;
    const vString moved(std::move(copy));
    EXPECT_EQ(allocator.allocations(), 0U);
}

TEST(String, TakesOneBlockFromTheDefaultAllocator) {
    CountingAllocator allocator;
    const DefaultAllocatorScope scope(allocator);
    const vString text("text");
    EXPECT_EQ(allocator.allocations(), 1U);
    EXPECT_EQ(allocator.live(), 1U);
}

TEST(String, ABlockGoesBackToTheAllocatorThatItCameFrom) {
    CountingAllocator first;
    CountingAllocator second;
    {
        const DefaultAllocatorScope first_scope(first);
        vString moved_from("one");
        vString assigned("two");
        const vString destroyed("three");
        const DefaultAllocatorScope second_scope(second);
        const vString moved_to(std::move(moved_from));
        assigned = vString("four");
        EXPECT_EQ(first.live(), 2U);
        EXPECT_EQ(second.live(), 1U);
        const vString copy(destroyed);
        EXPECT_EQ(second.live(), 2U);
    }
    EXPECT_EQ(first.allocations(), 3U);
    EXPECT_EQ(second.allocations(), 2U);
}

TEST(String, AFailedConstructionLeaksNothing) {
    CountingAllocator allocator;
    const DefaultAllocatorScope scope(allocator);
    const vString original("text");
    allocator.fail_at(0);
    EXPECT_THROW(vString("other"), std::bad_alloc);
    allocator.fail_at(0);
    EXPECT_THROW(const vString copy(original), std::bad_alloc);
    EXPECT_EQ(allocator.live(), 1U);
}

TEST(String, AFailedAssignmentChangesNothing) {
    CountingAllocator allocator;
    const DefaultAllocatorScope scope(allocator);
    vString text("before");
    const vString other("other");
    const char* bytes = text.CStr();
    allocator.fail_at(0);
    EXPECT_THROW(text = other, std::bad_alloc);
    EXPECT_EQ(text.CStr(), bytes);
    EXPECT_STREQ(text.CStr(), "before");
    EXPECT_EQ(allocator.live(), 2U);
}

}  // namespace
