// SPDX-License-Identifier: Apache-2.0
// DirectDraw Surface textures in memory: surfaces, textures, images.
//
// A vDDSSurface is the pixel buffer of one level. A vDDSTexture is one face: a base level that owns
// the list of its smaller mip levels. A vDDSImage is a whole image: format, flags and one texture per
// face. All three are values: copies are deep, and every surface owns its buffer alone.
//
// Pixel data lies as in a DDS file: rows without padding, top row first (bottom row first after a
// flip), slice after slice for a volume. Block-compressed data lies as rows of 4x4-pixel blocks.
//
// Formats: the DDS container is published in Microsoft's "DDS File Layout" and "Programming Guide for
// DDS", the block formats BC1 to BC6H in the "Block Compression" pages of the Direct3D 11 documentation
// and in the Khronos Data Format Specification, the DXGI_FORMAT numbers in the DXGI reference.
//
// Errors: loaders and assembly return false, and log why where noted. The only exceptions are std::bad_alloc
// and, from the loaders, what a log sink throws.
//
// Threads: distinct objects are independent; several threads may read one object while none changes it.
// Nothing here starts threads or takes locks.
#ifndef V_DDS_IMAGE_H
#define V_DDS_IMAGE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "PeltoExport.h"

namespace TOZ {

/// Pixel formats of an image. The numbers are fixed: 8 to 14 are the block formats that can be flipped.
namespace SUPPORTED_FORMAT {
enum Type : std::int32_t {
    LUMINANCE8 = 0,  ///< 1 x 8 bits
    RGB8 = 1,        ///< 3 x 8 bits
    RGBA8 = 2,       ///< 4 x 8 bits; also the format of a cleared image
    BGRA8 = 3,       ///< DXGI format 87; counted, sized and read with 3 components of 8 bits
    RGBA16F = 4,     ///< 4 x 16-bit float
    R32F = 5,        ///< 1 x 32-bit float
    RGB32F = 6,      ///< 3 x 32-bit float
    RGBA32F = 7,     ///< 4 x 32-bit float
    DXT1 = 8,        ///< BC1, 8-byte blocks
    DXT3 = 9,        ///< BC2, 16-byte blocks
    DXT5 = 10,       ///< BC3, 16-byte blocks
    BC4U = 11,       ///< BC4 unsigned, 8-byte blocks
    BC4S = 12,       ///< BC4 signed, 8-byte blocks
    BC5U = 13,       ///< BC5 unsigned, 16-byte blocks
    BC5S = 14,       ///< BC5 signed, 16-byte blocks
    BC6H_SF16 = 15,  ///< BC6H signed half float, 16-byte blocks; never flipped
    BC6H_UF16 = 16,  ///< BC6H unsigned half float, 16-byte blocks; never flipped
};
}  // namespace SUPPORTED_FORMAT

/// The pixel-format record of a DDS header: 32 bytes, the same in the file and in memory.
struct DDS_PIXELFORMAT {
    std::uint32_t dwSize;         ///< 32 in conforming files; not checked
    std::uint32_t dwFlags;        ///< 0x4: a FourCC is present; 0x40: RGB; 0x41: RGB with alpha
    std::uint32_t dwFourCC;       ///< four characters as a little-endian number
    std::uint32_t dwRGBBitCount;  ///< bits per pixel of uncompressed data
    std::uint32_t dwRBitMask;
    std::uint32_t dwGBitMask;
    std::uint32_t dwBBitMask;
    std::uint32_t dwABitMask;
};

// Compressed 4x4-pixel blocks, byte for byte as they lie in a file; a record may lie at any address.
#pragma pack(push, 1)

/// BC1 block, and the colour half of BC2 and BC3 blocks: 8 bytes.
struct DXTColBlock {
    std::uint16_t col0;   ///< first RGB565 endpoint
    std::uint16_t col1;   ///< second RGB565 endpoint
    std::uint8_t row[4];  ///< four 2-bit indices a row, top row first
};

/// Explicit-alpha half of a BC2 block, before the colour half: 8 bytes.
struct DXTExplicitAlphaBlock {
    std::uint16_t row[4];  ///< four 4-bit alpha values a row, top row first
};

/// Interpolated-alpha half of a BC3 block, before the colour half: 8 bytes.
struct DXT5AlphaBlock {
    std::uint8_t alpha0;  ///< first endpoint
    std::uint8_t alpha1;  ///< second endpoint
    std::uint8_t row[6];  ///< 48-bit little-endian field of sixteen 3-bit indices, top-left pixel lowest
};

/// BC4 block: 8 bytes, laid out as DXT5AlphaBlock.
struct BC4ColBlock {
    std::uint8_t red0;    ///< first endpoint
    std::uint8_t red1;    ///< second endpoint
    std::uint8_t row[6];  ///< indices, as in DXT5AlphaBlock
};

/// BC5 block: 16 bytes.
struct BC5ColBlock {
    BC4ColBlock red;
    BC4ColBlock green;
};

#pragma pack(pop)

}  // namespace TOZ

