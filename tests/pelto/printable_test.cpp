// SPDX-License-Identifier: Apache-2.0
// What of a text of unknown origin reaches a terminal.
#include "output/printable.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <utf8.h>

namespace {

std::string encoded(std::uint32_t code_point) {
    std::string text;
    utf8::append(code_point, std::back_inserter(text));
    return text;
}

bool kept(std::uint32_t code_point) { return printable(encoded(code_point)) == encoded(code_point); }

// The code points on both sides of each range.
TEST(Printable, EscapesControlsAndNoOtherCodePoint) {
    struct Range {
        std::uint32_t first;
        std::uint32_t last;
    };
    for (const auto& [first, last] : {Range{0, 0x1F}, Range{0x7F, 0x9F}, Range{0x61C, 0x61C},
                                      Range{0x200E, 0x200F}, Range{0x202A, 0x202E}, Range{0x2066, 0x2069}}) {
        for (std::uint32_t code_point = first; code_point <= last; ++code_point) {
            EXPECT_FALSE(kept(code_point)) << std::hex << code_point;
        }
        if (first > 0) {
            EXPECT_TRUE(kept(first - 1)) << std::hex << first;
        }
        EXPECT_TRUE(kept(last + 1)) << std::hex << last;
    }
    for (const std::uint32_t code_point : {0xE9U, 0x20ACU, 0xFFFDU, 0x1F600U, 0x10FFFFU}) {
        EXPECT_TRUE(kept(code_point)) << std::hex << code_point;
    }
}

TEST(Printable, WritesEachByteAsTwoDigits) {
    EXPECT_EQ(printable("a\tb\x7F"), "a\\x09b\\x7f");
    EXPECT_EQ(printable("\xC2\x9B"
                        "31m"),
              "\\xc2\\x9b31m");
    EXPECT_EQ(printable("\xE2\x80\xAE"
                        "gnp.dds"),
              "\\xe2\\x80\\xaegnp.dds");
    EXPECT_EQ(printable(std::string("\0", 1)), "\\x00");
    EXPECT_EQ(printable(""), "");
}

TEST(Printable, KeepsBytesThatAreNotUtf8ButForControls) {
    EXPECT_EQ(printable("\xFF\xFE\xA0"), "\xFF\xFE\xA0");
    EXPECT_EQ(printable("\x80\x9B\x9F\xA0"), "\\x80\\x9b\\x9f\xA0");
    // An overlong sequence is none, nor is one that is cut off.
    EXPECT_EQ(printable("\xE0\x82\x9B"), "\xE0\\x82\\x9b");
    EXPECT_EQ(printable("\xE2\x80"), "\xE2\\x80");
    EXPECT_EQ(printable("\xE2\x1B"), "\xE2\\x1b");
}

}  // namespace
