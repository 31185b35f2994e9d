// SPDX-License-Identifier: Apache-2.0
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>

#include "arguments/usage_error.h"
#include "subcommands.h"

namespace {

std::string help_of(const CLI::App& app, const std::string& subcommand) {
    // The app's own help() would be that of this subcommand.
    const auto help = [&](const CLI::App& of, const std::string& name) {
        return of.get_formatter()->make_help(&of, name, CLI::AppFormatMode::Normal);
    };
    if (subcommand.empty()) return help(app, app.get_name());
    for (const CLI::App* const command : app.get_subcommands({})) {
        if (command->get_name() == subcommand) return help(*command, app.get_name() + " " + subcommand);
    }
    throw CLI::ValidationError(no_subcommand(app, subcommand));
}

}  // namespace

void add_help(CLI::App& app) {
    const auto subcommand = std::make_shared<std::string>();
    CLI::App* const command =
        app.add_subcommand("help", "Show the help of a subcommand, as SUBCOMMAND --help does");
    command->add_option("SUBCOMMAND", *subcommand, "The subcommand; default: list all")->option_text(" ");
    command->footer("Exit status: 0 done, 2 wrong usage.");
    command->callback([&app, subcommand] { std::cout << help_of(app, *subcommand); });
}