#if defined(_MSC_VER)
#pragma warning(push)
#pragma warning(disable : 4251)  // members of standard types: library and user share one runtime
#endif

/// One level: width x height x depth pixels in one owned buffer.
///
/// A null pixel pointer means that the surface holds no pixels, whatever its dimensions and size say:
/// a cleared, moved-from or emptied surface keeps them.
class PELTO_API vDDSSurface {
public:
    /// An empty surface: all values 0, no pixels.
    vDDSSurface();

    /// As create() on an empty surface.
    vDDSSurface(int width, int height, int depth, std::size_t size);

    /// Copies values and pixels. The copy of a surface without pixels is empty: all values 0.
    vDDSSurface(const vDDSSurface& other);

    /// Takes the pixels. The source keeps its dimensions and size, with a null pixel pointer.
    vDDSSurface(vDDSSurface&& other) noexcept;

    /// Releases its pixels, then copies values and pixels. A source without pixels changes nothing more: the
    /// surface keeps its old dimensions and size, with a null pixel pointer. If the new buffer cannot be
    /// allocated, the surface has the source's values and no pixels.
    vDDSSurface& operator=(const vDDSSurface& other);

    virtual ~vDDSSurface();

    /// Replaces the pixels by a new, uninitialised buffer of `size` bytes (never null, even for 0 bytes).
    /// If it cannot be allocated, the surface has the new values and no pixels.
    void create(int width, int height, int depth, std::size_t size);

    /// Releases the pixels; dimensions and size stay as they were.
    void clear();

    /// The pixels: get_size() bytes, owned by the surface and valid until it changes; may be null.
    operator char*() const;

    int get_width() const;         ///< pixels in a row
    int get_height() const;        ///< rows in a slice
    int get_depth() const;         ///< slices; 1 for a 2D level
    std::size_t get_size() const;  ///< bytes in the pixel buffer

private:
    int width;
    int height;
    int depth;
    std::size_t size;
    char* pixels;
};

/// One face: the surface itself is the base level (level 0), and it owns the list of the smaller ones.
class PELTO_API vDDSTexture : public vDDSSurface {
public:
    /// An empty base level and no mip levels.
    vDDSTexture();

    /// A base level as vDDSSurface(width, height, depth, size), and no mip levels.
    vDDSTexture(int width, int height, int depth, std::size_t size);

    /// Copies every level by the rule of vDDSSurface's copy constructor.
    vDDSTexture(const vDDSTexture& other);

    /// Takes all levels; the source's mip list becomes empty.
    vDDSTexture(vDDSTexture&& other) noexcept;

    /// Assigns the base level by the rule of vDDSSurface's assignment, and replaces the mip levels by copies.
    /// If a mip level cannot be allocated, the texture has a copy of the base level and no mip levels.
    vDDSTexture& operator=(const vDDSTexture& other);

    ~vDDSTexture() override;

    /// Mip level `index` + 1 (index 0 is the level after the base). The index is not checked.
    vDDSSurface& get_mipmap(int index);
    const vDDSSurface& get_mipmap(int index) const;

    /// Number of mip levels after the base level.
    int get_num_mipmaps() const;

private:
    friend class vDDSImage;

