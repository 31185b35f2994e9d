// pelto validate: what is wrong with XML documents.
#ifndef PELTO_TOOL_VALIDATE_H
#define PELTO_TOOL_VALIDATE_H

#include "exit_status.h"

namespace CLI {
class App;
}

/// Adds the subcommand; when it has run, `status` says how it went.
void add_validate(CLI::App& app, ExitStatus& status);

#endif
