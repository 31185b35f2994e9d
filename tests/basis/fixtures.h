// SPDX-License-Identifier: Apache-2.0
// The .basis files that the build makes for the tests: make_fixtures.cpp makes them, fixture_files.h reads
// them.
#ifndef TESTS_BASIS_FIXTURES_H
#define TESTS_BASIS_FIXTURES_H

#include <string_view>

namespace basis_fixtures {

struct Fixture {
    const char* name;
    int width;  // of the first image
    int height;
    int images;
    bool alpha;
    const char* options;   // of the encoder
    bool halving = false;  // each further image is half as wide and high as the one before
};

constexpr Fixture kFixtures[] = {
    {"etc1s_1x1", 1, 1, 1, false, ""},
    {"etc1s_4x4", 4, 4, 1, false, ""},
    {"etc1s_5x3", 5, 3, 1, false, "-linear"},
    {"etc1s_30x10", 30, 10, 1, false, ""},
    {"etc1s_64x64", 64, 64, 1, false, "-q 255"},
    {"etc1s_257x129", 257, 129, 1, false, ""},
    {"etc1s_1x37", 1, 37, 1, false, ""},
    {"etc1s_alpha_1x1", 1, 1, 1, true, ""},
    {"etc1s_alpha_5x3", 5, 3, 1, true, ""},
    {"etc1s_alpha_30x10", 30, 10, 1, true, ""},
    {"etc1s_alpha_64x64", 64, 64, 1, true, ""},
    {"etc1s_alpha_257x129", 257, 129, 1, true, ""},
    {"etc1s_alpha_37x1", 37, 1, 1, true, ""},
    {"etc1s_y_flip", 9, 14, 1, true, "-y_flip"},
    {"etc1s_mips", 61, 18, 1, false, "-mipmap"},
    {"etc1s_alpha_mips", 37, 64, 1, true, "-mipmap"},
    {"etc1s_array", 20, 12, 3, false, "-tex_type 2darray"},
    {"etc1s_array_mips", 30, 10, 3, false, "-tex_type 2darray -mipmap"},
    {"etc1s_alpha_array_mips", 30, 10, 3, true, "-tex_type 2darray -mipmap"},
    {"etc1s_different_sizes", 40, 24, 3, false, "-tex_array -mipmap", true},
    {"etc1s_alpha_different_sizes", 40, 24, 3, true, "-tex_array -mipmap", true},
    {"etc1s_cube_map", 8, 8, 6, false, "-tex_type cubemap"},
    {"etc1s_alpha_cube_map_mips", 8, 8, 12, true, "-tex_type cubemap -mipmap"},
    {"etc1s_video", 32, 20, 4, false, "-tex_type video"},
    {"etc1s_volume", 9, 7, 5, false, "-tex_type 3d"},
    {"uastc_1x1", 1, 1, 1, false, "-uastc -uastc_level 0"},
    {"uastc_4x4", 4, 4, 1, false, "-uastc -uastc_level 0"},
    {"uastc_5x3", 5, 3, 1, false, "-uastc -uastc_level 0"},
    {"uastc_30x10", 30, 10, 1, false, "-uastc -uastc_level 0"},
    {"uastc_257x129", 257, 129, 1, false, "-uastc -uastc_level 0"},
    {"uastc_1x37", 1, 37, 1, false, "-uastc -uastc_level 0"},
    {"uastc_alpha_1x1", 1, 1, 1, true, "-uastc -uastc_level 0"},
    {"uastc_alpha_5x3", 5, 3, 1, true, "-uastc -uastc_level 0"},
    {"uastc_alpha_30x10", 30, 10, 1, true, "-uastc -uastc_level 0"},
    {"uastc_alpha_64x64", 64, 64, 1, true, "-uastc -uastc_level 2"},
    {"uastc_alpha_257x129", 257, 129, 1, true, "-uastc -uastc_level 0"},
    {"uastc_y_flip", 9, 14, 1, true, "-uastc -uastc_level 0 -y_flip"},
    {"uastc_mips", 61, 18, 1, false, "-uastc -uastc_level 0 -mipmap"},
    {"uastc_alpha_mips", 37, 64, 1, true, "-uastc -uastc_level 0 -mipmap"},
    {"uastc_array_mips", 30, 10, 3, false, "-uastc -uastc_level 0 -tex_type 2darray -mipmap"},
    {"uastc_alpha_array", 20, 12, 3, true, "-uastc -uastc_level 0 -tex_type 2darray"},
    {"uastc_alpha_different_sizes", 40, 24, 3, true, "-uastc -uastc_level 0 -tex_array -mipmap", true},
    {"uastc_cube_map", 8, 8, 6, false, "-uastc -uastc_level 0 -tex_type cubemap -mipmap"},
    {"uastc_video", 12, 8, 3, false, "-uastc -uastc_level 0 -tex_type video"},
    {"uastc_alpha_volume", 9, 7, 5, true, "-uastc -uastc_level 0 -tex_type 3d"},
    {"astc_ldr_4x4", 13, 9, 1, false, "-ldr_4x4"},
    {"astc_ldr_alpha_mips", 21, 16, 1, true, "-ldr_4x4 -mipmap"},
    {"astc_ldr_6x6", 13, 9, 1, false, "-ldr_6x6"},
    {"astc_hdr_6x6", 13, 9, 1, false, "-hdr_6x6"},
    {"uastc_hdr_4x4", 13, 9, 1, false, "-hdr_4x4"},
    {"uastc_hdr_6x6i", 13, 9, 1, false, "-hdr_6x6i"},
    {"xuastc_4x4", 13, 9, 1, false, "-ldr_4x4i -xuastc_arith"},
    {"xuastc_4x4_zstd", 13, 9, 1, false, "-ldr_4x4i -xuastc_zstd"},
    {"xuastc_alpha_dct", 12, 8, 1, true, "-ldr_4x4i -xuastc_arith -quality 50"},
    {"xuastc_alpha_array_mips", 12, 8, 2, true, "-ldr_4x4i -xuastc_arith -tex_type 2darray -mipmap"},
    {"xuastc_6x6_alpha", 13, 9, 1, true, "-ldr_6x6i -xuastc_arith"},
    {"xuastc_12x12", 13, 9, 1, false, "-ldr_12x12i -xuastc_arith"},
};

constexpr bool has_option(const Fixture& fixture, std::string_view part) {
    return std::string_view(fixture.options).find(part) != std::string_view::npos;
}

/// Whether the file holds 2D images, which are what is loaded.
constexpr bool is_2d(const Fixture& fixture) {
    return !has_option(fixture, "cubemap") && !has_option(fixture, "video") && !has_option(fixture, "3d");
}

/// Whether it is transcoded too: its pixels are not HDR, its blocks are of 4 x 4, and Zstandard has not
/// packed it.
constexpr bool is_transcoded(const Fixture& fixture) {
    return is_2d(fixture) && !has_option(fixture, "-hdr") && !has_option(fixture, "6x6") &&
           !has_option(fixture, "12x12") && !has_option(fixture, "zstd");
}

/// What the encoder's own transcoding calls the formats that are compared with.
constexpr const char* kUnpackedFormats[] = {"BC1_RGB", "BC3_RGBA", "BC4_R", "BC5_RG"};

}  // namespace basis_fixtures

#endif
