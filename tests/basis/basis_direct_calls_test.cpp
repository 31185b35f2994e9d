// SPDX-License-Identifier: Apache-2.0
// Every level of every slice of every file, for every usage: what direct calls of the transcoder give.
#include <gtest/gtest.h>
#include <string>

#include "basis/basis_check.h"
#include "basis/fixture_files.h"
#include "vBasisImage.h"

namespace {

using namespace basis_check;
namespace direct = support::direct;

class BasisDirectCalls : public testing::TestWithParam<basis_fixtures::Fixture> {};

TEST_P(BasisDirectCalls, GiveTheSameForEveryLevelSliceAndUsage) {
    expect_like_direct_calls(basis_fixtures::made(GetParam().name));
}

TEST_P(BasisDirectCalls, GiveTheSameResultOfLoad) {
    const std::string name = GetParam().name;
    const direct::Analysis expected = direct::analyse(basis_fixtures::made(name));
    EXPECT_EQ(expected.result, basis_fixtures::is_2d(GetParam()));
    vBasisImage image;
    EXPECT_EQ(image.load(basis_fixtures::made_path(name + ".basis").c_str()), expected.result);
    EXPECT_TRUE(fields_are(image, expected));
    EXPECT_TRUE(image.isValidHeader());
}

INSTANTIATE_TEST_SUITE_P(Fixtures, BasisDirectCalls, testing::ValuesIn(basis_fixtures::kFixtures),
                         [](const auto& test) { return std::string(test.param.name); });

class BasisSamples : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        if (!basis_fixtures::have_samples())
            GTEST_SKIP() << "the transcoder's source has come without its samples (webgl/)";
    }
};

TEST_P(BasisSamples, AreTranscodedAsByDirectCalls) {
    expect_like_direct_calls(basis_fixtures::sample(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Samples, BasisSamples, testing::ValuesIn(basis_fixtures::kSamples),
                         [](const auto& test) { return basis_fixtures::test_name(test.param); });

}  // namespace
