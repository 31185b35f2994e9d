// SPDX-License-Identifier: Apache-2.0
// The word that was probably meant.
#include "arguments/choices.h"

#include <gtest/gtest.h>

namespace {

const std::vector<std::string> kWords = {"check", "inspect", "sheet", "size", "transcode"};

TEST(Choices, NearestForgivesOneChangeOfThreeLetters) {
    EXPECT_EQ(nearest("check", kWords), "check");
    EXPECT_EQ(nearest("chek", kWords), "check");
    EXPECT_EQ(nearest("chaeck", kWords), "check");
    EXPECT_EQ(nearest("chick", kWords), "check");
    EXPECT_EQ(nearest("chekc", kWords), "check");
    EXPECT_EQ(nearest("SIZE", kWords), "size");
    EXPECT_EQ(nearest("transkobe", kWords), "transcode");
    EXPECT_EQ(nearest("transkobba", kWords), std::nullopt);
    EXPECT_EQ(nearest("chakc", kWords), std::nullopt);
    EXPECT_EQ(nearest("", kWords), std::nullopt);
    EXPECT_EQ(nearest("check", {}), std::nullopt);
    EXPECT_EQ(nearest(std::string(1000, 'c'), {std::string(1000, 'c')}), std::nullopt);
}

TEST(Choices, NearestIsNoneOfSeveral) {
    EXPECT_EQ(nearest("bc8", {"bc1", "bc3"}), std::nullopt);
    EXPECT_EQ(nearest("bc8", {"bc1", "bc3", "bc4"}), std::nullopt);
    EXPECT_EQ(nearest("bc1", {"bc3", "bc1", "bc4"}), "bc1");
}

TEST(Choices, SuggestionIsTheEndOfASentence) {
    EXPECT_EQ(suggestion("shet", kWords), "; did you mean 'sheet'?");
    EXPECT_EQ(suggestion("convert", kWords), "");
}

TEST(Choices, AnyOfListsThemAll) {
    EXPECT_EQ(any_of({}), "");
    EXPECT_EQ(any_of({"a"}), "a");
    EXPECT_EQ(any_of({"a", "b"}), "a or b");
    EXPECT_EQ(any_of({"a", "b", "c"}), "a, b or c");
}

}  // namespace
