// SPDX-License-Identifier: Apache-2.0
// pelto library, run as a user runs it.
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>

#include "support/command.h"
#include "support/dds_file.h"
#include "support/png_picture.h"
#include "support/temporary_folder.h"

namespace {

using namespace support;
using nlohmann::json;

constexpr const char* kLibrary = PELTO_SAMPLES "/library/library.xml";

std::string sample(const std::string& name) { return std::string(PELTO_SAMPLES "/textures/").append(name); }

std::string bytes_of(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// A texture element; `more` follows its file. It is 2D, unless `more` says what it is.
std::string texture(const std::string& name, const std::string& file, const std::string& more = "") {
    std::string text = "<texture name='" + name + "'><file>" + file + "</file>";
    if (more.find("<kind>") == std::string::npos) text += "<kind>2d</kind>";
    return text.append(more).append("</texture>\n");
}

// What the name of a sample says.
std::string kind_of(const std::string& name) {
    if (name.find("cube") != std::string::npos) return "<kind>cube</kind>";
    return name.find("volume") != std::string::npos ? "<kind>volume</kind>" : "<kind>2d</kind>";
}

class Library : public testing::Test {
protected:
    // The textures begin at line 2.
    std::string document(const std::string& textures) const {
        std::string text = "<library xmlns='urn:pelto:texture-library'><material name='m'>\n" + textures;
        return folder_.write("library.xml", text.append("</material></library>\n"));
    }

    // Line 2 names one texture, which has this problem.
    void expect_problem(const std::string& the_texture, const std::string& problem) const {
        const std::string path = document(the_texture);
        const CommandResult result = run_pelto({"library", path});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.err.rfind(path + ":2:", 0), 0U) << result.err;
        EXPECT_NE(result.err.find(": error: " + problem + "\n"), std::string::npos) << result.err;
        EXPECT_NE(result.out.find("1 failed"), std::string::npos) << result.out;
    }

    const TemporaryFolder folder_;
};

// 8 bytes a block of BC1 and BC4, 16 of the others; the mip chain of 128 x 64 is 32 x 16 blocks, 16 x 8, 8 x
// 4, 4 x 2, 2 x 1 and three times one: 512 + 128 + 32 + 8 + 2 + 3 = 685 blocks.
TEST_F(Library, ShowsTheSampleLibrary) {
    const CommandResult result = run_pelto({"library", kLibrary});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(
        result.out,
        R"(name             file                             format                width x height x depth  faces  levels  bytes  check
wall/colour      ../textures/bc1_mips.dds         DXT1                            128 x 64 x 1      1       8   5480  ok
wall/height      ../textures/bc4.dds              BC4U                             64 x 64 x 1      1       1   2048  ok
wall/normal      ../textures/bc5_signed_dx10.dds  BC5S                             64 x 64 x 1      1       1   4096  ok
sky/environment  ../textures/cube_bc1_mips.dds    DXT1                             32 x 32 x 1      6       6   4176  ok
sky/sun          ../textures/bc6h.dds             BC6H_UF16                        64 x 64 x 1      1       7   5488  ok
poster/print     ../textures/etc1s_mips.basis     ETC1S as bc1                     96 x 64 x 1      1       7   4112  ok
poster/sticker   ../textures/uastc_alpha.basis    UASTC LDR 4x4 as bc3             61 x 45 x 1      1       1   3072  ok
smoke/density    ../textures/volume_bgra8.dds     RGBA8                            16 x 16 x 4      1       1   4096  ok
8 textures, 32568 bytes, 0 failed
)");
}

TEST_F(Library, TakesEveryFormatOfTheSamples) {
    std::string textures;
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(PELTO_SAMPLES "/textures")) {
        const std::string name = entry.path().stem().string();
        textures += texture(name, entry.path().string(), kind_of(name));
        ++count;
    }
    const CommandResult result = run_pelto({"library", document(textures), "--json"});
    EXPECT_EQ(result.status, 0) << result.err;
    const json object = json::parse(result.out);
    ASSERT_EQ(object["textures"].size(), count);
    for (const json& entry : object["textures"]) EXPECT_FALSE(entry.contains("error")) << entry;
}

