// pelto library: what an XML document says of a set of textures, and whether they are so.
#ifndef PELTO_TOOL_LIBRARY_H
#define PELTO_TOOL_LIBRARY_H

#include "exit_status.h"

namespace CLI {
class App;
}

/// Adds the subcommand; when it is called, its exit status is put into `status`.
void add_library(CLI::App& app, ExitStatus& status);

#endif
