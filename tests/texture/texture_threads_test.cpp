// SPDX-License-Identifier: Apache-2.0
// Every operation may run on several threads at once.
#include <atomic>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include "support/check_failure_capture.h"
#include "texture/converters.h"
#include "texture/texture_model.h"
#include "vTextureUtils.h"

namespace {

using namespace converters;
using namespace texture_model;
using support::CheckFailureCapture;
using support::CheckFailureReport;

/// The number of results that are not as expected.
int wrong_results(std::uint32_t seed) {
    int wrong = 0;
    const std::uint32_t width = seed * 1000 + 17;
    for (int value = 1; value <= 64; ++value)
        for (std::uint32_t level = 0; level < 32; ++level)
            wrong += vTextureUtils::ComputeImageSizeInBytes(width, 99, 3, level, format(value)) !=
                     level_bytes(width, 99, 3, level, value);
    for (std::size_t size = 0; size < 500; size += 7) {
        const Bytes input = support::random_bytes(size + 1, seed);
        for (const Converter& converter : kAll)
            wrong += converters::converted(converter, input.data(), size) !=
                     expected_result(converter, input.data(), size);
    }
    wrong += vTextureUtils::ComputeImageSizeInBytes(width, 99, 3, 0, format(0)) != 0;
    wrong += vTextureUtils::ConvertRGB8ToRGBA8(nullptr, seed) != nullptr;
    return wrong;
}

TEST(TextureThreads, OperationsAreIndependent) {
    constexpr std::uint32_t kThreads = 4;
    constexpr int kRounds = 5;
    CheckFailureCapture capture;
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (std::uint32_t seed = 1; seed <= kThreads; ++seed)
        threads.emplace_back([seed, &wrong] {
            for (int round = 0; round < kRounds; ++round) wrong += wrong_results(seed);
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong, 0);

    int formats = 0;
    int pointers = 0;
    for (const CheckFailureReport& report : capture.take()) {
        formats += report == CheckFailureReport{false, "Format not supported !", "vTextureUtils.cpp", 250};
        pointers += report == CheckFailureReport{true, "iData", "vTextureUtils.cpp", 356};
    }
    EXPECT_EQ(formats, int{kThreads} * kRounds);
    EXPECT_EQ(pointers, int{kThreads} * kRounds);
}

}  // namespace
