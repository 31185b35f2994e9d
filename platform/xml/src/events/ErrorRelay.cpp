#include "events/ErrorRelay.h"

#include <utility>

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

ErrorRelay::ErrorRelay(OXAISAXErrorHandler_var handler, ParseLocator& locator)
    : handler_(std::move(handler)), locator_(locator) {}

void ErrorRelay::refuse(const Refusal& refusal) {
    locator_.set(refusal.position);
    if (fatal_) return;
    errors_ = fatal_ = true;
    const Position& at = refusal.position;
    pass(&OXAISAXErrorHandler::FatalError,
         OXASAXParseException(to_unicode(refusal.message), at.line, at.column, to_unicode(at.public_id),
                              to_unicode(at.system_id)));
}

void ErrorRelay::warn(const std::string& message) {
    if (!pass_warnings_) return;
    const Position at = locator_.position();
    pass(&OXAISAXErrorHandler::Warning,
         OXASAXParseException(to_unicode(message), at.line, at.column, to_unicode(at.public_id),
                              to_unicode(at.system_id)));
}

void ErrorRelay::warning(const xercesc::SAXParseException& exception) {
    count();
    if (pass_warnings_) pass(&OXAISAXErrorHandler::Warning, converted(exception));
}

void ErrorRelay::error(const xercesc::SAXParseException& exception) {
    count();
    errors_ = true;
    pass(&OXAISAXErrorHandler::Error, converted(exception));
}

void ErrorRelay::fatalError(const xercesc::SAXParseException& exception) {
    locator_.remember();
    if (fatal_) return;
    errors_ = fatal_ = true;
    pass(&OXAISAXErrorHandler::FatalError, converted(exception));
}

void ErrorRelay::resetErrors() {}

void ErrorRelay::count() {
    if (const char* exceeded = cost_ ? cost_->problem() : nullptr)
        throw Refusal{exceeded, locator_.position()};
}

void ErrorRelay::pass(Operation operation, OXASAXParseException exception) {
    if (handler_.IsNull()) return;
    locator_.around([&] { (handler_.Get()->*operation)(&exception); });
}

}  // namespace sax
