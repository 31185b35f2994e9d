// Basis Universal textures: a .basis file in memory, transcoded level by level into blocks for the GPU.
//
// A .basis file holds slices (images), each with its mip levels, as ETC1S or UASTC data; the format is
// published in the Basis Universal repository ("Basis Universal supercompressed GPU texture codec"
// specification). Transcoding is done by the Basis Universal transcoder, linked into this library.
//
// Errors: every failure is a false result; nothing is logged. Exceptions are the standard library's for
// memory that cannot be had (std::bad_alloc, std::bad_array_new_length); the transcoder's context of the
// call in which one is thrown is not released. The transcoder's own memory is beyond this: where the system
// refuses it, the process may end.
//
// Hostile files: no operation reads outside the held buffer or writes outside its own; a file that would
// make the transcoder do so is refused. But the header's extents are believed: a small file can ask for an
// output of up to 2 GiB, and for the time to fill it.
//
// Threads: distinct objects are independent, except that the first transcoding operation of the process
// must not race with another (it initialises the transcoder's tables). One object may be read by several
// threads, getImage included, while none changes it.
#ifndef V_BASIS_IMAGE_H
#define V_BASIS_IMAGE_H

#include <cstdint>

#include "PeltoExport.h"

namespace TOZ {

/// What a level is transcoded to. Every other value means BC3 too.
enum EUsageFormat : std::int32_t {
    eUsageFormatBC1 = 1,     ///< BC1, opaque: 8 bytes a block
    eUsageFormatBC3 = 2,     ///< BC3, with alpha: 16 bytes a block
    eUsageFormatBC3Alt = 3,  ///< the same as eUsageFormatBC3
    eUsageFormatBC5 = 4,     ///< BC5: red from the colour, green from the alpha: 16 bytes a block
    eUsageFormatBC4 = 5,     ///< BC4: red alone: 8 bytes a block
};

/// One .basis file and the extents of its first image. Holds nothing decoded: every operation that
/// transcodes sets the transcoder up anew, which takes up to some milliseconds for an ETC1S file.
class PELTO_API vBasisImage {
public:
    /// Holds nothing; every getter gives 0 or null.
    vBasisImage();

    /// Releases the held file with array delete.
    ~vBasisImage();

    vBasisImage(const vBasisImage&) = delete;

    /// A shallow copy: both objects then hold the same buffer, and both will release it. What this object
    /// held before is not released. Before one of the two is destroyed, assign an empty object to it.
    vBasisImage& operator=(const vBasisImage& other);

    /// Reads the file `path` (in the C runtime's fopen encoding) whole and holds it.
    ///
    /// Returns whether it is a 2D texture or an array of them that can be transcoded. A file that cannot be
    /// opened changes nothing. Any other is held even on false; the extents and counts then stay as they
    /// were, but for the number of slices, which may be the new file's. What was held before is not released:
    /// it stays its holder's, so an object is best loaded once.
    ///
    /// Where the length cannot be told (a pipe, a directory) the allocation of the buffer throws.
    bool load(const char* path);

    /// Holds `size` bytes at `data`, a complete .basis file, and takes their ownership: they must come from
    /// `new unsigned char[]` and belong to the object from now on. What was held before is released first,
    /// also when it is the same buffer. Extents and counts are set as by load; isValidHeader tells whether
    /// the bytes are a .basis file.
    void setBasisFileRawData(const unsigned char* data, unsigned int size);

    const unsigned char* getBasisFileRawData() const;  ///< the held file; the object's own, null when none
    unsigned int getBasisFileSize() const;             ///< bytes of the held file

    int getWidth() const;   ///< pixels across level 0 of slice 0, rounded up to whole blocks
    int getHeight() const;  ///< pixels down level 0 of slice 0, rounded up to whole blocks

    int getNumSlices() const;     ///< images in the file
    int getNumMipLevels() const;  ///< mip levels of slice 0

    /// Whether the held file can be transcoded and its whole header is in order, of whatever texture type:
    /// cube maps, videos and volumes, which load refuses, may be valid. Checksums are not looked at.
    bool isValidHeader() const;

    /// Transcodes mip level `level` of image `slice` into a new buffer of blocks: row after row from the
    /// top, without padding, (width + 3) / 4 blocks in each for a level of `width` pixels.
    ///
    /// On true `image` is the buffer, the caller's own to release with array delete, and `imageSize` its
    /// bytes. On false, when there is no such level or slice, when no file of 2D images is held, or when the
    /// file would lead the transcoder outside its memory, both are left alone; when the level's data is
    /// damaged or of a kind that has no such blocks, `image` is null, `imageSize` what it would have been,
    /// and that buffer is not released any more. A level of 2 GiB or more is memory that cannot be had.
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
