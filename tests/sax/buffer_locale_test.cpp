// SPDX-License-Identifier: Apache-2.0
// Conversions follow the decimal point of the current locale.
#include <clocale>
#include <gtest/gtest.h>
#include <locale.h>

#include "sax/array_read.h"
#include "sax/decimal_comma.h"
#include "sax/recording_buffer.h"

namespace {

TEST(SaxBufferLocale, AnArrayFollowsTheDecimalPoint) {
    EXPECT_EQ(sax::read_one<float>("1.5"), 1.5F);
    EXPECT_EQ(sax::read_one<double>("1,5"), 1.0);
    const sax::DecimalComma comma;
    if (!comma.set()) GTEST_SKIP() << "the locale " << sax::kDecimalComma << " is not on this machine";
    EXPECT_EQ(sax::read_one<float>("1,5"), 1.5F);
    EXPECT_EQ(sax::read_one<double>("1,5"), 1.5);
    EXPECT_EQ(sax::read_one<float>("1.5"), 1.0F);
    EXPECT_EQ(sax::read_one<double>("1.5"), 1.0);
    EXPECT_EQ(sax::read_one<int>("1,5"), 1);
}

TEST(SaxBufferLocale, AnArrayFollowsTheLocaleOfTheThread) {
    const locale_t comma = newlocale(LC_NUMERIC_MASK, sax::kDecimalComma, nullptr);
    if (!comma) GTEST_SKIP() << "the locale " << sax::kDecimalComma << " is not on this machine";
    const locale_t before = uselocale(comma);
    const double with_comma = sax::read_one<double>("1,5");
    const double with_dot = sax::read_one<double>("1.5");
    uselocale(before);
    freelocale(comma);
    EXPECT_EQ(with_comma, 1.5);
    EXPECT_EQ(with_dot, 1.0);
}

TEST(SaxBufferLocale, ASingleFloatFollowsTheDecimalPoint) {
    const sax::DecimalComma comma;
    if (!comma.set()) GTEST_SKIP() << "the locale " << sax::kDecimalComma << " is not on this machine";
    float value = 0;
    EXPECT_EQ(sax::RecordingBuffer("1,5").GetFloat(value), 1);
    EXPECT_EQ(value, 1.5F);
    EXPECT_EQ(sax::RecordingBuffer("1.5").GetFloat(value), 1);
    EXPECT_EQ(value, 1.0F);
}

}  // namespace
