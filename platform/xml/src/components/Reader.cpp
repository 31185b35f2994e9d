// SPDX-License-Identifier: Apache-2.0

#include "components/Reader.h"

#include <cstring>
#include <string_view>
#include <utility>

#include "OXASAXXMLReaderOptions.h"
#include "events/ProblemReport.h"
#include "parser/parse_document.h"
#include "text/text.h"

namespace sax {

Reader::Reader(std::shared_ptr<const XercesPlatform> platform)
    : platform_(std::move(platform)),
      schema_loader_(*this),
      locator_(OXAVar<ParseLocator>::Adopt(new ParseLocator)) {}

HRESULT Reader::QueryInterface(const GUID& classId, void** object) {
    if (classId != OXAIXMLSchemaLoader::ClassId()) return OXABaseUnknown::QueryInterface(classId, object);
    if (!object) return E_POINTER;
    AddRef();
    *object = static_cast<OXAIXMLSchemaLoader*>(&schema_loader_);
    return S_OK;
}

OXABaseUnknown* Reader::QueryInterface(const char* className) {
    if (!className || std::strcmp(className, OXAIXMLSchemaLoader::ClassName()) != 0) {
        return OXABaseUnknown::QueryInterface(className);
    }
    AddRef();
    return &schema_loader_;
}

bool* Reader::feature(const OXAUnicodeString& name) {
    const std::string_view text(name.ConvertToChar(), name.Length());
    if (text == OXASAXXMLReaderOptions::ValidationFeature) return &features_.validation;
    if (text == OXASAXXMLReaderOptions::NamespacesFeature) return &features_.namespaces;
    if (text == OXASAXXMLReaderOptions::NamespacePrefixFeature) return &features_.namespace_prefixes;
    return nullptr;
}

HRESULT Reader::SetFeature(const OXAUnicodeString& name, bool value) {
    bool* found = feature(name);
    if (!found) return E_NOTIMPL;
    *found = value;
    return S_OK;
}

HRESULT Reader::GetFeature(const OXAUnicodeString& name, bool& value) {
    const bool* found = feature(name);
    if (!found) return E_NOTIMPL;
    value = *found;
    return S_OK;
}

HRESULT Reader::SetContentHandler(const OXAISAXContentHandler_var& handler) {
    content_ = handler;
    return S_OK;
}

HRESULT Reader::SetErrorHandler(const OXAISAXErrorHandler_var& handler) {
    errors_ = handler;
    return S_OK;
}

/// Calls `read` with the source and a report of its problems. Reader, source and handlers live until it is
/// done, whatever a callback releases.
template <class Read>
HRESULT Reader::read(const OXAISAXInputSource_var& source, Read read) {
    if (source.IsNull()) return E_POINTER;
    if (is_reading_) return E_FAIL;
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the caller's may be reset meanwhile
    const OXAISAXInputSource_var kept_source(source);
    const auto* input = dynamic_cast<const InputSource*>(kept_source.Get());
    if (!input) return E_NOINTERFACE;

    const OXAVar<Reader> self(this);
    struct Reading {
        explicit Reading(bool& flag) : flag_(flag) { flag_ = true; }
        ~Reading() { flag_ = false; }
        bool& flag_;
    };
    const Reading reading(is_reading_);
    ProblemReport report(errors_, *locator_.Get());
    locator_->set({});
    return read(*input, report) ? S_OK : E_FAIL;
}

HRESULT Reader::Parse(const OXAISAXInputSource_var& source) {
    return read(source, [this](const InputSource& input, ProblemReport& report) {
        ParseOptions options;
        options.features = features_;
        options.handler = content_;
        if (!options.handler.IsNull()) options.handler->SetDocumentLocator(OXAISAXLocator_var(locator_));
        options.schemas = schemas_.pool();
        parse_document(input, options, report);
        return !report.is_fatal();
    });
}

HRESULT Reader::load_schema(const OXAUnicodeString& key, const OXAISAXInputSource_var& source) {
    return read(source, [&](const InputSource& input, ProblemReport& report) {
        schemas_.load(to_string(key), input, report);
        return !report.has_errors();
    });
}

HRESULT Reader::clear_schemas() {
    if (is_reading_) return E_FAIL;
    schemas_.clear();
    return S_OK;
}

}  // namespace sax
