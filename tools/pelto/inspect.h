// pelto inspect: what DDS and .basis files hold.
#ifndef PELTO_TOOL_INSPECT_H
#define PELTO_TOOL_INSPECT_H

#include "exit_status.h"

namespace CLI {
class App;
}

/// Adds the subcommand; when it is called, its exit status is put into `status`.
void add_inspect(CLI::App& app, ExitStatus& status);

#endif
