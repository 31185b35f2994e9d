// SPDX-License-Identifier: Apache-2.0
#include "texture/texture_json.h"

#include <cstdint>
#include <utf8.h>

#include "texture/texture_words.h"

using nlohmann::ordered_json;

namespace {

std::string base64(const std::string& bytes) {
    constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            const std::uint32_t byte = i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0u;
            group = group << 8 | byte;
        }
        for (int shift = 18; shift >= 0; shift -= 6) text += kDigits[group >> shift & 0x3F];
    }
    const std::size_t padding = (3 - bytes.size() % 3) % 3;
    return text.replace(text.size() - padding, padding, padding, '=');
}

ordered_json number_or_null(std::uint32_t number) {
    return number != 0 ? ordered_json(number) : ordered_json();
}

ordered_json json_of(const vTextureLevel& level) {
    return {{"layer", level.layer},   {"face", level.face},     {"level", level.level},
            {"width", level.width},   {"height", level.height}, {"depth", level.depth},
            {"offset", level.offset}, {"bytes", level.bytes},   {"rowBytes", level.rowBytes},
            {"whole", level.whole}};
}

}  // namespace

void add_path(ordered_json& object, const std::string& path) {
    object["path"] = path;
    if (!utf8::is_valid(path.begin(), path.end())) object["pathBytes"] = base64(path);
}

ordered_json json_of(const std::vector<vTextureNote>& notes) {
    ordered_json array = ordered_json::array();
    for (const vTextureNote& note : notes) array.push_back({{"code", note.CodeName()}, {"text", note.text}});
    return array;
}

ordered_json json_of(const std::string& path, const vTextureInfo& info, bool with_levels) {
    ordered_json object;
    add_path(object, path);
    if (!info.Described()) {
        object["error"] = info.problem.sentence;
        return object;
    }
    object["container"] = container_name(info.container);
    object["format"] = info.format;
    object["dxgi"] = number_or_null(info.dxgi);
    const char* const loader_format = loader_format_name(info);
    object["loaderFormat"] = loader_format ? ordered_json(loader_format) : ordered_json();
    object["dimension"] = std::to_string(info.dimension) + "d";
    object["width"] = info.width;
    object["height"] = info.height;
    object["depth"] = info.depth;
    object["layers"] = info.layers;
    object["faces"] = info.faces;
    object["levels"] = info.levels;
    object["alphaMode"] = alpha_mode_name(info.alphaMode);
    object["bytes"] = info.bytes;
    object["fileBytes"] = info.fileBytes;
    object["missingBytes"] = info.missingBytes;
    object["loads"] = info.loads;
    object["faithful"] = info.faithful;
    object["notes"] = json_of(info.notes);
    if (!with_levels) return object;
    ordered_json table = ordered_json::array();
    const std::uint64_t images = info.GetNumImages();
    for (std::uint64_t i = 0; i < images; ++i) table.push_back(json_of(info.GetImage(i)));
    object["table"] = std::move(table);
    return object;
}
