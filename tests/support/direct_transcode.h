// SPDX-License-Identifier: Apache-2.0
// What the transcoder itself says about a .basis file: the calls that vBasisImage makes, in its order, made
// directly on a transcoder of the test program's own.
#ifndef TESTS_SUPPORT_DIRECT_TRANSCODE_H
#define TESTS_SUPPORT_DIRECT_TRANSCODE_H

#include <cstddef>

#include "support/bytes.h"

namespace support::direct {

/// Bytes of the class `basisu_transcoder`.
std::size_t transcoder_size();

/// Destroys a transcoder, which a call of vBasisImage that ran out of memory has left behind.
void destroy_transcoder(void* transcoder);

bool is_valid_header(const Bytes& file);

/// What an analysis of the file gives. Fields that it does not reach keep their initial values.
struct Analysis {
    bool result = false;
    int width = 0;
    int height = 0;
    int slices = 0;
    int levels = 0;
};
Analysis analyse(const Bytes& file, Analysis before = {});

enum class End {
    kRefused,        // no such file, type, slice or level: nothing is written
    kNotTranscoded,  // the size is told, but there are no blocks
    kTranscoded,     // blocks
    kNegativeSize,   // the byte count, as a signed 32-bit number, is negative: no such buffer
    kWrappedSize,    // the byte count wraps around to less than the blocks need
    kReadsOutside,   // the transcoder would read outside the file, or may
    kWritesOutside,  // the transcoder would write outside the buffer
};

struct Image {
    End end = End::kRefused;
    unsigned int size = 0;
    Bytes blocks;
    Bytes known;  // empty, or nonzero for each byte of the blocks that the transcoder has written
};

/// Level `level` of image `slice` for a usage value. Where the transcoder cannot be called safely it is not.
Image image(const Bytes& file, unsigned int level, unsigned int slice, int usage);

}  // namespace support::direct

#endif
