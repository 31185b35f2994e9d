// SPDX-License-Identifier: Apache-2.0

#include "vSAXDefaultHandler.h"

#include <utility>

#include "vLogger.h"

namespace {

constexpr TOZ::vLogger::FLogLevel kLogLevel = TOZ::vLogger::eError;

const char* label_of(vSAXDefaultHandler::ELogType type) {
    switch (type) {
        case vSAXDefaultHandler::ELogType::Error:
            return "Error";
        case vSAXDefaultHandler::ELogType::Warning:
            return "Warning";
        case vSAXDefaultHandler::ELogType::FatalError:
            return "FatalError";
        case vSAXDefaultHandler::ELogType::Message:
            break;
    }
    return nullptr;
}

}  // namespace

OXAMetaClass* vSAXDefaultHandler::meta_object = nullptr;

vSAXDefaultHandler::vSAXDefaultHandler() : buffer(nullptr), nbErrors(0) {}

vSAXDefaultHandler::~vSAXDefaultHandler() { delete std::exchange(buffer, nullptr); }

OXAMetaClass* vSAXDefaultHandler::MetaObject() {
    if (!meta_object) {
        constexpr int kClassKind = 1;
        meta_object =
            fct_RetrieveMetaObject("vSAXDefaultHandler", kClassKind, OXASAXDefaultHandler::MetaObject(), "0",
                                   "Talvik", sizeof(vSAXDefaultHandler));
    }
    return meta_object;
}

const GUID& vSAXDefaultHandler::ClassId() { return MetaObject()->ClassId(); }

const char* vSAXDefaultHandler::ClassName() { return MetaObject()->ClassName(); }

OXABaseUnknown* vSAXDefaultHandler::CreateItself() { return nullptr; }

OXAMetaClass* vSAXDefaultHandler::GetMetaObject() const { return MetaObject(); }

const char* vSAXDefaultHandler::IsA() const { return ClassName(); }

int vSAXDefaultHandler::IsAKindOf(const char* name) const { return MetaObject()->IsAKindOf(name); }

HRESULT vSAXDefaultHandler::StartElement(const OXAUnicodeString&, const OXAUnicodeString& localName,
                                         const OXAUnicodeString&, const OXAISAXAttributes_var& attributes) {
    const OXAUnicodeString parentName =
        elementStack.empty() ? OXAUnicodeString("UNKNOWN") : elementStack.front();
    OnStartElement(localName, parentName, attributes);
    elementStack.push_front(localName);
    if (buffer) buffer->ClearBuffer();
    return S_OK;
}

HRESULT vSAXDefaultHandler::EndElement(const OXAUnicodeString&, const OXAUnicodeString&,
                                       const OXAUnicodeString& qName) {
    if (elementStack.empty()) return S_OK;
    const OXAUnicodeString name = std::move(elementStack.front());
    elementStack.pop_front();
    if (elementStack.empty()) return S_OK;
    const OXAUnicodeString parentName = elementStack.front();
    return OnEndElement(name, parentName, qName);
}

HRESULT vSAXDefaultHandler::Characters(const OXAUnicodeString& chars) {
    if (!buffer) return E_FAIL;
    if (locator) locator->GetLineNumber(buffer->line);
    buffer->AppendToBuffer(chars);
    return S_OK;
}

HRESULT vSAXDefaultHandler::SetDocumentLocator(const OXAISAXLocator_var& documentLocator) {
    if (!documentLocator) return E_FAIL;
    locator = documentLocator;
    return S_OK;
}

HRESULT vSAXDefaultHandler::Error(OXASAXParseException* exception) {
    ++nbErrors;
    if (!exception) {
        Log("Could not recover from error", ELogType::Error);
        return E_FAIL;
    }
    Log(exception->GetMessageW().ConvertToChar(), ELogType::Error);
    return S_OK;
}

HRESULT vSAXDefaultHandler::FatalError(OXASAXParseException* exception) {
    ++nbErrors;
    if (!exception) {
        Log("Could not recover from fatal error", ELogType::Error);
        return E_FAIL;
    }
    Log(exception->GetMessageW().ConvertToChar(), ELogType::FatalError);
    return S_OK;
}

HRESULT vSAXDefaultHandler::Warning(OXASAXParseException* exception) {
    if (!exception) {
        Log("Could not recover from fatal Warning", ELogType::Warning);
        return E_FAIL;
    }
    Log(exception->GetMessageW().ConvertToChar(), ELogType::Warning);
    return S_OK;
}

unsigned int vSAXDefaultHandler::GetNbErrors() const { return nbErrors; }

void vSAXDefaultHandler::Log(const char* message, ELogType type) {
    if (type == ELogType::Message) {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security"  // by contract: the message is a format
        TOZ::LogDefault(kLogLevel, message);
#pragma GCC diagnostic pop
        return;
    }
    int line = 0;
    int column = 0;
    if (locator) {
        locator->GetLineNumber(line);
        locator->GetColumnNumber(column);
    }
    const char* const label = label_of(type);
    if (label) TOZ::LogDefault(kLogLevel, "%s : line %d column %d %s", label, line, column, message);
}
