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

struct Place {
    vDDSImage image;
    std::string source;
    std::size_t offset;
    std::vector<char> buffer;
};

void assemble(benchmark::State& state, std::size_t bytes, Pixels pixels, bool cube) {
    const bench::Sample sample = bench::make_sample(pixels, bytes, cube, true);
    const bench::Places turns(bytes);
    std::vector<Place> places(turns.count());
    for (Place& place : places) {
        if (!place.image.loadFromBuffer(sample.file.data(), 0, false, false)) std::abort();
        // Not all at the same place within a page: memcpy has its favourites.
        place.offset = 528 * static_cast<std::size_t>(&place - places.data());
        place.source = std::string(place.offset, '\0') + sample.file.substr(128);
        place.buffer.resize(place.image.compute_full_size(-1));
    }
    bench::paired(
        state, sample.bytes,
        [&](std::size_t call) {
            Place& place = places[turns.of(call)];
            if (!place.image.compute_full_buffer(place.buffer.data(), place.buffer.size(), -1)) std::abort();
        },
        [&](std::size_t call) {
            Place& place = places[turns.of(call)];
            std::memcpy(place.buffer.data(), place.source.data() + place.offset, place.buffer.size());
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
