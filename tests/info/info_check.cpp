// SPDX-License-Identifier: Apache-2.0
#include "info/info_check.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>

namespace info_check {

vTextureInfo read(const support::Bytes& file, const vTextureLimits& limits) {
    const std::unique_ptr<unsigned char[]> block(new unsigned char[file.size()]);
    std::copy(file.begin(), file.end(), block.get());
    return vTextureInfo::ReadBuffer(block.get(), file.size(), limits);
}

void expect_consistent(const vTextureInfo& info) {
    if (!info.Described()) {
        ASSERT_FALSE(info.problem.sentence.empty());
        ASSERT_EQ(info.GetNumImages(), 0U);
        ASSERT_FALSE(info.loads || info.faithful);
        return;
    }
    ASSERT_TRUE(info.problem.sentence.empty());
    ASSERT_NE(info.container, vTextureInfo::eNoContainer);
    ASSERT_FALSE(info.format.empty());
    ASSERT_GE(info.width, 1U);
    ASSERT_GE(info.height, 1U);
    ASSERT_GE(info.depth, 1U);
    ASSERT_GE(info.layers, 1U);
    ASSERT_GE(info.levels, 1U);
    ASSERT_EQ(info.faces, static_cast<std::uint32_t>(std::popcount(info.faceMask)));
    ASSERT_TRUE(info.loads || !info.faithful);
    ASSERT_EQ(info.GetNumImages(), std::uint64_t{info.layers} * info.faces * info.levels);
    ASSERT_EQ(info.WhatIsMissing().ok(), info.missingBytes == 0);
    for (const vTextureNote& note : info.notes) {
        ASSERT_FALSE(note.text.empty());
        ASSERT_STRNE(note.CodeName(), "");
        ASSERT_EQ(std::count_if(info.notes.begin(), info.notes.end(),
                                [&](const vTextureNote& other) { return other.code == note.code; }),
                  1)
            << note.CodeName();
    }
    const std::uint64_t count = info.GetNumImages();
    std::uint64_t sum = 0;
    bool whole = true;
    for (std::uint64_t i = 0; i < count; ++i) {
        if (count > 1000 && i == 500) i = count - 500;
        const vTextureLevel level = info.GetImage(i);
        sum += level.bytes;
        whole = whole && level.whole;
        ASSERT_LT(level.layer, info.layers);
        ASSERT_LT(level.level, info.levels);
        ASSERT_TRUE(info.faceMask >> level.face & 1);
        const bool compressed = info.pixels.blockBytes == 0;
        if (!level.whole || compressed) continue;
        ASSERT_LE(level.offset, info.fileBytes);
        if (info.container != vTextureInfo::eDDS) continue;
        ASSERT_LE(level.bytes, info.fileBytes - level.offset);
    }
    if (count <= 1000) {
        // Images of a codec without rows are parts of a level that need not be equal.
        const bool has_rows = info.GetImage(0).rowBytes != 0;
        ASSERT_LE(sum, info.bytes);
        ASSERT_TRUE(sum == info.bytes || !has_rows);
        // A KTX2 file can lack other data.
        ASSERT_TRUE(whole || info.missingBytes > 0);
        ASSERT_TRUE(!whole || info.missingBytes == 0 || info.container == vTextureInfo::eKTX2);
    }
}

void expect_same(const vTextureInfo& info, const vTextureInfo& expected) {
    EXPECT_EQ(info.problem.status, expected.problem.status);
    EXPECT_EQ(info.problem.offset, expected.problem.offset);
    EXPECT_EQ(info.problem.sentence, expected.problem.sentence);
    EXPECT_EQ(info.container, expected.container);
    EXPECT_EQ(info.format, expected.format);
    EXPECT_EQ(info.dxgi, expected.dxgi);
    EXPECT_EQ(info.loaderFormat, expected.loaderFormat);
    EXPECT_EQ(info.dimension, expected.dimension);
    EXPECT_EQ(info.width, expected.width);
    EXPECT_EQ(info.height, expected.height);
    EXPECT_EQ(info.depth, expected.depth);
    EXPECT_EQ(info.layers, expected.layers);
    EXPECT_EQ(info.faceMask, expected.faceMask);
    EXPECT_EQ(info.levels, expected.levels);
    EXPECT_EQ(info.alphaMode, expected.alphaMode);
    EXPECT_EQ(info.bytes, expected.bytes);
    EXPECT_EQ(info.fileBytes, expected.fileBytes);
    EXPECT_EQ(info.missingBytes, expected.missingBytes);
    EXPECT_EQ(info.loads, expected.loads);
    EXPECT_EQ(info.faithful, expected.faithful);
    ASSERT_EQ(info.notes.size(), expected.notes.size());
    for (std::size_t i = 0; i < info.notes.size(); ++i) {
        EXPECT_EQ(info.notes[i].code, expected.notes[i].code);
        EXPECT_EQ(info.notes[i].text, expected.notes[i].text);
    }
    ASSERT_EQ(info.GetNumImages(), expected.GetNumImages());
    for (std::uint64_t i = 0; i < std::min<std::uint64_t>(info.GetNumImages(), 100); ++i) {
        EXPECT_EQ(info.GetImage(i).offset, expected.GetImage(i).offset);
        EXPECT_EQ(info.GetImage(i).bytes, expected.GetImage(i).bytes);
        EXPECT_EQ(info.GetImage(i).whole, expected.GetImage(i).whole);
    }
}

}  // namespace info_check
