// pelto size: how many bytes a texture takes.
#ifndef PELTO_TOOL_SIZE_H
#define PELTO_TOOL_SIZE_H

#include "exit_status.h"

namespace CLI {
class App;
}

/// Adds the subcommand; when it is called, its exit status is put into `status`.
void add_size(CLI::App& app, ExitStatus& status);

#endif
