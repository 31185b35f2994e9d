// pelto sheet: a contact sheet of texture files.
#ifndef PELTO_TOOL_SHEET_H
#define PELTO_TOOL_SHEET_H

#include "exit_status.h"

namespace CLI {
class App;
}

/// Adds the subcommand; when it is called, its exit status is put into `status`.
void add_sheet(CLI::App& app, ExitStatus& status);

#endif
