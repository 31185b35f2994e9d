// pelto check: whether texture files are what they promise, before anything loads them.
#ifndef PELTO_TOOL_CHECK_H
#define PELTO_TOOL_CHECK_H

#include <CLI/CLI.hpp>

#include "exit_status.h"

/// Adds the subcommand; when it is called, its exit status is put into `status`.
void add_check(CLI::App& app, ExitStatus& status);

#endif
