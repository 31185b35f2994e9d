// SPDX-License-Identifier: Apache-2.0
// Basis Universal textures: a .basis file in memory, transcoded level by level into blocks for the GPU.
//
// A .basis file holds slices (images), each with its mip levels, as ETC1S or UASTC data; the format is
// published in the Basis Universal repository ("Basis Universal supercompressed GPU texture codec"
// specification). Transcoding is done by the Basis Universal transcoder, linked into this library.
//
// Errors: every failure is a false result; nothing is logged. The only exceptions are the standard library's
// when memory runs out (std::bad_alloc, std::bad_array_new_length); the transcoder of that call then leaks.
// When the transcoder itself runs out of memory, the process may end.
//
// Hostile files: no operation reads outside the held buffer or writes outside its own; a file that would
// make the transcoder do so is refused. But the header's extents are trusted: a small file can ask for an
// output of up to 2 GiB, and for the time to fill it.
//
// Threads: distinct objects are independent, except that the first transcoding operation of the process
// must not race with another (it initialises the transcoder's tables). Several threads may read one object,
// getImage included, while none changes it.
#ifndef V_BASIS_IMAGE_H
#define V_BASIS_IMAGE_H

#include <cstdint>

#include "PeltoExport.h"

namespace TOZ {

/// What a level is transcoded to. Any other value means BC3.
enum EUsageFormat : std::int32_t {
    eUsageFormatBC1 = 1,     ///< BC1, opaque: 8 bytes a block
    eUsageFormatBC3 = 2,     ///< BC3, with alpha: 16 bytes a block
    eUsageFormatBC3Alt = 3,  ///< the same as eUsageFormatBC3
    eUsageFormatBC5 = 4,     ///< BC5: red from the colour, green from the alpha: 16 bytes a block
    eUsageFormatBC4 = 5,     ///< BC4: red alone: 8 bytes a block
};

/// One .basis file and the extents of its first image. Holds nothing decoded: every operation that
/// transcodes starts a new transcoder, which can take some milliseconds for an ETC1S file.
class PELTO_API vBasisImage {
public:
    /// Holds nothing; every getter gives 0 or null.
    vBasisImage();

    /// Releases the held file with array delete.
    ~vBasisImage();

    vBasisImage(const vBasisImage&) = delete;

    /// A shallow copy: both objects then hold the same buffer, and both will release it. The buffer that this
    /// object held before leaks. Assign an empty object to one of the two before it is destroyed.
    vBasisImage& operator=(const vBasisImage& other);

    /// Reads the file `path` (in the C runtime's fopen encoding) whole and holds it.
    ///
    /// Returns whether it is a 2D texture, or an array of them, that can be transcoded. A file that cannot be
    /// opened changes nothing. Any other file is held, even on false; the extents and counts then stay,
    /// except the number of slices, which may be the new file's. The buffer held before leaks, so load an
    /// object only once.
    ///
    /// If the file has no length (a pipe, a directory), allocating the buffer throws.
    bool load(const char* path);

    /// Holds `size` bytes at `data`, a complete .basis file, and takes ownership: the buffer must come from
    /// `new unsigned char[]`. Releases the buffer held before first, even if it is the same one. Sets extents
    /// and counts as load does; isValidHeader says whether the bytes are a .basis file.
    void setBasisFileRawData(const unsigned char* data, unsigned int size);

    const unsigned char* getBasisFileRawData() const;  ///< the held file, owned by the object; may be null
    unsigned int getBasisFileSize() const;             ///< bytes of the held file

    int getWidth() const;   ///< pixels across level 0 of slice 0, rounded up to whole blocks
    int getHeight() const;  ///< pixels down level 0 of slice 0, rounded up to whole blocks

    int getNumSlices() const;     ///< images in the file
    int getNumMipLevels() const;  ///< mip levels of slice 0

    /// Whether the held file can be transcoded and its whole header is in order, whatever its texture type:
    /// cube maps, videos and volumes, which load refuses, may be valid. Ignores checksums.
    bool isValidHeader() const;

    /// Transcodes mip level `level` of image `slice` into a new buffer of blocks: row after row from the
    /// top, without padding, (width + 3) / 4 blocks in each for a level of `width` pixels.
    ///
    /// On true, `image` is the buffer, which the caller releases with array delete, and `imageSize` its
    /// bytes. On false, both are unchanged if there is no such level or slice, if the object holds no file of
    /// 2D images, or if the file would lead the transcoder outside its memory. If the level's data is damaged
    /// or has no such form, `image` is null, `imageSize` is what it would have been, and the buffer leaks. A
    /// level of 2 GiB or more throws as if memory ran out.
    bool getImage(unsigned int level, unsigned int slice, unsigned char*& image, unsigned int& imageSize,
                  EUsageFormat usage) const;

private:
    bool _analysis();
    bool _loadFullFile(const char* path, const unsigned char*& data, int& size) const;

    const unsigned char* _basisFileRawData;
    int _basisFileSize;
    int _width;
    int _height;
    int _numSlices;
    int _numMipLevels;
};

}  // namespace TOZ

#endif
