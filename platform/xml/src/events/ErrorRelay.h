// From the parser's error handler to the interface's.
#ifndef ERROR_RELAY_H
#define ERROR_RELAY_H

#include <utility>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>

#include "OXAISAXErrorHandler.h"
#include "limits/DocumentCost.h"
#include "limits/ParseLocator.h"
#include "limits/Refusal.h"

namespace sax {

/// Hears of every problem, with a handler or without, and passes it on: of fatal errors the first alone.
class ErrorRelay final : public xercesc::ErrorHandler {
public:
    ErrorRelay(OXAISAXErrorHandler_var handler, ParseLocator& locator);

    bool has_errors() const { return errors_; }  ///< fatal ones count too
    bool is_fatal() const { return fatal_; }

    /// From here on problems count for the document of `cost`, or, where it is null, for none; returns the
    /// one before. Too many of them throw Refusal.
    DocumentCost* count_for(DocumentCost* cost) { return std::exchange(cost_, cost); }

    /// Says whether warnings are passed on.
    void pass_warnings(bool pass) { pass_warnings_ = pass; }

    /// Reports the refusal as a fatal error, which the locator then stands at.
    void refuse(const Refusal& refusal);

    void warn(const std::string& message);

    void warning(const xercesc::SAXParseException& exception) override;
    void error(const xercesc::SAXParseException& exception) override;
    void fatalError(const xercesc::SAXParseException& exception) override;
    void resetErrors() override;

private:
    using Operation = HRESULT (OXAISAXErrorHandler::*)(OXASAXParseException*);
    void count();
    void pass(Operation operation, OXASAXParseException exception);

    OXAISAXErrorHandler_var handler_;
    ParseLocator& locator_;
    DocumentCost* cost_ = nullptr;
    bool pass_warnings_ = true;
    bool errors_ = false;
    bool fatal_ = false;
};

}  // namespace sax

#endif
