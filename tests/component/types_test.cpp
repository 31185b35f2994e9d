// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <type_traits>

#include "OXATypes.h"

namespace {

TEST(ComponentTypes, ResultsHaveTheirValues) {
    EXPECT_TRUE((std::is_same_v<HRESULT, std::int32_t>));
    EXPECT_EQ(S_OK, 0);
    EXPECT_EQ(static_cast<std::uint32_t>(E_NOTIMPL), 0x80004001U);
    EXPECT_EQ(static_cast<std::uint32_t>(E_NOINTERFACE), 0x80004002U);
    EXPECT_EQ(static_cast<std::uint32_t>(E_POINTER), 0x80004003U);
    EXPECT_EQ(static_cast<std::uint32_t>(E_FAIL), 0x80004005U);
}

TEST(ComponentTypes, NegativeResultsAreFailures) {
    for (const HRESULT result : {S_OK, HRESULT{1}, HRESULT{0x7FFFFFFF}}) {
        EXPECT_TRUE(SUCCEEDED(result));
        EXPECT_FALSE(FAILED(result));
    }
    for (const HRESULT result : {E_FAIL, E_NOTIMPL, HRESULT{-1}}) {
        EXPECT_FALSE(SUCCEEDED(result));
        EXPECT_TRUE(FAILED(result));
    }
}

TEST(ComponentTypes, AGuidHasSixteenBytesAndEachCounts) {
    constexpr GUID id = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
    EXPECT_EQ(sizeof id, 16U);
    EXPECT_TRUE(id == id);
    EXPECT_FALSE(id != id);
    for (std::size_t byte = 0; byte < sizeof id; ++byte) {
        GUID other = id;
        reinterpret_cast<unsigned char*>(&other)[byte] ^= 0x80;
        EXPECT_FALSE(id == other) << byte;
        EXPECT_TRUE(id != other) << byte;
    }
}

}  // namespace
