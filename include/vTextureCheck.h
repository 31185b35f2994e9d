// A look at a texture file before it is loaded: whether the loaders, which trust their input, can take it.
//
// vDDSImage and TOZ::vBasisImage believe what a file's header says. Here a DDS file (published in Microsoft's
// "DDS File Layout" and "Programming Guide for DDS") or a .basis file ("Basis Universal supercompressed GPU
// texture codec" specification) is held against its true length first. What passes, the loader takes, from
// the same bytes.
//
// Hostile files: safe on any bytes. No operation reads outside the given bytes. Memory does not grow with
// what a header claims, but for the codebooks of a .basis file, whose headers cannot ask for more than a few
// MiB; time is bounded by the file's real length. A file may still be replaced between the check and the
// load: hold its bytes in memory, check them there, and load them from there, where that matters.
//
// Errors: none but std::bad_alloc; everything else is a result. The memory in which the transcoder decodes
// the codebooks of a .basis file is beyond this: where the system refuses it, the process may end.
//
// Threads: no state; every operation may run on several threads at once, except that the first one on a
// .basis file must not race with another of the process that uses the transcoder, as with TOZ::vBasisImage.
#ifndef V_TEXTURE_CHECK_H
#define V_TEXTURE_CHECK_H

#include <cstddef>
#include <cstdint>
#include <string>

#include "PeltoExport.h"

#if defined(_MSC_VER)
#pragma warning(push)
#pragma warning(disable : 4251)  // members of standard types: library and user share one runtime
#endif

/// What a caller is ready to take.
struct vTextureLimits {
    std::uint64_t maxBytes = UINT64_MAX;      ///< of vTextureCheck::Result::totalBytes
    std::uint32_t maxExtent = INT32_MAX;      ///< pixels across, down and deep
    std::uint64_t maxFileBytes = UINT64_MAX;  ///< of the file: loaders read it whole, whatever it promises
};

/// Static checks of texture files.
class PELTO_API vTextureCheck {
public:
    enum EStatus : std::int32_t {
        eOk = 0,
        eNotThisKind = 1,        ///< not a file of this kind at all
        eUnsupportedFormat = 2,  ///< a file of this kind, in a format that the loader does not take
        eTruncated = 3,          ///< ends before what it promises
        eAbsurdSize = 4,         ///< an extent, a number of levels or an amount is beyond sense or limits
        eMalformedTable = 5,     ///< its tables contradict themselves
        eUnreadable = 6,         ///< no bytes can be had: missing, not permitted, or no regular file
    };

    struct Result {
        EStatus status = eOk;

        /// Where it failed: bytes from the start of the file, of the field or table entry that is wrong, or
        /// of the first byte that is missing; 0 where no place can be told.
        std::uint64_t offset = 0;

        /// Bytes that are promised beyond the end of the file, where it is truncated.
        std::uint64_t missingBytes = 0;

        /// The first level that is not whole in the file, where it is truncated, with its cube face (or image
        /// slice of a .basis file); -1 where all are whole, or the file ends before it tells of any. Where
        /// a .basis file lacks part of its codebooks, no level is.
        int face = -1;
        int level = -1;

        /// DDS: the bytes of all levels of all faces, which a load allocates for pixels. .basis: the bytes of
        /// all levels of all slices transcoded to blocks of 16 bytes (BC3 and BC5; BC1 and BC4 take half). 0
        /// while the headers have not been understood, UINT64_MAX where they promise more than the
        /// loader can count.
        std::uint64_t totalBytes = 0;

        /// What is wrong, for a person, to be put after the file's name: "is cut short: ...". Empty when
        /// nothing is.
        std::string sentence;

        bool ok() const { return status == eOk; }
    };

    /// Checks the file `path` (in the C runtime's fopen encoding), of which the headers alone are read.
    static Result CheckDDSFile(const std::string& path, const vTextureLimits& limits = vTextureLimits());

    /// Checks `size` bytes at `data`, a whole file or the start of one. They stay the caller's.
    static Result CheckDDSBuffer(const void* data, std::uint64_t size,
                                 const vTextureLimits& limits = vTextureLimits());

    /// Checks the file `path`, which is read whole where its header is that of a .basis file.
    static Result CheckBasisFile(const std::string& path, const vTextureLimits& limits = vTextureLimits());

    /// As above. Passing means that TOZ::vBasisImage takes the file, and that each of its levels is
    /// transcoded to just the bytes foretold, or refused: because its compressed data are damaged, or because
    /// its codec has no such form: HDR codecs, blocks of other than 4x4 pixels, XUASTC packed by Zstandard.
    static Result CheckBasisBuffer(const void* data, std::uint64_t size,
                                   const vTextureLimits& limits = vTextureLimits());
};

#if defined(_MSC_VER)
#pragma warning(pop)
#endif

#endif
