// SPDX-License-Identifier: Apache-2.0
// The levels of a DDS file where they lie: offsets, bytes and extents, without a copy.
//
// For streaming: gives the levels in memory that the caller owns, or in a file that it maps. You can upload
// small levels first, and use the complete levels of a file while the rest still arrives. Takes every format
// of vTextureFormats.h, all layers of texture arrays, and cube maps that lack faces. Pixels stay as in the
// file: nothing is flipped, and channels keep the file's order, unlike with vDDSImage::load.
//
// Hostile files: safe on any bytes, as vTextureInfo is. But if another process truncates a mapped file,
// reading the lost part ends this process (SIGBUS): read files that others may change into memory.
//
// Errors: none but std::bad_alloc; everything else is a result.
//
// Threads: distinct objects are independent; several threads may read one object while none changes it.
#ifndef V_DDS_LEVELS_H
#define V_DDS_LEVELS_H

#include <cstdint>
#include <string>

#include "PeltoExport.h"
#include "vDDSImage.h"
#include "vTextureCheck.h"
#include "vTextureInfo.h"

#if defined(_MSC_VER)
#pragma warning(push)
#pragma warning(disable : 4251)  // members of standard types: library and user share one runtime
#endif

/// One level of one face.
struct vDDSLevel {
    std::uint64_t offset = 0;             ///< bytes from the start of the file
    std::uint64_t bytes = 0;              ///< of all its depth slices, one after the other
    std::uint32_t width = 0;              ///< pixels
    std::uint32_t height = 0;             ///< pixels
    std::uint32_t depth = 0;              ///< pixels, at least 1
    const unsigned char* data = nullptr;  ///< its bytes where they lie; null if the level is not whole
};

/// The table of a file's levels. Empty if the file is refused, unless it is only truncated.
class PELTO_API vDDSLevels {
public:
    vDDSLevels();
    ~vDDSLevels();

    /// Takes the mapping; pointers into it stay valid. The other table is then empty.
    vDDSLevels(vDDSLevels&& other) noexcept;
    vDDSLevels& operator=(vDDSLevels&& other) noexcept;

    /// Reads the headers of a file, or of its start, in the `size` bytes at `data`, which stay the caller's
    /// and must outlive the table. Of a truncated file, gives the levels that are whole.
    const vTextureCheck::Result& Read(const void* data, std::uint64_t size,
                                      const vTextureLimits& limits = vTextureLimits());

    /// The same for the file `path` (in the C runtime's fopen encoding), which stays mapped for reading until
    /// the next Read or Map, or until the table is destroyed. Does not map a file beyond the limits.
    const vTextureCheck::Result& Map(const std::string& path,
                                     const vTextureLimits& limits = vTextureLimits());

    /// The result of the last Read or Map; of a truncated file, the first level that is not whole.
    const vTextureCheck::Result& GetResult() const;

    /// Everything else about the file.
    const vTextureInfo& GetInfo() const;

    /// The format of the pixels; its blockBytes is 0 if there are no levels.
    const vPixelFormat& GetPixelFormat() const;

    /// What vDDSImage calls the format; also RGBA8 if vDDSImage refuses it (see GetInfo().loaderFormat).
    TOZ::SUPPORTED_FORMAT::Type GetFormat() const;

    /// Array elements; in an array of cube maps, cubes. 0 if there are no levels.
    int GetNumLayers() const;

    /// The cube faces that the file holds; 1 if it is no cube map, 0 if there are no levels.
    int GetNumFaces() const;

    /// Mip levels of each face, the base level included.
    int GetNumLevels() const;

    /// `face` counts +X, -X, +Y, -Y, +Z, -Z from 0, even in a cube map that lacks some. Gives a level without
    /// bytes or data if there is no such level.
    vDDSLevel GetLevel(int face, int level, int layer = 0) const;

private:
    void _Tabulate(const void* data, std::uint64_t size, const vTextureLimits& limits);

    vTextureCheck::Result _result;
    vTextureInfo _info;
    const unsigned char* _data;
    const void* _mapping;
    std::uint64_t _mappingSize;
};

#if defined(_MSC_VER)
#pragma warning(pop)
#endif

#endif
