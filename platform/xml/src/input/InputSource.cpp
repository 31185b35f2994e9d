// SPDX-License-Identifier: Apache-2.0

#include "input/InputSource.h"

#include <utility>

#include "text/text.h"

namespace sax {

OXAVar<InputSource> InputSource::file(std::string path, std::string public_id) {
    return OXAVar<InputSource>::Adopt(new InputSource(std::move(path), nullptr, std::move(public_id)));
}

OXAVar<InputSource> InputSource::text(std::string utf8, std::string public_id) {
    return snapshot("", std::move(utf8), std::move(public_id));
}

OXAVar<InputSource> InputSource::snapshot(std::string path, std::string content, std::string public_id) {
    auto shared = std::make_shared<const std::string>(std::move(content));
    return OXAVar<InputSource>::Adopt(
        new InputSource(std::move(path), std::move(shared), std::move(public_id)));
}

InputSource::InputSource(std::string path, std::shared_ptr<const std::string> content, std::string public_id)
    : path_(std::move(path)), content_(std::move(content)), public_id_(std::move(public_id)) {}

HRESULT InputSource::GetPublicId(OXAUnicodeString& publicId) {
    publicId = to_unicode(public_id_);
    return S_OK;
}

HRESULT InputSource::GetSystemId(OXAUnicodeString& systemId) {
    systemId = to_unicode(path_);
    return S_OK;
}

StreamName InputSource::name() const {
    const bool is_text = content_ && path_.empty();
    return {public_id_, path_, is_text ? std::optional(Encoding::kUtf8) : std::nullopt};
}

std::unique_ptr<ByteSource> InputSource::open() const {
    return content_ ? open_memory(content_) : open_file(path_);
}

OXAVar<InputSource> InputSource::in_memory(std::size_t most) const {
    auto content = content_ ? content_ : std::make_shared<const std::string>(read_file(path_, most));
    return OXAVar<InputSource>::Adopt(new InputSource(path_, std::move(content), public_id_));
}

}  // namespace sax
