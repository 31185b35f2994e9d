// SPDX-License-Identifier: Apache-2.0
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <new>
#include <nlohmann/json.hpp>
#include <string>
#include <vTextureInfo.h>
#include <vector>

#include "output/complain.h"
#include "output/print_json.h"
#include "output/printable.h"
#include "output/table.h"
#include "subcommands.h"
#include "texture/texture_json.h"
#include "texture/texture_words.h"

namespace {

struct Options {
    std::vector<std::string> files;
    bool json = false;
    bool levels = false;
};

using Row = std::vector<std::string>;

vTextureInfo described(const std::string& path) {
    try {
        return vTextureInfo::ReadFile(path);
    } catch (const std::bad_alloc&) {
        vTextureInfo info;
        info.problem.status = vTextureCheck::eUnreadable;
        info.problem.sentence = "does not fit into memory";
        return info;
    }
}

Row row_of(const std::string& path, const vTextureInfo& info) {
    return {container_name(info.container),
            info.format,
            extent_words(info),
            std::to_string(info.layers),
            std::to_string(info.faces),
            std::to_string(info.levels),
            std::to_string(info.bytes),
            printable(path)};
}

Row row_of(const vTextureLevel& level) {
    return {std::to_string(level.layer),    std::to_string(level.face),
            std::to_string(level.level),    extent_words(level.width, level.height, level.depth),
            std::to_string(level.offset),   std::to_string(level.bytes),
            std::to_string(level.rowBytes), level.whole ? "yes" : "no"};
}

void print_levels(const std::string& path, const vTextureInfo& info) {
    std::vector<Row> rows;
    const std::uint64_t images = info.GetNumImages();
    for (std::uint64_t i = 0; i < images; ++i) rows.push_back(row_of(info.GetImage(i)));
    std::cout << '\n' << printable(path) << ":\n";
    print_table(std::cout,
                {{"layer", Align::kRight},
                 {"face", Align::kRight},
                 {"level", Align::kRight},
                 {"extent", Align::kRight},
                 {"offset", Align::kRight},
                 {"bytes", Align::kRight},
                 {"row bytes", Align::kRight},
                 {"whole"}},
                rows);
}

class Findings {
public:
    explicit Findings(const Options& options) : options_(options) {}

    void add(const std::string& path) {
        vTextureInfo info = described(path);
        if (!info.Described() || info.missingBytes > 0) status_ = kExitFailure;
        if (!info.Described()) complain(path, info.problem.sentence);
        if (options_.json) objects_.push_back(json_of(path, info, options_.levels));
        if (info.Described()) files_.push_back({path, std::move(info)});
    }

    ExitStatus print() const {
        if (options_.json) {
            print_json(objects_);
        } else if (!files_.empty()) {
            print_for_people();
        }
        return status_;
    }

private:
    struct File {
        std::string path;
        vTextureInfo info;
    };

    void print_for_people() const {
        std::vector<Row> rows;
        for (const File& file : files_) rows.push_back(row_of(file.path, file.info));
        print_table(std::cout,
                    {{"container"},
                     {"format"},
                     {"extent", Align::kRight},
                     {"layers", Align::kRight},
                     {"faces", Align::kRight},
                     {"levels", Align::kRight},
                     {"bytes", Align::kRight},
                     {"path"}},
                    rows);
        bool first = true;
        for (const File& file : files_) {
            for (const vTextureNote& note : file.info.notes) {
                if (first) std::cout << '\n';
                first = false;
                std::cout << printable(file.path) << ": note: " << printable(note.text) << '\n';
            }
        }
        if (!options_.levels) return;
        for (const File& file : files_) print_levels(file.path, file.info);
    }

    const Options& options_;
    ExitStatus status_ = kExitSuccess;
    nlohmann::ordered_json objects_ = nlohmann::ordered_json::array();
    std::vector<File> files_;
};

ExitStatus inspect(const Options& options) {
    Findings findings(options);
    for (const std::string& file : options.files) findings.add(file);
    return findings.print();
}

}  // namespace

void add_inspect(CLI::App& app, ExitStatus& status) {
    const auto options = std::make_shared<Options>();
    CLI::App* const command =
        app.add_subcommand("inspect", "Show in a row each what texture files hold; reads only their headers");
    command->add_option("FILE", options->files, "DDS, .basis and KTX2 files")->required()->option_text("...");
    command->add_flag("--levels", options->levels, "Also show where each level of each face and layer lies");
    command->add_flag("--json", options->json, "Print a JSON array of objects instead of tables");
    command->footer("Exit status: 0 all files are described, 1 one is not, or is cut short, 2 wrong usage.");
    command->callback([options, &status] { status = inspect(*options); });
}
