// SPDX-License-Identifier: Apache-2.0
// Loading and transcoding .basis files, beside the transcoder's own calls on the same file; and what setting
// the transcoder up for every call costs on a chain of mip levels.
#include <basisu_transcoder.h>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vBasisImage.h>
#include <vector>

#include "paired.h"

namespace {

using basist::transcoder_texture_format;

struct Usage {
    const char* name;
    TOZ::EUsageFormat usage;
    transcoder_texture_format format;
};

constexpr Usage kUsages[] = {{"BC1", TOZ::eUsageFormatBC1, transcoder_texture_format::cTFBC1_RGB},
                             {"BC3", TOZ::eUsageFormatBC3, transcoder_texture_format::cTFBC3_RGBA},
                             {"BC4", TOZ::eUsageFormatBC4, transcoder_texture_format::cTFBC4_R},
                             {"BC5", TOZ::eUsageFormatBC5, transcoder_texture_format::cTFBC5_RG}};

struct File {
    const char* name;
    const char* path;  // below the samples of the transcoder's source
};

constexpr File kFiles[] = {{"ETC1S", "/texture_test/assets/kodim20_1024x1024.basis"},
                           {"ETC1S_alpha", "/texture_test/assets/alpha3.basis"},
                           {"UASTC", "/texture_test/assets/kodim26_uastc_1024.basis"}};
constexpr File kMipChain = {"ETC1S_mips", "/texture_test/assets/kodim01_mipmapped.basis"};

std::string path_of(const File& file) { return std::string(PELTO_BASIS_SAMPLES) + file.path; }

std::string bytes_of(const File& file) {
    std::ifstream stream(path_of(file), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::uint32_t size_of(const std::string& data) { return static_cast<std::uint32_t>(data.size()); }

// The bytes of a level, for a transcoder that was started.
std::size_t transcode_level(basist::basisu_transcoder& transcoder, const std::string& data,
                            std::uint32_t level, transcoder_texture_format format) {
    basist::basisu_image_level_info info;
    transcoder.get_image_level_info(data.data(), size_of(data), info, 0, level);
    const std::size_t bytes =
        std::size_t{basist::basis_get_bytes_per_block_or_pixel(format)} * info.m_total_blocks;
    const std::unique_ptr<unsigned char[]> blocks(new unsigned char[bytes]);
    if (!transcoder.transcode_image_level(data.data(), size_of(data), 0, level, blocks.get(),
                                          info.m_total_blocks, format, 0, 0, nullptr, 0)) {
        std::abort();
    }
    benchmark::DoNotOptimize(blocks.get());
    return bytes;
}

std::size_t bare_level(const std::string& data, std::uint32_t level, transcoder_texture_format format) {
    basist::basisu_transcoder_init();
    const auto transcoder = std::make_unique<basist::basisu_transcoder>();
    if (!transcoder->start_transcoding(data.data(), size_of(data))) std::abort();
    return transcode_level(*transcoder, data, level, format);
}

void get_level(const TOZ::vBasisImage& image, std::uint32_t level, TOZ::EUsageFormat usage) {
    unsigned char* blocks = nullptr;
    unsigned int bytes = 0;
    if (!image.getImage(level, 0, blocks, bytes, usage)) std::abort();
    const std::unique_ptr<unsigned char[]> owned(blocks);
    benchmark::DoNotOptimize(blocks);
}

void get_image(benchmark::State& state, const File& file, const Usage& usage) {
    const std::string data = bytes_of(file);
    TOZ::vBasisImage image;
    image.load(path_of(file).c_str());
    const std::size_t bytes = bare_level(data, 0, usage.format);
    bench::paired(
        state, bytes, [&](std::size_t) { get_level(image, 0, usage.usage); },
        [&](std::size_t) { bare_level(data, 0, usage.format); });
}

void load(benchmark::State& state, const File& file) {
    const std::string path = path_of(file);
    const std::size_t bytes = bytes_of(file).size();
    basist::basisu_transcoder_init();
    bench::paired(
        state, bytes,
        [&](std::size_t) {
            TOZ::vBasisImage image;
            if (!image.load(path.c_str())) std::abort();
        },
        [&](std::size_t) {
            std::FILE* const stream = std::fopen(path.c_str(), "rb");
            const std::unique_ptr<unsigned char[]> data(new unsigned char[bytes]);
            if (std::fread(data.get(), 1, bytes, stream) != bytes) std::abort();
            std::fclose(stream);
            const auto transcoder = std::make_unique<basist::basisu_transcoder>();
            if (!transcoder->start_transcoding(data.get(), static_cast<std::uint32_t>(bytes))) std::abort();
        });
}

// All levels by a call each, beside one transcoder that is started once for all of them.
void mip_chain(benchmark::State& state, const Usage& usage) {
    const std::string data = bytes_of(kMipChain);
    TOZ::vBasisImage image;
    image.load(path_of(kMipChain).c_str());
    const auto levels = static_cast<std::uint32_t>(image.getNumMipLevels());
    std::size_t bytes = 0;
    for (std::uint32_t level = 0; level < levels; ++level) bytes += bare_level(data, level, usage.format);
    bench::paired(
        state, bytes,
        [&](std::size_t) {
            for (std::uint32_t level = 0; level < levels; ++level) get_level(image, level, usage.usage);
        },
        [&](std::size_t) {
            basist::basisu_transcoder transcoder;
            if (!transcoder.start_transcoding(data.data(), size_of(data))) std::abort();
            for (std::uint32_t level = 0; level < levels; ++level) {
                transcode_level(transcoder, data, level, usage.format);
            }
        });
}

template <class Run, class... Arguments>
void add(const std::string& name, Run run, Arguments... arguments) {
    benchmark::RegisterBenchmark(name.c_str(), run, arguments...)->UseManualTime()->MinTime(2.0);
}

const bool registered = [] {
    for (const File& file : kFiles) {
        for (const Usage& usage : kUsages) {
            add(std::string("basis_get_image/") + file.name + "_to_" + usage.name, get_image, file, usage);
        }
    }
    for (const File& file : kFiles) add(std::string("basis_load/") + file.name, load, file);
    for (const Usage& usage : kUsages) add(std::string("basis_mip_chain/") + usage.name, mip_chain, usage);
    return true;
}();

}  // namespace
