// SPDX-License-Identifier: Apache-2.0

#include "events/ErrorRelay.h"

#include "text/text.h"

namespace sax {
namespace {

OXASAXParseException converted(const xercesc::SAXParseException& exception) {
    OXAUnicodeString message;
    OXAUnicodeString public_id;
    OXAUnicodeString system_id;
    assign(message, exception.getMessage());
    assign(public_id, exception.getPublicId());
    assign(system_id, exception.getSystemId());
    return OXASAXParseException(message, to_int(exception.getLineNumber()),
                                to_int(exception.getColumnNumber()), public_id, system_id);
}

}  // namespace

void ErrorRelay::warning(const xercesc::SAXParseException& exception) {
    document_.charge(document_.cost().problem());
    document_.report().warn(converted(exception));
}

void ErrorRelay::error(const xercesc::SAXParseException& exception) {
    document_.charge(document_.cost().problem());
    document_.report().error(converted(exception));
}

void ErrorRelay::fatalError(const xercesc::SAXParseException& exception) {
    document_.report().fatal_error(converted(exception));
}

void ErrorRelay::resetErrors() {}

}  // namespace sax
