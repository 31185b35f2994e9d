// A look at a texture file before it is loaded.
#ifndef PELTO_TOOL_TEXTURE_TEXTURE_CHECK_H
#define PELTO_TOOL_TEXTURE_TEXTURE_CHECK_H

#include <string>
#include <vTextureCheck.h>

namespace CLI {
class App;
}

/// Whether a file is loaded without a look at it first.
enum class Trust { kNo, kYes };

/// Adds the option --trust.
void add_trust(CLI::App& command, Trust& trust);

/// The check for the kind of file that it means to be.
vTextureCheck::Result check_texture(const std::string& path, const vTextureLimits& limits = vTextureLimits());

#endif
