// SPDX-License-Identifier: Apache-2.0
// The levels of a DDS file where they lie: offsets, bytes and extents, without a copy.
//
// For streaming: offers levels from memory that the caller owns, or from a file that it maps. Small levels
// can be uploaded first, and of a file that has arrived in part, the complete levels are there already. It
// takes every format of vTextureFormats.h, all layers of texture arrays, and cube maps without all their
// faces. Pixels lie as in the file: nothing is flipped, and channels are in the file's order, which
// vDDSImage::load changes.
//
// Hostile files: safe on any bytes, as vTextureInfo is. But a mapped file that another process cuts short
// while it is mapped ends the process that reads the lost part (SIGBUS): read files into memory that others
// may change.
//
// Errors: none but std::bad_alloc; everything else is a result.
//
// Threads: distinct objects are independent; one object may be read by several threads while none changes it.
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
    const unsigned char* data = nullptr;  ///< its bytes where they lie; null when the level is not whole
};

/// The table of a file's levels. Empty where the file is refused for another reason than its end.
class PELTO_API vDDSLevels {
public:
    vDDSLevels();
    ~vDDSLevels();

    /// Takes the mapping over; pointers into it stay valid. The other table is then empty.
    vDDSLevels(vDDSLevels&& other) noexcept;
    vDDSLevels& operator=(vDDSLevels&& other) noexcept;

    /// Reads the headers of a whole file, or the start of one, of `size` bytes at `data`, which stay the
    /// caller's and must outlive the table. Of a truncated file, offers the levels that are whole.
    const vTextureCheck::Result& Read(const void* data, std::uint64_t size,
                                      const vTextureLimits& limits = vTextureLimits());

    /// The same for the file `path` (in the C runtime's fopen encoding), which stays mapped for reading until
    /// the next Read or Map, or the end of the table. A file beyond the limits is not mapped.
    const vTextureCheck::Result& Map(const std::string& path,
                                     const vTextureLimits& limits = vTextureLimits());

    /// What the last Read or Map found; of a truncated file, the first level that is not whole.
    const vTextureCheck::Result& GetResult() const;

    /// Everything else about the file.
    const vTextureInfo& GetInfo() const;

    /// Of the pixels; blockBytes is 0 where there are no levels.
    const vPixelFormat& GetPixelFormat() const;

    /// What vDDSImage calls the format; RGBA8 also where vDDSImage does not take it (GetInfo().loaderFormat).
    TOZ::SUPPORTED_FORMAT::Type GetFormat() const;

    /// Array elements; cubes where the file is an array of cube maps. 0 where there are no levels.
    int GetNumLayers() const;

    /// Cube faces that the file holds, else 1; 0 where there are no levels.
    int GetNumFaces() const;

    /// Mip levels of each face, the base level included.
    int GetNumLevels() const;

    /// `face` counts +X, -X, +Y, -Y, +Z, -Z from 0, also in a cube map that lacks some. One without bytes and
    /// data where there is no such level.
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