    std::vector<vDDSSurface> mipmaps;
};

/// A DDS image: pixel format, flags and one texture per face (one for 2D and volume images, six for a
/// cube map, in the file's order +X, -X, +Y, -Y, +Z, -Z).
class PELTO_API vDDSImage {
public:
    /// An empty image, as after clear().
    vDDSImage();

    /// Copies everything, textures by vDDSTexture's copy constructor.
    vDDSImage(const vDDSImage& other);

    /// Takes everything without copying a pixel; the source is then as after clear().
    vDDSImage(vDDSImage&& other) noexcept;

    /// Copies everything; replaces the textures. If a level cannot be allocated, the image has the source's
    /// format and flags, is_valid() included, and no textures.
    vDDSImage& operator=(const vDDSImage& other);

    /// Takes everything without copying a pixel; the source is then as after clear().
    vDDSImage& operator=(vDDSImage&& other) noexcept;

    ~vDDSImage();

    /// Makes the image empty: RGBA8, 0 components, 8 bits per component, no flags, no textures.
    void clear();

    /// Texture (face) `index`. The index is not checked.
    vDDSTexture& operator[](int index);
    const vDDSTexture& operator[](int index) const;

    // The operations from here to get_mipmap are those of texture 0, which must exist: call them only after a
    // successful load, full or header-only.

    /// The pixels of the base level: get_size() bytes owned by the image.
    operator char*() const;

    int get_width() const;         ///< pixels in a row of the base level
    int get_height() const;        ///< rows in a slice of the base level
    int get_depth() const;         ///< slices of the base level
    std::size_t get_size() const;  ///< bytes of the base level
    int get_num_mipmaps() const;   ///< levels after the base level

    /// Mip level `index` + 1. The index is not checked.
    vDDSSurface& get_mipmap(int index);
    const vDDSSurface& get_mipmap(int index) const;

    TOZ::SUPPORTED_FORMAT::Type get_format() const;
    int get_components() const;  ///< colour components per pixel
    bool is_compressed() const;  ///< the levels are 4x4-pixel blocks
    bool is_cubemap() const;     ///< the header says cube map
    bool is_volume() const;      ///< the header says volume
    bool is_valid() const;       ///< a full load succeeded

    /// Loads the DDS file `fileName` (in the C runtime's fopen encoding).
    ///
    /// `flipImage` turns every level upside down (BC6H excepted) and exchanges the +Y and -Y faces of a
    /// cube map. `headerOnly` reads no pixels: one texture reports the file's extent and its number of
    /// mip levels, every surface holds a single byte, and is_valid() stays false.
    ///
    /// Returns true on success. On false the image is cleared (flags from the header may be set); but a file
    /// that cannot be opened, or that has no length (a pipe, some directories), leaves it unchanged. An
    /// unsupported DXGI format and unsupported uncompressed pixels are logged at level 4; an unknown FourCC
    /// and a file that is not a DDS file are not logged.
    ///
    /// Hostile files: reads no memory outside the file's bytes; what the header promises and the file lacks
    /// reads as zero. But the header's sizes are trusted, and such zeros take real memory: a small file can
    /// ask for all of it. If a level cannot be allocated, std::bad_alloc leaves the call: the faces read
    /// before stay, and is_valid() is false. (A flipped cube map exchanges its faces by assignment; a failure
    /// there can leave one of the two without pixels.) If the buffer for the file cannot be allocated, the
    /// image is unchanged.
    bool load(std::string fileName, bool flipImage, bool headerOnly);

    /// As load, for a complete DDS file in memory, which stays the caller's and is only read.
    ///
    /// Not safe on hostile data: ignores `size`; the buffer must hold every byte that its header promises
    /// (with `headerOnly`, the headers).
    bool loadFromBuffer(const void* buffer, int size, bool flipImage, bool headerOnly);

