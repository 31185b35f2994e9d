// SPDX-License-Identifier: Apache-2.0
// A texture file that is opened once: its headers first, then its bytes.
#ifndef PELTO_TOOL_TEXTURE_TEXTURE_FILE_H
#define PELTO_TOOL_TEXTURE_TEXTURE_FILE_H

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vTextureInfo.h>
#include <vector>

using TextureBytes = std::shared_ptr<const std::vector<unsigned char>>;

class TextureFile {
public:
    /// Opens the file and reads its headers. Throws std::runtime_error, which says why that cannot be done.
    explicit TextureFile(const std::string& path);

    std::uint64_t length() const { return length_; }

    /// What the headers of a DDS file promise, whatever the file holds. Of other files, the container alone.
    const vTextureInfo& promise() const { return promise_; }

    /// The whole file; of a DDS file, at least as much of it as its headers promise; the start of a file that
    /// is no texture file. Read by the first call, and closed then.
    TextureBytes bytes();

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::vector<unsigned char> read(std::uint64_t most);
    std::uint64_t useful_bytes() const;

    std::unique_ptr<std::FILE, Close> file_;
    std::uint64_t length_ = 0;
    vTextureInfo promise_;
    TextureBytes bytes_;
};

#endif
