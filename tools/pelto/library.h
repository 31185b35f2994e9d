// pelto library: what an XML document says of a set of textures, and whether they are so.
#ifndef PELTO_TOOL_LIBRARY_H
#define PELTO_TOOL_LIBRARY_H

#include <CLI/CLI.hpp>

#include "exit_status.h"

/// Adds the subcommand; when it is called, its exit status is put into `status`.
void add_library(CLI::App& app, ExitStatus& status);

#endif
