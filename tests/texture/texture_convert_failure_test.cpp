// SPDX-License-Identifier: Apache-2.0
// Converters without an input and without memory.
#include <cstdint>
#include <gtest/gtest.h>
#include <new>
#include <vector>

#include "support/allocation.h"
#include "support/check_failure_capture.h"
#include "support/guarded_memory.h"
#include "texture/converters.h"

namespace {

using namespace converters;
using support::CheckFailureCapture;
using support::CheckFailureReport;
using support::GuardedMemory;
using support::random_bytes;
using Reports = std::vector<CheckFailureReport>;

constexpr std::uint64_t power(int exponent) { return std::uint64_t{1} << exponent; }

/// From this size on, the result of a converter that adds a channel has 2^64 bytes and more.
constexpr std::uint64_t kFirstBeyondSizeType = 3 * power(62);

TEST(TextureConvertFailure, ANullInputIsReportedAndGivesNull) {
    CheckFailureCapture capture;
    for (const Converter& converter : kAll) {
        const CheckFailureReport report = {true, "iData", "vTextureUtils.cpp", converter.null_line};
        EXPECT_EQ(converter.convert(nullptr, 12), nullptr) << converter.name;
        EXPECT_EQ(capture.take(), Reports{report}) << converter.name;
    }
}

TEST(TextureConvertFailure, ANullInputIsReportedWhateverItsSize) {
    CheckFailureCapture capture;
    for (const Converter& converter : kAll) {
        const CheckFailureReport report = {true, "iData", "vTextureUtils.cpp", converter.null_line};
        for (std::uint64_t size : {std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{2}, std::uint64_t{4096},
                                   power(32), power(40), power(63), kFirstBeyondSizeType, UINT64_MAX}) {
            EXPECT_EQ(converter.convert(nullptr, size), nullptr) << converter.name << ", " << size;
            EXPECT_EQ(capture.take(), Reports{report}) << converter.name << ", " << size;
        }
    }
}

TEST(TextureConvertFailure, TheNextCallAfterANullInputConverts) {
    CheckFailureCapture capture;
    const Bytes input = random_bytes(48, 1);
    for (const Converter& converter : kAll) {
        EXPECT_EQ(converter.convert(nullptr, 48), nullptr) << converter.name;
        EXPECT_EQ(capture.take().size(), 1u) << converter.name;
        EXPECT_EQ(converted(converter, input.data(), input.size()),
                  expected_result(converter, input.data(), input.size()))
            << converter.name;
        EXPECT_TRUE(capture.take().empty()) << converter.name;
    }
}

TEST(TextureConvertFailure, HugeSizesEndInTheExceptionBeforeTheInputIsTouched) {
    CheckFailureCapture capture;
    GuardedMemory untouchable(0, GuardedMemory::Side::kEnd);
    const std::uint64_t sizes[] = {power(40),
                                   power(40) + 24,
                                   power(61),
                                   power(62),
                                   power(63) - 1,
                                   power(63),
                                   power(63) + 1,
                                   power(63) + 24,
                                   kFirstBeyondSizeType - 1,
                                   kFirstBeyondSizeType,
                                   kFirstBeyondSizeType + 48,
                                   UINT64_MAX - 48,
                                   UINT64_MAX - 3,
                                   UINT64_MAX};
    for (const Converter& converter : kAll) {
        for (std::uint64_t size : sizes) {
            const std::ptrdiff_t before = support::live_blocks();
            EXPECT_THROW(convert(converter, untouchable.data(), size), std::bad_alloc)
                << converter.name << ", " << size;
            EXPECT_EQ(support::live_blocks(), before) << converter.name << ", " << size;
        }
    }
    EXPECT_TRUE(capture.take().empty());
}

// 4/3 of the input's bytes: computed modulo 2^64, the results of the first sizes would have few bytes.
TEST(TextureConvertFailure, AResultBeyondTheSizeTypeIsABadArrayLength) {
    GuardedMemory untouchable(0, GuardedMemory::Side::kEnd);
    for (const Converter& converter : {kRgb8, kBgr8, kRgb32f})
        for (std::uint64_t size : {kFirstBeyondSizeType, kFirstBeyondSizeType + 12, kFirstBeyondSizeType + 48,
                                   kFirstBeyondSizeType + 3072, UINT64_MAX - 12, UINT64_MAX})
            EXPECT_THROW(convert(converter, untouchable.data(), size), std::bad_array_new_length)
                << converter.name << ", " << size;
}

TEST(TextureConvertFailure, AFailingAllocationThrowsAndLeaksNothing) {
    CheckFailureCapture capture;
    const Bytes input = random_bytes(1000, 2);
    for (const Converter& converter : kAll) {
        for (std::size_t size : {0u, 2u, 12u, 25u, 1000u}) {
            const Buffer source = exact_copy(input.data(), size);
            const std::ptrdiff_t before = support::live_blocks();
            {
                const support::FailAllocation fail(0);
                EXPECT_THROW(convert(converter, source.get(), size), std::bad_alloc)
                    << converter.name << ", " << size;
                EXPECT_TRUE(fail.fired()) << converter.name << ", " << size;
            }
            EXPECT_EQ(support::live_blocks(), before) << converter.name << ", " << size;
        }
    }
    EXPECT_TRUE(capture.take().empty()) << "the exception is the only sign";
}

TEST(TextureConvertFailure, TheNextCallAfterAFailingAllocationConverts) {
    const Bytes input = random_bytes(1000, 3);
    for (const Converter& converter : kAll) {
        {
            const support::FailAllocation fail(0);
            EXPECT_THROW(convert(converter, input.data(), input.size()), std::bad_alloc) << converter.name;
        }
        EXPECT_EQ(converted(converter, input.data(), input.size()),
                  expected_result(converter, input.data(), input.size()))
            << converter.name;
    }
}

}  // namespace
