// SPDX-License-Identifier: Apache-2.0
// Decoding pixels, beside memcpy of the decoded bytes.
#include <cstdint>
#include <cstring>
#include <string>
#include <vTexturePixels.h>
#include <vector>

#include "paired.h"

namespace {

using Element = vTexturePixels::EElement;

struct Kind {
    const char* format;
    Element element;
    const char* name;  // of the element
};

constexpr Kind kKinds[] = {
    {"B8G8R8A8_UNORM", vTexturePixels::eRGBA8, "RGBA8"},
    {"B8G8R8_UNORM", vTexturePixels::eRGBA8, "RGBA8"},
    {"L8_UNORM", vTexturePixels::eRGBA8, "RGBA8"},
    {"B5G6R5_UNORM", vTexturePixels::eRGBA8, "RGBA8"},
    {"R8G8B8A8_SNORM", vTexturePixels::eRGBA8, "RGBA8"},
    {"R10G10B10A2_UNORM", vTexturePixels::eRGBA16, "RGBA16"},
    {"R16G16_UNORM", vTexturePixels::eRGBA16, "RGBA16"},
    {"R16G16B16A16_SNORM", vTexturePixels::eRGBA16, "RGBA16"},
    {"R16G16B16A16_FLOAT", vTexturePixels::eRGBA32F, "RGBA32F"},
    {"R11G11B10_FLOAT", vTexturePixels::eRGBA32F, "RGBA32F"},
    {"R9G9B9E5_SHAREDEXP", vTexturePixels::eRGBA32F, "RGBA32F"},
    {"R32_FLOAT", vTexturePixels::eRGBA32F, "RGBA32F"},
    {"R16G16B16A16_FLOAT", vTexturePixels::eRGBA8, "RGBA8"},
};

constexpr std::uint32_t kRow = 1024;  // pixels

void beside_memcpy(benchmark::State& state, std::size_t bytes, const Kind& kind) {
    const vPixelFormat& format = *vTextureFormats::FindName(kind.format);
    const std::uint32_t rows =
        static_cast<std::uint32_t>(bytes / vTexturePixels::PixelBytes(kind.element) / kRow);
    const std::uint64_t pitch = format.RowBytes(kRow);
    const bench::Places turns(bytes);
    const std::vector<std::vector<unsigned char>> sources(turns.count(),
                                                          std::vector<unsigned char>(bytes, 'x'));
    std::vector<std::vector<unsigned char>> results(turns.count(), std::vector<unsigned char>(bytes));
    bench::paired(
        state, bytes,
        [&](std::size_t call) {
            const std::size_t turn = turns.of(call);
            vTexturePixels::Decode(format, sources[turn].data(), pitch, kRow, rows, kind.element,
                                   results[turn].data());
            benchmark::DoNotOptimize(results[turn].data());
        },
        [&](std::size_t call) {
            const std::size_t turn = turns.of(call);
            std::memcpy(results[turn].data(), sources[turn].data(), bytes);
            benchmark::DoNotOptimize(results[turn].data());
        });
}

const bool registered = [] {
    for (const Kind& kind : kKinds) {
        for (const unsigned megabytes : {1U, 64U}) {
            bench::add(std::string("Decode/") + kind.format + "/" + kind.name + "/memcpy", megabytes,
                       beside_memcpy, kind);
        }
    }
    return true;
}();

}  // namespace
