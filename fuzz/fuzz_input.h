// SPDX-License-Identifier: Apache-2.0
// Numbers drawn from the bytes of an input, front to back; zero where there are no more.
#ifndef FUZZ_FUZZ_INPUT_H
#define FUZZ_FUZZ_INPUT_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    std::uint8_t byte() {
        if (size_ == 0) return 0;
        --size_;
        return *data_++;
    }

    std::uint32_t number() {
        std::uint32_t value = 0;
        for (int i = 0; i < 4; ++i) value = value << 8 | byte();
        return value;
    }

    /// What has not been drawn.
    const std::uint8_t* rest() const { return data_; }
    std::size_t rest_size() const { return size_; }

private:
    const std::uint8_t* data_;
    std::size_t size_;
};

/// Ends the program where a property does not hold: a finding.
inline void require(bool holds, const char* property) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", property);
    std::abort();
}

#endif
