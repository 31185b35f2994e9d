// SPDX-License-Identifier: Apache-2.0

#include "input/ByteSource.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

#include "input/InputError.h"

namespace sax {
namespace {

[[noreturn]] void fail(const char* what, const std::string& path, const std::string& reason) {
    throw InputError(std::string(what) + " \"" + path + "\": " + reason);
}

std::string last_error() { return std::generic_category().message(errno); }

class FileBytes final : public ByteSource {
public:
    explicit FileBytes(const std::string& path) : path_(path) {
        // Others, such as a pipe or a device, could wait or go on without end.
        if (path.find('\0') != std::string::npos) fail("cannot open", path, "not a valid path");
        std::error_code error;
        const auto status = std::filesystem::status(path, error);
        if (error) fail("cannot open", path, error.message());
        if (!std::filesystem::is_regular_file(status)) fail("cannot open", path, "not a regular file");
        file_.reset(std::fopen(path.c_str(), "rb"));
        if (!file_) fail("cannot open", path, last_error());
        // Reads are large, and go to where the bytes are wanted.
        std::setvbuf(file_.get(), nullptr, _IONBF, 0);
    }

    std::size_t read(unsigned char* target, std::size_t capacity) override {
        const std::size_t count = std::fread(target, 1, capacity, file_.get());
        if (count < capacity && std::ferror(file_.get())) fail("cannot read", path_, last_error());
        return count;
    }

    void rewind() override { std::rewind(file_.get()); }

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::string path_;
    std::unique_ptr<std::FILE, Close> file_;
};

class MemoryBytes final : public ByteSource {
public:
    explicit MemoryBytes(std::shared_ptr<const std::string> bytes) : bytes_(std::move(bytes)) {}

    std::size_t read(unsigned char* target, std::size_t capacity) override {
        const std::size_t count = std::min(capacity, bytes_->size() - offset_);
        std::copy_n(bytes_->data() + offset_, count, target);
        offset_ += count;
        return count;
    }

    void rewind() override { offset_ = 0; }

private:
    std::shared_ptr<const std::string> bytes_;
    std::size_t offset_ = 0;
};

}  // namespace

std::unique_ptr<ByteSource> open_file(const std::string& path) { return std::make_unique<FileBytes>(path); }

std::unique_ptr<ByteSource> open_memory(std::shared_ptr<const std::string> bytes) {
    return std::make_unique<MemoryBytes>(std::move(bytes));
}

std::string read_file(const std::string& path, std::size_t most) {
    FileBytes file(path);
    std::string bytes;
    constexpr std::size_t step = 65'536;
    for (;;) {
        const std::size_t before = bytes.size();
        bytes.resize(before + step);
        const std::size_t count = file.read(reinterpret_cast<unsigned char*>(bytes.data()) + before, step);
        bytes.resize(before + count);
        if (bytes.size() > most) fail("cannot read", path, "too large");
        if (count < step) return bytes;
    }
}

}  // namespace sax
