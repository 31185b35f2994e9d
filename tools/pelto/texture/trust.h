// SPDX-License-Identifier: Apache-2.0
// Whether a file is loaded although a check refuses it.
#ifndef PELTO_TOOL_TEXTURE_TRUST_H
#define PELTO_TOOL_TEXTURE_TRUST_H

namespace CLI {
class App;
}

enum class Trust { kNo, kYes };

/// Adds the option --trust.
void add_trust(CLI::App& command, Trust& trust);

#endif
