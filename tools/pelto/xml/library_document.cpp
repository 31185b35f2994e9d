// SPDX-License-Identifier: Apache-2.0
#include "xml/library_document.h"

#include <OXAIXMLSAX2Factory.h>
#include <OXAIXMLSchemaLoader.h>
#include <OXASAXXMLReaderOptions.h>
#include <optional>
#include <stdexcept>

#include "embedded.h"
#include "xml/readable_document.h"

namespace {

// vSAXReader takes schemas from files alone; the framework below it takes texts too.
class DocumentReader {
public:
    explicit DocumentReader(const OXAVar<LibraryHandler>& handler) : handler_(handler) {
        CreateOXAIXMLSAX2Factory(factory_, CLSID_XML4C_SAX);
        if (!factory_ || FAILED(factory_->CreateXMLReader(reader_)) || !reader_) {
            throw std::runtime_error("the XML parser cannot be set up");
        }
        reader_->SetFeature(OXASAXXMLReaderOptions::ValidationFeature, true);
        reader_->SetFeature(OXASAXXMLReaderOptions::NamespacesFeature, true);
        reader_->SetContentHandler(OXAISAXContentHandler_var(handler.Get()));
        reader_->SetErrorHandler(OXAISAXErrorHandler_var(handler.Get()));
        const OXAUnicodeString text(reinterpret_cast<const char*>(library_schema));
        OXAISAXInputSource_var schema;
        factory_->CreateInputSourceFromText(text, OXAUnicodeString(), schema);
        load(schema);
    }

    // In the place of the command's own, unless it has errors.
    void load_schema(const std::string& path) {
        with_file(path, [&](const OXAISAXInputSource_var& source) { return load(source); });
    }

    void parse(const std::string& path) {
        with_file(path, [&](const OXAISAXInputSource_var& source) { return reader_->Parse(source); });
    }

private:
    HRESULT load(const OXAISAXInputSource_var& source) {
        const OXAIXMLSchemaLoader_var loader(reader_);
        return loader->LoadGrammar(kLibraryNamespace, source);
    }

    template <class Read>
    void with_file(const std::string& path, const Read& read) {
        if (const std::optional<std::string> reason = why_unreadable(path)) {
            complain(path, *reason);
            return;
        }
        handler_->document = path;
        OXAISAXInputSource_var source;
        factory_->CreateInputSourceFromFile(path.c_str(), OXAUnicodeString(), source);
        if (FAILED(read(source)) && !has_errors(handler_->problems)) complain(path, "cannot be read");
    }

    void complain(const std::string& path, const std::string& why) {
        handler_->problems.push_back({path, 0, 0, Severity::kFatalError, why});
    }

    OXAVar<LibraryHandler> handler_;
    OXAIXMLSAX2Factory_var factory_;
    OXAISAXXMLReader_var reader_;
};

}  // namespace

OXAVar<LibraryHandler> read_library_document(const std::string& document, const std::string& schema) {
    auto handler = OXAVar<LibraryHandler>::Adopt(new LibraryHandler);
    DocumentReader reader(handler);
    if (!schema.empty()) reader.load_schema(schema);
    try {
        reader.parse(document);
    } catch (const NotALibrary&) {
        // Its problems say so.
    }
    return handler;
}
