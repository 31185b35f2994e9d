// SPDX-License-Identifier: Apache-2.0
// What a texture file is, as JSON for scripts: docs/json describes the keys.
#ifndef PELTO_TOOL_TEXTURE_TEXTURE_JSON_H
#define PELTO_TOOL_TEXTURE_TEXTURE_JSON_H

#include <nlohmann/json.hpp>
#include <string>
#include <vTextureInfo.h>

/// Adds `path`, and `pathBytes` in base64 where it is not UTF-8.
void add_path(nlohmann::ordered_json& object, const std::string& path);

nlohmann::ordered_json json_of(const std::vector<vTextureNote>& notes);

/// The object of `pelto inspect`: `path` and `error` alone where the file cannot be described.
nlohmann::ordered_json json_of(const std::string& path, const vTextureInfo& info, bool with_levels);

#endif
