// SPDX-License-Identifier: Apache-2.0
// A handler that records every call.
#ifndef TESTS_XML_RECORDING_HANDLER_H
#define TESTS_XML_RECORDING_HANDLER_H

#include <atomic>
#include <string>
#include <vector>

#include "OXASAX.h"

namespace xml_tests {

std::string text_of(const OXAUnicodeString& text);

/// One call of an error handler.
struct Problem {
    std::string severity;  // "error", "fatal" or "warning"
    int line;
    int column;
    std::string message;
    std::string system_id;
};

class RecordingHandler : public OXASAXDefaultHandler {
public:
    RecordingHandler() { ++live; }

    /// Every event in a line of its own, in one notation; neighbouring pieces of text are one event.
    std::vector<std::string> events;
    std::vector<Problem> problems;
    OXAISAXLocator_var locator;

    /// Handlers that live now.
    static inline std::atomic<int> live = 0;

    HRESULT StartDocument() override;
    HRESULT EndDocument() override;
    HRESULT StartElement(const OXAUnicodeString& uri, const OXAUnicodeString& localName,
                         const OXAUnicodeString& qName, const OXAISAXAttributes_var& attributes) override;
    HRESULT EndElement(const OXAUnicodeString& uri, const OXAUnicodeString& localName,
                       const OXAUnicodeString& qName) override;
    HRESULT Characters(const OXAUnicodeString& chars) override;
    HRESULT IgnorableWhiteSpace(const OXAUnicodeString& chars) override;
    HRESULT ProcessingInstruction(const OXAUnicodeString& target, const OXAUnicodeString& data) override;
    HRESULT SetDocumentLocator(const OXAISAXLocator_var& given) override;
    HRESULT StartPrefixMapping(const OXAUnicodeString& prefix, const OXAUnicodeString& uri) override;
    HRESULT EndPrefixMapping(const OXAUnicodeString& prefix) override;
    HRESULT NotationDecl(const OXAUnicodeString& name, const OXAUnicodeString& publicId,
                         const OXAUnicodeString& systemId) override;
    HRESULT UnparsedEntityDecl(const OXAUnicodeString& name, const OXAUnicodeString& publicId,
                               const OXAUnicodeString& systemId,
                               const OXAUnicodeString& notationName) override;
    HRESULT Error(OXASAXParseException* exception) override;
    HRESULT FatalError(OXASAXParseException* exception) override;
    HRESULT Warning(OXASAXParseException* exception) override;

protected:
    ~RecordingHandler() override { --live; }

private:
    void note(const char* severity, const OXASAXParseException& exception);
};

}  // namespace xml_tests

#endif
