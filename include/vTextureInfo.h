// SPDX-License-Identifier: Apache-2.0
// What a texture file is: container, format, extents, layers, faces, levels, and where each level lies.
//
// Reads DDS files (published in Microsoft's "DDS File Layout" and "Programming Guide for DDS"), .basis files
// ("Basis Universal supercompressed GPU texture codec" specification) and KTX2 files (Khronos "KTX File
// Format Specification", version 2), and of these only the headers. Describes a file as its format means it,
// which is not always what vDDSImage and TOZ::vBasisImage make of it: `loads`, `faithful` and `notes` say
// where they differ.
//
// Hostile files: safe on any bytes. No operation reads outside the given bytes; memory and time are bounded
// by the file's real length, whatever its headers claim. The compressed data of KTX2 and .basis files stays
// unread.
//
// Errors: only std::bad_alloc; everything else is in `problem`.
//
// Threads: no state; every operation may run on several threads at once.
#ifndef V_TEXTURE_INFO_H
#define V_TEXTURE_INFO_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "PeltoExport.h"
#include "vTextureCheck.h"
#include "vTextureFormats.h"

#if defined(_MSC_VER)
#pragma warning(push)
#pragma warning(disable : 4251)  // members of standard types: library and user share one runtime
#endif

namespace pelto::info {
struct ByteSource;
struct DDSHeaders;
}  // namespace pelto::info

/// Something to know about a file, such as a way in which vDDSImage misreads it.
struct PELTO_API vTextureNote {
    enum ECode : std::int32_t {
        eLayersDropped,            ///< vDDSImage reads only the first layer
        ePartialCube,              ///< a cube map that lacks some of the six faces that vDDSImage expects
        eCubeFlagOnlyInExtension,  ///< the DX10 header says cube map, the older one does not: vDDSImage reads
                                   ///< one face
        eChannelMasks,             ///< vDDSImage moves or cuts channels in a way that the masks do not mean
        eFloatWithMasks,           ///< vDDSImage applies the header's masks to floats
        eSignLost,                 ///< vDDSImage reads signed numbers as unsigned
        eThreeBytePixels,          ///< vDDSImage reads pixels of four bytes as three
        ePaddedRows,               ///< rows are padded to 4 bytes, and vDDSImage reads the padding as pixels
        ePalette,                  ///< vDDSImage reads palette and indices as grey
        eLeftoverBytes,            ///< the file is longer than its levels
        eStaleFourCC,   ///< FourCC DX10 without the FourCC flag: vDDSImage skips a header that is not there
        eTruncated,     ///< the file is shorter than its levels
        eInexactFlip,   ///< vDDSImage::flip does not mirror the base level exactly
        eNoTargetForm,  ///< an HDR codec, which has no BC1, BC3, BC4 or BC5 form
        eLFSPointer,    ///< a Git LFS pointer in place of the file
        eCubeFlagOnlyInHeader,  ///< the DX10 header does not say cube map, the older one does: vDDSImage
                                ///< reads six
        eDepthWithoutVolume,    ///< the header gives a depth but says no volume: vDDSImage uses it
    };

    ECode code;
    std::string text;  ///< a sentence for a person, without the file's name

    /// The code for scripts: "layersDropped".
    const char* CodeName() const;
};

/// One level of one face of one layer.
struct vTextureLevel {
    std::uint32_t layer = 0;
    std::uint32_t face = 0;  ///< +X, -X, +Y, -Y, +Z, -Z from 0, even if a cube map lacks some; else 0
    std::uint32_t level = 0;
    std::uint32_t width = 0;  ///< pixels
    std::uint32_t height = 0;
    std::uint32_t depth = 0;
    std::uint64_t offset =
        0;  ///< bytes from the start of the file; of supercompressed levels, of the compressed bytes
    std::uint64_t bytes = 0;  ///< of all slices; of supercompressed plain data, uncompressed
    std::uint64_t rowBytes =
        0;               ///< of a row of pixels or blocks, of the first plane; 0 where the codec has no rows
    bool whole = false;  ///< all its bytes are in the file
};

class PELTO_API vTextureInfo {
public:
    enum EContainer : std::int32_t { eNoContainer = 0, eDDS = 1, eBasis = 2, eKTX2 = 3 };
    enum EAlphaMode : std::int32_t {
        eAlphaUnknown = 0,
        eAlphaStraight = 1,
        eAlphaPremultiplied = 2,
        eAlphaOpaque = 3,
        eAlphaCustom = 4,
    };

    /// Describes the file `path` (in the C runtime's fopen encoding). Opens it once.
    static vTextureInfo ReadFile(const std::string& path, const vTextureLimits& limits = vTextureLimits());

    /// As ReadFile, but `check` is all that vTextureCheck says: this also decodes the codebooks of .basis
    /// files.
    static vTextureInfo CheckFile(const std::string& path, const vTextureLimits& limits = vTextureLimits());

