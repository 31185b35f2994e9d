// The levels of a DDS file where they lie: offsets, bytes and extents, without a copy.
//
// For streaming: levels are offered from memory that the caller owns, or from a file that is mapped. Small
// levels can be uploaded first, and the complete levels of a file that has arrived in part are offered too.
// Pixels lie as in the file: nothing is flipped, and channels are in the file's order, which vDDSImage::load
// would have changed to red first.
//
// Hostile files: safe on any bytes, as vTextureCheck is. But a mapped file that another process cuts short
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
#include <vector>

#include "PeltoExport.h"
#include "vDDSImage.h"
#include "vTextureCheck.h"

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
    std::uint32_t depth = 0;              ///< pixels, as the loader counts them: at least 1
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
    /// caller's and must outlive the table. Also returned when the file is truncated: the levels that are
    /// whole are offered.
    const vTextureCheck::Result& Read(const void* data, std::uint64_t size,
                                      const vTextureLimits& limits = vTextureLimits());

    /// The same for the file `path` (in the C runtime's fopen encoding), which is mapped for reading until
    /// the next Read or Map, or the end of the table.
    const vTextureCheck::Result& Map(const std::string& path,
                                     const vTextureLimits& limits = vTextureLimits());

    /// What the last Read or Map found: a truncated file's first level that is not whole is named here.
    const vTextureCheck::Result& GetResult() const;

    /// Of the pixels; meaningful where there are levels.
    TOZ::SUPPORTED_FORMAT::Type GetFormat() const;

    /// 6 for a cube map (+X, -X, +Y, -Y, +Z, -Z), else 1; 0 where there are no levels.
    int GetNumFaces() const;

    /// Mip levels of each face, the base level included.
    int GetNumLevels() const;

    /// `face` and `level` count from 0; where there is no such level, one without bytes and data.
    const vDDSLevel& GetLevel(int face, int level) const;

private:
    void _Tabulate(const void* data, std::uint64_t size, const vTextureLimits& limits);

    vTextureCheck::Result _result;
    std::vector<vDDSLevel> _levels;
    TOZ::SUPPORTED_FORMAT::Type _format;
    int _numFaces;
    const void* _mapping;
    std::uint64_t _mappingSize;
};

#if defined(_MSC_VER)
#pragma warning(pop)
#endif

#endif
