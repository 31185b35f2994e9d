// SPDX-License-Identifier: Apache-2.0
// What an analysis leaves in the fields where it ends early.
#include <gtest/gtest.h>

#include "basis/basis_check.h"
#include "basis/basis_private.h"
#include "basis/fixture_files.h"
#include "support/basis_file.h"
#include "vBasisImage.h"

namespace {

using namespace basis_check;
using basis_fixtures::made;
namespace basis = support::basis;
namespace direct = support::direct;

/// Analyses the file in an object whose fields are 1, 2, 3 and 4, and looks at result and fields.
void expect_analysis(const Bytes& file, const direct::Analysis& expected) {
    vBasisImage image;
    hold(image, file);
    image.*basis_private::width() = 1;
    image.*basis_private::height() = 2;
    image.*basis_private::num_slices() = 3;
    image.*basis_private::num_mip_levels() = 4;
    EXPECT_EQ((image.*basis_private::analysis())(), expected.result);
    EXPECT_TRUE(fields_are(image, expected));
}

TEST(BasisAnalysis, FillsTheFourFields) {
    expect_analysis(made("etc1s_alpha_array_mips"), {true, 32, 12, 3, 5});
    expect_analysis(made("uastc_alpha_mips"), {true, 40, 64, 1, 7});
    expect_analysis(made("uastc_1x1"), {true, 4, 4, 1, 1});
}

TEST(BasisAnalysis, OfAFileThatDoesNotStartChangesNoField) {
    expect_analysis(Bytes(200), {false, 1, 2, 3, 4});
    expect_analysis(basis::with(made("uastc_4x4"), basis::header::kSignature, 0), {false, 1, 2, 3, 4});
    expect_analysis(basis::with(made("uastc_4x4"), basis::header::kVersion, 0x12), {false, 1, 2, 3, 4});
    expect_analysis(basis::with(made("uastc_4x4"), basis::header::kTotalImages, 0), {false, 1, 2, 3, 4});
}

TEST(BasisAnalysis, OfAnotherTextureTypeChangesNoField) {
    for (const std::uint32_t type : {basis::kTypeCubeMapArray, basis::kTypeVideo, basis::kTypeVolume})
        expect_analysis(basis::with(made("etc1s_array_mips"), basis::header::kTextureType, type),
                        {false, 1, 2, 3, 4});
}

// The transcoder takes a type that it does not know for a 2D array.
TEST(BasisAnalysis, OfAnUnknownTextureTypeIsThatOfAnArray) {
    for (const std::uint32_t type : {basis::kType2D, basis::kType2DArray, 5u, 6u, 255u})
        expect_analysis(basis::with(made("etc1s_array_mips"), basis::header::kTextureType, type),
                        {true, 32, 12, 3, 5});
}

TEST(BasisAnalysis, WithoutTheFirstImageStoresTheNumberOfSlicesAlone) {
    expect_analysis(basis::with_slice(made("uastc_4x4"), 0, basis::slice::kImage, 1), {false, 1, 2, 1, 4});
    expect_analysis(basis::with_slice(made("etc1s_4x4"), 0, basis::slice::kLevel, 1), {false, 1, 2, 1, 4});
    expect_analysis(basis::with(basis::with_slice(made("etc1s_4x4"), 0, basis::slice::kLevel, 1),
                                basis::header::kTotalImages, 0xABCDEF),
                    {false, 1, 2, 0xABCDEF, 4});
}

TEST(BasisAnalysis, OfMoreThan16LevelsStoresTheNumberOfSlicesAlone) {
    const Bytes file = made("uastc_mips");
    expect_analysis(basis::with_slice(file, 1, basis::slice::kLevel, 15), {true, 64, 20, 1, 16});
    expect_analysis(basis::with_slice(file, 1, basis::slice::kLevel, 16), {false, 1, 2, 1, 4});
}

TEST(BasisAnalysis, TellsTheNumberOfImagesNotOfEntriesInTheTable) {
    expect_analysis(basis::with(made("uastc_4x4"), basis::header::kTotalImages, 7), {true, 4, 4, 7, 1});
}

TEST(BasisAnalysis, TakesTheExtentsFromTheBlocksNotFromThePixels) {
    Bytes file = basis::with_slice(made("uastc_4x4"), 0, basis::slice::kWidth, 1000);
    file = basis::with_slice(file, 0, basis::slice::kHeight, 1);
    expect_analysis(file, {true, 4, 4, 1, 1});
    expect_analysis(basis::with_slice(file, 0, basis::slice::kBlocksAcross, 0xFFFF), {true, 262140, 4, 1, 1});
}

}  // namespace
