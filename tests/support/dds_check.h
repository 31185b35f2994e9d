// SPDX-License-Identifier: Apache-2.0
// Loads generated files from memory and compares the result with the plain model.
#ifndef TESTS_SUPPORT_DDS_CHECK_H
#define TESTS_SUPPORT_DDS_CHECK_H

#include <gtest/gtest.h>
#include <string>

#include "support/dds_file.h"
#include "support/plain_model.h"
#include "vDDSImage.h"

namespace support {

enum class Flip { no, yes };
enum class Read { all, header_only };

/// The headers and exactly the pixel data that they promise, pseudo-random.
Bytes complete_file(const FileHeader& header, std::uint32_t seed = 1);

/// Loads from a heap block of exactly the file's size, which is gone when this returns.
bool load(vDDSImage& image, const Bytes& file, Flip flip = Flip::no, Read read = Read::all);

/// The image in a file that is expected to load.
vDDSImage loaded(const Bytes& file, Flip flip = Flip::no, Read read = Read::all);

/// The bytes of a surface that has pixels.
Bytes pixels_of(const vDDSSurface& surface);

/// A surface with pseudo-random pixels.
vDDSSurface filled_surface(int width, int height, int depth, std::size_t size, std::uint32_t seed);

/// A texture with pseudo-random pixels and mip levels of the given sizes in bytes.
vDDSTexture filled_texture(std::size_t base_size, const std::vector<std::size_t>& mip_sizes,
                           std::uint32_t seed);

/// Whether format, flags, faces, extents and pixels agree.
testing::AssertionResult same(const vDDSImage& image, const plain::Image& expected);
testing::AssertionResult same_face(const vDDSTexture& texture, const plain::Face& expected);
testing::AssertionResult same_bytes(const Bytes& bytes, const Bytes& expected);

/// Whether the image is as after construction, apart from the flags that a header sets early.
testing::AssertionResult cleared(const vDDSImage& image, bool cubemap = false, bool volume = false);

/// Loads the file and compares image, result and log messages with the plain model.
testing::AssertionResult loads_as_modelled(const Bytes& file, Flip flip, Read read);

/// The header's fields that matter, for traces.
std::string describe(const FileHeader& header);

}  // namespace support

#endif
