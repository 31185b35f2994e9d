#include "inspect.h"

#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "dds_report.h"
#include "printable.h"
#include "table.h"

namespace {

struct Options {
    std::vector<std::string> files;
    bool json = false;
    bool header_only = false;
    bool flip = false;
};

std::string flags_of(const DDSReport& report, const Options& options) {
    std::string flags;
    const auto add = [&](bool set, const char* name) {
        if (!set) return;
        if (!flags.empty()) flags += ',';
        flags += name;
    };
    add(report.image.is_compressed(), "compressed");
    add(report.image.is_cubemap(), "cubemap");
    add(report.image.is_volume(), "volume");
    add(options.header_only, "header-only");
    add(options.flip && !options.header_only, "flipped");
    add(report.missing_bytes > 0, "truncated");
    return flags.empty() ? "-" : flags;
}

std::vector<std::string> row_of(const DDSReport& report, const Options& options) {
    const vDDSImage& image = report.image;
    return {printable(report.path),
            format_name(image.get_format()),
            extent_text(image.get_width(), image.get_height(), image.get_depth()),
            std::to_string(face_count(image)),
            std::to_string(image.get_num_mipmaps() + 1),
            options.header_only ? "-" : std::to_string(image.compute_full_size(-1)),
            flags_of(report, options)};
}

nlohmann::ordered_json json_of(const DDSReport& report, const Options& options) {
    nlohmann::ordered_json object;
    object["path"] = report.path;
    if (report.error) {
        object["error"] = *report.error;
        return object;
    }
    const vDDSImage& image = report.image;
    object["format"] = format_name(image.get_format());
    object["width"] = image.get_width();
    object["height"] = image.get_height();
    object["depth"] = image.get_depth();
    object["faces"] = face_count(image);
    object["levels"] = image.get_num_mipmaps() + 1;
    if (!options.header_only) object["bytes"] = image.compute_full_size(-1);
    object["missingBytes"] = report.missing_bytes;
    object["compressed"] = image.is_compressed();
    object["cubemap"] = image.is_cubemap();
    object["volume"] = image.is_volume();
    object["valid"] = image.is_valid();
    return object;
}

void complain(const DDSReport& report) {
    if (report.error) {
        std::cerr << "pelto: " << printable(report.path) << ": " << printable(*report.error) << '\n';
    } else if (report.missing_bytes > 0) {
        std::cerr << "pelto: " << printable(report.path) << ": warning: ends " << report.missing_bytes
                  << " bytes before what its header promises; they read as zero\n";
    }
}

ExitStatus inspect(const Options& options) {
    ExitStatus status = kExitSuccess;
    nlohmann::ordered_json objects = nlohmann::ordered_json::array();
    std::vector<std::vector<std::string>> rows;
    for (const std::string& file : options.files) {
        const DDSReport report = report_dds(file, options.flip, options.header_only);
        complain(report);
        if (report.error) status = kExitFailure;
        if (options.json) {
            objects.push_back(json_of(report, options));
        } else if (!report.error) {
            rows.push_back(row_of(report, options));
        }
    }
    if (options.json) {
        // File names need not be UTF-8.
        constexpr auto kReplace = nlohmann::ordered_json::error_handler_t::replace;
        std::cout << objects.dump(2, ' ', false, kReplace) << '\n';
    } else if (!rows.empty()) {
        print_table(std::cout,
                    {{"path"},
                     {"format"},
                     {"width x height x depth", Align::kRight},
                     {"faces", Align::kRight},
                     {"levels", Align::kRight},
                     {"bytes", Align::kRight},
                     {"flags"}},
                    rows);
    }
    return status;
}

}  // namespace

void add_inspect(CLI::App& app, ExitStatus& status) {
    const auto options = std::make_shared<Options>();
    CLI::App* const command = app.add_subcommand("inspect", "Show what DDS files hold, a row each");
    command->add_option("FILE", options->files, "DDS files to read")->required();
    command->add_flag("--json", options->json, "Print a JSON array of objects instead of a table");
    command->add_flag("--header-only", options->header_only,
                      "Read the headers only: no pixels, no byte counts");
    command->add_flag("--flip", options->flip, "Load the images upside down");
    command->callback([options, &status] { status = inspect(*options); });
}
