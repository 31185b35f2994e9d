// SPDX-License-Identifier: Apache-2.0
// vSAXDefaultBuffer's reads of arrays against a plain model that calls strtol, strtof and strtod.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz_input.h"
#include "sax/array_read.h"

namespace {

template <class T>
void compare(vSAXDefaultBuffer& buffer, const std::string& text, int count) {
    const std::size_t room = text.size() + 16;  // a token has at least one character
    require(sax::read<T>(buffer, count, room) == sax::expected_read<T>(text, count, room),
            "values and exceptions are those of the plain model");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const int count = static_cast<int>(input.byte() % 16) - 1;
    // Its text ends at its first zero, as the buffer's does.
    const std::string bytes(input.rest(), input.rest() + input.rest_size());
    const std::string text = bytes.c_str();
    vSAXDefaultBuffer buffer;
    buffer.SetBuffer(text.c_str());
    compare<int>(buffer, text, count);
    compare<float>(buffer, text, count);
    compare<double>(buffer, text, count);
    return 0;
}
