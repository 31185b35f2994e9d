// SPDX-License-Identifier: Apache-2.0

#include "OXASAXDefaultHandler.h"

#include <cstring>

#include "components/TearOff.h"
#include "components/meta_class.h"

OXA_DEFINE_META_CLASS(OXASAXDefaultHandler, OXABaseUnknown)

namespace {

class ContentInterface final : public sax::TearOff<OXAISAXContentHandler> {
public:
    explicit ContentInterface(OXASAXDefaultHandler& handler) : TearOff(handler), handler_(handler) {}

    HRESULT StartDocument() override { return handler_.StartDocument(); }
    HRESULT EndDocument() override { return handler_.EndDocument(); }
    HRESULT StartElement(const OXAUnicodeString& uri, const OXAUnicodeString& localName,
                         const OXAUnicodeString& qName, const OXAISAXAttributes_var& attributes) override {
        return handler_.StartElement(uri, localName, qName, attributes);
    }
    HRESULT EndElement(const OXAUnicodeString& uri, const OXAUnicodeString& localName,
                       const OXAUnicodeString& qName) override {
        return handler_.EndElement(uri, localName, qName);
    }
    HRESULT Characters(const OXAUnicodeString& chars) override { return handler_.Characters(chars); }
    HRESULT IgnorableWhiteSpace(const OXAUnicodeString& chars) override {
        return handler_.IgnorableWhiteSpace(chars);
    }
    HRESULT ProcessingInstruction(const OXAUnicodeString& target, const OXAUnicodeString& data) override {
        return handler_.ProcessingInstruction(target, data);
    }
    HRESULT SetDocumentLocator(const OXAISAXLocator_var& locator) override {
        return handler_.SetDocumentLocator(locator);
    }
    HRESULT StartPrefixMapping(const OXAUnicodeString& prefix, const OXAUnicodeString& uri) override {
        return handler_.StartPrefixMapping(prefix, uri);
    }
    HRESULT EndPrefixMapping(const OXAUnicodeString& prefix) override {
        return handler_.EndPrefixMapping(prefix);
    }
    HRESULT SkippedEntity(const OXAUnicodeString& name) override { return handler_.SkippedEntity(name); }
    HRESULT NotationDecl(const OXAUnicodeString& name, const OXAUnicodeString& publicId,
                         const OXAUnicodeString& systemId) override {
        return handler_.NotationDecl(name, publicId, systemId);
    }
    HRESULT UnparsedEntityDecl(const OXAUnicodeString& name, const OXAUnicodeString& publicId,
                               const OXAUnicodeString& systemId,
                               const OXAUnicodeString& notationName) override {
        return handler_.UnparsedEntityDecl(name, publicId, systemId, notationName);
    }
    HRESULT ResolveEntity(const OXAUnicodeString& publicId, const OXAUnicodeString& systemId,
                          OXAISAXInputSource_var& source) override {
        return handler_.ResolveEntity(publicId, systemId, source);
    }

private:
    OXASAXDefaultHandler& handler_;
};

class ErrorInterface final : public sax::TearOff<OXAISAXErrorHandler> {
public:
    explicit ErrorInterface(OXASAXDefaultHandler& handler) : TearOff(handler), handler_(handler) {}

    HRESULT Error(OXASAXParseException* exception) override { return handler_.Error(exception); }
    HRESULT FatalError(OXASAXParseException* exception) override { return handler_.FatalError(exception); }
    HRESULT Warning(OXASAXParseException* exception) override { return handler_.Warning(exception); }

private:
    OXASAXDefaultHandler& handler_;
};

}  // namespace

struct OXASAXDefaultHandler::_Interfaces {
    explicit _Interfaces(OXASAXDefaultHandler& handler) : content(handler), errors(handler) {}

    ContentInterface content;
    ErrorInterface errors;
};

OXASAXDefaultHandler::OXASAXDefaultHandler() : _interfaces(std::make_unique<_Interfaces>(*this)) {}

OXASAXDefaultHandler::~OXASAXDefaultHandler() = default;

