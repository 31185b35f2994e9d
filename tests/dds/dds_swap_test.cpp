// SPDX-License-Identifier: Apache-2.0
// The exchange of two byte ranges that the flip is made of.
#include <algorithm>
#include <gtest/gtest.h>
#include <new>

#include "support/allocation.h"
#include "support/dds_check.h"
#include "support/dds_private.h"
#include "support/taken.h"
#include "vDDSImage.h"

namespace {

using support::AllocationRecorder;
using support::Bytes;
using support::random_bytes;
using support::taken_by;

using Sizes = std::vector<std::size_t>;

TEST(DdsSwap, ExchangesBytesThroughOneTemporary) {
    for (std::size_t n : {2u, 3u, 4u, 8u, 15u, 16u, 31u, 64u, 1000u}) {
        Bytes a = random_bytes(n + 1, 1);
        Bytes b = random_bytes(n + 1, 2);
        const Bytes old_a = a;
        const Bytes old_b = b;
        const auto taken = taken_by([&] { dds_private::swap()(a.data(), b.data(), n); });
        EXPECT_EQ(taken.sizes, Sizes{n});
        EXPECT_EQ(taken.releases, 1u);
        for (std::size_t i = 0; i <= n; ++i) {
            EXPECT_EQ(a[i], i < n ? old_b[i] : old_a[i]) << n << ", " << i;
            EXPECT_EQ(b[i], i < n ? old_a[i] : old_b[i]) << n << ", " << i;
        }
    }
}

TEST(DdsSwap, OfOneByteTakesNoMemory) {
    Bytes a = {1, 2};
    Bytes b = {3, 4};
    const AllocationRecorder recorder;
    dds_private::swap()(a.data(), b.data(), 1);
    EXPECT_EQ(recorder.allocations(), 0u);
    EXPECT_EQ(a, (Bytes{3, 2}));
    EXPECT_EQ(b, (Bytes{1, 4}));
}

TEST(DdsSwap, OfNoBytesExchangesOne) {
    Bytes a = {1, 2};
    Bytes b = {3, 4};
    const AllocationRecorder recorder;
    dds_private::swap()(a.data(), b.data(), 0);
    EXPECT_EQ(recorder.allocations(), 0u);
    EXPECT_EQ(a, (Bytes{3, 2}));
    EXPECT_EQ(b, (Bytes{1, 4}));
}

TEST(DdsSwap, WithANullRangeDoesNothing) {
    Bytes bytes = {1, 2, 3};
    const AllocationRecorder recorder;
    dds_private::swap()(nullptr, bytes.data(), 2);
    dds_private::swap()(bytes.data(), nullptr, 3);
    dds_private::swap()(nullptr, nullptr, 2);
    EXPECT_EQ(recorder.allocations(), 0u);
    EXPECT_EQ(bytes, (Bytes{1, 2, 3}));
}

TEST(DdsSwap, WithoutMemoryThrowsAndChangesNothing) {
    Bytes a = {1, 2};
    Bytes b = {3, 4};
    const auto before = support::live_blocks();
    const support::FailAllocation failure(0);
    EXPECT_THROW(dds_private::swap()(a.data(), b.data(), 2), std::bad_alloc);
    EXPECT_EQ(support::live_blocks(), before);
    EXPECT_EQ(a, (Bytes{1, 2}));
    EXPECT_EQ(b, (Bytes{3, 4}));
}

TEST(DdsSwapMemcopy, TakesATemporaryForAnySize) {
    for (std::size_t n : {0u, 1u, 2u, 17u}) {
        Bytes a = random_bytes(20, 1);
        Bytes b = random_bytes(20, 2);
        Bytes expected_a = a;
        Bytes expected_b = b;
        std::swap_ranges(expected_a.begin(), expected_a.begin() + static_cast<std::ptrdiff_t>(n),
                         expected_b.begin());
        const auto taken = taken_by([&] { dds_private::swap_memcopy()(a.data(), b.data(), n); });
        EXPECT_EQ(taken.sizes, Sizes{n});
        EXPECT_EQ(taken.releases, 1u);
        EXPECT_EQ(a, expected_a);
        EXPECT_EQ(b, expected_b);
    }
}

TEST(DdsSwapMemcopy, WithANullRangeDoesNothing) {
    Bytes bytes = {1, 2, 3};
    const AllocationRecorder recorder;
    for (std::size_t n : {0u, 1u, 3u}) {
        dds_private::swap_memcopy()(nullptr, bytes.data(), n);
        dds_private::swap_memcopy()(bytes.data(), nullptr, n);
        dds_private::swap_memcopy()(nullptr, nullptr, n);
    }
    EXPECT_EQ(recorder.allocations(), 0u);
    EXPECT_EQ(bytes, (Bytes{1, 2, 3}));
}

TEST(DdsSwapOptimized, ExchangesSingleBytes) {
    Bytes a = {1, 2};
    Bytes b = {3, 4};
    const AllocationRecorder recorder;
    dds_private::swap_optimized()(a.data(), b.data());
    EXPECT_EQ(recorder.allocations(), 0u);
    EXPECT_EQ(a, (Bytes{3, 2}));
    EXPECT_EQ(b, (Bytes{1, 4}));
}

TEST(DdsSwapOptimized, OfAByteWithItselfKeepsIt) {
    std::uint8_t byte = 0xA5;
    dds_private::swap_optimized()(&byte, &byte);
    EXPECT_EQ(byte, 0xA5);
}

}  // namespace
