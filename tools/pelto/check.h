// pelto check: whether texture files are what they promise, before anything loads them.
#ifndef PELTO_TOOL_CHECK_H
#define PELTO_TOOL_CHECK_H

#include "exit_status.h"

namespace CLI {
class App;
}

/// Adds the subcommand; when it is called, its exit status is put into `status`.
void add_check(CLI::App& app, ExitStatus& status);

#endif
