// SPDX-License-Identifier: Apache-2.0

#include "OXAIXMLSAX2Factory.h"

#include <stdexcept>

#include "components/Reader.h"
#include "input/InputError.h"
#include "input/InputSource.h"
#include "text/text.h"

const GUID CLSID_XML4C_SAX = {0x6f1d2c3b, 0x8a47, 0x4e59, {0x9c, 0x10, 0x2b, 0x7e, 0x54, 0xd3, 0xa6, 0x81}};

namespace {

class Factory final : public OXAIXMLSAX2Factory {
public:
    HRESULT CreateXMLReader(OXAISAXXMLReader_var& reader) override {
        reader.Reset();
        try {
            reader = OXAISAXXMLReader_var::Adopt(new sax::Reader(sax::XercesPlatform::acquire()));
        } catch (const std::runtime_error&) {
            return E_FAIL;
        }
        return S_OK;
    }

    HRESULT CreateInputSourceFromFile(const OXAUnicodeString& path, const OXAUnicodeString& publicId,
                                      OXAISAXInputSource_var& source) override {
        const auto made = sax::InputSource::file(sax::to_string(path), sax::to_string(publicId));
        source = made;
        try {
            made->open();
        } catch (const sax::InputError&) {
            return E_FAIL;
        }
        return S_OK;
    }

    HRESULT CreateInputSourceFromText(const OXAUnicodeString& text, const OXAUnicodeString& publicId,
                                      OXAISAXInputSource_var& source) override {
        source = sax::InputSource::text(sax::to_string(text), sax::to_string(publicId));
        return S_OK;
    }
};

}  // namespace

HRESULT CreateOXAIXMLSAX2Factory(OXAIXMLSAX2Factory_var& factory, const GUID& clsid) {
    factory.Reset();
    if (clsid != CLSID_XML4C_SAX) return E_NOINTERFACE;
    factory = OXAIXMLSAX2Factory_var::Adopt(new Factory);
    return S_OK;
}
