// SPDX-License-Identifier: Apache-2.0

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <new>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "arguments/argument_checks.h"
#include "arguments/choices.h"
#include "output/Progress.h"
#include "output/WholeFile.h"
#include "output/complain.h"
#include "output/output_path.h"
#include "output/print_json.h"
#include "subcommands.h"
#include "texture/BasisTexture.h"
#include "texture/BasisUsage.h"
#include "texture/TextureFile.h"
#include "texture/dds_writer.h"
#include "texture/texture_words.h"

namespace {

constexpr char kAll[] = "all";

struct Options {
    std::string file;
    std::string usage;
    std::string level = kAll;
    std::string slice = "0";
    std::string output;
    Trust trust = Trust::kNo;
    bool json = false;
};

// The numbers below `count` that an option names.
std::vector<std::uint32_t> chosen(const std::string& what, const std::string& option, std::uint32_t count) {
    std::vector<std::uint32_t> numbers;
    if (option == kAll) {
        for (std::uint32_t i = 0; i < count; ++i) numbers.push_back(i);
        return numbers;
    }
    const unsigned long number = std::stoul(option);
    if (number >= count) {
        throw std::runtime_error("there is no " + what + " " + option + ": the last one is " +
                                 std::to_string(count - 1));
    }
    return {static_cast<std::uint32_t>(number)};
}

// The levels of a DDS file halve from one to the next, which those of a .basis file need not.
void check_extent(const vTextureLevel& level, std::size_t index, const DDSDescription& first) {
    const auto halved = [&](std::uint32_t pixels) { return index < 32 ? std::max(pixels >> index, 1u) : 1u; };
    const std::uint32_t width = halved(first.width);
    const std::uint32_t height = halved(first.height);
    if (level.width == width && level.height == height) return;
    throw std::runtime_error("level " + std::to_string(level.level) + " of slice " +
                             std::to_string(level.layer) + " is " +
                             extent_words(level.width, level.height, 1) + " pixels, where a DDS file has " +
                             extent_words(width, height, 1) + ": take the levels one by one with --level");
}

// Level by level, so that one is in memory at a time. Returns the bytes written.
std::size_t write_slice(const BasisTexture& texture, std::uint32_t slice, const Options& options,
                        Progress& progress, WholeFile& file) {
    const BasisUsage& target = kBasisUsages.at(options.usage);
    const std::vector<std::uint32_t> numbers = chosen("level", options.level, texture.level_count(slice));
    if (numbers.empty()) throw std::runtime_error("slice " + std::to_string(slice) + " has no levels");

    DDSDescription first;
    std::size_t written = 0;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::optional<vTextureLevel> level = texture.find(slice, numbers[i]);
        if (!level) throw std::runtime_error("its table has no level " + std::to_string(numbers[i]));
        if (i == 0) {
            first = {target.four_cc, level->width, level->height, 0,
                     static_cast<std::uint32_t>(numbers.size())};
        }
        check_extent(*level, i, first);
        const BasisBlocks blocks = texture.transcoded(slice, numbers[i], target.usage, options.usage);
        if (i == 0) {
            first.bytes = static_cast<std::uint32_t>(blocks.size);
            const std::string header = dds_header(first);
            file.append(header.data(), header.size());
            written = header.size();
        }
        file.append(blocks.data.get(), blocks.size);
        written += blocks.size;
        progress.step();
    }
    file.close();
    return written;
}

// OUT.dds, or OUT.N.dds where several slices are written.
std::string output_path(const Options& options, std::uint32_t slice, bool several) {
    if (!several) return options.output;
    const std::filesystem::path path(options.output);
    const std::string name = path.stem().string() + "." + std::to_string(slice) + path.extension().string();
    return (path.parent_path() / name).string();
}

