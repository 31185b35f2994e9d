// SPDX-License-Identifier: Apache-2.0
// The single numbers: GetInt32, GetUint32, GetUint8 and GetFloat.
#include <climits>
#include <cmath>
#include <gtest/gtest.h>

#include "sax/array_read.h"
#include "sax/recording_buffer.h"

namespace {

using sax::Errors;
using sax::RecordingBuffer;

int int32_of(const char* text) {
    const RecordingBuffer buffer(text);
    int value = 0;
    EXPECT_EQ(buffer.GetInt32(value), 1) << text;
    EXPECT_TRUE(buffer.errors.empty()) << text;
    return value;
}

unsigned uint32_of(const char* text) {
    const RecordingBuffer buffer(text);
    unsigned value = 0;
    EXPECT_EQ(buffer.GetUint32(value), 1) << text;
    EXPECT_TRUE(buffer.errors.empty()) << text;
    return value;
}

unsigned uint8_of(const char* text) {
    const RecordingBuffer buffer(text);
    unsigned char value = 0;
    EXPECT_EQ(buffer.GetUint8(value), 1) << text;
    EXPECT_TRUE(buffer.errors.empty()) << text;
    return value;
}

float float_of(const char* text) {
    const RecordingBuffer buffer(text);
    float value = 0;
    EXPECT_EQ(buffer.GetFloat(value), 1) << text;
    EXPECT_TRUE(buffer.errors.empty()) << text;
    return value;
}

TEST(SaxBufferScalar, Int32ReadsSignedDecimals) {
    EXPECT_EQ(int32_of("0"), 0);
    EXPECT_EQ(int32_of("-0"), 0);
    EXPECT_EQ(int32_of("42"), 42);
    EXPECT_EQ(int32_of("+42"), 42);
    EXPECT_EQ(int32_of("-42"), -42);
    EXPECT_EQ(int32_of("010"), 10);
    EXPECT_EQ(int32_of("2147483647"), INT_MAX);
    EXPECT_EQ(int32_of("-2147483648"), INT_MIN);
}

TEST(SaxBufferScalar, WhitespaceBeforeANumberIsSkipped) {
    EXPECT_EQ(int32_of(" \t\n\v\f\r7"), 7);
    EXPECT_EQ(uint32_of(" \t\n\v\f\r7"), 7U);
    EXPECT_EQ(uint8_of(" \t\n\v\f\r7"), 7U);
    EXPECT_EQ(float_of(" \t\n\v\f\r7.5"), 7.5F);
}

TEST(SaxBufferScalar, WhatFollowsANumberDoesNotMatter) {
    EXPECT_EQ(int32_of("12abc"), 12);
    EXPECT_EQ(int32_of("12 13"), 12);
    EXPECT_EQ(int32_of("1.9"), 1);
    EXPECT_EQ(int32_of("0x10"), 0);
    EXPECT_EQ(uint32_of("12,5"), 12U);
    EXPECT_EQ(uint8_of("12\t"), 12U);
    EXPECT_EQ(float_of("1.5.5"), 1.5F);
    EXPECT_EQ(float_of("2.5 x"), 2.5F);
}

TEST(SaxBufferScalar, Uint32ReadsAllOfItsRange) {
    EXPECT_EQ(uint32_of("0"), 0U);
    EXPECT_EQ(uint32_of("2147483648"), 2147483648U);
    EXPECT_EQ(uint32_of("4294967295"), UINT_MAX);
}

TEST(SaxBufferScalar, Uint32TakesAMinusSign) {
    EXPECT_EQ(uint32_of("-1"), UINT_MAX);
    EXPECT_EQ(uint32_of("-5"), UINT_MAX - 4);
}

TEST(SaxBufferScalar, Uint8KeepsTheLowEightBits) {
    EXPECT_EQ(uint8_of("0"), 0U);
    EXPECT_EQ(uint8_of("255"), 255U);
    EXPECT_EQ(uint8_of("256"), 0U);
    EXPECT_EQ(uint8_of("300"), 44U);
    EXPECT_EQ(uint8_of("4294967295"), 255U);
    EXPECT_EQ(uint8_of("305419896"), 0x78U);
    EXPECT_EQ(uint8_of("-1"), 255U);
    EXPECT_EQ(uint8_of("-2"), 254U);
}

TEST(SaxBufferScalar, Uint8WritesNothingBesideItsByte) {
    const RecordingBuffer buffer("4294967295");
    unsigned char bytes[9] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    EXPECT_EQ(buffer.GetUint8(bytes[4]), 1);
    EXPECT_EQ(bytes[4], 255);
    for (const int i : {0, 1, 2, 3, 5, 6, 7, 8}) EXPECT_EQ(bytes[i], i + 1);
}

TEST(SaxBufferScalar, FloatReadsWhatScanfReads) {
    EXPECT_EQ(float_of("0"), 0.0F);
    EXPECT_EQ(float_of("1.5"), 1.5F);
    EXPECT_EQ(float_of("-.5"), -0.5F);
    EXPECT_EQ(float_of("1."), 1.0F);
    EXPECT_EQ(float_of("+2.5e3"), 2500.0F);
    EXPECT_EQ(float_of("25E-1"), 2.5F);
    EXPECT_EQ(float_of("0x1.8p1"), 3.0F);
    EXPECT_EQ(float_of("0.1"), 0.1F);
    EXPECT_TRUE(std::signbit(float_of("-0")));
    EXPECT_EQ(float_of("inf"), HUGE_VALF);
    EXPECT_EQ(float_of("-Infinity"), -HUGE_VALF);
    EXPECT_TRUE(std::isnan(float_of("nan")));
}

TEST(SaxBufferScalar, FloatIsRoundedToDoubleFirst) {
    // Just above halfway from 1 to the next float: as a double it is halfway, which rounds to even.
    const char* const text = "1.00000005960464477539062500000000001";
    EXPECT_EQ(float_of(text), 1.0F);
    EXPECT_EQ(sax::read_one<float>(text), std::nextafter(1.0F, 2.0F));
}

TEST(SaxBufferScalar, FloatHasNoRangeCheck) {
    EXPECT_EQ(float_of("1e39"), HUGE_VALF);
    EXPECT_EQ(float_of("-1e39"), -HUGE_VALF);
    EXPECT_EQ(float_of("1e999"), HUGE_VALF);
    EXPECT_EQ(float_of("1e-60"), 0.0F);
    EXPECT_EQ(float_of("1e-999"), 0.0F);
    EXPECT_EQ(float_of("1e-40"), 1e-40F);
    EXPECT_EQ(float_of("3.4028234663852886e38"), 3.4028234663852886e38F);
}

class SaxBufferNoInteger : public testing::TestWithParam<const char*> {};

TEST_P(SaxBufferNoInteger, Int32FailsLogsTheTextAndKeepsTheValue) {
    const RecordingBuffer buffer(GetParam());
    int value = 1234567;
    EXPECT_EQ(buffer.GetInt32(value), 0);
    EXPECT_EQ(value, 1234567);
    EXPECT_EQ(buffer.errors, (Errors{{GetParam(), "int32"}}));
    EXPECT_TRUE(buffer.messages.empty());
}

TEST_P(SaxBufferNoInteger, Uint32FailsUnderTheNameInt32AndKeepsTheValue) {
    const RecordingBuffer buffer(GetParam());
    unsigned value = 1234567;
    EXPECT_EQ(buffer.GetUint32(value), 0);
    EXPECT_EQ(value, 1234567U);
    EXPECT_EQ(buffer.errors, (Errors{{GetParam(), "int32"}}));
    EXPECT_TRUE(buffer.messages.empty());
}

TEST_P(SaxBufferNoInteger, Uint8FailsAndLogsTheText) {
    const RecordingBuffer buffer(GetParam());
    unsigned char value = 0;  // unspecified after the failure
    EXPECT_EQ(buffer.GetUint8(value), 0);
    EXPECT_EQ(buffer.errors, (Errors{{GetParam(), "uint8"}}));
    EXPECT_TRUE(buffer.messages.empty());
}

INSTANTIATE_TEST_SUITE_P(Texts, SaxBufferNoInteger,
                         testing::Values("", " ", " \n\t", "abc", " abc ", ".5", "-", "+", "+-1", "--1",
                                         "- 1", "x1", "true", "inf", "nan", "\xc3\xa9"));

class SaxBufferNoFloat : public testing::TestWithParam<const char*> {};

TEST_P(SaxBufferNoFloat, FailsLogsTheTextAndKeepsTheValue) {
    const RecordingBuffer buffer(GetParam());
    float value = 1.25F;
    EXPECT_EQ(buffer.GetFloat(value), 0);
    EXPECT_EQ(value, 1.25F);
    EXPECT_EQ(buffer.errors, (Errors{{GetParam(), "float"}}));
    EXPECT_TRUE(buffer.messages.empty());
}

INSTANTIATE_TEST_SUITE_P(Texts, SaxBufferNoFloat,
                         testing::Values("", " ", " \n\t", "abc", " abc ", ".", "-", "+", "+-1", "- 1", "e5",
                                         ".e5", ",5", "x1.5", "true"));

TEST(SaxBufferScalar, AFailureWithoutAHookIsSilent) {
    vSAXDefaultBuffer buffer;
    buffer.SetBuffer("abc");
    int number = 3;
    unsigned unsigned_number = 4;
    unsigned char byte = 0;
    float real = 5;
    EXPECT_EQ(buffer.GetInt32(number), 0);
    EXPECT_EQ(buffer.GetUint32(unsigned_number), 0);
    EXPECT_EQ(buffer.GetUint8(byte), 0);
    EXPECT_EQ(buffer.GetFloat(real), 0);
    EXPECT_EQ(number, 3);
    EXPECT_EQ(unsigned_number, 4U);
    EXPECT_EQ(real, 5.0F);
}

TEST(SaxBufferScalar, NoFailureChangesTheBuffer) {
    RecordingBuffer buffer(" abc ");
    int number = 0;
    unsigned unsigned_number = 0;
    unsigned char byte = 0;
    float real = 0;
    EXPECT_EQ(buffer.GetInt32(number), 0);
    EXPECT_EQ(buffer.GetUint32(unsigned_number), 0);
    EXPECT_EQ(buffer.GetUint8(byte), 0);
    EXPECT_EQ(buffer.GetFloat(real), 0);
    EXPECT_THROW(buffer.GetIntArray(&number, 1), std::invalid_argument);
    EXPECT_EQ(text_of(buffer), " abc ");
}

}  // namespace
