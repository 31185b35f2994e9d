// SPDX-License-Identifier: Apache-2.0

#include "vSAXReader.h"

#include "sax/NumericLocale.h"
#include "vLogger.h"

using pelto::sax::NumericLocale;

vSAXReader::vSAXReader() : status(E_FAIL) {
    HRESULT made = CreateOXAIXMLSAX2Factory(factory, CLSID_XML4C_SAX);
    if (SUCCEEDED(made) && factory) made = factory->CreateXMLReader(reader);
    if (SUCCEEDED(made) && reader) {
        reader->SetFeature(OXASAXXMLReaderOptions::ValidationFeature, true);
        reader->SetFeature(OXASAXXMLReaderOptions::NamespacesFeature, true);
        reader->SetFeature(OXASAXXMLReaderOptions::NamespacePrefixFeature, true);
    }
    if (SUCCEEDED(made) && factory && reader) {
        status = S_OK;
        return;
    }
    TOZ::LogMefx(TOZ::vLogger::eError, "%s", "Issue during initialization");
}

vSAXReader::~vSAXReader() {
    factory.Reset();
    reader.Reset();
}

HRESULT vSAXReader::SetDocumentHandler(vSAXDefaultHandler* handler) {
    if (FAILED(status)) return E_FAIL;
    // The parser may hold the only references of a handler that is set again.
    const OXAVar<vSAXDefaultHandler> kept(handler);
    reader->SetContentHandler(OXAISAXContentHandler_var());
    reader->SetErrorHandler(OXAISAXErrorHandler_var());
    const OXAISAXContentHandler_var content(handler);
    const OXAISAXErrorHandler_var errors(handler);
    reader->SetContentHandler(content);
    return reader->SetErrorHandler(errors);
}

HRESULT vSAXReader::SetXSDSchema(const char* xsdFile, const char* schemaKey) {
    if (FAILED(status)) return E_FAIL;
    OXAISAXInputSource_var source;  // goes after the locale is back
    const NumericLocale numericLocale;
    HRESULT result = factory->CreateInputSourceFromFile(xsdFile, "myPublicId", source);
    if (SUCCEEDED(result) && source) {
        const OXAIXMLSchemaLoader_var loader(reader);
        if (loader) result = loader->LoadGrammar(schemaKey, source);
    } else {
        TOZ::LogDefault(TOZ::vLogger::eWarning, "Could not create input source from xsd file %s", xsdFile);
    }
    // A source that is missing without a failure switches validation on all the same.
    if (SUCCEEDED(result)) reader->SetFeature(OXASAXXMLReaderOptions::ValidationFeature, true);
    return result;
}

HRESULT vSAXReader::ClearSchemaCache() {
    const OXAIXMLSchemaLoader_var loader(reader);
    return loader ? loader->ClearCache() : S_OK;
}

HRESULT vSAXReader::LoadFile(const char* path) {
    const OXAUnicodeString text(path);
    if (FAILED(status)) return E_FAIL;
    OXAISAXInputSource_var source;
    const NumericLocale numericLocale;
    // Without a file the parse reports a fatal error that names it.
    factory->CreateInputSourceFromFile(text, OXAUnicodeString(), source);
    return reader->Parse(source);
}

HRESULT vSAXReader::LoadBuffer(const char* xmlText) {
    const OXAUnicodeString text(xmlText);
    if (FAILED(status)) return E_FAIL;
    OXAISAXInputSource_var source;
    const NumericLocale numericLocale;
    factory->CreateInputSourceFromText(text, OXAUnicodeString(), source);
    return reader->Parse(source);
}
