// SPDX-License-Identifier: Apache-2.0
// Truncated and corrupted files: no read outside the file, and what the transcoder makes of them.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "basis/basis_check.h"
#include "basis/fixture_files.h"
#include "support/basis_file.h"
#include "vBasisImage.h"

namespace {

using namespace basis_check;
using basis_fixtures::made;
namespace basis = support::basis;
namespace direct = support::direct;

/// Compares fields, validity and a few levels with direct calls, each in one of the usages by turns.
bool is_like_direct_calls(const Bytes& file, std::size_t turn) {
    vBasisImage image;
    hold(image, file);
    EXPECT_TRUE(fields_are(image, direct::analyse(file)));
    EXPECT_EQ(image.isValidHeader(), direct::is_valid_header(file));
    const struct {
        unsigned int level;
        unsigned int slice;
    } asked[] = {{0, 0}, {1, 0}, {0, 1}, {4, 2}};
    constexpr int kTargets[] = {1, 2, 4, 5};
    for (const auto& [level, slice] : asked)
        EXPECT_TRUE(like_direct_calls(image, file, level, slice, kTargets[turn++ % 4]));
    return !testing::Test::HasFailure();
}

class BasisDamaged : public testing::TestWithParam<const char*> {};

TEST_P(BasisDamaged, EveryTruncationFailsEverywhere) {
    const Bytes whole = made(GetParam());
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const Bytes file(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        vBasisImage image;
        hold(image, file);
        ASSERT_FALSE(image.isValidHeader()) << size;
        ASSERT_TRUE(fields_are(image, {})) << size;
        ASSERT_TRUE(refused(get_image(image, 0, 0, 1))) << size;
    }
}

// The header of these says that nothing is missing.
TEST_P(BasisDamaged, EveryTruncationThatTheHeaderConfirms) {
    const Bytes whole = made(GetParam());
    for (std::size_t size = basis::header::kSize; size < whole.size(); ++size) {
        Bytes file(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        basis::put(file, basis::header::kDataSize, static_cast<std::uint32_t>(size - basis::header::kSize));
        ASSERT_TRUE(is_like_direct_calls(file, size)) << "of " << size << " bytes";
    }
}

TEST_P(BasisDamaged, EveryByteOfHeaderAndTableInTurn) {
    const Bytes whole = made(GetParam());
    const std::size_t end =
        std::min<std::size_t>(basis::header::kSize + basis::total_slices(whole) * basis::slice::kSize, 300);
    for (std::size_t at = 0; at < end; ++at) {
        for (const int change : {0x01, 0x02, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80, 0xFF}) {
            Bytes file = whole;
            file[at] = static_cast<std::uint8_t>(file[at] ^ change);
            ASSERT_TRUE(is_like_direct_calls(file, at)) << "byte " << at << " ^ " << change;
        }
    }
}

TEST_P(BasisDamaged, AThousandBytesAnywhere) {
    const Bytes whole = made(GetParam());
    std::mt19937 random(20240501);
    for (std::size_t i = 0; i < 1000; ++i) {
        const std::size_t at = random() % whole.size();
        Bytes file = whole;
        file[at] = static_cast<std::uint8_t>(file[at] ^ (1 + random() % 255));
        ASSERT_TRUE(is_like_direct_calls(file, i)) << "byte " << at << " = " << int{file[at]};
    }
}

TEST_P(BasisDamaged, AThousandTimesSomeBytesBehindTheTable) {
    const Bytes whole = made(GetParam());
    const std::size_t begin = basis::header::kSize + basis::total_slices(whole) * basis::slice::kSize;
    std::mt19937 random(20240502);
    for (std::size_t i = 0; i < 1000; ++i) {
        Bytes file = whole;
        for (int n = 0; n < 8; ++n)
            file[begin + random() % (whole.size() - begin)] = static_cast<std::uint8_t>(random());
        ASSERT_TRUE(is_like_direct_calls(file, i)) << "turn " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Files, BasisDamaged,
                         testing::Values("etc1s_1x1", "etc1s_30x10", "etc1s_mips", "etc1s_alpha_5x3",
                                         "etc1s_alpha_mips", "etc1s_alpha_array_mips", "uastc_5x3",
                                         "uastc_alpha_30x10", "uastc_array_mips"),
                         [](const auto& test) { return std::string(test.param); });

}  // namespace
