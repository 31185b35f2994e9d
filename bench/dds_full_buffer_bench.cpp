// Assembling one buffer of all levels, beside one memcpy of the same bytes.
#include <cstring>
#include <string>
#include <vDDSImage.h>
#include <vector>

#include "dds_sample.h"
#include "paired.h"

namespace {

using bench::kMB;
using bench::Pixels;

void assemble(benchmark::State& state, Pixels pixels, bool cube, std::size_t bytes) {
    const bench::Sample sample = bench::make_sample(pixels, bytes, cube, true);
    vDDSImage image;
    if (!image.loadFromBuffer(sample.file.data(), 0, false, false)) std::abort();
    std::vector<char> buffer(image.compute_full_size(-1));
    bench::paired(
        state, buffer.size(),
        [&] {
            if (!image.compute_full_buffer(buffer.data(), buffer.size(), -1)) std::abort();
        },
        [&] { std::memcpy(buffer.data(), sample.file.data() + 128, buffer.size()); });
}

const bool registered = [] {
    for (const std::size_t megabytes : {1U, 64U, 256U}) {
        const std::string suffix = std::to_string(megabytes).insert(0, 1, '/') + "MB";
        const auto add = [&](const char* name, Pixels pixels, bool cube) {
            benchmark::RegisterBenchmark(("compute_full_buffer/" + (name + suffix)).c_str(), assemble, pixels,
                                         cube, megabytes * kMB)
                ->UseManualTime();
        };
        add("BC1_2D_mips", Pixels::kBC1, false);
        add("BC1_cube_mips", Pixels::kBC1, true);
        add("RGBA8_2D_mips", Pixels::kRGBA8, false);
    }
    return true;
}();

}  // namespace
