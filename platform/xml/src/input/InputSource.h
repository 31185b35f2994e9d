// SPDX-License-Identifier: Apache-2.0
// The input sources of the interface, and what the parser sees of them.
#ifndef INPUT_SOURCE_H
#define INPUT_SOURCE_H

#include <memory>
#include <optional>
#include <string>

#include "OXAISAXInputSource.h"
#include "input/ByteSource.h"
#include "text/text_defect.h"

namespace sax {

/// Names a stream and what is known of it.
struct StreamName {
    std::string public_id;
    std::string system_id;
    std::optional<Encoding> encoding;  ///< kUtf8, against what the text declares, or found out on reading
};

class InputSource final : public OXAISAXInputSource {
public:
    /// A file, and a text of the user's, which is UTF-8 and has no path.
    static OXAVar<InputSource> file(std::string path, std::string public_id);
    static OXAVar<InputSource> text(std::string utf8, std::string public_id);

    /// The content that the file at `path` had when it was read.
    static OXAVar<InputSource> snapshot(std::string path, std::string content, std::string public_id);

    HRESULT GetPublicId(OXAUnicodeString& publicId) override;
    HRESULT GetSystemId(OXAUnicodeString& systemId) override;

    const std::string& path() const { return path_; }
    StreamName name() const;

    /// The bytes from the first one on. Throws InputError.
    std::unique_ptr<ByteSource> open() const;

    /// The source itself, or a snapshot of the file, of `most` bytes at most. Throws InputError.
    OXAVar<InputSource> in_memory(std::size_t most) const;

private:
    InputSource(std::string path, std::shared_ptr<const std::string> content, std::string public_id);

    std::string path_;
    std::shared_ptr<const std::string> content_;  // null for a file
    std::string public_id_;
};

}  // namespace sax

#endif
