// SPDX-License-Identifier: Apache-2.0
// vTextureCheck, then vDDSImage: the loader takes what the check passes, with exactly the bytes foretold.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vDDSImage.h>
#include <vTextureCheck.h>

#include "fuzz_input.h"

namespace {

std::uint64_t bytes_of(const vDDSImage& image) {
    std::uint64_t bytes = 0;
    for (int face = 0; face < (image.is_cubemap() ? 6 : 1); ++face) {
        bytes += image[face].get_size();
        for (int i = 0; i < image[face].get_num_mipmaps(); ++i) bytes += image[face].get_mipmap(i).get_size();
    }
    return bytes;
}

void load(const unsigned char* data, std::size_t size, const vTextureCheck::Result& check) {
    for (const bool flip : {false, true}) {
        vDDSImage image;
        require(image.loadFromBuffer(data, static_cast<int>(size), flip, false), "what passes is loaded");
        require(bytes_of(image) == check.totalBytes, "a load takes the bytes foretold");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // A block of exactly the file's size: a sanitizer sees a read beyond it.
    const std::unique_ptr<unsigned char[]> file(new unsigned char[size]);
    if (size > 0) std::memcpy(file.get(), data, size);
    const vTextureCheck::Result check = vTextureCheck::CheckDDSBuffer(file.get(), size);
    require(check.ok() == check.sentence.empty(), "a refusal has a reason");
    if (check.ok()) load(file.get(), size, check);
    return 0;
}
