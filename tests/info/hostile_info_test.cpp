// SPDX-License-Identifier: Apache-2.0
// Damaged headers, many of them: what is told stays consistent, and takes neither memory nor time.
#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <string>
#include <vDDSLevels.h>
#include <vTextureCheck.h>
#include <vTextureInfo.h>

#include "info/dds_model.h"
#include "info/info_check.h"
#include "support/allocation.h"
#include "support/dds_check.h"

namespace {

using namespace support;
using namespace info_check;
using Check = vTextureCheck;

void put32(Bytes& file, std::size_t offset, std::uint32_t value) {
    for (std::size_t i = 0; i < 4 && offset + i < file.size(); ++i) {
        file[offset + i] = static_cast<std::uint8_t>(value >> 8 * i);
    }
}

void damage(Bytes& file, std::mt19937& random) {
    constexpr std::uint32_t kTelling[] = {0,          1,          2,          3,          6,
                                          0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0xFFFFFFFE, 0x10000};
    for (auto changes = 1 + random() % 4; changes > 0; --changes) {
        const std::size_t word = random() % 37 * 4;
        switch (random() % 3) {
            case 0:
                put32(file, word, static_cast<std::uint32_t>(random() >> random() % 32));
                break;
            case 1:
                put32(file, word, kTelling[random() % std::size(kTelling)]);
                break;
            default:
                file[random() % file.size()] = static_cast<std::uint8_t>(random());
        }
    }
}

void expect_levels_in_file(const vDDSLevels& levels, const unsigned char* data, std::uint64_t size) {
    const int layers = std::min(levels.GetNumLayers(), 3);
    for (int layer = 0; layer < layers; ++layer) {
        for (int face = -1; face < 7; ++face) {
            for (int i = -1; i <= levels.GetNumLevels(); ++i) {
                const vDDSLevel level = levels.GetLevel(face, i, layer);
                if (!level.data) continue;
                ASSERT_EQ(level.data, data + level.offset);
                ASSERT_LE(level.bytes, size);
                ASSERT_LE(level.offset, size - level.bytes);
            }
        }
    }
}

TEST(HostileInfo, IsConsistentForDamagedHeaders) {
    const std::uint32_t seed = std::random_device()();
    std::mt19937 random(seed);
    int described = 0;
    for (int i = 0; i < 200000; ++i) {
        const dds_model::Pixels& pixels = dds_model::all_pixels()[random() % dds_model::all_pixels().size()];
        Bytes file = header_bytes(dds_model::random_header(pixels, random));
        file.resize(file.size() + random() % 700);
        damage(file, random);
        const std::unique_ptr<unsigned char[]> block(new unsigned char[file.size()]);
        std::copy(file.begin(), file.end(), block.get());
        const vTextureInfo info = vTextureInfo::ReadBuffer(block.get(), file.size());
        expect_consistent(info);
        const Check::Result check = Check::CheckDDSBuffer(block.get(), file.size());
        EXPECT_EQ(check.ok(), check.sentence.empty());
        if (info.Described()) {
            ++described;
            EXPECT_EQ(info.loads, check.ok());
        }
        vDDSLevels levels;
        const Check::Result& table = levels.Read(block.get(), file.size());
        if (info.container != vTextureInfo::eDDS || !info.Described()) {
            EXPECT_FALSE(table.ok());
            EXPECT_EQ(levels.GetNumLevels(), 0);
        } else {
            EXPECT_EQ(table.ok(), info.missingBytes == 0);
            EXPECT_EQ(table.missingBytes, info.missingBytes);
            EXPECT_EQ(levels.GetNumLayers(), static_cast<int>(info.layers));
        }
        expect_levels_in_file(levels, block.get(), file.size());
        if (HasFailure()) FAIL() << "seed " << seed << ", file " << i;
    }
    EXPECT_GT(described, 10000);
}

// The most layers, faces and levels that a header may have: 12,582,912 images.
TEST(HostileInfo, OfManyImagesTakesNoMemoryForThem) {
    FileHeader header = dxgi_header(98).sized(1, 1).with_mips(32);
    header.array_size = 65536;
    header.misc_flag = 4;
    const Bytes file = header_bytes(header);
    const AllocationRecorder recorder;
    const vTextureInfo info = vTextureInfo::ReadBuffer(file.data(), file.size());
    vDDSLevels levels;
    levels.Read(file.data(), file.size());
    const std::vector<std::size_t> sizes = recorder.sizes();
    ASSERT_TRUE(info.Described());
    EXPECT_EQ(info.GetNumImages(), 65536U * 6 * 32);
    EXPECT_EQ(info.bytes, std::uint64_t{65536} * 6 * 32 * 16);
    EXPECT_EQ(info.missingBytes, info.bytes);
    EXPECT_EQ(levels.GetNumLayers(), 65536);
    for (const std::size_t size : sizes) EXPECT_LT(size, 16384U);
    header.array_size = 65537;
    EXPECT_EQ(read(header_bytes(header)).problem.status, Check::eAbsurdSize);
    EXPECT_EQ(read(header_bytes(header)).problem.offset, 140U);
}

}  // namespace
