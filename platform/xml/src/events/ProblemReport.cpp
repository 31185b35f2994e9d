// SPDX-License-Identifier: Apache-2.0

#include "events/ProblemReport.h"

#include <utility>

#include "text/text.h"

namespace sax {
namespace {

OXASAXParseException problem_at(const Position& at, const std::string& message) {
    return OXASAXParseException(to_unicode(message), at.line, at.column, to_unicode(at.public_id),
                                to_unicode(at.system_id));
}

}  // namespace

ProblemReport::ProblemReport(OXAISAXErrorHandler_var handler, ParseLocator& locator)
    : handler_(std::move(handler)), locator_(locator) {}

void ProblemReport::warn(const OXASAXParseException& problem) {
    if (pass_warnings_) pass(&OXAISAXErrorHandler::Warning, problem);
}

void ProblemReport::warn(const std::string& message) { warn(problem_at(locator_.position(), message)); }

void ProblemReport::error(const OXASAXParseException& problem) {
    errors_ = true;
    pass(&OXAISAXErrorHandler::Error, problem);
}

void ProblemReport::fatal_error(const OXASAXParseException& problem) {
    locator_.remember();
    if (fatal_) return;
    errors_ = fatal_ = true;
    pass(&OXAISAXErrorHandler::FatalError, problem);
}

void ProblemReport::refuse(const Refusal& refusal) {
    locator_.set(refusal.position);
    fatal_error(problem_at(refusal.position, refusal.message));
}

void ProblemReport::pass(Operation operation, OXASAXParseException problem) {
    if (handler_.IsNull()) return;
    locator_.around([&] { (handler_.Get()->*operation)(&problem); });
}

}  // namespace sax