    /// Turns one surface upside down in place; its memory need not be aligned.
    ///
    /// Uncompressed data (`compressed` false) is `depth` slices of `height` lines in `size` bytes; each
    /// slice is flipped by exchanging lines, whatever `width` and `format` say. Compressed data is rows of
    /// width / 4 blocks, height / 4 of them: rows are exchanged, and the pixel rows inside each block
    /// reversed. Partial blocks at the right and lower edge do not count, the middle row of an odd number
    /// of block rows stays unchanged, only the first slice of a volume is flipped, and formats without a
    /// flip (BC6H) stay unchanged.
    ///
    /// Each exchange allocates one line or block row with the global allocation function; if that throws, the
    /// data stays partly flipped. The data must hold what the arguments say: uncompressed, `height` lines of
    /// at least one byte in each slice, with `height` and `depth` not 0; compressed, height / 4 rows of
    /// width / 4 blocks.
    static void flip(char* data, int width, int height, int depth, std::size_t size,
                     TOZ::SUPPORTED_FORMAT::Type format, bool compressed);

    /// Bytes that compute_full_buffer needs for the base level and `mipmapCount` mip levels of every
    /// face; a negative count means as many as texture 0 has. The count must not exceed what each face
    /// has, and a cube map must hold its six faces: neither is checked.
    std::size_t compute_full_size(int mipmapCount) const;

    /// Copies the base level and `mipmapCount` mip levels of every face into `buffer`, face after face,
    /// without padding. Counts as in compute_full_size, with the same preconditions.
    ///
    /// Returns false when a level no longer fits into `bufferSize` bytes; the levels before it have been
    /// copied, and the rest of the buffer is unchanged.
    bool compute_full_buffer(char* buffer, std::size_t bufferSize, int mipmapCount) const;

    /// Rewrites uncompressed pixels in place into the byte order red, green, blue (, alpha).
    ///
    /// `data` is `depth` slices of size / depth bytes; width x height packed pixels at the start of each
    /// are rewritten, as little-endian numbers of 3 or 4 `components` bytes from which each channel is cut
    /// by its mask in `format`: shifted down until the mask begins at bit 0, then cut to the low 8 bits.
    /// Other component counts change nothing. `depth` must not be 0, and the pixels must lie in the slice.
    static void convertTexturePixel(char* data, int width, int height, int depth, std::size_t size,
                                    TOZ::DDS_PIXELFORMAT& format, int components);

private:
    bool _load(const char* bytes, std::size_t available, bool flipImage, bool headerOnly);
    static vDDSTexture _outline(int width, int height, int depth, int extraLevels);
    template <class Reader>
    vDDSTexture _read_face(Reader& reader, int width, int height, int depth, int extraLevels) const;

    std::size_t size_rgb(int width, int height) const;
    std::size_t size_dxtc(int width, int height) const;
    std::size_t size_bc6h(int width, int height) const;
    int clamp_size(int size) const;
    int get_line_width(int width, int bitsPerPixel) const;
    void swap_endian(void* value) const;

    static void _Swap(void* a, void* b, std::size_t n);
    static void _SwapMemcopy(void* a, void* b, std::size_t n);
    static void _SwapOptimized(void* a, void* b);

    static void flip_block_rows(char* row_data, unsigned xblocks, unsigned yblocks, unsigned block_size,
                                void (*flip_blocks)(TOZ::DXTColBlock*, int));
    static void flip_blocks_dxtc1(TOZ::DXTColBlock* blocks, int count);
    static void flip_blocks_dxtc3(TOZ::DXTColBlock* blocks, int count);
    static void flip_blocks_dxtc5(TOZ::DXTColBlock* blocks, int count);
    static void flip_dxt5_alpha(TOZ::DXT5AlphaBlock* block);
    static void flip_blocks_bc4(TOZ::BC4ColBlock* blocks, int count);
    static void flip_block_bc4(TOZ::BC4ColBlock& block);
    static void flip_blocks_bc5(TOZ::BC5ColBlock* blocks, int count);

    TOZ::SUPPORTED_FORMAT::Type format;
    int components;
    int bitsPerComponent;
    bool compressed;
    bool cubemap;
    bool volume;
    bool valid;
    std::vector<vDDSTexture> textures;
};

#if defined(_MSC_VER)
#pragma warning(pop)
#endif

#endif
