// The pixel converters, beside memcpy of the result's size and beside libyuv's nearest row converter; and
// the size queries. Each side takes the memory for its result anew.
#include <climits>
#include <cstdint>
#include <cstring>
#include <libyuv/convert_argb.h>
#include <memory>
#include <string>
#include <vTextureUtils.h>
#include <vector>

#include "paired.h"

namespace {

using Source = std::vector<unsigned char>;
using Sources = std::vector<Source>;
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

// A result of `bytes` bytes in rows of 1024 pixels.
constexpr std::size_t kRow = 1024;

void beside_memcpy(benchmark::State& state, std::size_t bytes, const Kind& kind) {
    const std::size_t pixels = bytes / kind.new_size;
    const bench::Places turns(bytes);
    const Sources sources(turns.count(), Source(pixels * kind.new_size, 'x'));
    bench::paired(
        state, bytes,
        [&](std::size_t call) {
            const Buffer to(kind.convert(sources[turns.of(call)].data(), pixels * kind.old_size));
            benchmark::DoNotOptimize(to.get());
        },
        [&](std::size_t call) {
            const Buffer to(new unsigned char[bytes]);
            std::memcpy(to.get(), sources[turns.of(call)].data(), bytes);
            benchmark::DoNotOptimize(to.get());
        });
}

void beside_libyuv(benchmark::State& state, std::size_t bytes, const Kind& kind) {
    const std::size_t pixels = bytes / kind.new_size;
    const bench::Places turns(bytes);
    const Sources sources(turns.count(), Source(pixels * kind.old_size, 'x'));
    bench::paired(
        state, bytes,
        [&](std::size_t call) {
            const Buffer to(kind.convert(sources[turns.of(call)].data(), pixels * kind.old_size));
            benchmark::DoNotOptimize(to.get());
        },
        [&](std::size_t call) {
            const Buffer to(new unsigned char[bytes]);
            kind.yuv(sources[turns.of(call)].data(), static_cast<int>(kRow * kind.old_size), to.get(),
                     static_cast<int>(kRow * 4), static_cast<int>(kRow), static_cast<int>(pixels / kRow));
            benchmark::DoNotOptimize(to.get());
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

void size_of_compressed_level(benchmark::State& state) {
    unsigned int extent = 1000;
    for (auto _ : state) {
        benchmark::DoNotOptimize(extent);
        benchmark::DoNotOptimize(
            vTextureUtils::ComputeImageSizeInBytes(extent, extent, 1, 2, vTextureFormat::FORMAT_51));
    }
}
BENCHMARK(size_of_compressed_level);

void size_of_uncompressed_level(benchmark::State& state) {
    unsigned int extent = 1000;
    for (auto _ : state) {
        benchmark::DoNotOptimize(extent);
        benchmark::DoNotOptimize(
            vTextureUtils::ComputeImageSizeInBytes(extent, extent, 1, 2, vTextureFormat::FORMAT_48));
    }
}
BENCHMARK(size_of_uncompressed_level);

}  // namespace
