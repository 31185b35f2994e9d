// SPDX-License-Identifier: Apache-2.0
// Each note of vTextureInfo: where it is told, in what words, and where just not.
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vTextureInfo.h>
#include <vector>

#include "info/info_check.h"
#include "support/dds_check.h"

namespace {

using namespace support;
using namespace info_check;
using Note = vTextureNote;

constexpr std::uint32_t kMiscCube = 4;

Bytes sized_file(const FileHeader& header, std::size_t pixel_bytes) {
    Bytes file = header_bytes(header);
    file.resize(file.size() + pixel_bytes);
    return file;
}

// "code: text" of all notes.
std::vector<std::string> notes(const FileHeader& header, std::size_t pixel_bytes) {
    const vTextureInfo info = read(sized_file(header, pixel_bytes));
    EXPECT_TRUE(info.Described()) << info.problem.sentence;
    std::vector<std::string> list;
    for (const Note& note : info.notes) list.push_back(std::string(note.CodeName()) + ": " + note.text);
    return list;
}

using List = std::vector<std::string>;

bool is_faithful(const FileHeader& header, std::size_t pixel_bytes) {
    return read(sized_file(header, pixel_bytes)).faithful;
}

// 8 x 8 pixels: 32 bytes, and a flip that is exact.
FileHeader bc1() { return fourcc_header(four_cc("DXT1")).sized(8, 8); }
FileHeader bc1_dx10() { return dxgi_header(71).sized(8, 8); }

TEST(Notes, AreNoneOfAFileThatTheLoaderTakesAsItIs) {
    EXPECT_EQ(notes(bc1(), 32), List{});
    EXPECT_EQ(notes(bc1_dx10(), 32), List{});
    EXPECT_TRUE(is_faithful(bc1(), 32));
}

TEST(Notes, OfLayersThatAreDropped) {
    FileHeader header = bc1_dx10();
    header.array_size = 2;
    EXPECT_EQ(notes(header, 64),
              List{"layersDropped: has 2 layers, of which vDDSImage reads the first alone"});
    EXPECT_FALSE(is_faithful(header, 64));
    header.array_size = 1;
    EXPECT_EQ(notes(header, 32), List{});
    header.dxgi_format = 98;
    header.array_size = 2;
    EXPECT_EQ(notes(header, 128), List{});
}

TEST(Notes, OfPartialCubeMaps) {
    const FileHeader two = bc1().with_caps2(kCubeMap | 0x8000 | 0x400);
    EXPECT_EQ(notes(two, 64),
              List{"partialCube: is a cube map with the faces +X, -Z alone, where vDDSImage expects six"});
    const FileHeader one = bc1().with_caps2(kCubeMap | 0x1000);
    EXPECT_EQ(notes(one, 32),
              List{"partialCube: is a cube map with the face +Y alone, where vDDSImage expects six"});
    EXPECT_FALSE(is_faithful(two, 64));
    EXPECT_EQ(notes(bc1().with_caps2(kCubeMap | 0xFC00), 192), List{});
    EXPECT_EQ(notes(bc1().with_caps2(kCubeMap), 192), List{});
    EXPECT_EQ(notes(bc1().with_caps2(0xFC00), 32), List{});
}

TEST(Notes, OfACubeMapThatOneHeaderAloneAnnounces) {
    FileHeader header = bc1_dx10();
    header.misc_flag = kMiscCube;
    EXPECT_EQ(notes(header, 192), List{"cubeFlagOnlyInExtension: only its DX10 header says that it is a cube "
                                       "map: vDDSImage reads one face"});
    EXPECT_FALSE(is_faithful(header, 192));
    EXPECT_EQ(notes(header.with_caps2(kCubeMap), 192), List{});
    EXPECT_TRUE(is_faithful(header.with_caps2(kCubeMap), 192));
    const FileHeader other = bc1_dx10().with_caps2(kCubeMap | 0xFC00);
    EXPECT_EQ(notes(other, 32), List{"cubeFlagOnlyInHeader: its DX10 header does not say that it is a cube "
                                     "map: vDDSImage reads six faces all the same"});
    const vTextureInfo info = read(sized_file(other, 32));
    EXPECT_EQ(info.faces, 1U);
    EXPECT_FALSE(info.loads);
}

TEST(Notes, OfChannelsThatMasksMeanOtherwise) {
    const FileHeader ten =
        plain_header(0x41, 32).sized(1, 2).with_masks(0x3FF, 0xFFC00, 0x3FF00000, 0xC0000000);
    EXPECT_EQ(notes(ten, 8),
              List{"channelMasks: is R10G10B10A2_UNORM, whose channels vDDSImage does not move "
                   "as the masks mean"});
    EXPECT_FALSE(is_faithful(ten, 8));
    const FileHeader bgra = ten.with_masks(0xFF0000, 0xFF00, 0xFF, 0xFF000000);
    EXPECT_EQ(notes(bgra, 8), List{});
    EXPECT_EQ(notes(bgra.with_masks(0xFF0000, 0xFF00, 0xFF, 0), 8).size(), 1U);
    EXPECT_EQ(notes(bgra.with_masks(0xFE0000, 0xFF00, 0xFF, 0xFF000000), 8).size(), 1U);
    EXPECT_EQ(notes(plain_header(0x2, 8).sized(4, 2).with_masks(0, 0, 0, 0xFF), 8),
              List{"channelMasks: is A8_UNORM, whose channels vDDSImage does not move as the masks mean"});
    EXPECT_EQ(notes(plain_header(0x40, 8).sized(4, 2).with_masks(0xFF, 0, 0, 0), 8), List{});
    EXPECT_EQ(notes(plain_header(0x20000, 8).sized(4, 2).with_masks(0xFF, 0, 0, 0), 8), List{});
}

TEST(Notes, OfFloatsWhoseHeaderHasMasks) {
    const FileHeader header = fourcc_header(113).sized(2, 2).with_masks(0xFF0000, 0xFF00, 0xFF, 0xFF000000);
    EXPECT_EQ(notes(header, 32), List{"floatWithMasks: its header has channel masks, which vDDSImage applies "
                                      "to its floats"});
    EXPECT_EQ(notes(header.with_masks(0xFF0000, 0, 0xFF, 0xFF000000), 32), List{});
    // A single channel is left alone.
    const FileHeader one = fourcc_header(114).sized(2, 2).with_masks(0xFF0000, 0xFF00, 0xFF, 0xFF000000);
    EXPECT_EQ(notes(one, 16), List{});
}

TEST(Notes, OfSignsThatAreLost) {
    EXPECT_EQ(notes(fourcc_header(four_cc("BC5S")).sized(8, 8), 64),
              List{"signLost: holds signed numbers, which vDDSImage takes for unsigned ones"});
    EXPECT_EQ(notes(dxgi_header(84).sized(8, 8), 64), List{});
    EXPECT_EQ(notes(fourcc_header(four_cc("BC4S")).sized(8, 8), 32), List{});
    EXPECT_EQ(notes(fourcc_header(four_cc("BC5U")).sized(8, 8), 64), List{});
}

TEST(Notes, OfPixelsOfFourBytesReadAsThree) {
    EXPECT_EQ(notes(dxgi_header(87).sized(2, 2), 16),
              List{"threeBytePixels: has four bytes a pixel, which vDDSImage reads as three"});
    EXPECT_FALSE(is_faithful(dxgi_header(87).sized(2, 2), 16));
    EXPECT_EQ(notes(dxgi_header(91).sized(2, 2), 16), List{});
}

// 3 pixels of 3 bytes: rows of 9 bytes, padded to 12.
TEST(Notes, OfPaddedRows) {
    const FileHeader header = plain_header(0x40, 24).with_masks(0xFF0000, 0xFF00, 0xFF, 0).sized(3, 2);
    const List padded = {"paddedRows: its rows are padded to 12 bytes, which vDDSImage takes for pixels"};
    EXPECT_EQ(notes(header, 24), padded);
    const vTextureInfo info = read(sized_file(header, 24));
    EXPECT_EQ(info.bytes, 24U);
    EXPECT_EQ(info.GetImage(0).rowBytes, 12U);
    EXPECT_TRUE(info.loads);
    EXPECT_FALSE(info.faithful);
    for (const std::size_t other : {17U, 18U, 19U, 23U, 25U}) {
        const vTextureInfo packed = read(sized_file(header, other));
        EXPECT_FALSE(packed.HasNote(Note::ePaddedRows)) << other;
        EXPECT_EQ(packed.bytes, 18U);
        EXPECT_EQ(packed.GetImage(0).rowBytes, 9U);
    }
    EXPECT_EQ(notes(header.with_mips(1), 24), padded);
    EXPECT_EQ(notes(header.with_depth(2).with_caps2(kVolume), 48), padded);
    EXPECT_EQ(notes(header.with_caps2(kCubeMap), 144), padded);
    // More than one level, rows of whole words, or a format by number: leftover bytes.
    EXPECT_EQ(notes(header.with_mips(2), 28), List{"leftoverBytes: 7 bytes follow its last level, which ends "
                                                   "at byte 149"});
    EXPECT_FALSE(read(sized_file(header.sized(4, 2), 24)).HasNote(Note::ePaddedRows));
    FileHeader numbered = fourcc_header(20).sized(3, 2);
    EXPECT_FALSE(read(sized_file(numbered, 24)).HasNote(Note::ePaddedRows));
    // Lengths that fit rows of 2 bytes, and both.
    EXPECT_TRUE(read(sized_file(plain_header(0x40, 16).with_masks(0xF800, 0x7E0, 0x1F, 0).sized(1, 1), 4))
                    .HasNote(Note::ePaddedRows));
}

TEST(Notes, OfPalettes) {
    const FileHeader flagged = plain_header(0x20, 8).sized(4, 4);
    EXPECT_EQ(notes(flagged, 1024 + 16),
              List{"palette: holds indices into a palette, which vDDSImage takes for grey"});
    for (const FileHeader& header : {flagged, fourcc_header(41).sized(4, 4)}) {
        const vTextureInfo info = read(sized_file(header, 1024 + 16));
        EXPECT_EQ(info.format, "P8");
        EXPECT_EQ(info.dxgi, 0U);
        EXPECT_EQ(info.bytes, 16U);
        EXPECT_EQ(info.GetImage(0).offset, 128U + 1024);
        EXPECT_EQ(info.missingBytes, 0U);
        EXPECT_FALSE(info.HasNote(Note::eLeftoverBytes));
        EXPECT_FALSE(info.faithful);
        EXPECT_EQ(read(sized_file(header, 1024 + 15)).missingBytes, 1U);
    }
    const vTextureInfo extended = read(sized_file(dxgi_header(113).sized(4, 4), 16));
    EXPECT_EQ(extended.dxgi, 113U);
    EXPECT_EQ(extended.GetImage(0).offset, 148U);
    EXPECT_EQ(extended.missingBytes, 0U);
}

TEST(Notes, OfLeftoverBytes) {
    EXPECT_EQ(notes(bc1(), 33), List{"leftoverBytes: 1 byte follows its last level, which ends at byte 160"});
    EXPECT_EQ(notes(bc1(), 34), List{"leftoverBytes: 2 bytes follow its last level, which ends at byte 160"});
    EXPECT_TRUE(is_faithful(bc1(), 33));
}

TEST(Notes, OfTruncatedFiles) {
    EXPECT_EQ(notes(bc1(), 31), List{"truncated: ends 1 byte before the end of its last level"});
    EXPECT_EQ(notes(bc1(), 0), List{"truncated: ends 32 bytes before the end of its last level"});
    const vTextureInfo info = read(sized_file(bc1(), 31));
    EXPECT_EQ(info.WhatIsMissing().sentence, "is cut short: level 0 ends at byte 160, the file at byte 159");
    EXPECT_FALSE(info.loads);
}

TEST(Notes, OfAStaleFourCC) {
    FileHeader header = plain_header(0x41, 32).sized(2, 2).with_masks(0xFF, 0xFF00, 0xFF0000, 0xFF000000);
    header.pixel_format.fourcc = four_cc("DX10");
    Bytes file = header_bytes(header);
    file.resize(128 + 16 + 20);
    const vTextureInfo info = read(file);
    ASSERT_EQ(info.notes.size(), 2U);
    EXPECT_STREQ(info.notes[0].CodeName(), "staleFourCC");
    EXPECT_EQ(info.notes[0].text,
              "its FourCC is DX10 without the flag for it: vDDSImage skips 20 bytes of the first level");
    EXPECT_TRUE(info.HasNote(Note::eLeftoverBytes));
    EXPECT_EQ(info.GetImage(0).offset, 128U);
    EXPECT_TRUE(info.loads);
    EXPECT_FALSE(info.faithful);
    file.resize(file.size() - 1);
    EXPECT_FALSE(read(file).loads);
    EXPECT_TRUE(read(file).HasNote(Note::eStaleFourCC));
    header.pixel_format.fourcc = four_cc("DXT1");
    EXPECT_EQ(notes(header, 16), List{});
    EXPECT_TRUE(is_faithful(header, 16));
}

TEST(Notes, OfADepthWithoutAVolume) {
    EXPECT_EQ(notes(bc1().with_depth(2), 64),
              (List{"depthWithoutVolume: its header gives a depth of 2 without being a volume's: vDDSImage "
                    "reads that many slices",
                    "leftoverBytes: 32 bytes follow its last level, which ends at byte 160"}));
    EXPECT_EQ(notes(bc1().with_depth(1), 32), List{});
    EXPECT_TRUE(is_faithful(bc1().with_depth(1), 32));
    // The header's flag for its depth says volume as well.
    FileHeader flagged = bc1().with_depth(2);
    flagged.flags |= 0x800000;
    EXPECT_EQ(read(sized_file(flagged, 64)).dimension, 3);
    EXPECT_TRUE(is_faithful(flagged, 64));
    // In DX10 files the dimension decides.
    FileHeader volume = bc1_dx10().with_depth(2);
    EXPECT_TRUE(read(sized_file(volume.with_caps2(kVolume), 64)).HasNote(Note::eDepthWithoutVolume));
    volume.resource_dimension = 4;
    EXPECT_FALSE(read(sized_file(volume, 64)).HasNote(Note::eDepthWithoutVolume));
    EXPECT_EQ(read(sized_file(volume, 64)).depth, 2U);
}

TEST(Notes, HaveTheNamesOfTheirCodes) {
    const std::pair<Note::ECode, const char*> names[] = {
        {Note::eLayersDropped, "layersDropped"},
        {Note::ePartialCube, "partialCube"},
        {Note::eCubeFlagOnlyInExtension, "cubeFlagOnlyInExtension"},
        {Note::eChannelMasks, "channelMasks"},
        {Note::eFloatWithMasks, "floatWithMasks"},
        {Note::eSignLost, "signLost"},
        {Note::eThreeBytePixels, "threeBytePixels"},
        {Note::ePaddedRows, "paddedRows"},
        {Note::ePalette, "palette"},
        {Note::eLeftoverBytes, "leftoverBytes"},
        {Note::eStaleFourCC, "staleFourCC"},
        {Note::eTruncated, "truncated"},
        {Note::eInexactFlip, "inexactFlip"},
        {Note::eNoTargetForm, "noTargetForm"},
        {Note::eLFSPointer, "lfsPointer"},
        {Note::eCubeFlagOnlyInHeader, "cubeFlagOnlyInHeader"},
        {Note::eDepthWithoutVolume, "depthWithoutVolume"},
    };
    for (const auto& [code, name] : names) EXPECT_STREQ((Note{code, ""}.CodeName()), name);
}

}  // namespace
