// SPDX-License-Identifier: Apache-2.0

#include "basis/Transcoder.h"

#include <algorithm>
#include <basisu_transcoder.h>
#include <cstddef>

#include "basis/basis_header.h"

namespace pelto::basis {

namespace {

using basist::basisu_transcoder;
using basist::transcoder_texture_format;

void initialise_once() {
    static const bool done = (basist::basisu_transcoder_init(), true);
    static_cast<void>(done);
}

// Guard: the Huffman decoder must not leave its tree.
//
// Its tree is an array of pairs of nodes. In a table of a single symbol with a long code the last pair has
// only the side that the code leads to: bits that lead to the other side are read behind the array.
bool tree_is_whole(const basist::huffman_decoding_table& table) {
    // The longest code needs six pairs. There is room for a pair for each symbol, so six symbols are enough.
    if (table.get_code_sizes().size() >= 6) return true;
    const auto nodes = static_cast<int>(table.get_tree().size());
    const auto pair_exists = [&](int node) { return node >= 0 || ~node + 1 < nodes; };
    return std::all_of(table.get_lookup().begin(), table.get_lookup().end(), pair_exists) &&
           std::all_of(table.get_tree().begin(), table.get_tree().end(), pair_exists);
}

// A table that cannot be read ends the look: the transcoder refuses it by itself.
bool next_trees_are_whole(basist::bitwise_decoder& decoder, int count) {
    basist::huffman_decoding_table table;
    for (int i = 0; i < count && decoder.read_huffman_table(table); ++i) {
        if (!tree_is_whole(table)) return false;
    }
    return true;
}

// Nothing where the section is outside the file: the transcoder refuses that by itself.
std::optional<basist::bitwise_decoder> decoder_of(FileView file, Section section) {
    if (section.end() > file.size) return std::nullopt;
    basist::bitwise_decoder decoder;
    if (!decoder.init(file.data + section.offset, section.bytes)) return std::nullopt;
    return decoder;
}

// Guard: tree_is_whole for the tables that the codebooks of an ETC1S file are decoded with, at the start.
// They lie at the beginning of its two sections.
bool codebooks_are_safe(FileView file) {
    if (file.size < kHeaderSize) return true;
    const Header header = read_header(file.data);
    if (!header.is_etc1s()) return true;

    auto endpoints = decoder_of(file, header.endpoints);
    if (endpoints && !next_trees_are_whole(*endpoints, 4)) return false;
    auto selectors = decoder_of(file, header.selectors);
    constexpr std::uint32_t kBitsOfOtherKinds = 3;  // raw, or not supported: neither has a table
    return !selectors || selectors->get_bits(kBitsOfOtherKinds) != 0 || next_trees_are_whole(*selectors, 1);
}

// The tables that slices are decoded with are read at the start too, and kept in private members. To read
// them once more would cost up to a third of the start, so they are looked at there: an explicit
// instantiation may name private members.
using Etc1s = basist::basisu_lowlevel_etc1s_transcoder;
const basist::huffman_decoding_table& endpoint_prediction_table(const Etc1s& etc1s);
const basist::huffman_decoding_table& endpoint_delta_table(const Etc1s& etc1s);
const basist::huffman_decoding_table& selector_table(const Etc1s& etc1s);
const basist::huffman_decoding_table& selector_run_table(const Etc1s& etc1s);

template <auto kPrediction, auto kDelta, auto kSelector, auto kRun>
struct TablesOf {
    friend const basist::huffman_decoding_table& endpoint_prediction_table(const Etc1s& etc1s) {
        return etc1s.*kPrediction;
    }
    friend const basist::huffman_decoding_table& endpoint_delta_table(const Etc1s& etc1s) {
        return etc1s.*kDelta;
    }
    friend const basist::huffman_decoding_table& selector_table(const Etc1s& etc1s) {
        return etc1s.*kSelector;
    }
    friend const basist::huffman_decoding_table& selector_run_table(const Etc1s& etc1s) {
        return etc1s.*kRun;
    }
};
template struct TablesOf<&Etc1s::m_endpoint_pred_model, &Etc1s::m_delta_endpoint_model,
                         &Etc1s::m_selector_model, &Etc1s::m_selector_history_buf_rle_model>;

// Guard: tree_is_whole for the tables that slices are decoded with.
bool slice_tables_are_safe(const basisu_transcoder& transcoder) {
    const Etc1s& etc1s = transcoder.get_lowlevel_etc1s_decoder();
    return tree_is_whole(endpoint_prediction_table(etc1s)) && tree_is_whole(endpoint_delta_table(etc1s)) &&
           tree_is_whole(selector_table(etc1s)) && tree_is_whole(selector_run_table(etc1s));
}

// Guard: the entry of a level's alpha must be in the file.
//
// In an ETC1S file with alpha the transcoder reads the entry behind the colour's, even where the colour's is
// the last of the table, and the table the last of the file.
bool alpha_entry_is_in_file(FileView file, std::uint32_t image, std::uint32_t level) {
    const Header header = read_header(file.data);
    if (!header.has_alpha_entries()) return true;
    const std::uint64_t entry_behind = header.slice_entry(header.total_slices);
    if (entry_behind + slice_field::kDataSize.end() <= file.size) return true;

    std::uint32_t colour = 0;
    for (; colour < header.total_slices; ++colour) {
        const unsigned char* const entry = file.data + header.slice_entry(colour);
        if (number_at(entry, slice_field::kImage) == image && number_at(entry, slice_field::kLevel) == level)
            break;
    }
    return colour + 1 != header.total_slices;
}

// Guard: all blocks of a slice of plain ASTC must be in the file. The transcoder reads as many as the table
// says, wherever the file ends.
bool stored_blocks_are_in_file(basist::basis_tex_format codec, const basist::basisu_image_level_info& info,
                               FileView file) {
    constexpr std::uint64_t kBytesPerASTCBlock = 16;
    if (!basist::basis_tex_format_is_astc_ldr(codec)) return true;
    return info.m_rgb_file_ofs + kBytesPerASTCBlock * info.m_total_blocks <= file.size;
}

// Guard: all rows of a slice must be in the output. With blocks of 4x4 pixels, ASTC's and XUASTC's rows begin
// as far apart as the slice's width in pixels says, while the output has room for its blocks.
bool rows_are_in_output(basist::basis_tex_format codec, const basist::basisu_image_level_info& info) {
    if (!basist::basis_tex_format_is_astc_ldr(codec) && !basist::basis_tex_format_is_xuastc_ldr(codec)) {
        return true;
    }
    if (info.m_block_width != 4 || info.m_block_height != 4 || info.m_total_blocks == 0) return true;
    const std::uint64_t row_pitch = (info.m_orig_width + 3) / 4;
    return (info.m_num_blocks_y - 1) * row_pitch + info.m_num_blocks_x <= info.m_total_blocks;
}

transcoder_texture_format target_of(BlockFormat format) {
    switch (format) {
        case BlockFormat::kBC1:
            return transcoder_texture_format::cTFBC1_RGB;
        case BlockFormat::kBC3:
            return transcoder_texture_format::cTFBC3_RGBA;
        case BlockFormat::kBC4:
            return transcoder_texture_format::cTFBC4_R;
        case BlockFormat::kBC5:
            break;
    }
    return transcoder_texture_format::cTFBC5_RG;
}

}  // namespace

std::uint32_t bytes_per_block(BlockFormat format) {
    return basist::basis_get_bytes_per_block_or_pixel(target_of(format));
}

Transcoder::Transcoder(FileView file) : file_(file) {
    initialise_once();
    transcoder_ = std::make_unique<basisu_transcoder>();
}

Transcoder::~Transcoder() = default;

bool Transcoder::start() {
    return file_.data && codebooks_are_safe(file_) && transcoder_->start_transcoding(file_.data, file_.size);
}

bool Transcoder::has_valid_header() const { return transcoder_->validate_header(file_.data, file_.size); }

bool Transcoder::holds_2d_images() const {
    const basist::basis_texture_type type = transcoder_->get_texture_type(file_.data, file_.size);
    return type == basist::cBASISTexType2D || type == basist::cBASISTexType2DArray;
}

std::uint32_t Transcoder::total_images() const {
    return transcoder_->get_total_images(file_.data, file_.size);
}

std::optional<ImageInfo> Transcoder::image(std::uint32_t index) const {
    basist::basisu_image_info info;
    if (!transcoder_->get_image_info(file_.data, file_.size, info, index)) return std::nullopt;
    return ImageInfo{info.m_width, info.m_height, info.m_total_levels};
}

std::optional<Level> Transcoder::level(std::uint32_t image, std::uint32_t level) const {
    basist::basisu_image_level_info info;
    if (!slice_tables_are_safe(*transcoder_) || !alpha_entry_is_in_file(file_, image, level) ||
        !transcoder_->get_image_level_info(file_.data, file_.size, info, image, level)) {
        return std::nullopt;
    }
    const basist::basis_tex_format codec = transcoder_->get_basis_tex_format(file_.data, file_.size);
    if (!stored_blocks_are_in_file(codec, info, file_) || !rows_are_in_output(codec, info)) {
        return std::nullopt;
    }
    return Level{image, level, info.m_total_blocks};
}

bool Transcoder::transcode(const Level& level, BlockFormat format, unsigned char* out) {
    return transcoder_->transcode_image_level(file_.data, file_.size, level.image, level.level, out,
                                              level.blocks, target_of(format), 0, 0, nullptr, 0);
}

void Transcoder::abandon() noexcept { static_cast<void>(transcoder_.release()); }

}  // namespace pelto::basis
