// pelto validate: what is wrong with XML documents.
#ifndef PELTO_TOOL_VALIDATE_H
#define PELTO_TOOL_VALIDATE_H

#include <CLI/CLI.hpp>

#include "exit_status.h"

/// Adds the subcommand; when it has run, `status` says how it went.
void add_validate(CLI::App& app, ExitStatus& status);

#endif
