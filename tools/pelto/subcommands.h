// SPDX-License-Identifier: Apache-2.0
// The subcommands of pelto, a source each.
#ifndef PELTO_TOOL_SUBCOMMANDS_H
#define PELTO_TOOL_SUBCOMMANDS_H

#include "exit_status.h"

namespace CLI {
class App;
}

// Each adds its subcommand; when that is called, its exit status is put into `status`.
void add_check(CLI::App& app, ExitStatus& status);
void add_inspect(CLI::App& app, ExitStatus& status);
void add_library(CLI::App& app, ExitStatus& status);
void add_outline(CLI::App& app, ExitStatus& status);
void add_sheet(CLI::App& app, ExitStatus& status);
void add_size(CLI::App& app, ExitStatus& status);
void add_transcode(CLI::App& app, ExitStatus& status);
void add_validate(CLI::App& app, ExitStatus& status);

/// The help of a subcommand, or of the command itself.
void add_help(CLI::App& app);

#endif
