// Assembling one buffer of all levels, beside one memcpy of the same bytes.
#include <cstdlib>
#include <cstring>
#include <string>
#include <vDDSImage.h>
#include <vector>

#include "dds_sample.h"
#include "paired.h"

namespace {

using bench::Pixels;

// The caches' pace depends on where memory happens to lie: several places are taken in turn.
constexpr std::size_t kPlaces = 8;

struct Place {
    vDDSImage image;
    std::string source;
    std::vector<char> buffer;
};

void assemble(benchmark::State& state, std::size_t bytes, Pixels pixels, bool cube) {
    const bench::Sample sample = bench::make_sample(pixels, bytes, cube, true);
    std::vector<Place> places(bytes > bench::kMB ? 1 : kPlaces);
    for (Place& place : places) {
        if (!place.image.loadFromBuffer(sample.file.data(), 0, false, false)) std::abort();
        place.source = sample.file.substr(128);
        place.buffer.resize(place.image.compute_full_size(-1));
    }
    std::size_t assembled = 0;
    std::size_t copied = 0;
    bench::paired(
        state, sample.bytes,
        [&] {
            Place& place = places[assembled++ % places.size()];
            if (!place.image.compute_full_buffer(place.buffer.data(), place.buffer.size(), -1)) std::abort();
        },
        [&] {
            Place& place = places[copied++ % places.size()];
            std::memcpy(place.buffer.data(), place.source.data(), place.source.size());
        });
}

const bool registered = [] {
    for (const unsigned megabytes : {1U, 64U, 256U}) {
        bench::add("compute_full_buffer/BC1_2D_mips", megabytes, assemble, Pixels::kBC1, false);
        bench::add("compute_full_buffer/BC1_cube_mips", megabytes, assemble, Pixels::kBC1, true);
        bench::add("compute_full_buffer/RGBA8_2D_mips", megabytes, assemble, Pixels::kRGBA8, false);
    }
    return true;
}();

}  // namespace
