#include "texture/texture_check.h"

#include <CLI/CLI.hpp>

#include "texture/basis_file.h"

void add_trust(CLI::App& command, Trust& trust) {
    command.add_flag_callback(
        "--trust", [&trust] { trust = Trust::kYes; },
        "Load files that a check refuses too: cut short, say. They may ask for any amount of memory");
}

vTextureCheck::Result check_texture(const std::string& path, const vTextureLimits& limits) {
    return is_basis(path) ? vTextureCheck::CheckBasisFile(path, limits)
                          : vTextureCheck::CheckDDSFile(path, limits);
}
