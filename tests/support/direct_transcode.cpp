// SPDX-License-Identifier: Apache-2.0

#include "support/direct_transcode.h"

#include <basisu_transcoder.h>
#include <cstring>
#include <memory>
#include <optional>

#include "support/basis_file.h"

namespace support::direct {

namespace {

using basist::basisu_transcoder;

/// The file in a block of exactly its size, which a memory checker sees every read outside of.
class ExactBuffer {
public:
    explicit ExactBuffer(const Bytes& file)
        : size_(static_cast<std::uint32_t>(file.size())), data_(new unsigned char[file.size()]) {
        if (size_ != 0) std::memcpy(data_.get(), file.data(), file.size());
    }
    const unsigned char* data() const { return data_.get(); }
    std::uint32_t size() const { return size_; }

private:
    std::uint32_t size_;
    std::unique_ptr<unsigned char[]> data_;
};

std::unique_ptr<basisu_transcoder> new_transcoder() {
    basist::basisu_transcoder_init();
    return std::make_unique<basisu_transcoder>();
}

bool is_2d(basist::basis_texture_type type) {
    return type == basist::cBASISTexType2D || type == basist::cBASISTexType2DArray;
}

basist::transcoder_texture_format target(int usage) {
    switch (usage) {
        case 1:
            return basist::transcoder_texture_format::cTFBC1_RGB;
        case 4:
            return basist::transcoder_texture_format::cTFBC5_RG;
        case 5:
            return basist::transcoder_texture_format::cTFBC4_R;
        default:
            return basist::transcoder_texture_format::cTFBC3_RGBA;
    }
}

/// The first table entry of the slice and level, or the number of entries.
std::size_t find_slice(const Bytes& file, unsigned int level, unsigned int slice) {
    const std::size_t count = basis::total_slices(file);
    for (std::size_t i = 0; i < count; ++i) {
        if (basis::get(file, basis::of_slice(file, i, basis::slice::kImage)) == slice &&
            basis::get(file, basis::of_slice(file, i, basis::slice::kLevel)) == level)
            return i;
    }
    return count;
}

/// Whether telling about the level reads the table entry behind the last byte of the file: that of the alpha,
/// which is told from the colour's by its place alone.
bool alpha_entry_is_outside(const Bytes& file, std::size_t index) {
    if (basis::get(file, basis::header::kFormat) != basis::kFormatEtc1s) return false;
    if ((basis::get(file, basis::header::kFlags) & basis::kFlagAlphaSlices) == 0) return false;
    const basis::Field last_read = basis::of_slice(file, index + 1, basis::slice::kDataSize);
    return last_read.offset + last_read.width > file.size();
}

bool is_plain_astc(std::uint32_t format) {
    return format >= basis::kFormatAstc4x4 && format <= basis::kFormatAstc12x12;
}

/// Whether there are fewer bytes from the level's data to the end of the file than its blocks take, which the
/// transcoder counts on without a look.
bool astc_blocks_end_outside(const Bytes& file, std::size_t index, std::uint64_t blocks) {
    if (!is_plain_astc(basis::get(file, basis::header::kFormat))) return false;
    const std::uint64_t begin = basis::get(file, basis::of_slice(file, index, basis::slice::kDataOffset));
    return begin + blocks * 16 > file.size();
}

/// Whether rows of output blocks begin as far apart as the width in pixels says, while their number and
/// length are those of the rows in the file.
bool astc_rows_end_outside(const Bytes& file, std::size_t index, std::uint64_t blocks) {
    const std::uint32_t format = basis::get(file, basis::header::kFormat);
    if (format != basis::kFormatAstc4x4 && format != basis::kFormatXuastc4x4) return false;
    const auto field = [&](basis::Field f) -> std::uint64_t {
        return basis::get(file, basis::of_slice(file, index, f));
    };
    const std::uint64_t pitch = (field(basis::slice::kWidth) + 3) / 4;
    const std::uint64_t announced = pitch * ((field(basis::slice::kHeight) + 3) / 4);
    if (announced > blocks || blocks == 0) return false;
    return (field(basis::slice::kBlocksDown) - 1) * pitch + field(basis::slice::kBlocksAcross) > blocks;
}

/// Whether some output blocks may stay unwritten in a level that is transcoded.
bool may_leave_gaps(const Bytes& file) {
    return basis::get(file, basis::header::kFormat) > basis::kFormatUastc;
}

}  // namespace

std::size_t transcoder_size() { return sizeof(basisu_transcoder); }

void destroy_transcoder(void* transcoder) { delete static_cast<basisu_transcoder*>(transcoder); }

bool is_valid_header(const Bytes& file) {
    const ExactBuffer buffer(file);
    const auto transcoder = new_transcoder();
    return transcoder->start_transcoding(buffer.data(), buffer.size()) &&
           transcoder->validate_header(buffer.data(), buffer.size());
}

Analysis analyse(const Bytes& file, Analysis before) {
    const ExactBuffer buffer(file);
    const auto transcoder = new_transcoder();
    Analysis found = before;
    found.result = false;
    if (!transcoder->start_transcoding(buffer.data(), buffer.size())) return found;
    if (!is_2d(transcoder->get_texture_type(buffer.data(), buffer.size()))) return found;
    found.slices = static_cast<int>(transcoder->get_total_images(buffer.data(), buffer.size()));
    basist::basisu_image_info info;
    if (!transcoder->get_image_info(buffer.data(), buffer.size(), info, 0)) return found;
    found.width = static_cast<int>(info.m_width);
    found.height = static_cast<int>(info.m_height);
    found.levels = static_cast<int>(info.m_total_levels);
    found.result = true;
    return found;
}

Image image(const Bytes& file, unsigned int level, unsigned int slice, int usage) {
    const ExactBuffer buffer(file);
    const auto transcoder = new_transcoder();
    if (!transcoder->start_transcoding(buffer.data(), buffer.size())) return {};
    if (!is_2d(transcoder->get_texture_type(buffer.data(), buffer.size()))) return {};

    const std::size_t index = find_slice(file, level, slice);
    if (index < basis::total_slices(file) && slice < basis::total_images(file) &&
        alpha_entry_is_outside(file, index))
        return {End::kReadsOutside, 0, {}, {}};
    basist::basisu_image_level_info info;
    if (!transcoder->get_image_level_info(buffer.data(), buffer.size(), info, slice, level)) return {};

    const auto format = target(usage);
    const std::uint64_t bytes =
        std::uint64_t{basist::basis_get_bytes_per_block_or_pixel(format)} * info.m_total_blocks;
    const auto size = static_cast<std::int32_t>(static_cast<std::uint32_t>(bytes));
    if (size < 0) return {End::kNegativeSize, 0, {}, {}};
    if (static_cast<std::uint64_t>(size) != bytes) return {End::kWrappedSize, 0, {}, {}};
    const auto told = static_cast<unsigned int>(size);
    if (astc_blocks_end_outside(file, index, info.m_total_blocks)) return {End::kReadsOutside, told, {}, {}};
    if (astc_rows_end_outside(file, index, info.m_total_blocks)) return {End::kWritesOutside, told, {}, {}};

    const auto transcode_over = [&](unsigned char fill) {
        const std::unique_ptr<unsigned char[]> blocks(new unsigned char[told]);
        std::memset(blocks.get(), fill, told);
        const bool done =
            transcoder->transcode_image_level(buffer.data(), buffer.size(), slice, level, blocks.get(),
                                              info.m_total_blocks, format, 0, 0, nullptr, 0);
        return done ? std::optional<Bytes>(std::in_place, blocks.get(), blocks.get() + told) : std::nullopt;
    };
    const std::optional<Bytes> blocks = transcode_over(0x00);
    if (!blocks) return {End::kNotTranscoded, told, {}, {}};
    Bytes known;
    if (may_leave_gaps(file)) {
        const Bytes again = transcode_over(0xFF).value();
        known.resize(told);
        for (std::size_t i = 0; i < told; ++i) known[i] = again[i] == (*blocks)[i] ? 1 : 0;
    }
    return {End::kTranscoded, told, *blocks, known};
}

}  // namespace support::direct
