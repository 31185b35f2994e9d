#include "vBasisImage.h"

#include <basisu_transcoder.h>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>

namespace {

using basist::basisu_transcoder;
using basist::transcoder_texture_format;

// A held file as the transcoder takes it.
struct HeldFile {
    const unsigned char* data;
    std::uint32_t size;
};

// Runs `operation` with a transcoder of its own. An exception from it leaves the transcoder behind.
template <class Operation>
bool with_transcoder(Operation operation) {
    basist::basisu_transcoder_init();
    basisu_transcoder* const transcoder = new basisu_transcoder();
    const bool result = operation(*transcoder);
    delete transcoder;
    return result;
}

// A Huffman table of a single symbol with a long code has a tree that lacks a side: bits that lead there lead
// its decoder out of the tree.
bool stays_in_its_tree(const basist::huffman_decoding_table& table) {
    // Its depth is at most six levels of two nodes, and it has room for at least two nodes for each symbol.
    if (table.get_code_sizes().size() >= 6) return true;
    const auto nodes = static_cast<int>(table.get_tree().size());
    const auto children_exist = [&](int node) { return node >= 0 || ~node + 1 < nodes; };
    return std::all_of(table.get_lookup().begin(), table.get_lookup().end(), children_exist) &&
           std::all_of(table.get_tree().begin(), table.get_tree().end(), children_exist);
}

// One that cannot be read is for the transcoder to refuse.
bool tables_can_be_trusted(basist::bitwise_decoder& decoder, int count) {
    basist::huffman_decoding_table table;
    for (int i = 0; i < count && decoder.read_huffman_table(table); ++i) {
        if (!stays_in_its_tree(table)) return false;
    }
    return true;
}

// A decoder of a section of the file. Nothing for one outside the file, which is for the transcoder to
// refuse.
std::optional<basist::bitwise_decoder> decoder_of(HeldFile file, std::uint32_t offset, std::uint32_t size) {
    if (offset > file.size || size > file.size - offset) return std::nullopt;
    basist::bitwise_decoder decoder;
    if (!decoder.init(file.data + offset, size)) return std::nullopt;
    return decoder;
}

// Of an ETC1S file: whether the tables are sound that starting it decodes the codebooks with. They lie at the
// start of the two sections.
bool codebooks_can_be_trusted(HeldFile file) {
    if (file.size <= sizeof(basist::basis_file_header)) return true;
    const auto& header = *reinterpret_cast<const basist::basis_file_header*>(file.data);
    if (header.m_tex_format != static_cast<std::uint32_t>(basist::basis_tex_format::cETC1S)) return true;

    auto endpoints = decoder_of(file, header.m_endpoint_cb_file_ofs, header.m_endpoint_cb_file_size);
    if (endpoints && !tables_can_be_trusted(*endpoints, 4)) return false;
    auto selectors = decoder_of(file, header.m_selector_cb_file_ofs, header.m_selector_cb_file_size);
    constexpr std::uint32_t kBitsOfOtherKinds = 3;  // without a table, or not supported
    return !selectors || selectors->get_bits(kBitsOfOtherKinds) != 0 || tables_can_be_trusted(*selectors, 1);
}

// The tables that slices are decoded with are read while a file is started, and kept where only the
// transcoder looks. To read them once more costs up to a third of the start, so they are looked at there: an
// explicit instantiation may name private members.
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

bool slice_tables_can_be_trusted(const basisu_transcoder& transcoder) {
    const Etc1s& etc1s = transcoder.get_lowlevel_etc1s_decoder();
    return stays_in_its_tree(endpoint_prediction_table(etc1s)) &&
           stays_in_its_tree(endpoint_delta_table(etc1s)) && stays_in_its_tree(selector_table(etc1s)) &&
           stays_in_its_tree(selector_run_table(etc1s));
}

bool start(basisu_transcoder& transcoder, HeldFile file) {
    return file.data && codebooks_can_be_trusted(file) && transcoder.start_transcoding(file.data, file.size);
}

bool holds_2d_images(const basisu_transcoder& transcoder, HeldFile file) {
    const basist::basis_texture_type type = transcoder.get_texture_type(file.data, file.size);
    return type == basist::cBASISTexType2D || type == basist::cBASISTexType2DArray;
}

// In an ETC1S file with alpha the transcoder looks for the level's alpha in the entry after its colour's in
// the table of slices, even where that was the last entry. False where it would look outside the file.
// For a file that transcoding was started on.
bool alpha_entry_is_in_file(HeldFile file, std::uint32_t slice, std::uint32_t level) {
    using basist::basis_slice_desc;
    const auto& header = *reinterpret_cast<const basist::basis_file_header*>(file.data);
    const bool etc1s = header.m_tex_format == static_cast<std::uint32_t>(basist::basis_tex_format::cETC1S);
    if (!etc1s || !(header.m_flags & basist::cBASISHeaderFlagHasAlphaSlices)) return true;

    const std::size_t table = header.m_slice_desc_file_ofs;
    const std::size_t entries = header.m_total_slices;
    constexpr std::size_t kBytesLookedAt = offsetof(basis_slice_desc, m_slice_data_crc16);
    if (table + entries * sizeof(basis_slice_desc) + kBytesLookedAt <= file.size) return true;

    const auto* const entry = reinterpret_cast<const basis_slice_desc*>(file.data + table);
    std::size_t colour = 0;
    while (colour < entries &&
           !(entry[colour].m_image_index == slice && entry[colour].m_level_index == level)) {
        ++colour;
    }
    return colour + 1 != entries;
}

// The transcoder takes it on trust that all blocks of an ASTC slice are in the file, and that the slice's
// extent in pixels, by which it places the rows of a slice of 4x4 blocks, is no wider than its blocks. False
// where it would read or write elsewhere.
bool slice_can_be_trusted(basist::basis_tex_format codec, const basist::basisu_image_level_info& info,
                          HeldFile file) {
    constexpr std::uint64_t kBytesPerASTCBlock = 16;
    const std::uint64_t blocks = std::uint64_t{info.m_num_blocks_x} * info.m_num_blocks_y;
    const bool astc = basist::basis_tex_format_is_astc_ldr(codec);
    if (astc && info.m_rgb_file_ofs + kBytesPerASTCBlock * blocks > file.size) return false;

    if (!astc && !basist::basis_tex_format_is_xuastc_ldr(codec)) return true;
    if (info.m_block_width != 4 || info.m_block_height != 4 || blocks == 0) return true;
    const std::uint64_t row_pitch = (info.m_orig_width + 3) / 4;
    return (info.m_num_blocks_y - 1) * row_pitch + info.m_num_blocks_x <= blocks;
}

transcoder_texture_format target_format(TOZ::EUsageFormat usage) {
    switch (usage) {
        case TOZ::eUsageFormatBC1:
            return transcoder_texture_format::cTFBC1_RGB;
        case TOZ::eUsageFormatBC4:
            return transcoder_texture_format::cTFBC4_R;
        case TOZ::eUsageFormatBC5:
            return transcoder_texture_format::cTFBC5_RG;
        case TOZ::eUsageFormatBC3:
        case TOZ::eUsageFormatBC3Alt:
            break;
    }
    return transcoder_texture_format::cTFBC3_RGBA;
}

}  // namespace

