// SPDX-License-Identifier: Apache-2.0
// pelto: textures and XML documents from the command line.
#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

#include "arguments/usage_error.h"
#include "exit_status.h"
#include "output/WholeFile.h"
#include "output/printable.h"
#include "subcommands.h"

namespace {

ExitStatus run(int argc, char** argv) {
    CLI::App app(
        "pelto describes, checks, shows and transcodes texture files, and reads the XML documents that name "
        "them.",
        "pelto");
    app.set_version_flag("--version", "pelto " PELTO_VERSION);
    app.require_subcommand(1);
    app.footer("Exit status: 0 success, 1 a problem with a file or an output, 2 wrong usage.");
    ExitStatus status = kExitSuccess;
    add_library(app, status);
    add_inspect(app, status);
    add_check(app, status);
    add_sheet(app, status);
    add_size(app, status);
    add_transcode(app, status);
    add_validate(app, status);
    add_outline(app, status);
    add_help(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& help_or_version) {
        app.exit(help_or_version, std::cout, std::cerr);
    } catch (const CLI::ParseError& error) {
        std::cerr << usage_error(app, error);
        return kExitUsage;
    }
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    prepare_for_output();
    try {
        const ExitStatus status = run(argc, argv);
        std::cout.flush();
        if (!std::cout) {
            std::cerr << "pelto: the output could not be written\n";
            return kExitFailure;
        }
        return status;
    } catch (const std::exception& error) {
        std::cerr << "pelto: " << printable(error.what()) << '\n';
        return kExitFailure;
    }
}
