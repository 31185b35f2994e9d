// SPDX-License-Identifier: Apache-2.0
// A .basis file in the Basis Universal transcoder, which believes what a file says. Whatever would lead it
// outside the file or its own memory is refused here first.
#ifndef PELTO_BASIS_TRANSCODER_H
#define PELTO_BASIS_TRANSCODER_H

#include <cstdint>
#include <memory>
#include <optional>

namespace basist {
class basisu_transcoder;
}

namespace pelto::basis {

/// The bytes of a file. They stay their owner's, who keeps them while a Transcoder looks at them.
struct FileView {
    const unsigned char* data;  ///< may be null
    std::uint32_t size;
};

/// What a level is transcoded to: blocks of 4 x 4 pixels.
enum class BlockFormat { kBC1, kBC3, kBC4, kBC5 };

std::uint32_t bytes_per_block(BlockFormat format);

struct ImageInfo {
    std::uint32_t width;  ///< pixels of level 0, rounded up to whole blocks
    std::uint32_t height;
    std::uint32_t levels;
};

/// A level that is safe to transcode.
struct Level {
    std::uint32_t image;
    std::uint32_t level;
    std::uint32_t blocks;
};

/// Safe on any bytes. Distinct objects may be used on several threads, one object on one at a time.
class Transcoder {
public:
    /// Takes the transcoder's memory, in one block, and looks at nothing yet. The first of the process also
    /// sets the transcoder's own tables up (some 30 ms); other threads wait for that.
    explicit Transcoder(FileView file);
    ~Transcoder();
    Transcoder(const Transcoder&) = delete;
    Transcoder& operator=(const Transcoder&) = delete;

    /// Decodes the file's codebooks. False for what is no .basis file, is cut short, or would be unsafe; all
    /// other operations are for a file that has been started.
    bool start();

    /// Whether all of the header is in order, of which start needs only a part.
    bool has_valid_header() const;

    /// Whether the file is a 2D texture or an array of them.
    bool holds_2d_images() const;

    std::uint32_t total_images() const;

    /// Nothing where there is no such image.
    std::optional<ImageInfo> image(std::uint32_t index) const;

    /// Nothing where there is no such level, or where it is unsafe to transcode.
    std::optional<Level> level(std::uint32_t image, std::uint32_t level) const;

    /// Writes the blocks of the level, row after row, to `out`, which has room for level.blocks of them.
    /// False where the level's data are damaged, or have no such form; `out` may have been written to even
    /// so.
    bool transcode(const Level& level, BlockFormat format, unsigned char* out);

    /// Gives the transcoder's memory up, without releasing it.
    void abandon() noexcept;

private:
    FileView file_;
    std::unique_ptr<basist::basisu_transcoder> transcoder_;
};

}  // namespace pelto::basis

#endif
