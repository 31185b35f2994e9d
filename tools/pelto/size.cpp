// SPDX-License-Identifier: Apache-2.0

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vTextureUtils.h>
#include <vector>

#include "arguments/argument_checks.h"
#include "output/print_json.h"
#include "output/table.h"
#include "subcommands.h"
#include "texture/format_names.h"

namespace {

struct Options {
    unsigned int width = 0;
    unsigned int height = 0;
    unsigned int depth = 1;
    std::optional<int> format;
    std::optional<int> client_type;
    bool levels = false;
    bool json = false;
};

struct Level {
    unsigned int level;
    TOZ::vTVec3<unsigned int, 0> extent;
    unsigned int bytes;
};

// The full chain down to a single pixel, the depth's levels included.
unsigned int level_count(const Options& options) {
    if (!options.levels) return 1;
    return vTextureUtils::ComputeMipmapNumber(std::max(options.width, options.depth), options.height);
}

unsigned int bytes_of(const Options& options, unsigned int level) {
    const TOZ::vTVec3<unsigned int, 0> extent(options.width, options.height, options.depth);
    if (options.format) {
        const auto format = static_cast<vTextureFormat::Type>(*options.format);
        return vTextureUtils::ComputeImageSizeInBytes(extent, level, format);
    }
    const auto type = static_cast<vTextureClientDataType>(*options.client_type);
    return vTextureUtils::ComputeImageSizeInBytes(extent, level, type);
}

std::vector<Level> levels_of(const Options& options) {
    std::vector<Level> levels;
    for (unsigned int level = 0; level < level_count(options); ++level) {
        const auto extent =
            vTextureUtils::ComputeImageSize(options.width, options.height, options.depth, level);
        levels.push_back({level, extent, bytes_of(options, level)});
    }
    return levels;
}

std::uint64_t total_of(const std::vector<Level>& levels) {
    std::uint64_t total = 0;
    for (const Level& level : levels) total += level.bytes;
    return total;
}

// The library counts in 32 bits and wraps around; a person wants to know.
bool fits_32_bits(const Options& options) {
    const bool compressed =
        options.format && vTextureUtils::IsCompressed(static_cast<vTextureFormat::Type>(*options.format));
    Options unit = options;
    unit.width = unit.height = unit.depth = 1;
    const std::uint64_t limit = UINT32_MAX / bytes_of(unit, 0);
    const auto units = [&](unsigned int extent) { return compressed ? (extent - 1) / 4 + 1 : extent; };
    const std::uint64_t area = std::uint64_t{units(options.width)} * units(options.height);
    return area <= limit && (compressed || area * options.depth <= limit);
}

void print_levels(const std::vector<Level>& levels) {
    std::vector<std::vector<std::string>> rows;
    for (const Level& level : levels) {
        rows.push_back({std::to_string(level.level),
                        extent_text(level.extent[0], level.extent[1], level.extent[2]),
                        std::to_string(level.bytes)});
    }
    if (levels.size() > 1) rows.push_back({"all", "", std::to_string(total_of(levels))});
    print_table(
        std::cout,
        {{"level", Align::kRight}, {"width x height x depth", Align::kRight}, {"bytes", Align::kRight}},
        rows);
}

nlohmann::ordered_json json_of(const Options& options, const std::vector<Level>& levels) {
    nlohmann::ordered_json object;
    if (options.format) {
        object["format"] = *options.format;
    } else {
        object["clientType"] = *options.client_type;
    }
    object["levels"] = nlohmann::ordered_json::array();
    for (const Level& level : levels) {
        object["levels"].push_back({{"level", level.level},
                                    {"width", level.extent[0]},
                                    {"height", level.extent[1]},
                                    {"depth", level.extent[2]},
                                    {"bytes", level.bytes}});
    }
    object["bytes"] = total_of(levels);
    return object;
}

ExitStatus size(const Options& options) {
    if (!fits_32_bits(options)) {
        std::cerr << "pelto: " << extent_text(options.width, options.height, options.depth)
                  << " pixels take more bytes than a 32-bit number counts\n";
        return kExitFailure;
    }
    const std::vector<Level> levels = levels_of(options);
    if (options.json) {
        print_json(json_of(options, levels));
    } else {
        print_levels(levels);
    }
    return kExitSuccess;
}

// Makes a number of a name.
CLI::Validator name_check(std::optional<int> (*number_of)(const std::string&),
                          std::string (*refusal)(const std::string&)) {
    const auto check = [number_of, refusal](std::string& text) -> std::string {
        const std::optional<int> number = number_of(text);
        if (!number) return refusal(text);
        text = std::to_string(*number);
        return "";
    };
    return {check, ""};
}

void check_choice(const Options& options) {
    if (options.format.has_value() != options.client_type.has_value()) return;
    throw CLI::ValidationError(options.format ? "--format and --client-type exclude each other"
                                              : "--format or --client-type is missing");
}

}  // namespace

void add_size(CLI::App& app, ExitStatus& status) {
    const auto options = std::make_shared<Options>();
    CLI::App* const command = app.add_subcommand("size", "Print how many bytes a texture takes");
    command->add_option("WIDTH", options->width, "Pixels in a row")
        ->required()
        ->option_text("REQUIRED")
        ->transform(whole_number(1, UINT32_MAX));
    command->add_option("HEIGHT", options->height, "Rows")
        ->required()
        ->option_text("REQUIRED")
        ->transform(whole_number(1, UINT32_MAX));
    command->add_option("DEPTH", options->depth, "Slices; default: 1")
        ->option_text(" ")
        ->transform(whole_number(1, UINT32_MAX));
    CLI::Option_group* const pixels = command->add_option_group("Pixels", "Give one of these");
    pixels
        ->add_option("--format", options->format,
                     "A texture format: a number, or a name from the table below in either case")
        ->option_text("FORMAT")
        ->transform(name_check(format_number, no_format));
    pixels
        ->add_option("--client-type", options->client_type,
                     "A layout of client pixel data, from the second table below")
        ->option_text("LAYOUT")
        ->transform(name_check(client_type_number, no_client_type));
    command->add_flag("--levels", options->levels,
                      "List every mip level down to a single pixel, and their sum");
    command->add_flag("--json", options->json, "Print a JSON object instead of a table");
    command->footer(
        format_tables() +
        "\nFormats of one line take the same bytes. A name stands for the first number on its line;\n"
        "BC4S and BC5S stand for the second.\n"
        "Exit status: 0 success, 1 more bytes than a 32-bit number can hold, 2 wrong usage.");
    command->callback([options, &status] {
        check_choice(*options);
        status = size(*options);
    });
}
