// SPDX-License-Identifier: Apache-2.0

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "output/Progress.h"
#include "output/complain.h"
#include "output/output_path.h"
#include "output/print_json.h"
#include "output/printable.h"
#include "output/table.h"
#include "sheet/contact_sheet.h"
#include "subcommands.h"
#include "xml/library_document.h"
#include "xml/library_report.h"
#include "xml/xml_problems.h"

namespace {

struct Options {
    std::string document;
    std::string schema;
    std::string sheet;
    bool json = false;
    Trust trust = Trust::kNo;
};

struct Entry {
    LibraryTexture texture;
    TextureReport report;
    std::shared_ptr<TextureFile> file;  // where it is to be drawn

    std::string name() const { return texture.material + "/" + texture.name; }
};

struct Library {
    std::vector<Entry> entries;
    std::vector<XMLProblem> problems;

    std::uint64_t bytes() const {
        std::uint64_t sum = 0;
        for (const Entry& entry : entries) sum += entry.report.bytes;
        return sum;
    }
};

std::filesystem::path folder_of(const Options& options) {
    return std::filesystem::path(options.document).parent_path();
}

void check_sheet(const Options& options) {
    if (options.sheet.empty()) return;
    check_is_no_input(options.sheet, {options.document, options.schema});
    check_ending(options.sheet, ".png");
    check_apart_from_json(options.sheet, options.json);
}

void check_sheet_is_none_of(const std::vector<LibraryTexture>& textures, const Options& options) {
    if (options.sheet.empty()) return;
    std::vector<std::string> paths;
    for (const LibraryTexture& texture : textures) {
        paths.push_back((folder_of(options) / texture.file).string());
    }
    check_is_no_input(options.sheet, paths);
}

Library read_library(const Options& options) {
    check_sheet(options);
    const OXAVar<LibraryHandler> handler = read_library_document(options.document, options.schema);
    check_sheet_is_none_of(handler->textures, options);
    Library library{{}, handler->problems};
    Progress progress("loading", handler->textures.size());
    for (const LibraryTexture& texture : handler->textures) {
        Entry entry{texture, {}, nullptr};
        entry.report = report_texture(texture, folder_of(options), options.trust, entry.file);
        if (options.sheet.empty()) entry.file.reset();
        // Without a file it has a problem already.
        if (entry.report.error && !texture.file.empty()) {
            library.problems.push_back({options.document, texture.line, texture.column, Severity::kError,
                                        texture.file + ": " + *entry.report.error});
        }
        library.entries.push_back(std::move(entry));
        progress.step();
    }
    const auto in_document = [&](const XMLProblem& problem) { return problem.path == options.document; };
    const auto first = std::stable_partition(library.problems.begin(), library.problems.end(),
                                             [&](const XMLProblem& p) { return !in_document(p); });
    std::stable_sort(first, library.problems.end(),
                     [](const XMLProblem& a, const XMLProblem& b) { return a.line < b.line; });
    return library;
}

std::vector<std::string> row_of(const Entry& entry) {
    const TextureReport& report = entry.report;
    const bool known = report.depth > 0;
    const auto shown = [&](const auto& text) { return known ? text : "-"; };
    return {printable(entry.name()),
            printable(entry.texture.file),
            shown(report.format),
            shown(extent_text(report.width, report.height, report.depth)),
            shown(std::to_string(report.faces)),
            shown(std::to_string(report.levels)),
            shown(std::to_string(report.bytes)),
            report.error ? "failed" : "ok"};
}

std::string counted(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

void print(std::ostream& out, const Library& library) {
    std::vector<std::vector<std::string>> rows;
    for (const Entry& entry : library.entries) rows.push_back(row_of(entry));
    if (!rows.empty()) {
        print_table(out,
                    {{"name"},
                     {"file"},
                     {"format"},
                     {"width x height x depth", Align::kRight},
                     {"faces", Align::kRight},
                     {"levels", Align::kRight},
                     {"bytes", Align::kRight},
                     {"check"}},
                    rows);
    }
    const auto failed = std::count_if(library.entries.begin(), library.entries.end(),
                                      [](const Entry& entry) { return entry.report.error.has_value(); });
    out << counted(library.entries.size(), "texture", "textures") << ", "
        << counted(library.bytes(), "byte", "bytes") << ", " << failed << " failed\n";
}

nlohmann::ordered_json json_of(const Entry& entry) {
    const LibraryTexture& texture = entry.texture;
    const TextureReport& report = entry.report;
    nlohmann::ordered_json object = {{"material", texture.material}, {"name", texture.name},
                                     {"file", texture.file},         {"line", texture.line},
                                     {"tint", texture.tint},         {"levelLimits", texture.levels},
                                     {"tags", texture.tags}};
    if (report.depth > 0) {
        object["format"] = report.format;
        object["width"] = report.width;
        object["height"] = report.height;
        object["depth"] = report.depth;
        object["faces"] = report.faces;
        object["levels"] = report.levels;
        object["bytes"] = report.bytes;
    }
    if (report.error) object["error"] = *report.error;
    return object;
}

nlohmann::ordered_json json_of(const Library& library) {
    nlohmann::ordered_json textures = nlohmann::ordered_json::array();
    for (const Entry& entry : library.entries) textures.push_back(json_of(entry));
    return {{"textures", std::move(textures)},
            {"bytes", library.bytes()},
            {"problems", json_of(library.problems)}};
}

// Of the textures that could be described.
void draw_sheet(const Library& library, const Options& options) {
    std::vector<SheetEntry> entries;
    for (const Entry& entry : library.entries) {
        if (entry.report.depth == 0) continue;
        SheetChoice choice;
        choice.flip = entry.texture.flip;
        choice.slice = entry.texture.slice;
        choice.usage = entry.texture.usage;
        choice.trust = options.trust;
        entries.push_back(
            {(folder_of(options) / entry.texture.file).string(), entry.name(), choice, entry.file});
    }
    const SheetReport report = make_contact_sheet(entries, 0, options.sheet);
    for (const SheetRemark& remark : report.warnings) complain(remark.path, remark.text);
    for (const SheetRemark& remark : report.errors) complain(remark.path, remark.text);
    if (report.cards.empty()) throw std::runtime_error("there is no texture to show on " + options.sheet);
    if (!report.errors.empty())
        throw std::runtime_error("not all textures could be shown on " + options.sheet);
}

ExitStatus check_library(const Options& options) {
    const Library library = read_library(options);
    if (options.json) {
        print_json(json_of(library));
    } else if (!library.entries.empty() || !has_errors(library.problems)) {
        // A sheet on standard output stands there alone.
        print(goes_to_standard_output(options.sheet) ? std::cerr : std::cout, library);
    }
    std::cout.flush();
    print_problems(std::cerr, library.problems);
    if (!options.sheet.empty()) draw_sheet(library, options);
    return has_errors(library.problems) ? kExitFailure : kExitSuccess;
}

}  // namespace

void add_library(CLI::App& app, ExitStatus& status) {
    const auto options = std::make_shared<Options>();
    CLI::App* const command =
        app.add_subcommand("library", "Load and check the textures that an XML document names, a row each");
    command->add_option("FILE.xml", options->document, "The document: materials with their textures")
        ->required()
        ->type_name("");
    command
        ->add_option("--xsd", options->schema,
                     "A schema of your own that the document must follow instead of the command's")
        ->option_text("FILE.xsd");
    command->add_flag("--json", options->json, "Print a JSON object instead of a table");
    command
        ->add_option(
            "--sheet", options->sheet,
            "Draw the textures into this PNG file, as pelto sheet does; it is replaced where it exists")
        ->option_text("OUT.png");
    add_trust(*command, options->trust);
    command->footer(
        "The document's format is described in docs/library.md of the project; its schema is installed as\n"
        "share/PeltoKernelTools/schemas/texture-library.xsd. Files are named from the document's folder. "
        "The\n"
        "check compares the bytes of every level with what its format and extent take, and the file with "
        "what\n"
        "the document says of it. Problems go to standard error as path:line:column: severity: message;\n"
        "the command goes on with the rest.\n"
        "Exit status: 0 all is well, 1 there are errors, 2 wrong usage.");
    command->callback([options, &status] { status = check_library(*options); });
}
