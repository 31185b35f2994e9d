// SPDX-License-Identifier: Apache-2.0
// vTextureCheck, then vBasisImage, on any bytes: holds them in a block of exactly their size, asks for
// everything, and for every level of the first slices in one usage, which is drawn from the bytes. What the
// check passes, the loader takes, and its levels have just the bytes foretold.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <numeric>
#include <set>
#include <vBasisImage.h>
#include <vTextureCheck.h>

#include "fuzz_input.h"

namespace {

// A failed transcode leaves its buffer behind, and a failed allocation its transcoder: blocks taken while an
// input runs are released after it (what such a transcoder took by malloc stays: leaks are not looked for).
// Large ones are refused, so that neither memory nor time bounds a run.
constexpr std::size_t kLargestBlock = std::size_t{1} << 20;
thread_local bool recording = false;

std::set<void*>& recorded() {
    static std::set<void*>* const blocks = new std::set<void*>();
    return *blocks;
}

void* take(std::size_t size) {
    if (recording && size > kLargestBlock) throw std::bad_alloc();
    void* const block = std::malloc(size > 0 ? size : 1);
    if (!block) throw std::bad_alloc();
    if (recording) {
        recording = false;
        recorded().insert(block);
        recording = true;
    }
    return block;
}

void give_back(void* block) {
    if (recording) {
        recording = false;
        recorded().erase(block);
        recording = true;
    }
    std::free(block);
}

void release_what_is_left() {
    for (void* const block : recorded()) std::free(block);
    recorded().clear();
}

// The check foretells blocks of 16 bytes; these two usages have blocks of 8.
std::uint64_t bytes_foretold(unsigned int bytes, TOZ::EUsageFormat usage) {
    const bool half = usage == TOZ::eUsageFormatBC1 || usage == TOZ::eUsageFormatBC4;
    return std::uint64_t{bytes} * (half ? 2 : 1);
}

void ask_for_everything(const std::uint8_t* data, std::size_t size) {
    auto* const held = new unsigned char[size];
    if (size > 0) std::memcpy(held, data, size);
    TOZ::vBasisImage image;
    image.setBasisFileRawData(held, static_cast<unsigned int>(size));
    const vTextureCheck::Result check = vTextureCheck::CheckBasisBuffer(held, size);
    require(check.ok() == check.sentence.empty(), "a refusal has a reason");
    const bool taken = image.isValidHeader() && image.getNumMipLevels() > 0;
    require(!check.ok() || taken, "what passes is loaded");
    const unsigned int drawn = std::accumulate(data, data + size, 0u);
    const auto usage = static_cast<TOZ::EUsageFormat>(TOZ::eUsageFormatBC1 + drawn % 5);
    const auto slices = static_cast<unsigned int>(std::clamp(image.getNumSlices(), 0, 3));
    const auto levels = static_cast<unsigned int>(std::clamp(image.getNumMipLevels(), 0, 17));
    std::uint64_t got_bytes = 0;
    unsigned int got_levels = 0;
    for (unsigned int slice = 0; slice <= slices; ++slice) {
        for (unsigned int level = 0; level <= levels; ++level) {
            unsigned char* blocks = nullptr;
            unsigned int bytes = 0;
            if (!image.getImage(level, slice, blocks, bytes, usage)) continue;
            delete[] blocks;
            got_bytes += bytes_foretold(bytes, usage);
            ++got_levels;
        }
    }
    if (!check.ok()) return;
    require(got_bytes <= check.totalBytes, "levels have no more bytes than foretold");
    const bool all = image.getNumSlices() == 1 && got_levels == levels;
    require(!all || got_bytes == check.totalBytes, "all levels have the bytes foretold");
}

}  // namespace

void* operator new(std::size_t size) { return take(size); }
void* operator new[](std::size_t size) { return take(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return std::malloc(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return std::malloc(size); }
void operator delete(void* block) noexcept { give_back(block); }
void operator delete(void* block, std::size_t) noexcept { give_back(block); }
void operator delete[](void* block) noexcept { give_back(block); }
void operator delete[](void* block, std::size_t) noexcept { give_back(block); }

extern "C" const char* __asan_default_options() { return "detect_leaks=0:allocator_may_return_null=1"; }

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    recording = true;
    try {
        ask_for_everything(data, size);
    } catch (const std::bad_alloc&) {
    }
    recording = false;
    release_what_is_left();
    return 0;
}
