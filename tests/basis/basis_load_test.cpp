// SPDX-License-Identifier: Apache-2.0
// Loading from files on disk.
#include <cstring>
#include <gtest/gtest.h>
#include <new>
#include <string>
#include <string_view>

#include "basis/basis_check.h"
#include "basis/basis_private.h"
#include "basis/fixture_files.h"
#include "support/allocation.h"
#include "support/basis_file.h"
#include "support/temporary_folder.h"
#include "vBasisImage.h"

#if !defined(_WIN32)
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

using namespace basis_check;
using basis_fixtures::made;
using basis_fixtures::made_path;
using support::TemporaryFolder;
namespace basis = support::basis;
namespace direct = support::direct;

std::string write(const TemporaryFolder& folder, const Bytes& file) {
    return folder.write("image.basis", {reinterpret_cast<const char*>(file.data()), file.size()});
}

Bytes held(const vBasisImage& image) {
    return {image.getBasisFileRawData(), image.getBasisFileRawData() + image.getBasisFileSize()};
}

TEST(BasisLoad, HoldsTheWholeFileAndItsExtents) {
    vBasisImage image;
    ASSERT_TRUE(image.load(made_path("etc1s_array_mips.basis").c_str()));
    EXPECT_EQ(held(image), made("etc1s_array_mips"));
    EXPECT_TRUE(fields_are(image, {true, 32, 12, 3, 5}));
}

TEST(BasisLoad, RoundsTheExtentsUpToWholeBlocks) {
    const struct {
        const char* name;
        int width;
        int height;
    } cases[] = {{"etc1s_1x1", 4, 4},         {"etc1s_4x4", 4, 4},    {"uastc_5x3", 8, 4},
                 {"etc1s_30x10", 32, 12},     {"uastc_1x37", 4, 40},  {"etc1s_alpha_37x1", 40, 4},
                 {"uastc_257x129", 260, 132}, {"etc1s_64x64", 64, 64}};
    for (const auto& test : cases) {
        vBasisImage image;
        ASSERT_TRUE(image.load(made_path(std::string(test.name) + ".basis").c_str()));
        EXPECT_TRUE(fields_are(image, {true, test.width, test.height, 1, 1})) << test.name;
    }
}

TEST(BasisLoad, TellsTheFirstImageWhereSizesDiffer) {
    vBasisImage image;
    ASSERT_TRUE(image.load(made_path("etc1s_different_sizes.basis").c_str()));
    EXPECT_TRUE(fields_are(image, {true, 40, 24, 3, 6}));
}

TEST(BasisLoad, AFileThatCannotBeOpenedChangesNothing) {
    const TemporaryFolder folder;
    vBasisImage image;
    EXPECT_FALSE(image.load(folder.path("absent.basis").c_str()));
    EXPECT_EQ(image.getBasisFileRawData(), nullptr);
    EXPECT_TRUE(fields_are(image, {}));

    const Bytes file = made("uastc_mips");
    hold(image, file);
    const unsigned char* const data = image.getBasisFileRawData();
    EXPECT_FALSE(image.load(folder.path("absent.basis").c_str()));
    EXPECT_EQ(image.getBasisFileRawData(), data);
    EXPECT_EQ(held(image), file);
    EXPECT_TRUE(fields_are(image, direct::analyse(file)));
}

TEST(BasisLoad, AnEmptyFileIsHeldWithoutBytes) {
    const TemporaryFolder folder;
    vBasisImage image;
    EXPECT_FALSE(image.load(folder.write("empty.basis", "").c_str()));
    EXPECT_NE(image.getBasisFileRawData(), nullptr);
    EXPECT_EQ(image.getBasisFileSize(), 0u);
    EXPECT_FALSE(image.isValidHeader());
    EXPECT_TRUE(refused(get_image(image, 0, 0, 1)));
}

