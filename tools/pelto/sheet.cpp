// SPDX-License-Identifier: Apache-2.0

#include <CLI/CLI.hpp>
#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "arguments/argument_checks.h"
#include "output/complain.h"
#include "output/output_path.h"
#include "output/print_json.h"
#include "sheet/contact_sheet.h"
#include "subcommands.h"
#include "texture/texture_json.h"
#include "texture/trust.h"

namespace {

constexpr int kMostExposure = 32;

struct Options {
    std::vector<std::string> files;
    std::string output;
    SheetChoice choice;
    double exposure = 0;
    bool json = false;
};

void complain_of(const std::vector<SheetRemark>& remarks) {
    for (const SheetRemark& remark : remarks) complain(remark.path, remark.text);
}

void add_place(nlohmann::ordered_json& object, const Rectangle& place) {
    object["x"] = place.x;
    object["y"] = place.y;
    object["width"] = place.width;
    object["height"] = place.height;
}

nlohmann::ordered_json json_of(const PlacedImage& image) {
    nlohmann::ordered_json object;
    add_path(object, image.path);
    object["layer"] = image.layer;
    object["face"] = image.face;
    object["level"] = image.level;
    object["slice"] = image.slice;
    object["caption"] = image.caption;
    add_place(object, image.place);
    return object;
}

nlohmann::ordered_json json_of(const PlacedCard& card) {
    nlohmann::ordered_json object;
    add_path(object, card.path);
    object["description"] = card.description;
    object["reason"] = card.reason.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(card.reason);
    object["notes"] = json_of(card.notes);
    add_place(object, card.place);
    return object;
}

nlohmann::ordered_json json_of(const SheetReport& report) {
    nlohmann::ordered_json object;
    object["width"] = report.width;
    object["height"] = report.height;
    object["cards"] = nlohmann::ordered_json::array();
    for (const PlacedCard& card : report.cards) object["cards"].push_back(json_of(card));
    object["images"] = nlohmann::ordered_json::array();
    for (const PlacedImage& image : report.images) object["images"].push_back(json_of(image));
    object["errors"] = nlohmann::ordered_json::array();
    for (const SheetRemark& error : report.errors) {
        nlohmann::ordered_json& entry = object["errors"].emplace_back();
        add_path(entry, error.path);
        entry["error"] = error.text;
    }
    return object;
}

void check_output(const Options& options) {
    check_is_no_input(options.output, options.files);
    check_ending(options.output, ".png");
    check_apart_from_json(options.output, options.json);
}

ExitStatus make_sheet(const Options& options) {
    std::vector<SheetEntry> entries;
    for (const std::string& file : options.files) entries.push_back({file, file, options.choice, nullptr});
    const SheetReport report = make_contact_sheet(entries, options.exposure, options.output);
    complain_of(report.warnings);
    complain_of(report.errors);
    if (options.json) print_json(json_of(report));
    return report.errors.empty() ? kExitSuccess : kExitFailure;
}

}  // namespace

void add_sheet(CLI::App& app, ExitStatus& status) {
    const auto options = std::make_shared<Options>();
    CLI::App* const command =
        app.add_subcommand("sheet", "Draw all images of DDS and .basis files into a PNG file");
    command->add_option("FILE", options->files, "DDS and .basis files to show")
        ->required()
        ->option_text("...");
    command
        ->add_option("-o,--output", options->output,
                     "The PNG file to write; it is replaced where it exists. \"-\" is standard output")
        ->required()
        ->option_text("OUT.png REQUIRED");
    command->add_flag("--as-loaded", options->choice.as_loaded,
                      "Show DDS files as vDDSImage loads them, right or wrong");
    command->add_flag("--flip", options->choice.flip, "Show DDS files as vDDSImage loads them upside down");
    command->add_option("--layer", options->choice.layer, "Show one layer of texture arrays alone")
        ->option_text("N")
        ->transform(whole_number(0, UINT32_MAX));
    command->add_option("--face", options->choice.face, "Show one face alone: 0 to 5 of a cube map")
        ->option_text("N")
        ->transform(whole_number(0, UINT32_MAX));
    command->add_option("--level", options->choice.level, "Show one mip level alone: 0 is the largest")
        ->option_text("N")
        ->transform(whole_number(0, UINT32_MAX));
    command
        ->add_option("--exposure", options->exposure,
                     "Brighten BC6H and float formats by this many stops: 1 doubles them")
        ->option_text("STOPS")
        ->check(number(-kMostExposure, kMostExposure));
    add_trust(*command, options->choice.trust);
    command->add_flag("--json", options->json, "Print where on the sheet each image lies, as a JSON object");
    command->footer(
        "Each pixel of an image is a pixel of the sheet. One channel is grey; a colour that is missing is "
        "0.\n"
        "Signed numbers from -1 to 1 are black to white, integers are cut to 0 to 255, light x is\n"
        "x / (1 + x) in sRGB; sRGB and other colours stay as stored. Transparent pixels lie over a\n"
        "checkerboard. A card notes in yellow where vDDSImage loads something else. YUV, depth, typeless,\n"
        "XR bias, palette and ASTC files get a card without a picture.\n"
        "Exit status: 0 every file has a card, 1 one has none, 2 wrong usage.");
    command->callback([options, &status] {
        check_output(*options);
        status = make_sheet(*options);
    });
}
