// SPDX-License-Identifier: Apache-2.0
// print_events <PATHS: parses the file on each line of the input with one reader, all features on, and writes
// its events, as expat_events.py tells the same of another parser.
//
// The fields of an event end with U+001F, an event with U+001E, a document with U+001D, none of which XML
// allows in a document. The last event of a document is "ok" with the number of errors that are not fatal, or
// "fatal" with line, column, file and message.
#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "OXASAX.h"

namespace {

std::string text_of(const OXAUnicodeString& text) { return {text.ConvertToChar(), text.Length()}; }

std::string field(const OXAUnicodeString& text) { return text_of(text).append("\x1f"); }

class EventPrinter final : public OXASAXDefaultHandler {
public:
    explicit EventPrinter(OXAIXMLSAX2Factory& factory) { factory.CreateInputSourceFromText("", "", empty_); }

    void begin() {
        in_text_ = false;
        ended_ = false;
        errors_ = 0;
        fatals_.clear();
    }

    void end(HRESULT result) {
        end_text();
        if (result == S_OK && fatals_.empty() && ended_) {
            write("ok\x1f" + std::to_string(errors_) + "\x1f");
        } else if (result == E_FAIL && fatals_.size() == 1 && !ended_) {
            write(fatals_[0]);
        } else {
            write("contradiction\x1f");
        }
        // Whole documents, so that it is known in which one the program ends.
        std::cout << '\x1d' << std::flush;
    }

    HRESULT EndDocument() override {
        ended_ = true;
        return S_OK;
    }

    HRESULT StartElement(const OXAUnicodeString& uri, const OXAUnicodeString& localName,
                         const OXAUnicodeString& qName, const OXAISAXAttributes_var& attributes) override {
        std::string event = "start\x1f" + field(uri) + field(localName) + field(qName);
        unsigned int count = 0;
        attributes->GetLength(count);
        for (unsigned int i = 0; i < count; ++i) {
            OXAUnicodeString name;
            OXAUnicodeString attribute_uri;
            OXAUnicodeString local;
            OXAUnicodeString value;
            attributes->GetQName(i, name);
            attributes->GetURI(i, attribute_uri);
            attributes->GetLocalName(i, local);
            attributes->GetValue(i, value);
            event += field(name) + field(attribute_uri) + field(local) + field(value);
        }
        return report(event);
    }

    HRESULT EndElement(const OXAUnicodeString& uri, const OXAUnicodeString& localName,
                       const OXAUnicodeString& qName) override {
        return report("end\x1f" + field(uri) + field(localName) + field(qName));
    }

    HRESULT Characters(const OXAUnicodeString& chars) override {
        if (!in_text_) std::cout << "text\x1f";
        in_text_ = true;
        std::cout.write(chars.ConvertToChar(), static_cast<std::streamsize>(chars.Length()));
        return S_OK;
    }

    /// White space is text for a parser that does not validate.
    HRESULT IgnorableWhiteSpace(const OXAUnicodeString& chars) override { return Characters(chars); }

    HRESULT ProcessingInstruction(const OXAUnicodeString& target, const OXAUnicodeString& data) override {
        return report("instruction\x1f" + field(target) + field(data));
    }

    HRESULT StartPrefixMapping(const OXAUnicodeString& prefix, const OXAUnicodeString& uri) override {
        return report("prefix\x1f" + field(prefix) + field(uri));
    }

    HRESULT EndPrefixMapping(const OXAUnicodeString& prefix) override {
        return report("end prefix\x1f" + field(prefix));
    }

    HRESULT NotationDecl(const OXAUnicodeString& name, const OXAUnicodeString& publicId,
                         const OXAUnicodeString& systemId) override {
        return report("notation\x1f" + field(name) + field(publicId) + field(systemId));
    }

    HRESULT UnparsedEntityDecl(const OXAUnicodeString& name, const OXAUnicodeString& publicId,
                               const OXAUnicodeString& systemId,
                               const OXAUnicodeString& notationName) override {
        return report("unparsed\x1f" + field(name) + field(publicId) + field(systemId) + field(notationName));
    }

    /// What has a URL is taken for empty; the rest is for the rules of the reader.
    HRESULT ResolveEntity(const OXAUnicodeString& /*publicId*/, const OXAUnicodeString& systemId,
                          OXAISAXInputSource_var& source) override {
        if (text_of(systemId).find(':') != std::string::npos) source = empty_;
        return S_OK;
    }

    HRESULT Error(OXASAXParseException* /*exception*/) override {
        ++errors_;
        return S_OK;
    }

    HRESULT FatalError(OXASAXParseException* exception) override {
        std::string message = text_of(exception->GetMessageW());
        // It may cite what the document must not have.
        std::replace_if(
            message.begin(), message.end(), [](char c) { return c >= 0 && c < ' '; }, '?');
        fatals_.push_back("fatal\x1f" + std::to_string(exception->GetLineNumber()) + "\x1f" +
                          std::to_string(exception->GetColumnNumber()) + "\x1f" +
                          field(exception->GetSystemId()) + message + "\x1f");
        return S_OK;
    }

private:
    HRESULT report(const std::string& event) {
        end_text();
        write(event);
        return S_OK;
    }

    void end_text() {
        if (in_text_) write("\x1f");
        in_text_ = false;
    }

    static void write(const std::string& event) { std::cout << event << '\x1e'; }

    OXAISAXInputSource_var empty_;
    bool in_text_ = false;
    bool ended_ = false;
    int errors_ = 0;
    std::vector<std::string> fatals_;
};

}  // namespace

int main() {
    OXAIXMLSAX2Factory_var factory;
    OXAISAXXMLReader_var reader;
    if (FAILED(CreateOXAIXMLSAX2Factory(factory, CLSID_XML4C_SAX))) return 1;
    if (FAILED(factory->CreateXMLReader(reader))) return 1;
    reader->SetFeature(OXASAXXMLReaderOptions::ValidationFeature, true);
    reader->SetFeature(OXASAXXMLReaderOptions::NamespacesFeature, true);
    reader->SetFeature(OXASAXXMLReaderOptions::NamespacePrefixFeature, true);
    const auto printer = OXAVar<EventPrinter>::Adopt(new EventPrinter(*factory.Get()));
    reader->SetContentHandler(OXAISAXContentHandler_var(printer));
    reader->SetErrorHandler(OXAISAXErrorHandler_var(printer));

    std::ios::sync_with_stdio(false);
    for (std::string path; std::getline(std::cin, path);) {
        OXAISAXInputSource_var source;
        factory->CreateInputSourceFromFile(path.c_str(), "", source);
        printer->begin();
        printer->end(reader->Parse(source));
    }
    return std::cout.flush() ? 0 : 1;
}
