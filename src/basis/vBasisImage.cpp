// SPDX-License-Identifier: Apache-2.0

#include "vBasisImage.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>

#include "basis/Transcoder.h"

namespace {

using pelto::basis::BlockFormat;
using pelto::basis::FileView;
using pelto::basis::Transcoder;

// Runs `operation` with a transcoder of its own, which an exception leaves behind: the class promises that.
template <class Operation>
bool with_transcoder(FileView file, Operation operation) {
    Transcoder transcoder(file);
    try {
        return operation(transcoder);
    } catch (...) {
        transcoder.abandon();
        throw;
    }
}

bool start_with_2d_images(Transcoder& transcoder) {
    return transcoder.start() && transcoder.holds_2d_images();
}

BlockFormat block_format(TOZ::EUsageFormat usage) {
    switch (usage) {
        case TOZ::eUsageFormatBC1:
            return BlockFormat::kBC1;
        case TOZ::eUsageFormatBC4:
            return BlockFormat::kBC4;
        case TOZ::eUsageFormatBC5:
            return BlockFormat::kBC5;
        case TOZ::eUsageFormatBC3:
        case TOZ::eUsageFormatBC3Alt:
            break;
    }
    return BlockFormat::kBC3;
}

// Bytes are counted in signed 32 bits. A count that wraps to a negative number is an allocation that fails.
// Nothing where it wraps further: the buffer would be too small for its blocks.
std::optional<std::int32_t> byte_count(std::uint32_t blocks, BlockFormat format) {
    const std::uint64_t bytes = std::uint64_t{bytes_per_block(format)} * blocks;
    const auto count = static_cast<std::int32_t>(bytes);
    if (count >= 0 && static_cast<std::uint64_t>(count) != bytes) return std::nullopt;
    return count;
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
    return with_transcoder({_basisFileRawData, getBasisFileSize()}, [](Transcoder& transcoder) {
        return transcoder.start() && transcoder.has_valid_header();
    });
}

bool vBasisImage::getImage(unsigned int level, unsigned int slice, unsigned char*& image,
                           unsigned int& imageSize, EUsageFormat usage) const {
    return with_transcoder({_basisFileRawData, getBasisFileSize()}, [&](Transcoder& transcoder) {
        if (!start_with_2d_images(transcoder)) return false;
        const std::optional<pelto::basis::Level> found = transcoder.level(slice, level);
        if (!found) return false;

        const BlockFormat format = block_format(usage);
        const std::optional<std::int32_t> bytes = byte_count(found->blocks, format);
        if (!bytes) return false;
        unsigned char* const buffer = new unsigned char[static_cast<std::size_t>(*bytes)];
        const bool transcoded = transcoder.transcode(*found, format, buffer);
        image = transcoded ? buffer : nullptr;
        imageSize = static_cast<std::uint32_t>(*bytes);
        return transcoded;
    });
}

bool vBasisImage::_analysis() {
    return with_transcoder({_basisFileRawData, getBasisFileSize()}, [&](Transcoder& transcoder) {
        if (!start_with_2d_images(transcoder)) return false;
        _numSlices = static_cast<int>(transcoder.total_images());
        const std::optional<pelto::basis::ImageInfo> first = transcoder.image(0);
        if (!first) return false;
        _width = static_cast<int>(first->width);
        _height = static_cast<int>(first->height);
        _numMipLevels = static_cast<int>(first->levels);
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
