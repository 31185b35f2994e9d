// SPDX-License-Identifier: Apache-2.0
// make_basis_fixtures ENCODER FOLDER: makes every fixture as FOLDER/NAME.basis with the encoder, from images
// of its own, and keeps its transcoding of each 2D image IIII as FOLDER/NAME_FORMAT_IIII.ktx.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

#include "basis/fixture_picture.h"
#include "basis/fixtures.h"

namespace {

using basis_fixtures::Fixture;
namespace fs = std::filesystem;

/// A TGA file: an 18-byte header, then rows of B, G, R, A from the top.
void write_image(const fs::path& path, const basis_fixtures::Picture& picture) {
    const auto byte = [](int value) { return static_cast<char>(value & 0xFF); };
    const int width = picture.width;
    const int height = picture.height;
    std::string tga = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    tga += {byte(width), byte(width >> 8), byte(height), byte(height >> 8), 32, 0x28};
    for (const basis_fixtures::Pixel& pixel : picture.pixels)
        tga += {byte(pixel.blue), byte(pixel.green), byte(pixel.red), byte(pixel.alpha)};
    std::ofstream(path, std::ios::binary) << tga;
}

std::string in_quotes(const fs::path& path) {
    std::string text = "\"";
    text += path.string();
    text += '"';
    return text;
}

void run(const std::string& command, const fs::path& log) {
    if (std::system((command + " >" + in_quotes(log) + " 2>&1").c_str()) == 0) return;
    std::cerr << std::ifstream(log).rdbuf();
    throw std::runtime_error("failed: " + command);
}

void encode(const Fixture& fixture, const std::string& encoder, const fs::path& file,
            const fs::path& scratch) {
    std::string inputs;
    for (int i = 0; i < fixture.images; ++i) {
        const fs::path image = scratch / ("image" + std::to_string(i) + ".tga");
        write_image(image, picture_of(fixture, i));
        inputs += " -file " + in_quotes(image);
    }
    run(in_quotes(encoder) + " -basis -no_multithreading " + fixture.options + inputs + " -output_file " +
            in_quotes(file),
        scratch / "encoder.log");
}

/// The encoder writes dozens of files into the current folder; those of four formats are kept.
void unpack(const Fixture& fixture, const std::string& encoder, const fs::path& file,
            const fs::path& scratch) {
    run("cd " + in_quotes(scratch) + " && " + in_quotes(encoder) + " -unpack -ktx_only -file " +
            in_quotes(file),
        scratch / "encoder.log");
    for (int i = 0; i < fixture.images; ++i) {
        for (const std::string format : basis_fixtures::kUnpackedFormats) {
            char number[32];
            std::snprintf(number, sizeof number, "_%04d.ktx", i);
            fs::copy_file(scratch / (std::string(fixture.name) + "_transcoded_" + format + number),
                          file.parent_path() / (std::string(fixture.name) + "_" + format + number),
                          fs::copy_options::overwrite_existing);
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return EXIT_FAILURE;
    try {
        const std::string encoder = argv[1];
        const fs::path folder = fs::absolute(argv[2]);
        for (const Fixture& fixture : basis_fixtures::kFixtures) {
            const fs::path scratch = folder / "scratch";
            fs::remove_all(scratch);
            fs::create_directories(scratch);
            const fs::path file = folder / (std::string(fixture.name) + ".basis");
            encode(fixture, encoder, file, scratch);
            if (basis_fixtures::is_transcoded(fixture)) unpack(fixture, encoder, file, scratch);
            fs::remove_all(scratch);
        }
    } catch (const std::exception& error) {
        std::cerr << "make_basis_fixtures: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
