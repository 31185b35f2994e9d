#include "inspect.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "basis_report.h"
#include "complain.h"
#include "dds_report.h"
#include "print_json.h"
#include "printable.h"
#include "table.h"

namespace {

struct Options {
    std::vector<std::string> files;
    bool json = false;
    bool header_only = false;
    bool flip = false;
    Trust trust = Trust::kNo;
};

// Names joined by commas, "-" where there are none.
class Flags {
public:
    void add(bool set, const char* name) {
        if (!set) return;
        if (!text_.empty()) text_ += ',';
        text_ += name;
    }
    std::string text() const { return text_.empty() ? "-" : text_; }

private:
    std::string text_;
};

using Row = std::vector<std::string>;

Row row_of(const DDSReport& report, const Options& options) {
    const vDDSImage& image = report.image;
    Flags flags;
    flags.add(image.is_compressed(), "compressed");
    flags.add(image.is_cubemap(), "cubemap");
    flags.add(image.is_volume(), "volume");
    flags.add(options.header_only, "header-only");
    flags.add(options.flip && !options.header_only, "flipped");
    flags.add(report.missing_bytes > 0, "truncated");
    return {printable(report.path),
            format_name(image.get_format()),
            extent_text(image.get_width(), image.get_height(), image.get_depth()),
            std::to_string(face_count(image)),
            std::to_string(image.get_num_mipmaps() + 1),
            options.header_only ? "-" : std::to_string(image.compute_full_size(-1)),
            flags.text()};
}

Row row_of(const BasisReport& report) {
    Flags flags;
    flags.add(report.file.alpha, "alpha");
    flags.add(report.file.srgb, "srgb");
    flags.add(report.file.y_flipped, "y-flipped");
    return {printable(report.path),
            report.file.codec,
            report.file.texture_type,
            std::to_string(report.width()) + " x " + std::to_string(report.height()),
            std::to_string(report.file.slices),
            std::to_string(report.level_count()),
            std::to_string(report.bytes),
            flags.text()};
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

nlohmann::ordered_json json_of(const BasisReport& report) {
    nlohmann::ordered_json object;
    object["path"] = report.path;
    if (report.error) {
        object["error"] = *report.error;
        return object;
    }
    object["codec"] = report.file.codec;
    object["textureType"] = report.file.texture_type;
    object["width"] = report.width();
    object["height"] = report.height();
    object["slices"] = report.file.slices;
    object["levels"] = report.level_count();
    object["bytes"] = report.bytes;
    object["alpha"] = report.file.alpha;
    object["srgb"] = report.file.srgb;
    object["yFlipped"] = report.file.y_flipped;
    object["transcodable"] = report.transcodable;
    return object;
}

struct Findings {
    ExitStatus status = kExitSuccess;
    nlohmann::ordered_json objects = nlohmann::ordered_json::array();
    std::vector<Row> dds_rows;
    std::vector<Row> basis_rows;
};

void inspect_dds(const std::string& path, const Options& options, Findings& findings) {
    const DDSReport report = report_dds(path, options.flip, options.header_only, options.trust);
    findings.objects.push_back(json_of(report, options));
    if (report.error) {
        complain(path, *report.error);
        findings.status = kExitFailure;
        return;
    }
    if (report.missing_bytes > 0) {
        complain(path, "warning: " + cut_short_text(report.missing_bytes));
    }
    findings.dds_rows.push_back(row_of(report, options));
}

void inspect_basis(const std::string& path, const Options& options, Findings& findings) {
    BasisReport report;
    report_basis(path, report, options.trust);
    findings.objects.push_back(json_of(report));
    if (report.error) {
        complain(path, *report.error);
        findings.status = kExitFailure;
        return;
    }
    findings.basis_rows.push_back(row_of(report));
}

void print_tables(const Findings& findings) {
    if (!findings.dds_rows.empty()) {
        print_table(std::cout,
                    {{"path"},
                     {"format"},
                     {"width x height x depth", Align::kRight},
                     {"faces", Align::kRight},
                     {"levels", Align::kRight},
                     {"bytes", Align::kRight},
                     {"flags"}},
                    findings.dds_rows);
    }
    if (!findings.dds_rows.empty() && !findings.basis_rows.empty()) std::cout << '\n';
    if (!findings.basis_rows.empty()) {
        print_table(std::cout,
                    {{"path"},
                     {"codec"},
                     {"texture type"},
                     {"width x height", Align::kRight},
                     {"slices", Align::kRight},
                     {"levels", Align::kRight},
                     {"bytes", Align::kRight},
                     {"flags"}},
                    findings.basis_rows);
    }
}

ExitStatus inspect(const Options& options) {
    Findings findings;
    for (const std::string& file : options.files) {
        if (is_basis(file)) {
            inspect_basis(file, options, findings);
        } else {
            inspect_dds(file, options, findings);
        }
    }
    if (options.json) {
        print_json(findings.objects);
    } else {
        print_tables(findings);
    }
    return findings.status;
}

}  // namespace

void add_inspect(CLI::App& app, ExitStatus& status) {
    const auto options = std::make_shared<Options>();
    CLI::App* const command =
        app.add_subcommand("inspect", "Show what DDS and .basis files hold, a row each");
    command->add_option("FILE", options->files, "DDS and .basis files to read")
        ->required()
        ->option_text("...");
    command->add_flag("--json", options->json, "Print a JSON array of objects instead of a table");
    command->add_flag("--header-only", options->header_only,
                      "Of DDS files, read the headers only: no pixels, no byte counts");
    command->add_flag("--flip", options->flip, "Load the images of DDS files upside down");
    add_trust(*command, options->trust);
    command->callback([options, &status] { status = inspect(*options); });
}
