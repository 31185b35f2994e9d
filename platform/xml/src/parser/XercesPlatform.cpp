// SPDX-License-Identifier: Apache-2.0

#include "parser/XercesPlatform.h"

#include <stdexcept>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include "text/text.h"

namespace sax {

std::shared_ptr<const XercesPlatform> XercesPlatform::acquire() {
    static const std::shared_ptr<const XercesPlatform> platform(new XercesPlatform);
    return platform;
}

XercesPlatform::XercesPlatform() {
    try {
        xercesc::XMLPlatformUtils::Initialize();
    } catch (const xercesc::XMLException& e) {
        throw std::runtime_error(to_utf8(e.getMessage()));
    }
}

XercesPlatform::~XercesPlatform() { xercesc::XMLPlatformUtils::Terminate(); }

}  // namespace sax
