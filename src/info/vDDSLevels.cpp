#include "vDDSLevels.h"

#include <algorithm>
#include <utility>

#include "info/check_words.h"
#include "info/dds_table.h"
#include "info/regular_file.h"

using pelto::info::RegularFile;

vDDSLevels::vDDSLevels()
    : _format(TOZ::SUPPORTED_FORMAT::RGBA8), _numFaces(0), _mapping(nullptr), _mappingSize(0) {}

vDDSLevels::~vDDSLevels() { RegularFile::unmap(_mapping, _mappingSize); }

vDDSLevels::vDDSLevels(vDDSLevels&& other) noexcept : vDDSLevels() { *this = std::move(other); }

vDDSLevels& vDDSLevels::operator=(vDDSLevels&& other) noexcept {
    if (this == &other) return *this;
    RegularFile::unmap(_mapping, _mappingSize);
    _result = std::exchange(other._result, {});
    _levels = std::exchange(other._levels, {});
    _format = other._format;
    _numFaces = std::exchange(other._numFaces, 0);
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
    if (file.fault().empty()) {
        _mapping = file.map();
        _mappingSize = file.length();
    }
    if (!file.fault().empty()) {
        _result = pelto::info::failure(vTextureCheck::eUnreadable, 0, file.fault());
    } else if (!_mapping && _mappingSize > 0) {
        _result = pelto::info::failure(vTextureCheck::eUnreadable, 0, "cannot be mapped");
    } else {
        _Tabulate(_mapping, _mappingSize, limits);
    }
    return _result;
}

const vTextureCheck::Result& vDDSLevels::GetResult() const { return _result; }

TOZ::SUPPORTED_FORMAT::Type vDDSLevels::GetFormat() const { return _format; }

int vDDSLevels::GetNumFaces() const { return _numFaces; }

int vDDSLevels::GetNumLevels() const {
    return _numFaces == 0 ? 0 : static_cast<int>(_levels.size()) / _numFaces;
}

const vDDSLevel& vDDSLevels::GetLevel(int face, int level) const {
    static const vDDSLevel kNone;
    const int levels = GetNumLevels();
    if (face < 0 || face >= _numFaces || level < 0 || level >= levels) return kNone;
    return _levels[static_cast<std::size_t>(face * levels + level)];
}

void vDDSLevels::_Tabulate(const void* data, std::uint64_t size, const vTextureLimits& limits) {
    const auto* const bytes = static_cast<const unsigned char*>(data);
    pelto::info::DDSTable table = pelto::info::read_dds_table(bytes, size, size, limits);
    for (vDDSLevel& level : table.levels) {
        if (level.offset <= size && level.bytes <= size - level.offset) level.data = bytes + level.offset;
    }
    _result = std::move(table.result);
    _levels = std::move(table.levels);
    _format = table.format;
    _numFaces = table.faces;
}