TEST(BasisLoad, ATruncatedFileIsHeldAllTheSame) {
    const TemporaryFolder folder;
    Bytes file = made("etc1s_alpha_mips");
    file.resize(file.size() / 2);
    vBasisImage image;
    EXPECT_FALSE(image.load(write(folder, file).c_str()));
    EXPECT_EQ(held(image), file);
    EXPECT_TRUE(fields_are(image, {}));
    EXPECT_FALSE(image.isValidHeader());
}

TEST(BasisLoad, AFileOfAnotherKindIsHeldAllTheSame) {
    const TemporaryFolder folder;
    const Bytes file = support::random_bytes(1000, 3);
    vBasisImage image;
    EXPECT_FALSE(image.load(write(folder, file).c_str()));
    EXPECT_EQ(held(image), file);
    EXPECT_TRUE(fields_are(image, {}));
    EXPECT_FALSE(image.isValidHeader());
}

TEST(BasisLoad, ARefusedFileLeavesTheExtentsOfTheOneBefore) {
    const TemporaryFolder folder;
    const direct::Analysis before = direct::analyse(made("uastc_array_mips"));
    for (const char* const name : {"etc1s_cube_map", "etc1s_video", "uastc_alpha_volume"}) {
        vBasisImage image;
        hold(image, made("uastc_array_mips"));
        const unsigned char* const earlier = image.getBasisFileRawData();
        EXPECT_FALSE(image.load(made_path(std::string(name) + ".basis").c_str()));
        EXPECT_TRUE(fields_are(image, before)) << name;
        EXPECT_EQ(held(image), made(name));
        delete[] earlier;
    }
}

TEST(BasisLoad, OfAnUnsupportedTypeFailsThoughTheHeaderIsValid) {
    for (const char* const name : {"etc1s_cube_map", "etc1s_alpha_cube_map_mips", "etc1s_video",
                                   "etc1s_volume", "uastc_cube_map", "uastc_video", "uastc_alpha_volume"}) {
        SCOPED_TRACE(name);
        vBasisImage image;
        EXPECT_FALSE(image.load(made_path(std::string(name) + ".basis").c_str()));
        EXPECT_TRUE(image.isValidHeader());
        EXPECT_TRUE(fields_are(image, {}));
        for (const int usage : kUsages) EXPECT_TRUE(refused(get_image(image, 0, 0, usage)));
    }
}

// The count is there before the first image turns out to be missing.
TEST(BasisLoad, OfAFileWithoutItsFirstImageTellsTheNumberOfSlicesAlone) {
    const TemporaryFolder folder;
    const Bytes file = basis::with_slice(basis::with(made("uastc_4x4"), basis::header::kTotalImages, 9), 0,
                                         basis::slice::kImage, 5);
    vBasisImage image;
    hold(image, made("etc1s_array_mips"));
    const unsigned char* const earlier = image.getBasisFileRawData();
    EXPECT_FALSE(image.load(write(folder, file).c_str()));
    EXPECT_TRUE(fields_are(image, {false, 32, 12, 9, 5}));
    delete[] earlier;
}

TEST(BasisLoad, DoesNotReleaseTheEarlierFile) {
    vBasisImage image;
    ASSERT_TRUE(image.load(made_path("uastc_30x10.basis").c_str()));
    const unsigned char* const earlier = image.getBasisFileRawData();
    const auto before = support::live_blocks();
    ASSERT_TRUE(image.load(made_path("etc1s_5x3.basis").c_str()));
    EXPECT_EQ(support::live_blocks(), before + 1);
    EXPECT_NE(image.getBasisFileRawData(), earlier);
    EXPECT_EQ(held(image), made("etc1s_5x3"));
    EXPECT_EQ(std::memcmp(earlier, made("uastc_30x10").data(), made("uastc_30x10").size()), 0);
    delete[] earlier;
}

