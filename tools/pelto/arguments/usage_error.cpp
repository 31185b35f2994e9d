// SPDX-License-Identifier: Apache-2.0
#include "arguments/usage_error.h"

#include <optional>
#include <string_view>

#include "arguments/choices.h"
#include "output/printable.h"

namespace {

// With those of its option groups, which are nameless subcommands.
std::vector<std::string> options_of(const CLI::App& command) {
    std::vector<std::string> names;
    for (const CLI::Option* const option : command.get_options()) {
        for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    }
    for (const CLI::App* const group : command.get_subcommands({})) {
        if (!group->get_name().empty()) continue;
        for (const std::string& name : options_of(*group)) names.push_back(name);
    }
    return names;
}

// Not "-", which is a file, nor "--", nor a negative number.
bool is_option(const std::string& word) {
    return word.size() > 1 && word != "--" && word[0] == '-' && (word[1] < '0' || word[1] > '9');
}

std::string no_option(const CLI::App& command, const std::string& word) {
    const std::string name = word.substr(0, word.find('='));
    return "there is no option '" + name + "'" + suggestion(name, options_of(command));
}

// What CLI11 says of a missing or a repeated value speaks of its types.
std::string mismatch(const std::string& said) {
    const std::string name = said.substr(0, said.find(':'));
    return name + (said.ends_with(" missing") ? " takes a value" : " is given more than once");
}

std::string missing(const std::string& said) {
    constexpr std::string_view kEnd = " is required";
    return said.ends_with(kEnd) ? said.substr(0, said.size() - kEnd.size()) + " is missing" : said;
}

std::string what_is_wrong(const CLI::App& app, const CLI::App& command, const CLI::ParseError& error) {
    const std::vector<std::string> left = (command.remaining().empty() ? app : command).remaining();
    if (&command == &app) return left.empty() ? "a subcommand is missing" : no_subcommand(app, left.front());
    if (dynamic_cast<const CLI::ExtrasError*>(&error)) {
        return "there is one argument too many: '" + left.front() + "'";
    }
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error)) return mismatch(error.what());
    if (dynamic_cast<const CLI::RequiredError*>(&error)) return missing(error.what());
    return error.what();
}

// The name of a command, what is wrong with its arguments, and the command whose help may help.
std::string told(const std::string& name, const std::string& wrong, const std::string& helpful) {
    return name + ": " + printable(wrong) + "\nSee '" + helpful + " --help'\n";
}

}  // namespace

std::string no_subcommand(const CLI::App& app, const std::string& name) {
    std::vector<std::string> names;
    for (const CLI::App* const command : app.get_subcommands({})) names.push_back(command->get_name());
    return "there is no subcommand '" + name + "'" + suggestion(name, names);
}

std::string usage_error(CLI::App& app, const CLI::ParseError& error) {
    const std::vector<CLI::App*> chosen = app.get_subcommands();
    const CLI::App& command = chosen.empty() ? app : *chosen.front();
    const auto name_of = [&](const CLI::App& of) {
        return &of == &app ? app.get_name() : app.get_name() + " " + of.get_name();
    };
    const auto unknown = [&](const CLI::App& level) -> std::optional<std::string> {
        for (const std::string& word : level.remaining()) {
            if (is_option(word)) return told(name_of(level), no_option(level, word), name_of(level));
            // What follows belongs to an unknown subcommand.
            if (chosen.empty()) break;
        }
        return std::nullopt;
    };
    // Told first: an unknown option may be why others lack.
    if (const auto text = unknown(app)) return *text;
    if (const auto text = unknown(command)) return *text;
    const bool helps = command.get_name() == "help";
    return told(name_of(command), what_is_wrong(app, command, error), name_of(helps ? app : command));
}
