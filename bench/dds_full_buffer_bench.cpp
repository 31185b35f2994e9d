// SPDX-License-Identifier: Apache-2.0
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

std::vector<Place> make_places(const bench::Sample& sample, std::size_t count) {
    std::vector<Place> places(count);
    for (Place& place : places) {
        if (!place.image.loadFromBuffer(sample.file.data(), 0, false, false)) std::abort();
        // Not all at the same place within a page: memcpy has its favourites.
        place.offset = 528 * static_cast<std::size_t>(&place - places.data());
        place.source = std::string(place.offset, '\0') + sample.file.substr(128);
        place.buffer.resize(sample.bytes);
    }
    return places;
}

// Measures `fill`, which fills a place's buffer from its image, beside one memcpy.
template <class Fill>
void beside_memcpy(benchmark::State& state, const bench::Sample& sample, std::size_t bytes, Fill fill) {
    const bench::Places turns(bytes);
    std::vector<Place> places = make_places(sample, turns.count());
    bench::paired(
        state, sample.bytes, [&](std::size_t call) { fill(places[turns.of(call)]); },
        [&](std::size_t call) {
            Place& place = places[turns.of(call)];
            std::memcpy(place.buffer.data(), place.source.data() + place.offset, place.buffer.size());
        });
}

void assemble(benchmark::State& state, std::size_t bytes, Pixels pixels, bool cube) {
    const bench::Sample sample = bench::make_sample(pixels, bytes, cube, true);
    beside_memcpy(state, sample, bytes, [](Place& place) {
        if (!place.image.compute_full_buffer(place.buffer.data(), place.buffer.size(), -1)) std::abort();
    });
}

// What copying in pieces costs by itself: bare memcpy calls for the sizes of the same levels.
void copy_pieces(benchmark::State& state, std::size_t bytes, Pixels pixels, bool cube) {
    const bench::Sample sample = bench::make_sample(pixels, bytes, cube, true);
    beside_memcpy(state, sample, bytes, [&](Place& place) {
        const std::size_t levels = sample.level_sizes.size() / (cube ? 6 : 1);
        char* to = place.buffer.data();
        for (std::size_t i = 0; i < sample.level_sizes.size(); ++i) {
            const vDDSTexture& face = place.image[static_cast<int>(i / levels)];
            const char* const from =
                i % levels == 0 ? face : face.get_mipmap(static_cast<int>(i % levels) - 1);
            std::memcpy(to, from, sample.level_sizes[i]);
            to += sample.level_sizes[i];
        }
    });
}

const bool registered = [] {
    for (const unsigned megabytes : {1U, 64U, 256U}) {
        bench::add("compute_full_buffer/BC1_2D_mips", megabytes, assemble, Pixels::kBC1, false);
        bench::add("compute_full_buffer/BC1_cube_mips", megabytes, assemble, Pixels::kBC1, true);
        bench::add("compute_full_buffer/RGBA8_2D_mips", megabytes, assemble, Pixels::kRGBA8, false);
    }
    bench::add("memcpy_of_pieces/BC1_cube_mips", 1, copy_pieces, Pixels::kBC1, true);
    return true;
}();

}  // namespace
