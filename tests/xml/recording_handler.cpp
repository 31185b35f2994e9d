// SPDX-License-Identifier: Apache-2.0

#include "xml/recording_handler.h"

#include <initializer_list>
#include <string_view>

namespace xml_tests {
namespace {

std::string_view view_of(const OXAUnicodeString& text) { return {text.ConvertToChar(), text.Length()}; }

std::string joined(std::initializer_list<std::string_view> pieces) {
    std::string all;
    for (const std::string_view piece : pieces) all += piece;
    return all;
}

std::string in_braces(const OXAUnicodeString& uri) {
    return uri.IsEmpty() ? std::string() : joined({"{", view_of(uri), "}"});
}

}  // namespace

std::string text_of(const OXAUnicodeString& text) { return {text.ConvertToChar(), text.Length()}; }

HRESULT RecordingHandler::StartDocument() {
    events.emplace_back("start document");
    return S_OK;
}

HRESULT RecordingHandler::EndDocument() {
    events.emplace_back("end document");
    return S_OK;
}

HRESULT RecordingHandler::StartElement(const OXAUnicodeString& uri, const OXAUnicodeString& localName,
                                       const OXAUnicodeString& qName,
                                       const OXAISAXAttributes_var& attributes) {
    std::string event = joined({"<", in_braces(uri), view_of(localName), " ", view_of(qName)});
    unsigned int count = 0;
    attributes->GetLength(count);
    for (unsigned int i = 0; i < count; ++i) {
        OXAUnicodeString name;
        OXAUnicodeString value;
        attributes->GetQName(i, name);
        attributes->GetValue(i, value);
        event += joined({" ", view_of(name), "=", view_of(value)});
    }
    events.push_back(event + ">");
    return S_OK;
}

HRESULT RecordingHandler::EndElement(const OXAUnicodeString& uri, const OXAUnicodeString& localName,
                                     const OXAUnicodeString& qName) {
    events.push_back(joined({"</", in_braces(uri), view_of(localName), " ", view_of(qName), ">"}));
    return S_OK;
}

HRESULT RecordingHandler::Characters(const OXAUnicodeString& chars) {
    const std::string start = "text ";
    if (events.empty() || events.back().rfind(start, 0) != 0) events.push_back(start);
    events.back() += text_of(chars);
    return S_OK;
}

HRESULT RecordingHandler::IgnorableWhiteSpace(const OXAUnicodeString& chars) {
    events.push_back(joined({"space ", std::to_string(chars.Length())}));
    return S_OK;
}

HRESULT RecordingHandler::ProcessingInstruction(const OXAUnicodeString& target,
                                                const OXAUnicodeString& data) {
    events.push_back(joined({"<?", view_of(target), " ", view_of(data), "?>"}));
    return S_OK;
}

HRESULT RecordingHandler::SetDocumentLocator(const OXAISAXLocator_var& given) {
    events.emplace_back("locator");
    locator = given;
    return S_OK;
}

HRESULT RecordingHandler::StartPrefixMapping(const OXAUnicodeString& prefix, const OXAUnicodeString& uri) {
    events.push_back(joined({"prefix ", view_of(prefix), "=", view_of(uri)}));
    return S_OK;
}

HRESULT RecordingHandler::EndPrefixMapping(const OXAUnicodeString& prefix) {
    events.push_back(joined({"end prefix ", view_of(prefix)}));
    return S_OK;
}

HRESULT RecordingHandler::NotationDecl(const OXAUnicodeString& name, const OXAUnicodeString& publicId,
                                       const OXAUnicodeString& systemId) {
    events.push_back(joined({"notation ", view_of(name), " ", view_of(publicId), " ", view_of(systemId)}));
    return S_OK;
}

HRESULT RecordingHandler::UnparsedEntityDecl(const OXAUnicodeString& name, const OXAUnicodeString& publicId,
                                             const OXAUnicodeString& systemId,
                                             const OXAUnicodeString& notationName) {
    events.push_back(joined({"unparsed ", view_of(name), " ", view_of(publicId), " ", view_of(systemId), " ",
                             view_of(notationName)}));
    return S_OK;
}

HRESULT RecordingHandler::Error(OXASAXParseException* exception) {
    note("error", *exception);
    return S_OK;
}

HRESULT RecordingHandler::FatalError(OXASAXParseException* exception) {
    note("fatal", *exception);
    return S_OK;
}

HRESULT RecordingHandler::Warning(OXASAXParseException* exception) {
    note("warning", *exception);
    return S_OK;
}

void RecordingHandler::note(const char* severity, const OXASAXParseException& exception) {
    problems.push_back({severity, exception.GetLineNumber(), exception.GetColumnNumber(),
                        text_of(exception.GetMessageW()), text_of(exception.GetSystemId())});
}

}  // namespace xml_tests
