// SPDX-License-Identifier: Apache-2.0
// PNG files, written row after row.
#ifndef PELTO_TOOL_OUTPUT_PNG_WRITER_H
#define PELTO_TOOL_OUTPUT_PNG_WRITER_H

#include <cstdint>
#include <memory>
#include <string>

/// Writes a file of 8-bit red, green and blue that appears when it is complete; "-" is standard output. Each operation throws
/// std::runtime_error, which says what went wrong.
class PNGWriter {
public:
    PNGWriter(const std::string& path, std::int64_t width, std::int64_t height);
    ~PNGWriter();

    /// The next row, `width` pixels of three bytes.
    void write_row(const std::uint8_t* row);

    /// To be called after the last row.
    void complete();

private:
    struct State;
    std::unique_ptr<State> state_;
};

#endif
