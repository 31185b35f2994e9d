// SPDX-License-Identifier: Apache-2.0
// One buffer may be read by several threads while nothing changes it.
#include <atomic>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include "sax/array_read.h"

namespace {

TEST(SaxBufferThreads, OneBufferIsReadByAll) {
    vSAXDefaultBuffer buffer;
    buffer.SetBuffer(" 12 1.5 x");
    std::atomic<int> good = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            bool all = true;
            for (int round = 0; round < 500; ++round) {
                bool boolean = false;
                int number = 0;
                unsigned positive = 0;
                unsigned char byte = 0;
                float real = 0;
                std::string text;
                TOZ::vString kernel_text;
                vArray<TOZ::vString> words;
                all = all && buffer.GetBoolean(boolean) == 0;
                all = all && buffer.GetInt32(number) == 1 && number == 12;
                all = all && buffer.GetUint32(positive) == 1 && positive == 12;
                all = all && buffer.GetUint8(byte) == 1 && byte == 12;
                all = all && buffer.GetFloat(real) == 1 && real == 12;
                all = all && buffer.GetString(text) == 1 && text == "12 1.5 x";
                all = all && buffer.GetVString(kernel_text) == 1 && kernel_text == TOZ::vString("12 1.5 x");
                all = all && buffer.GetVStringArray(words) == 1 && words.Size() == 3;
                all = all && sax::read<int>(buffer, 2, 2).values == std::vector<int>{12, 1};
                const auto floats = sax::read<float>(buffer, 2, 2);
                all = all && floats.values[1] == 1.5F && floats.exception == sax::invalid<float>();
                const auto doubles = sax::read<double>(buffer, 2, 2);
                all = all && doubles.values[1] == 1.5 && doubles.exception == sax::invalid<double>();
            }
            good += all ? 1 : 0;
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(good, 4);
}

}  // namespace
