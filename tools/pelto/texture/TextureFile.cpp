// SPDX-License-Identifier: Apache-2.0
#include "texture/TextureFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace {

// At least the headers of a DDS file.
constexpr std::uint64_t kStart = 1024;

// The library says best why a file cannot be opened.
[[noreturn]] void fail_to_open(const std::string& path) {
    const vTextureInfo info = vTextureInfo::ReadFile(path);
    throw std::runtime_error(info.Described() ? "cannot be opened" : info.problem.sentence);
}

}  // namespace

TextureFile::TextureFile(const std::string& path) {
    // Opening a pipe would wait for its other end.
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) fail_to_open(path);
    length_ = std::filesystem::file_size(path, error);
    if (!error) file_.reset(std::fopen(path.c_str(), "rb"));
    if (!file_) fail_to_open(path);
    const std::vector<unsigned char> start = read(kStart);
    promise_ = vTextureInfo::ReadBuffer(start.data(), start.size());
}

TextureBytes TextureFile::bytes() {
    if (!bytes_) {
        bytes_ = std::make_shared<const std::vector<unsigned char>>(read(useful_bytes()));
        file_.reset();
    }
    return bytes_;
}

// From the start; fewer where the file has become shorter.
std::vector<unsigned char> TextureFile::read(std::uint64_t most) {
    std::vector<unsigned char> bytes(static_cast<std::size_t>(std::min(most, length_)));
    std::rewind(file_.get());
    errno = 0;
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file_.get()));
    if (std::ferror(file_.get())) {
        throw std::runtime_error(std::string("cannot be read: ") + std::strerror(errno));
    }
    return bytes;
}

// A row takes four times its bytes at most, where rows are padded to four bytes.
std::uint64_t TextureFile::useful_bytes() const {
    if (promise_.container == vTextureInfo::eNoContainer) return kStart;
    if (promise_.container != vTextureInfo::eDDS) return length_;
    const std::uint64_t promised = std::max(promise_.bytes, promise_.check.totalBytes);
    return promised < length_ ? kStart + 1024 + 4 * promised : length_;
}
