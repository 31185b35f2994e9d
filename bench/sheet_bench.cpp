// SPDX-License-Identifier: Apache-2.0
// pelto sheet of a BC1 texture of 4096 x 4096 pixels with its mip chain, beside writing the same PNG file
// alone.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "dds_sample.h"
#include "output/PNGWriter.h"
#include "paired.h"
#include "support/png_picture.h"

namespace {

void sheet(benchmark::State& state) {
    constexpr std::size_t kBlocks = 1024 * 1024;
    const bench::Sample sample =
        bench::make_sample(bench::Pixels::kBC1, kBlocks * 8 * 4 / 3 + 8, false, true);
    if (sample.level_sizes[0] != kBlocks * 8) std::abort();
    const std::filesystem::path folder = std::filesystem::temp_directory_path();
    const std::string file = (folder / "pelto_bench_sheet.dds").string();
    const std::string drawn = (folder / "pelto_bench_sheet.png").string();
    const std::string written = (folder / "pelto_bench_png.png").string();
    std::ofstream(file, std::ios::binary)
        .write(sample.file.data(), static_cast<std::streamsize>(sample.file.size()));
    const std::string command = PELTO_COMMAND " sheet '" + file + "' -o '" + drawn + "'";
    if (std::system(command.c_str()) != 0) std::abort();
    const support::PNGPicture picture = support::read_png(drawn);
    bench::paired(
        state, sample.bytes,
        [&](std::size_t) {
            if (std::system(command.c_str()) != 0) std::abort();
        },
        [&](std::size_t) {
            PNGWriter writer(written, static_cast<std::int64_t>(picture.width),
                             static_cast<std::int64_t>(picture.height));
            for (std::size_t y = 0; y < picture.height; ++y) writer.write_row(picture.at(0, y));
            writer.complete();
        });
    for (const std::string& path : {file, drawn, written}) std::filesystem::remove(path);
}

BENCHMARK(sheet)->Name("sheet/BC1_4096")->UseManualTime()->MinTime(6.0)->Unit(benchmark::kMillisecond);

}  // namespace
