// SPDX-License-Identifier: Apache-2.0
// The blocks that a .basis file becomes, by the names that people give them.
#ifndef PELTO_TOOL_TEXTURE_BASIS_USAGE_H
#define PELTO_TOOL_TEXTURE_BASIS_USAGE_H

#include <map>
#include <string>
#include <vBasisImage.h>
#include <vTextureUtils.h>
#include <vector>

struct BasisUsage {
    TOZ::EUsageFormat usage;
    const char* four_cc;          // of a DDS file of such blocks
    vTextureFormat::Type format;  // that a renderer stores them in
    const char* blocks;           // the name of their vPixelFormat
};

inline const std::map<std::string, BasisUsage> kBasisUsages = {
    {"bc1", {TOZ::eUsageFormatBC1, "DXT1", vTextureFormat::FORMAT_51, "BC1_UNORM"}},
    {"bc3", {TOZ::eUsageFormatBC3, "DXT5", vTextureFormat::FORMAT_55, "BC3_UNORM"}},
    {"bc4", {TOZ::eUsageFormatBC4, "BC4U", vTextureFormat::FORMAT_57, "BC4_UNORM"}},
    {"bc5", {TOZ::eUsageFormatBC5, "BC5U", vTextureFormat::FORMAT_59, "BC5_UNORM"}}};

inline std::vector<std::string> usage_names() {
    std::vector<std::string> names;
    for (const auto& [name, usage] : kBasisUsages) names.push_back(name);
    return names;
}

#endif
