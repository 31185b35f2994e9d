// SPDX-License-Identifier: Apache-2.0
// From the parser's error handler to the report.
#ifndef ERROR_RELAY_H
#define ERROR_RELAY_H

#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>

#include "events/Document.h"

namespace sax {

/// Reports what the parser finds wrong with a document. Too many problems throw Refusal.
class ErrorRelay final : public xercesc::ErrorHandler {
public:
    /// The document outlives the relay.
    explicit ErrorRelay(Document& document) : document_(document) {}

    void warning(const xercesc::SAXParseException& exception) override;
    void error(const xercesc::SAXParseException& exception) override;
    void fatalError(const xercesc::SAXParseException& exception) override;
    void resetErrors() override;

private:
    Document& document_;
};

}  // namespace sax

#endif