    /// Describes `size` bytes at `data`, a file or its start. They stay the caller's.
    static vTextureInfo ReadBuffer(const void* data, std::uint64_t size,
                                   const vTextureLimits& limits = vTextureLimits());

    /// Why the file cannot be described; ok() if it is. A truncated file is described.
    vTextureCheck::Result problem;

    /// What vTextureCheck says: whether a loader takes the file. After ReadFile and ReadBuffer, without a
    /// look at the codebooks of .basis files.
    vTextureCheck::Result check;

    EContainer container = eNoContainer;  ///< also set if the file cannot be described

    /// "BC1_UNORM"; for .basis and supercompressed KTX2 files the codec, "UASTC LDR 4x4".
    std::string format;

    /// Of plain data: what `format` names. blockBytes is 0 if the file holds a codec's data.
    vPixelFormat pixels{};

    std::uint32_t dxgi = 0;                     ///< DXGI_FORMAT of the same bytes; 0 if there is none
    int loaderFormat = vPixelFormat::kRefused;  ///< TOZ::SUPPORTED_FORMAT that vDDSImage gives it

    int dimension = 2;                               ///< 1, 2 or 3
    std::uint32_t width = 0, height = 0, depth = 0;  ///< pixels of the base level, at least 1
    std::uint32_t layers = 0;    ///< array elements; cubes of an array of cube maps; frames of a video
    std::uint32_t faces = 0;     ///< 1, or the number of cube faces that the file holds
    std::uint32_t faceMask = 1;  ///< bit 0 for +X to bit 5 for -Z
    std::uint32_t levels = 0;    ///< mip levels of each face, the base level included
    EAlphaMode alphaMode = eAlphaUnknown;
    bool srgb = false;
    bool yFlipped = false;  ///< rows lie bottom first, says the file
    bool hasAlpha = false;  ///< the format or codec stores alpha

    std::uint64_t bytes = 0;         ///< of all levels
    std::uint64_t fileBytes = 0;     ///< of the file
    std::uint64_t missingBytes = 0;  ///< that the last levels lack

    /// Whether vDDSImage or TOZ::vBasisImage takes the whole file. Only CheckFile finds damaged
    /// codebooks of .basis files.
    bool loads = false;

    /// Whether what they then hold is what the file means: all layers and faces, and the right channels,
    /// signs and rows.
    bool faithful = false;

    std::vector<vTextureNote> notes;

    bool Described() const { return problem.ok(); }
    bool HasNote(vTextureNote::ECode code) const;

    /// ok() if all levels are whole; else eTruncated, with the first level that is not.
    vTextureCheck::Result WhatIsMissing() const;

    /// The number of levels of all faces of all layers.
    std::uint64_t GetNumImages() const;

    /// A level in the file's order; `index` must be below GetNumImages().
    vTextureLevel GetImage(std::uint64_t index) const;

    /// `face` as in vTextureLevel. Gives a level without bytes if the file has no such level.
    vTextureLevel GetLevel(std::uint32_t layer, std::uint32_t face, std::uint32_t level) const;

private:
    // Images of one level lie `stride` bytes apart, in the order of layers and faces.
    struct LevelSpan {
        std::uint64_t offset, bytes, stored, stride, rowBytes;
        std::uint32_t width, height, depth;
    };

    static vTextureInfo _ReadFile(const std::string& path, const vTextureLimits& limits, bool codebooks);
    static vTextureInfo _Read(const pelto::info::ByteSource& source, const vTextureLimits& limits,
                              bool codebooks);
    void _DescribeDDS(const pelto::info::ByteSource& source, const vTextureLimits& limits);
    void _DescribeBasis(const pelto::info::ByteSource& source, const vTextureLimits& limits, bool codebooks);
    void _DescribeKTX2(const pelto::info::ByteSource& source, const vTextureLimits& limits);
    void _ReadKTX2(const pelto::info::ByteSource& source, const vTextureLimits& limits);
    void _LayOutChain(std::uint64_t data, bool rowsArePadded);
    void _NoteHabitsOfTheLoader(const pelto::info::DDSHeaders& headers, int loaded);
    void _CompareLength(std::uint64_t end);
    void _Note(vTextureNote::ECode code, std::string text);
    vTextureCheck::Result _Lacks(const vTextureLevel& lost) const;
    std::uint64_t _ImagesStoredTogether(std::uint64_t index) const;
    vTextureLevel _Image(std::uint32_t layer, std::uint32_t facePlace, std::uint32_t level) const;

    bool _levelMajor = false;            // a level's images lie together, as in KTX2 files
    std::vector<LevelSpan> _spans;       // a level each
    std::vector<vTextureLevel> _images;  // where they follow no rule, as in .basis files
};

#if defined(_MSC_VER)
#pragma warning(pop)
#endif

#endif
