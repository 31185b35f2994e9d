// SPDX-License-Identifier: Apache-2.0
// Distinct objects are independent, and one object may be read by several threads.
#include <atomic>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include "basis/basis_check.h"
#include "basis/fixture_files.h"
#include "vBasisImage.h"

namespace {

using namespace basis_check;
using basis_fixtures::made;
using basis_fixtures::made_path;

constexpr int kThreads = 4;

/// Runs the work, which is told the thread's number, on several threads at once; how often it went well.
template <class Work>
int successes(Work work) {
    std::atomic<int> count = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, i] { count += work(i) ? 1 : 0; });
    }
    for (std::thread& thread : threads) thread.join();
    return count;
}

/// The blocks of every slice and level in every target format.
std::vector<Bytes> everything(const vBasisImage& image) {
    std::vector<Bytes> all;
    for (unsigned int slice = 0; slice < static_cast<unsigned int>(image.getNumSlices()); ++slice) {
        for (unsigned int level = 0; level < static_cast<unsigned int>(image.getNumMipLevels()); ++level) {
            for (const int usage : {1, 2, 4, 5}) all.push_back(get_image(image, level, slice, usage).blocks);
        }
    }
    return all;
}

// Each test of CTest is a process of its own, so that these calls are its first.
TEST(BasisThreadsFirstCall, MayBeMadeBySeveralThreadsAtOnce) {
    const Bytes file = made("uastc_4x4");
    EXPECT_EQ(successes([&](int) {
                  vBasisImage image;
                  hold(image, file);
                  return get_image(image, 0, 0, 1).result;
              }),
              kThreads);
}

class BasisThreads : public testing::TestWithParam<const char*> {};

TEST_P(BasisThreads, ObjectsLoadAndTranscodeSideBySide) {
    const std::string path = made_path(std::string(GetParam()) + ".basis");
    vBasisImage first;
    ASSERT_TRUE(first.load(path.c_str()));
    const std::vector<Bytes> expected = everything(first);
    EXPECT_EQ(successes([&](int) {
                  vBasisImage image;
                  return image.load(path.c_str()) && image.isValidHeader() && everything(image) == expected;
              }),
              kThreads);
}

TEST_P(BasisThreads, OneObjectIsReadByAll) {
    vBasisImage image;
    hold(image, made(GetParam()));
    const std::vector<Bytes> expected = everything(image);
    EXPECT_EQ(successes([&](int) { return image.isValidHeader() && everything(image) == expected; }),
              kThreads);
}

INSTANTIATE_TEST_SUITE_P(Files, BasisThreads,
                         testing::Values("etc1s_alpha_array_mips", "etc1s_257x129", "uastc_array_mips",
                                         "uastc_alpha_257x129"),
                         [](const auto& test) { return std::string(test.param); });

TEST(BasisThreadsOfDifferentFiles, ObjectsOfDifferentFiles) {
    constexpr const char* kNames[kThreads] = {"etc1s_alpha_mips", "uastc_mips", "etc1s_array_mips",
                                              "uastc_alpha_different_sizes"};
    std::vector<std::vector<Bytes>> expected;
    for (const char* const name : kNames) {
        vBasisImage image;
        hold(image, made(name));
        expected.push_back(everything(image));
    }
    EXPECT_EQ(successes([&](int i) {
                  const auto index = static_cast<std::size_t>(i);
                  vBasisImage image;
                  hold(image, made(kNames[index]));
                  return everything(image) == expected[index];
              }),
              kThreads);
}

}  // namespace