TEST_F(Library, PrintsTypedValuesAsJson) {
    const CommandResult result = run_pelto({"library", kLibrary, "--json"});
    EXPECT_EQ(result.status, 0);
    const json object = json::parse(result.out);
    EXPECT_EQ(object["bytes"], 32568);
    EXPECT_EQ(object["problems"], json::array());
    const json& wall = object["textures"].at(0);
    EXPECT_EQ(wall["material"], "wall");
    EXPECT_EQ(wall["name"], "colour");
    EXPECT_EQ(wall["tint"], json::array({1.0F, 0.9F, 0.75F}));
    EXPECT_EQ(wall["levelLimits"], json::array({0, 6}));
    EXPECT_EQ(wall["tags"], json::array({"stone", "indoor"}));
    EXPECT_EQ(wall["width"], 128);
    EXPECT_EQ(wall["levels"], 8);
    EXPECT_EQ(object["textures"].at(5)["format"], "ETC1S as bc1");
}

TEST_F(Library, FindsFilesFromTheDocumentsFolder) {
    std::filesystem::copy_file(sample("bc4.dds"), folder_.path("wall.dds"));
    const CommandResult result = run_pelto({"library", document(texture("a", "wall.dds"))});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.out.find("1 texture, 2048 bytes, 0 failed\n"), std::string::npos) << result.out;
}

TEST_F(Library, SaysWhichFileIsMissing) {
    expect_problem(texture("a", "no.dds"), "no.dds: cannot be opened: No such file or directory");
}

TEST_F(Library, SaysWhichFileIsNoTexture) {
    folder_.write("a.dds", "PNG!");
    expect_problem(texture("a", "a.dds"),
                   "a.dds: is not a DDS, .basis or KTX2 file: it starts with \"PNG!\"");
}

TEST_F(Library, SaysWhichFileIsCutShort) {
    const std::string whole = bytes_of(sample("bc4.dds"));
    folder_.write("a.dds", whole.substr(0, whole.size() - 100));
    expect_problem(texture("a", "a.dds"),
                   "a.dds: is cut short: level 0 ends at byte 2176, the file at byte 2076");
    const CommandResult trusted = run_pelto({"library", "--trust", folder_.path("library.xml")});
    EXPECT_EQ(trusted.status, 1);
    EXPECT_NE(trusted.err.find("a.dds: ends 100 bytes before what its header promises"), std::string::npos);
}

TEST_F(Library, SaysWhichFileIsADamagedBasisFile) {
    std::string damaged = bytes_of(sample("etc1s_mips.basis"));
    damaged[88] = 99;  // blocks across level 0
    folder_.write("a.basis", damaged);
    expect_problem(texture("a", "a.basis"),
                   "a.basis: the blocks of a slice do not fit its extent, says byte 86");
}

TEST_F(Library, HoldsTheKindAgainstTheFile) {
    const std::string flat = sample("bc4.dds");
    expect_problem(texture("a", flat, "<kind>cube</kind>"), flat + ": its kind is 2d, not cube");
    const std::string volume = sample("volume_bgra8.dds");
    expect_problem(texture("a", volume, "<kind>2d</kind>"), volume + ": its kind is volume, not 2d");
}

TEST_F(Library, HoldsTheLevelsAgainstTheFile) {
    const std::string file = sample("bc1_mips.dds");
    expect_problem(texture("a", file, "<levels>0 8</levels>"),
                   file + ": has no levels 0 to 8: the last one is 7");
    expect_problem(texture("a", file, "<levels>3 2</levels>"), file + ": levels 3 to 2 are none");
    const CommandResult whole = run_pelto({"library", document(texture("a", file, "<levels>0 7</levels>"))});
    EXPECT_EQ(whole.status, 0) << whole.err;
}

