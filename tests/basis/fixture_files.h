// SPDX-License-Identifier: Apache-2.0
// Where the tests' .basis files are: those made by the build, and the transcoder's own samples.
#ifndef TESTS_BASIS_FIXTURE_FILES_H
#define TESTS_BASIS_FIXTURE_FILES_H

#include <ostream>
#include <string>

#include "basis/fixtures.h"
#include "support/bytes.h"

namespace basis_fixtures {

/// The path of a made file: "etc1s_4x4.basis", say.
std::string made_path(const std::string& file_name);

/// The bytes of the fixture `name`.
support::Bytes made(const std::string& name);

/// The transcoder's samples, by their paths below its folder webgl.
constexpr const char* kSamples[] = {
    "gltf/assets/kodim26_uastc.basis",
    "gltf/assets/textureAtlasImage.basis",
    "texture_test/assets/alpha3.basis",
    "texture_test/assets/base.basis",
    "texture_test/assets/desk.basis",
    "texture_test/assets/desk_6x6.basis",
    "texture_test/assets/desk_6x6i.basis",
    "texture_test/assets/kodim01_mipmapped.basis",
    "texture_test/assets/kodim03.basis",
    "texture_test/assets/kodim03_uastc.basis",
    "texture_test/assets/kodim18_uastc.basis",
    "texture_test/assets/kodim20.basis",
    "texture_test/assets/kodim20_1024x1024.basis",
    "texture_test/assets/kodim23_hdr.basis",
    "texture_test/assets/kodim26_uastc_1024.basis",
    "video_test/6.1.01.basis",
};

/// The bytes of a file that the fuzzers start from.
support::Bytes seed(const std::string& name);

/// Whether the transcoder's source came with its samples.
bool have_samples();
support::Bytes sample(const std::string& path);

/// The name of a parameterised test: what is a letter, a digit or '_' stays.
std::string test_name(std::string text);

inline void PrintTo(const Fixture& fixture, std::ostream* out) { *out << fixture.name; }

}  // namespace basis_fixtures

#endif