HRESULT OXASAXDefaultHandler::QueryInterface(const GUID& classId, void** object) {
    OXABaseUnknown* found = nullptr;
    if (classId == OXAISAXContentHandler::ClassId()) found = &_interfaces->content;
    if (classId == OXAISAXErrorHandler::ClassId()) found = &_interfaces->errors;
    if (!found) return OXABaseUnknown::QueryInterface(classId, object);
    if (!object) return E_POINTER;
    AddRef();
    *object = found;
    return S_OK;
}

OXABaseUnknown* OXASAXDefaultHandler::QueryInterface(const char* className) {
    OXABaseUnknown* found = nullptr;
    if (className && std::strcmp(className, OXAISAXContentHandler::ClassName()) == 0) {
        found = &_interfaces->content;
    }
    if (className && std::strcmp(className, OXAISAXErrorHandler::ClassName()) == 0) {
        found = &_interfaces->errors;
    }
    if (!found) return OXABaseUnknown::QueryInterface(className);
    AddRef();
    return found;
}

HRESULT OXASAXDefaultHandler::StartDocument() { return S_OK; }

HRESULT OXASAXDefaultHandler::EndDocument() { return S_OK; }

HRESULT OXASAXDefaultHandler::StartElement(const OXAUnicodeString& /*uri*/,
                                           const OXAUnicodeString& /*localName*/,
                                           const OXAUnicodeString& /*qName*/,
                                           const OXAISAXAttributes_var& /*attributes*/) {
    return S_OK;
}

HRESULT OXASAXDefaultHandler::EndElement(const OXAUnicodeString& /*uri*/,
                                         const OXAUnicodeString& /*localName*/,
                                         const OXAUnicodeString& /*qName*/) {
    return S_OK;
}

HRESULT OXASAXDefaultHandler::Characters(const OXAUnicodeString& /*chars*/) { return S_OK; }

HRESULT OXASAXDefaultHandler::IgnorableWhiteSpace(const OXAUnicodeString& /*chars*/) { return S_OK; }

HRESULT OXASAXDefaultHandler::ProcessingInstruction(const OXAUnicodeString& /*target*/,
                                                    const OXAUnicodeString& /*data*/) {
    return S_OK;
}

HRESULT OXASAXDefaultHandler::SetDocumentLocator(const OXAISAXLocator_var& /*locator*/) { return S_OK; }

HRESULT OXASAXDefaultHandler::StartPrefixMapping(const OXAUnicodeString& /*prefix*/,
                                                 const OXAUnicodeString& /*uri*/) {
    return S_OK;
}

HRESULT OXASAXDefaultHandler::EndPrefixMapping(const OXAUnicodeString& /*prefix*/) { return S_OK; }

HRESULT OXASAXDefaultHandler::SkippedEntity(const OXAUnicodeString& /*name*/) { return S_OK; }

HRESULT OXASAXDefaultHandler::NotationDecl(const OXAUnicodeString& /*name*/,
                                           const OXAUnicodeString& /*publicId*/,
                                           const OXAUnicodeString& /*systemId*/) {
    return S_OK;
}

HRESULT OXASAXDefaultHandler::UnparsedEntityDecl(const OXAUnicodeString& /*name*/,
                                                 const OXAUnicodeString& /*publicId*/,
                                                 const OXAUnicodeString& /*systemId*/,
                                                 const OXAUnicodeString& /*notationName*/) {
    return S_OK;
}

HRESULT OXASAXDefaultHandler::ResolveEntity(const OXAUnicodeString& /*publicId*/,
                                            const OXAUnicodeString& /*systemId*/,
                                            OXAISAXInputSource_var& /*source*/) {
    return S_OK;
}

HRESULT OXASAXDefaultHandler::Error(OXASAXParseException* /*exception*/) { return S_OK; }

HRESULT OXASAXDefaultHandler::FatalError(OXASAXParseException* /*exception*/) { return S_OK; }

HRESULT OXASAXDefaultHandler::Warning(OXASAXParseException* /*exception*/) { return S_OK; }
