// SPDX-License-Identifier: Apache-2.0
// pelto help: the help of a subcommand, or of the command itself.
#ifndef PELTO_TOOL_HELP_H
#define PELTO_TOOL_HELP_H

namespace CLI {
class App;
}

/// Adds the subcommand.
void add_help(CLI::App& app);

#endif