TEST_F(Library, HoldsTheSliceAgainstTheFile) {
    const std::string file = sample("etc1s_mips.basis");
    expect_problem(texture("a", file, "<slice>1</slice>"), file + ": has no slice 1: the last one is 0");
}

TEST_F(Library, RefusesToFlipABasisFile) {
    const std::string file = sample("etc1s_mips.basis");
    expect_problem(texture("a", file, "<flip>true</flip>"),
                   file + ": is a .basis file, which is not flipped when it is loaded");
}

TEST_F(Library, StillLoadsTheTexturesAfterOneThatFails) {
    const std::string path =
        document(texture("a", "no.dds") + texture("b", sample("bc4.dds")) + texture("c", "nor.dds"));
    const CommandResult result = run_pelto({"library", path});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.out.find("3 textures, 2048 bytes, 2 failed\n"), std::string::npos) << result.out;
    EXPECT_NE(result.err.find(path + ":2:"), std::string::npos) << result.err;
    EXPECT_NE(result.err.find(path + ":4:"), std::string::npos) << result.err;
}

TEST_F(Library, LoadsWhatWasReadBeforeAFatalError) {
    const std::string path = document(texture("a", sample("bc4.dds")) + "</oops>");
    const CommandResult result = run_pelto({"library", path});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.out.find("1 texture, 2048 bytes, 0 failed\n"), std::string::npos) << result.out;
    EXPECT_EQ(result.err.rfind(path + ":3:", 0), 0U) << result.err;
    EXPECT_NE(result.err.find(": fatal error: "), std::string::npos) << result.err;
}

TEST_F(Library, HoldsTheDocumentAgainstItsOwnSchemaWhereTheNamedOneIsNoGood) {
    const std::string schema = folder_.write("bad.xsd", "<xs:schema");
    const std::string path = document(texture("a", sample("bc4.dds")));
    const CommandResult bad = run_pelto({"library", path, "--xsd", schema});
    EXPECT_EQ(bad.status, 1);
    EXPECT_EQ(bad.err.rfind(schema + ":1:", 0), 0U) << bad.err;
    EXPECT_NE(bad.out.find("0 failed"), std::string::npos) << bad.out;
    const CommandResult missing = run_pelto({"library", path, "--xsd", folder_.path("no.xsd")});
    EXPECT_EQ(missing.status, 1);
    EXPECT_NE(missing.err.find("no.xsd"), std::string::npos) << missing.err;
    EXPECT_NE(missing.out.find("0 failed"), std::string::npos) << missing.out;
    document(texture("a", sample("bc4.dds"), "<gloss/>"));
    const CommandResult both = run_pelto({"library", path, "--xsd", schema});
    EXPECT_NE(both.err.find("'gloss'"), std::string::npos) << both.err;
}

TEST_F(Library, SaysThatTheDocumentIsMissing) {
    const std::string path = folder_.path("no.xml");
    const CommandResult result = run_pelto({"library", path});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, path + ": fatal error: cannot be opened: No such file or directory\n");
    EXPECT_EQ(result.out, "");
}

TEST_F(Library, ListsProblemsByLineInJsonToo) {
    const std::string path = document(
        texture("a", "no.dds") + texture("b", sample("bc4.dds"), "<tint>x</tint>") + texture("c", "nor.dds"));
    const CommandResult result = run_pelto({"library", path, "--json"});
    EXPECT_EQ(result.status, 1);
    const json problems = json::parse(result.out)["problems"];
    ASSERT_EQ(problems.size(), 3U);
    EXPECT_EQ(problems[0]["line"], 2);
    EXPECT_EQ(problems[1]["line"], 3);
    EXPECT_EQ(problems[2]["line"], 4);
}

