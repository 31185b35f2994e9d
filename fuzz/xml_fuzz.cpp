// SPDX-License-Identifier: Apache-2.0
// vSAXReader on any text, with a schema on every other one: it ends, and says of a failure where it is.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vSAXDefaultHandler.h>
#include <vSAXReader.h>

#include "fuzz_input.h"

namespace {

class Handler : public vSAXDefaultHandler {
public:
    Handler() { buffer = new vSAXDefaultBuffer; }

    int fatal_errors = 0;

    void Reset() override {
        elementStack.clear();
        fatal_errors = 0;
    }
    HRESULT GetStatus() const override { return S_OK; }
    HRESULT FatalError(OXASAXParseException* exception) override {
        require(exception && exception->GetLineNumber() > 0, "a fatal error has a line");
        ++fatal_errors;
        return S_OK;
    }
    HRESULT Error(OXASAXParseException*) override { return S_OK; }
    HRESULT Warning(OXASAXParseException*) override { return S_OK; }
    HRESULT OnStartElement(const OXAUnicodeString&, const OXAUnicodeString&,
                           const OXAISAXAttributes_var&) override {
        return S_OK;
    }
    HRESULT OnEndElement(const OXAUnicodeString&, const OXAUnicodeString&, const OXAUnicodeString&) override {
        return S_OK;
    }

protected:
    ~Handler() override = default;
};

void parse(vSAXReader& reader, Handler& handler, const std::string& document) {
    handler.Reset();
    const HRESULT result = reader.LoadBuffer(document.c_str());
    require(SUCCEEDED(result) == (handler.fatal_errors == 0), "a parse fails exactly with a fatal error");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const bool with_schema = input.byte() % 2 != 0;
    const std::string document(input.rest(), input.rest() + input.rest_size());
    const auto handler = OXAVar<Handler>::Adopt(new Handler);
    vSAXReader reader;
    reader.SetDocumentHandler(handler.Get());
    if (with_schema) {
        require(SUCCEEDED(reader.SetXSDSchema(PELTO_SCHEMAS "/texture-library.xsd", "library")),
                "the schema is read");
    }
    parse(reader, *handler.Get(), document);
    parse(reader, *handler.Get(), document);
    return 0;
}
