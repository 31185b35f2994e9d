// SPDX-License-Identifier: Apache-2.0
#include "vDDSLevels.h"

#include <utility>

#include "info/RegularFile.h"
#include "info/check_words.h"
#include "info/other_kinds.h"

using pelto::info::RegularFile;

vDDSLevels::vDDSLevels() : _data(nullptr), _mapping(nullptr), _mappingSize(0) {}

vDDSLevels::~vDDSLevels() { RegularFile::unmap(_mapping, _mappingSize); }

vDDSLevels::vDDSLevels(vDDSLevels&& other) noexcept : vDDSLevels() { *this = std::move(other); }

vDDSLevels& vDDSLevels::operator=(vDDSLevels&& other) noexcept {
    if (this == &other) return *this;
    RegularFile::unmap(_mapping, _mappingSize);
    _result = std::exchange(other._result, {});
    _info = std::exchange(other._info, {});
    _data = std::exchange(other._data, nullptr);
    _mapping = std::exchange(other._mapping, nullptr);
    _mappingSize = std::exchange(other._mappingSize, 0);
    return *this;
}

const vTextureCheck::Result& vDDSLevels::Read(const void* data, std::uint64_t size,
                                              const vTextureLimits& limits) {
    *this = vDDSLevels();
    _Tabulate(data, size, limits);
    return _result;
}

const vTextureCheck::Result& vDDSLevels::Map(const std::string& path, const vTextureLimits& limits) {
    *this = vDDSLevels();
    RegularFile file(path);
    if (!file.fault().empty()) {
        _result = pelto::info::failure(vTextureCheck::eUnreadable, 0, file.fault());
        return _result;
    }
    if (const auto fault = pelto::info::length_fault(file.length(), limits)) {
        _result = *fault;
        return _result;
    }
    _mapping = file.map();
    _mappingSize = file.length();
    if (!_mapping && _mappingSize > 0) {
        _result = pelto::info::failure(vTextureCheck::eUnreadable, 0, "cannot be mapped");
    } else {
        _Tabulate(_mapping, _mappingSize, limits);
    }
    if (!_data) RegularFile::unmap(std::exchange(_mapping, nullptr), _mappingSize);
    return _result;
}

const vTextureCheck::Result& vDDSLevels::GetResult() const { return _result; }

const vTextureInfo& vDDSLevels::GetInfo() const { return _info; }

const vPixelFormat& vDDSLevels::GetPixelFormat() const { return _info.pixels; }

TOZ::SUPPORTED_FORMAT::Type vDDSLevels::GetFormat() const {
    if (_info.loaderFormat == vPixelFormat::kRefused) return TOZ::SUPPORTED_FORMAT::RGBA8;
    return static_cast<TOZ::SUPPORTED_FORMAT::Type>(_info.loaderFormat);
}

int vDDSLevels::GetNumLayers() const { return static_cast<int>(_info.layers); }

int vDDSLevels::GetNumFaces() const { return static_cast<int>(_info.faces); }

int vDDSLevels::GetNumLevels() const { return static_cast<int>(_info.levels); }

vDDSLevel vDDSLevels::GetLevel(int face, int level, int layer) const {
    if (face < 0 || level < 0 || layer < 0) return {};
    const vTextureLevel found =
        _info.GetLevel(static_cast<std::uint32_t>(layer), static_cast<std::uint32_t>(face),
                       static_cast<std::uint32_t>(level));
    if (found.bytes == 0) return {};
    return {found.offset, found.bytes, found.width,
            found.height, found.depth, found.whole ? _data + found.offset : nullptr};
}

void vDDSLevels::_Tabulate(const void* data, std::uint64_t size, const vTextureLimits& limits) {
    vTextureInfo info = vTextureInfo::ReadBuffer(data, size, limits);
    const bool is_beyond_limits =
        info.container == vTextureInfo::eNoContainer && info.problem.status == vTextureCheck::eAbsurdSize;
    if (info.container != vTextureInfo::eDDS && !is_beyond_limits) {
        const auto source = pelto::info::byte_source(data, size);
        _result = pelto::info::other_kind(source.start(pelto::info::kStartSize), "a DDS file",
                                          pelto::info::kDDSMagic);
        return;
    }
    if (!info.Described()) {
        _result = info.problem;
        return;
    }
    _info = std::move(info);
    _data = static_cast<const unsigned char*>(data);
    _result = _info.WhatIsMissing();
}