// `written` is told once all files have their names.
void transcode_slices(const BasisTexture& texture, const Options& options, nlohmann::ordered_json& written) {
    const std::vector<std::uint32_t> slices = chosen("slice", options.slice, texture.info().layers);
    std::size_t steps = 0;
    for (const std::uint32_t slice : slices) {
        steps += options.level == kAll ? texture.level_count(slice) : 1;
    }
    OutputFiles files;
    nlohmann::ordered_json descriptions = nlohmann::ordered_json::array();
    {
        Progress progress("transcoding", steps);
        for (const std::uint32_t slice : slices) {
            const std::string path = output_path(options, slice, slices.size() > 1);
            const std::size_t bytes = write_slice(texture, slice, options, progress, files.add(path));
            descriptions.push_back({{"path", path}, {"slice", slice}, {"bytes", bytes}});
        }
    }
    files.complete();
    written = std::move(descriptions);
}

void check_output(const std::string& path, const Options& options) {
    check_is_no_input(path, {options.file});
    check_ending(path, ".dds");
    check_apart_from_json(path, options.json);
}

void check_outputs_of_slices(const Options& options, std::uint32_t slices) {
    if (options.slice != kAll || slices < 2) return;
    if (goes_to_stream(options.output)) {
        throw CLI::ValidationError("--slice all makes " + std::to_string(slices) + " files, where " +
                                   options.output + " takes one: name a file, or choose a slice");
    }
    for (std::uint32_t slice = 0; slice < slices; ++slice) {
        check_output(output_path(options, slice, true), options);
    }
}

std::unique_ptr<const BasisTexture> read_texture(const Options& options) {
    try {
        const TextureBytes file = TextureFile(options.file).bytes();
        return std::make_unique<const BasisTexture>(*file, options.trust);
    } catch (const std::bad_alloc&) {
        throw std::runtime_error("does not fit into memory");
    }
}

ExitStatus transcode(const Options& options) {
    check_output(options.output, options);
    std::unique_ptr<const BasisTexture> texture;
    try {
        texture = read_texture(options);
    } catch (const std::runtime_error& error) {
        complain(options.file, error.what());
        return kExitFailure;
    }
    check_outputs_of_slices(options, texture->info().layers);
    ExitStatus status = kExitSuccess;
    nlohmann::ordered_json written = nlohmann::ordered_json::array();
    try {
        transcode_slices(*texture, options, written);
    } catch (const std::bad_alloc&) {
        complain(options.file, "its blocks do not fit into memory");
        status = kExitFailure;
    } catch (const std::runtime_error& error) {
        complain(options.file, error.what());
        status = kExitFailure;
    }
    if (options.json) print_json(written);
    return status;
}

std::string number_or_all(const std::string& text) {
    const bool number = !text.empty() && text.size() <= 9 &&
                        std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
    return number || text == kAll ? "" : "'" + text + "' is neither a number nor \"all\"";
}

}  // namespace

void add_transcode(CLI::App& app, ExitStatus& status) {
    const auto options = std::make_shared<Options>();
    CLI::App* const command = app.add_subcommand("transcode", "Make DDS files from a .basis file");
    const CLI::Validator number_or_all_of_them(number_or_all, "N|all");
    command->add_option("FILE", options->file, "A .basis file with 2D textures")->required()->type_name("");
    command->add_option("--usage", options->usage, "The blocks to make: " + any_of(usage_names()))
        ->required()
        ->option_text("NAME REQUIRED")
        ->transform(one_of(usage_names()));
    command->add_option("--level", options->level, "The mip level to take, or \"all\", the default")
        ->option_text("N|all")
        ->check(number_or_all_of_them);
    command
        ->add_option("--slice", options->slice,
                     "The slice to take, 0 by default, or \"all\": a file each, OUT.0.dds, OUT.1.dds ...")
        ->option_text("N|all")
        ->check(number_or_all_of_them);
    command
        ->add_option("-o,--output", options->output,
                     "The DDS file to write; it is replaced where it exists. \"-\" is standard output")
        ->required()
        ->option_text("OUT.dds REQUIRED");
    command->add_flag("--json", options->json, "Print what was written, a JSON array of objects");
    add_trust(*command, options->trust);
    command->callback([options, &status] { status = transcode(*options); });
}
