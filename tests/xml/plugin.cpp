// SPDX-License-Identifier: Apache-2.0
// A library that uses the framework, for the test that loads and unloads it.
#include "OXASAX.h"

namespace {

class CountingHandler final : public OXASAXDefaultHandler {
public:
    int elements = 0;

    HRESULT StartElement(const OXAUnicodeString&, const OXAUnicodeString&, const OXAUnicodeString&,
                         const OXAISAXAttributes_var&) override {
        ++elements;
        return S_OK;
    }
};

}  // namespace

/// The number of elements in a document of three; -1 when it cannot be parsed.
extern "C" __attribute__((visibility("default"))) int parse_a_document() {
    OXAIXMLSAX2Factory_var factory;
    OXAISAXXMLReader_var reader;
    OXAISAXInputSource_var schema;
    OXAISAXInputSource_var source;
    CreateOXAIXMLSAX2Factory(factory, CLSID_XML4C_SAX);
    factory->CreateXMLReader(reader);
    const auto handler = OXAVar<CountingHandler>::Adopt(new CountingHandler);
    reader->SetContentHandler(OXAISAXContentHandler_var(handler));
    reader->SetFeature(OXASAXXMLReaderOptions::ValidationFeature, true);
    factory->CreateInputSourceFromText(
        "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element name='a'/></xs:schema>", "",
        schema);
    factory->CreateInputSourceFromText("<a><b/><c>text</c></a>", "", source);
    if (FAILED(OXAIXMLSchemaLoader_var(reader)->LoadGrammar("k", schema))) return -1;
    return reader->Parse(source) == S_OK ? handler->elements : -1;
}