TEST(BasisLoad, TakesOneBlockOfTheFilesSize) {
    const Bytes file = made("etc1s_alpha_30x10");
    const std::string path = made_path("etc1s_alpha_30x10.basis");
    vBasisImage image;
    {
        const support::AllocationRecorder recorder;
        image.load(path.c_str());
        const auto left = recorder.left();
        ASSERT_EQ(left.size(), 1u);
        EXPECT_EQ(left[0].size, file.size());
        EXPECT_EQ(left[0].address, image.getBasisFileRawData());
    }
    const auto before = support::live_blocks();
    image.setBasisFileRawData(nullptr, 0);
    EXPECT_EQ(support::live_blocks(), before - 1);
}

TEST(BasisLoad, DestructionReleasesTheFile) {
    const std::string path = made_path("etc1s_alpha_30x10.basis");
    const auto before = support::live_blocks();
    {
        vBasisImage image;
        ASSERT_TRUE(image.load(path.c_str()));
        EXPECT_EQ(support::live_blocks(), before + 1);
    }
    EXPECT_EQ(support::live_blocks(), before);
}

TEST(BasisLoad, FullFileReadsIntoTheCallersVariablesAndLeavesTheFields) {
    const Bytes file = made("uastc_mips");
    const vBasisImage image;
    const unsigned char* data = nullptr;
    int size = -1;
    ASSERT_TRUE((image.*basis_private::load_full_file())(made_path("uastc_mips.basis").c_str(), data, size));
    EXPECT_EQ(Bytes(data, data + size), file);
    EXPECT_EQ(image.getBasisFileRawData(), nullptr);
    EXPECT_EQ(image.getBasisFileSize(), 0u);
    delete[] data;
}

TEST(BasisLoad, FullFileThatCannotBeOpenedLeavesTheCallersVariables) {
    const TemporaryFolder folder;
    const vBasisImage image;
    const unsigned char byte = 0;
    const unsigned char* data = &byte;
    int size = 77;
    EXPECT_FALSE((image.*basis_private::load_full_file())(folder.path("absent").c_str(), data, size));
    EXPECT_EQ(data, &byte);
    EXPECT_EQ(size, 77);
}

TEST(BasisLoad, FullFileDoesNotLookAtTheContent) {
    const TemporaryFolder folder;
    const Bytes file = support::random_bytes(33, 1);
    const vBasisImage image;
    const unsigned char* data = nullptr;
    int size = 0;
    ASSERT_TRUE((image.*basis_private::load_full_file())(write(folder, file).c_str(), data, size));
    EXPECT_EQ(Bytes(data, data + size), file);
    delete[] data;
}

#if defined(__linux__)
// Files of this kind have content, but no length.
TEST(BasisLoad, HoldsAsManyBytesAsTheFileIsLong) {
    vBasisImage image;
    EXPECT_FALSE(image.load("/proc/self/cmdline"));
    EXPECT_NE(image.getBasisFileRawData(), nullptr);
    EXPECT_EQ(image.getBasisFileSize(), 0u);
}
#endif

#if !defined(_WIN32)
TEST(BasisLoad, AFileWhoseLengthCannotBeToldEndsInTheAllocationException) {
    const TemporaryFolder folder;
    const std::string path = folder.path("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const int other_end = open(path.c_str(), O_RDWR | O_NONBLOCK);
    ASSERT_GE(other_end, 0);
    vBasisImage image;
    const Bytes file = made("uastc_4x4");
    hold(image, file);
    EXPECT_THROW(image.load(path.c_str()), std::bad_alloc);
    EXPECT_EQ(held(image), file);
    EXPECT_TRUE(fields_are(image, direct::analyse(file)));
    close(other_end);
}

// What its length is depends on the file system; it is no .basis file on any.
TEST(BasisLoad, ADirectoryFails) {
    const TemporaryFolder folder;
    vBasisImage image;
    bool loaded = false;
    try {
        loaded = image.load(folder.path(".").c_str());
    } catch (const std::bad_alloc&) {
    }
    EXPECT_FALSE(loaded);
    EXPECT_TRUE(fields_are(image, {}));
}
#endif

}  // namespace