namespace TOZ {

vBasisImage::vBasisImage()
    : _basisFileRawData(nullptr), _basisFileSize(0), _width(0), _height(0), _numSlices(0), _numMipLevels(0) {}

vBasisImage::~vBasisImage() {
    delete[] _basisFileRawData;
    _basisFileRawData = nullptr;
    _basisFileSize = 0;
}

vBasisImage& vBasisImage::operator=(const vBasisImage& other) = default;

bool vBasisImage::load(const char* path) {
    return _loadFullFile(path, _basisFileRawData, _basisFileSize) && _analysis();
}

void vBasisImage::setBasisFileRawData(const unsigned char* data, unsigned int size) {
    delete[] _basisFileRawData;
    _basisFileRawData = data;
    _basisFileSize = static_cast<int>(size);
    _analysis();
}

const unsigned char* vBasisImage::getBasisFileRawData() const { return _basisFileRawData; }

unsigned int vBasisImage::getBasisFileSize() const { return static_cast<unsigned int>(_basisFileSize); }

int vBasisImage::getWidth() const { return _width; }

int vBasisImage::getHeight() const { return _height; }

int vBasisImage::getNumSlices() const { return _numSlices; }

int vBasisImage::getNumMipLevels() const { return _numMipLevels; }

bool vBasisImage::isValidHeader() const {
    const HeldFile file{_basisFileRawData, getBasisFileSize()};
    return with_transcoder([&](basisu_transcoder& transcoder) {
        return start(transcoder, file) && transcoder.validate_header(file.data, file.size);
    });
}

bool vBasisImage::getImage(unsigned int level, unsigned int slice, unsigned char*& image,
                           unsigned int& imageSize, EUsageFormat usage) const {
    const HeldFile file{_basisFileRawData, getBasisFileSize()};
    return with_transcoder([&](basisu_transcoder& transcoder) {
        if (!start(transcoder, file) || !holds_2d_images(transcoder, file)) return false;
        basist::basisu_image_level_info info;
        if (!slice_tables_can_be_trusted(transcoder) || !alpha_entry_is_in_file(file, slice, level) ||
            !transcoder.get_image_level_info(file.data, file.size, info, slice, level)) {
            return false;
        }
        if (!slice_can_be_trusted(transcoder.get_basis_tex_format(file.data, file.size), info, file))
            return false;

        const transcoder_texture_format target = target_format(usage);
        const std::uint64_t bytes =
            std::uint64_t{basist::basis_get_bytes_per_block_or_pixel(target)} * info.m_total_blocks;
        // The count is signed 32-bit. One that wraps to a negative number is an allocation that fails; one
        // that wraps further would be a buffer too small for its blocks.
        const auto byte_count = static_cast<std::int32_t>(bytes);
        if (byte_count >= 0 && static_cast<std::uint64_t>(byte_count) != bytes) return false;
        const auto allocation_size = static_cast<std::size_t>(byte_count);
        unsigned char* const buffer = new unsigned char[allocation_size];

        const bool transcoded = transcoder.transcode_image_level(
            file.data, file.size, slice, level, buffer, info.m_total_blocks, target, 0, 0, nullptr, 0);
        image = transcoded ? buffer : nullptr;
        imageSize = static_cast<std::uint32_t>(byte_count);
        return transcoded;
    });
}

bool vBasisImage::_analysis() {
    const HeldFile file{_basisFileRawData, getBasisFileSize()};
    return with_transcoder([&](basisu_transcoder& transcoder) {
        if (!start(transcoder, file) || !holds_2d_images(transcoder, file)) return false;
        _numSlices = static_cast<int>(transcoder.get_total_images(file.data, file.size));
        basist::basisu_image_info info;
        if (!transcoder.get_image_info(file.data, file.size, info, 0)) return false;
        _width = static_cast<int>(info.m_width);
        _height = static_cast<int>(info.m_height);
        _numMipLevels = static_cast<int>(info.m_total_levels);
        return true;
    });
}

bool vBasisImage::_loadFullFile(const char* path, const unsigned char*& data, int& size) const {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path, "rb"), &std::fclose);
    if (!file) return false;
    std::fseek(file.get(), 0, SEEK_END);
    const long length = std::ftell(file.get());
    std::fseek(file.get(), 0, SEEK_SET);
    const auto allocation_size = static_cast<std::size_t>(length);
    unsigned char* const bytes = new unsigned char[allocation_size];
    const std::size_t read = std::fread(bytes, 1, allocation_size, file.get());
    std::memset(bytes + read, 0, allocation_size - read);
    data = bytes;
    size = static_cast<int>(length);
    return true;
}

}  // namespace TOZ
