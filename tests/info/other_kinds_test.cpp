// SPDX-License-Identifier: Apache-2.0
// What vTextureInfo says of files that are no textures, and of the first bytes of those that are.
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vTextureCheck.h>
#include <vTextureInfo.h>

#include "info/info_check.h"
#include "support/temporary_folder.h"

namespace {

using namespace info_check;
using namespace std::string_view_literals;
using support::Bytes;
using Check = vTextureCheck;

vTextureInfo of(std::string_view bytes) { return read(Bytes(bytes.begin(), bytes.end())); }

TEST(OtherKinds, AreNamed) {
    const std::pair<std::string_view, const char*> kinds[] = {
        {"\x89PNG\r\n\x1a\n\0\0\0\rIHDR"sv, "a PNG image"},
        {"\xff\xd8\xff\xe0\0\x10JFIF"sv, "a JPEG image"},
        {"GIF89a"sv, "a GIF image"},
        {"BM\x36\0\0\0\0\0\0\0\x36\0\0\0"sv, "a BMP image"},
        {"II*\0\x08\0\0\0"sv, "a TIFF image"},
        {"\x76\x2f\x31\x01\2\0\0\0"sv, "an OpenEXR image"},
        {"\xabKTX 11\xbb\r\n\x1a\n"sv, "a KTX file of version 1"},
        {"PVR\3\0\0\0\0"sv, "a PVR texture"},
        {"PK\3\4\x14\0\0\0"sv, "a ZIP archive"},
        {"\x1f\x8b\x08\0\0\0\0\0"sv, "a gzip file"},
        {"\x28\xb5\x2f\xfd\x24\0\0\0"sv, "a Zstandard file"},
        {"<?xml version=\"1.0\"?>\n<a/>\n"sv, "an XML document"},
        {"<!DOCTYPE html>\n<title>404</title>\n"sv, "a web page"},
        {"just some words\n"sv, "a text file"},
    };
    for (const auto& [bytes, name] : kinds) {
        const vTextureInfo info = of(bytes);
        EXPECT_EQ(info.problem.status, Check::eNotThisKind);
        EXPECT_EQ(info.problem.sentence, std::string("is ") + name + ", not a DDS, .basis or KTX2 file");
        EXPECT_EQ(info.container, vTextureInfo::eNoContainer);
        EXPECT_TRUE(info.notes.empty());
        expect_consistent(info);
    }
}

TEST(OtherKinds, OfNoNameShowTheirFirstBytes) {
    EXPECT_EQ(of("\0\0\2\0\0\0"sv).problem.sentence,
              "is not a DDS, .basis or KTX2 file: it starts with \"\\x00\\x00\\x02\\x00\"");
    EXPECT_EQ(of("DDSx\1\2\3").problem.sentence,
              "is not a DDS, .basis or KTX2 file: it starts with \"DDSx\"");
    EXPECT_EQ(of("x").problem.sentence, "is not a DDS, .basis or KTX2 file: it starts with \"x\"");
}

TEST(OtherKinds, AreToldOfAGitLfsPointer) {
    const vTextureInfo info =
        of("version https://git-lfs.github.com/spec/v1\n"
           "oid sha256:4d7a214614ab2935c943f9e0ff69d22eadbb8f32b1258daaa5e2ca24d17e2393\nsize 12345\n");
    EXPECT_EQ(info.problem.status, Check::eNotThisKind);
    EXPECT_EQ(info.problem.sentence,
              "is a Git LFS pointer, not a DDS, .basis or KTX2 file: run 'git lfs pull' to fetch the file "
              "itself");
    ASSERT_EQ(info.notes.size(), 1U);
    EXPECT_EQ(info.notes[0].code, vTextureNote::eLFSPointer);
    EXPECT_EQ(info.notes[0].text, info.problem.sentence);
}

TEST(OtherKinds, OfAFewBytesAreCutShortWhereTheyCouldBeTextures) {
    EXPECT_EQ(of("").problem.sentence, "is empty");
    EXPECT_EQ(of("").problem.status, Check::eNotThisKind);
    for (const std::string_view bytes : {"D"sv, "DD"sv, "DDS"sv, "DDS "sv}) {
        EXPECT_EQ(of(bytes).problem.status, Check::eTruncated);
        EXPECT_EQ(of(bytes).problem.sentence, "is cut short: its header ends at byte 128, the file at byte " +
                                                  std::to_string(bytes.size()));
    }
    EXPECT_EQ(of("\xabKTX 2").problem.sentence,
              "is cut short: its header ends at byte 80, the file at byte 6");
}

TEST(OtherKinds, OfFilesSayWhyTheyCannotBeRead) {
    const support::TemporaryFolder folder;
    const vTextureInfo missing = vTextureInfo::ReadFile(folder.path("none.dds"));
    EXPECT_EQ(missing.problem.status, Check::eUnreadable);
    EXPECT_EQ(missing.problem.sentence, "cannot be opened: No such file or directory");
    EXPECT_EQ(vTextureInfo::ReadFile(folder.path(".")).problem.sentence, "is a directory");
    EXPECT_EQ(vTextureInfo::ReadFile("/dev/null").problem.sentence,
              "is not a regular file: its length cannot be told");
}

}  // namespace
