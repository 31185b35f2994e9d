// pelto transcode: DDS files from a .basis file.
#ifndef PELTO_TOOL_TRANSCODE_H
#define PELTO_TOOL_TRANSCODE_H

#include "exit_status.h"

namespace CLI {
class App;
}

/// Adds the subcommand; when it is called, its exit status is put into `status`.
void add_transcode(CLI::App& app, ExitStatus& status);

#endif
