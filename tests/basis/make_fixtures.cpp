// make_basis_fixtures ENCODER FOLDER: makes every fixture as FOLDER/NAME.basis with the encoder, from images
// of its own, and keeps the encoder's own transcoding of each 2D image IIII as FOLDER/NAME_FORMAT_IIII.ktx.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

#include "basis/fixtures.h"

namespace {

using basis_fixtures::Fixture;
namespace fs = std::filesystem;

/// A TGA file: an 18-byte header, then rows of B, G, R, A from the top. Gradients, edges and some noise; the
/// corner's alpha is never opaque, so that the smallest image keeps its alpha too.
void write_image(const fs::path& path, int width, int height, bool alpha, int index) {
    const auto byte = [](int value) { return static_cast<char>(value & 0xFF); };
    std::string tga = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    tga += {byte(width), byte(width >> 8), byte(height), byte(height >> 8), 32, 0x28};
    std::uint32_t noise = 12345u + static_cast<std::uint32_t>(index);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            noise = noise * 1664525u + 1013904223u;
            const int grain = static_cast<int>(noise >> 28);
            const int edge = ((x / 5 + y / 3 + index) & 1) * 90;
            const int opacity = alpha ? (60 + 11 * x + 7 * y + 40 * index) % 255 : 255;
            tga += {byte(x * 3 + grain), byte(y * 5 + edge), byte(200 - x + 20 * index), byte(opacity)};
        }
    }
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
        const int shift = fixture.halving ? i : 0;
        write_image(image, fixture.width >> shift, fixture.height >> shift, fixture.alpha, i);
        inputs += " -file " + in_quotes(image);
    }
    run(in_quotes(encoder) + " -no_multithreading " + fixture.options + inputs + " -output_file " +
            in_quotes(file),
        scratch / "encoder.log");
}

/// The encoder writes dozens of files into the current folder; those of four formats are kept.
void unpack(const Fixture& fixture, const std::string& encoder, const fs::path& file,
            const fs::path& scratch) {
    run("cd " + in_quotes(scratch) + " && " + in_quotes(encoder) + " -unpack -file " + in_quotes(file),
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
            if (basis_fixtures::is_2d(fixture)) unpack(fixture, encoder, file, scratch);
            fs::remove_all(scratch);
        }
    } catch (const std::exception& error) {
        std::cerr << "make_basis_fixtures: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
