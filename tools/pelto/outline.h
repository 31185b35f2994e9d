// pelto outline: the element tree of an XML document.
#ifndef PELTO_TOOL_OUTLINE_H
#define PELTO_TOOL_OUTLINE_H

#include "exit_status.h"

namespace CLI {
class App;
}

/// Adds the subcommand; when it has run, `status` says how it went.
void add_outline(CLI::App& app, ExitStatus& status);

#endif
