// SPDX-License-Identifier: Apache-2.0

#include "output/PNGWriter.h"

#include <csetjmp>
#include <png.h>
#include <stdexcept>

#include "output/WholeFile.h"

namespace {

// Of the levels of compression.
constexpr int kFastest = 1;

void keep_error(png_structp png, png_const_charp message) {
    *static_cast<std::string*>(png_get_error_ptr(png)) = message;
    png_longjmp(png, 1);
}

void ignore_warning(png_structp, png_const_charp) {}

void append(png_structp png, png_bytep bytes, std::size_t size) {
    static_cast<WholeFile*>(png_get_io_ptr(png))->append(bytes, size);
}

void flush(png_structp) {}

}  // namespace

struct PNGWriter::State {
    explicit State(const std::string& path)
        : file(files.add(path)),
          png(png_create_write_struct(PNG_LIBPNG_VER_STRING, &error, keep_error, ignore_warning)) {}
    ~State() { png_destroy_write_struct(&png, &info); }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    // libpng leaves what fails by a jump, which must pass no object that has a destructor.
    template <class Calls>
    void run(Calls calls) {
        if (!png || setjmp(png_jmpbuf(png))) {
            throw std::runtime_error("the PNG file cannot be made: " + (png ? error : "libpng is too old"));
        }
        calls();
    }

    OutputFiles files;
    WholeFile& file;
    std::string error;
    png_structp png;
    png_infop info = nullptr;
};

PNGWriter::PNGWriter(const std::string& path, std::int64_t width, std::int64_t height)
    : state_(std::make_unique<State>(path)) {
    State& state = *state_;
    state.run([&] {
        state.info = png_create_info_struct(state.png);
        png_set_write_fn(state.png, &state.file, append, flush);
        png_set_IHDR(state.png, state.info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height),
                     8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                     PNG_FILTER_TYPE_DEFAULT);
        // A large sheet is to be written in about a second.
        png_set_compression_level(state.png, kFastest);
        png_set_filter(state.png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
        png_write_info(state.png, state.info);
    });
}

PNGWriter::~PNGWriter() = default;

void PNGWriter::write_row(const std::uint8_t* row) {
    state_->run([&] { png_write_row(state_->png, row); });
}

void PNGWriter::complete() {
    state_->run([&] { png_write_end(state_->png, nullptr); });
    state_->file.close();
    state_->files.complete();
}
