// SPDX-License-Identifier: Apache-2.0
// Loading, beside taking the memory for the same levels and copying their bytes.
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <new>
#include <string>
#include <vDDSImage.h>
#include <vector>

#include "dds_sample.h"
#include "paired.h"

namespace {

using bench::kMB;
using bench::Pixels;
using bench::Sample;

struct Kind {
    const char* name;
    Pixels pixels;
    bool cube;
    bool mips;
};

constexpr Kind kKinds[] = {
    {"BC1_2D", Pixels::kBC1, false, false},          {"BC1_2D_mips", Pixels::kBC1, false, true},
    {"BC1_cube_mips", Pixels::kBC1, true, true},     {"BC3_2D", Pixels::kBC3, false, false},
    {"BC3_2D_mips", Pixels::kBC3, false, true},      {"BC3_cube_mips", Pixels::kBC3, true, true},
    {"RGBA8_2D", Pixels::kRGBA8, false, false},      {"RGBA8_2D_mips", Pixels::kRGBA8, false, true},
    {"RGBA8_cube_mips", Pixels::kRGBA8, true, true}, {"BGRA8_2D", Pixels::kBGRA8, false, false},
    {"BGRA8_cube_mips", Pixels::kBGRA8, true, true}, {"BGR8_2D", Pixels::kBGR8, false, false},
};

struct Release {
    void operator()(char* block) const { ::operator delete(block); }
};

void copy_levels(const char* file, const std::vector<std::size_t>& level_sizes) {
    std::vector<std::unique_ptr<char, Release>> levels;
    levels.reserve(level_sizes.size());
    const char* from = file + 128;
    for (const std::size_t size : level_sizes) {
        levels.emplace_back(static_cast<char*>(::operator new(size)));
        std::memcpy(levels.back().get(), from, size);
        benchmark::DoNotOptimize(levels.back().get());
        from += size;
    }
}

void load_from_buffer(benchmark::State& state, std::size_t bytes, const Kind& kind) {
    const Sample sample = bench::make_sample(kind.pixels, bytes, kind.cube, kind.mips);
    const bench::Places turns(bytes);
    const std::vector<std::string> files(turns.count(), sample.file);
    bench::paired(
        state, sample.bytes,
        [&](std::size_t call) {
            vDDSImage image;
            if (!image.loadFromBuffer(files[turns.of(call)].data(), 0, false, false)) std::abort();
        },
        [&](std::size_t call) { copy_levels(files[turns.of(call)].data(), sample.level_sizes); });
}

void load_from_file(benchmark::State& state, std::size_t bytes, const Kind& kind) {
    const Sample sample = bench::make_sample(kind.pixels, bytes, kind.cube, kind.mips);
    const auto path =
        std::filesystem::temp_directory_path() / ("pelto_bench_" + std::string(kind.name) + ".dds");
    std::ofstream(path, std::ios::binary)
        .write(sample.file.data(), static_cast<std::streamsize>(sample.file.size()));
    const std::string name = path.string();
    bench::paired(
        state, sample.bytes,
        [&](std::size_t) {
            vDDSImage image;
            if (!image.load(name, false, false)) std::abort();
        },
        [&](std::size_t) {
            std::FILE* const file = std::fopen(name.c_str(), "rb");
            const auto buffer = std::make_unique_for_overwrite<char[]>(sample.file.size());
            if (std::fread(buffer.get(), 1, sample.file.size(), file) != sample.file.size()) std::abort();
            std::fclose(file);
            copy_levels(buffer.get(), sample.level_sizes);
        });
    std::filesystem::remove(path);
}

const bool registered = [] {
    for (const Kind& kind : kKinds) {
        for (const unsigned megabytes : {1U, 64U, 256U}) {
            bench::add(std::string("loadFromBuffer/") + kind.name, megabytes, load_from_buffer, kind);
        }
        for (const unsigned megabytes : {1U, 64U}) {
            bench::add(std::string("load/") + kind.name, megabytes, load_from_file, kind);
        }
    }
    return true;
}();

}  // namespace
