// SPDX-License-Identifier: Apache-2.0
// The pixel converters, beside memcpy of the result's size and beside libyuv's nearest row converter; and
// the size queries. Each side takes the memory for its result anew.
#include <cstdint>
#include <cstring>
#include <libyuv/convert_argb.h>
#include <memory>
#include <string>
#include <vTextureUtils.h>
#include <vector>

#include "paired.h"

namespace {

using Buffer = std::unique_ptr<unsigned char[]>;
using Convert = unsigned char* (*)(const unsigned char*, std::uint64_t);

// libyuv names the bytes of a pixel from the highest: its ARGB is blue, green, red, alpha in memory.
using YuvConvert = int (*)(const std::uint8_t*, int, std::uint8_t*, int, int, int);

struct Kind {
    const char* name;
    Convert convert;
    std::size_t old_size;  // bytes of a pixel
    std::size_t new_size;
    YuvConvert yuv;  // null where libyuv has nothing near
};

const Kind kKinds[] = {
    {"ConvertRGB8ToRGBA8", vTextureUtils::ConvertRGB8ToRGBA8, 3, 4, libyuv::RGB24ToARGB},
    {"ConvertBGR8ToRGBA8", vTextureUtils::ConvertBGR8ToRGBA8, 3, 4, libyuv::RAWToARGB},
    {"ConvertBGRA8ToRGBA8", vTextureUtils::ConvertBGRA8ToRGBA8, 4, 4, libyuv::ABGRToARGB},
    {"ConvertRGB32FToRGBA32F", vTextureUtils::ConvertRGB32FToRGBA32F, 12, 16, nullptr},
};

// Pixels in a row for libyuv.
constexpr std::size_t kRow = 1024;

// Measures the converter beside `limit`, which fills a result of `bytes` bytes from the same source.
template <class Limit>
void beside(benchmark::State& state, std::size_t bytes, const Kind& kind, Limit limit) {
    const std::size_t pixels = bytes / kind.new_size;
    const bench::Places turns(bytes);
    const std::vector<std::vector<unsigned char>> sources(turns.count(),
                                                          std::vector<unsigned char>(bytes, 'x'));
    bench::paired(
        state, bytes,
        [&](std::size_t call) {
            const Buffer to(kind.convert(sources[turns.of(call)].data(), pixels * kind.old_size));
            benchmark::DoNotOptimize(to.get());
        },
        [&](std::size_t call) {
            const Buffer to(new unsigned char[bytes]);
            limit(sources[turns.of(call)].data(), to.get());
            benchmark::DoNotOptimize(to.get());
        });
}

void beside_memcpy(benchmark::State& state, std::size_t bytes, const Kind& kind) {
    beside(state, bytes, kind,
           [&](const unsigned char* from, unsigned char* to) { std::memcpy(to, from, bytes); });
}

void beside_libyuv(benchmark::State& state, std::size_t bytes, const Kind& kind) {
    const auto rows = static_cast<int>(bytes / kind.new_size / kRow);
    beside(state, bytes, kind, [&](const unsigned char* from, unsigned char* to) {
        kind.yuv(from, static_cast<int>(kRow * kind.old_size), to, static_cast<int>(kRow * kind.new_size),
                 static_cast<int>(kRow), rows);
    });
}

const bool registered = [] {
    for (const Kind& kind : kKinds) {
        for (const unsigned megabytes : {1U, 256U}) {
            bench::add(kind.name + std::string("/memcpy"), megabytes, beside_memcpy, kind);
            if (kind.yuv == nullptr) continue;
            bench::add(kind.name + std::string("/libyuv"), megabytes, beside_libyuv, kind);
        }
    }
    return true;
}();

void size_of_level(benchmark::State& state, vTextureFormat::Type format) {
    unsigned int extent = 1000;
    for (auto _ : state) {
        benchmark::DoNotOptimize(extent);
        benchmark::DoNotOptimize(vTextureUtils::ComputeImageSizeInBytes(extent, extent, 1, 2, format));
    }
}
BENCHMARK_CAPTURE(size_of_level, compressed, vTextureFormat::FORMAT_51);
BENCHMARK_CAPTURE(size_of_level, uncompressed, vTextureFormat::FORMAT_48);

}  // namespace
