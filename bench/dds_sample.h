// SPDX-License-Identifier: Apache-2.0
// DDS files of given kind and size, made in memory.
#ifndef BENCH_DDS_SAMPLE_H
#define BENCH_DDS_SAMPLE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace bench {

enum class Pixels { kBC1, kBC2, kBC3, kBC4, kBC5, kRGBA8, kBGRA8, kBGR8 };

struct Sample {
    std::string file;
    std::vector<std::size_t> level_sizes;  // bytes, in file order over all faces
    std::size_t bytes = 0;                 // their sum
};

/// A square texture of about `bytes` bytes: one face or a cube map, with its full mip chain or without.
Sample make_sample(Pixels pixels, std::size_t bytes, bool cube, bool mips);

}  // namespace bench

#endif