TEST_F(Library, DrawsTheTexturesOnASheetAsTheDocumentHasThem) {
    const auto sheet_of = [&](const std::string& more) {
        const std::string out = folder_.path("sheet.png");
        const std::string path = document(texture("a", sample("bc4.dds"), more));
        const CommandResult result = run_pelto({"library", path, "--sheet", out});
        EXPECT_EQ(result.status, 0) << result.err;
        return read_png(out);
    };
    const PNGPicture upright = sheet_of("<flip>false</flip>");
    const PNGPicture flipped = sheet_of("<flip>true</flip>");
    EXPECT_GE(upright.width, 64U);
    EXPECT_GE(upright.height, 64U);
    EXPECT_EQ(upright.pixels, sheet_of("").pixels);
    EXPECT_EQ(upright.pixels.size(), flipped.pixels.size());
    EXPECT_NE(upright.pixels, flipped.pixels);
}

// The picture of the only card.
Bytes picture_of(const PNGPicture& sheet, std::size_t width, std::size_t height) {
    constexpr std::size_t kLeft = 24 + 16, kTop = 24 + 16 + 46 + 32;
    Bytes pixels;
    for (std::size_t y = kTop; y < kTop + height; ++y) {
        pixels.insert(pixels.end(), sheet.at(kLeft, y), sheet.at(kLeft, y) + 3 * width);
    }
    return pixels;
}

TEST_F(Library, DrawsTheSliceAndTheBlocksThatTheDocumentNames) {
    const std::string file = PELTO_BASIS_FIXTURES "/etc1s_different_sizes.basis";
    const auto sheet_of = [&](const std::string& more) {
        const std::string out = folder_.path("sheet.png");
        const CommandResult result =
            run_pelto({"library", document(texture("a", file, more)), "--sheet", out});
        EXPECT_EQ(result.status, 0) << result.err;
        return read_png(out);
    };
    // Two levels of 20 x 20 pixels and less: one row of one card.
    const PNGPicture colour = sheet_of("<slice>1</slice><usage>bc1</usage>");
    const Bytes pixels = picture_of(colour, 20, 1);
    EXPECT_LT(colour.height, 24U + 16 + 46 + 2 * 32 + 20 + 16 + 24);
    const PNGPicture grey = sheet_of("<slice>1</slice><usage>bc4</usage>");
    const Bytes grey_pixels = picture_of(grey, 20, 1);
    const auto is_grey = [](const Bytes& row) {
        for (std::size_t i = 0; i < row.size(); i += 3) {
            if (row[i] != row[i + 1] || row[i] != row[i + 2]) return false;
        }
        return true;
    };
    EXPECT_FALSE(is_grey(pixels));
    EXPECT_TRUE(is_grey(grey_pixels));
}

TEST_F(Library, DrawsWhatTheLoaderRefusesAllTheSame) {
    const Bytes file = dds_file(dxgi_header(99).sized(4, 4), Bytes(16));
    folder_.write("a.dds", std::string(file.begin(), file.end()));
    const std::string out = folder_.path("sheet.png");
    const CommandResult result = run_pelto({"library", document(texture("a", "a.dds")), "--sheet", out});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("a.dds: is BC7_UNORM_SRGB, which vDDSImage does not take"), std::string::npos)
        << result.err;
    EXPECT_NE(result.out.find("BC7_UNORM_SRGB"), std::string::npos) << result.out;
    EXPECT_GT(read_png(out).width, 200U);
}

TEST_F(Library, DrawsTheSampleLibrary) {
    const std::string out = folder_.path("sheet.png");
    const CommandResult result = run_pelto({"library", kLibrary, "--sheet", out});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    EXPECT_GT(read_png(out).width, 128U);
}

TEST_F(Library, WritesNoSheetWithoutATextureToShow) {
    const std::string out = folder_.path("sheet.png");
    const CommandResult result = run_pelto({"library", document(texture("a", "no.dds")), "--sheet", out});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("there is no texture to show on " + out), std::string::npos) << result.err;
    EXPECT_FALSE(std::filesystem::exists(out));
}

}  // namespace
