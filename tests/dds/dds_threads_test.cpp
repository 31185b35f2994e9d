// SPDX-License-Identifier: Apache-2.0
// Distinct images are independent, and one image may be read by several threads.
#include <atomic>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include "support/dds_check.h"
#include "support/dds_file.h"
#include "support/plain_model.h"
#include "vDDSImage.h"

namespace {

using namespace support;

constexpr int kThreads = 4;

// Runs the work on several threads at once; it says whether it went well.
template <class Work>
int successes(Work work) {
    std::atomic<int> count = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&] { count += work() ? 1 : 0; });
    }
    for (std::thread& thread : threads) thread.join();
    return count;
}

TEST(DdsThreads, ImagesLoadAndFlipSideBySide) {
    const Bytes blocks = complete_file(fourcc_header(four_cc("DXT5")).sized(64, 64).with_mips(3));
    const Bytes pixels = complete_file(
        plain_header(kRgbWithAlpha, 32).with_masks(0xFF0000, 0xFF00, 0xFF, 0xFF000000).sized(64, 64));
    const plain::Image expected_blocks = plain::load(blocks, true, false);
    const plain::Image expected_pixels = plain::load(pixels, true, false);
    EXPECT_EQ(successes([&] {
                  vDDSImage image;
                  return load(image, blocks, Flip::yes) && same(image, expected_blocks) &&
                         load(image, pixels, Flip::yes) && same(image, expected_pixels);
              }),
              kThreads);
}

TEST(DdsThreads, OneImageIsAssembledByAll) {
    const Bytes file =
        complete_file(fourcc_header(four_cc("DXT1")).sized(32, 32).with_mips(4).with_caps2(kCubeMap));
    const vDDSImage image = loaded(file);
    const Bytes expected = plain::full_buffer(plain::load(file, false, false), -1);
    EXPECT_EQ(successes([&] {
                  Bytes buffer(image.compute_full_size(-1));
                  return image.compute_full_buffer(chars(buffer), buffer.size(), -1) && buffer == expected;
              }),
              kThreads);
}

}  // namespace
