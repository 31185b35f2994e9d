// SPDX-License-Identifier: Apache-2.0

#include "limits/ParseLocator.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "text/text.h"

namespace sax {

int to_int(std::uint64_t number) {
    constexpr std::uint64_t most = std::numeric_limits<int>::max();
    return static_cast<int>(std::min(number, most));
}

HRESULT ParseLocator::GetLineNumber(int& line) {
    line = locator_ ? to_int(locator_->getLineNumber()) : last_.line;
    return S_OK;
}

HRESULT ParseLocator::GetColumnNumber(int& column) {
    column = locator_ ? to_int(locator_->getColumnNumber()) : last_.column;
    return S_OK;
}

HRESULT ParseLocator::GetPublicId(OXAUnicodeString& publicId) {
    if (locator_) {
        assign(publicId, locator_->getPublicId());
    } else {
        publicId = to_unicode(last_.public_id);
    }
    return S_OK;
}

HRESULT ParseLocator::GetSystemId(OXAUnicodeString& systemId) {
    if (locator_) {
        assign(systemId, locator_->getSystemId());
    } else {
        systemId = to_unicode(last_.system_id);
    }
    return S_OK;
}

void ParseLocator::follow(const xercesc::Locator& locator) { locator_ = &locator; }

Position ParseLocator::position() const {
    if (!locator_) return last_;
    return {to_int(locator_->getLineNumber()), to_int(locator_->getColumnNumber()),
            to_utf8(locator_->getPublicId()), to_utf8(locator_->getSystemId())};
}

void ParseLocator::remember() { set(position()); }

void ParseLocator::set(Position position) {
    last_ = std::move(position);
    leave();
}

void ParseLocator::leave() { locator_ = nullptr; }

}  // namespace sax
