// SPDX-License-Identifier: Apache-2.0
// A buffer that keeps what its hooks are told.
#ifndef TESTS_SAX_RECORDING_BUFFER_H
#define TESTS_SAX_RECORDING_BUFFER_H

#include <string>
#include <utility>
#include <vector>

#include "vSAXDefaultBuffer.h"

namespace sax {

/// Value and type name, as LogError gets them.
using Errors = std::vector<std::pair<std::string, std::string>>;

class RecordingBuffer : public vSAXDefaultBuffer {
public:
    RecordingBuffer() = default;
    explicit RecordingBuffer(const OXAUnicodeString& text) { SetBuffer(text); }

    mutable Errors errors;
    mutable std::vector<std::string> messages;

protected:
    void Log(const char* message) const override { messages.emplace_back(message); }
    void LogError(const char* value, const char* typeName) const override {
        errors.emplace_back(value, typeName);
    }
};

/// The buffer's text as it stands.
inline std::string text_of(const RecordingBuffer& buffer) {
    // The boolean read reports a text that is no boolean as it is.
    buffer.errors.clear();
    bool value = false;
    if (buffer.GetBoolean(value)) return value ? "true" : "false";
    std::string text = buffer.errors.back().first;
    buffer.errors.clear();
    return text;
}

}  // namespace sax

#endif
