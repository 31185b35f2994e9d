// SPDX-License-Identifier: Apache-2.0
// The object itself: its fields, its members' types, and what it is before it holds a file.
#include <cstddef>
#include <gtest/gtest.h>
#include <new>
#include <type_traits>
#include <utility>

#include "basis/basis_check.h"
#include "basis/basis_private.h"
#include "vBasisImage.h"

namespace {

using namespace basis_check;

static_assert(!std::is_polymorphic_v<vBasisImage>);
static_assert(std::is_standard_layout_v<vBasisImage>);
static_assert(std::is_default_constructible_v<vBasisImage>);
static_assert(!std::is_copy_constructible_v<vBasisImage>);
static_assert(std::is_same_v<decltype(std::declval<vBasisImage&>() = std::declval<const vBasisImage&>()),
                             vBasisImage&>);
static_assert(std::is_same_v<decltype(std::declval<vBasisImage&>().load("")), bool>);
static_assert(std::is_same_v<decltype(std::declval<vBasisImage&>().setBasisFileRawData(
                                 static_cast<const unsigned char*>(nullptr), 0u)),
                             void>);
static_assert(
    std::is_same_v<decltype(std::declval<vBasisImage&>().getBasisFileRawData()), const unsigned char*>);
static_assert(std::is_same_v<decltype(std::declval<vBasisImage&>().getBasisFileSize()), unsigned int>);
static_assert(std::is_same_v<decltype(std::declval<vBasisImage&>().getWidth()), int>);
static_assert(std::is_same_v<decltype(std::declval<vBasisImage&>().getHeight()), int>);
static_assert(std::is_same_v<decltype(std::declval<vBasisImage&>().getNumSlices()), int>);
static_assert(std::is_same_v<decltype(std::declval<vBasisImage&>().getNumMipLevels()), int>);
static_assert(std::is_same_v<decltype(std::declval<vBasisImage&>().isValidHeader()), bool>);

static_assert(TOZ::eUsageFormatBC1 == 1);
static_assert(TOZ::eUsageFormatBC3 == 2);
static_assert(TOZ::eUsageFormatBC3Alt == 3);
static_assert(TOZ::eUsageFormatBC5 == 4);
static_assert(TOZ::eUsageFormatBC4 == 5);

template <class Member>
std::ptrdiff_t offset(const vBasisImage& image, Member vBasisImage::*member) {
    return reinterpret_cast<const char*>(&(image.*member)) - reinterpret_cast<const char*>(&image);
}

TEST(BasisObject, FieldsLieInTheirDeclaredOrder) {
    const vBasisImage image;
    constexpr std::ptrdiff_t kPointer = sizeof(void*);
    EXPECT_EQ(offset(image, basis_private::raw_data()), 0);
    EXPECT_EQ(offset(image, basis_private::file_size()), kPointer);
    EXPECT_EQ(offset(image, basis_private::width()), kPointer + 4);
    EXPECT_EQ(offset(image, basis_private::height()), kPointer + 8);
    EXPECT_EQ(offset(image, basis_private::num_slices()), kPointer + 12);
    EXPECT_EQ(offset(image, basis_private::num_mip_levels()), kPointer + 16);
}

TEST(BasisObject, HasNoOtherFields) {
    constexpr std::size_t kFields = sizeof(void*) + 5 * 4;
    EXPECT_EQ(sizeof(vBasisImage), (kFields + alignof(void*) - 1) / alignof(void*) * alignof(void*));
}

TEST(BasisObject, ANewOneIsEmpty) {
    const vBasisImage image;
    EXPECT_EQ(image.getBasisFileRawData(), nullptr);
    EXPECT_EQ(image.getBasisFileSize(), 0u);
    EXPECT_EQ(image.getWidth(), 0);
    EXPECT_EQ(image.getHeight(), 0);
    EXPECT_EQ(image.getNumSlices(), 0);
    EXPECT_EQ(image.getNumMipLevels(), 0);
}

TEST(BasisObject, ANewOneIsEmptyWhateverItsMemoryHeld) {
    alignas(vBasisImage) unsigned char memory[sizeof(vBasisImage)];
    for (unsigned char& byte : memory) byte = 0xCD;
    auto* const image = new (memory) vBasisImage;
    EXPECT_EQ(image->getBasisFileRawData(), nullptr);
    EXPECT_EQ(image->getBasisFileSize(), 0u);
    EXPECT_TRUE(fields_are(*image, {}));
    image->~vBasisImage();
}

TEST(BasisObject, ANewOneHasNoValidHeader) { EXPECT_FALSE(vBasisImage().isValidHeader()); }

TEST(BasisObject, ANewOneHasNoImageAndLeavesTheOutputsAlone) {
    const vBasisImage image;
    for (const int usage : kUsages) EXPECT_TRUE(refused(get_image(image, 0, 0, usage)));
}

TEST(BasisObject, ANewOneCannotBeAnalysed) {
    vBasisImage image;
    EXPECT_FALSE((image.*basis_private::analysis())());
    EXPECT_TRUE(fields_are(image, {}));
}

TEST(BasisObject, GettersTellTheFields) {
    vBasisImage image;
    const unsigned char byte = 7;
    image.*basis_private::raw_data() = &byte;
    image.*basis_private::file_size() = -2;
    image.*basis_private::width() = -3;
    image.*basis_private::height() = 4;
    image.*basis_private::num_slices() = 5;
    image.*basis_private::num_mip_levels() = 6;
    EXPECT_EQ(image.getBasisFileRawData(), &byte);
    EXPECT_EQ(image.getBasisFileSize(), 0xFFFFFFFEu);
    EXPECT_TRUE(fields_are(image, {true, -3, 4, 5, 6}));
    image.*basis_private::raw_data() = nullptr;
}

}  // namespace
