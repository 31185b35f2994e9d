// SPDX-License-Identifier: Apache-2.0
// Checks a texture file before you load it: whether the loaders, which trust their input, can take it.
//
// vDDSImage and TOZ::vBasisImage trust a file's header. A check compares the headers of a DDS file (published
// in Microsoft's "DDS File Layout" and "Programming Guide for DDS") or a .basis file ("Basis Universal
// supercompressed GPU texture codec" specification) with its true length. If the bytes pass, the loader takes
// them.
//
// Hostile files: safe on any bytes. No operation reads outside the given bytes. Time is bounded by the file's
// real length. Memory does not grow with a header's claims, except for the codebooks of a .basis file, which
// take a few MiB at most. Between check and load, a path can come to name another file: where that matters,
// hold the bytes in memory, check them there, and load the same bytes.
//
// Errors: only std::bad_alloc; everything else is a result. But if the system refuses the transcoder memory
// for the codebooks of a .basis file, the process may end.
//
// Threads: no state; every operation may run on several threads at once, except that the first one on a
// .basis file must not race with another use of the transcoder in the process, as with TOZ::vBasisImage.
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

/// The most that a caller accepts.
struct vTextureLimits {
    std::uint64_t maxBytes = UINT64_MAX;      ///< of vTextureCheck::Result::totalBytes
    std::uint32_t maxExtent = INT32_MAX;      ///< pixels across, down and deep
    std::uint64_t maxFileBytes = UINT64_MAX;  ///< of the file, which loaders read whole
};

/// Static checks of texture files.
class PELTO_API vTextureCheck {
public:
    enum EStatus : std::int32_t {
        eOk = 0,
        eNotThisKind = 1,        ///< not a file of this kind
        eUnsupportedFormat = 2,  ///< a file of this kind, in a format that the loader refuses
        eTruncated = 3,          ///< shorter than it promises
        eAbsurdSize = 4,      ///< an extent, a number of levels or an amount is absurd or beyond the limits
        eMalformedTable = 5,  ///< its tables contradict themselves
        eUnreadable = 6,      ///< missing, not permitted, or not a regular file
    };

    struct Result {
        EStatus status = eOk;

        /// Where the problem is, in bytes from the start of the file: the wrong field or table entry, or the
        /// first missing byte. 0 if it has no place.
        std::uint64_t offset = 0;

        /// Of a truncated file: the bytes that it lacks.
        std::uint64_t missingBytes = 0;

        /// Of a truncated file: the first level that is not whole, with its cube face (or the image slice of
        /// a .basis file). -1 if all are whole, or if the file ends before it names any. If a .basis file
        /// lacks part of its codebooks, no level is whole.
        int face = -1;
        int level = -1;

        /// DDS: the bytes of all levels of all faces, which a load allocates for pixels. .basis: the bytes of
        /// all levels of all slices, transcoded to blocks of 16 bytes (BC3 and BC5; BC1 and BC4 take half). 0
        /// if the headers make no sense, UINT64_MAX if they promise more than the loader can count.
        std::uint64_t totalBytes = 0;

        /// The problem, for a person, to put after the file's name: "is cut short: ...". Empty if there is
        /// none.
        std::string sentence;

        bool ok() const { return status == eOk; }
    };

    /// Checks the file `path` (in the C runtime's fopen encoding). Reads only its headers.
    static Result CheckDDSFile(const std::string& path, const vTextureLimits& limits = vTextureLimits());

    /// Checks `size` bytes at `data`, a file or its start. They stay the caller's.
    static Result CheckDDSBuffer(const void* data, std::uint64_t size,
                                 const vTextureLimits& limits = vTextureLimits());

    /// Checks the file `path`, and reads it whole if its header is that of a .basis file.
    static Result CheckBasisFile(const std::string& path, const vTextureLimits& limits = vTextureLimits());

    /// As above. If a file passes, TOZ::vBasisImage takes it, and transcodes each level to exactly the
    /// promised bytes, or refuses it because its data is damaged or its codec has no such form: HDR codecs,
    /// blocks of other than 4x4 pixels, XUASTC packed by Zstandard.
    static Result CheckBasisBuffer(const void* data, std::uint64_t size,
                                   const vTextureLimits& limits = vTextureLimits());
};

#if defined(_MSC_VER)
#pragma warning(pop)
#endif

#endif
