// SPDX-License-Identifier: Apache-2.0
// What the reader reports to an error handler.
#ifndef PROBLEM_REPORT_H
#define PROBLEM_REPORT_H

#include <string>

#include "OXAISAXErrorHandler.h"
#include "limits/ParseLocator.h"
#include "limits/Refusal.h"

namespace sax {

/// The problems of one call of the reader. It sees them all, with a handler or without, and passes them on:
/// of fatal errors only the first.
class ProblemReport {
public:
    /// The locator outlives the report.
    ProblemReport(OXAISAXErrorHandler_var handler, ParseLocator& locator);

    ParseLocator& locator() { return locator_; }

    bool has_errors() const { return errors_; }  ///< fatal ones count too
    bool is_fatal() const { return fatal_; }

    /// Says whether warnings are passed on from here on.
    void pass_warnings(bool pass) { pass_warnings_ = pass; }

    void warn(const OXASAXParseException& problem);
    void warn(const std::string& message);  ///< at the locator's position
    void error(const OXASAXParseException& problem);

    /// The parse ends where the locator is.
    void fatal_error(const OXASAXParseException& problem);

    /// Reports the refusal as a fatal error, and leaves the locator at its position.
    void refuse(const Refusal& refusal);

private:
    using Operation = HRESULT (OXAISAXErrorHandler::*)(OXASAXParseException*);
    void pass(Operation operation, OXASAXParseException problem);

    OXAISAXErrorHandler_var handler_;
    ParseLocator& locator_;
    bool pass_warnings_ = true;
    bool errors_ = false;
    bool fatal_ = false;
};

}  // namespace sax

#endif
